// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CHESTBOARD_HEADERELEMENT_H
#define CHESTBOARD_HEADERELEMENT_H

#include <QtGlobal>

namespace bls_2010 {

/// The header that the link puts in front of every message and every wave packet.
class HeaderElement {
public:
    /// A header with this running number.
    explicit HeaderElement(qint32 sequenceNumber = 0) : m_sequenceNumber(sequenceNumber) { }

    /// Running number of the wave period in which the message was sent.
    qint32 getSequenceNumber() const { return m_sequenceNumber; }

private:
    qint32 m_sequenceNumber;
};

} // namespace bls_2010

#endif
