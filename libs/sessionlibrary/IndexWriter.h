// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_INDEXWRITER_H
#define SESSIONLIBRARY_INDEXWRITER_H

#include "sessionlibrary/IndexConnection.h"

namespace sessionlibrary {

/// What the index knows of a file.
struct StoredFile {
    QString file; ///< relative to the folder
    FileStamp stamp; ///< of the file that was read; FileStamp().size when it has to be read again
    State state = State::Damaged;
};

/// Changes an index. Each call is one transaction: all of it happens, or nothing.
class IndexWriter {
public:
    explicit IndexWriter(SessionLibrary &library) : m_index(*library.m_index) { }

    /// All files of the index. None after an error.
    std::optional<std::vector<StoredFile>> files();
    /// Adds entries, or replaces those of the same files.
    bool store(const std::vector<SessionEntry> &entries);
    /// Removes the entries of files.
    bool remove(const QStringList &files);
    /// Removes all entries in which a name stands, and what is left of them in the files of the
    /// index. How many there were; none after an error.
    std::optional<int> forget(const QString &name);

private:
    template <typename Change> bool inTransaction(Change change);
    bool removeRow(const QVariant &id);
    bool insert(const SessionEntry &entry);
    bool insertLearners(qint64 session, const QStringList &names);
    bool removeUnused();
    bool execute(QSqlQuery &query, const QVariantList &values);
    QSqlQuery &prepared(int statement);

    IndexConnection &m_index;
    std::vector<QSqlQuery> m_prepared; // of a transaction
};

} // namespace sessionlibrary

#endif
