// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "MessageFields.h"

#include <chestboard/RMessage.h>

namespace MessageFields {

QVariant read(const bls_2010::RMessage &msg, const Field &field, bool &ok)
{
    switch (field.width) {
    case Width::U8:
        return int(msg.getContentByte(field.byte, ok));
    case Width::S8:
        return int(msg.getContentS8(field.byte, ok));
    case Width::U16:
        return int(msg.getContentU16(field.byte, ok));
    case Width::S16:
        return int(msg.getContentS16(field.byte, ok));
    case Width::U32:
        return uint(msg.getContentU32(field.byte, ok));
    }
    ok = false;
    return 0;
}

bool store(CPREventBase &event, const bls_2010::RMessage &msg, const Field &field)
{
    bool ok = false;
    event.setParameter(field.parameter, read(msg, field, ok));
    return ok;
}

quint16 assembledU16(const bls_2010::RMessage &msg, unsigned int index, bool &ok)
{
    bool lowOk = false;
    bool highOk = false;
    const quint8 low = msg.getContentByte(index, lowOk);
    const quint8 high = msg.getContentByte(index + 1, highOk);
    ok = lowOk && highOk;
    return static_cast<quint16>(low | high << 8);
}

} // namespace MessageFields
