// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Progress.h"
#include "ShellSupport.h"
#include "private/ProgramStart.h"
#include "private/Terminal.h"

#include <QGuiApplication>

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr char version[] = "cprsession " CPRSESSION_VERSION;

// For the build: completions and the man page come from the command line itself.
void addGenerateCommand(CLI::App &app, Run &run)
{
    CLI::App *command = app.add_subcommand("generate")->group("");
    const auto add = [&](const char *what, auto generate) {
        command->add_subcommand(what)->callback([&app, &run, generate] {
            run.verb = [&app, generate] {
                print(QString::fromStdString(generate(app)));
                return ExitStatus::Done;
            };
        });
    };
    command->require_subcommand(1);
    add("bash", ShellSupport::bashCompletion);
    add("zsh", ShellSupport::zshCompletion);
    add("fish", ShellSupport::fishCompletion);
    add("man", [](const CLI::App &all) { return ShellSupport::manPage(all, version); });
}

// Why the command line is refused although CLI11 accepts it; none when it is not. No option has a
// meaning for an empty text.
std::optional<QString> whyRefused(const CLI::App &app)
{
    for (const CLI::App *verb : app.get_subcommands()) {
        for (const CLI::Option *option : verb->get_options()) {
            const std::vector<std::string> &texts = option->results();
            if (std::find(texts.begin(), texts.end(), std::string()) != texts.end())
                return QStringLiteral("%1 needs a text that is not empty")
                    .arg(QString::fromStdString(option->get_name()));
        }
        if (const std::optional<QString> reason = whyRefused(*verb))
            return reason;
    }
    return std::nullopt;
}

ExitStatus runProgram(int argc, char *argv[])
{
    CLI::App app("CPR training sessions from the command line.", "cprsession");
    app.set_version_flag("--version", version);
    app.require_subcommand(1);
    app.fallthrough();
    app.failure_message([](const CLI::App *, const CLI::Error &error) {
        return "cprsession: "
            + PrintableText::escaped(QString::fromLocal8Bit(error.what())).toStdString()
            + "; --help shows what can be asked for\n";
    });
    bool quiet = false;
    app.add_flag("--quiet", quiet, "Show no progress");
    app.footer("cprsession SUBCOMMAND --help shows the options of a subcommand, with examples.\n"
               "Exit status: 0 done; 1 the input is damaged or cannot be read, or the output "
               "cannot be written; 2 wrong usage.");

    Run run;
    addSimulateCommand(app, run);
    addSendCommand(app, run);
    addReplayCommand(app, run);
    addRecordCommand(app, run);
    addInfoCommand(app, run);
    addValidateCommand(app, run);
    addDiffCommand(app, run);
    addExportCommand(app, run);
    addPlotCommand(app, run);
    addReportCommand(app, run);
    addClassCommand(app, run);
    addRecoverCommand(app, run);
    addLibraryCommand(app, run);
    addGenerateCommand(app, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        // Zero for --help and --version; everything else is wrong usage, whatever CLI11 calls it.
        return app.exit(error) == 0 ? ExitStatus::Done : ExitStatus::WrongUsage;
    }
    if (const std::optional<QString> reason = whyRefused(app))
        return refuse(*reason);
    Progress::setShown(!quiet);

    std::unique_ptr<QCoreApplication> application;
    if (run.needsFonts)
        application = ProgramStart::drawing<QGuiApplication>(argc, argv);
    else
        application = std::make_unique<QCoreApplication>(argc, argv);
    showLibraryLog(true);
    return run.verb();
}

} // namespace

int main(int argc, char *argv[])
{
    ProgramStart::occupyStandardStreams();
    Terminal::showLog();
    ExitStatus status = runProgram(argc, argv);
    if (!Terminal::isOutputWritten() && status == ExitStatus::Done)
        status = fail(QStringLiteral("the output cannot be written; is the disk full?"));
    return static_cast<int>(status);
}
