// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "private/XmlOutput.h"

namespace {

constexpr int pieceSize = 64 * 1024;

} // namespace

XmlOutput::XmlOutput(QIODevice *member) : m_member(member)
{
    m_piece.reserve(pieceSize);
    QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

bool XmlOutput::finish()
{
    passOn();
    return m_isWritten;
}

void XmlOutput::passOn()
{
    if (m_isFirst) {
        const QByteArray encoding = QByteArrayLiteral(" encoding=\"UTF-8\"");
        const int position = m_piece.indexOf(encoding);
        if (position >= 0 && position < m_piece.indexOf("?>"))
            m_piece.remove(position, encoding.size());
        m_isFirst = false;
    }
    m_isWritten = m_isWritten && m_member->write(m_piece) == m_piece.size();
    m_piece.truncate(0);
}

qint64 XmlOutput::readData(char * /*data*/, qint64 /*maxSize*/)
{
    return -1;
}

qint64 XmlOutput::writeData(const char *data, qint64 size)
{
    if (m_piece.size() + size > pieceSize && !m_piece.isEmpty())
        passOn();
    m_piece.append(data, static_cast<int>(size));
    return size;
}
