// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_ORDEREDPARTS_H
#define CPRSESSION_ORDEREDPARTS_H

#include <functional>

class QFileDevice;

/// A long result made in parts, by several processes at once, and taken in order. A part that is
/// finished waits in a temporary file for its turn, so memory does not grow with the result.
namespace OrderedParts {

/// Writes the part numbered \a index and returns what became of it, 0 or more. It may run in a
/// process of its own: nothing but the part and the number comes back.
using Make = std::function<int(int index, QFileDevice *part)>;
/// Takes a part that stands at its begin. \a result is what Make returned, or one of those below;
/// then there is nothing in the part that can be used. False ends the work.
using Take = std::function<bool(int index, int result, QFileDevice *part)>;

constexpr int processDied = -1;
constexpr int noTemporaryFile = -2;

constexpr int maximumJobs = 128;

/// Makes \a count parts, one at least, in up to \a jobs processes; with one job in this process.
/// The program must have no other threads and no other children. False when \a take ended it.
bool run(int count, int jobs, const Make &make, const Take &take);

} // namespace OrderedParts

#endif
