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
#include <limits>

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

bool parseSpeed(const std::string &text, double *speed, QString *error)
{
    constexpr double minSpeed = 0.001;
    constexpr double maxSpeed = 1000;
    *speed = 0;
    if (text == "max")
        return true;
    bool ok = false;
    *speed = QString::fromStdString(text).toDouble(&ok);
    if (ok && *speed >= minSpeed && *speed <= maxSpeed)
        return true;
    *error =
        QStringLiteral("--speed takes a number from %1 to %2, or max").arg(minSpeed).arg(maxSpeed);
    return false;
}

std::optional<quint64> parseSeed(const std::string &text, QString *error)
{
    bool ok = false; // CLI11 would make the greatest number of -1
    const quint64 seed = QString::fromStdString(text).toULongLong(&ok);
    if (ok)
        return seed;
    *error = QStringLiteral("--seed takes a whole number from 0 to %1")
                 .arg(std::numeric_limits<quint64>::max());
    return std::nullopt;
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
