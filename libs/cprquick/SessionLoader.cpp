// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/SessionLoader.h"

#include "sessionfiles/ArchiveSalvage.h"
#include "sessionfiles/SessionFile.h"

#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/ManikinLogReader.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace cprquick {

namespace {

// A session that has come from another thread has calls waiting which start its timers: deleted
// before them, it would leak them.
void discard(SessionLoader::Result &result)
{
    if (result.session)
        result.session.release()->deleteLater();
    result = {};
}

using manikinlog::ManikinLogReader;

QString noSession(const QString &name)
{
    return QCoreApplication::translate("cprquick",
                                       "%1 is neither a session archive nor a recorded log")
        .arg(name);
}

QString noRead(const QString &name)
{
    return QCoreApplication::translate("cprquick", "%1 cannot be read; is it there and a file?")
        .arg(name);
}

// A foreign file is not looked through for a session; one that may have been one is.
bool mayHaveBeenSession(const QString &name)
{
    const QStringList suffixes{QStringLiteral("zip"), QStringLiteral("cprlog"),
                               QStringLiteral("journal")};
    QFile file(name);
    return suffixes.contains(QFileInfo(name).suffix().toLower())
        || (file.open(QIODevice::ReadOnly) && file.read(2) == "PK");
}

bool endsWithLine(QFile &file)
{
    return file.seek(qMax<qint64>(0, file.size() - 1)) && file.read(1) == "\n";
}

// What became of the members of an archive that were not read whole.
QStringList reportOf(const sessionfiles::LoadResult &loaded)
{
    QStringList report;
    for (const sessionfiles::LoadedMember &member : loaded.members) {
        if (member.state == sessionfiles::LoadedMember::Missing) {
            report.append(QCoreApplication::translate("cprquick", "%1: missing").arg(member.name));
        } else if (member.state == sessionfiles::LoadedMember::Damaged) {
            report.append(QCoreApplication::translate("cprquick", "%1: read as far as it is sound")
                              .arg(member.name));
        }
    }
    return report;
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
    // Not at once: its finished() may still wait, and must not pass for that of the next thread.
    thread->deleteLater();
    discard(m_result);
}

SessionLoader::Result SessionLoader::handOver()
{
    if (isLoading())
        return Result();
    Result result = std::exchange(m_result, Result());
    // The thread may have been done before it was cancelled.
    if (m_isCancelled) {
        discard(result);
        result.isCancelled = true;
    }
    return result;
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
    Result result = loadHere(name, kind, report);
    if (m_isCancelled)
        result.session.reset(); // on the thread that its timers know
    // They are running already and go with it.
    if (result.session)
        result.session->moveToThread(thread());
    m_result = std::move(result);
}

SessionLoader::Result SessionLoader::loadHere(const QString &name, Kind kind, const Report &report)
{
    Result result;
    const QFileInfo file(name);
    if (!file.isFile() || !file.isReadable())
        result.problem = noRead(name);
    else if (ManikinLogReader::isLog(name))
        result = loadLog(name, kind, report);
    else if (kind == Kind::File)
        result = loadArchive(name, report);
    else
        result = salvageArchive(name, report);
    result.fileName = name;
    return result;
}

SessionLoader::Result SessionLoader::loadArchive(const QString &name, const Report &report)
{
    Result result;
    auto session = std::make_unique<CPRData>();
    const sessionfiles::LoadResult loaded = sessionfiles::load(name, *session, report);
    result.report = reportOf(loaded);
    if (loaded.hasMembers()) {
        result.isDamaged = !loaded.isComplete;
        result.session = std::move(session);
    } else {
        result.isDamaged = !loaded.isArchive && mayHaveBeenSession(name);
    }
    if (result.isDamaged && result.session) {
        result.problem =
            QCoreApplication::translate("cprquick", "%1 is damaged; what could be read is shown")
                .arg(name);
    } else if (result.isDamaged) {
        result.problem =
            QCoreApplication::translate(
                "cprquick", "%1 is no session any more, if it was one; something may be left")
                .arg(name);
    } else if (!result.session) {
        result.problem = noSession(name);
    }
    return result;
}

SessionLoader::Result SessionLoader::salvageArchive(const QString &name, const Report &report)
{
    sessionfiles::SalvagedSession salvaged = sessionfiles::salvage(
        name, [&report](qint64 done, qint64 total) { return report && report(done, total); });
    if (!salvaged.holdsAnything && salvaged.failure) {
        Result result;
        result.problem = noRead(name);
        return result;
    }
    // A log whose first line is damaged looks like anything.
    if (!salvaged.holdsAnything)
        return loadLog(name, Kind::Salvaged, report);
    Result result;
    auto session = std::make_unique<CPRData>();
    const sessionfiles::LoadResult loaded = sessionfiles::load(salvaged, *session);
    result.session = std::move(session);
    result.isDamaged = !salvaged.isAll || !loaded.isComplete; // else it was changed meanwhile
    result.report = salvaged.report + reportOf(loaded);
    return result;
}

SessionLoader::Result SessionLoader::loadLog(const QString &name, Kind kind, const Report &report)
{
    Result result;
    result.isLog = true;
    QFile file(name);
    const qint64 size = file.size(); // asked for once: it is a system call
    if (!file.open(QIODevice::ReadOnly)) {
        result.problem = noRead(name);
        return result;
    }
    ManikinLogReader reader(&file, name,
                            kind == Kind::Salvaged ? ManikinLogReader::Damage::IsSkipped
                                                   : ManikinLogReader::Damage::IsError);
    auto session = std::make_unique<CPRData>();
    manikinlog::ManikinLogPlayer player(session.get());
    manikinlog::Record record;
    bool hasPlayed = false;
    while ((!report || report(file.pos(), size))
           && reader.read(record) == ManikinLogReader::Result::Record) {
        player.play(record);
        hasPlayed = true;
    }
    player.finish();
    const int skipped = static_cast<int>(reader.skippedLines());
    if (skipped > 0)
        result.report.append(
            QCoreApplication::translate("cprquick", "%n line(s) left out", "", skipped));
    if (!reader.errorString().isEmpty()) {
        result.report.append(QCoreApplication::translate("cprquick", "all left out from line %1 on")
                                 .arg(reader.line()));
    }
    // The half line that a killed program leaves is no damage.
    const bool isHalf = kind == Kind::Salvaged && skipped == 1 && reader.errorString().isEmpty()
        && !endsWithLine(file);
    result.isDamaged = !isHalf && !result.report.isEmpty();
    if (hasPlayed)
        result.session = std::move(session);
    if (result.isDamaged && kind == Kind::File) {
        result.problem = QCoreApplication::translate(
                             "cprquick", "%1 is damaged in line %2; what stands before it is shown")
                             .arg(name, QString::number(reader.line()));
    }
    if (!hasPlayed && kind == Kind::Salvaged) {
        result.problem =
            QCoreApplication::translate("cprquick", "%1 holds nothing that can be salvaged")
                .arg(name);
    } else if (!hasPlayed && result.problem.isEmpty()) {
        result.problem = noSession(name);
    }
    return result;
}

} // namespace cprquick
