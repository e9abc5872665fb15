// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "chestboard/RMessage.h"

#include <QtEndian>

namespace bls_2010 {

namespace {

bool liesInside(const QByteArray &content, unsigned int index, unsigned int length)
{
    const auto size = static_cast<unsigned int>(content.size());
    return index <= size && length <= size - index;
}

} // namespace

RMessage::RMessage(quint32 identifier, const QByteArray &content, const HeaderElement &header)
    : m_identifier(identifier), m_content(content), m_header(header)
{
}

unsigned int RMessage::getDataLength() const
{
    return m_content.isEmpty() ? 0U : static_cast<unsigned int>(m_content.size()) - 1U;
}

template <typename T> T RMessage::read(unsigned int index, bool &ok) const
{
    ok = liesInside(m_content, index, sizeof(T));
    return ok ? qFromLittleEndian<T>(m_content.constData() + index) : T(0);
}

quint8 RMessage::getContentByte(unsigned int index, bool &ok) const
{
    return read<quint8>(index, ok);
}

qint8 RMessage::getContentS8(unsigned int index, bool &ok) const
{
    return read<qint8>(index, ok);
}

qint16 RMessage::getContentS16(unsigned int index, bool &ok) const
{
    return read<qint16>(index, ok);
}

quint16 RMessage::getContentU16(unsigned int index, bool &ok) const
{
    return read<quint16>(index, ok);
}

quint32 RMessage::getContentU32(unsigned int index, bool &ok) const
{
    return read<quint32>(index, ok);
}

QByteArray RMessage::getString(bool &ok, unsigned int index, unsigned int length) const
{
    ok = liesInside(m_content, index, length);
    return ok ? m_content.mid(static_cast<int>(index), static_cast<int>(length)) : QByteArray();
}

} // namespace bls_2010
