// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Progress.h"
#include "ShellSupport.h"
#include "private/ProgramStart.h"

#include <QGuiApplication>

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>

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

} // namespace

int main(int argc, char *argv[])
{
    ProgramStart::occupyStandardStreams();
    CLI::App app("CPR training sessions from the command line.", "cprsession");
    app.set_version_flag("--version", version);
    app.require_subcommand(1);
    app.fallthrough();
    app.failure_message([](const CLI::App *, const CLI::Error &error) {
        return std::string("cprsession: ") + error.what()
            + "; --help shows what can be asked for\n";
    });
    bool quiet = false;
    app.add_flag("--quiet", quiet, "Show no progress");
    app.footer("Exit status: 0 done; 1 the input is damaged or cannot be read, or the output "
               "cannot be written; 2 wrong usage.");

    Run run;
    addSimulateCommand(app, run);
    addReplayCommand(app, run);
    addInfoCommand(app, run);
    addValidateCommand(app, run);
    addDiffCommand(app, run);
    addExportCommand(app, run);
    addPlotCommand(app, run);
    addRecoverCommand(app, run);
    addGenerateCommand(app, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        // Zero for --help and --version; everything else is wrong usage, whatever CLI11 calls it.
        return app.exit(error) == 0 ? static_cast<int>(ExitStatus::Done)
                                    : static_cast<int>(ExitStatus::WrongUsage);
    }
    Progress::setShown(!quiet);

    std::unique_ptr<QCoreApplication> application;
    if (run.needsFonts)
        application = ProgramStart::drawing<QGuiApplication>(argc, argv);
    else
        application = std::make_unique<QCoreApplication>(argc, argv);
    showLibraryLog(true);
    return static_cast<int>(run.verb());
}
