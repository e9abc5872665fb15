// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ArchiveCheck.h"
#include "sessionfiles/ArchiveSalvage.h"
#include "sessionfiles/SessionFile.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace sessionfiles;
using namespace testsupport;

namespace {

const QString events = "CPREvents.xml";
const QString waves = "CPRWaves.xml";
const QString compressions = "COMP.WV";
const QString ventilations = "VENT.WV";
const QString guidelines = "CPRGuidelines.xml";

using Change = std::function<void(Members &)>;

Change insertBefore(const QString &member, const QByteArray &end, const QByteArray &text)
{
    return [=](Members &members) {
        QByteArray &content = members[member];
        content.insert(content.lastIndexOf(end), text);
    };
}

Change replace(const QString &member, const QByteArray &from, const QByteArray &to)
{
    return [=](Members &members) {
        QVERIFY2(members[member].contains(from), from.constData());
        members[member].replace(from, to);
    };
}

// Events one second apart, each with this content.
Change addEvents(int count, const QByteArray &content,
                 const QByteArray &kind = "CprPacketLossStart")
{
    return [=](Members &members) {
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += "<evt type=\"" + kind + "\" msecs=\"" + QByteArray::number(1000 * i) + "\">"
                + content + "</evt>\n";
        insertBefore(events, "</eventList>", text)(members);
    };
}

Change addSamples(int count)
{
    return [=](Members &members) {
        for (const QString &wave : {compressions, ventilations})
            members[wave] = QByteArray(2 * count, '\1');
    };
}

Change addValues(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += "<Unknown" + QByteArray::number(i) + " value=\"1\" unit=\"none\"/>\n";
    return insertBefore(guidelines, "</GuideLineSettings>", text);
}

Change addAttributes(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += " a" + QByteArray::number(i) + "=\"1\"";
    return insertBefore(guidelines, "</GuideLineSettings>", "<Many" + text + "/>");
}

// The list itself is the first level.
Change nest(int depth)
{
    const int inner = depth - 1;
    return insertBefore(guidelines, "</GuideLineSettings>",
                        QByteArray("<a>").repeated(inner) + QByteArray("</a>").repeated(inner));
}

Change addText(int length)
{
    return insertBefore(guidelines, "</GuideLineSettings>",
                        "<Long/>" + QByteArray(length, ' ') + "<Next/>");
}

Change encodeInUtf16(const QString &member)
{
    return [=](Members &members) {
        const QString text = QString::fromUtf8(members[member]);
        QByteArray &content = members[member] = "\xFF\xFE"; // little-endian
        for (const QChar c : text)
            content.append(char(c.cell())).append(char(c.row()));
    };
}

const QByteArray userParameter = "<param type=\"eventId\" value=\"a\"/>";
const QByteArray twoParameters = "<param type=\"aedEventType\" value=\"1\"/>"
                                 "<param type=\"eventId\" value=\"a\"/>";

// How much there is of a session.
QVector<int> sizesOf(const CPRData &session)
{
    return {int(session.cprEvents()->events().size()), session.compressionData()->count(),
            session.ventilationData()->count()};
}

} // namespace

Q_DECLARE_METATYPE(Change)

/// Whoever reads an archive comes to the same verdict: what the check passes is loaded whole, what
/// is loaded whole has no error, and what is salvaged does both.
class TestAgreement : public QObject {
    Q_OBJECT

