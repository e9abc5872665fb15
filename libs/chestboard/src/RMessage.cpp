// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "chestboard/RMessage.h"

namespace bls_2010 {

RMessage::RMessage(quint32 identifier, const QByteArray &content, const HeaderElement &header)
    : m_identifier(identifier), m_content(content), m_header(header)
{
}

unsigned int RMessage::getDataLength() const
{
    return m_content.isEmpty() ? 0U : static_cast<unsigned int>(m_content.size()) - 1U;
}

QByteArray RMessage::getString(bool &ok, unsigned int index, unsigned int length) const
{
    ok = holds(index, length);
    return ok ? m_content.mid(static_cast<int>(index), static_cast<int>(length)) : QByteArray();
}

} // namespace bls_2010
