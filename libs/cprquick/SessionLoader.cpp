// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/SessionLoader.h"

#include "sessionfiles/SessionFile.h"

#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/ManikinLogReader.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace cprquick {

namespace {

using manikinlog::ManikinLogReader;

QString noSession(const QString &name)
{
    return QCoreApplication::translate("cprquick",
                                       "%1 is neither a session archive nor a recorded log")
        .arg(name);
}

QString joined(const QString &first, const QString &second)
{
    return first.isEmpty() || second.isEmpty() ? first + second
                                               : first + QStringLiteral("; ") + second;
}

} // namespace

SessionLoader::SessionLoader(QObject *parent) : QObject(parent)
{
}

SessionLoader::~SessionLoader()
{
    abandon();
}

void SessionLoader::load(const QString &name, Kind kind)
{
    abandon();
    m_isCancelled = false;
    m_thread = QThread::create([this, name, kind] { run(name, kind); });
    m_thread->setParent(this);
    connect(m_thread, &QThread::finished, this, [this, thread = m_thread] {
        if (thread != m_thread)
            return; // given up since
        m_thread = nullptr;
        thread->deleteLater();
        Q_EMIT finished();
    });
    m_thread->start();
}

void SessionLoader::cancel()
{
    m_isCancelled = true;
}

void SessionLoader::abandon()
{
    if (!m_thread)
        return;
    cancel();
    QThread *thread = std::exchange(m_thread, nullptr);
    thread->wait();
    delete thread;
    m_result = Result();
}

SessionLoader::Result SessionLoader::handOver()
{
    return isLoading() ? Result() : std::exchange(m_result, Result());
}

// Runs on m_thread.
void SessionLoader::run(const QString &name, Kind kind)
{
    constexpr double minStep = 0.01; // no more than a hundred signals
    double reported = 0;
    const Report report = [this, &reported](qint64 done, qint64 total) {
        const double share = total > 0 ? double(done) / double(total) : 0;
        if (share - reported >= minStep) {
            reported = share;
            Q_EMIT progressed(share);
        }
        return !m_isCancelled;
    };
    Result result = kind == Kind::LeftJournal || ManikinLogReader::isLog(name)
        ? loadLog(name, kind, report)
        : loadArchive(name, report);
    result.fileName = name;
    if (m_isCancelled) {
        result = Result();
        result.isCancelled = true;
    }
    // Its timers, which are running already, go with it.
    if (result.session)
        result.session->moveToThread(thread());
    m_result = std::move(result);
}

SessionLoader::Result SessionLoader::loadArchive(const QString &name, const Report &report)
{
    Result result;
    auto session = std::make_unique<CPRData>();
    const sessionfiles::LoadResult loaded = sessionfiles::load(name, *session, report);
    if (!loaded.hasMembers()) {
        result.problem = noSession(name);
        return result;
    }
    if (!loaded.isComplete) {
        result.problem =
            QCoreApplication::translate("cprquick", "%1 is damaged; what could be read is shown")
                .arg(name);
    }
    result.session = std::move(session);
    return result;
}

SessionLoader::Result SessionLoader::loadLog(const QString &name, Kind kind, const Report &report)
{
    Result result;
    result.isLog = true;
    QFile file(name);
    const qint64 size = file.size(); // asked for once: it is a system call
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        result.problem =
            QCoreApplication::translate("cprquick", "%1 cannot be read; is it there and a file?")
                .arg(name);
        return result;
    }
    ManikinLogReader reader(&file, name,
                            kind == Kind::LeftJournal ? ManikinLogReader::Damage::IsSkipped
                                                      : ManikinLogReader::Damage::IsError);
    auto session = std::make_unique<CPRData>();
    manikinlog::ManikinLogPlayer player(session.get());
    manikinlog::Record record;
    bool hasPlayed = false;
    while (report(file.pos(), size) && reader.read(record) == ManikinLogReader::Result::Record) {
        player.play(record);
        hasPlayed = true;
    }
    player.finish();
    result.problem = joined(reader.skippedError(), reader.errorString());
    if (hasPlayed)
        result.session = std::move(session);
    else if (result.problem.isEmpty())
        result.problem = noSession(name);
    return result;
}

} // namespace cprquick
