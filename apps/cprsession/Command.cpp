// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <cstdio>

namespace {

void write(std::FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

} // namespace

QString fileName(const std::string &argument)
{
    return QFile::decodeName(argument.c_str());
}

bool wouldReplace(const QString &target, const QString &input)
{
    const QFileInfo replaced(target);
    if (!replaced.exists() || replaced != QFileInfo(input))
        return false;
    complain(
        QStringLiteral("%1 would replace what it is made of; choose another name").arg(target));
    return true;
}

void print(const QString &text)
{
    write(stdout, text.toUtf8());
}

void showLibraryLog(bool shown)
{
    // The verbs say themselves, in one line, why an archive cannot be opened or written.
    QLoggingCategory::setFilterRules(
        shown ? QStringLiteral("Kelmar.CPRData.CPRFileHandlerZip=false")
              : QStringLiteral("Kelmar.CPRData.*=false\ndefault.warning=false"));
}

void complain(const QString &text)
{
    write(stderr, "cprsession: " + text.toUtf8() + '\n');
}

ExitStatus fail(const QString &text)
{
    complain(text);
    return ExitStatus::Failed;
}

ExitStatus refuse(const QString &text)
{
    complain(text);
    return ExitStatus::WrongUsage;
}
