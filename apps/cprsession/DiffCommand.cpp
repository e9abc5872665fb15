// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "sessionfiles/MemoryFileHandler.h"
#include "sessionfiles/SessionDiff.h"
#include "sessionfiles/SessionFile.h"

#include <CPRData.h>

#include <QJsonDocument>

#include <memory>
#include <utility>

namespace {

struct DiffOptions {
    std::string a;
    std::string b;
    bool ignoresTimes = false;
    bool asJson = false;
    bool isSummary = false;
};

// Null when it cannot be read whole: what could be read of a damaged file says nothing about the
// session. A recording is compared as it would be stored: a session that was just played knows
// more.
std::unique_ptr<CPRData> loadWhole(const QString &name)
{
    auto session = std::make_unique<CPRData>();
    const sessionfiles::LoadResult loaded = loadSession(name, *session);
    if (loaded.isRecording && loaded.isComplete) {
        sessionfiles::MemoryFileHandler stored;
        session->writeData(&stored);
        session = std::make_unique<CPRData>();
        sessionfiles::load(stored, *session);
    } else if (loaded.hasSession() && !loaded.isComplete && !loaded.isRecording) {
        complain(
            QStringLiteral("%1 cannot be read whole; cprsession validate tells why").arg(name));
    }
    return loaded.isComplete ? std::move(session) : nullptr;
}

ExitStatus runDiff(const DiffOptions &options)
{
    const sessionfiles::SessionDiff::Names names{fileName(options.a), fileName(options.b)};
    const auto a = loadWhole(names.a);
    const auto b = a ? loadWhole(names.b) : nullptr;
    if (!b)
        return ExitStatus::Failed;
    const sessionfiles::SessionDiff diff(names, *a, *b, options.ignoresTimes);
    if (options.asJson)
        print(QString::fromUtf8(
            QJsonDocument(options.isSummary ? diff.summaryToJson() : diff.toJson()).toJson()));
    else
        print(options.isSummary ? diff.toSummary() : diff.toText());
    return diff.isSame() ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

void addDiffCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<DiffOptions>();
    CLI::App *command = app.add_subcommand("diff", "Tell what differs between two sessions");
    command->add_option("a", options->a, "A session archive, or a recorded log")
        ->required()
        ->type_name("A");
    command->add_option("b", options->b, "The session to compare it with")
        ->required()
        ->type_name("B");
    command->add_flag("--ignore-times", options->ignoresTimes,
                      "Pass over the times of day at which the sessions were recorded");
    command->add_flag("--summary", options->isSummary,
                      "Print a line for each part that differs, with how much of it does");
    command->add_flag("--json", options->asJson, "Print a JSON object");
    command->footer(
        "Prints a line for each difference, the value in A first, or with --summary\n"
        "for each part that differs, with how many values, events (changed, or only in\n"
        "one session) and samples do; nothing when the sessions are the same.\n"
        "Exit status: 0 the same; 1 different, or a session cannot be read, which a\n"
        "line on stderr tells; 2 wrong usage.\n"
        "Examples:\n"
        "  cprsession diff monday.zip copy.zip --ignore-times\n"
        "  cprsession diff monday.zip monday.cprlog --summary");
    command->callback([options, &run] { run.verb = [options] { return runDiff(*options); }; });
}
