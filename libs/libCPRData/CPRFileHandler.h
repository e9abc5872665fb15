// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRFILEHANDLER_H
#define CPRFILEHANDLER_H

#include "cprdata_export.h"

#include <QString>

class QIODevice;

/// Where a session is stored: a set of named members. CPRData knows nothing else of storage.
class CPRDATA_EXPORT CPRFileHandler {
public:
    /// Opens the member \a name for reading; null on failure. Ends with releaseFile().
    virtual QIODevice *openFileForReading(const QString &name) = 0;
    /// Creates the member \a name and opens it for writing; null on failure. Ends with
    /// releaseFile().
    virtual QIODevice *openFileForWriting(const QString &name) = 0;
    /// Closes and destroys a device that one of the two above has returned; null is no error.
    virtual void releaseFile(QIODevice *device) = 0;
    /// The name of the file that holds the members.
    virtual QString filename() const = 0;

protected:
    // Handlers live on the host's stack and are never deleted through this class.
    ~CPRFileHandler() = default;
};

#endif
