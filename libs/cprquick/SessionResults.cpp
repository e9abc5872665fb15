// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/SessionResults.h"

#include "sessionfiles/SessionFile.h"

#include <CPRData.h>
#include <sessionlibrary/ArchiveFolder.h>

#include <QThread>

#include <utility>

namespace cprquick {

using namespace sessionreview;

SessionResults::SessionResults(QObject *parent) : QObject(parent)
{
}

SessionResults::~SessionResults()
{
    m_isCancelled = true;
    if (m_thread)
        m_thread->wait();
}

void SessionResults::read(const QStringList &names)
{
    m_wanted = names;
    m_isWanted = true;
    m_isCancelled = isReading();
    if (!isReading())
        start();
}

void SessionResults::start()
{
    m_isWanted = false;
    m_isCancelled = false;
    m_names = m_wanted;
    m_thread = QThread::create([this] { run(); });
    m_thread->setParent(this);
    connect(m_thread, &QThread::finished, this, [this] {
        std::exchange(m_thread, nullptr)->deleteLater();
        if (m_isWanted) {
            start();
            return;
        }
        m_results = std::move(m_read);
        m_unread = m_unreadNow;
        Q_EMIT finished();
    });
    m_thread->start();
}

// Runs on m_thread.
void SessionResults::run()
{
    m_read.clear();
    m_unreadNow = 0;
    QHash<QString, Known> known;
    for (int i = 0; i < m_names.size() && !m_isCancelled; ++i) {
        const QString &name = m_names.at(i);
        const sessionlibrary::FileStamp stamp = sessionlibrary::stampOf(name);
        auto before = m_known.constFind(name);
        Known now;
        if (before != m_known.constEnd() && before->stamp == stamp) {
            now = *before;
        } else {
            CPRData session;
            const bool isRead =
                sessionfiles::load(name, session, [this](qint64 /*done*/, qint64 /*total*/) {
                    return !m_isCancelled;
                }).hasSession();
            if (!isRead) {
                ++m_unreadNow;
                continue;
            }
            now = {stamp, resultOf(reviewOf(session))};
        }
        m_read.push_back(now.result);
        known.insert(name, now);
    }
    // What is not shown any more is kept as long as nothing else was read instead.
    if (m_isCancelled) {
        for (auto each = known.cbegin(); each != known.cend(); ++each)
            m_known.insert(each.key(), each.value());
    } else {
        m_known = std::move(known);
    }
}

} // namespace cprquick
