// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Heap.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <malloc.h>

// The allocator of the C library under the names that stay reachable when malloc() and its sisters
// are replaced.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void *block);
}

namespace {

std::atomic<bool> isCounting{false};
std::atomic<qint64> liveBytes{0};
std::atomic<qint64> peakBytes{0};

qint64 cost(void *block)
{
    return block ? static_cast<qint64>(malloc_usable_size(block) + sizeof(std::size_t)) : 0;
}

void count(qint64 bytes)
{
    const qint64 live = liveBytes.fetch_add(bytes, std::memory_order_relaxed) + bytes;
    if (live > peakBytes.load(std::memory_order_relaxed))
        peakBytes.store(live, std::memory_order_relaxed);
}

bool counts()
{
    return isCounting.load(std::memory_order_relaxed);
}

void *counted(void *block)
{
    if (counts())
        count(cost(block));
    return block;
}

} // namespace

#define BENCH_EXPORTED __attribute__((visibility("default")))

extern "C" {

BENCH_EXPORTED void *malloc(std::size_t size)
{
    return counted(__libc_malloc(size));
}

BENCH_EXPORTED void *calloc(std::size_t items, std::size_t size)
{
    return counted(__libc_calloc(items, size));
}

BENCH_EXPORTED void *realloc(void *block, std::size_t size)
{
    if (!counts())
        return __libc_realloc(block, size);
    const qint64 before = cost(block);
    void *moved = __libc_realloc(block, size);
    if (moved || size == 0)
        count(cost(moved) - before);
    return moved;
}

BENCH_EXPORTED void *memalign(std::size_t alignment, std::size_t size)
{
    return counted(__libc_memalign(alignment, size));
}

BENCH_EXPORTED void *aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}

BENCH_EXPORTED int posix_memalign(void **block, std::size_t alignment, std::size_t size)
{
    *block = memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}

BENCH_EXPORTED void free(void *block)
{
    if (counts())
        count(-cost(block));
    __libc_free(block);
}

} // extern "C"

namespace bench {

HeapCount::HeapCount()
{
    liveBytes = 0;
    peakBytes = 0;
    isCounting = true;
}

HeapCount::~HeapCount()
{
    isCounting = false;
}

qint64 HeapCount::live() const
{
    return liveBytes;
}

qint64 HeapCount::peak() const
{
    return peakBytes;
}

} // namespace bench
