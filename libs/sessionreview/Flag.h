// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_FLAG_H
#define SESSIONREVIEW_FLAG_H

#include <QString>

#include <optional>

class CPREventBase;

namespace sessionreview {

/// Something that happened around the rescuers.
struct Flag {
    enum class Kind { Shock, Aed, Rhythm, User };

    int msecs = 0;
    Kind kind = Kind::User;
    int code = 0; ///< energy in J; AEDEventType; AEDEcgRhythms
    int detail = 0; ///< remote-control button of an AED event
    QString name; ///< of a user event
};

/// The flag that stands for \a event; none for compressions, ventilations, pauses and the rest.
std::optional<Flag> flagOf(const CPREventBase &event);

} // namespace sessionreview

#endif
