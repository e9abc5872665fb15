// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_WATCHEDFILEHANDLER_H
#define CPRVIEWER_WATCHEDFILEHANDLER_H

#include <CPRFileHandler.h>

#include <QStringList>

#include <functional>

/// Hands everything on to another handler, and tells how much of the members was read. Reading
/// only.
class WatchedFileHandler final : public CPRFileHandler {
public:
    /// Is told how much was read, 0 to 1; false makes all further reading fail.
    using Report = std::function<bool(double share)>;

    /// \a handler is not owned; \a bytes are in all its members together.
    WatchedFileHandler(CPRFileHandler *handler, qint64 bytes, Report report);

    /// Bytes in the members of the archive \a name, unpacked; 0 when it cannot be read.
    static qint64 bytesIn(const QString &name);

    QIODevice *openFileForReading(const QString &name) override;
    /// Null.
    QIODevice *openFileForWriting(const QString &name) override;
    void releaseFile(QIODevice *device) override;
    QString filename() const override { return m_handler->filename(); }

    /// The members that could not be opened.
    QStringList missing() const { return m_missing; }
    /// Whether a member could be opened.
    bool hasOpened() const { return m_hasOpened; }
    /// \a bytes more were read. False tells to give up.
    bool note(qint64 bytes);

private:
    CPRFileHandler *m_handler; // not owned
    qint64 m_bytes;
    qint64 m_read = 0;
    Report m_report;
    QStringList m_missing;
    bool m_hasOpened = false;
};

#endif