    // In memory where there is such a place.
    QTemporaryDir m_directory{QFileInfo("/dev/shm").isWritable() ? "/dev/shm/tst_agreement-XXXXXX"
                                                                 : QDir::tempPath() + "/XXXXXX"};

private Q_SLOTS:
    void agrees_data()
    {
        // Each limit has an archive at it and one beyond.
        const auto row = columns<Change>("change");
        row("nothing", [](Members & /*members*/) {});
        row("518,399 more events", addEvents(518'399, {}));
        row("520,000 more events", addEvents(520'000, {}));
        row("50,000 events of two parameters", addEvents(50'000, twoParameters));
        row("60,000 events of two parameters", addEvents(60'000, twoParameters));
        row("100,001 user events", addEvents(100'001, userParameter, "Event"));
        row("8,730,000 samples", addSamples(8'730'000));
        row("9,000,000 samples", addSamples(9'000'000));
        row("10,800,000 samples", addSamples(10'800'000));
        row("1,000 unknown values", addValues(1000));
        row("1,001 unknown values", addValues(1001));
        row("1,500 unknown values", addValues(1500));
        row("22 attributes", addAttributes(22));
        row("128 attributes", addAttributes(128));
        row("129 attributes", addAttributes(129));
        row("20 levels", nest(20));
        row("64 levels", nest(64));
        row("65 levels", nest(65));
        row("a text of 1,000,000 bytes", addText(1'000'000));
        row("a text of 1 MiB", addText(1024 * 1024));
        row("a text of 1,200,000 bytes", addText(1'200'000));
        row("a text above 1 MiB", addText(1024 * 1024 + 1));
        row("events in UTF-16", encodeInUtf16(events));
        row("events in UTF-16BE without a mark", [](Members &members) {
            encodeInUtf16(events)(members);
            members[events] = '\0' + members[events].mid(2).chopped(1);
        });
        row("waves in UTF-16", encodeInUtf16(waves));
        row("guidelines in UTF-16", encodeInUtf16(guidelines));
        row("events said to be Latin-1", replace(events, "?>", " encoding=\"ISO-8859-1\"?>"));
        row("events said to be UTF-16", replace(events, "?>", " encoding=\"UTF-16\"?>"));
        row("events said to be UTF-8", replace(events, "?>", " encoding=\"utf-8\"?>"));
        row("no UTF-8", replace(events, "\"CprSessionInfo\"", "\"Cpr\xC3Info\""));
        row("a document type", replace(events, "<eventList", "<!DOCTYPE a><eventList"));
        row("another root", replace(guidelines, "GuideLineSettings", "Settings"));
        row("an empty document", [](Members &members) { members[guidelines].clear(); });
        row("text behind the end", [](Members &members) { members[waves] += "more"; });
        row("no end", replace(events, "</eventList>", ""));
        row("no event", insertBefore(events, "</eventList>", "<other/>"));
        row("no number", replace(waves, "length=\"0\"", "length=\"many\""));
        row("a rate of 0", replace(waves, "sampleRate=", "sampleRate=\"0\" was="));
        row("another member's name", replace(waves, "VENT.WV", "V.WV"));
        row("no member's name", replace(waves, "fileName=\"COMP.WV\"", ""));
        row("half a sample", [](Members &members) { members[ventilations] = QByteArray(3, '\1'); });
        row("no wave", [](Members &members) { members.remove(compressions); });
        row("no list of waves", [](Members &members) { members.remove(waves); });
        row("no events", [](Members &members) { members.remove(events); });
        row("a stranger", [](Members &members) { members["README.txt"] = "a"; });
        row("an event before the one before it", [](Members &members) {
            addEvents(3, {})(members);
            replace(events, "msecs=\"2000\"", "msecs=\"-5000\"")(members);
        });
    }

    void agrees()
    {
        QFETCH(Change, change);
        const QString name = m_directory.filePath("case.zip");
        Members members = emptySession();
        change(members);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(saveMembers(name, members));

        CPRData session;
        const LoadResult loaded = load(name, session);
        const FindingList findings = check(name);
        QVERIFY2((findings.errors() == 0) == loaded.isComplete, qPrintable(findings.toText()));
        for (const LoadedMember &member : loaded.members)
            QCOMPARE(member.reason.isEmpty(), member.state != LoadedMember::Damaged);
        // The library's own answer; it does not mind when a wave is not there.
        CPRData plain;
        QCOMPARE(loadFrom(name, plain) && loaded.missing().isEmpty(), loaded.isComplete);

        const SalvagedSession salvaged = salvage(name);
        QCOMPARE(salvaged.isAll, loaded.isComplete);
        const QString copy = m_directory.filePath("salvaged.zip");
        QVERIFY(save(copy, salvaged).isSaved);
        CPRData saved;
        QVERIFY2(load(copy, saved).isComplete, qPrintable(salvaged.report.join('\n')));
        const FindingList after = check(copy);
        QVERIFY2(after.errors() == 0, qPrintable(after.toText()));
        // Nothing that can be loaded is lost, but for an event that is just too much.
        const QVector<int> before = sizesOf(session);
        const QVector<int> sizes = sizesOf(saved);
        for (int i = 0; i < sizes.size(); ++i)
            QVERIFY2(sizes.at(i) >= before.at(i) - 1, qPrintable(salvaged.report.join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestAgreement)
#include "tst_agreement.moc"
