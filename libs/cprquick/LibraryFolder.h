// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_LIBRARYFOLDER_H
#define CPRQUICK_LIBRARYFOLDER_H

#include "cprquick_export.h"

#include <sessionlibrary/LearnerChange.h>
#include <sessionlibrary/LibraryWatcher.h>

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QStringList>
#include <QtQml/qqml.h>

#include <atomic>
#include <functional>

class QThread;

namespace cprquick {

/// A folder of session archives and its index, for models and pages. It is scanned and followed on
/// threads of its own; archives are the truth.
class CPRQUICK_EXPORT LibraryFolder : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(LibraryFolder)

    // clang-format off
    /// The folder; empty, as it is from the start, for none.
    Q_PROPERTY(QString folder       READ folder   WRITE setFolder NOTIFY folderChanged)
    /// Archives are looked for, or read.
    Q_PROPERTY(bool    isScanning   READ isScanning               NOTIFY isScanningChanged)
    /// @{
    /// Of the scan that runs: how many archives that are new or have changed were read, of how many.
    Q_PROPERTY(int     scanned      READ scanned                  NOTIFY scannedChanged)
    Q_PROPERTY(int     toScan       READ toScan                   NOTIFY scannedChanged)
    /// @}
    /// Why there is no list, or not all of it, for people; empty when all is well.
    Q_PROPERTY(QString problem      READ problem                  NOTIFY problemChanged)
    /// Somebody scans, or works for this folder on a thread.
    Q_PROPERTY(bool    isBusy       READ isBusy                   NOTIFY isBusyChanged)
    /// Learners are being corrected in archives; corrected() comes at the end.
    Q_PROPERTY(bool    isCorrecting READ isCorrecting             NOTIFY isCorrectingChanged)
    /// @{
    /// Of the correction that runs, or of the last: how many archives are done, of how many.
    Q_PROPERTY(int     correctedFiles READ correctedFiles         NOTIFY correctedFilesChanged)
    Q_PROPERTY(int     toCorrect    READ toCorrect                NOTIFY correctedFilesChanged)
    /// @}
    // clang-format on

public:
    /// Follows no folder yet.
    explicit LibraryFolder(QObject *parent = nullptr);
    /// Gives up a scan and a correction; waits for the archive that is being corrected.
    ~LibraryFolder() override;

    /// @{
    /// Getters and setters of the properties.
    QString folder() const { return m_folder; }
    void setFolder(const QString &folder);
    bool isScanning() const { return m_watcher.isScanning(); }
    int scanned() const { return m_scanned; }
    int toScan() const { return m_toScan; }
    QString problem() const { return m_problem; }
    bool isBusy() const { return isScanning() || isCorrecting() || !m_workers.isEmpty(); }
    bool isCorrecting() const { return m_corrector != nullptr; }
    int correctedFiles() const { return m_correctedFiles; }
    int toCorrect() const { return m_toCorrect; }
    /// @}

    /// Scans now.
    Q_INVOKABLE void scan() { m_watcher.scan(); }
    /// Gives the scan that runs up. What was read is in the list.
    Q_INVOKABLE void cancelScan() { m_watcher.cancel(); }
    /// The absolute name of an archive; \a file is relative to the folder.
    Q_INVOKABLE QString pathOf(const QString &file) const { return m_index.pathOf(file); }
    /// The learners of an archive as they are stored.
    Q_INVOKABLE QStringList learnersOf(const QString &file);
    /// The day, as ISO 8601 text, on which the newest session began; empty when there is none.
    Q_INVOKABLE QString lastDay();
    /// Makes \a names the learners of an archive and saves it, on a thread of its own; corrected()
    /// comes. False when another correction runs or the folder has no index.
    Q_INVOKABLE bool setLearners(const QString &file, const QStringList &names);
    /// Has a learner called \a newName in all archives of the folder, on a thread of its own;
    /// renamed() and corrected() come. False for an empty name, for the same name, when another
    /// correction runs, and when the folder has no index.
    Q_INVOKABLE bool renameLearner(const QString &name, const QString &newName);
    /// Gives up the correction that runs, once it is done with the archive that it is at. What it
    /// has corrected stays so.
    Q_INVOKABLE void cancelCorrecting() { m_isCancelled = true; }
    /// Whether somebody is called so in a session of the folder.
    Q_INVOKABLE bool hasLearner(const QString &name);

    /// The name as archives have it: they separate learners by commas, so a name has none there.
    static QString storedName(const QString &name);
    /// The index, for this object's thread; null when it is not open.
    sessionlibrary::SessionLibrary *index() { return m_index.isOpen() ? &m_index : nullptr; }
    /// The sessions of these learners, each once, as far as the index knows them.
    std::vector<sessionreview::SessionResult> resultsOf(const QStringList &learners);
    /// \a worker works for this folder on a thread, or does so no more.
    void setWorking(const QObject *worker, bool isWorking);

Q_SIGNALS:
    /// @{
    /// The property of that name has changed.
    void folderChanged();
    void isScanningChanged();
    void scannedChanged();
    void problemChanged();
    void isBusyChanged();
    void isCorrectingChanged();
    void correctedFilesChanged();
    /// @}
    /// The list may be another one.
    void changed();
    /// Learners were corrected, or why they were not, for people.
    void corrected(bool isDone, const QString &text);
    /// A learner is called \a newName in all archives, without exception. Before corrected().
    void renamed(const QString &name, const QString &newName);

private:
    /// Runs on a thread of its own, with an index of its own.
    using Correction = std::function<sessionlibrary::LearnerChange(
        sessionlibrary::SessionLibrary &, const sessionlibrary::ChangeProgress &)>;
    using Finish = std::function<QString(const sessionlibrary::LearnerChange &)>; // what is told

    bool correct(const Correction &correction, const Finish &finish);
    void setCorrected(int files, int of);
    void findProblem();
    void open();

    QString m_folder;
    sessionlibrary::SessionLibrary m_index;
    sessionlibrary::LibraryWatcher m_watcher;
    QThread *m_corrector = nullptr; // a child of this object while it runs
    std::atomic_bool m_isCancelled = false; // the correction
    int m_correctedFiles = 0;
    int m_toCorrect = 0;
    int m_scanned = 0;
    int m_toScan = 0;
    QString m_problem;
    QSet<const QObject *> m_workers; // not owned
};

/// Lets \a user show \a library (may be null): \a refresh is called now, when the list may be
/// another one, and when the library goes. \a current is where the user keeps it. False when it is
/// that already.
template <typename User>
bool showLibrary(QPointer<LibraryFolder> &current, LibraryFolder *library, User *user,
                 void (User::*refresh)())
{
    if (library == current)
        return false;
    if (current) {
        current->disconnect(user);
        current->setWorking(user, false);
    }
    current = library;
    if (library) {
        QObject::connect(library, &LibraryFolder::changed, user, refresh);
        QObject::connect(library, &QObject::destroyed, user, refresh);
    }
    (user->*refresh)();
    return true;
}

} // namespace cprquick

#endif
