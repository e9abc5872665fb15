// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_PROGRAM_H
#define TESTSUPPORT_PROGRAM_H

#include <QProcess>

#include <functional>

/// Programs and copies of this process, and how they end.
namespace testsupport {

struct Answer {
    int status = -1; // its exit status, unless it was killed or did not end
    QByteArray output;
    QByteArray errors;
};

/// Runs a program as a shell does that stands in \a folder.
Answer run(const QString &program, const QStringList &arguments, const QString &folder = {},
           const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

struct Ended {
    int exitCode; // -1 after a signal
    double cpuSeconds;
    double megabytes; // at its peak
};

/// Runs \a work in a copy of this process; its result is the exit code.
Ended runInChild(const std::function<int()> &work);

#ifdef __SANITIZE_ADDRESS__
constexpr int slowdown = 10;
#else
constexpr int slowdown = 1;
#endif

/// How much of a test is run, where all of it takes long.
int seeds(int usual);

} // namespace testsupport

#endif
