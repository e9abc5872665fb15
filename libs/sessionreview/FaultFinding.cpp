// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/FaultFinding.h"

#include "sessionreview/RecordedFigures.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <tuple>
#include <utility>

namespace sessionreview {

namespace {

constexpr Fault allFaults[] = {Fault::TooShallow,   Fault::TooDeep, Fault::IncompleteRelease,
                               Fault::HandPosition, Fault::TooSlow, Fault::TooFast,
                               Fault::TooLittle,    Fault::TooMuch};

bool isOfVentilations(Fault fault)
{
    return fault == Fault::TooLittle || fault == Fault::TooMuch;
}

/// Whether the event has the fault; no value where that cannot be judged.
std::optional<bool> hasFault(const Compression &compression, Fault fault)
{
    const bool isOfRate = fault == Fault::TooSlow || fault == Fault::TooFast;
    const bool isOfDepth = fault == Fault::TooShallow || fault == Fault::TooDeep;
    if ((isOfRate && compression.rateSide == Side::Unknown)
        || (isOfDepth && compression.depthSide == Side::Unknown))
        return std::nullopt;
    return compression.faults.testFlag(fault);
}

std::optional<bool> hasFault(const Ventilation &ventilation, Fault fault)
{
    if (ventilation.volumeSide == Side::Unknown)
        return std::nullopt;
    return ventilation.faults.testFlag(fault);
}

template <typename Entries, typename Has>
void addRuns(std::vector<Moment> &moments, Prompt prompt, const Entries &entries, int minCount,
             Has has)
{
    Moment run{prompt, 0, 0, 0};
    bool isRightBefore = false;
    const auto close = [&] {
        if (run.count >= minCount)
            moments.push_back(run);
        run.count = 0;
    };
    for (const auto &entry : entries) {
        const std::optional<bool> isFaulty = has(entry);
        if (!isFaulty)
            continue;
        if (!*isFaulty) {
            if (std::exchange(isRightBefore, true))
                close();
            continue;
        }
        isRightBefore = false;
        if (run.count++ == 0)
            run.begin = entry.begin;
        run.end = entry.end;
    }
    close();
}

std::vector<Moment> allMoments(const SessionReview &review)
{
    std::vector<Moment> moments;
    for (const Span &pause : pausesOf(review)) {
        if (isLongPause(pause))
            moments.push_back({Prompt::EndPause, pause.begin, pause.end, 0});
    }
    for (const Fault fault : allFaults) {
        const auto has = [fault](const auto &entry) { return hasFault(entry, fault); };
        if (isOfVentilations(fault))
            addRuns(moments, promptOf(fault), review.ventilations, minJudgedVentilations, has);
        else
            addRuns(moments, promptOf(fault), review.compressions, minJudgedCompressions, has);
    }
    const Band &band = review.targets.ventilationRate;
    for (const auto &[prompt, wrong] : {std::pair{Prompt::VentilateSlower, Side::Above},
                                        std::pair{Prompt::VentilateFaster, Side::Below}}) {
        addRuns(moments, prompt, review.ventilations, minJudgedVentilations,
                [&band, side = wrong](const Ventilation &entry) -> std::optional<bool> {
                    if (entry.rate <= 0 || !band.isValid())
                        return std::nullopt;
                    return band.side(entry.rate) == side;
                });
    }
    return moments;
}

bool isWorse(const Moment &a, const Moment &b)
{
    const auto length = [](const Moment &moment) { return qint64(moment.end) - moment.begin; };
    return std::tuple(a.prompt, -a.count, -length(a), a.begin)
        < std::tuple(b.prompt, -b.count, -length(b), b.begin);
}

} // namespace

void FaultCounts::add(Faults faults)
{
    for (const Fault fault : allFaults) {
        if (faults.testFlag(fault))
            ++m_counts[fault];
    }
}

int FaultCounts::of(Fault fault) const
{
    const auto found = m_counts.find(fault);
    return found == m_counts.end() ? 0 : found->second;
}

FaultCounts faultsIn(const SessionReview &review)
{
    FaultCounts counts;
    for (const auto &compression : review.compressions)
        counts.add(compression.faults);
    for (const auto &ventilation : review.ventilations)
        counts.add(ventilation.faults);
    return counts;
}

std::vector<CycleFaults> faultsPerCycle(const SessionReview &review)
{
    std::vector<CycleFaults> all;
    auto compression = review.compressions.begin();
    auto ventilation = review.ventilations.begin();
    for (auto cycle = review.cycles.begin(); cycle != review.cycles.end(); ++cycle) {
        const auto next = cycle + 1;
        const bool isLast = next == review.cycles.end();
        CycleFaults found;
        found.cycle = *cycle;
        for (; compression != review.compressions.end()
             && (isLast || compression->begin < next->begin);
             ++compression) {
            found.right += !compression->faults;
            found.faults.add(compression->faults);
        }
        // They stand behind the compressions, in the number that the cycle has.
        for (int i = 0; i < cycle->ventilations && ventilation != review.ventilations.end();
             ++i, ++ventilation)
            found.faults.add(ventilation->faults);
        all.push_back(found);
    }
    return all;
}

std::vector<Moment> worstMoments(const SessionReview &review, int maxCount)
{
    std::vector<Moment> moments = allMoments(review);
    std::sort(moments.begin(), moments.end(), isWorse);
    // The first of each kind, then the second ones.
    std::vector<std::pair<int, Moment>> ranked;
    for (const Moment &moment : moments) {
        const bool isSameKind = !ranked.empty() && ranked.back().second.prompt == moment.prompt;
        ranked.emplace_back(isSameKind ? ranked.back().first + 1 : 0, moment);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    if (ranked.size() > static_cast<std::size_t>(std::max(maxCount, 0)))
        ranked.resize(static_cast<std::size_t>(std::max(maxCount, 0)));
    moments.clear();
    for (const auto &entry : ranked)
        moments.push_back(entry.second);
    std::sort(moments.begin(), moments.end(), isWorse);
    return moments;
}

} // namespace sessionreview
