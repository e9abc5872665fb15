// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MESSAGEFIELDS_H
#define MESSAGEFIELDS_H

#include "CPREventBase.h"

#include <chestboard/RMessage.h>

#include <array>
#include <type_traits>

/// How the fields of a manikin message are described and read.
namespace MessageFields {

enum class Width : quint8 { U8, S8, U16, S16, U32 };

constexpr unsigned int bytesOf(Width width)
{
    switch (width) {
    case Width::U8:
    case Width::S8:
        return 1;
    case Width::U16:
    case Width::S16:
        return 2;
    case Width::U32:
        return 4;
    }
    return 0;
}

/// One row of a message's layout: a field that is stored unchanged as an event's parameter.
struct Field {
    unsigned int byte;
    Width width;
    CPREventBase::ParameterType parameter;
};

/// True when every row begins at or after the end of the row before it.
template <std::size_t N> constexpr bool standInOrder(const std::array<Field, N> &fields)
{
    for (std::size_t i = 1; i < N; ++i) {
        if (fields[i].byte < fields[i - 1].byte + bytesOf(fields[i - 1].width))
            return false;
    }
    return true;
}

/// The message's identifier, and one that no message has for null.
quint32 identifierOf(const bls_2010::RMessage *msg);

/// The number at \a index; 0 when the read fails, whatever the link library's accessor then gives.
template <typename T> T valueAt(const bls_2010::RMessage &msg, unsigned int index, bool &ok)
{
    T value = 0;
    if constexpr (std::is_same_v<T, quint8>)
        value = msg.getContentByte(index, ok);
    else if constexpr (std::is_same_v<T, qint8>)
        value = msg.getContentS8(index, ok);
    else if constexpr (std::is_same_v<T, quint16>)
        value = msg.getContentU16(index, ok);
    else if constexpr (std::is_same_v<T, qint16>)
        value = msg.getContentS16(index, ok);
    else
        value = msg.getContentU32(index, ok);
    return ok ? value : T(0);
}

/// The same where a failed read is no failure of the message.
template <typename T> T valueAt(const bls_2010::RMessage &msg, unsigned int index)
{
    bool ok = false;
    return valueAt<T>(msg, index, ok);
}

/// Whether the message is long enough for the field.
bool isReadable(const bls_2010::RMessage &msg, const Field &field);

/// Stores the field's value, an int or (for U32) an unsigned int; 0 when the read fails.
void store(CPREventBase &event, const bls_2010::RMessage &msg, const Field &field);

/// Stores all fields whether or not their reads succeed.
template <std::size_t N>
void store(CPREventBase &event, const bls_2010::RMessage &msg, const std::array<Field, N> &fields)
{
    for (const Field &field : fields)
        store(event, msg, field);
}

/// A 16-bit value put together from two bytes, the low one at \a index. A byte that cannot be
/// read counts as 0 and clears \a ok, so the low byte of a cut message still counts.
quint16 assembledU16(const bls_2010::RMessage &msg, unsigned int index, bool &ok);
/// The same for messages of which a missing byte is no failure.
quint16 assembledU16(const bls_2010::RMessage &msg, unsigned int index);

} // namespace MessageFields

#endif
