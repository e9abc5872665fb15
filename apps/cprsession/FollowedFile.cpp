// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "FollowedFile.h"

#include <manikinlog/FileChange.h>

#include <QThread>

#include <utility>

namespace {

constexpr unsigned long pollIntervalMs = 50;

} // namespace

FollowedFile::FollowedFile(const QString &name, std::function<bool()> isOver)
    : m_file(name), m_isOver(std::move(isOver))
{
}

bool FollowedFile::open(OpenMode mode)
{
    if (!m_file.open(mode)) {
        setErrorString(m_file.errorString());
        return false;
    }
    // Unbuffered: a read has to give what is there instead of waiting for a full buffer.
    return QIODevice::open(mode | Unbuffered);
}

qint64 FollowedFile::readData(char *data, qint64 maxSize)
{
    for (;;) {
        const qint64 count = m_file.read(data, maxSize);
        if (count < 0)
            setErrorString(m_file.errorString());
        if (count != 0 || m_isOver())
            return count;
        if (const char *const what = change()) {
            setErrorString(QString::fromLatin1(what));
            return -1;
        }
        QThread::msleep(pollIntervalMs);
    }
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
