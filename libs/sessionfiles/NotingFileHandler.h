// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_NOTINGFILEHANDLER_H
#define CPRSESSION_NOTINGFILEHANDLER_H

#include <CPRFileHandler.h>

#include <QStringList>

/// Hands everything on to another handler and notes which members could not be opened.
class NotingFileHandler final : public CPRFileHandler {
public:
    /// \a handler is not owned.
    explicit NotingFileHandler(CPRFileHandler *handler);

    QIODevice *openFileForReading(const QString &name) override;
    QIODevice *openFileForWriting(const QString &name) override;
    void releaseFile(QIODevice *device) override;
    QString filename() const override;

    QStringList missing() const { return m_missing; }

private:
    QIODevice *noted(QIODevice *device, const QString &name);

    CPRFileHandler *m_handler;
    QStringList m_missing;
};

#endif
