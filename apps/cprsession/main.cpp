// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"

#include <QCoreApplication>

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);

    CLI::App app("CPR training sessions from the command line.", "cprsession");
    app.set_version_flag("--version", "cprsession " CPRSESSION_VERSION);
    app.require_subcommand(1);
    app.footer("Exit status: 0 done; 1 the input is damaged or cannot be read, or the output "
               "cannot be written; 2 wrong usage.");

    Run run;
    addReplayCommand(app, run);
    addInfoCommand(app, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        // Zero for --help and --version; everything else is wrong usage, whatever CLI11 calls it.
        return app.exit(error) == 0 ? static_cast<int>(ExitStatus::Done)
                                    : static_cast<int>(ExitStatus::WrongUsage);
    }
    return static_cast<int>(run());
}
