// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "FollowedFile.h"

#include "private/FileCalls.h"

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
    const QByteArray name = QFile::encodeName(m_file.fileName());
    struct stat named { };
    struct stat opened { };
    if (::stat(name.constData(), &named) != 0)
        return "it is not there any more";
    if (::fstat(m_file.handle(), &opened) != 0 || named.st_dev != opened.st_dev
        || named.st_ino != opened.st_ino)
        return "it was replaced by another file";
    return opened.st_size < m_file.pos() ? "it was cut" : nullptr;
}
