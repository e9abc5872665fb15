// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_STOREDSESSION_H
#define TESTSUPPORT_STOREDSESSION_H

#include "CPRFileHandlerZip.h"
#include "manikinlog/ManikinLogPlayer.h"
#include "sessionfiles/MemoryFileHandler.h"

#include <QIODevice>
#include <QStringList>

/// Sessions that are stored, in memory and in files, and those of the folder data/.
namespace testsupport {

using Zip = CPRFileHandlerZip;
using Members = sessionfiles::MemoryFileHandler::Members;

/// Of the members, in the order in which they are written.
extern const QStringList memberNames;

/// Counts what a session does with its members, which are in memory, and fails where a test wants
/// it: a member is refused, or a call fails.
class FaultyFiles final : public sessionfiles::MemoryFileHandler {
public:
    using MemoryFileHandler::MemoryFileHandler;

    QIODevice *openFileForReading(const QString &name) override;
    QIODevice *openFileForWriting(const QString &name) override;
    void releaseFile(QIODevice *device) override;

    QString refused; // this member cannot be written: it is not opened
    bool isFull = false; // or it is, and takes no byte
    QStringList opened; // for writing
    int given = 0;
    int released = 0;
    int releasedNulls = 0;

    int untilFailure = 0; // reads and writes; none fails after 0
    QString failed; // the member whose read gave nothing, or whose write took the half

private:
    class Device;
    QIODevice *open(const QString &name, QIODevice::OpenMode mode);
};

QByteArray bytesOf(const QString &path);
bool store(const QString &path, const QByteArray &bytes);

bool loadFrom(const QString &path, CPRData &session);
bool saveTo(const QString &path, CPRData &session, int mode = Zip::Create);
/// Writes an archive of these members alone.
bool saveMembers(const QString &path, const Members &members);
Members membersOf(const QString &path);

/// What a copy of the session is saved to; it lists the statistics and the score.
Members saved(const CPRData &session);
/// What a session holds, by member, the statistics and the score also when they are not in the
/// list. What a member takes from another one when it is loaded is left out.
Members contentOf(CPRData &session);

/// The archive of another program, and what it holds.
extern const QString goldenArchive;
Members goldenMembers();

/// Plays a log of the folder data/ to its end.
bool play(CPRData &session, const QString &log,
          const manikinlog::ManikinLogPlayer::Progress &progress = {});

} // namespace testsupport

#endif
