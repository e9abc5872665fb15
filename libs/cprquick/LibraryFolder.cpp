// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/LibraryFolder.h"

#include <private/PrintableText.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <memory>
#include <utility>

namespace cprquick {

using namespace sessionlibrary;

LibraryFolder::LibraryFolder(QObject *parent) : QObject(parent)
{
    const auto announceScan = [this] {
        Q_EMIT isScanningChanged();
        Q_EMIT isBusyChanged();
    };
    connect(&m_watcher, &LibraryWatcher::started, this, [this, announceScan] {
        m_scanned = m_toScan = 0;
        Q_EMIT scannedChanged();
        announceScan();
    });
    connect(&m_watcher, &LibraryWatcher::progressed, this, [this](int done, int total) {
        m_scanned = done;
        m_toScan = total;
        Q_EMIT scannedChanged();
    });
    connect(&m_watcher, &LibraryWatcher::changed, this, [this] {
        open();
        Q_EMIT changed();
    });
    connect(&m_watcher, &LibraryWatcher::finished, this, [this, announceScan] {
        open();
        findProblem();
        Q_EMIT changed();
        announceScan();
    });
}

LibraryFolder::~LibraryFolder()
{
    m_isCancelled = true;
    if (m_corrector)
        m_corrector->wait();
}

void LibraryFolder::setFolder(const QString &folder)
{
    const QString name = folder.isEmpty() ? QString() : QFileInfo(folder).absoluteFilePath();
    if (name == m_folder)
        return;
    m_folder = name;
    m_problem.clear();
    static_cast<void>(m_index.open(m_folder)); // what is in the index already is shown at once
    m_watcher.follow(m_folder);
    Q_EMIT folderChanged();
    Q_EMIT problemChanged();
    Q_EMIT changed();
    Q_EMIT isScanningChanged();
    Q_EMIT isBusyChanged();
}

void LibraryFolder::open()
{
    if (!m_index.isOpen() && !m_folder.isEmpty())
        static_cast<void>(m_index.open(m_folder));
    static_cast<void>(m_index.version()); // an index that was replaced is opened anew
}

void LibraryFolder::findProblem()
{
    const OpenResult &opened = m_watcher.opened();
    const ScanResult &result = m_watcher.result();
    QString problem;
    if (!QFileInfo(m_folder).isDir()) {
        problem = QCoreApplication::translate("cprquick", "The folder %1 is not there.")
                      .arg(QDir::toNativeSeparators(m_folder));
    } else if (!result.error.isEmpty()) {
        problem = result.error;
    } else {
        // A damaged archive is a row of the list; what could not be listed is none.
        for (const FileProblem &each : result.problems) {
            if (each.file.isEmpty() || each.file.endsWith(QLatin1Char('/')))
                problem = each.file + QLatin1Char(' ') + each.reason;
        }
        if (problem.isEmpty()
            && (opened.rebuilt == OpenResult::Rebuilt::Damaged || opened.isTemporary))
            problem = opened.reason;
        if (problem.isEmpty() && result.isCancelled)
            problem = QCoreApplication::translate(
                "cprquick", "The scan was cancelled; not all sessions may be in the list.");
    }
    problem = PrintableText::shown(problem.trimmed());
    if (std::exchange(m_problem, problem) != problem)
        Q_EMIT problemChanged();
}

QStringList LibraryFolder::learnersOf(const QString &file)
{
    const auto entry = index() ? m_index.session(file) : std::nullopt;
    return entry ? entry->figures.learners : QStringList();
}

QString LibraryFolder::lastDay()
{
    const auto newest = index() ? m_index.page({}, {}, 0, 1) : std::nullopt;
    if (!newest || newest->empty())
        return QString();
    return newest->front().figures.start().toLocalTime().date().toString(Qt::ISODate);
}

bool LibraryFolder::correct(const Correction &correction, const Finish &finish)
{
    if (m_corrector || !index())
        return false;
    m_isCancelled = false;
    setCorrected(0, 0);
    const auto change = std::make_shared<LearnerChange>();
    m_corrector = QThread::create([this, change, folder = m_folder, correction] {
        SessionLibrary library;
        const OpenResult opened = library.open(folder);
        if (!opened.isOpen) {
            change->error = opened.reason;
            return;
        }
        *change = correction(library, [this](int done, int total) {
            QMetaObject::invokeMethod(this, [this, done, total] { setCorrected(done, total); });
            return !m_isCancelled;
        });
    });
    m_corrector->setParent(this);
    connect(m_corrector, &QThread::finished, this, [this, change, finish] {
        std::exchange(m_corrector, nullptr)->deleteLater();
        const QString text = change->error.isEmpty() ? finish(*change) : change->error;
        Q_EMIT changed();
        Q_EMIT isCorrectingChanged();
        Q_EMIT isBusyChanged();
        Q_EMIT corrected(change->isComplete(), PrintableText::shown(text));
    });
    m_corrector->start();
    Q_EMIT isCorrectingChanged();
    Q_EMIT isBusyChanged();
    return true;
}

void LibraryFolder::setCorrected(int files, int of)
{
    m_correctedFiles = files;
    m_toCorrect = of;
    Q_EMIT correctedFilesChanged();
}

bool LibraryFolder::setLearners(const QString &file, const QStringList &names)
{
    return correct(
        [file, names](SessionLibrary &library, const ChangeProgress &) {
            return sessionlibrary::setLearners(library, file, names);
        },
        [file](const LearnerChange &change) {
            return change.left.isEmpty()
                ? QCoreApplication::translate("cprquick", "The learners of %1 are corrected.")
                      .arg(file)
                : QCoreApplication::translate("cprquick",
                                              "The learners of %1 stay as they were: %2")
                      .arg(file, change.left.first().reason);
        });
}

bool LibraryFolder::renameLearner(const QString &name, const QString &newName)
{
    const QString wanted = storedName(newName).simplified();
    if (wanted.isEmpty() || wanted == name)
        return false;
    return correct(
        [name, wanted](SessionLibrary &library, const ChangeProgress &progress) {
            return sessionlibrary::renameLearner(library, name, wanted, {}, progress);
        },
        [this, name, wanted](const LearnerChange &change) {
            if (change.isComplete()) {
                Q_EMIT renamed(name, wanted);
                return QCoreApplication::translate("cprquick", "%1 is called %2 in %n session(s).",
                                                   nullptr, change.changed.size())
                    .arg(name, wanted);
            }
            constexpr int maxTold = 3;
            QStringList left;
            for (const FileProblem &problem : change.left.mid(0, maxTold))
                left.append(QStringLiteral("%1: %2").arg(problem.file, problem.reason));
            if (change.left.size() > maxTold)
                left.append(QStringLiteral("…"));
            return QCoreApplication::translate("cprquick",
                                               "%n session(s) still have the name %1. %2", nullptr,
                                               change.left.size())
                .arg(name, left.join(QStringLiteral("; ")));
        });
}

bool LibraryFolder::hasLearner(const QString &name)
{
    const auto sessions =
        index() ? m_index.sessionsOf(storedName(name).simplified()) : std::nullopt;
    return sessions && !sessions->empty();
}

std::vector<sessionreview::SessionResult> LibraryFolder::resultsOf(const QStringList &learners)
{
    std::vector<sessionreview::SessionResult> results;
    QSet<qint64> known;
    for (const QString &learner : learners) {
        const auto entries = index() ? m_index.sessionsOf(learner) : std::nullopt;
        if (!entries)
            break;
        for (const SessionEntry &entry : *entries) {
            if (!known.contains(entry.id))
                results.push_back(entry.result());
            known.insert(entry.id);
        }
    }
    return results;
}

QString LibraryFolder::storedName(const QString &name)
{
    return sessionlibrary::storedName(name);
}

void LibraryFolder::setWorking(const QObject *worker, bool isWorking)
{
    if (isWorking)
        m_workers.insert(worker);
    else
        m_workers.remove(worker);
    Q_EMIT isBusyChanged();
}

} // namespace cprquick
