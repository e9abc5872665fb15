// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// A whole archive: loaded, now and then stored again, and now and then checked and salvaged.
//
// The first byte chooses. Either the archive is the rest of the input as it is, or it is built from
// members, so that damage gets behind the checksums. A member is a byte for its name, one for what
// is wrong with it, and its content; the separator stands between members.

#include "CPRData.h"
#include "CPRFileHandlerZip.h"
#include "Fuzzing.h"
#include "sessionfiles/ArchiveCheck.h"
#include "sessionfiles/ArchiveSalvage.h"
#include "sessionfiles/SessionFile.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <quacrc32.h>
#include <quazip.h>
#include <quazipfile.h>
#include <quazipnewinfo.h>

#include <iterator>

using namespace fuzzing;

namespace {

const QByteArray separator = QByteArrayLiteral("\xFF\xFE");

enum Wrong { // the bits of a member's second byte
    NotDeflated = 1,
    Checksum = 2,
    Size = 4,
    CutShort = 8,
    FlippedBit = 16,
    Doubled = 32
};

QByteArray deflated(const QByteArray &content)
{
    // The bare stream stands between a length with a header and a checksum.
    const QByteArray packed = qCompress(content);
    return content.isEmpty() ? QByteArrayLiteral("\x03\x00") : packed.mid(6, packed.size() - 10);
}

void addMember(QuaZip &zip, const QString &name, quint32 wrong, const QByteArray &content)
{
    QByteArray packed = (wrong & NotDeflated) != 0 ? content : deflated(content);
    if ((wrong & CutShort) != 0)
        packed.chop(packed.size() / 3);
    if ((wrong & FlippedBit) != 0 && !packed.isEmpty())
        packed[packed.size() / 2] = static_cast<char>(packed.at(packed.size() / 2) ^ 16);
    QuaZipNewInfo info(name);
    info.uncompressedSize = content.size() + ((wrong & Size) != 0 ? 1 : 0);
    const quint32 checksum = QuaCrc32().calculate(content) + ((wrong & Checksum) != 0 ? 1 : 0);
    // Raw: the bytes, the size and the checksum are taken as they are.
    QuaZipFile file(&zip);
    if (file.open(QIODevice::WriteOnly, info, nullptr, checksum,
                  (wrong & NotDeflated) != 0 ? 0 : Z_DEFLATED, Z_DEFAULT_COMPRESSION, true)) {
        file.write(packed);
        file.close();
    }
}

QByteArray archiveOf(const QByteArray &input)
{
    QBuffer file;
    const QString names[] = {
        QStringLiteral("CPR/CPREvents.xml"),     QStringLiteral("CPR/CPRWaves.xml"),
        QStringLiteral("CPR/COMP.WV"),           QStringLiteral("CPR/VENT.WV"),
        QStringLiteral("CPR/CPRGuidelines.xml"), QStringLiteral("CPR/cprevents.XML"),
        QStringLiteral("../CPR/COMP.WV")};
    QuaZip zip(&file);
    zip.setAutoClose(false);
    require(zip.open(QuaZip::mdCreate), "an archive can be built");
    for (int from = 0; from < input.size();) {
        const int end = input.indexOf(separator, from);
        Bytes part(input.mid(from, end < 0 ? -1 : end - from));
        const QString name = names[part.below(std::size(names))];
        const quint32 wrong = part.number(1);
        const QByteArray content = part.rest();
        addMember(zip, name, wrong, content);
        if ((wrong & Doubled) != 0)
            addMember(zip, name, 0, content + content);
        from = end < 0 ? input.size() : end + separator.size();
    }
    zip.close();
    return file.data();
}

bool save(CPRData &session, const QString &name, CPRFileHandlerZip::Mode mode)
{
    CPRFileHandlerZip zip;
    const bool isStored = zip.open(name, mode) && session.writeData(&zip);
    return zip.close() && isStored;
}

// What was stored is loaded again.
void storeAndLoad(CPRData &session, const QString &name, CPRFileHandlerZip::Mode mode)
{
    if (!save(session, name, mode)) {
        require(mode == CPRFileHandlerZip::Add, "a new archive can be written");
        return;
    }
    CPRData loaded;
    const bool isComplete = sessionfiles::load(name, loaded).isComplete;
    require(isComplete, "what was stored can be loaded");
    requireSame(session, loaded);
}

// Check, load, salvage and save come to one verdict on the archive from which the session is.
void requireAgreement(const QString &name, const CPRData &session, bool isLoadedComplete)
{
    static const QTemporaryDir directory;
    static const QString salvaged = directory.filePath(QStringLiteral("salvaged.zip"));
    require((sessionfiles::check(name).errors() == 0) == isLoadedComplete,
            "what is loaded whole has no error, and nothing else");
    const sessionfiles::SalvagedSession left = sessionfiles::salvage(name);
    require(!isLoadedComplete || left.isAll, "what is loaded whole is salvaged whole");
    require(sessionfiles::save(salvaged, left).isSaved, "what was salvaged can be written");
    CPRData loaded;
    require(sessionfiles::load(salvaged, loaded).isComplete, "what was salvaged is loaded whole");
    require(sessionfiles::check(salvaged).errors() == 0, "what was salvaged has no error");
    if (!isLoadedComplete)
        return;
    requireSame(session, loaded);
    CPRData copy(session);
    require(sessionfiles::save(salvaged, copy).isComplete, "what was loaded whole is saved whole");
    CPRData again;
    require(sessionfiles::load(salvaged, again).isComplete, "what was saved whole is loaded whole");
    requireSame(session, again);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepare();
    Cost cost(size);
    static const QTemporaryDir directory;
    static const QString name = directory.filePath(QStringLiteral("session.zip"));

    Bytes input(data, size);
    const quint32 choice = input.below(8);
    QByteArray archive = input.rest();
    if ((choice & 1) == 0)
        archive = archiveOf(archive);
    QFile file(name);
    require(file.open(QIODevice::WriteOnly) && file.write(archive) == archive.size(),
            "the directory for temporary files can be written");
    file.close();
    CPRData session;
    requireOrder(*session.cprEvents());
    const sessionfiles::LoadResult loaded = sessionfiles::load(name, session);
    for (const sessionfiles::LoadedMember &member : loaded.members)
        cost.add(member.bytesRead);
    requireWhole(*session.cprEvents());
    if (choice == 4 || choice == 5)
        requireAgreement(name, session, loaded.isComplete);
    if (choice >= 6)
        storeAndLoad(session, name,
                     choice == 6 ? CPRFileHandlerZip::Create : CPRFileHandlerZip::Add);
    fireTimers(session);
    return 0;
}
