// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/StandClear.h"

#include <CPREvents.h>
#include <private/Units.h>

#include <algorithm>
#include <limits>

namespace sessionreview {

namespace {

using E = CPREventBase;

constexpr int maxSilenceMs = 30 * Units::msecsPerSecond; // of the AED
constexpr int maxReactionMs = 3 * Units::msecsPerSecond;

/// What a flag says: true, stand clear; false, there is no need to.
std::optional<bool> asksToStandClear(const Flag &flag)
{
    if (flag.kind == Flag::Kind::Shock)
        return false;
    if (flag.kind != Flag::Kind::Aed)
        return std::nullopt;
    switch (flag.code) {
    case E::AEDAnalyzing:
    case E::AEDShockAdvised:
    case E::AEDStartCharging:
    case E::AEDReadyToShock:
        return true;
    case E::AEDPowerOff:
    case E::AEDNoShockIndicated:
    case E::AEDShockCancelled:
    case E::AEDShockDelivered:
    case E::AEDAnalyzingInterrupted:
    case E::AEDFailure:
    case E::AEDPadsLoose:
        return false;
    case E::AEDRemoteControlOtherButtonPressed:
        return flag.detail == E::RemoteBtnCPRfirst ? std::optional<bool>(false) : std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace

std::vector<Flag> aedFlagsOf(const CPREvents &events, int msecs)
{
    std::vector<Flag> flags;
    // Shocks stand among the events of no other tag.
    for (const E::EventTag tag : {E::TagAed, E::TagCprd, E::TagOther}) {
        for (int i = 0; i < events.count(tag); ++i) {
            const std::optional<Flag> flag = flagOf(*events.at(tag, i));
            if (flag && flag->kind != Flag::Kind::User && flag->msecs <= msecs)
                flags.push_back(*flag);
        }
    }
    std::stable_sort(flags.begin(), flags.end(),
                     [](const Flag &a, const Flag &b) { return a.msecs < b.msecs; });
    return flags;
}

std::vector<Span> standClearOf(const std::vector<Flag> &flags)
{
    std::vector<Span> spans;
    for (const Flag &flag : flags) {
        const std::optional<bool> asks = asksToStandClear(flag);
        if (!asks)
            continue;
        const bool isOpen = !spans.empty() && flag.msecs < spans.back().end;
        if (*asks) {
            if (!isOpen)
                spans.push_back({flag.msecs, 0});
            spans.back().end = static_cast<int>(std::min<qint64>(qint64(flag.msecs) + maxSilenceMs,
                                                                 std::numeric_limits<int>::max()));
        } else if (isOpen) {
            spans.back().end = flag.msecs;
        }
    }
    return spans;
}

bool isStandClear(const std::vector<Span> &standClear, int msecs)
{
    return std::any_of(standClear.begin(), standClear.end(), [msecs](const Span &span) {
        return msecs >= span.begin && msecs < span.end;
    });
}

bool isAskedFor(const Span &pause, const std::vector<Span> &standClear)
{
    qint64 asked = 0;
    for (const Span &span : standClear) {
        asked += std::max<qint64>(
            0, qint64(std::min(pause.end, span.end)) - std::max(pause.begin, span.begin));
    }
    return asked > 0 && qint64(pause.end) - pause.begin - asked <= maxReactionMs;
}

} // namespace sessionreview
