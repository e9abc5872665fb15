// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "private/MessageFields.h"

#include <limits>

namespace MessageFields {

namespace {

QVariant valueOf(const bls_2010::RMessage &msg, const Field &field, bool &ok)
{
    switch (field.width) {
    case Width::U8:
        return int(valueAt<quint8>(msg, field.byte, ok));
    case Width::S8:
        return int(valueAt<qint8>(msg, field.byte, ok));
    case Width::U16:
        return int(valueAt<quint16>(msg, field.byte, ok));
    case Width::S16:
        return int(valueAt<qint16>(msg, field.byte, ok));
    case Width::U32:
        return uint(valueAt<quint32>(msg, field.byte, ok));
    }
    ok = false;
    return 0;
}

} // namespace

quint32 identifierOf(const bls_2010::RMessage *msg)
{
    return msg ? msg->getIdentifier() : std::numeric_limits<quint32>::max();
}

bool isReadable(const bls_2010::RMessage &msg, const Field &field)
{
    bool ok = false;
    valueOf(msg, field, ok);
    return ok;
}

void store(CPREventBase &event, const bls_2010::RMessage &msg, const Field &field)
{
    bool ok = false;
    event.setParameter(field.parameter, valueOf(msg, field, ok));
}

quint16 assembledU16(const bls_2010::RMessage &msg, unsigned int index, bool &ok)
{
    bool lowOk = false;
    bool highOk = false;
    const auto low = valueAt<quint8>(msg, index, lowOk);
    const auto high = valueAt<quint8>(msg, index + 1, highOk);
    ok = lowOk && highOk;
    return static_cast<quint16>(low | high << 8);
}

quint16 assembledU16(const bls_2010::RMessage &msg, unsigned int index)
{
    bool ok = false;
    return assembledU16(msg, index, ok);
}

} // namespace MessageFields
