// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"
#include "CPRFileHandlerZip.h"
#include "CPRWaveformInfo.h"
#include "support/Damage.h"
#include "support/EventValues.h"
#include "support/Recorder.h"
#include "support/Rows.h"

#include <QDir>
#include <QLoggingCategory>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <thread>

using namespace testsupport;
using E = CPREventBase;
using sessionfiles::MemoryFileHandler;

namespace {

const QDir dataDir(TEST_DATA_DIR);

// What the session logs about its archive, and every warning.
QStringList logged;

void takeLogLine(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || text.startsWith("No CPR"))
        logged.append(QString("%1: %2").arg(context.category, text));
}

QStringList lines(const QByteArray &text)
{
    return QString::fromUtf8(text).split('\n', Qt::SkipEmptyParts);
}

bool fillGoldenSession(CPRData &session)
{
    const bool played = play(session, "golden/golden.cprlog",
                             [&session](qint64 msecs) { session.setSessionTime(int(msecs)); });
    CPREventBase &info = *session.cprEvents()->cprSessionInfo();
    info.setParameter(E::manikinName, "Prüf \"Puppe\" <1> & Co");
    info.setParameter(E::startTime, "2026-03-04T05:06:07+01:00");
    info.setParameter(E::endTime, "2026-03-04T05:16:07+01:00");
    return played;
}

/// Class, kind, times, and every measurement or parameter with its value.
QString describe(const CPREventBase *event)
{
    const QMetaObject &meta = *event->metaObject();
    QString text = QString::asprintf("%s %s %d-%d", meta.className(), event->typeAsString(),
                                     event->msecs(), event->eventEndTime());
    const auto add = [&text](const QString &name, const QVariant &value) {
        if (name != "compStatus" && !name.startsWith("manikinBattery"))
            text += ' ' + name + '=' + value.toString();
    };
    for (int i = CPREventBase::staticMetaObject.propertyCount(); i < meta.propertyCount(); ++i)
        add(meta.property(i).name(), meta.property(i).read(event));
    for (const QString &key : event->params() ? event->params()->keys() : QStringList())
        add(key, event->params()->value(key));
    return text;
}

QStringList describe(const QList<CPREventBase *> &events)
{
    QStringList texts;
    for (const CPREventBase *event : events)
        texts.append(describe(event));
    return texts;
}

/// Name, method and external attributes of each entry, read without the zip library.
QString zipDirectory(const QString &path)
{
    const QByteArray zip = bytesOf(path);
    QString entries;
    for (const ZipEntry &each : directoryOf(zip))
        entries += QString::asprintf("CPR/%s %d %x,", qPrintable(each.name),
                                     numberAt(zip, each.entry + methodField + 2, 2),
                                     numberAt(zip, each.entry + attributesField));
    return entries;
}

} // namespace

class TestArchive : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    const Members m_golden = goldenMembers(); // written by hand

