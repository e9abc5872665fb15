// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/LearnerChange.h"

#include "sessionfiles/SessionFile.h"
#include "sessionlibrary/ArchiveFolder.h"
#include "sessionlibrary/IndexWriter.h"

#include <CPRData.h>

#include <QCoreApplication>

namespace sessionlibrary {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("sessionlibrary", text);
}

using Names = std::function<QStringList(const QStringList &)>;

// Why the learners of an archive could not be changed; none when they are.
std::optional<QString> changeArchive(const QString &path, const Names &names)
{
    const FileStamp before = stampOf(path);
    CPRData loaded;
    const sessionfiles::LoadResult read = sessionfiles::load(path, loaded);
    if (!read.isComplete || !read.isArchive)
        return translated(QT_TRANSLATE_NOOP("sessionlibrary", "it is damaged; recover it first"));
    CPRData session(loaded); // lists statistics and score, which are saved then
    QStringList wanted;
    for (const QString &name : names(session.learners())) {
        if (!storedName(name).isEmpty())
            wanted.append(storedName(name));
    }
    const QStringList old = session.learners();
    for (const QString &name : old)
        session.releaseLearner(name);
    for (const QString &name : qAsConst(wanted))
        session.assignLearner(name);
    if (stampOf(path) != before)
        return translated(QT_TRANSLATE_NOOP("sessionlibrary", "somebody else is writing it"));
    const sessionfiles::SaveResult saved = sessionfiles::save(path, session);
    return saved.isComplete ? std::nullopt : std::optional<QString>(saved.reason);
}

// Changes the archives and brings their entries up to date, one by one: a process that is killed
// has done some of them, wholly.
LearnerChange changeArchives(SessionLibrary &library, const QStringList &files, const Names &names,
                             const ChangeProgress &progress)
{
    LearnerChange change;
    IndexWriter writer(library);
    for (int i = 0; i < files.size(); ++i) {
        const QString &file = files.at(i);
        if (progress && !progress(i, int(files.size()))) {
            change.left.append(
                {file, translated(QT_TRANSLATE_NOOP("sessionlibrary", "cancelled"))});
            continue;
        }
        if (const std::optional<QString> reason = changeArchive(library.pathOf(file), names)) {
            change.left.append({file, *reason});
            continue;
        }
        change.changed.append(file);
        const ReadEntry read = readEntry(library.folder(), file);
        if (read.result == ReadEntry::Result::Read && !writer.store({read.entry}))
            change.error = library.errorString();
    }
    return change;
}

// The files whose session has the learner; none after an error.
std::optional<QStringList> filesOf(SessionLibrary &library, const QString &name)
{
    const auto sessions = library.sessionsOf(name);
    if (!sessions)
        return std::nullopt;
    QStringList files;
    for (const SessionEntry &entry : *sessions)
        files.append(entry.file);
    return files;
}

} // namespace

QString storedName(const QString &name)
{
    return QString(name).remove(QLatin1Char(','));
}

LearnerChange setLearners(SessionLibrary &library, const QString &file, const QStringList &learners)
{
    return changeArchives(library, {file},
                          [&learners](const QStringList & /*old*/) { return learners; }, {});
}

LearnerChange renameLearner(SessionLibrary &library, const QString &name, const QString &newName,
                            const QStringList &files, const ChangeProgress &progress)
{
    LearnerChange change;
    const QString old = storedName(name);
    std::optional<QStringList> all = filesOf(library, old);
    if (!all) {
        change.error = library.errorString();
        return change;
    }
    QStringList chosen;
    for (const QString &file : files) {
        if (all->contains(file))
            chosen.append(file);
        else
            change.left.append({file,
                                translated(QT_TRANSLATE_NOOP("sessionlibrary",
                                                             "it has no learner of that name"))});
    }
    const auto renamed = [&](QStringList names) {
        for (QString &each : names) {
            if (each == old)
                each = newName;
        }
        return names;
    };
    const LearnerChange done =
        changeArchives(library, files.isEmpty() ? *all : chosen, renamed, progress);
    change.changed = done.changed;
    change.left += done.left;
    change.error = done.error;
    return change;
}

ForgottenLearner forgetLearner(SessionLibrary &library, const QString &name, bool inArchives,
                               const ChangeProgress &progress)
{
    ForgottenLearner result;
    const QString old = storedName(name);
    const std::optional<QStringList> files = filesOf(library, old);
    if (files && inArchives)
        result.change = changeArchives(
            library, *files,
            [&old](QStringList names) {
                names.removeAll(old);
                return names;
            },
            progress);
    const std::optional<QStringList> left = filesOf(library, old);
    const std::optional<std::vector<StoredFile>> all = IndexWriter(library).files();
    if (!files || !left || !all) {
        result.change.error = library.errorString();
        return result;
    }
    result.archives = *left;
    for (const StoredFile &each : *all) {
        if (!old.isEmpty() && each.file.contains(old, Qt::CaseInsensitive))
            result.named.append(each.file);
    }
    const std::optional<int> entries = IndexWriter(library).forget(old);
    result.isForgotten = entries.has_value();
    result.entries = entries.value_or(0);
    if (!entries)
        result.change.error = library.errorString();
    return result;
}

} // namespace sessionlibrary
