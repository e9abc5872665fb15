// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTSESSIONSCORE_H
#define CPREVENTSESSIONSCORE_H

#include "CPREventBase.h"

#include <map>

/// The standing event that holds the manikin's scoring of the session and the two advices that
/// follow from it.
///
/// Score reductions are percentage points taken off a score of 100; scores are 0 to 100.
class CPRDATA_EXPORT CPREventSessionScore : public CPREventBase {
    Q_OBJECT

public:
    /// @{
    /// Weight of the compression score in the overall score; the ventilation score has the rest.
    static constexpr double OVERALL_SCORE_COMP_WEIGHTING_ADULT = 0.75;
    static constexpr double OVERALL_SCORE_COMP_WEIGHTING_INFANT = 0.65;
    /// @}

    /// @{
    /// At \a msecs of session time with no scores yet, or a copy of \a other, for the list
    /// \a owner (may be null), whose child it becomes.
    CPREventSessionScore(int msecs, CPREvents *owner);
    CPREventSessionScore(const CPREventSessionScore &other, CPREvents *owner);
    /// @}
    ~CPREventSessionScore() override;

    /// Takes RPL_CPR_SCORES (108) only.
    bool incomingMsg(bls_2010::RMessage *msg) override;
    /// Stores the scoring at the session time, computes what the manikin did not send, and
    /// derives the advices. Always true.
    bool rplmsg_RPL_CPR_SCORES(bls_2010::RMessage *msg);

    /// Ranks the advices anew from the stored reductions and the list's CPR protocol, stores the
    /// first two and emits scoresReady().
    void calculateAdvice();
    /// The worst aspect of the session; Advice_None when there is nothing to advise.
    CPREventBase::Advice getPrimaryAdvice() const;
    /// The next aspect; Advice_None when there is at most one.
    CPREventBase::Advice getSecondaryAdvice() const;

    CPREventSessionScore *clone(CPREvents *owner) override;

Q_SIGNALS:
    /// By calculateAdvice(): scores and advices are there.
    void scoresReady();

private:
    int computedOverallScore() const;
    bool isScoredAsAED() const;
    int intValue(ParameterType type) const;
    /// The score that would remain if this reduction were the only one.
    qint64 remaining(ParameterType reduction) const;
    /// The score that would remain if these two were the only ones.
    qint64 remaining(ParameterType reduction, ParameterType other) const;
    void advise(qint64 score, Advice advice);

    /// By the score that the aspect leaves. Among equals the one ranked last stands first. 64 bits:
    /// a file can hold any reduction.
    std::multimap<qint64, Advice> m_ranking;
};

#endif
