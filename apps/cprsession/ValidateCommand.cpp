// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Progress.h"
#include "sessionfiles/ArchiveCheck.h"

#include <QJsonDocument>

#include <memory>

namespace {

struct ValidateOptions {
    std::string session;
    bool asJson = false;
};

ExitStatus runValidate(const ValidateOptions &options)
{
    const QString name = fileName(options.session);
    const std::optional<QString> reason = sessionfiles::whyNoArchive(name);
    if (reason)
        complain(*reason);
    if (reason && !options.asJson)
        return ExitStatus::Failed;
    sessionfiles::FindingList list(name);
    {
        Progress progress(QStringLiteral("Checking"));
        showLibraryLog(false); // the findings say the same, and where
        list = sessionfiles::check(
            name, [&progress](qint64 done, qint64 total) { progress.report(done, total); });
    }
    print(options.asJson ? QString::fromUtf8(QJsonDocument(list.toJson()).toJson())
                         : list.toText());
    return list.errors() == 0 ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

void addValidateCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<ValidateOptions>();
    CLI::App *command = app.add_subcommand("validate", "Check whether a session archive is whole");
    command->add_option("session", options->session, "The session archive")
        ->required()
        ->type_name("SESSION.zip");
    command->add_flag("--json", options->asJson, "Print a JSON object");
    command->footer("Prints a line for each finding: where, what was expected, what stands there.\n"
                    "Errors are damage; warnings are what readers pass over, and what a session\n"
                    "that went badly can hold.\n"
                    "Exit status: 0 no error; 1 an error, or no archive that can be read.\n"
                    "Example: cprsession validate session.zip");
    command->callback([options, &run] { run.verb = [options] { return runValidate(*options); }; });
}
