// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef PROGRAMSTART_H
#define PROGRAMSTART_H

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

/// What programs begin with.
namespace ProgramStart {

/// Where stdin, stdout or stderr is closed, the first file that is opened would get its number, and
/// with it what is printed; /dev/null does instead. Printing fails there.
inline void occupyStandardStreams()
{
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

/// An application that draws pictures and has no display. Where XDG_RUNTIME_DIR is not set, as in a
/// cron job, Qt would make a folder for it among the temporary files, and complain on stderr.
template <typename Application> std::unique_ptr<Application> drawing(int &argc, char *argv[])
{
    const QByteArray temporary = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/dev/null");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const auto onlyFatal = [](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
    };
    const QtMessageHandler usual = qInstallMessageHandler(onlyFatal);
    auto application = std::make_unique<Application>(argc, argv);
    qInstallMessageHandler(usual);
    if (temporary.isEmpty())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", temporary);
    return application;
}

} // namespace ProgramStart

#endif
