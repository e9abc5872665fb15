// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CHESTBOARD_RMESSAGE_H
#define CHESTBOARD_RMESSAGE_H

#include "chestboard/HeaderElement.h"
#include "chestboard/chestboard_export.h"

#include <QByteArray>
#include <QtEndian>

namespace bls_2010 {

/// One message from the manikin: an identifier, its content and the header it came with.
///
/// Index 0 of the content is the message's leading byte; most messages put their first field at
/// index 1. Fields of two and four bytes are little-endian. An accessor whose field does not lie
/// wholly inside the content gives 0 (or an empty text) and sets \a ok to false; otherwise it sets
/// \a ok to true.
class CHESTBOARD_EXPORT RMessage {
public:
    /// A message with \a content from index 0 on, which came with \a header.
    RMessage(quint32 identifier, const QByteArray &content,
             const HeaderElement &header = HeaderElement());

    /// The message kind; the keys stand in CommunicationIDs::ResponseID.
    quint32 getIdentifier() const { return m_identifier; }
    /// The header that the message came with.
    const HeaderElement &getHeader() const { return m_header; }

    /// The number of content bytes after index 0: a message of data length N is readable at the
    /// indices 0 to N. 0 for an empty content too.
    unsigned int getDataLength() const;

    /// @{
    /// The field at index \a i; 0, and \a ok false, when it does not lie wholly inside the content.
    quint8 getContentByte(unsigned int i, bool &ok) const { return read<quint8>(i, ok); }
    qint8 getContentS8(unsigned int i, bool &ok) const { return read<qint8>(i, ok); }
    qint16 getContentS16(unsigned int i, bool &ok) const { return read<qint16>(i, ok); }
    quint16 getContentU16(unsigned int i, bool &ok) const { return read<quint16>(i, ok); }
    quint32 getContentU32(unsigned int i, bool &ok) const { return read<quint32>(i, ok); }
    /// @}

    /// The \a length bytes of a text field, NUL bytes included.
    QByteArray getString(bool &ok, unsigned int index, unsigned int length) const;

private:
    bool holds(unsigned int index, unsigned int length) const
    {
        const auto size = static_cast<unsigned int>(m_content.size());
        return index <= size && length <= size - index;
    }
    template <typename T> T read(unsigned int index, bool &ok) const
    {
        ok = holds(index, sizeof(T));
        return ok ? qFromLittleEndian<T>(m_content.constData() + index) : T(0);
    }

    quint32 m_identifier;
    QByteArray m_content;
    HeaderElement m_header;
};

} // namespace bls_2010

#endif
