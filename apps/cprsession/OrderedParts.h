// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_ORDEREDPARTS_H
#define CPRSESSION_ORDEREDPARTS_H

#include <functional>

class QFileDevice;

/// A long result made in parts, by several threads at once, and used in order. A part that is
/// finished waits in a temporary file for its turn, so memory does not grow with the result.
namespace OrderedParts {

/// Writes the part numbered \a index and returns what became of it, 0 or more. It may run in
/// several threads at once.
using Make = std::function<int(int index, QFileDevice *part)>;
/// Uses a part that stands at its begin; runs in the caller's thread. \a result is what Make
/// returned, or the one below; then there is nothing in the part that can be used. False ends the
/// work.
using Use = std::function<bool(int index, int result, QFileDevice *part)>;

constexpr int noTemporaryFile = -1;

constexpr int maxJobs = 128;

/// Makes \a count parts in up to \a jobs threads; with one job in the caller's. False when \a use
/// ended it.
bool run(int count, int jobs, const Make &make, const Use &use);

} // namespace OrderedParts

#endif
