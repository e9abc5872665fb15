// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Progress.h"
#include "SessionFile.h"

#include <CPRData.h>
#include <ManikinLogPlayer.h>
#include <ManikinLogReader.h>

#include <QFile>
#include <QFileInfo>

#include <memory>

namespace {

struct ReplayOptions {
    std::string log;
    std::string session;
    bool force = false;
};

ExitStatus runReplay(const ReplayOptions &options)
{
    const QString target = fileName(options.session);
    if (QFileInfo::exists(target) && !options.force) {
        complain(QStringLiteral("%1 exists; --force replaces it").arg(target));
        return ExitStatus::WrongUsage;
    }

    QFile log(fileName(options.log));
    if (!log.open(QIODevice::ReadOnly)) {
        complain(QStringLiteral("%1 cannot be read: %2").arg(log.fileName(), log.errorString()));
        return ExitStatus::Failed;
    }
    CPRData session;
    {
        Progress progress(QStringLiteral("Replaying"));
        manikinlog::ManikinLogReader reader(&log, log.fileName());
        manikinlog::ManikinLogPlayer player(&session);
        if (!player.play(reader, [&](qint64) { progress.report(log.pos(), log.size()); })) {
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
    command->add_flag("--force", options->force, "Replace an archive that exists");
    command->footer("Example: cprsession replay monday.cprlog -o monday.zip");
    command->callback([options, &run] { run = [options] { return runReplay(*options); }; });
}
