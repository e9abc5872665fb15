// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MESSAGETIME_H
#define MESSAGETIME_H

#include "CPREvents.h"
#include "private/Units.h"

#include <chestboard/RMessage.h>

/// The start of an event that the manikin tells of when \a age ms have passed since: ms of session
/// time. The message's sequence number says when it was sent.
inline int startOfEvent(const CPREvents &events, const bls_2010::RMessage &message, int age)
{
    const qint64 sent = events.calculateSessionTime(message.getHeader().getSequenceNumber());
    return Units::sessionMsecs(sent - age);
}

#endif
