// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_COMMANDLINE_H
#define CPRVIEWER_COMMANDLINE_H

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// What the program answers to the shell.
enum class ExitStatus {
    Done = 0,
    Failed = 1, ///< the input cannot be read, the output cannot be written, or there is no display
    WrongUsage = 2 ///< the command line asks for something that cannot be
};

/// What the command line asks for.
struct CommandLine {
    QString file; ///< archive or log to open
    QStringList scenarios; ///< of the simulated manikins; more than one are a class
    int seed = 1;
    QString log; ///< to replay live
    QStringList addresses; ///< where manikins are listened for, manikinlink::LinkAddress as texts
    QString compared; ///< archive or log to compare the session with
    double speed = 1; ///< of live sessions; 2 is twice as fast
    std::optional<double> atSecs; ///< of session time; where live sessions are to begin
    QString page; ///< live, review, manikins, a page of the library, or empty
    QString library; ///< folder of sessions, instead of the one that was chosen
    QString learner; ///< whose page is shown
    QString classList; ///< a file with learners
    bool hasLearnerView = false; ///< a picture is of it
    QString screenshot; ///< a file; empty when no picture is made
    QSize size; ///< empty for the last one
    QString language; ///< en, de, or empty for the system's
    bool isDark = false;
    bool isLight = false;

    bool isLive() const { return !scenarios.isEmpty() || !log.isEmpty(); }

    /// Fills in what stands in the arguments. A status when the program is to end with it; then
    /// everything has been said.
    std::optional<ExitStatus> parse(int argc, char *argv[]);
};

/// One line on stderr that says what was wrong, where, and what to do.
void complain(const QString &text);

#endif
