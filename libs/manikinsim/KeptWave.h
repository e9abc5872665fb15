// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_KEPTWAVE_H
#define MANIKINSIM_KEPTWAVE_H

#include "manikinsim/Truth.h"

#include <vector>

namespace manikinsim {

/// A wave as a receiver keeps it, without its samples: only the last ones, which a late packet can
/// still overwrite, are held.
class KeptWave {
public:
    /// Appends \a value or, when \a index lies inside the wave, overwrites all from there on.
    void record(int value, int index);
    void fill(int samples, int value);
    int count() const { return m_settled.count + static_cast<int>(m_open.size()); }
    Truth::Wave summary() const;

private:
    static void settle(Truth::Wave &wave, int value);

    Truth::Wave m_settled; // of the samples that are no more held
    std::vector<int> m_open; // the samples that follow
};

} // namespace manikinsim

#endif
