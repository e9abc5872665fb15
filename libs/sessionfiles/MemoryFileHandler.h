// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_MEMORYFILEHANDLER_H
#define SESSIONFILES_MEMORYFILEHANDLER_H

#include <CPRFileHandler.h>

#include <QByteArray>
#include <QMap>
#include <QString>

namespace sessionfiles {

/// A session stored in memory: the members that CPRData::writeData() has written, or those that
/// readData() is to read.
class MemoryFileHandler : public CPRFileHandler {
public:
    /// The contents by the members' names, such as "CPREvents.xml".
    using Members = QMap<QString, QByteArray>;

    /// \a content are the first members.
    explicit MemoryFileHandler(const Members &content = {});
    virtual ~MemoryFileHandler();
    MemoryFileHandler(const MemoryFileHandler &) = delete;
    MemoryFileHandler &operator=(const MemoryFileHandler &) = delete;

    /// Null when there is no member \a name.
    QIODevice *openFileForReading(const QString &name) override;
    /// A member of that name is replaced.
    QIODevice *openFileForWriting(const QString &name) override;
    void releaseFile(QIODevice *device) override;
    /// "memory"
    QString filename() const override;

    /// All members; not to be changed while one is open.
    Members members;
};

/// What a session stores that has recorded nothing.
MemoryFileHandler::Members emptySession();

} // namespace sessionfiles

#endif
