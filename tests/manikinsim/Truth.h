// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef ORACLE_TRUTH_H
#define ORACLE_TRUTH_H

#include "manikinsim/SentMessage.h"

#include <QStringList>
#include <QVector>

#include <vector>

namespace oracle {

using manikinsim::Parameters;

/// What really happened in a simulated session, and what a new session object that has been fed
/// with all its records shows of it.
///
/// Times are session times in ms, depths in hundredths of a millimetre, forces in g, volumes in ml,
/// rates per minute.
struct Truth {
    // clang-format off

    /// A compression; all that happened are held, in order of time.
    struct Compression : manikinsim::Compression {
        /// False when its message was cut on the way and refused; what follows is then not set.
        bool   isListed        = false;
        int    numberInCycle   = 0; ///< while the session is fed; the archive does not hold it
        int    meanRate        = 0; ///< the rate that was known when the message came
        int    leaningDepth    = 0; ///< release depth of the listed compression before
        int    leaningForce    = 0; ///< release force of the listed compression before; -1 for the first
    };

    /// A breath; all that happened are held, in order of time.
    struct Ventilation : manikinsim::Ventilation {
        /// False when its message was cut on the way and refused; what follows is then not set.
        bool isListed          = false;
        int  rate              = 0; ///< the rate that was known when the message came; -1: none yet
    };

    /// A pause that was reported. It starts with the first wave period after the last activity.
    struct Pause {
        int  start             = 0;
        int  lasted            = 0; ///< whole seconds that the manikin counted

        /// False when no report of it arrived; what follows is then not set.
        bool isListed          = false;
        int  seconds           = 0; ///< of the last report that arrived
        int  end               = 0; ///< start + seconds
    };

    /// A gap in the wave packets, as it stands in the event list; both times are equal when a
    /// single packet is missing.
    struct PacketLoss {
        int start              = 0;
        int end                = 0;
    };

    struct Shock : manikinsim::Shock {
        int msecs              = 0;
    };

    struct AedEvent {
        int msecs              = 0;
        Parameters parameters;          ///< aedEventType and those of its kind
    };

    struct Rhythm : manikinsim::Rhythm {
        int  msecs             = 0;
        bool isChange          = false; ///< another one than the listed rhythm before
    };

    struct UserEvent : manikinsim::UserEvent {
        int msecs              = 0;
    };

    std::vector<Compression> compressions;
    std::vector<Ventilation> ventilations;
    std::vector<Pause>       pauses;
    std::vector<PacketLoss>  packetLosses;
    std::vector<Shock>       shocks;
    std::vector<AedEvent>    aedEvents;
    std::vector<Rhythm>      rhythms;
    std::vector<UserEvent>   userEvents;

    int          inactivitySum   = 0; ///< s; every report adds its seconds, in 16 bits
    int          loadedTotalTime = 0; ///< s; after the archive was read, which goes by the waves
    QVector<int> depths;              ///< samples
    QVector<int> volumes;             ///< samples

    /// As the statistics and the score event show them. A parameter that is missing here is
    /// missing there.
    Parameters   statistics;
    Parameters   scores;
    CPREventBase::Advice primaryAdvice   = CPREventBase::Advice_None;
    CPREventBase::Advice secondaryAdvice = CPREventBase::Advice_None;

    // clang-format on
};

} // namespace oracle

#endif
