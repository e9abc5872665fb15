// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "FollowedFile.h"

#include <manikinlog/FileChange.h>

#include <QThread>

#include <poll.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int pollIntervalMs = 50;

} // namespace

FollowedFile::FollowedFile(const QString &name, std::function<bool()> isOver)
    : m_file(name), m_isStandardInput(name == QLatin1String("-")), m_isOver(std::move(isOver))
{
}

bool FollowedFile::open(OpenMode mode)
{
    const bool isOpen =
        m_isStandardInput ? m_file.open(STDIN_FILENO, mode | Unbuffered) : m_file.open(mode);
    if (!isOpen) {
        setErrorString(m_file.errorString());
        return false;
    }
    // Unbuffered: a read has to give what is there instead of waiting for a full buffer.
    return QIODevice::open(mode | Unbuffered);
}

qint64 FollowedFile::readData(char *data, qint64 maxSize)
{
    for (;;) {
        if (m_isStandardInput && !waitForInput())
            return 0;
        const qint64 count = m_file.read(data, maxSize);
        if (count < 0)
            setErrorString(m_file.errorString());
        // A read of standard input that gives nothing is its end.
        if (count != 0 || m_isStandardInput || m_isOver())
            return count;
        if (const char *const what = change()) {
            setErrorString(QString::fromLatin1(what));
            return -1;
        }
        QThread::msleep(pollIntervalMs);
    }
}

// False when no more is wanted. What hung up, or cannot be polled, is for the read to say.
bool FollowedFile::waitForInput() const
{
    pollfd input{STDIN_FILENO, POLLIN, 0};
    // A signal interrupts the wait: isOver is asked then, too.
    while (poll(&input, 1, pollIntervalMs) <= 0) {
        if (m_isOver())
            return false;
    }
    return true;
}

qint64 FollowedFile::writeData(const char * /*data*/, qint64 /*maxSize*/)
{
    return -1;
}

const char *FollowedFile::change() const
{
    switch (manikinlog::changeOf(m_file)) {
    case manikinlog::FileChange::None:
        break;
    case manikinlog::FileChange::Gone:
        return "it is not there any more";
    case manikinlog::FileChange::Replaced:
        return "it was replaced by another file";
    case manikinlog::FileChange::Cut:
        return "it was cut";
    }
    return nullptr;
}
