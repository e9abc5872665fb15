// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "private/Terminal.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <cstdio>

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
    Terminal::write(stdout, text);
}

void printLine(const QString &text)
{
    Terminal::writeLine(stdout, text);
}

sessionfiles::LoadResult loadSession(const QString &name, CPRData &session)
{
    const sessionfiles::LoadResult loaded = sessionfiles::load(name, session);
    if (!loaded.problem.isEmpty())
        complain(loaded.problem);
    else if (loaded.isArchive && !loaded.hasSession())
        complain(QStringLiteral("%1 is an archive, but there is no session in it").arg(name));
    else if (!loaded.hasSession())
        complain(
            QStringLiteral("%1 cannot be read as a session archive or recorded log").arg(name));
    return loaded;
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
    Terminal::writeLine(stderr, QStringLiteral("cprsession: ") + text);
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
