// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/JournalSync.h"

#include "private/FileCalls.h"

namespace manikinlog {

namespace {

// A thread waits for the disk, it does not compute.
constexpr int threadCount = 8;

int syncError(int file, const QString &name)
{
    if (FileCalls::repeated([file] { return ::fdatasync(file); }) != 0)
        return errno;
    return name.isEmpty() || FileCalls::syncFolderOf(name) ? 0 : errno;
}

} // namespace

JournalSync::JournalSync(QObject *parent) : QObject(parent)
{
    m_threads.setMaxThreadCount(threadCount);
}

JournalSync::~JournalSync()
{
    m_threads.waitForDone();
}

quint64 JournalSync::request(int file, const QString &name, const Done &done)
{
    const int copy = FileCalls::repeated([file] { return ::fcntl(file, F_DUPFD_CLOEXEC, 0); });
    if (copy < 0)
        return 0;
    const quint64 ticket = ++m_lastTicket;
    m_requests.insert(ticket, done);
    m_threads.start([this, copy, name, ticket] {
        const int error = syncError(copy, name);
        ::close(copy);
        QMetaObject::invokeMethod(
            this, [this, ticket, error] { finish(ticket, error); }, Qt::QueuedConnection);
    });
    return ticket;
}

void JournalSync::finish(quint64 ticket, int error)
{
    if (const Done done = m_requests.take(ticket))
        done(error);
}

} // namespace manikinlog
