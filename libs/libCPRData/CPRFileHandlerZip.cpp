// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRFileHandlerZip.h"

#include "private/AtomicFile.h"
#include "private/Limits.h"
#include "private/SessionArchive.h"
#include "private/ZipEnd.h"

#include <QBuffer>
#include <QFileInfo>
#include <QLoggingCategory>

#include <quazip.h>
#include <quazipfile.h>
#include <quazipfileinfo.h>
#include <quazipnewinfo.h>

Q_LOGGING_CATEGORY(lcFileHandlerZip, "Kelmar.CPRData.CPRFileHandlerZip", QtWarningMsg)

namespace {

// Unix permissions 0777 in the upper half.
constexpr quint32 externalAttributes = 0x01FF0000;

constexpr int blockSize = 64 * 1024;

// Stands for a member that cannot be believed.
class DamagedMember final : public QIODevice {
public:
    explicit DamagedMember(const QString &reason)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        setErrorString(reason);
    }

    bool isSequential() const override { return true; }
    // A loop that reads to the end gets the error, and ends.
    bool atEnd() const override { return m_isRead; }

protected:
    qint64 readData(char * /*data*/, qint64 /*maxSize*/) override
    {
        m_isRead = true;
        return -1;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    bool m_isRead = false;
};

// An archive up to its comment. The zip library finds no directory before one of more than 65,513
// bytes; 65,535 are allowed.
class WithoutComment final : public QFile {
public:
    using QFile::QFile;

    bool cutComment()
    {
        const qint64 end = open(QIODevice::ReadOnly) ? ZipEnd::position(*this) : -1;
        m_size = end + ZipEnd::recordSize;
        return end >= 0 && seek(0);
    }
    qint64 size() const override { return m_size < 0 ? QFile::size() : m_size; }

private:
    qint64 m_size = -1; // bytes; until it is cut that of the file
};

// Inflates the member, which is open, to its end. Returns what is wrong with it; empty when it is
// whole. Its bytes are appended to content, which may be null.
QString checkMember(QuaZipFile &file, QByteArray *content)
{
    QuaZipFileInfo64 info;
    if (!file.getFileInfo(&info))
        return QStringLiteral("its entry in the directory cannot be read");
    if (info.uncompressedSize > static_cast<quint64>(Limits::maxMemberBytes)) {
        return QStringLiteral(
                   "it is said to have %1 bytes, more than the %2 that a member may have")
            .arg(info.uncompressedSize)
            .arg(Limits::maxMemberBytes);
    }
    const auto size = static_cast<qint64>(info.uncompressedSize);
    if (content)
        content->reserve(static_cast<int>(size));
    QByteArray block(blockSize, Qt::Uninitialized);
    qint64 total = 0;
    qint64 taken = 0;
    while ((taken = file.read(block.data(), block.size())) > 0 && total <= size) {
        total += taken;
        if (content)
            content->append(block.constData(), static_cast<int>(taken));
    }
    // A damaged deflate stream is seen only before closing, a wrong checksum only by closing.
    const int inflateError = taken < 0 ? file.getZipError() : UNZ_OK;
    file.close();
    if (inflateError != UNZ_OK)
        return QStringLiteral("it cannot be inflated, zip error %1").arg(inflateError);
    if (total != size) {
        return QStringLiteral("it has %1 bytes, its entry in the directory says %2")
            .arg(total)
            .arg(size);
    }
    if (file.getZipError() != UNZ_OK)
        return QStringLiteral("its checksum is wrong, zip error %1").arg(file.getZipError());
    return QString();
}

QString whyNotWritten(const AtomicFile &file, int zipError)
{
    return file.hasFailed() ? file.errorString() : QStringLiteral("zip error %1").arg(zipError);
}

// Makes the first member of that name the current one. QuaZip::setCurrentFile() would end at a
// member without a name.
bool goTo(QuaZip &zip, const QString &name)
{
    for (bool isMember = zip.goToFirstFile(); isMember; isMember = zip.goToNextFile()) {
        if (zip.getCurrentFileName() == name)
            return true;
    }
    return false;
}

// Copies the member at which \a from stands as it is, without inflating it.
bool copyMember(QuaZip &from, QuaZip &to, const QuaZipFileInfo64 &info)
{
    QuaZipFile source(&from);
    QuaZipFile copy(&to);
    int method = 0;
    int level = 0;
    const QuaZipNewInfo newInfo(info);
    if (!source.open(QIODevice::ReadOnly, &method, &level, true)
        || !copy.open(QIODevice::WriteOnly, newInfo, nullptr, info.crc, method, level, true)) {
        return false;
    }
    QByteArray block(blockSize, Qt::Uninitialized);
    quint64 total = 0;
    qint64 taken = 0;
    while ((taken = source.read(block.data(), block.size())) > 0) {
        if (copy.write(block.constData(), taken) != taken)
            return false;
        total += static_cast<quint64>(taken);
    }
    source.close();
    copy.close();
    return total == info.compressedSize && source.getZipError() == UNZ_OK
        && copy.getZipError() == ZIP_OK;
}

} // namespace

