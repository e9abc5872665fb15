// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "private/SessionArchive.h"

#include "CPRData.h"
#include "CPRFileHandler.h"
#include "CPRReadReport.h"
#include "private/CountedDevice.h"
#include "private/XmlInput.h"
#include "private/XmlOutput.h"
#include "private/XmlReading.h"

#include <QXmlStreamWriter>

namespace {

using namespace SessionArchive;

// Lets write(writer) fill the document in \a device; false when the device does not take it all.
template <typename Write> bool writeDocument(QIODevice *device, Write write)
{
    XmlOutput output(device);
    QXmlStreamWriter writer(&output);
    writer.setAutoFormatting(true);
    write(writer);
    return output.finish();
}

// Lets read(reader) take the document in \a device from its beginning. Returns what is wrong with
// it; read() has then taken what comes before that. Empty when the document is complete.
template <typename Read> QString readDocument(QIODevice *device, Read read)
{
    XmlInput input(device);
    QXmlStreamReader reader(&input); // one that has read another document knows its encoding still
    reader.readNext();
    const QString encoding = reader.documentEncoding().toString();
    if (!encoding.isEmpty() && encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) != 0)
        reader.raiseError(QStringLiteral("it is encoded in %1, not in UTF-8").arg(encoding));
    read(reader);
    while (!reader.atEnd())
        reader.readNext();
    if (!reader.hasError())
        return QString();
    return QStringLiteral("line %1, column %2: %3")
        .arg(reader.lineNumber())
        .arg(reader.columnNumber())
        .arg(input.damage().isEmpty() ? reader.errorString() : input.damage());
}

CPRWaveData *waveOf(const CPRData &session, MemberIndex wave)
{
    if (wave == Compressions)
        return session.compressionData();
    return session.ventilationData();
}

void writeWaveList(CPRData &session, QXmlStreamWriter &writer)
{
    writer.writeStartDocument();
    writer.writeStartElement(QString::fromLatin1(waveList));
    for (const MemberIndex index : {Compressions, Ventilations}) {
        // The member that the description names is the one that is stored, also when the session
        // was loaded from members of other names.
        CPRWaveData *wave = waveOf(session, index);
        if (wave->waveformInfo()->fileName() != nameInFolder(index))
            wave->waveformInfo()->setFileName(nameInFolder(index));
        wave->writeWaveformInfo(&writer);
    }
    writer.writeEndDocument();
}

bool write(CPRData &session, MemberIndex index, QIODevice *device)
{
    switch (index) {
    case Events:
        return writeDocument(
            device, [&](QXmlStreamWriter &writer) { session.cprEvents()->write(&writer); });
    case Waves:
        return writeDocument(device,
                             [&](QXmlStreamWriter &writer) { writeWaveList(session, writer); });
    case Compressions:
        return session.compressionData()->writeCompresseionWave(device);
    case Ventilations:
        return session.ventilationData()->writeVentilationWave(device);
    case Guidelines:
        return writeDocument(
            device, [&](QXmlStreamWriter &writer) { session.cprGuidelines()->write(&writer); });
    }
    return false;
}

// Returns what is wrong with the member; empty when it was read to its end.
QString read(CPRData &session, MemberIndex index, QIODevice *device)
{
    switch (index) {
    case Events:
        return readDocument(device,
                            [&](QXmlStreamReader &reader) { session.cprEvents()->read(&reader); });
    case Waves:
        return readDocument(device, [&](QXmlStreamReader &reader) {
            readNextChild(reader);
            for (const MemberIndex wave : {Compressions, Ventilations})
                waveOf(session, wave)->readWaveformInfo(&reader);
        });
    case Compressions:
        return session.compressionData()->readCompresseionWave(device);
    case Ventilations:
        return session.ventilationData()->readVentilationWave(device);
    case Guidelines:
        return readDocument(
            device, [&](QXmlStreamReader &reader) { session.cprGuidelines()->read(&reader); });
    }
    return QString();
}

} // namespace

QString SessionArchive::nameToRead(const CPRData &session, MemberIndex index)
{
    return isWave(index) ? waveOf(session, index)->waveformInfo()->fileName() : nameInFolder(index);
}

bool SessionArchive::writeMember(CPRData &session, MemberIndex index, CPRFileHandler &handler)
{
    QIODevice *device = handler.openFileForWriting(nameInFolder(index));
    const bool isWritten = device && write(session, index, device);
    if (device)
        handler.releaseFile(device);
    return isWritten;
}

QString SessionArchive::readMember(CPRData &session, MemberIndex index, CPRFileHandler &handler,
                                   CPRReadReport &report)
{
    CPRReadReport::Member member;
    member.name = nameToRead(session, index);
    QIODevice *device = handler.openFileForReading(member.name);
    QString damage;
    if (device) {
        CountedDevice counted(device, report.advance);
        damage = read(session, index, &counted);
        member.bytesRead = counted.count();
        if (!damage.isEmpty()) {
            member.state = CPRReadReport::Member::Damaged;
            member.reason = counted.hasFailed() ? counted.errorString() : damage;
        }
    } else {
        member.state = CPRReadReport::Member::Missing;
    }
    // The null of a wave goes to the handler as a device does.
    if (device || isWave(index))
        handler.releaseFile(device);
    report.members.append(member);
    return damage;
}