private Q_SLOTS:
    void initTestCase()
    {
        qInstallMessageHandler(takeLogLine);
        QLoggingCategory::setFilterRules("Kelmar.CPRData.CPRData.info=true");
    }

    void init() { logged.clear(); }

    void writesGoldenArchive()
    {
        const QString path = m_dir.filePath("Sitzung ä.zip");
        CPRData session;
        QVERIFY(fillGoldenSession(session));
        CPRFileHandlerZip handler;
        QVERIFY(handler.open(path, CPRFileHandlerZip::Create));
        QSignalSpy named(&session, &CPRData::filenameChanged);
        QVERIFY(session.writeData(&handler));
        QVERIFY(handler.close());
        QCOMPARE(named, QList<QVariantList>({{path}}));
        QCOMPARE(session.filename(), path);
        QCOMPARE(zipDirectory(path),
                 "CPR/CPREvents.xml 8 1ff0000,CPR/CPRWaves.xml 8 1ff0000,CPR/COMP.WV 8 1ff0000,"
                 "CPR/VENT.WV 8 1ff0000,CPR/CPRGuidelines.xml 8 1ff0000,");
        QVERIFY(handler.open(path, CPRFileHandlerZip::Read));
        for (const QString &name : memberNames) {
            QIODevice *device = handler.openFileForReading(name);
            QVERIFY(device);
            const QByteArray written = device->readAll();
            handler.releaseFile(device);
            QCOMPARE(lines(written), lines(m_golden[name])); // tells the line that differs
            QCOMPARE(written, m_golden[name]);
        }
        QCOMPARE(logged, QStringList());
    }

    void writeFailures_data()
    {
        const auto row = columns<QString, bool, bool, int>("member", "isFull", "result", "opened");
        row("events", "CPREvents.xml", false, false, 1);
        row("waves", "CPRWaves.xml", false, true, 5);
        row("depth wave", "COMP.WV", false, true, 5);
        row("volume wave", "VENT.WV", false, true, 5);
        row("guidelines", "CPRGuidelines.xml", false, false, 5);
        row("full at events", "CPREvents.xml", true, false, 1);
        row("full at waves", "CPRWaves.xml", true, true, 5);
        row("full at guidelines", "CPRGuidelines.xml", true, false, 5);
    }

    void writeFailures()
    {
        QFETCH(QString, member);
        QFETCH(bool, isFull);
        QFETCH(int, opened);
        CPRData session;
        QVERIFY(fillGoldenSession(session));
        FaultyFiles handler;
        handler.refused = member;
        handler.isFull = isFull;
        QTEST(session.writeData(&handler), "result");
        QCOMPARE(logged.takeLast(), "Kelmar.CPRData.CPRData: Unable to write CPR Data, " + member);
        QCOMPARE(logged.size(), isFull ? 1 : 0); // the buffer warns too
        QCOMPARE(handler.opened, memberNames.mid(0, opened));
        QCOMPARE(handler.released, handler.given);
        QCOMPARE(handler.releasedNulls, 0);
        for (const QString &name : memberNames) {
            const bool isThere = name != member && handler.opened.contains(name);
            QCOMPARE(handler.members.value(name), isThere ? m_golden[name] : QByteArray());
        }
    }

    void readsGoldenArchive()
    {
        CPRData session;
        CPRFileHandlerZip handler;
        QVERIFY(handler.open(goldenArchive, CPRFileHandlerZip::Read));
        QSignalSpy named(&session, &CPRData::filenameChanged);
        QSignalSpy learners(&session, &CPRData::learnersChanged);
        QVERIFY(session.readData(&handler));
        QCOMPARE(logged, QStringList());
        QCOMPARE(named, QList<QVariantList>({{goldenArchive}}));
        QCOMPARE(learners.count(), 0);
        QCOMPARE(session.learners(), QStringList({"Ann", "Bob Jörg"}));
        const CPREvents &events = *session.cprEvents();
        QCOMPARE(describe(events.events()),
                 lines(bytesOf(TEST_DATA_DIR "/golden/loaded-events.txt")));
        QCOMPARE(numbersOf(events.cprSessionStatistics(), {"msec", "ventHistogramRateBin_5"}),
                 QVector<double>({6200, 36}));
        QCOMPARE(events.count(E::TagComp), 2);
        QCOMPARE(events.sessionTime(), 120);
        const CPRCompressionData &comp = *session.compressionData();
        QCOMPARE(QVector<int>({comp.count(), comp.at(2), comp.at(4), comp.at(5)}),
                 QVector<int>({6, -30, 5120, 250}));
        QCOMPARE(session.ventilationData()->at(5), -10);
        QCOMPARE(comp.waveformInfo()->samplePeriod(), 20);
        QCOMPARE(comp.waveformInfo()->lsbValue(), 0.01F);
        QCOMPARE(session.cprGuidelines()->ventilationRateMaxHPCPR(), 11U);
        QCOMPARE(saved(session), m_golden);
    }

    void readRules_data()
    {
        // Figures: events, depth and volume samples, total time, session time, detected volume.
        // A member without a text to be replaced is missing.
        using Figures = QVector<int>;
        const auto row = columns<QString, QByteArray, QByteArray, QString, QStringList, Figures>(
            "member", "from", "to", "log", "learners", "figures");
        const QStringList both{"Ann", "Bob Jörg"};
        // clang-format off
        row("no waves", "CPRWaves.xml", "", "", "No CPR Data, CPRWaves.xml", {}, {1, 0, 0, 0, 7, 100});
        row("no depth wave", "COMP.WV", "", "", "", both, {13, 0, 6, 0, 0, 110});
        row("no volume wave", "VENT.WV", "", "", "", both, {13, 6, 0, 1, 120, 110});
        row("no events", "CPREvents.xml", "", "", "Unable to read CPR Data, CPREvents.xml", {}, {1, 6, 6, 1, 120, 110});
        row("no guidelines", "CPRGuidelines.xml", "", "", "Unable to read CPR Data, CPRGuidelines.xml", both, {13, 6, 6, 1, 120, 100});
        row("empty depth name", "CPRWaves.xml", "COMP.WV", "", "Unable to read CPR Data, Compression wave", both, {13, 0, 6, 0, 0, 110});
        row("empty volume name", "CPRWaves.xml", "VENT.WV", "", "Unable to read CPR Data, Ventilation wave", both, {13, 6, 0, 1, 120, 110});
        row("12000 ms, other name", "CPRWaves.xml", "COMP.WV", "600.WV", "", both, {13, 600, 6, 12, 12000, 110});
        row("12001 ms", "CPRWaves.xml", "COMP.WV\"/>", "1091.WV\"/><scale x=\"\"/><externalFile sampleRate=\"90\"/>", "", both, {13, 1091, 6, 13, 12001, 110});
        row("odd byte at the end", "COMP.WV", "\xFA", "\xFA\x05\x05", "", both, {13, 7, 6, 1, 140, 110});
        row("no students", "CPREvents.xml", "<param type=\"students\"", "<param type=\"x\"", "", {""}, {13, 6, 6, 1, 120, 110});
        row("no name", "CPREvents.xml", "Ann,Bob Jörg", "", "", {""}, {13, 6, 6, 1, 120, 110});
        row("empty names are kept", "CPREvents.xml", "Ann,Bob Jörg", ",Ann,,B b,", "", {"", "Ann", "", "B b", ""}, {13, 6, 6, 1, 120, 110});
        row("name like a number", "CPREvents.xml", "Ann,Bob Jörg", "007", "", {"7"}, {13, 6, 6, 1, 120, 110});
        // clang-format on
    }

    void readRules()
    {
        QFETCH(QString, member);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, log);
        FaultyFiles handler(m_golden);
        handler.members.insert("600.WV", QByteArray(2 * 600, '\1'));
        handler.members.insert("1091.WV", QByteArray(2 * 1091, '\1')); // 11 ms each in that row
        QVERIFY(change(handler.members, member, from, to));
        CPRData session;
        session.setSessionTime(7);
        QSignalSpy named(&session, &CPRData::filenameChanged);
        QCOMPARE(session.readData(&handler), log.isEmpty());
        QCOMPARE(logged.join('\n'), log.isEmpty() ? log : "Kelmar.CPRData.CPRData: " + log);
        QCOMPARE(named.count(), 1);
        QCOMPARE(handler.released, handler.given);
        const bool isWaveMissing = from.isEmpty() && member.endsWith(".WV");
        QCOMPARE(handler.releasedNulls, isWaveMissing ? 1 : 0);
        QTEST(session.learners(), "learners");
        const CPREvents &events = *session.cprEvents();
        const QVector<int> figures{int(events.events().size()),
                                   session.compressionData()->count(),
                                   session.ventilationData()->count(),
                                   intOf(events.sessionInfo(), E::totalTime),
                                   events.sessionTime(),
                                   session.cprGuidelines()->ventilationDetectVolume()};
        QTEST(figures, "figures");
    }

    void descriptionsAndOtherDocuments()
    {
        // Without descriptions the waves have their usual memberNames.
        MemoryFileHandler handler(m_golden);
        handler.members[memberNames[1]] = "<waveFormList/>";
        CPRData plain;
        QVERIFY(plain.readData(&handler));
        QCOMPARE(plain.compressionData()->count(), 6);
        // A document in another encoding costs itself alone.
        handler.members[memberNames[1]] =
            "<?xml version='1.0' encoding='ISO-8859-1'?><waveFormList/>";
        CPRData foreign;
        QVERIFY(!foreign.readData(&handler));
        QCOMPARE(logged.size(), 1);
        QCOMPARE(foreign.cprEvents()->events().size(), 13);
        // One that cannot be read leaves nothing of the session before.
        handler.members[memberNames[0]] = "";
        foreign.assignLearner("Old");
        QVERIFY(!foreign.readData(&handler));
        QCOMPARE(foreign.cprEvents()->events().size(), 1);
        // Waves that were loaded under other memberNames are stored and named as usual.
        handler.members = m_golden;
        handler.members["A.WV"] = m_golden[memberNames[2]];
        handler.members[memberNames[1]].replace("COMP.WV", "A.WV");
        CPRData renamed;
        QVERIFY(renamed.readData(&handler));
        QCOMPARE(saved(renamed), m_golden);
    }

    void readsEventList_data()
    {
        QTest::addColumn<QString>("path");
        for (const QString &name : QDir(dataDir.filePath("eventlists")).entryList({"*.xml"}))
            QTest::newRow(qPrintable(name)) << dataDir.filePath("eventlists/" + name);
    }

    // What each list is read to stands beside it: the warnings, then the events but the first.
    void readsEventList()
    {
        QFETCH(QString, path);
        CPRData session;
        CPREvents &list = *session.cprEvents();
        session.addUserEvent("of the list before");
        QXmlStreamReader reader(bytesOf(path));
        list.read(&reader);
        logged.replaceInStrings("Kelmar.CPRData.CPREvents: Skipping element at", "skipped");
        QCOMPARE(list.at(0), list.cprSessionInfo());
        QCOMPARE(logged + describe(list.events().mid(1)),
                 lines(bytesOf(path.replace(".xml", ".txt"))));
        const bool isStanding = path.contains("standing");
        QCOMPARE(list.cprSessionStatistics()->msecs(), isStanding ? 7 : 0);
        QCOMPARE(list.cprSessionScore()->msecs(), isStanding ? 8 : 0);
    }

    // What a host takes out of the list while it is read is no pause that another one overlaps.
    void emptiedWhileRead()
    {
        CPRData session;
        CPREvents &list = *session.cprEvents();
        bool isEmptied = false;
        connect(&list, &CPREvents::inactivityCPREvent, this, [&] {
            if (!isEmptied)
                list.reset();
            isEmptied = true;
        });
        const char *pause = "<evt type=\"CprInactivityCPR\" msecs=\"%1\">"
                            "<param type=\"compInactivity\" value=\"5\"/></evt>";
        QXmlStreamReader reader("<eventList>" + QString(pause).arg(1000) + QString(pause).arg(2000)
                                + "</eventList>");
        list.read(&reader);
        QCOMPARE(list.count(E::TagInactivity), 1);
        QCOMPARE(list.first(E::TagInactivity)->msecs(), 2000);
    }

    void survivesCutMembers()
    {
        for (const QString &name : {memberNames[0], memberNames[1], memberNames[4]}) {
            const int step = 1 + m_golden[name].size() / 150;
            for (int size = 0; size < m_golden[name].size(); size += step) {
                FaultyFiles handler(m_golden);
                handler.members[name].truncate(size);
                CPRData session;
                logged.clear();
                // The last byte is a line break behind the document.
                QCOMPARE(session.readData(&handler), size == m_golden[name].size() - 1);
                const QString warning = "Unable to read CPR Data, " + name + ": line ";
                QCOMPARE(logged.filter(warning).size(), size < m_golden[name].size() - 1 ? 1 : 0);
                QCOMPARE(handler.released, handler.given);
                QVERIFY(session.cprEvents()->events().size() <= 13);
            }
        }
    }

    void roundTripOfFullSession()
    {
        CPRData session;
        QVERIFY(play(session, "two-rescuers.cprlog"));
        const CPREvents &events = *session.cprEvents();
        // What the format does not hold: the end of a ventilation, and 2.1 as a text.
        for (CPREventBase *event : events.events(E::TagVent, -1))
            event->setEventEndTime(event->msecs());
        events.sessionInfo()->setParameter(E::manikinFeedpodVersion, "2.5");
        MemoryFileHandler first(saved(session));

        CPRData loaded;
        QVERIFY(loaded.readData(&first));
        CPRData copy(loaded); // lists statistics and score too
        QCOMPARE(copy.cprEvents()->events().size(), 187);
        QStringList expected = describe(events.events());
        QStringList actual = describe(copy.cprEvents()->events());
        expected.sort(); // events that overlap stand in the order in which they came
        actual.sort();
        QCOMPARE(actual, expected);
        QCOMPARE(loaded.learners(), session.learners());
        QCOMPARE(loaded.cprEvents()->sessionTime(), 120000);
        loaded.cprGuidelines()->setManikinGuidelineFlag(true); // not in the format
        QVERIFY(*loaded.cprGuidelines() == *session.cprGuidelines());
        QCOMPARE(saved(loaded), first.members);
    }

    void zipHandler()
    {
        const QString path = m_dir.filePath("added.zip");
        CPRFileHandlerZip handler;
        QVERIFY(!handler.open(path, static_cast<CPRFileHandlerZip::Mode>(3)));
        QVERIFY(!handler.errorString().isEmpty());
        QVERIFY(!handler.open(path, CPRFileHandlerZip::Read));
        QVERIFY(!QFile::exists(path));
        QVERIFY(!handler.open(m_dir.path(), CPRFileHandlerZip::Read));
        handler.releaseFile(nullptr);
        const auto write = [&](CPRFileHandlerZip::Mode mode, const char *name) {
            QVERIFY(handler.open(path, mode));
            QCOMPARE(handler.filename(), path);
            handler.releaseFile(handler.openFileForWriting(name));
            QVERIFY(handler.close());
        };
        write(CPRFileHandlerZip::Create, "replaced");
        write(CPRFileHandlerZip::Create, "a");
        write(CPRFileHandlerZip::Add, "b");
        QCOMPARE(zipDirectory(path), "CPR/a 8 1ff0000,CPR/b 8 1ff0000,");
        QVERIFY(handler.open(path, CPRFileHandlerZip::Read));
        // Two at once; no name reaches the bytes of another.
        std::unique_ptr<QIODevice> a(handler.openFileForReading("a"));
        std::unique_ptr<QIODevice> b(handler.openFileForReading("b"));
        QVERIFY(a && b);
        QVERIFY(!handler.openFileForReading("c"));
        QVERIFY(!handler.openFileForReading(QString(300, 'c')));
        QVERIFY(!handler.openFileForWriting("c"));
        const QString warning = "Kelmar.CPRData.CPRFileHandlerZip: Failed to open file:";
        QCOMPARE(logged.filter("Kelmar").size(), 3); // and nothing of what open() refused
        QCOMPARE(logged.filter(warning).size(), 3);
    }

    void attributes()
    {
        CPRData session;
        CPRWaveformInfo &wave = *session.compressionData()->waveformInfo();
        CPRWaveformInfo &other = *session.ventilationData()->waveformInfo();
        CPRGuidelines &limits = *session.cprGuidelines();
        wave.setFileName("ä<");
        other.setProperty("type", 7); // has no key
        QString xml;
        QXmlStreamWriter writer(&xml);
        writer.writeEmptyElement("e");
        for (const char *name : {"unheard", "fileName", "scaleMin", "bitsPerSample", "scaleUnits"})
            wave.writeAttribFromProperty(&writer, name);
        other.writeAttribFromProperty(&writer, "type");
        limits.writeAttribFromProperty(&writer, "UsingDefaultValues");
        limits.writeAttribFromProperty(&writer, "UseAbsoluteDepth");
        writer.writeEndDocument();
        QCOMPARE(xml,
                 "<e fileName=\"ä&lt;\" scaleMin=\"-60\" bitsPerSample=\"16\" scaleUnits="
                 "\"mm\" type=\"\" UsingDefaultValues=\"1\" UseAbsoluteDepth=\"0\"/>\n");
        limits.setUsingDefaultValues(false);
        limits.setUseAbsoluteDepth(true);
        QXmlStreamReader reader(xml.replace("type=\"\"", "type=\"chestAccel\" unheard=\"1\""));
        reader.readNextStartElement();
        other.readAttribsToProperties(&reader);
        limits.readAttribsToProperties(&reader);
        QCOMPARE(other.fileName(), "ä<");
        QCOMPARE(other.scaleMin(), -60.0F);
        QCOMPARE(other.scaleUnits(), CPRWaveformInfo::mm);
        QCOMPARE(other.type(), CPRWaveformInfo::chestAccel);
        QVERIFY(limits.usingDefaultValues() && !limits.useAbsoluteDepth());
        QVERIFY(other.dynamicPropertyNames().isEmpty());
    }

    void variantFromString_data()
    {
        const auto row = columns<QVariant>("expected");
        row("12", 12);
        row("-3", -3);
        row("2147483648", 2147483648.0F);
        row("12.5", 12.5F);
        row("1e3", 1000.0F);
        for (const char *text : {"", "abc", "0x10", "12 mm", "1,5"})
            row(text, QString(text));
    }

    void variantFromString()
    {
        QFETCH(QVariant, expected);
        const QVariant variant = CPRDataBase::variantFromString(QTest::currentDataTag());
        QCOMPARE(variant.typeName(), expected.typeName());
        QCOMPARE(variant, expected);
    }

    // That a burst gives one announcement is tested with every object that has one.
    void announcesWhileChangesKeepComing()
    {
        CPRWaveformInfo wave(nullptr);
        QSignalSpy changes(&wave, &CPRWaveformInfo::waveformInfoChanged);
        wave.findChild<QTimer *>()->setInterval(
            200); // 1 ms would be lost in a busy machine's pauses
        for (int i = 0; i < 25; ++i) {
            wave.sendSignal();
            settle();
        }
        QVERIFY(changes.count() >= 1);
        changes.wait(300);
        changes.clear();
        std::thread([&wave] { wave.sendSignal(); }).join();
        QTRY_COMPARE(changes.count(), 1);
    }
};

QTEST_GUILESS_MAIN(TestArchive)

#include "tst_archive.moc"
