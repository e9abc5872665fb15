// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "OrderedParts.h"

#include <QTemporaryFile>
#include <QThreadPool>

#include <algorithm>
#include <deque>
#include <future>
#include <memory>

namespace {

// Parts per job that are begun and not yet used. A slow part delays the others only after that
// many, and the open files stay below the usual limit of 1024.
constexpr int waitingPerJob = 4;

struct Part {
    int index = 0;
    QTemporaryFile file;
    std::promise<int> result;
};

int makeInto(Part &part, const OrderedParts::Make &make)
{
    if (!part.file.open())
        return OrderedParts::noTemporaryFile;
    const int result = make(part.index, &part.file);
    return part.file.flush() ? result : OrderedParts::noTemporaryFile;
}

} // namespace

namespace OrderedParts {

bool run(int count, int jobs, const Make &make, const Use &use)
{
    std::deque<std::unique_ptr<Part>> waiting;
    QThreadPool pool; // ends, with all of its threads, before the parts do
    pool.setMaxThreadCount(jobs);
    const auto room = static_cast<std::size_t>(jobs > 1 ? jobs * waitingPerJob : 1);
    int next = 0;
    while (next < count || !waiting.empty()) {
        for (; next < count && waiting.size() < room; ++next) {
            waiting.push_back(std::make_unique<Part>());
            Part *part = waiting.back().get();
            part->index = next;
            const auto makePart = [part, &make] { part->result.set_value(makeInto(*part, make)); };
            if (jobs > 1)
                pool.start(makePart);
            else
                makePart();
        }
        Part &first = *waiting.front();
        const int result = first.result.get_future().get();
        first.file.seek(0);
        const bool goesOn = use(first.index, result, &first.file);
        if (!goesOn) {
            pool.clear();
            pool.waitForDone();
            return false;
        }
        waiting.pop_front();
    }
    return true;
}

} // namespace OrderedParts
