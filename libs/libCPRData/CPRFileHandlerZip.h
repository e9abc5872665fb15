// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRFILEHANDLERZIP_H
#define CPRFILEHANDLERZIP_H

#include "CPRFileHandler.h"

#include <QPointer>
#include <QStringList>

#include <memory>

class AtomicFile;
class QBuffer;
class QFile;
class QuaZip;
class QuaZipFile;

/// A session stored as a zip archive; every member lies in the archive's folder "CPR".
///
/// The host opens the handler, passes it to CPRData::writeData() or readData(), and closes it. A
/// member that cannot be opened is logged. What is asked for at the wrong time is refused and costs
/// nothing that was stored before: a second open(), a member under a name that was written already,
/// a member while another one is being written. Several members can be read at once, but no other
/// one beside a member of more than 32 MB.
///
/// Create and Add write beside the archive. A file of the same name stays as it was until close()
/// has everything on the disk and puts the new archive in its place in one step; a write that
/// failed and a killed process leave the old file untouched.
///
/// A member is checked whole before it can be read: its checksum, its sizes, and that it has at
/// most 512 MiB. One whose header is broken cannot be opened. The device of one
/// with damaged data gives nothing but an error: the first QIODevice::read() is -1, errorString()
/// says what is wrong, and the device is then at its end.
class CPRDATA_EXPORT CPRFileHandlerZip : public CPRFileHandler {
public:
    /// What an archive is opened for.
    enum Mode : int {
        Create = 0, ///< a new archive; one of the same name is replaced
        Add = 1, ///< more members for an existing archive; those of the same name are replaced
        Read = 2 ///< an archive that is there
    };

    CPRFileHandlerZip();
    /// Closes an archive that is open. Whether that succeeded only close() tells.
    virtual ~CPRFileHandlerZip();
    CPRFileHandlerZip(const CPRFileHandlerZip &) = delete;
    CPRFileHandlerZip &operator=(const CPRFileHandlerZip &) = delete;

    /// Opens the archive \a name. False when the handler is open, \a mode is none of the three,
    /// \a name is there and no regular file, or the archive cannot be read or its folder not be
    /// written; Add needs a whole archive without encryption.
    bool open(const QString &name, Mode mode);
    /// Closes the archive, and a member that is still being written with it. After writing, true
    /// means that everything that was written is on the disk; false that it is not, and that a
    /// file of that name is as it was before, unless the folder alone could not be written: the new
    /// archive is then in place, and a power cut may bring the old one back. When nothing was
    /// written, such a file stays, too. A further call gives the result of the first.
    bool close();
    /// Gives up what was written since open(), as close() would when a write had failed; a file of
    /// that name stays as it was. For a host that cannot go on with a member it has begun: \a
    /// reason becomes the errorString(), unless a write has failed before.
    void discard(const QString &reason);
    /// What was refused or failed first since open(); empty when nothing was.
    QString errorString() const { return m_error; }

    QIODevice *openFileForReading(const QString &name) override;
    QIODevice *openFileForWriting(const QString &name) override;
    void releaseFile(QIODevice *device) override;
    /// The name given to open().
    QString filename() const override { return m_name; }

private:
    bool openTarget();
    bool openWithoutComment();
    bool openArchive(Mode mode);
    bool mergeMembers();
    bool copyMembers(QuaZip &from, QuaZip &to, const QStringList &except);
    bool refuse(const QString &reason);
    bool lose(const QString &reason);
    QIODevice *readMember(const QString &name, QString &reason);
    QIODevice *writeMember(const QString &name, QString &reason);
    void finishMember();

    QString m_name;
    QString m_error;
    bool m_isLost = false; // a write has failed, so that the new archive is not put in place
    QStringList m_written; // names of the members written
    std::unique_ptr<AtomicFile> m_file; // while writing: the new archive
    std::unique_ptr<QBuffer> m_added; // while adding: an archive of the members to add
    std::unique_ptr<QFile> m_source; // while reading an archive with a very long comment
    std::unique_ptr<QuaZip> m_zip; // what the members are read from or written to
    QPointer<QuaZipFile> m_member; // the open one; not owned
};

#endif
