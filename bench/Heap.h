// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_HEAP_H
#define BENCH_HEAP_H

#include <QtGlobal>

namespace bench {

/// Counts every byte that the program takes from the heap and gives back, whoever asks: this
/// program stands between all libraries and the allocator. A block counts with what the allocator
/// gave, its header included. Only one may live at a time.
class HeapCount {
public:
    HeapCount();
    ~HeapCount();
    HeapCount(const HeapCount &) = delete;
    HeapCount &operator=(const HeapCount &) = delete;

    /// Bytes taken and not given back since this count began.
    qint64 live() const;
    /// The most that live() has been.
    qint64 peak() const;
};

} // namespace bench

#endif
