// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/StandardInput.h"

#include "private/FileCalls.h"

namespace manikinlink {

StandardInput::StandardInput() : m_notifier(STDIN_FILENO, QSocketNotifier::Read)
{
    setOpenMode(QIODevice::ReadOnly | QIODevice::Unbuffered);
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier.setEnabled(false);
        m_isReadable = true;
        Q_EMIT readyRead();
    });
}

qint64 StandardInput::bytesAvailable() const
{
    return QIODevice::bytesAvailable() + (m_isReadable ? 1 : 0);
}

qint64 StandardInput::readData(char *data, qint64 maxSize)
{
    if (!m_isReadable)
        return 0;
    m_isReadable = false;
    const auto count = FileCalls::repeated(
        [data, maxSize] { return ::read(STDIN_FILENO, data, std::size_t(maxSize)); });
    if (count > 0)
        m_notifier.setEnabled(true);
    else
        Q_EMIT readChannelFinished();
    return count;
}

qint64 StandardInput::writeData(const char *, qint64)
{
    return -1;
}

} // namespace manikinlink
