// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/SessionEntry.h"

#include "sessionfiles/ArchiveSalvage.h"
#include "sessionfiles/SessionFile.h"
#include "sessionlibrary/ArchiveFolder.h"
#include "sessionreview/RecordedFigures.h"

#include <CPRData.h>

#include <QCoreApplication>

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

void read(const QString &path, SessionEntry &entry, const sessionfiles::Progress &progress)
{
    CPRData session;
    const sessionfiles::LoadResult loaded = sessionfiles::load(path, session, progress);
    if (loaded.isComplete && loaded.isArchive) {
        entry.state = State::Whole;
        describe(session, entry);
        return;
    }
    entry.reason = reasonOf(loaded);
    if (loaded.isCancelled)
        return;
    // More is found than load() finds, and the same as when it is opened or recovered.
    const sessionfiles::SalvagedSession salvaged = sessionfiles::salvage(path);
    if (!salvaged.holdsAnything)
        return;
    CPRData left;
    sessionfiles::load(salvaged, left);
    entry.state = State::Salvaged;
    describe(left, entry);
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
        read(path, result.entry, progress);
        if (isCancelled && isCancelled()) {
            result.result = ReadEntry::Result::Cancelled;
            return result;
        }
        if (stampOf(path) == result.entry.stamp) {
            result.result = ReadEntry::Result::Read;
            return result;
        }
    }
    result.result = ReadEntry::Result::Changing;
    return result;
}

} // namespace sessionlibrary
