// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/StoredSession.h"

#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "manikinlog/ManikinLogReader.h"

#include <QBuffer>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamWriter>

namespace testsupport {

const QStringList memberNames{"CPREvents.xml", "CPRWaves.xml", "COMP.WV", "VENT.WV",
                              "CPRGuidelines.xml"};
const QString goldenArchive = TEST_DATA_DIR "/golden.zip";

class FaultyFiles::Device final : public QBuffer {
public:
    Device(FaultyFiles &files, const QString &name, OpenMode mode)
        : QBuffer(&files.members[name]), m_files(files), m_name(name)
    {
        open(mode | Unbuffered);
    }

private:
    bool hasFailed()
    {
        if (--m_files.untilFailure == 0)
            m_files.failed = m_name;
        return m_files.untilFailure == 0;
    }
    qint64 readData(char *data, qint64 size) override
    {
        return hasFailed() ? -1 : QBuffer::readData(data, qMin<qint64>(size, 1000));
    }
    qint64 writeData(const char *data, qint64 size) override
    {
        return QBuffer::writeData(data, hasFailed() ? size / 2 : size);
    }
    FaultyFiles &m_files;
    QString m_name;
};

QIODevice *FaultyFiles::openFileForReading(const QString &name)
{
    return members.contains(name) ? open(name, QIODevice::ReadOnly) : nullptr;
}

QIODevice *FaultyFiles::openFileForWriting(const QString &name)
{
    opened.append(name);
    if (name == refused)
        return isFull ? open(name, QIODevice::ReadOnly) : nullptr;
    return open(name, QIODevice::WriteOnly);
}

void FaultyFiles::releaseFile(QIODevice *device)
{
    ++(device ? released : releasedNulls);
    MemoryFileHandler::releaseFile(device);
}

QIODevice *FaultyFiles::open(const QString &name, QIODevice::OpenMode mode)
{
    ++given;
    return new Device(*this, name, mode);
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool store(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    // Not emptied before: some file systems then wait for the disk.
    return file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)
        && file.write(bytes) == bytes.size() && file.resize(bytes.size());
}

bool loadFrom(const QString &path, CPRData &session)
{
    Zip zip;
    const bool isComplete = zip.open(path, Zip::Read) && session.readData(&zip);
    return zip.close() && isComplete;
}

bool saveTo(const QString &path, CPRData &session, int mode)
{
    Zip zip;
    const bool isStored = zip.open(path, Zip::Mode(mode)) && session.writeData(&zip);
    return zip.close() && isStored;
}

bool saveMembers(const QString &path, const Members &members)
{
    Zip zip;
    bool isStored = zip.open(path, Zip::Create);
    for (auto member = members.cbegin(); isStored && member != members.cend(); ++member) {
        QIODevice *device = zip.openFileForWriting(member.key());
        isStored = device && device->write(*member) == member->size();
        zip.releaseFile(device);
    }
    return zip.close() && isStored;
}

Members membersOf(const QString &path)
{
    Zip zip;
    Members members;
    const bool isOpen = zip.open(path, Zip::Read);
    for (const QString &name : memberNames) {
        QIODevice *device = isOpen ? zip.openFileForReading(name) : nullptr;
        if (device)
            members[name] = device->readAll();
        zip.releaseFile(device);
    }
    return members;
}

Members saved(const CPRData &session)
{
    sessionfiles::MemoryFileHandler files;
    CPRData copy(session);
    return copy.writeData(&files) ? files.members : Members();
}

Members contentOf(CPRData &session)
{
    sessionfiles::MemoryFileHandler files;
    session.writeData(&files);
    QString standing;
    QXmlStreamWriter writer(&standing);
    session.cprEvents()->sessionStatistics()->write(&writer);
    session.cprEvents()->sessionScore()->write(&writer);
    files.members[memberNames[0]] += standing.toUtf8();
    static const QRegularExpression borrowed("totalTime\" value=\"\\d+|length=\"\\d+");
    for (const QString &name : memberNames.mid(0, 2))
        files.members[name] = QString(files.members[name]).remove(borrowed).toUtf8();
    return files.members;
}

Members goldenMembers()
{
    Members members;
    for (const QString &name : memberNames)
        members[name] = bytesOf(TEST_DATA_DIR "/golden/CPR/" + name);
    return members;
}

bool play(CPRData &session, const QString &log,
          const manikinlog::ManikinLogPlayer::Progress &progress)
{
    QFile file(TEST_DATA_DIR "/" + log);
    manikinlog::ManikinLogReader reader(&file, log);
    return file.open(QIODevice::ReadOnly)
        && manikinlog::ManikinLogPlayer(&session).play(reader, progress)
        && reader.errorString().isEmpty();
}

} // namespace testsupport
