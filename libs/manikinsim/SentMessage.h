// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_SENTMESSAGE_H
#define MANIKINSIM_SENTMESSAGE_H

#include "manikinsim/Truth.h"

#include <QByteArray>

#include <variant>

namespace manikinsim {

/// A pause has reached \a seconds.
struct PauseReport {
    int start = 0; ///< ms of session time
    int seconds = 0;
};

/// A rate per minute.
struct CompressionRate {
    int rate = 0;
};
struct VentilationRate {
    int rate = 0;
};

/// What nobody makes an event of, because it is of no interest or cannot be understood.
struct NoEvent { };

/// What a message is about; nothing for a message that makes no difference to the events.
using Fact = std::variant<std::monostate, Truth::Compression, Truth::Ventilation, PauseReport,
                          CompressionRate, VentilationRate, Truth::Shock, Truth::AedEvent,
                          Truth::Rhythm, Truth::UserEvent, NoEvent>;

/// A message as the manikin sends it, beside what it means.
struct SentMessage {
    quint32 identifier = 0;
    qint32 sequence = 0; ///< the wave period in which it was sent
    QByteArray content; ///< index 0 first
    Fact fact;

    enum class Fate { Whole, Cut, Lost };
    Fate fate = Fate::Whole; ///< on the way; of a cut message content is what arrives
};

/// The depth and the volume of one wave period.
struct WavePacket {
    qint32 sequence = 0;
    int depth = 0; ///< hundredths of a millimetre
    int volume = 0; ///< ml
};

} // namespace manikinsim

#endif
