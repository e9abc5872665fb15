// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRFILEHANDLERZIP_H
#define CPRFILEHANDLERZIP_H

#include "CPRFileHandler.h"

#include <QPointer>
#include <QStringList>

#include <memory>

class QBuffer;
class QSaveFile;
class QuaZip;
class QuaZipFile;

/// A session stored as a zip archive; every member lies in the archive's folder "CPR".
///
/// The host opens the handler, passes it to CPRData::writeData() or readData(), and closes it.
/// One member can be open at a time; a further one is refused. Failures are logged.
///
/// Create and Add write beside the archive. A file of the same name stays as it was until close()
/// has everything on the disk and puts the new archive in its place in one step; a handler that is
/// destroyed without close(), a failed close() and a killed process leave the old file untouched.
///
/// A member is checked whole before it can be read: its checksum, its sizes, and that it has at
/// most maximalMemberSize bytes. The device of a damaged member gives nothing but an error:
/// QIODevice::read() is -1, atEnd() is false and errorString() says what is wrong.
class CPRDATA_EXPORT CPRFileHandlerZip final : public CPRFileHandler {
public:
    /// What an archive is opened for.
    enum Mode : int {
        Create = 0, ///< a new archive; one of the same name is replaced
        Add = 1, ///< more members for an existing archive; those of the same name are replaced
        Read = 2 ///< an archive that is there
    };

    /// Bytes in a member: many times what the events of a day take, and no more than a machine
    /// can take when a small archive pretends to hold it.
    static constexpr qint64 maximalMemberSize = qint64(256) * 1024 * 1024;

    CPRFileHandlerZip();
    /// What was written and not closed is discarded.
    ~CPRFileHandlerZip();
    CPRFileHandlerZip(const CPRFileHandlerZip &) = delete;
    CPRFileHandlerZip &operator=(const CPRFileHandlerZip &) = delete;

    /// Opens the archive \a name. False when the handler is open, \a mode is none of the three,
    /// \a name is there and no regular file, or the archive cannot be read or its folder not be
    /// written; Add needs a whole archive without encryption.
    bool open(const QString &name, Mode mode);
    /// Closes the archive. After writing, true means that the archive is complete and on the disk;
    /// false that it could not be, and that a file of that name is as it was before. True when
    /// the handler is not open.
    [[nodiscard]] bool close();
    /// What went wrong first since open(); empty when nothing did.
    QString errorString() const { return m_error; }

    QIODevice *openFileForReading(const QString &name) override;
    QIODevice *openFileForWriting(const QString &name) override;
    void releaseFile(QIODevice *device) override;
    /// The name given to open().
    QString filename() const override { return m_name; }

private:
    bool openTarget();
    bool openArchive(Mode mode);
    bool mergeMembers();
    bool copyMembers(QuaZip &from, QuaZip &to, const QStringList &except);
    bool commit();
    bool fail(const QString &reason);
    void finishMember();

    QString m_name;
    QString m_error;
    QStringList m_written; // names of the members written
    std::unique_ptr<QSaveFile> m_file; // while writing: the new archive
    std::unique_ptr<QBuffer> m_added; // while adding: an archive of the members to add
    std::unique_ptr<QuaZip> m_zip; // what the members are read from or written to
    QPointer<QuaZipFile> m_member; // the open one; not owned
};

#endif
