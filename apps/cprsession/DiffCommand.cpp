// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "sessionfiles/ArchiveCheck.h"
#include "sessionfiles/SessionDiff.h"
#include "sessionfiles/SessionFile.h"

#include <CPRData.h>

#include <QJsonDocument>

#include <memory>

namespace {

struct DiffOptions {
    std::string a;
    std::string b;
    bool ignoresTimes = false;
    bool asJson = false;
};

// What could be read of a damaged archive says nothing about the session, so it is not compared.
bool load(const QString &name, CPRData &session)
{
    std::optional<QString> reason = sessionfiles::whyNoArchive(name);
    if (!reason && !sessionfiles::load(name, session).isComplete)
        reason = QStringLiteral("%1 cannot be read whole; cprsession validate tells why").arg(name);
    if (reason)
        complain(*reason);
    return !reason;
}

ExitStatus runDiff(const DiffOptions &options)
{
    const sessionfiles::SessionDiff::Names names{fileName(options.a), fileName(options.b)};
    CPRData a;
    CPRData b;
    if (!load(names.a, a) || !load(names.b, b))
        return ExitStatus::Failed;
    const sessionfiles::SessionDiff diff(names, a, b, options.ignoresTimes);
    print(options.asJson ? QString::fromUtf8(QJsonDocument(diff.toJson()).toJson())
                         : diff.toText());
    return diff.isSame() ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

void addDiffCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<DiffOptions>();
    CLI::App *command = app.add_subcommand("diff", "Tell what differs between two sessions");
    command->add_option("a", options->a, "A session archive")->required()->type_name("A.zip");
    command->add_option("b", options->b, "The archive to compare it with")
        ->required()
        ->type_name("B.zip");
    command->add_flag("--ignore-times", options->ignoresTimes,
                      "Pass over the times of day at which the sessions were recorded");
    command->add_flag("--json", options->asJson, "Print a JSON object");
    command->footer("Prints a line for each difference, the value in A.zip first; nothing when\n"
                    "the sessions are the same.\n"
                    "Exit status: 0 the same; 1 different, or an archive cannot be read, which a\n"
                    "line on stderr tells; 2 wrong usage.\n"
                    "Example: cprsession diff monday.zip copy.zip --ignore-times");
    command->callback([options, &run] { run.verb = [options] { return runDiff(*options); }; });
}
