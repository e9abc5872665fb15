// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_SENTMESSAGE_H
#define MANIKINSIM_SENTMESSAGE_H

#include "CPREventBase.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <variant>
#include <vector>

namespace manikinsim {

// Times are session times in ms, depths in hundredths of a millimetre, forces in g, volumes in ml,
// rates per minute.

/// Values under the parameters of the event that shows them.
using Parameters = QMap<CPREventBase::ParameterType, int>;

struct Compression {
    int start = 0;
    int peak = 0;
    int end = 0;
    int period = 0; ///< since the start of the compression before; 0 for the first
    int depth = 0;
    int releaseDepth = 0;
    int peakForce = 0;
    int releaseForce = 0;
    quint8 status = 0; ///< of CPREventCompression::CompEventStatus
};

struct Ventilation {
    int start = 0;
    int peak = 0;
    int end = 0;
    int period = 0; ///< since the start of the breath before; 0 for the first
    int volume = 0;
    bool duringCompression = false; ///< overlaps a compression
};

/// A pause has reached \a seconds.
struct PauseReport {
    int start = 0;
    int seconds = 0;
};

struct CompressionRate {
    int rate = 0;
};
struct VentilationRate {
    int rate = 0;
};

struct Shock {
    int energy = 0; ///< J
};
struct AedEvent {
    int kind = 0; ///< CPREventBase::AEDEventType
    std::vector<int> details; ///< in the order in which the AED reports them
};
struct Rhythm {
    int rhythm = 0; ///< CPREventBase::AEDEcgRhythms
};
struct UserEvent {
    QString eventId;
};

/// What nobody makes an event of, because it is of no interest or cannot be understood.
struct NoEvent { };

/// What a message is about; nothing for a message that makes no difference to the events.
using Fact = std::variant<std::monostate, Compression, Ventilation, PauseReport, CompressionRate,
                          VentilationRate, Shock, AedEvent, Rhythm, UserEvent, NoEvent>;

/// A message as the manikin sends it, beside what it means.
struct SentMessage {
    quint32 identifier = 0;
    qint32 sequence = 0; ///< the wave period in which it was sent
    QByteArray content; ///< index 0 first
    Fact fact;

    enum class Fate { Complete, Cut, Lost };
    Fate fate = Fate::Complete; ///< on the way; of a cut message content is what arrives
};

/// The depth and the volume of one wave period.
struct WavePacket {
    qint32 sequence = 0;
    int depth = 0; ///< hundredths of a millimetre
    int volume = 0; ///< ml
};

/// Hears, beside the records of a simulated session, what they mean.
class Listener {
public:
    virtual void arrived(const WavePacket &packet) = 0;
    /// Lost ones, too.
    virtual void arrived(const SentMessage &message) = 0;
    /// The session has ended, and these figures are sent.
    virtual void finished(const Parameters &statistics, const Parameters &scores) = 0;

protected:
    ~Listener() = default;
};

} // namespace manikinsim

#endif
