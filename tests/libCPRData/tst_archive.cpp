// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"
#include "CPRFileHandlerZip.h"
#include "CPRWaveformInfo.h"
#include "manikinlog/ManikinLogPlayer.h"
#include "manikinlog/ManikinLogReader.h"
#include "support/TestSupport.h"

#include <QBuffer>
#include <QDir>
#include <QLoggingCategory>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <QtEndian>

#include <thread>

using namespace TestSupport;
using E = CPREventBase;
using Members = QMap<QString, QByteArray>;
using Progress = manikinlog::ManikinLogPlayer::Progress;

namespace {

const QDir dataDir(TEST_DATA_DIR);
const QStringList names{"CPREvents.xml", "CPRWaves.xml", "COMP.WV", "VENT.WV", "CPRGuidelines.xml"};

// What the session logs about its archive, and every warning.
QStringList logged;

void takeLogLine(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || text.startsWith("No CPR"))
        logged.append(QString("%1: %2").arg(context.category, text));
}

QByteArray contentOf(const QString &path)
{
    QFile file(dataDir.filePath(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList lines(const QByteArray &text)
{
    return QString::fromUtf8(text).split('\n', Qt::SkipEmptyParts);
}

bool play(CPRData &session, const QString &name, const Progress &progress = {})
{
    QFile file(dataDir.filePath(name));
    manikinlog::ManikinLogReader reader(&file, name);
    manikinlog::ManikinLogPlayer player(&session);
    return file.open(QIODevice::ReadOnly) && player.play(reader, progress);
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

/// Keeps members in memory. The one named in `refused` cannot be written: it is not opened or,
/// when `isFull`, takes no byte.
class MemoryHandler final : public CPRFileHandler {
public:
    explicit MemoryHandler(const Members &content = {}) : members(content) { }

    QIODevice *openFileForReading(const QString &name) override
    {
        return members.contains(name) ? open(name, QIODevice::ReadOnly) : nullptr;
    }
    QIODevice *openFileForWriting(const QString &name) override
    {
        opened.append(name);
        if (name == refused)
            return isFull ? open(name, QIODevice::ReadOnly) : nullptr;
        return open(name, QIODevice::WriteOnly);
    }
    void releaseFile(QIODevice *device) override
    {
        ++(device ? released : releasedNulls);
        delete device;
    }
    QString filename() const override { return "memory"; }

    Members members;
    QStringList opened;
    QString refused;
    bool isFull = false;
    int given = 0;
    int released = 0;
    int releasedNulls = 0;

private:
    QIODevice *open(const QString &name, QIODevice::OpenMode mode)
    {
        auto *device = new QBuffer(&members[name]);
        device->open(mode);
        ++given;
        return device;
    }
};

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

/// The members that a copy of the session is saved to.
Members saved(const CPRData &session)
{
    MemoryHandler handler;
    CPRData copy(session);
    return copy.writeData(&handler) ? handler.members : Members();
}

/// Name, method and external attributes of each entry, read without the zip library.
QString zipDirectory(const QString &path)
{
    const QByteArray zip = contentOf(path);
    const auto u16 = [&](int at) { return qFromLittleEndian<quint16>(zip.constData() + at); };
    const auto u32 = [&](int at) { return qFromLittleEndian<quint32>(zip.constData() + at); };
    const int end = zip.lastIndexOf("PK\5\6");
    QString entries;
    for (int i = 0, at = int(u32(end + 16)); i < u16(end + 10); ++i) {
        const QByteArray name = zip.mid(at + 46, u16(at + 28));
        entries += QString::asprintf("%s %d %x,", name.constData(), u16(at + 10), u32(at + 38));
        at += 46 + u16(at + 28) + u16(at + 30) + u16(at + 32);
    }
    return entries;
}

} // namespace

class TestArchive : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    Members m_golden; // written by hand

private Q_SLOTS:
    void initTestCase()
    {
        for (const QString &name : names)
            m_golden.insert(name, contentOf("golden/CPR/" + name));
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
        for (const QString &name : names) {
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
        addRows({"member", "result", "opened"},
                {"events|0|false|1", "waves|1|true|5", "depth wave|2|true|5",
                 "volume wave|3|true|5", "guidelines|4|false|5", "full at events|0|false|1",
                 "full at waves|1|true|5", "full at guidelines|4|false|5"});
    }

    void writeFailures()
    {
        QFETCH(QString, member);
        QFETCH(QString, opened);
        CPRData session;
        QVERIFY(fillGoldenSession(session));
        MemoryHandler handler;
        handler.refused = names[member.toInt()];
        handler.isFull = QByteArray(QTest::currentDataTag()).startsWith("full");
        QTEST(QVariant(session.writeData(&handler)).toString(), "result");
        QCOMPARE(logged.takeLast(),
                 "Kelmar.CPRData.CPRData: Unable to write CPR Data, " + handler.refused);
        QCOMPARE(logged.size(), handler.isFull ? 1 : 0); // the buffer warns too
        QCOMPARE(handler.opened, names.mid(0, opened.toInt()));
        QCOMPARE(handler.released, handler.given);
        QCOMPARE(handler.releasedNulls, 0);
        for (const QString &name : names) {
            const bool isThere = name != handler.refused && handler.opened.contains(name);
            QCOMPARE(handler.members.value(name), isThere ? m_golden[name] : QByteArray());
        }
    }

    void readsGoldenArchive()
    {
        const QString path = dataDir.filePath("golden.zip"); // made by another program
        CPRData session;
        CPRFileHandlerZip handler;
        QVERIFY(handler.open(path, CPRFileHandlerZip::Read));
        QSignalSpy named(&session, &CPRData::filenameChanged);
        QSignalSpy learners(&session, &CPRData::learnersChanged);
        QVERIFY(session.readData(&handler));
        QCOMPARE(logged, QStringList());
        QCOMPARE(named, QList<QVariantList>({{path}}));
        QCOMPARE(learners.count(), 0);
        QCOMPARE(session.learners(), QStringList({"Ann", "Bob Jörg"}));
        const CPREvents &events = *session.cprEvents();
        QCOMPARE(describe(events.events()), lines(contentOf("golden/loaded-events.txt")));
        QCOMPARE(numbersOf(events.cprSessionStatistics(), "msec ventHistogramRateBin_5"),
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
        // A member without a text to be replaced is missing. Texts are percent-encoded.
        // clang-format off
        addRows({"member", "from", "to", "log", "learners", "figures"},
                {"no waves|1|||No CPR Data, CPRWaves.xml||1 0 0 0 7 100",
                 "no depth wave|2||||<Ann><Bob Jörg>|13 0 6 0 0 110",
                 "no volume wave|3||||<Ann><Bob Jörg>|13 6 0 1 120 110",
                 "no events|0|||Unable to read CPR Data, CPREvents.xml||1 6 6 1 120 110",
                 "no guidelines|4|||Unable to read CPR Data, CPRGuidelines.xml|<Ann><Bob Jörg>|13 6 6 1 120 100",
                 "empty depth name|1|COMP.WV||Unable to read CPR Data, Compression wave|<Ann><Bob Jörg>|13 0 6 0 0 110",
                 "empty volume name|1|VENT.WV||Unable to read CPR Data, Ventilation wave|<Ann><Bob Jörg>|13 6 0 1 120 110",
                 "12000 ms, other name|1|COMP.WV|600.WV||<Ann><Bob Jörg>|13 600 6 12 12000 110",
                 "12001 ms|1|COMP.WV\"/>|1091.WV\"/><scale x=\"\"/><externalFile sampleRate=\"90\"/>||<Ann><Bob Jörg>|13 1091 6 13 12001 110",
                 "odd byte at the end|2|%FA|%FA%05%05||<Ann><Bob Jörg>|13 7 6 1 140 110",
                 "no students|0|<param type=\"students\"|<param type=\"x\"||<>|13 6 6 1 120 110",
                 "no name|0|Ann,Bob Jörg|||<>|13 6 6 1 120 110",
                 "empty names are kept|0|Ann,Bob Jörg|,Ann,,B b,||<><Ann><><B b><>|13 6 6 1 120 110",
                 "name like a number|0|Ann,Bob Jörg|007||<7>|13 6 6 1 120 110"});
        // clang-format on
    }

    void readRules()
    {
        QFETCH(QString, member);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, log);
        MemoryHandler handler(m_golden);
        handler.members.insert("600.WV", QByteArray(2 * 600, '\1'));
        handler.members.insert("1091.WV", QByteArray(2 * 1091, '\1')); // 11 ms each in that row
        QByteArray &content = handler.members[names[member.toInt()]];
        const QByteArray old = QByteArray::fromPercentEncoding(from.toUtf8());
        QVERIFY(content.contains(old));
        content.replace(old, QByteArray::fromPercentEncoding(to.toUtf8()));
        if (from.isEmpty())
            handler.members.remove(names[member.toInt()]);
        CPRData session;
        session.setSessionTime(7);
        QSignalSpy named(&session, &CPRData::filenameChanged);
        QCOMPARE(session.readData(&handler), log.isEmpty());
        QCOMPARE(logged.join('\n'), log.isEmpty() ? log : "Kelmar.CPRData.CPRData: " + log);
        QCOMPARE(named.count(), 1);
        QCOMPARE(handler.released, handler.given);
        const bool isWaveMissing = from.isEmpty() && (member == "2" || member == "3");
        QCOMPARE(handler.releasedNulls, isWaveMissing ? 1 : 0);
        QString learners;
        for (const QString &name : session.learners())
            learners += '<' + name + '>';
        QTEST(learners, "learners");
        const CPREvents &events = *session.cprEvents();
        QStringList figures;
        for (int figure :
             {int(events.events().size()), session.compressionData()->count(),
              session.ventilationData()->count(), intOf(events.sessionInfo(), E::totalTime),
              events.sessionTime(), session.cprGuidelines()->ventilationDetectVolume()})
            figures.append(QString::number(figure));
        QTEST(figures.join(' '), "figures");
    }

    void descriptionsAndOtherDocuments()
    {
        // Without descriptions the waves have their usual names.
        MemoryHandler handler(m_golden);
        handler.members[names[1]] = "<waveFormList/>";
        CPRData plain;
        QVERIFY(plain.readData(&handler));
        QCOMPARE(plain.compressionData()->count(), 6);
        // A document in another encoding costs itself alone.
        handler.members[names[1]] = "<?xml version='1.0' encoding='ISO-8859-1'?><waveFormList/>";
        CPRData foreign;
        QVERIFY(!foreign.readData(&handler));
        QCOMPARE(logged.size(), 1);
        QCOMPARE(foreign.cprEvents()->events().size(), 13);
        // One that cannot be read leaves nothing of the session before.
        handler.members[names[0]] = "";
        foreign.assignLearner("Old");
        QVERIFY(!foreign.readData(&handler));
        QCOMPARE(foreign.cprEvents()->events().size(), 1);
        // Waves that were loaded under other names are stored and named as usual.
        handler.members = m_golden;
        handler.members["A.WV"] = m_golden[names[2]];
        handler.members[names[1]].replace("COMP.WV", "A.WV");
        CPRData renamed;
        QVERIFY(renamed.readData(&handler));
        QCOMPARE(saved(renamed), m_golden);
    }

    void readsEventList_data()
    {
        QTest::addColumn<QString>("path");
        for (const QString &name : QDir(dataDir.filePath("eventlists")).entryList({"*.xml"}))
            QTest::newRow(qPrintable(name)) << "eventlists/" + name;
    }

    // What each list is read to stands beside it: the warnings, then the events but the first.
    void readsEventList()
    {
        QFETCH(QString, path);
        CPRData session;
        CPREvents &list = *session.cprEvents();
        session.addUserEvent("of the list before");
        QXmlStreamReader reader(contentOf(path));
        list.read(&reader);
        logged.replaceInStrings("Kelmar.CPRData.CPREvents: Skipping element at", "skipped");
        QCOMPARE(list.at(0), list.cprSessionInfo());
        QCOMPARE(logged + describe(list.events().mid(1)),
                 lines(contentOf(path.replace(".xml", ".txt"))));
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
        for (const QString &name : {names[0], names[1], names[4]}) {
            const int step = 1 + m_golden[name].size() / 150;
            for (int size = 0; size < m_golden[name].size(); size += step) {
                MemoryHandler handler(m_golden);
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
        MemoryHandler first(saved(session));

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

    void survivesCorruptZip()
    {
        const QByteArray zip = contentOf("golden.zip");
        const auto load = [this](const QByteArray &content) {
            QFile file(m_dir.filePath("corrupt.zip"));
            CPRFileHandlerZip handler;
            CPRData session;
            if (!file.open(QIODevice::WriteOnly) || file.write(content) < 0 || !file.flush())
                return true;
            return handler.open(file.fileName(), CPRFileHandlerZip::Read)
                && session.readData(&handler);
        };
        QVERIFY(load(zip));
        QVERIFY(!load("no zip at all"));
        const int endRecord = zip.lastIndexOf("PK\5\6");
        for (int size = 0; size < endRecord + 4; size += size < endRecord - 40 ? 37 : 1)
            QVERIFY2(!load(zip.left(size)), qPrintable(QString::number(size)));
        for (int size = endRecord + 4; size < zip.size(); ++size)
            load(zip.left(size)); // a cut end record may still lead to the members
        for (int at = 0; at < zip.size(); at += 11)
            load(QByteArray(zip).replace(at, 1, QByteArray(1, char(zip[at] ^ 0x55))));
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
        addRows({"variant"},
                {"12|int 12", "-3|int -3", "2147483648|float 2147483648", "12.5|float 12.5",
                 "1e3|float 1000", "|QString ", "abc|QString abc", "0x10|QString 0x10",
                 "12 mm|QString 12 mm", "1,5|QString 1,5"});
    }

    void variantFromString()
    {
        const QVariant variant = CPRDataBase::variantFromString(QTest::currentDataTag());
        QTEST(QString(variant.typeName()) + ' ' + variant.toString(), "variant");
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
