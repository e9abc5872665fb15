// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "OrderedParts.h"

#include <QTemporaryFile>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <deque>
#include <memory>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

// A process costs as much as a short session, so one makes several parts, but not so many that the
// last processes run alone.
constexpr int maximumBatch = 16;
constexpr int batchesPerJob = 4;
// Batches that are begun and not taken, per job. A slow part holds up the others only after that
// many, and the open files stay below the usual limit of 1024.
constexpr int waitingBatchesPerJob = 2;
constexpr int maximumOpenFiles = 512;

constexpr int unmade = -3;

struct Part {
    int index = 0;
    pid_t maker = 0; // 0 when it is finished
    int result = unmade;
    QTemporaryFile file;
};

// What the processes answer, in memory that they share.
class Results {
public:
    explicit Results(int count) : m_bytes(sizeof(int) * static_cast<std::size_t>(count))
    {
        void *memory =
            mmap(nullptr, m_bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED)
            return;
        m_values = static_cast<int *>(memory);
        std::fill_n(m_values, count, unmade);
    }
    ~Results()
    {
        if (m_values)
            munmap(m_values, m_bytes);
    }
    Results(const Results &) = delete;
    Results &operator=(const Results &) = delete;

    bool isShared() const { return m_values != nullptr; }
    int &at(int index) { return m_values[index]; }

private:
    std::size_t m_bytes;
    int *m_values = nullptr;
};

class Queue {
public:
    Queue(int count, int jobs, const OrderedParts::Make &make);
    ~Queue();
    Queue(const Queue &) = delete;
    Queue &operator=(const Queue &) = delete;

    bool isFinished() const { return m_parts.empty() && !hasMore(); }
    bool isFirstFinished() const { return !m_parts.empty() && m_parts.front()->maker == 0; }
    bool canBegin() const;
    void beginBatch();
    void waitForOne();
    bool takeFirst(const OrderedParts::Take &take);

private:
    using Batch = std::vector<Part *>;

    bool hasMore() const { return m_next < m_count; }
    void makeAll(const Batch &batch);
    int makeInto(Part &part) const;

    int m_count;
    int m_jobs;
    int m_batchSize;
    int m_next = 0;
    int m_running = 0;
    const OrderedParts::Make &m_make;
    Results m_results;
    std::deque<std::unique_ptr<Part>> m_parts;
};

Queue::Queue(int count, int jobs, const OrderedParts::Make &make)
    : m_count(count), m_jobs(jobs),
      m_batchSize(std::min({count / (jobs * batchesPerJob), maximumBatch,
                            maximumOpenFiles / (jobs * waitingBatchesPerJob)})),
      m_make(make), m_results(count)
{
    m_batchSize = m_jobs > 1 ? std::max(m_batchSize, 1) : 1;
}

Queue::~Queue()
{
    pid_t ended = 0;
    for (const auto &part : m_parts) {
        if (part->maker == 0 || part->maker == ended)
            continue;
        ended = part->maker;
        kill(ended, SIGTERM);
        waitpid(ended, nullptr, 0);
    }
}

bool Queue::canBegin() const
{
    const auto room = static_cast<std::size_t>(m_jobs) * waitingBatchesPerJob * m_batchSize;
    return hasMore() && m_running < m_jobs && m_parts.size() < room;
}

void Queue::beginBatch()
{
    Batch batch;
    for (int i = 0; i < m_batchSize && hasMore(); ++i) {
        auto part = std::make_unique<Part>();
        part->index = m_next++;
        if (part->file.open())
            batch.push_back(part.get());
        else
            part->result = OrderedParts::noTemporaryFile;
        m_parts.push_back(std::move(part));
    }
    makeAll(batch);
}

void Queue::makeAll(const Batch &batch)
{
    if (batch.empty())
        return;
    const pid_t maker = m_jobs > 1 && m_results.isShared() ? fork() : -1;
    if (maker == 0) {
        for (Part *part : batch)
            m_results.at(part->index) = makeInto(*part);
        // Without the usual clean-up: what is buffered for stdout is the parent's to write.
        _exit(EXIT_SUCCESS);
    }
    if (maker > 0)
        ++m_running;
    for (Part *part : batch) {
        if (maker > 0)
            part->maker = maker;
        else
            part->result = makeInto(*part);
    }
}

int Queue::makeInto(Part &part) const
{
    const int result = m_make(part.index, &part.file);
    return part.file.flush() ? result : OrderedParts::noTemporaryFile;
}

// Where a process died, the part that it was at is lost; those after it get another process.
void Queue::waitForOne()
{
    pid_t maker = 0;
    do {
        maker = waitpid(-1, nullptr, 0);
    } while (maker < 0 && errno == EINTR);
    bool isPartLost = false;
    Batch left;
    for (const auto &part : m_parts) {
        // Without an answer none is left: SIGCHLD is ignored, and all of them have ended.
        if (part->maker == 0 || (maker > 0 && part->maker != maker))
            continue;
        part->maker = 0;
        part->result = m_results.at(part->index);
        if (part->result != unmade)
            continue;
        if (isPartLost)
            left.push_back(part.get());
        else
            part->result = OrderedParts::processDied;
        isPartLost = true;
    }
    m_running = maker > 0 ? m_running - 1 : 0;
    makeAll(left);
}

bool Queue::takeFirst(const OrderedParts::Take &take)
{
    const std::unique_ptr<Part> part = std::move(m_parts.front());
    m_parts.pop_front();
    part->file.seek(0);
    return take(part->index, part->result, &part->file);
}

} // namespace

namespace OrderedParts {

bool run(int count, int jobs, const Make &make, const Take &take)
{
    Queue queue(count, std::min({count, jobs, maximumJobs}), make);
    while (!queue.isFinished()) {
        if (queue.isFirstFinished()) {
            if (!queue.takeFirst(take))
                return false;
        } else if (queue.canBegin()) {
            queue.beginBatch();
        } else {
            queue.waitForOne();
        }
    }
    return true;
}

} // namespace OrderedParts
