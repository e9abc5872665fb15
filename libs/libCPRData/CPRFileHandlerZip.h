// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRFILEHANDLERZIP_H
#define CPRFILEHANDLERZIP_H

#include "CPRFileHandler.h"

#include <memory>

class QuaZip;

/// A session stored as a zip archive; every member lies in the archive's folder "CPR".
///
/// The host opens the handler, passes it to CPRData::writeData() or readData(), and closes it.
/// One member can be open at a time. Failures are logged with the zip library's own text.
class CPRDATA_EXPORT CPRFileHandlerZip final : public CPRFileHandler {
public:
    enum Mode {
        Create = 0, ///< a new archive; one of the same name is replaced
        Add = 1, ///< more members for an existing archive
        Read = 2
    };

    CPRFileHandlerZip();
    ~CPRFileHandlerZip();
    CPRFileHandlerZip(const CPRFileHandlerZip &) = delete;
    CPRFileHandlerZip &operator=(const CPRFileHandlerZip &) = delete;

    /// Opens the archive \a name; false when that fails or \a mode is none of the three.
    bool open(const QString &name, Mode mode);
    /// Closes the archive. False when it could not be completed: it is damaged then.
    bool close();

    QIODevice *openFileForReading(const QString &name) override;
    QIODevice *openFileForWriting(const QString &name) override;
    void releaseFile(QIODevice *device) override;
    /// The name given to open().
    QString filename() const override;

private:
    std::unique_ptr<QuaZip> m_zip;
};

#endif
