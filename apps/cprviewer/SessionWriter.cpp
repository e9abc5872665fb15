// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionWriter.h"

#include <QCoreApplication>
#include <QThread>

#include <utility>

SessionWriter::SessionWriter(QObject *parent) : QObject(parent)
{
}

SessionWriter::~SessionWriter()
{
    cancel();
    if (m_thread)
        m_thread->wait();
}

bool SessionWriter::advance(int done, int total)
{
    QMetaObject::invokeMethod(this, [this, done, total] { Q_EMIT progressed(done, total); });
    return !m_isCancelled;
}

void SessionWriter::start(std::unique_ptr<CPRData> session, const Job &job)
{
    m_isCancelled = false;
    m_session = std::move(session);
    m_thread = QThread::create([this, job] {
        // Each timer that came along has left a call, which would leak with the session.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        m_written = job(m_session.get());
        m_session.reset(); // its timers belong to this thread
    });
    m_thread->setParent(this);
    if (m_session)
        m_session->moveToThread(m_thread);
    connect(m_thread, &QThread::finished, this, [this] {
        std::exchange(m_thread, nullptr)->deleteLater();
        Q_EMIT finished(std::exchange(m_written, {}));
    });
    m_thread->start();
}
