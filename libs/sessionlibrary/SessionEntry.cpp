// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/SessionEntry.h"

#include "sessionfiles/ArchiveSalvage.h"
#include "sessionfiles/SessionFile.h"
#include "sessionlibrary/ArchiveFolder.h"
#include "sessionreview/RecordedFigures.h"

#include <CPRData.h>

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cstring>

namespace sessionlibrary {

namespace {

using sessionfiles::LoadedMember;

// What is wrong with an archive that was not loaded whole.
QString reasonOf(const sessionfiles::LoadResult &loaded)
{
    if (!loaded.isArchive)
        return QCoreApplication::translate("sessionlibrary", "it is no archive that can be opened");
    if (!loaded.hasMembers())
        return QCoreApplication::translate("sessionlibrary", "there is no session in it");
    for (const LoadedMember &member : loaded.members) {
        if (member.state == LoadedMember::Damaged)
            return member.name + QStringLiteral(": ") + member.reason;
    }
    return QCoreApplication::translate("sessionlibrary", "%1 missing")
        .arg(loaded.missing().join(QLatin1String(", ")));
}

void describe(const CPRData &session, SessionEntry &entry)
{
    const sessionreview::SessionReview review = sessionreview::reviewOf(session);
    entry.figures = review.figures;
    entry.recorded.clear();
    for (const sessionreview::RecordedFigure &figure : sessionreview::recordedFigures())
        entry.recorded.push_back(figure.value(review));
    for (const sessionreview::Flag &flag : review.flags) {
        if (flag.kind == sessionreview::Flag::Kind::User)
            entry.notes.append(flag.name);
    }
}

// Why the system does not give all bytes of a file; none when it does.
std::optional<QString> whyUnreadable(const QString &path)
{
    constexpr qint64 blockSize = 1 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    QByteArray block(blockSize, Qt::Uninitialized);
    qint64 size = 0;
    do {
        size = file.read(block.data(), blockSize);
    } while (size > 0);
    return size < 0 ? std::optional(file.errorString()) : std::nullopt;
}

// Whether the archive was loaded whole, and described.
bool isDescribed(const QString &path, SessionEntry &entry, const sessionfiles::Progress &progress)
{
    CPRData session;
    const sessionfiles::LoadResult loaded = sessionfiles::load(path, session, progress);
    const bool isWhole = loaded.isComplete && loaded.isArchive;
    entry.state = isWhole ? State::Whole : State::Damaged;
    entry.reason = isWhole ? QString() : reasonOf(loaded);
    if (isWhole)
        describe(session, entry);
    // Whatever it is otherwise, it was no session.
    return isWhole || loaded.isCancelled || (loaded.isArchive && !loaded.hasMembers());
}

// Of a damaged archive more is found than load() finds, and the same as when it is recovered.
void describeLeft(const QString &path, SessionEntry &entry)
{
    const sessionfiles::SalvagedSession salvaged = sessionfiles::salvage(path);
    if (!salvaged.holdsAnything)
        return;
    CPRData left;
    sessionfiles::load(salvaged, left);
    entry.state = State::Salvaged;
    describe(left, entry);
}

// What looks damaged may be a disk or a network that has failed for a moment: it is read again.
ReadEntry::Result read(const QString &path, ReadEntry &result,
                       const sessionfiles::Progress &progress)
{
    if (isDescribed(path, result.entry, progress))
        return ReadEntry::Result::Read;
    if (const std::optional<QString> reason = whyUnreadable(path)) {
        result.reason = *reason;
        return ReadEntry::Result::Unreadable;
    }
    if (!isDescribed(path, result.entry, progress))
        describeLeft(path, result.entry);
    return ReadEntry::Result::Read;
}

} // namespace

std::optional<double> SessionEntry::recordedValue(const char *key) const
{
    const auto &rows = sessionreview::recordedFigures();
    for (std::size_t i = 0; i < rows.size() && i < recorded.size(); ++i) {
        if (std::strcmp(rows[i].key, key) == 0)
            return recorded[i];
    }
    return std::nullopt;
}

sessionreview::SessionResult SessionEntry::result() const
{
    sessionreview::SessionResult result;
    result.learners = figures.learners;
    result.start = figures.start();
    if (figures.hasScores)
        result.score = figures.overallScore;
    result.basicThreshold = figures.basicThreshold;
    result.advancedThreshold = figures.advancedThreshold;
    for (const sessionreview::RecordedFigure *figure : sessionreview::classFigures())
        result.figures.push_back(recordedValue(figure->key));
    return result;
}

ReadEntry readEntry(const QString &folder, const QString &file,
                    const std::function<bool()> &isCancelled)
{
    constexpr int attempts = 3;
    const QString path = folder + QLatin1Char('/') + file;
    ReadEntry result;
    sessionfiles::Progress progress;
    if (isCancelled)
        progress = [&isCancelled](qint64 /*done*/, qint64 /*total*/) { return !isCancelled(); };
    for (int attempt = 0; attempt < attempts; ++attempt) {
        result.entry = SessionEntry();
        result.entry.file = file;
        result.entry.stamp = stampOf(path);
        result.entry.recorded.resize(sessionreview::recordedFigures().size());
        if (result.entry.stamp == FileStamp()) {
            result.result = ReadEntry::Result::Gone;
            return result;
        }
        result.result = read(path, result, progress);
        if (isCancelled && isCancelled()) {
            result.result = ReadEntry::Result::Cancelled;
            return result;
        }
        if (stampOf(path) == result.entry.stamp)
            return result;
    }
    result.result = ReadEntry::Result::Changing;
    return result;
}

} // namespace sessionlibrary
