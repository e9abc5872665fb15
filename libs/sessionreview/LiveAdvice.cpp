// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/LiveAdvice.h"

#include "sessionreview/StandClear.h"

#include <CPRData.h>
#include <CPREventCompression.h>
#include <CPREventVentilation.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace sessionreview {

namespace {

using E = CPREventBase;

constexpr int stepMs = 250;
constexpr int delayMs = 250; // messages that are on their way
constexpr int minShownMs = 4000;
constexpr int minShownDoneMs = 2000; // of what the learner does already
constexpr int heardAgainMs = 8000; // of a fault that stays
// Whoever looks on again after a while is told what matters now.
constexpr int maxCaughtUpMs = 120000;

/// Of how many events a fault is looked for, and in how many it begins and stops to be said.
struct Window {
    int maxCount;
    int minCount;
    int maxAgeMs;
    double beginsAt; // share
    double endsAt; // share; above it the fault goes on
};
constexpr Window compressionWindow{10, minJudgedCompressions, 30000, 0.3, 0.1};
constexpr Window ventilationWindow{4, minJudgedVentilations, 60000, 0.5, 0.25};

struct FaultPrompt {
    Fault fault;
    Prompt prompt;
};

constexpr FaultPrompt compressionPrompts[] = {
    {Fault::TooShallow, Prompt::PressDeeper}, {Fault::TooSlow, Prompt::PressFaster},
    {Fault::TooFast, Prompt::PressSlower},    {Fault::IncompleteRelease, Prompt::ReleaseCompletely},
    {Fault::TooDeep, Prompt::PressLessDeep},  {Fault::HandPosition, Prompt::MoveHands},
};
constexpr FaultPrompt ventilationPrompts[] = {
    {Fault::TooLittle, Prompt::BlowMore},
    {Fault::TooMuch, Prompt::BlowLess},
};

/// The last events of \a tag that have ended by \a msecs.
template <typename Event>
auto latestOf(const CPREvents &events, E::EventTag tag, const Targets &targets, int msecs,
              const Window &window)
{
    std::vector<decltype(judged(std::declval<const Event &>(), targets))> found;
    for (int i = begunUntil(events, tag, msecs) - 1; i >= 0; --i) {
        const auto *event = qobject_cast<const Event *>(events.at(tag, i));
        if (!event)
            continue;
        if (qint64(msecs) - event->msecs() > window.maxAgeMs)
            break;
        const auto entry = judged(*event, targets);
        if (entry.end <= msecs)
            found.push_back(entry);
        if (static_cast<int>(found.size()) == window.maxCount)
            break;
    }
    return found;
}

template <typename Entries, typename Has>
void findFault(std::set<Prompt> &faults, Prompt prompt, const Entries &entries,
               const Window &window, Has has)
{
    const auto share = static_cast<double>(std::count_if(entries.begin(), entries.end(), has))
        / static_cast<double>(std::max<std::size_t>(entries.size(), 1));
    if (share >= window.beginsAt)
        faults.insert(prompt);
    else if (share <= window.endsAt)
        faults.erase(prompt);
}

} // namespace

bool isFault(Prompt prompt)
{
    return prompt >= Prompt::EndPause && prompt < Prompt::Right;
}

bool isOfVentilations(Prompt prompt)
{
    return prompt >= Prompt::VentilateSlower && prompt <= Prompt::BlowMore;
}

Prompt promptOf(Fault fault)
{
    for (const FaultPrompt &row : compressionPrompts) {
        if (row.fault == fault)
            return row.prompt;
    }
    return fault == Fault::TooLittle ? Prompt::BlowMore : Prompt::BlowLess;
}

void LiveAdvice::findFaults(const CPRData &session, const Targets &targets, int msecs)
{
    const CPREvents &events = *session.cprEvents();
    const auto pressed =
        latestOf<CPREventCompression>(events, E::TagComp, targets, msecs, compressionWindow);
    const auto blown =
        latestOf<CPREventVentilation>(events, E::TagVent, targets, msecs, ventilationWindow);
    const auto isEnough = [](const auto &entries, const Window &window) {
        return static_cast<int>(entries.size()) >= window.minCount;
    };
    const auto hasFault = [](Fault fault) {
        return [fault](const auto &entry) { return entry.faults.testFlag(fault); };
    };
    m_isJudged = isEnough(pressed, compressionWindow) || isEnough(blown, ventilationWindow);
    if (pressed.empty() || isEnough(pressed, compressionWindow)) {
        for (const FaultPrompt &row : compressionPrompts)
            findFault(m_faults, row.prompt, pressed, compressionWindow, hasFault(row.fault));
    }
    if (blown.empty() || isEnough(blown, ventilationWindow)) {
        for (const FaultPrompt &row : ventilationPrompts)
            findFault(m_faults, row.prompt, blown, ventilationWindow, hasFault(row.fault));
        const auto isAt = [&targets](Side side) {
            return [&targets, side](const Ventilation &entry) {
                return entry.rate > 0 && targets.ventilationRate.side(entry.rate) == side;
            };
        };
        findFault(m_faults, Prompt::VentilateFaster, blown, ventilationWindow, isAt(Side::Below));
        findFault(m_faults, Prompt::VentilateSlower, blown, ventilationWindow, isAt(Side::Above));
    }
}

void LiveAdvice::step(const CPRData &session, const Targets &targets, int msecs)
{
    const LatestEvents latest = latestEventsOf(session, targets, msecs);
    const RunningPause pause = runningPause(*session.cprEvents(), latest, targets, msecs);
    findFaults(session, targets, msecs);

    Prompt wanted = m_isJudged ? Prompt::Right : Prompt::None;
    if (!m_faults.empty())
        wanted = *m_faults.begin();
    if (pause.isTooLong)
        wanted = Prompt::EndPause;
    const bool isPressed = trainingOf(latest.protocol).compressions;
    const std::vector<Span> &clear = latest.standClear;
    const bool goesOn = !isPressed
        || (!clear.empty() && latest.compression && latest.compression->begin >= clear.back().end);
    if (isStandClear(clear, msecs))
        show(Prompt::StandClear, msecs);
    else if (m_shown == Prompt::StandClear)
        show(isPressed ? Prompt::ContinueCompressions : Prompt::ContinueVentilations, msecs);
    else if ((m_shown != Prompt::ContinueCompressions || goesOn || pause.isTooLong)
             && msecs - m_since >= (m_shown == Prompt::EndPause ? minShownDoneMs : minShownMs))
        show(wanted, msecs);
}

int LiveAdvice::heardAt() const
{
    const int again = isFault(m_shown) ? (m_done - m_since) / heardAgainMs : 0;
    return m_since + again * heardAgainMs;
}

void LiveAdvice::show(Prompt prompt, int msecs)
{
    if (prompt == m_shown)
        return;
    m_shown = prompt;
    m_since = msecs;
}

void LiveAdvice::follow(const CPRData &session, const Targets &targets, int msecs)
{
    if (msecs < m_msecs)
        *this = LiveAdvice();
    m_msecs = msecs;
    m_done = std::max(m_done, (msecs - maxCaughtUpMs) / stepMs * stepMs);
    while (qint64(m_done) + stepMs + delayMs <= msecs) {
        m_done += stepMs;
        step(session, targets, m_done);
    }
}

} // namespace sessionreview
