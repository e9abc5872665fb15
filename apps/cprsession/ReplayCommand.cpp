// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "FollowedFile.h"
#include "Progress.h"
#include "SessionFile.h"

#include <CPRData.h>
#include <ManikinLogPlayer.h>
#include <ManikinLogReader.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <csignal>
#include <memory>

namespace {

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

// Lets every record come at its time, counted from the first one.
class Pacer {
public:
    // Twice the speed for 2; as fast as it goes for 0.
    explicit Pacer(double speed) : m_speed(speed) { m_clock.start(); }

    void waitFor(qint64 msecs)
    {
        if (m_speed <= 0)
            return;
        const auto due = static_cast<qint64>(static_cast<double>(msecs) / m_speed);
        while (!interrupted && m_clock.elapsed() < due)
            QThread::msleep(static_cast<unsigned long>(qMin(due - m_clock.elapsed(), qint64(50))));
    }

private:
    double m_speed;
    QElapsedTimer m_clock;
};

// The factor for "max" (0) or a positive number.
bool parseSpeed(const std::string &text, double *speed)
{
    *speed = 0;
    if (text == "max")
        return true;
    bool ok = false;
    *speed = QString::fromStdString(text).toDouble(&ok);
    return ok && *speed > 0;
}

// The manikin has sent all it will send.
bool isComplete(const CPRData &session)
{
    return session.cprState() == CPRData::CPR_ENDED && session.cprEvents()->isScoresReady();
}

ExitStatus runReplay(const ReplayOptions &options)
{
    double speed = 0;
    if (!parseSpeed(options.speed, &speed)) {
        complain(QStringLiteral("--speed takes a positive number or max"));
        return ExitStatus::WrongUsage;
    }
    const QString target = fileName(options.session);
    if (QFileInfo::exists(target) && !options.force) {
        complain(QStringLiteral("%1 exists; --force replaces it").arg(target));
        return ExitStatus::WrongUsage;
    }

    CPRData session;
    const QString logName = fileName(options.log);
    QFile file(logName);
    FollowedFile followed(logName, [&session] { return interrupted || isComplete(session); });
    QIODevice *log = options.follow ? static_cast<QIODevice *>(&followed) : &file;
    if (!QFileInfo(logName).isFile() || !log->open(QIODevice::ReadOnly)) {
        complain(QStringLiteral("%1 cannot be read; is it there and a file?").arg(logName));
        return ExitStatus::Failed;
    }
    if (options.follow || speed > 0)
        std::signal(SIGINT, onInterrupt); // ends the session, which is then saved

    {
        Progress progress(QStringLiteral("Replaying"));
        Pacer pacer(speed);
        manikinlog::ManikinLogReader reader(log, logName);
        manikinlog::ManikinLogPlayer player(&session);
        manikinlog::Record record;
        auto result = reader.read(record);
        while (result == manikinlog::ManikinLogReader::Result::Record && !interrupted) {
            pacer.waitFor(record.msecs);
            player.play(record);
            progress.report(file.pos(), options.follow ? 0 : file.size());
            result = reader.read(record);
        }
        if (result == manikinlog::ManikinLogReader::Result::Error) {
            complain(reader.errorString());
            return ExitStatus::Failed;
        }
    }
    if (const QString error = SessionFile::save(target, session); !error.isEmpty()) {
        complain(error);
        return ExitStatus::Failed;
    }
    return ExitStatus::Done;
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
    command->add_flag("--force", options->force, "Replace an archive that exists");
    command->footer("Examples:\n"
                    "  cprsession replay monday.cprlog -o monday.zip\n"
                    "  cprsession replay live.cprlog -o live.zip --follow");
    command->callback([options, &run] { run.verb = [options] { return runReplay(*options); }; });
}
