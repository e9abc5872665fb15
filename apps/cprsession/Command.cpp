// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "private/Terminal.h"
#include "sessionfiles/ArchiveCheck.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>

QString fileName(const std::string &argument)
{
    return QFile::decodeName(argument.c_str());
}

bool mayWrite(const QString &target, const QStringList &inputs, bool force)
{
    const QFileInfo replaced(target);
    if (!replaced.exists())
        return true;
    const bool isInput = std::any_of(inputs.begin(), inputs.end(), [&](const QString &input) {
        return replaced == QFileInfo(input);
    });
    if (isInput)
        complain(
            QStringLiteral("%1 would replace what it is made of; choose another name").arg(target));
    else if (!force)
        complain(QStringLiteral("%1 exists; --force replaces it").arg(target));
    return !isInput && force;
}

void print(const QString &text)
{
    Terminal::write(stdout, text);
}

void printLine(const QString &text)
{
    Terminal::writeLine(stdout, text);
}

QString whyNoSession(const QString &name)
{
    return sessionfiles::isForeignArchive(name)
        ? sessionfiles::whyNoArchive(name).value_or(name)
        : QStringLiteral("%1 cannot be read as a session archive or recorded log").arg(name);
}

sessionfiles::LoadResult loadSession(const QString &name, CPRData &session)
{
    const sessionfiles::LoadResult loaded = sessionfiles::load(name, session);
    if (!loaded.problem.isEmpty())
        complain(loaded.problem);
    else if (!loaded.hasSession())
        complain(whyNoSession(name));
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
