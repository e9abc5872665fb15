// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TERMINAL_H
#define TERMINAL_H

#include "private/PrintableText.h"

#include <QtGlobal>

#include <cstdio>
#include <iostream>

/// How the programs write to stdout and stderr. Nothing that a text holds acts on a terminal.
namespace Terminal {

/// A text whose line breaks are the program's own, as UTF-8.
inline void write(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = PrintableText::escapedLines(text).toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

/// A text that stays one line, whatever it holds.
inline void writeLine(std::FILE *stream, const QString &text)
{
    write(stream, PrintableText::escaped(text) + QLatin1Char('\n'));
}

/// From now on log lines go to stderr in this way. The second line of a message and those after it
/// are indented, so that they are not taken for messages.
inline void showLog()
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context,
                              const QString &message) {
        const QString text = qFormatLogMessage(type, context, message);
        write(stderr,
              QString(text).replace(QLatin1Char('\n'), QLatin1String("\n\t")) + QLatin1Char('\n'));
    });
}

/// Whether stdout has accepted all that was written to it. Asked when a program ends.
inline bool isOutputWritten()
{
    std::cout.flush();
    return std::cout.good() && std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

} // namespace Terminal

#endif
