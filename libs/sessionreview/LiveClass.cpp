// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/LiveClass.h"

#include "sessionreview/RecordedFigures.h"

#include <algorithm>
#include <tuple>

namespace sessionreview {

namespace {

// Rescuers take turns every two minutes, as guidelines ask for: who presses longer presses less
// deep.
constexpr int changeMs = 120000;
constexpr int toldMs = 10000; // before the change, and again from it on

} // namespace

std::optional<double> scoreSoFar(const SessionReview &review)
{
    return trainingOf(review.figures.protocol).compressions
        ? shareAllCorrect(review)
        : shareWithout(review, Faults(Fault::TooLittle) | Fault::TooMuch);
}

RescuerChange rescuerChangeAt(int protocol, int msecs)
{
    if (!hasSecondRescuer(protocol) || msecs < changeMs - toldMs)
        return RescuerChange::None;
    const int time = msecs % changeMs;
    if (time >= changeMs - toldMs)
        return RescuerChange::Soon;
    return time < toldMs ? RescuerChange::Now : RescuerChange::None;
}

int FirstToHelp::follow(const std::vector<LearnerNeed> &needs, qint64 msecs)
{
    const auto harm = [](const LearnerNeed &need) {
        return std::make_tuple(!isFault(need.prompt), need.prompt, need.score.value_or(0));
    };
    const auto worst =
        std::min_element(needs.begin(), needs.end(), [&harm](const auto &one, const auto &two) {
            return harm(one) < harm(two);
        });
    const auto chosen = std::find_if(needs.begin(), needs.end(), [this](const LearnerNeed &need) {
        return need.learner == m_learner;
    });
    int wanted = worst != needs.end() && isFault(worst->prompt) ? worst->learner : nobody;
    if (chosen != needs.end() && isFault(chosen->prompt) && chosen->prompt == worst->prompt)
        wanted = m_learner; // as bad as the worst
    const bool stays = chosen != needs.end() && msecs - m_since < minChosenMs;
    if (!stays && wanted != m_learner) {
        m_learner = wanted;
        m_since = msecs;
    }
    return m_learner;
}

} // namespace sessionreview
