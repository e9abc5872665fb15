// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTSESSIONSTATISTICS_H
#define CPREVENTSESSIONSTATISTICS_H

#include "CPREventBase.h"

/// The standing event that holds the manikin's statistics of the session: counts, means,
/// deviations, percentages, times and histograms, stored as the manikin sends them.
///
/// The manikin sends them in three messages. A percentage of -1 was not measured.
class CPRDATA_EXPORT CPREventSessionStatistics : public CPREventBase {
    Q_OBJECT

public:
    /// @{
    /// At \a msecs of session time with nothing measured yet, or a copy of \a other, for the list
    /// \a owner (may be null), whose child it becomes.
    CPREventSessionStatistics(int msecs, CPREvents *owner);
    CPREventSessionStatistics(const CPREventSessionStatistics &other, CPREvents *owner);
    /// @}
    ~CPREventSessionStatistics() override;

    /// Takes the three statistics messages (109, 110, 111); false for any other. From the message
    /// on that completes the three it emits statisticsReady() for each.
    bool incomingMsg(bls_2010::RMessage *msg) override;
    /// Statistics that do not depend on the guidelines (109). Always true.
    bool rplmsg_RPL_GL_INDEPENDENT_STATS(bls_2010::RMessage *msg);
    /// Histograms (110). Always true.
    bool rplmsg_RPL_GL_INDEPENDENT_BIN_STATS(bls_2010::RMessage *msg);
    /// Percentages judged by the guidelines (111); sets the event's time to the session time.
    /// Always true.
    bool rplmsg_RPL_GL_DEPENDENT_STATS(bls_2010::RMessage *msg);

    /// Stores the duration in s and emits totalTime().
    void setSessionDuration(int secs);

    CPREventSessionStatistics *clone(CPREvents *owner) override;

Q_SIGNALS:
    /// By setSessionDuration(): the session's length in s. The session info takes it.
    void totalTime(int secs);
    /// All three messages have arrived; see incomingMsg().
    void statisticsReady();

private:
    bool m_independentReceived = false;
    bool m_binsReceived = false;
    bool m_dependentReceived = false;
};

#endif
