// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_SESSIONLIBRARY_H
#define SESSIONLIBRARY_SESSIONLIBRARY_H

#include "sessionlibrary/SessionEntry.h"

#include <QDate>
#include <QDateTime>

#include <memory>

namespace sessionlibrary {

class IndexConnection;

/// Which sessions. What is not set allows all.
struct Filter {
    /// As somebody types it: each word begins a word of the learners, the file's name, the
    /// manikin's name, a user event or the protocol, whatever its case and accents.
    QString text;
    std::optional<QString> learner; ///< exactly this name
    QDate from; ///< day of the start in local time, itself among them; sessions without a start
                ///< drop out
    QDate to; ///< the same
    std::optional<int> protocol; ///< 0 to 5
    std::optional<int> minScore; ///< percent of the manikin's overall score; those without drop out
    std::optional<int> maxScore; ///< the same
};

/// By what sessions are in order. Those without the value come first in ascending order. Equal ones
/// are in order of their start.
enum class SortBy { Start, Learner, Length, Protocol, Score, File };

/// The order of a list.
struct Order {
    SortBy by = SortBy::Start; ///< the value
    Qt::SortOrder direction = Qt::DescendingOrder; ///< the newest first
};

/// A learner: a name. Two people of one name are one learner.
struct Learner {
    QString name; ///< as archives have it; not empty
    int sessions = 0; ///< how many
    QDateTime last; ///< start of the last one, UTC; invalid when no start is known
    std::optional<int> lastScore; ///< percent; the manikin's overall score of that one
};

/// How opening a library ended.
struct [[nodiscard]] OpenResult {
    /// Why an index is made anew. No: it was there. Missing is no fault.
    enum class Rebuilt { No, Missing, Damaged, OtherVersion };

    bool isOpen = false; ///< the index can be asked
    Rebuilt rebuilt = Rebuilt::No; ///< the index was empty or had to go; a scan fills it
    bool isMigrated = false; ///< an older version's; its entries are shown until a scan renews them
    /// The index lies in a temporary folder and goes with this process, because the user's own
    /// folder cannot be written.
    bool isTemporary = false;
    QString reason; ///< for people: why it is not open, was rebuilt or is temporary
};

/// How thoroughly an index is looked over when it is opened.
enum class Check {
    Quick, ///< that it is an index; broken pages are noticed when they are read
    Thorough ///< every page; some 20 ms for 10,000 sessions
};

/// The index of a folder of archives. Each thread has an object of its own, which must not be used
/// on another; all of them, in all processes of a user, see one index. Answers come in milliseconds
/// for 10,000 sessions; nothing here reads archives, LibraryScan does.
///
/// The index lies in the user's data folder, where only the user can read it, whatever kind of
/// folder the archives are in: that may be read-only, or on a network.
class SessionLibrary {
public:
    SessionLibrary();
    /// Closes it.
    ~SessionLibrary();
    SessionLibrary(const SessionLibrary &) = delete;
    SessionLibrary &operator=(const SessionLibrary &) = delete;

    /// Opens the library of \a folder, which has to exist; one that was open is closed. What is
    /// broken or not an index is made anew, empty.
    OpenResult open(const QString &folder, Check check = Check::Quick);
    /// Whether it can be asked.
    bool isOpen() const;
    /// The folder of archives, canonical. Files are relative to it.
    QString folder() const;
    /// The absolute name of an entry's file.
    QString pathOf(const QString &file) const;
    /// Why the last call failed, for people.
    QString errorString() const;

    /// A number that is another one when the index may have changed since, by whatever process;
    /// cheap enough to be asked every second. An index that was replaced, or found broken, is
    /// opened anew. -1 when it cannot be asked.
    qint64 version();

    /// @{
    /// None with an errorString() when the index could not be asked.

    /// How many sessions.
    std::optional<int> count(const Filter &filter = {});
    /// Up to \a limit sessions from the one numbered \a offset, from 0.
    std::optional<std::vector<SessionEntry>> page(const Filter &filter, const Order &order,
                                                  int offset, int limit);
    /// All sessions of a learner, in order of time: the trend.
    std::optional<std::vector<SessionEntry>> sessionsOf(const QString &learner);
    /// The session in \a file, relative to the folder. An entry without id when there is none.
    std::optional<SessionEntry> session(const QString &file);
    /// All learners, in order of their names.
    std::optional<std::vector<Learner>> learners();
    /// @}

private:
    friend class IndexWriter;
    std::unique_ptr<IndexConnection> m_index;
};

} // namespace sessionlibrary

#endif