CPRFileHandlerZip::CPRFileHandlerZip() : m_zip(std::make_unique<QuaZip>())
{
}

CPRFileHandlerZip::~CPRFileHandlerZip()
{
    close();
}

bool CPRFileHandlerZip::refuse(const QString &reason)
{
    if (m_error.isEmpty())
        m_error = reason;
    return false;
}

bool CPRFileHandlerZip::lose(const QString &reason)
{
    if (!m_isLost)
        m_error = reason; // says more than what was refused before
    m_isLost = true;
    return false;
}

bool CPRFileHandlerZip::open(const QString &name, Mode mode)
{
    if (m_zip->isOpen())
        return refuse(QStringLiteral("not closed yet, so that %1 cannot be opened").arg(name));
    m_name = name;
    m_error.clear();
    m_isLost = false;
    m_written.clear();
    m_zip = std::make_unique<QuaZip>();
    const QFileInfo info(name);
    if (info.exists() && !info.isFile())
        return refuse(QStringLiteral("no regular file"));
    switch (mode) {
    case Create:
    case Add:
        if (openTarget() && openArchive(mode))
            return true;
        m_added.reset();
        m_file.reset();
        return false;
    case Read:
        m_zip->setZipName(name);
        return m_zip->open(QuaZip::mdUnzip) || openWithoutComment()
            || refuse(QStringLiteral("cannot be opened as an archive, zip error %1")
                          .arg(m_zip->getZipError()));
    }
    return refuse(QStringLiteral("mode %1 is none of an archive").arg(int(mode)));
}

bool CPRFileHandlerZip::openWithoutComment()
{
    auto source = std::make_unique<WithoutComment>(m_name);
    if (!source->cutComment())
        return false;
    auto zip = std::make_unique<QuaZip>(source.get());
    if (!zip->open(QuaZip::mdUnzip))
        return false;
    m_zip = std::move(zip);
    m_source = std::move(source);
    return true;
}

bool CPRFileHandlerZip::openTarget()
{
    m_file = std::make_unique<AtomicFile>(m_name);
    // Without a buffer each write has its own result.
    return m_file->open(QIODevice::WriteOnly | QIODevice::Unbuffered)
        || refuse(m_file->errorString());
}

bool CPRFileHandlerZip::openArchive(Mode mode)
{
    if (mode == Add) {
        QuaZip old(m_name);
        if (!old.open(QuaZip::mdUnzip))
            return refuse(QStringLiteral("no archive that members can be added to"));
        m_added = std::make_unique<QBuffer>();
        m_added->open(QIODevice::ReadWrite);
        m_zip->setIoDevice(m_added.get());
    } else {
        m_zip->setIoDevice(m_file.get());
    }
    // Closed by the archive, the file would be put in its place whatever went wrong before.
    m_zip->setAutoClose(false);
    return m_zip->open(QuaZip::mdCreate) || refuse(m_file->errorString());
}

// The old members that were not written anew, then those that were.
bool CPRFileHandlerZip::mergeMembers()
{
    QuaZip old(m_name);
    QuaZip added(m_added.get());
    QuaZip merged(m_file.get());
    merged.setAutoClose(false);
    if (!old.open(QuaZip::mdUnzip) || !added.open(QuaZip::mdUnzip)
        || !merged.open(QuaZip::mdCreate)) {
        return lose(QStringLiteral("members cannot be added: %1").arg(m_file->errorString()));
    }
    merged.setComment(old.getComment());
    if (!copyMembers(old, merged, m_written) || !copyMembers(added, merged, {}))
        return false;
    merged.close();
    return merged.getZipError() == ZIP_OK || lose(m_file->errorString());
}

bool CPRFileHandlerZip::copyMembers(QuaZip &from, QuaZip &to, const QStringList &except)
{
    for (bool more = from.goToFirstFile(); more; more = from.goToNextFile()) {
        QuaZipFileInfo64 info;
        if (!from.getCurrentFileInfo(&info))
            break;
        constexpr quint16 encrypted = 1;
        if (!except.contains(info.name)
            && ((info.flags & encrypted) != 0 || !copyMember(from, to, info))) {
            return lose(QStringLiteral("the member %1 cannot be copied").arg(info.name));
        }
    }
    return from.getZipError() == UNZ_OK
        || lose(QStringLiteral("its directory is damaged, zip error %1").arg(from.getZipError()));
}

