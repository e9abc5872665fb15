// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/SessionFile.h"

#include <private/CountedDevice.h>
#include "sessionfiles/MemoryFileHandler.h"
#include "sessionfiles/ZipHeader.h"

#include <CPRData.h>
#include <CPRFileHandlerZip.h>

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <algorithm>
#include <limits>

namespace sessionfiles {

namespace {

// Hands everything on to another handler, and reports on the members that it opens.
class ReportingHandler final : public CPRFileHandler {
public:
    ReportingHandler(CPRFileHandler &handler, CountedDevice::Advance advance)
        : m_handler(handler), m_advance(std::move(advance))
    {
    }

    QIODevice *openFileForReading(const QString &name) override
    {
        QIODevice *device = m_handler.openFileForReading(name);
        LoadedMember member;
        member.name = name;
        member.state = device ? LoadedMember::Complete : LoadedMember::Missing;
        m_members.append(member);
        return device ? new CountedDevice(device, m_advance) : nullptr;
    }
    QIODevice *openFileForWriting(const QString &name) override
    {
        QIODevice *device = m_handler.openFileForWriting(name);
        m_hasRefused = m_hasRefused || !device;
        return device;
    }
    // A session has one member open at a time.
    void releaseFile(QIODevice *device) override
    {
        const auto *counted = dynamic_cast<CountedDevice *>(device);
        if (!counted) {
            m_handler.releaseFile(device);
            return;
        }
        LoadedMember &member = m_members.last();
        member.bytesRead = counted->count();
        if (counted->hasFailed()) {
            member.state = LoadedMember::Damaged;
            member.reason = counted->errorString();
        }
        m_handler.releaseFile(counted->device());
        delete counted;
    }
    QString filename() const override { return m_handler.filename(); }

    const QVector<LoadedMember> &members() const { return m_members; }
    // A member could not be opened for writing.
    bool hasRefused() const { return m_hasRefused; }

private:
    CPRFileHandler &m_handler;
    CountedDevice::Advance m_advance;
    QVector<LoadedMember> m_members;
    bool m_hasRefused = false;
};

// One member of another handler, the others as of an empty session: the session then reads whole
// if that member does.
class OneMemberHandler final : public CPRFileHandler {
public:
    OneMemberHandler(CPRFileHandler &handler, const QString &name)
        : m_handler(handler), m_name(name)
    {
    }

    QIODevice *openFileForReading(const QString &name) override
    {
        if (name != m_name)
            return m_others.openFileForReading(name);
        m_device = m_handler.openFileForReading(name);
        return m_device;
    }
    QIODevice *openFileForWriting(const QString & /*name*/) override { return nullptr; }
    void releaseFile(QIODevice *device) override
    {
        if (device == m_device)
            m_handler.releaseFile(std::exchange(m_device, nullptr));
        else
            m_others.releaseFile(device);
    }
    QString filename() const override { return m_handler.filename(); }

private:
    CPRFileHandler &m_handler;
    QString m_name;
    MemoryFileHandler m_others{emptySession()};
    QIODevice *m_device = nullptr;
};

// Why the document was not read further than that many bytes. Nothing that could be dear to parse
// stands in them.
QString damageOfDocument(QIODevice *device, qint64 bytes)
{
    CountedDevice begin(
        device, [](qint64 /*bytes*/) { return true; }, bytes);
    QXmlStreamReader xml(&begin);
    while (!xml.atEnd() && !xml.isDTD())
        xml.readNext();
    const bool isCut =
        xml.error() == QXmlStreamReader::PrematureEndOfDocumentError && !device->atEnd();
    return QStringLiteral("line %1, column %2: %3")
        .arg(xml.lineNumber())
        .arg(xml.columnNumber())
        .arg(xml.hasError() && !isCut ? xml.errorString()
                                      : QStringLiteral("it holds what no session holds"));
}

// Finds out what is wrong with a member that can be read to its end, or might be nothing.
void findDamage(CPRFileHandler &handler, LoadedMember &member)
{
    const bool isDocument = member.name.endsWith(QLatin1String(".xml"));
    if (isDocument) {
        OneMemberHandler alone(handler, member.name);
        if (CPRData().readData(&alone))
            return;
    }
    QIODevice *device = handler.openFileForReading(member.name);
    if (device) {
        member.reason = isDocument ? damageOfDocument(device, member.bytesRead)
                                   : CPRData().compressionData()->readCompresseionWave(device);
    }
    if (!member.reason.isEmpty())
        member.state = LoadedMember::Damaged;
    handler.releaseFile(device);
}

LoadResult loadMembers(CPRFileHandler &handler, CPRData &session, const Progress &progress,
                       qint64 total)
{
    LoadResult result;
    result.isArchive = true;
    qint64 done = 0;
    ReportingHandler reporting(handler, [&](qint64 bytes) {
        done += bytes;
        result.isCancelled =
            result.isCancelled || (progress && !progress(qMin(done, total), total));
        return !result.isCancelled;
    });
    const bool isRead = session.readData(&reporting);
    result.members = reporting.members();
    if (!isRead && !result.isCancelled) {
        for (LoadedMember &member : result.members) {
            if (member.state == LoadedMember::Complete)
                findDamage(handler, member);
        }
    }
    result.isComplete = isRead && !result.isCancelled && result.missing().isEmpty();
    return result;
}

// Bytes in all members together, unpacked.
qint64 unpackedSize(const QString &name)
{
    QFile file(name);
    qint64 size = 0;
    if (file.open(QIODevice::ReadOnly)) {
        const zip::Directory directory =
            zip::directoryOf(file, std::numeric_limits<quint16>::max());
        for (const zip::Header &header : directory.headers)
            size += header.size;
    }
    return size;
}

} // namespace

bool LoadResult::hasMembers() const
{
    return std::any_of(members.begin(), members.end(), [](const LoadedMember &member) {
        return member.state != LoadedMember::Missing;
    });
}

QStringList LoadResult::missing() const
{
    QStringList names;
    for (const LoadedMember &member : members) {
        if (member.state == LoadedMember::Missing)
            names.append(member.name);
    }
    return names;
}

LoadResult load(const QString &name, CPRData &session, const Progress &progress)
{
    CPRFileHandlerZip zip;
    if (!QFileInfo(name).isFile() || !zip.open(name, CPRFileHandlerZip::Read))
        return {};
    LoadResult result = loadMembers(zip, session, progress, progress ? unpackedSize(name) : 0);
    result.isComplete &= zip.close();
    return result;
}

LoadResult load(CPRFileHandler &handler, CPRData &session)
{
    return loadMembers(handler, session, {}, 0);
}

QString save(const QString &name, CPRData &session)
{
    CPRFileHandlerZip zip;
    ReportingHandler handler(zip, [](qint64 /*bytes*/) { return true; });
    const bool isStored = zip.open(name, CPRFileHandlerZip::Create) && session.writeData(&handler)
        && !handler.hasRefused() && zip.close();
    if (isStored)
        return QString();
    return QStringLiteral("%1 cannot be written: %2").arg(name, zip.errorString());
}

} // namespace sessionfiles
