// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_MESSAGES_H
#define TESTSUPPORT_MESSAGES_H

#include "CPRData.h"

#include <chestboard/RMessage.h>

#include <QByteArray>

#include <cstddef>
#include <initializer_list>

/// What tests need to speak like a manikin.
namespace testsupport {

constexpr QLatin1String operator""_l1(const char *text, std::size_t size)
{
    return QLatin1String(text, static_cast<int>(size));
}

/// The content bytes, index 0 first.
inline QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray content;
    for (int value : values)
        content.append(static_cast<char>(value));
    return content;
}

/// A content of \a size bytes in which every index holds its own number (plus \a offset), so that
/// a swapped or shifted byte shows in the value.
inline QByteArray numberedBytes(int size, int offset = 0)
{
    QByteArray content;
    for (int i = 0; i < size; ++i)
        content.append(static_cast<char>(i + offset));
    return content;
}

/// Hands one message to the session as the link does.
inline bool send(CPRData &session, quint32 identifier, const QByteArray &content,
                 qint32 sequence = 0)
{
    bls_2010::RMessage message(identifier, content, bls_2010::HeaderElement(sequence));
    return session.incomingMsg(&message);
}

/// Brings a new session to the running state.
inline void start(CPRData &session)
{
    session.setCprState(CPRData::CPR_MANIKIN_INIT);
    session.setCprState(CPRData::CPR_INIT);
    session.setCprState(CPRData::CPR_START);
}

} // namespace testsupport

#endif