bool CPRFileHandlerZip::close()
{
    if (!m_zip->isOpen())
        return !m_isLost;
    finishMember();
    m_zip->close();
    if (m_file && m_zip->getZipError() != ZIP_OK)
        lose(whyNotWritten(*m_file, m_zip->getZipError()));
    const bool isReplacing = m_file && !m_isLost && !m_written.isEmpty();
    if (isReplacing && (!m_added || mergeMembers()) && !m_file->finish())
        lose(m_file->errorString());
    m_added.reset();
    m_file.reset();
    m_source.reset();
    return !m_isLost;
}

void CPRFileHandlerZip::discard(const QString &reason)
{
    lose(reason);
    close();
}

QIODevice *CPRFileHandlerZip::openFileForReading(const QString &name)
{
    QString reason;
    QIODevice *device = readMember(name, reason);
    if (!device) {
        qCWarning(lcFileHandlerZip) << "Failed to open file:" << reason;
        refuse(QStringLiteral("%1 cannot be opened: %2").arg(name, reason));
    }
    return device;
}

QIODevice *CPRFileHandlerZip::openFileForWriting(const QString &name)
{
    QString reason;
    QIODevice *device = writeMember(name, reason);
    if (!device) {
        qCWarning(lcFileHandlerZip) << "Failed to open file:" << reason;
        refuse(QStringLiteral("%1 cannot be written: %2").arg(name, reason));
    }
    return device;
}

QIODevice *CPRFileHandlerZip::readMember(const QString &name, QString &reason)
{
    if (m_member) {
        reason = QStringLiteral("another member is open");
        return nullptr;
    }
    const bool isThere = goTo(*m_zip, SessionArchive::nameInZip(name));
    auto file = std::make_unique<QuaZipFile>(m_zip.get());
    if (!isThere || !file->getZip() || !m_zip->hasCurrentFile()
        || !file->open(QIODevice::ReadOnly)) {
        reason = file->errorString();
        return nullptr;
    }
    const bool isInMemory = file->usize() <= Limits::maxBytesInMemory;
    auto content = std::make_unique<QBuffer>();
    const QString damage = checkMember(*file, isInMemory ? &content->buffer() : nullptr);
    if (!damage.isEmpty())
        return new DamagedMember(damage);
    if (isInMemory) {
        content->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        return content.release();
    }
    if (!file->open(QIODevice::ReadOnly))
        return new DamagedMember(file->errorString());
    m_member = file.get();
    return file.release();
}

QIODevice *CPRFileHandlerZip::writeMember(const QString &name, QString &reason)
{
    if (m_member)
        reason = QStringLiteral("another member is open");
    else if (m_isLost)
        reason = m_error;
    else if (m_written.contains(SessionArchive::nameInZip(name)))
        reason = QStringLiteral("it was written already");
    else if (SessionArchive::nameInZip(name).toUtf8().size() > Limits::maxMemberNameBytes)
        reason = QStringLiteral("its name is too long");
    if (!reason.isEmpty())
        return nullptr;
    auto file = std::make_unique<QuaZipFile>(m_zip.get());
    QuaZipNewInfo info(SessionArchive::nameInZip(name));
    info.externalAttr = externalAttributes;
    // No password; deflate at the default level, not raw.
    if (!file->open(QIODevice::WriteOnly, info, nullptr, 0, Z_DEFLATED, Z_DEFAULT_COMPRESSION,
                    false, -MAX_WBITS, MAX_MEM_LEVEL - 1, Z_DEFAULT_STRATEGY)) {
        reason = file->errorString();
        if (m_file) // the header of a member that nothing else speaks against
            lose(QStringLiteral("%1: %2").arg(name, m_file->errorString()));
        return nullptr;
    }
    m_written.append(SessionArchive::nameInZip(name));
    m_member = file.get();
    return file.release();
}

void CPRFileHandlerZip::releaseFile(QIODevice *device)
{
    if (!device)
        return;
    if (device == m_member)
        finishMember();
    else
        device->close();
    delete device;
}

// What the compressor still held is written here, so that a full disk can show only now.
void CPRFileHandlerZip::finishMember()
{
    if (!m_member)
        return;
    m_member->close();
    if (m_file && m_member->getZipError() != ZIP_OK) {
        lose(QStringLiteral("%1: %2").arg(m_written.last(),
                                          whyNotWritten(*m_file, m_member->getZipError())));
    } else if (!m_file && m_member->getZipError() != UNZ_OK) {
        lose(QStringLiteral("a member was changed while it was read"));
    }
    m_member.clear();
}
