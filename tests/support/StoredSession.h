// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef STOREDSESSION_H
#define STOREDSESSION_H

#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPRFileHandlerZip.h"
#include "support/TestSupport.h"

#include <QBuffer>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QXmlStreamWriter>

#include <functional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

/// What tests need that store sessions where things go wrong.
namespace TestSupport {

using Members = QMap<QString, QByteArray>;
using Zip = CPRFileHandlerZip;

#ifdef __SANITIZE_ADDRESS__
constexpr int slowdown = 10;
#else
constexpr int slowdown = 1;
#endif

// What takes so long does not come to an end: quadratic time would need minutes for these inputs.
constexpr double hangSeconds = 60;

const QStringList names{"CPREvents.xml", "CPRWaves.xml", "COMP.WV", "VENT.WV", "CPRGuidelines.xml"};

/// Keeps members in memory. Their reads and writes are counted together, and one of them may fail:
/// a read gives nothing, a write takes the half.
class MemoryFiles final : public CPRFileHandler {
public:
    explicit MemoryFiles(const Members &content = {}) : members(content) { }

    QIODevice *openFileForReading(const QString &name) override
    {
        return members.contains(name) ? new Device(*this, name, QIODevice::ReadOnly) : nullptr;
    }
    QIODevice *openFileForWriting(const QString &name) override
    {
        return new Device(*this, name, QIODevice::WriteOnly);
    }
    void releaseFile(QIODevice *device) override { delete device; }
    QString filename() const override { return "memory"; }

    Members members;
    int untilFailure = 0; // calls; none fails after 0
    QString failed; // the member whose call failed

private:
    struct Device final : QBuffer {
        Device(MemoryFiles &files, const QString &name, OpenMode mode)
            : QBuffer(&files.members[name]), m_files(files), m_name(name)
        {
            open(mode | Unbuffered);
        }
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
        MemoryFiles &m_files;
        QString m_name;
    };
};

/// What a session holds, by member, the statistics and the score also when they are not in the
/// list. What a member takes from another one when it is loaded is left out.
inline Members contentOf(CPRData &session)
{
    MemoryFiles files;
    session.writeData(&files);
    QString standing;
    QXmlStreamWriter writer(&standing);
    session.cprEvents()->sessionStatistics()->write(&writer);
    session.cprEvents()->sessionScore()->write(&writer);
    files.members[names[0]] += standing.toUtf8();
    static const QRegularExpression borrowed("totalTime\" value=\"\\d+|length=\"\\d+");
    for (const QString &name : names.mid(0, 2))
        files.members[name] = QString(files.members[name]).remove(borrowed).toUtf8();
    return files.members;
}

inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool store(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    // Not emptied before: some file systems then wait for the disk.
    return file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)
        && file.write(bytes) == bytes.size() && file.resize(bytes.size());
}

inline bool load(const QString &path, CPRData &session)
{
    Zip zip;
    const bool isComplete = zip.open(path, Zip::Read) && session.readData(&zip);
    return zip.close() && isComplete;
}

inline bool save(const QString &path, CPRData &session, int mode)
{
    Zip zip;
    const bool isStored = zip.open(path, Zip::Mode(mode)) && session.writeData(&zip);
    return zip.close() && isStored;
}

struct Ended {
    int exitCode; // -1 after a signal
    double cpuSeconds;
    double megabytes; // at its peak
};

/// Runs \a work in a copy of this process; its result is the exit code.
inline Ended runInChild(const std::function<int()> &work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            double(usage.ru_utime.tv_sec) + double(usage.ru_utime.tv_usec) / 1e6,
            double(usage.ru_maxrss) / 1024};
}

} // namespace TestSupport

#endif
