// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_COMMAND_H
#define CPRSESSION_COMMAND_H

#include "sessionfiles/SessionFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <CLI/App.hpp>

#include <functional>
#include <optional>
#include <string>

/// What the program answers to the shell.
enum class ExitStatus {
    Done = 0,
    Failed = 1, ///< the input is damaged or cannot be read, or the output cannot be written
    WrongUsage = 2 ///< the command line asks for something that cannot be
};

/// What is done once the command line has been parsed.
struct Run {
    std::function<ExitStatus()> verb;
    bool needsFonts = false; ///< draws text
};

/// Each verb adds itself to the command line, and fills in \a run when it is the one asked for.
void addSimulateCommand(CLI::App &app, Run &run);
void addSendCommand(CLI::App &app, Run &run);
void addReplayCommand(CLI::App &app, Run &run);
void addInfoCommand(CLI::App &app, Run &run);
void addValidateCommand(CLI::App &app, Run &run);
void addDiffCommand(CLI::App &app, Run &run);
void addExportCommand(CLI::App &app, Run &run);
void addPlotCommand(CLI::App &app, Run &run);
void addClassCommand(CLI::App &app, Run &run);
void addReportCommand(CLI::App &app, Run &run);
void addRecordCommand(CLI::App &app, Run &run);
void addRecoverCommand(CLI::App &app, Run &run);
void addLibraryCommand(CLI::App &app, Run &run);

/// A file name as the shell gave it.
QString fileName(const std::string &argument);
/// Whether \a target may be written: never over one of \a inputs, over another file only with
/// \a force. Complains when it may not, which is wrong usage.
bool mayWrite(const QString &target, const QStringList &inputs, bool force);
/// @{
/// Writes a result to stdout, as UTF-8: a text whose line breaks are the program's own, or one line
/// that may hold anything. What cannot be seen is escaped.
void print(const QString &text);
void printLine(const QString &text);
/// @}
/// Why nothing of a session could be loaded from the file \a name.
QString whyNoSession(const QString &name);
/// Loads the archive or recorded log \a name. Complains when it holds no session, or is a log that
/// could not be read to its end.
sessionfiles::LoadResult loadSession(const QString &name, CPRData &session);
/// The factor of --speed: a number from the slowest to the fastest that a clock of ms can pace, 0
/// for "max". False, with the reason in \a error, for anything else.
bool parseSpeed(const std::string &text, double *speed, QString *error);
/// The number of --seed; none, with the reason in \a error, for anything else.
std::optional<quint64> parseSeed(const std::string &text, QString *error);
/// Whether the library's own log, which says what it cannot read, goes to stderr.
void showLibraryLog(bool shown);
/// One line on stderr that says what was wrong, where, and what to do.
void complain(const QString &text);
/// @{
/// The same, and the status that goes with it: Failed, WrongUsage.
ExitStatus fail(const QString &text);
ExitStatus refuse(const QString &text);
/// @}

#endif
