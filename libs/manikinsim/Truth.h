// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_TRUTH_H
#define MANIKINSIM_TRUTH_H

#include "CPREventBase.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace manikinsim {

/// Values under the parameters of the event that shows them.
using Parameters = QMap<CPREventBase::ParameterType, int>;

/// What really happened in a simulated session, and what a new session object that has been fed
/// with all its records shows of it.
///
/// Times are session times in ms, depths in hundredths of a millimetre, forces in g, volumes in ml,
/// rates per minute.
struct Truth {
    // clang-format off

    /// A compression; all that happened are held, in order of time.
    struct Compression {
        int    start           = 0;
        int    peak            = 0;
        int    end             = 0;
        int    period          = 0; ///< since the start of the compression before; 0 for the first
        int    depth           = 0;
        int    releaseDepth    = 0;
        int    peakForce       = 0;
        int    releaseForce    = 0;
        quint8 status          = 0; ///< of CPREventCompression::CompEventStatus

        /// False when its message was cut on the way and refused; what follows is then not set.
        bool   isListed        = false;
        int    numberInCycle   = 0; ///< while the session is fed; the archive does not hold it
        int    meanRate        = 0; ///< the rate that was known when the message came
        int    leaningDepth    = 0; ///< release depth of the listed compression before
        int    leaningForce    = 0; ///< release force of the listed compression before; -1 for the first
    };

    /// A breath; all that happened are held, in order of time.
    struct Ventilation {
        int  start             = 0;
        int  peak              = 0;
        int  end               = 0;
        int  period            = 0; ///< since the start of the breath before; 0 for the first
        int  volume            = 0;
        bool duringCompression = false; ///< overlaps a compression

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
        int samples            = 0; ///< filled into each wave
    };

    struct Shock {
        int msecs              = 0;
        int energy             = 0; ///< J
    };

    struct AedEvent {
        int msecs              = 0;
        Parameters parameters;      ///< aedEventType and those of its kind
    };

    struct Rhythm {
        int  msecs             = 0;
        int  rhythm            = 0; ///< CPREventBase::AEDEcgRhythms
        bool isChange          = false; ///< another one than the listed rhythm before
    };

    struct UserEvent {
        int msecs              = 0;
        QString eventId;
    };

    /// An event of the main list.
    struct ListedEvent {
        CPREventBase::EventType type = CPREventBase::Event;
        int msecs              = 0;
        int endTime            = 0;
    };

    /// A wave as it is kept.
    struct Wave {
        int     count          = 0; ///< samples
        int     minimum        = 0;
        int     maximum        = 0;
        quint32 crc32          = 0; ///< of the samples as the archive holds them: 16 bits, low byte first
    };

    /// What the session info shows of the manikin.
    struct Manikin {
        int     type           = 0;
        QString firmwareVersion;
        QString rfidVersion;
        QString feedpodVersion;
        int     connectedAed   = 0; ///< CPREventBase::AEDTypes
        uint    compressions   = 0; ///< over its life
        uint    ventilations   = 0; ///< over its life
        Parameters battery;
        int     waveDataStep   = 0;
    };

    std::vector<Compression> compressions;
    std::vector<Ventilation> ventilations;
    std::vector<Pause>       pauses;
    std::vector<PacketLoss>  packetLosses;
    std::vector<Shock>       shocks;
    std::vector<AedEvent>    aedEvents;
    std::vector<Rhythm>      rhythms;
    std::vector<UserEvent>   userEvents;
    /// The whole main list in its order, the session info and the other standing events included.
    std::vector<ListedEvent> events;

    Manikin     manikin;
    QStringList learners;
    int         protocol               = 0;
    QStringList guidelineIds;               ///< the active set first
    int         inactivitySum          = 0; ///< s; every report adds its seconds, in 16 bits
    int         waveDelay              = 0; ///< ms
    int         finalSessionTime       = 0;
    int         totalTime              = 0; ///< s
    int         loadedTotalTime        = 0; ///< s; after the archive was read, which goes by the waves
    int         refusedMessages        = 0; ///< messages that no part of the session takes

    Wave        depthWave;
    Wave        volumeWave;
    int         volumeWaveStart        = 0; ///< msecs of the volume wave's description

    /// As the statistics and the score event show them. A parameter that is missing here is
    /// missing there.
    Parameters  statistics;
    Parameters  scores;
    CPREventBase::Advice primaryAdvice   = CPREventBase::Advice_None;
    CPREventBase::Advice secondaryAdvice = CPREventBase::Advice_None;

    // clang-format on
};

} // namespace manikinsim

#endif
