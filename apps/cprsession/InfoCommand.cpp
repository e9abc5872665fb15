// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "SessionFile.h"
#include "SessionSummary.h"

#include <CPRData.h>

#include <QJsonDocument>

#include <memory>

namespace {

struct InfoOptions {
    std::string session;
    bool asJson = false;
};

ExitStatus runInfo(const InfoOptions &options)
{
    CPRData session;
    const QString name = fileName(options.session);
    const SessionFile::LoadResult loaded = SessionFile::load(name, session);
    if (!loaded.isArchive) {
        complain(QStringLiteral("%1 cannot be read as a session archive").arg(name));
        return ExitStatus::Failed;
    }
    SessionSummary summary(session);
    summary.isComplete = loaded.isComplete;
    summary.missingMembers = loaded.missing;
    print(options.asJson ? QString::fromUtf8(QJsonDocument(summary.toJson()).toJson())
                         : summary.toText());
    return loaded.isComplete ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

void addInfoCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App *command = app.add_subcommand("info", "Show what a session archive holds");
    command->add_option("session", options->session, "The session archive")
        ->required()
        ->type_name("SESSION.zip");
    command->add_flag("--json", options->asJson, "Print a JSON object");
    command->footer("Example: cprsession info session.zip --json");
    command->callback([options, &run] { run.verb = [options] { return runInfo(*options); }; });
}
