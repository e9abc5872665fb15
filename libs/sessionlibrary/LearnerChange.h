// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_LEARNERCHANGE_H
#define SESSIONLIBRARY_LEARNERCHANGE_H

#include "sessionlibrary/LibraryScan.h"

namespace sessionlibrary {

/// What became of learners that were to be corrected in archives.
struct [[nodiscard]] LearnerChange {
    QStringList changed; ///< files that were saved, relative to the folder
    /// Files that still have the old name, and why: they are damaged, so that saving them would
    /// lose what may yet be salvaged, or cannot be written.
    QVector<FileProblem> left;
    QString error; ///< for people: why the index could not be used; empty otherwise

    /// Whether all that was to be changed is.
    bool isComplete() const { return left.isEmpty() && error.isEmpty(); }
};

/// Called before each archive with how many of how many are done; false ends the work before it.
/// May be null.
using ChangeProgress = std::function<bool(int done, int total)>;

/// The name as archives have it: they separate learners by commas, so a name has none there.
QString storedName(const QString &name);

/// Makes \a learners those of the session in \a file, and saves it in one step: a copy with all
/// that it held. It has to load whole. Entries without a name are left out. The index is updated.
LearnerChange setLearners(SessionLibrary &library, const QString &file,
                          const QStringList &learners);

/// Calls the learner \a name \a newName in all archives that have the name, or only in \a files of
/// them: two people of one name are told apart so. A learner who is there twice then is there once.
/// Takes as long as loading and saving the archives. The index is updated; it should have been
/// scanned.
LearnerChange renameLearner(SessionLibrary &library, const QString &name, const QString &newName,
                            const QStringList &files = {}, const ChangeProgress &progress = {});

/// What became of a learner who was to be forgotten.
struct [[nodiscard]] ForgottenLearner {
    /// The name is in none of the index's files any more. False with an error in change.
    bool isForgotten = false;
    int entries = 0; ///< sessions whose entries left the index, for the name stood in them
    /// Files, relative to the folder, that still hold the name as a learner's. The next scan finds
    /// it there again.
    QStringList archives;
    QStringList named; ///< files whose own name has the learner's in it
    LearnerChange change; ///< what was done to archives
};

/// Removes all entries with \a name, as a learner, in a file's name or in a note, so that nothing
/// of it is left in the files of the index. With \a inArchives the name is removed from all
/// archives first; their sessions stay, without it. What archives or their names still hold comes
/// back with the next scan.
ForgottenLearner forgetLearner(SessionLibrary &library, const QString &name, bool inArchives,
                               const ChangeProgress &progress = {});

} // namespace sessionlibrary

#endif
