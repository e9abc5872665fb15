// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "FollowedFile.h"
#include "Progress.h"
#include "private/FileCalls.h"
#include "sessionfiles/ArchiveCheck.h"
#include "sessionfiles/SessionFile.h"

#include <CPRData.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/ManikinLogReader.h>
#include <manikinlog/SessionJournal.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <csignal>
#include <memory>
#include <optional>

namespace {

using manikinlog::SessionJournal;

struct ReplayOptions {
    std::string log;
    std::string session;
    std::string speed = "max";
    bool follow = false;
    bool force = false;
};

volatile std::sig_atomic_t interrupted = 0;

extern "C" void onInterrupt(int)
{
    interrupted = 1;
}

// Lets every record come at its time.
class Pacer {
public:
    // Speed 2 is twice as fast as it was recorded, 0 as fast as it goes.
    explicit Pacer(double speed) : m_speed(speed) { m_clock.start(); }

    // Waits until the time has come, and calls meanwhile() while it does.
    template <typename Meanwhile> void waitFor(qint64 msecs, Meanwhile meanwhile)
    {
        if (m_speed <= 0)
            return;
        constexpr double maxSleepMs = 50;
        const double due = static_cast<double>(msecs) / m_speed;
        const auto rest = [&] { return due - static_cast<double>(m_clock.elapsed()); };
        while (!interrupted && rest() > 0) {
            meanwhile();
            QThread::msleep(static_cast<unsigned long>(qBound(0.0, rest(), maxSleepMs)));
        }
    }

private:
    double m_speed;
    QElapsedTimer m_clock;
};

// The manikin has sent all it will send.
bool isComplete(const CPRData &session)
{
    return session.cprState() == CPRData::CPR_ENDED && session.cprEvents()->isScoresReady();
}

// Why the session could not be saved; none when it could. Asked before the session begins.
std::optional<QString> whyNotSaved(const QString &target)
{
    const QFileInfo info(FileCalls::resolved(target));
    if (info.exists() && !info.isFile())
        return QStringLiteral("%1 is no regular file").arg(target);
    const QFileInfo folder(info.path());
    if (!folder.isDir() || !folder.isWritable())
        return QStringLiteral("%1 cannot be written; is the directory there and writable?")
            .arg(target);
    return std::nullopt;
}

// Begins the journal. A status when the session must not be played: the journal holds another one.
std::optional<ExitStatus> openJournal(SessionJournal &journal, const QString &target, bool force)
{
    if (journal.open(target,
                     force ? SessionJournal::LeftJournal::Discard
                           : SessionJournal::LeftJournal::Keep)) {
        QObject::connect(&journal, &SessionJournal::failed, complain);
        QObject::connect(&journal, &SessionJournal::resumed, [&journal] {
            complain(journal.fileName() + QStringLiteral(" is written again; nothing is missing"));
        });
        return std::nullopt;
    }
    if (!force && SessionJournal::isRecoverable(target)) {
        const QString name = SessionJournal::nameFor(target);
        return refuse(
            QStringLiteral("%1 holds a session that was not saved; "
                           "\"cprsession recover %1 -o %2\" saves it, --force discards it")
                .arg(name, target));
    }
    if (SessionJournal::isBeingWritten(target))
        return fail(journal.errorString());
    complain(journal.errorString() + QStringLiteral("; the session is played without a journal"));
    return std::nullopt;
}

struct Played {
    qint64 records = 0;
    bool hasError = false; // in the log
};

// Plays the log until its end or Ctrl-C.
Played play(manikinlog::ManikinLogReader &reader, manikinlog::ManikinLogPlayer &player,
            SessionJournal &journal, double speed, const std::function<void()> &report)
{
    using Result = manikinlog::ManikinLogReader::Result;
    Pacer pacer(speed);
    Played played;
    manikinlog::Record record;
    Result result = Result::Record;
    while (!interrupted && (result = reader.read(record)) == Result::Record) {
        ++played.records;
        pacer.waitFor(record.msecs, [&journal] { journal.syncWhenDue(); });
        player.play(record);
        report();
    }
    player.finish();
    played.hasError = result == Result::Error;
    return played;
}

ExitStatus saveSession(const QString &target, bool force, CPRData &session, SessionJournal &journal)
{
    if (!force && QFileInfo::exists(target) && journal.sync()) {
        return fail(QStringLiteral("%1 has appeared meanwhile; the session is kept: \"cprsession "
                                   "recover %2 -o OTHER.zip\" saves it")
                        .arg(target, journal.fileName()));
    }
    const sessionfiles::SaveResult saved = sessionfiles::save(target, session);
    if (saved.isComplete) {
        journal.remove();
        return ExitStatus::Done;
    }
    if (!journal.sync())
        return fail(saved.reason);
    if (saved.isSaved)
        return fail(
            QStringLiteral("%1; all of it is kept in %2").arg(saved.reason, journal.fileName()));
    return fail(QStringLiteral("%1; the session is kept: \"cprsession recover %2 -o OTHER.zip\" "
                               "saves it elsewhere")
                    .arg(saved.reason, journal.fileName()));
}

// Saves the session. Of a log with a damaged line only if it cannot be had from the log again.
ExitStatus saveWhatWasPlayed(const ReplayOptions &options, const Played &played,
                             const manikinlog::ManikinLogReader &reader, const FollowedFile &log,
                             CPRData &session, SessionJournal &journal)
{
    const QString target = fileName(options.session);
    if (!played.hasError && played.records == 0) {
        journal.remove();
        return fail(QStringLiteral("%1 holds no record, so that there is no session to save")
                        .arg(fileName(options.log)));
    }
    // What comes behind the scores of a log that still grows is not waited for.
    if (!played.hasError || (options.follow && reader.isCut() && isComplete(session)))
        return saveSession(target, options.force, session, journal);
    if (played.records > 0 && (options.follow || reader.isCut() || !log.isUnchanged())) {
        complain(reader.errorString()
                 + QStringLiteral("; the session ends there, and is saved as far as it goes"));
        saveSession(target, options.force, session, journal);
        return ExitStatus::Failed;
    }
    journal.remove(); // the log itself holds as much
    return fail(reader.errorString()
                + QStringLiteral("; \"cprsession recover\" saves what can be played"));
}

// Opens the file of a log. A status when it cannot be played into target.
std::optional<ExitStatus> openLog(FollowedFile &log, const QString &logName, const QString &target)
{
    if (!QFileInfo(logName).isFile() || !log.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("%1 cannot be read; is it there and a file?").arg(logName));
    if (sessionfiles::isForeignArchive(logName))
        return fail(whyNoSession(logName));
    if (!sessionfiles::whyNoArchive(logName))
        return fail(QStringLiteral("%1 is a session archive, not a recorded log").arg(logName));
    if (QFileInfo(logName) == QFileInfo(SessionJournal::nameFor(target)))
        return refuse(
            QStringLiteral("%1 is the journal of %2; \"cprsession recover %1 -o %2\" plays it")
                .arg(logName, target));
    return std::nullopt;
}

ExitStatus runReplay(const ReplayOptions &options)
{
    double speed = 0;
    QString error;
    if (!parseSpeed(options.speed, &speed, &error))
        return refuse(error);
    const QString target = fileName(options.session);
    const QString logName = fileName(options.log);
    if (!mayWrite(target, {logName}, options.force))
        return ExitStatus::WrongUsage;
    if (const std::optional<QString> reason = whyNotSaved(target))
        return fail(*reason);

    CPRData session;
    SessionJournal journal;
    const bool isStandardInput = logName == QLatin1String("-");
    FollowedFile log(logName, [&options, &session, &journal, isStandardInput] {
        journal.syncWhenDue();
        return interrupted || (!isStandardInput && (!options.follow || isComplete(session)));
    });
    if (isStandardInput && !log.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("standard input cannot be read: %1").arg(log.errorString()));
    if (!isStandardInput) {
        if (const auto status = openLog(log, logName, target))
            return *status;
    }
    if (const auto status = openJournal(journal, target, options.force))
        return *status;
    if (options.follow || isStandardInput || speed > 0)
        std::signal(SIGINT, onInterrupt); // ends the session, which is then saved

    manikinlog::ManikinLogReader reader(
        &log, isStandardInput ? QStringLiteral("standard input") : logName);
    Played played;
    {
        Progress progress(QStringLiteral("Replaying"));
        manikinlog::ManikinLogPlayer player(&session);
        player.setJournal(&journal);
        played = play(reader, player, journal, speed,
                      [&] { progress.report(log.done(), options.follow ? 0 : log.total()); });
    }
    return saveWhatWasPlayed(options, played, reader, log, session, journal);
}

} // namespace

void addReplayCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<ReplayOptions>();
    CLI::App *command =
        app.add_subcommand("replay", "Play a recorded manikin log into a session and save it");
    command->add_option("log", options->log, "The recorded log; - is standard input")
        ->required()
        ->type_name("LOG");
    command->add_option("-o,--output", options->session, "The session archive to write")
        ->required()
        ->type_name("SESSION.zip");
    command
        ->add_option("--speed", options->speed,
                     "1 plays in real time, 2 twice as fast; max as fast as it goes")
        ->type_name("FACTOR")
        ->capture_default_str();
    command->add_flag("--follow", options->follow,
                      "Wait for a log that still grows, until the manikin has sent its scores or "
                      "Ctrl-C is pressed");
    command->add_flag("--force", options->force,
                      "Replace an archive that exists, and the journal of a killed run");
    command->footer(
        "While it runs, SESSION.zip.journal holds the session, for \"cprsession recover\".\n"
        "Of a log that is cut, and with --follow, or from standard input, of one that is\n"
        "damaged, replaced or deleted, the session up to there is saved, with exit status 1.\n"
        "Examples:\n"
        "  cprsession replay monday.cprlog -o monday.zip\n"
        "  cprsession replay live.cprlog -o live.zip --follow\n"
        "  zcat monday.cprlog.gz | cprsession replay - -o monday.zip");
    command->callback([options, &run] { run.verb = [options] { return runReplay(*options); }; });
}
