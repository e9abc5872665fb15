// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/SessionFile.h"

#include "private/SessionArchive.h"
#include "sessionfiles/ZipHeader.h"

#include <CPRData.h>
#include <CPRFileHandlerZip.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/ManikinLogReader.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <optional>

namespace sessionfiles {

using manikinlog::ManikinLogReader;

namespace {

LoadResult loadMembers(CPRFileHandler &handler, CPRData &session, const Progress &progress,
                       qint64 total)
{
    LoadResult result;
    result.isArchive = true;
    qint64 done = 0;
    CPRReadReport report;
    report.advance = [&](qint64 bytes) {
        done += bytes;
        result.isCancelled =
            result.isCancelled || (progress && !progress(qMin(done, total), total));
        return !result.isCancelled;
    };
    const bool isRead = session.readData(&handler, report);
    result.members = report.members;
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

// Plays a recorded log.
LoadResult loadRecording(const QString &name, CPRData &session, const Progress &progress)
{
    LoadResult result;
    QFile file(name);
    const qint64 size = file.size(); // asked for once: it is a system call
    file.open(QIODevice::ReadOnly); // where that fails, reading says why
    ManikinLogReader reader(&file, name);
    manikinlog::ManikinLogPlayer player(&session);
    manikinlog::Record record;
    auto found = reader.read(record);
    for (; found == ManikinLogReader::Result::Record; found = reader.read(record)) {
        player.play(record);
        result.isRecording = true;
        result.isCancelled = progress && !progress(file.pos(), size);
        if (result.isCancelled)
            return result;
    }
    player.finish();
    result.isComplete = result.isRecording && found == ManikinLogReader::Result::End;
    result.problem = reader.errorString();
    return result;
}

// What keeps an archive that was just saved from being loaded whole: a session has no limits while
// it grows, but a file has.
std::optional<QString> whyNotLoaded(const QString &name)
{
    CPRData session;
    const LoadResult loaded = load(name, session);
    if (loaded.isComplete)
        return std::nullopt;
    for (const LoadedMember &member : loaded.members) {
        if (member.state == LoadedMember::Damaged)
            return member.name + QStringLiteral(": ") + member.reason;
    }
    return QCoreApplication::translate("sessionfiles", "not all of it is there");
}

} // namespace

SaveResult SaveResult::failed(const QString &name, const QString &reason)
{
    return {
        false, false,
        QCoreApplication::translate("sessionfiles", "%1 cannot be written: %2").arg(name, reason)};
}

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
    if (QFileInfo(name).isFile() && ManikinLogReader::isLog(name))
        return loadRecording(name, session, progress);
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

bool isForeignArchive(const QString &name)
{
    QFile file(name);
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly) || file.peek(2) != "PK")
        return false;
    const zip::Directory directory = zip::directoryOf(file, std::numeric_limits<quint16>::max());
    const auto isMember = [](const zip::Header &header) {
        const auto isNamed = [&header](SessionArchive::MemberIndex index) {
            using namespace SessionArchive;
            return nameInZip(nameInFolder(index)).toUtf8() == header.name;
        };
        const auto &members = SessionArchive::readingOrder;
        return std::any_of(members.begin(), members.end(), isNamed);
    };
    return directory.isFound && !directory.isLarge && directory.headers.size() == directory.entries
        && std::none_of(directory.headers.begin(), directory.headers.end(), isMember);
}

SaveResult save(const QString &name, CPRData &session)
{
    CPRFileHandlerZip zip;
    // A member that could not be stored is a file that cannot be closed.
    if (!zip.open(name, CPRFileHandlerZip::Create) || !session.writeData(&zip) || !zip.close())
        return SaveResult::failed(name, zip.errorString());
    if (const std::optional<QString> reason = whyNotLoaded(name)) {
        return {true, false,
                QCoreApplication::translate("sessionfiles",
                                            "%1 is saved, but will not be read whole: %2")
                    .arg(name, *reason)};
    }
    return {true, true, {}};
}

} // namespace sessionfiles
