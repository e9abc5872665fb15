// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_HEAP_H
#define BENCH_HEAP_H

#include <QtGlobal>

namespace bench {

/// Counts what all libraries of this program allocate and free. A block counts with all that the
/// allocator gave, its header included. Only one may live at a time.
class HeapCount {
public:
    HeapCount();
    ~HeapCount();
    HeapCount(const HeapCount &) = delete;
    HeapCount &operator=(const HeapCount &) = delete;

    /// Bytes allocated and not freed since this count began.
    qint64 live() const;
    /// The most that live() has been.
    qint64 peak() const;
};

} // namespace bench

#endif
