// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "FollowedFile.h"
#include "Progress.h"
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

constexpr double minSpeed = 0.001;
constexpr double maxSpeed = 1000;

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

// The factor for "max" (0) or a number between the slowest and the fastest that a clock of ms can
// pace.
bool parseSpeed(const std::string &text, double *speed)
{
    *speed = 0;
    if (text == "max")
        return true;
    bool ok = false;
    *speed = QString::fromStdString(text).toDouble(&ok);
    return ok && *speed >= minSpeed && *speed <= maxSpeed;
}

// The manikin has sent all it will send.
bool isComplete(const CPRData &session)
{
    return session.cprState() == CPRData::CPR_ENDED && session.cprEvents()->isScoresReady();
}

// Why the session could not be saved; empty when it could. Asked before the session begins.
QString whyNotSaved(const QString &target)
{
    const QFileInfo info(target);
    if (info.exists() && !info.isFile())
        return QStringLiteral("%1 is no regular file").arg(target);
    const QFileInfo folder(info.path());
    if (!folder.isDir() || !folder.isWritable())
        return QStringLiteral("%1 cannot be written; is the directory there and writable?")
            .arg(target);
    return QString();
}

// Begins the journal. A status when the session must not be played: the journal holds another one.
std::optional<ExitStatus> openJournal(SessionJournal &journal, const QString &target, bool force)
{
    if (!force && SessionJournal::isRecoverable(target)) {
        const QString name = SessionJournal::nameFor(target);
        return refuse(
            QStringLiteral("%1 holds a session that was not saved; "
                           "\"cprsession recover %1 -o %2\" saves it, --force discards it")
                .arg(name, target));
    }
    if (journal.open(target,
                     force ? SessionJournal::LeftJournal::Discard
                           : SessionJournal::LeftJournal::Keep)) {
        QObject::connect(&journal, &SessionJournal::failed, [](const QString &reason) {
            complain(reason + QStringLiteral("; the session goes on without a journal"));
        });
        return std::nullopt;
    }
    if (SessionJournal::isBeingWritten(target))
        return fail(journal.errorString());
    complain(journal.errorString() + QStringLiteral("; the session is played without a journal"));
    return std::nullopt;
}

// Plays the log until its end or Ctrl-C. Returns what is wrong in the log; empty for nothing.
QString play(manikinlog::ManikinLogReader &reader, manikinlog::ManikinLogPlayer &player,
             SessionJournal &journal, double speed, const std::function<void()> &report)
{
    Pacer pacer(speed);
    manikinlog::Record record;
    while (!interrupted && reader.read(record) == manikinlog::ManikinLogReader::Result::Record) {
        pacer.waitFor(record.msecs, [&journal] { journal.syncWhenDue(); });
        player.play(record);
        report();
    }
    return reader.errorString();
}

ExitStatus saveSession(const QString &target, CPRData &session, SessionJournal &journal)
{
    const QString error = sessionfiles::save(target, session);
    if (error.isEmpty()) {
        journal.remove();
        return ExitStatus::Done;
    }
    if (!journal.sync())
        return fail(error);
    return fail(QStringLiteral("%1; the session is kept: \"cprsession recover %2 -o OTHER.zip\" "
                               "saves it elsewhere")
                    .arg(error, journal.fileName()));
}

ExitStatus runReplay(const ReplayOptions &options)
{
    double speed = 0;
    if (!parseSpeed(options.speed, &speed))
        return refuse(QStringLiteral("--speed takes a number from %1 to %2, or max")
                          .arg(minSpeed)
                          .arg(maxSpeed));
    const QString target = fileName(options.session);
    if (QFileInfo::exists(target) && !options.force)
        return refuse(QStringLiteral("%1 exists; --force replaces it").arg(target));
    if (const QString reason = whyNotSaved(target); !reason.isEmpty())
        return fail(reason);
    const QString logName = fileName(options.log);
    if (wouldReplace(target, logName))
        return ExitStatus::WrongUsage;

    CPRData session;
    SessionJournal journal;
    QFile file(logName);
    FollowedFile followed(logName, [&session, &journal] {
        journal.syncWhenDue();
        return interrupted || isComplete(session);
    });
    QIODevice *log = options.follow ? static_cast<QIODevice *>(&followed) : &file;
    if (!QFileInfo(logName).isFile() || !log->open(QIODevice::ReadOnly))
        return fail(QStringLiteral("%1 cannot be read; is it there and a file?").arg(logName));
    if (QFileInfo(logName) == QFileInfo(SessionJournal::nameFor(target)))
        return refuse(
            QStringLiteral("%1 is the journal of %2; \"cprsession recover %1 -o %2\" plays it")
                .arg(logName, target));
    if (const auto status = openJournal(journal, target, options.force))
        return *status;
    if (options.follow || speed > 0)
        std::signal(SIGINT, onInterrupt); // ends the session, which is then saved

    QString error;
    {
        Progress progress(QStringLiteral("Replaying"));
        manikinlog::ManikinLogReader reader(log, logName);
        manikinlog::ManikinLogPlayer player(&session);
        player.setJournal(&journal);
        error = play(reader, player, journal, speed,
                     [&] { progress.report(file.pos(), options.follow ? 0 : file.size()); });
    }
    if (!error.isEmpty()) {
        journal.remove(); // the log itself holds as much
        return fail(error + QStringLiteral("; \"cprsession recover\" saves what can be played"));
    }
    return saveSession(target, session, journal);
}

} // namespace

void addReplayCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<ReplayOptions>();
    CLI::App *command =
        app.add_subcommand("replay", "Play a recorded manikin log into a session and save it");
    command->add_option("log", options->log, "The recorded log")->required()->type_name("LOG");
    command->add_option("-o,--output", options->session, "The session archive to write")
        ->required()
        ->type_name("SESSION.zip");
    command
        ->add_option("--speed", options->speed,
                     "1 plays in real time, 2 twice as fast; max as fast as it goes")
        ->capture_default_str();
    command->add_flag("--follow", options->follow,
                      "Wait for a log that still grows, until the manikin has sent its scores or "
                      "Ctrl-C is pressed");
    command->add_flag("--force", options->force,
                      "Replace an archive that exists, and the journal of a killed run");
    command->footer(
        "While it runs, SESSION.zip.journal holds the session, for \"cprsession recover\".\n"
        "Examples:\n"
        "  cprsession replay monday.cprlog -o monday.zip\n"
        "  cprsession replay live.cprlog -o live.zip --follow");
    command->callback([options, &run] { run.verb = [options] { return runReplay(*options); }; });
}
