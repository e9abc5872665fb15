// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventAED.h"
#include "CPREventCPRD.h"
#include "CPREventSessionInfo.h"
#include "CPREventShock.h"
#include "CPREventUser.h"
#include "support/AnyInput.h"
#include "support/Damage.h"
#include "support/EventValues.h"
#include "support/Messages.h"
#include "support/Program.h"
#include "support/Rows.h"

#include <QDataStream>
#include <QLoggingCategory>
#include <QMetaMethod>
#include <QPointer>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <ctime>
#include <functional>

using namespace testsupport;
using E = CPREventBase;
using sessionfiles::MemoryFileHandler;

namespace {

// What takes so long does not come to an end: quadratic time would need minutes for these inputs.
constexpr double hangSeconds = 60;

enum Headers { Local = 1, Listed = 2, Both = 3 }; // before a member, and in the directory

QStringList warnings;

void keepWarning(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type == QtWarningMsg)
        warnings.append(text);
}

bool isWarnedOf(const QString &member)
{
    return !warnings.filter(member).isEmpty();
}

Members savedAgain(const Members &members)
{
    MemoryFileHandler files(members);
    CPRData session;
    return session.readData(&files) ? saved(session) : Members();
}

// Sorted: where events that overlap stand depends on which of them came first.
QStringList eventsOf(const Members &members, const QString &kinds)
{
    const QString list = QString(members[memberNames[0]]).remove("</eventList>").simplified();
    QStringList events = list.split(" <evt ").filter(QRegularExpression(kinds));
    events.sort();
    return events;
}

} // namespace

Q_DECLARE_METATYPE(Headers)
Q_DECLARE_METATYPE(std::function<int(int)>)
Q_DECLARE_METATYPE(std::function<void(CPRData &)>)

/// Damaged and hostile archives, failing devices, and hosts that do what they should not.
class TestFaults : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void signalled();

private:
    QTemporaryDir m_dir;
    const QString m_path = m_dir.filePath("session.zip");
    QByteArray m_golden; // an archive of another program
    QByteArray m_own; // the same session
    Members m_members; // of the golden archive
    Members m_whole; // what a session holds that is loaded from it
    Members m_empty; // what a new one holds
    double m_slowest = 0; // s

private Q_SLOTS:
    void initTestCase()
    {
        QLoggingCategory::setFilterRules("Kelmar.*.warning=true");
        qInstallMessageHandler(keepWarning);
        CPRData session;
        m_empty = contentOf(session);
        m_golden = bytesOf(goldenArchive);
        QVERIFY(loadFrom(goldenArchive, session));
        m_whole = contentOf(session);
        m_members = saved(session);
        CPRData copy(session); // lists the statistics and the score
        QVERIFY(saveTo(m_path, copy));
        m_own = bytesOf(m_path);
    }

    void init() { warnings.clear(); }

    void cutArchive()
    {
        QVERIFY(!load("no zip at all").isComplete);
        for (const QByteArray &zip : {m_golden, m_own}) {
            const int end = zip.lastIndexOf("PK\5\6"); // its record may be cut: it is found without
            for (int size = 0; size < zip.size(); ++size) {
                const Loaded loaded = load(zip.left(size));
                QVERIFY2(isSound(loaded) && (!loaded.isComplete || size >= end + 4),
                         qPrintable(QString::number(size)));
            }
        }
    }

    void flippedBits()
    {
        for (const QByteArray &zip : {m_golden, m_own}) {
            const QVector<ZipEntry> entries = directoryOf(zip);
            int reported = 0;
            int unused = 0;
            for (int flip = 0; flip < zip.size() * qMin(8, seeds(1)); flip += slowdown) {
                const int at = flip % zip.size();
                const int bit = (at + flip / zip.size()) % 8;
                const Loaded loaded = load(withFlippedBit(zip, at, bit));
                bool isRight = isSound(loaded);
                for (const ZipEntry &entry : entries) {
                    if (at < entry.payload || at >= entry.payloadEnd)
                        continue;
                    // A deflated member has bits that mean nothing, such as those behind its end.
                    Members expected = m_whole;
                    if (!loaded.isComplete)
                        expected[entry.name] = m_empty[entry.name];
                    isRight &= loaded.content == expected;
                    isRight &= loaded.isComplete || isWarnedOf(entry.name);
                    ++(loaded.isComplete ? unused : reported);
                }
                QVERIFY2(isRight, qPrintable(QString("byte %1, bit %2").arg(at).arg(bit)));
            }
            QVERIFY(unused < reported / 10);
        }
    }

    void falsifiedHeaders_data()
    {
        const auto row = columns<Headers, int, int, qint64, bool>("headers", "field", "width",
                                                                  "value", "isChange");
        const auto set = [&row](const char *name, Headers headers, int field, int width,
                                qint64 value) { row(name, headers, field, width, value, false); };
        const auto shift = [&row](const char *name, Headers headers, int field, int value) {
            row(name, headers, field, 4, value, true);
        };
        constexpr qint64 half = 1LL << 31;
        constexpr qint64 most = (1LL << 32) - 1;
        shift("size smaller", Both, sizeField, -1);
        shift("size larger", Both, sizeField, 1);
        set("size 0", Both, sizeField, 4, 0);
        set("size 2^31", Both, sizeField, 4, half);
        set("size 2^32-1", Both, sizeField, 4, most);
        shift("local size", Local, sizeField, 1);
        set("local size 2^32-1", Local, sizeField, 4, most);
        shift("listed size", Listed, sizeField, -1);
        set("listed size 2^31", Listed, sizeField, 4, half);
        shift("packed size smaller", Both, packedSizeField, -1);
        shift("packed size larger", Both, packedSizeField, 1);
        set("packed size 2^31", Both, packedSizeField, 4, half);
        set("packed size 2^32-1", Both, packedSizeField, 4, most);
        shift("local packed size", Local, packedSizeField, 1);
        shift("listed packed size", Listed, packedSizeField, 1);
        shift("checksum", Both, checksumField, 1);
        set("method", Both, methodField, 2, 14);
        set("local method", Local, methodField, 2, 12);
        set("encrypted", Both, flagsField, 2, 1);
        shift("elsewhere", Listed, headerField - 2, 1);
        set("behind the end", Listed, headerField - 2, 4, 99999999);
    }

    void falsifiedHeaders()
    {
        QFETCH(Headers, headers);
        QFETCH(int, field);
        QFETCH(int, width);
        QFETCH(qint64, value);
        QFETCH(bool, isChange);
        for (const ZipEntry &entry : directoryOf(m_golden)) {
            QByteArray damaged = m_golden;
            for (Headers header : {Local, Listed}) {
                const int at = field + (header == Local ? entry.header : entry.entry + 2);
                if ((headers & header) != 0)
                    patch(damaged, at, width,
                          quint32(value + (isChange ? numberAt(damaged, at) : 0)));
            }
            const Loaded loaded = load(damaged);
            QVERIFY(isSound(loaded));
            // A wave whose header is broken is none; the handler says so.
            const bool isNoWave = entry.name.endsWith(".WV") && isWarnedOf("Failed to open file:");
            QVERIFY(loaded.isComplete ? loaded.content == m_whole || isNoWave
                                      : isWarnedOf(entry.name) || entry.name == memberNames[1]);
        }
    }

    // A member with a broken header cannot be opened; the device of one with wrong data fails once
    // and is then at its end, so that whoever reads to the end gets there.
    void devicesOfDamagedMembers()
    {
        for (const ZipEntry &entry : directoryOf(m_golden)) {
            for (const bool isHeader : {true, false}) {
                QByteArray damaged = m_golden;
                patch(damaged, isHeader ? entry.header : entry.payload, 1, 0xFF);
                QVERIFY(store(m_path, damaged));
                warnings.clear();
                Zip zip;
                QVERIFY(zip.open(m_path, Zip::Read));
                QIODevice *device = zip.openFileForReading(entry.name);
                QCOMPARE(device == nullptr, isHeader);
                QCOMPARE(warnings.size(), isHeader ? 1 : 0);
                if (device) {
                    QDataStream stream(device);
                    qint16 sample = 0;
                    int reads = 0;
                    for (; !stream.atEnd(); ++reads)
                        stream >> sample;
                    QCOMPARE(reads, 1);
                    QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
                    QVERIFY(!device->errorString().isEmpty());
                }
                zip.releaseFile(device);
            }
        }
    }

    void renamedMembers()
    {
        const QVector<ZipEntry> entries = directoryOf(m_golden);
        for (const ZipEntry &entry : entries) {
            const Loaded loaded = load(renamed(entry, "#"));
            const bool isWave = entry.name.endsWith(".WV");
            QVERIFY(isSound(loaded));
            QCOMPARE(loaded.isComplete, isWave);
            QCOMPARE(loaded.content[entry.name], m_empty[entry.name]);
        }
        // Two of a name: the first one counts, whatever the second one holds.
        const Loaded loaded = load(renamed(entries[3], "COMP"));
        Members expected = m_whole;
        expected["VENT.WV"].clear();
        QVERIFY(loaded.isComplete && loaded.content == expected);
    }

    void bombs_data()
    {
        // What the member is made of: the head, a unit and how often it is repeated (# is its
        // number), the tail.
        const auto row = columns<QString, QByteArray, QByteArray, int, QByteArray>(
            "member", "head", "unit", "count", "tail");
        const QString events = "CPREvents.xml";
        const QString waves = "CPRWaves.xml";
        // clang-format off
        row("300 MB of blanks", events, "", " ", 300000000, "<eventList/>");
        row("250 MB of blanks", events, "", " ", 250000000, "<eventList/>");
        row("250 MB in guidelines", "CPRGuidelines.xml", "", " ", 250000000, "");
        row("attributes", events, "<eventList><evt type=\"Event\" msecs=\"1\"", " a#=\"\"", 80000, "/></eventList>");
        row("nested elements", events, "<eventList>", "<evt>", 100000, "");
        row("nested in waves", waves, "", "<waveForm>", 100000, "");
        row("long text", events, "<eventList>", "x", 1100000, "</eventList>");
        row("long value", events, "<eventList><evt type=\"", "x", 1100000, "\"/></eventList>");
        row("long comment", events, "<!--", "x", 1100000, "--><eventList/>");
        row("long section", events, "<eventList><![CDATA[", "x", 1100000, "]]></eventList>");
        row("many events", events, "<eventList>", "<evt type=\"CprCompEvent\" msecs=\"#\"/>", 600000, "</eventList>");
        row("many parameters", events, "<eventList>", "<evt type=\"CprAedEvent\" msecs=\"#\"><param type=\"aedType\" value=\"1\"/></evt>", 600000, "</eventList>");
        row("many elements", waves, "<waveFormList>", "<b/>", 50000000, "</waveFormList>");
        row("entities", events, "<!DOCTYPE a [<!ENTITY a1 \"aaaa\">", "<!ENTITY b# \"&a1;&a1;\">", 1000, "]><eventList>&b9;</eventList>");
        row("external entity", events, "", "", 0, "<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><eventList/>");
        row("UTF-16", events, "", "", 0, bytes({0xFF, 0xFE, '<', 0, 'a', 0, '/', 0, '>', 0}));
        row("UTF-16 declared", events, "", "", 0, "<?xml version='1.0' encoding='UTF-16'?><eventList/>");
        row("Latin", events, "", "", 0, "<?xml version='1.0' encoding='ISO-8859-1'?><eventList/>");
        row("no XML", events, "", "\xFF", 1000000, "");
        row("wave of 25 h", "COMP.WV", "", "\x01", 18000000, "");
        row("wave of 240 MB", "VENT.WV", "", "\x01", 240000000, "");
        row("wave of 300 MB", "COMP.WV", "", "\x01", 300000000, "");
        // clang-format on
    }

    void bombs()
    {
        QFETCH(QString, member);
        QFETCH(QByteArray, head);
        QFETCH(QByteArray, unit);
        QFETCH(int, count);
        QFETCH(QByteArray, tail);
        Zip zip;
        QVERIFY(zip.open(m_path, Zip::Add));
        QIODevice *device = zip.openFileForWriting(member);
        QVERIFY(device && device->write(head) >= 0);
        const int atOnce = unit.contains('#') ? 1 : 100000;
        for (int i = 0; i < count; i += atOnce) {
            const QByteArray one = QByteArray(unit).replace('#', QByteArray::number(i));
            QVERIFY(device->write(one.repeated(qMin(atOnce, count - i))) > 0);
        }
        device->write(tail);
        zip.releaseFile(device);
        QVERIFY(zip.close());

        enum { Refused, Believed, NotNamed };
        const Ended ended = runInChild([&] {
            CPRData session;
            const bool isComplete = loadFrom(m_path, session);
            return isComplete ? Believed : isWarnedOf(member) ? Refused : NotNamed;
        });
        QCOMPARE(ended.exitCode, int(Refused));
        QVERIFY2(ended.cpuSeconds < hangSeconds, qPrintable(QString::number(ended.cpuSeconds)));
        QVERIFY2(ended.megabytes < 256 * slowdown, qPrintable(QString::number(ended.megabytes)));
    }

    void failingDevices()
    {
        MemoryFileHandler golden(m_members);
        CPRData session;
        QVERIFY(session.readData(&golden));
        session.compressionData()->fill(70000); // several writes
        MemoryFileHandler whole;
        QVERIFY(session.writeData(&whole));
        const Members stored = whole.members;
        for (int call = 1, isOver = 0; !isOver; ++call) {
            FaultyFiles files;
            files.untilFailure = call;
            const bool isStored = session.writeData(&files);
            isOver = files.failed.isEmpty();
            QCOMPARE(isStored, files.failed != memberNames[0] && files.failed != memberNames[4]);
            QCOMPARE(isWarnedOf(files.failed), !isOver);
            warnings.clear();
            for (const QString &name :
                 memberNames.mid(0, isStored ? 5 : memberNames.indexOf(files.failed)))
                QVERIFY(files.members[name] == stored[name] || name == files.failed);
        }
        CPRData again;
        QVERIFY(again.readData(&whole));
        const Members content = contentOf(again);
        for (int call = 1, isOver = 0; !isOver; ++call) {
            FaultyFiles files(stored);
            files.untilFailure = call;
            CPRData loaded;
            const bool isComplete = loaded.readData(&files);
            isOver = files.failed.isEmpty();
            const Members found = contentOf(loaded);
            // At its end a device may fail: all was there.
            QVERIFY(isComplete ? found == content : isWarnedOf(files.failed));
            warnings.clear();
            for (const QString &name : memberNames)
                QVERIFY(found[name] == content[name] || name == files.failed);
        }
    }

    // As many events as an archive may hold, with times as nobody would send them. If their number
    // told on the time for each, this would take longer than a test may.
    void endsInTime_data()
    {
        const auto row = columns<std::function<int(int)>, int>("start", "end");
        constexpr int day = 24 * 60 * 60 * 1000;
        row(
            "descending", [](int i) { return day - i; }, 0);
        row(
            "from both ends", [](int i) { return i % 2 == 0 ? i : day - i; }, 0);
        row(
            "without an end", [](int i) { return i; }, std::numeric_limits<int>::max());
        row(
            "anywhere", [](int i) { return int((i * 7919LL) % day); }, 0);
    }

    void endsInTime()
    {
        using Start = std::function<int(int)>;
        QFETCH(Start, start);
        QFETCH(int, end);
        CPRData session;
        CPREvents &events = *session.cprEvents();
        for (int i = 1; i < 518400; ++i) {
            auto *event = new E(E::CprPacketLossStart, start(i), &events);
            if (end != 0)
                event->setEventEndTime(end);
            events.addEvent(event, false);
        }
        session.initialize();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(events.findChildren<E *>().size(), 3);
        QCoreApplication::sendPostedEvents(); // only this makes the queue short again
    }

    // What a document or a manikin can repeat is not printed each time.
    void repeatedWarnings()
    {
        CPRData session;
        CPRWaveformInfo &wave = *session.compressionData()->waveformInfo();
        QXmlStreamReader events("<eventList>" + QByteArray("<evt/>").repeated(100000)
                                + "</eventList>");
        session.cprEvents()->read(&events);
        QCOMPARE(warnings.size(), 12);
        QCOMPARE(warnings.last(), "Skipped 100000 elements");
        QXmlStreamReader waves("<waveForm>" + QByteArray("<scale sampleRate='0'/>").repeated(1000)
                               + "</waveForm>");
        wave.read(&waves);
        QCOMPARE(warnings.size(), 12 + 11);
        session.setCprState(CPRData::CPR_START);
        for (int i = 1; i < 100; ++i)
            session.waveHeaderReceived(i * 10000000);
        QCOMPARE(warnings.size(), 12 + 11 + 11);
    }

    // A session goes on where an archive ends; who saves it is warned.
    void warnsOfWhatIsNotReadBack_data()
    {
        const auto row = columns<int, QString>("count", "name"); // of events, with a text or none
        row("all events", 518399, QString());
        row("an event too many", 518400, QString());
        row("all parameters", 100000, "a");
        row("a parameter too many", 100001, "a");
        row("a long text", 1, QString(1000000, 'a'));
        row("too long a text", 1, QString(1048577, 'a'));
        row("a text that becomes too long", 1, QString(300000, '<'));
    }

    void warnsOfWhatIsNotReadBack()
    {
        QFETCH(int, count);
        QFETCH(QString, name);
        CPRData session;
        CPREvents *events = session.cprEvents();
        for (int i = 0; i < count; ++i)
            events->addEvent(name.isNull() ? new E(E::CprPacketLossStart, i, events)
                                           : new CPREventUser(i, events, name),
                             false);
        MemoryFileHandler files;
        QVERIFY(session.writeData(&files));
        CPRData loaded;
        const bool isWarned = isWarnedOf("cannot be read back");
        QCOMPARE(loaded.readData(&files), !isWarned);
    }

    void randomSessions()
    {
        for (int seed = 1; seed <= seeds(1000 / slowdown); ++seed) {
            CPRData session;
            AnyInput input{quint32(seed)};
            for (int step = 0; step < 150; ++step)
                input.act(session);
            const Members first = saved(session);
            const Members second = savedAgain(first);
            const Members third = savedAgain(second);
            bool isSame = true;
            for (const QString &name : memberNames.mid(1))
                isSame &= second[name] == first[name] && third[name] == first[name];
            // The numbers in the summaries' texts come back as numbers: 0.0 as 0.
            const char *noSummary = "^type=\"(?!CprSession)";
            isSame &= eventsOf(second, noSummary) == eventsOf(first, noSummary);
            isSame &= eventsOf(third, "") == eventsOf(second, "");
            QVERIFY2(isSame && !third.isEmpty(), qPrintable(QString("seed %1").arg(seed)));
        }
    }

    void deletedInItsAnnouncement()
    {
        CPRData session;
        CPREvents &events = *session.cprEvents();
        int deleted = 0;
        const auto drop = [&](E *event) {
            if (!isStanding(event)) {
                delete event;
                ++deleted;
            }
        };
        connect(&events, &CPREvents::compressionEvent, drop);
        connect(&events, &CPREvents::ventilationEvent, drop);
        connect(&events, &CPREvents::inactivityCPREvent, drop);
        connect(&events, &CPREvents::cprGuiEventAdded, drop);
        connect(&events, &CPREvents::otherEventAdded, drop);
        AnyInput input(3);
        for (int step = 0; step < 2000; ++step)
            input.act(session);
        QVERIFY(deleted > 100);
        QVERIFY(std::all_of(events.events().begin(), events.events().end(), isStanding));
        deleted = 0;
        MemoryFileHandler files(m_members);
        QVERIFY(session.readData(&files));
        QCOMPARE(deleted, 12); // of the 13 events the session info stands
    }

    void destroyedInASignal()
    {
        int destroyed = 0;
        for (const QMetaObject *meta : {&CPRData::staticMetaObject, &CPREvents::staticMetaObject}) {
            for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
                if (meta->method(i).methodType() != QMetaMethod::Signal)
                    continue;
                QPointer<CPRData> session = new CPRData;
                QObject *sender = session;
                if (meta == &CPREvents::staticMetaObject)
                    sender = session->cprEvents();
                connect(sender, meta->method(i), session,
                        meta->method(meta->indexOfMethod("deleteLater()")));
                AnyInput input(5);
                for (int step = 0; step < 500 && session; ++step) {
                    input.act(*session);
                    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                    QCoreApplication::processEvents();
                }
                destroyed += session.isNull();
                delete session;
            }
        }
        QVERIFY(destroyed > 12);
    }

    void initializedInASignal()
    {
        int initialized = 0;
        using Find = QObject *(*)(const CPREvents &);
        const Find objects[] = {
            [](const CPREvents &events) -> QObject * { return const_cast<CPREvents *>(&events); },
            [](const CPREvents &events) -> QObject * { return events.sessionInfo(); },
            [](const CPREvents &events) -> QObject * { return events.sessionStatistics(); },
            [](const CPREvents &events) -> QObject * { return events.sessionScore(); }};
        for (const Find find : objects) {
            const QMetaObject *meta = find(*CPRData().cprEvents())->metaObject();
            for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
                if (meta->method(i).methodType() != QMetaMethod::Signal)
                    continue;
                CPRData session;
                const CPREvents &events = *session.cprEvents();
                const int before = initialized;
                connect(this, &TestFaults::signalled, &session, [&] {
                    if (initialized == before) { // its own signals come, too
                        ++initialized;
                        session.initialize();
                    }
                });
                AnyInput input(11);
                for (int step = 0; step < 500; ++step) {
                    if (initialized == before)
                        connect(find(events), meta->method(i), this,
                                QMetaMethod::fromSignal(&TestFaults::signalled),
                                Qt::UniqueConnection);
                    input.act(session);
                    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                }
                QCOMPARE(events.findChildren<CPREventSessionInfo *>().size(), 1);
            }
        }
        QVERIFY(initialized > 12);
    }

    void calledInEventsCleared_data()
    {
        const auto row = columns<std::function<void(CPRData &)>>("call");
        row("copy",
            [](CPRData &session) { QCOMPARE(CPRData(session).learners(), session.learners()); });
        row("message", [](CPRData &session) { send(session, 70, QByteArray(9, '\1')); });
        row("initialize", [](CPRData &session) { session.initialize(); });
        row("list", [](CPRData &session) { session.cprEvents()->initialize(); });
        row("protocol", [](CPRData &session) {
            session.cprEvents()->setCprProtocol(bls_2010::CommonDefs::CPR_TWO_RESCUER);
        });
        row("telemetry", [](CPRData &session) {
            QVariantMap map;
            session.cprEvents()->telemetryTrainingSessionScoreData(map);
            session.cprEvents()->telemetryTrainingSessionGuidelineData(map);
        });
        row("load", [](CPRData &session) {
            MemoryFileHandler files(saved(CPRData()));
            session.readData(&files);
        });
    }

    void calledInEventsCleared()
    {
        using Call = std::function<void(CPRData &)>;
        QFETCH(Call, call);
        CPRData session;
        CPREvents &events = *session.cprEvents();
        int calls = 0;
        connect(&events, &CPREvents::eventsCleared, this, [&] {
            if (++calls == 1)
                call(session);
        });
        session.setCprState(CPRData::CPR_MANIKIN_INIT);
        QVERIFY(calls > 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(events.events(), QList<E *>{events.cprSessionInfo()});
        QCOMPARE(events.findChildren<E *>().size(), 3);
        QCOMPARE(session.cprState(), CPRData::CPR_MANIKIN_INIT);
    }

    void standingEventsAndGuidelines()
    {
        CPRData other;
        CPRData session;
        CPREvents &events = *session.cprEvents();
        for (E *event :
             {events.cprSessionInfo(), events.cprSessionStatistics(), events.cprSessionScore()}) {
            other.cprEvents()->addEvent(event, true); // refused
            QVERIFY(!other.cprEvents()->events().contains(event) && event->parent() == &events);
            delete event; // replaced
        }
        session.assignLearner("Ann");
        QCOMPARE(textOf(events.cprSessionInfo(), E::students), "Ann");
        MemoryFileHandler files(m_members);
        QVERIFY(session.readData(&files));
        CPRGuidelines &guidelines = *session.cprGuidelines();
        const CPRGuidelines &same = guidelines;
        guidelines = same;
        guidelines.clone(same);
        QVERIFY(contentOf(session) == m_whole);
    }

    // Nothing that a host can pass may be null and do harm.
    void nullArguments()
    {
        CPRData session;
        CPREvents &events = *session.cprEvents();
        session.incomingGuidelines(nullptr);
        QVERIFY(!session.incomingMsg(nullptr) && !session.rplmsg_RPL_GUIDELINES(nullptr));
        QVERIFY(!session.writeData(nullptr) && !session.readData(nullptr));
        events.addEvent(nullptr, true);
        events.handleEvent(nullptr);
        events.emitEvent(nullptr);
        for (bool exists : {true, false}) {
            session.receivingData(true);
            events.finalizeIncomingEvent(exists, nullptr);
            QVERIFY(!session.receiving());
        }
        events.writeHeader(nullptr, {{E::eventId, "id"}}, ";");
        events.write(nullptr, {{E::eventId, "id"}}, ";");
        E::writeHeader(nullptr, {E::eventId, "id"}, ";");
        QVERIFY(!session.compressionData()->writeCompresseionWave(nullptr));
        QVERIFY(!session.ventilationData()->writeVentilationWave(nullptr));
        QVERIFY(session.compressionData()->readCompresseionWave(nullptr).isEmpty());
        QVERIFY(session.ventilationData()->readVentilationWave(nullptr).isEmpty());
        QVERIFY(!session.cprGuidelines()->incomingMsg(nullptr));
        QVERIFY(!session.compressionData()->rplmsg_RPL_COMP_RATE_UPDATE(nullptr)
                && !session.compressionData()->rplmsg_RPL_COMP_PEAK_EV(nullptr)
                && !session.compressionData()->rplmsg_RPL_WAVEINFO(nullptr)
                && !session.ventilationData()->rplmsg_RPL_WAVEINFO(nullptr)
                && !session.ventilationData()->rplmsg_RPL_VENT_RATE_UPDATE(nullptr));
        for (CPRDataBase *object : std::initializer_list<CPRDataBase *>{
                 session.compressionData(), session.ventilationData(), session.cprGuidelines(),
                 session.cprEvents(), session.compressionData()->waveformInfo()}) {
            QVERIFY(!object->incomingMsg(nullptr));
            object->write(nullptr);
            object->read(nullptr);
            object->writeAttribFromProperty(nullptr, "sessionTime");
            object->readAttribsToProperties(nullptr);
        }
        session.compressionData()->writeWaveformInfo(nullptr);
        session.ventilationData()->readWaveformInfo(nullptr);
        const QVector<E *> kinds{new CPREventCompression(0, nullptr, nullptr),
                                 new CPREventVentilation(0, nullptr),
                                 new CPREventInactivityCPR(0, nullptr),
                                 new CPREventAED(0, nullptr),
                                 new CPREventCPRD(0, nullptr),
                                 new CPREventShock(0, nullptr),
                                 new CPREventUser(0, nullptr, "name"),
                                 new CPREventSessionInfo(0, nullptr),
                                 new CPREventSessionStatistics(0, nullptr),
                                 new CPREventSessionScore(0, nullptr)};
        for (E *event : kinds) {
            QVERIFY(!event->incomingMsg(nullptr));
            QVERIFY(!event->write(nullptr, {E::eventId, "id"}, ";"));
            event->write(nullptr);
            event->read(nullptr);
            event->writeParameters(nullptr);
            event->readParameters(nullptr);
            event->readParametersToProperties(nullptr);
            QVERIFY(!event->filterEvent(nullptr));
            QCOMPARE(int(event->mode()), 0);
            delete event->clone(nullptr);
        }
        // The handlers may be called themselves.
        const auto shock = qobject_cast<CPREventShock *>(kinds[5]);
        const auto info = qobject_cast<CPREventSessionInfo *>(kinds[7]);
        const auto statistics = qobject_cast<CPREventSessionStatistics *>(kinds[8]);
        QVERIFY(!shock->rplmsg_RPL_DEFIB_SHOCK_EVENT(nullptr)
                && !info->rplmsg_RPL_VERSIONINFO(nullptr) && !info->rplmsg_RPL_LIFETIMEINFO(nullptr)
                && !info->rplmsg_RPL_COMP_INACTIVITY_TIME(nullptr)
                && !info->rplmsg_RPL_CPRCARD_STATUS_EV(nullptr)
                && !info->rplmsg_RPL_MANIKIN_STIFFNESS_EV(nullptr)
                && !statistics->rplmsg_RPL_GL_INDEPENDENT_STATS(nullptr)
                && !statistics->rplmsg_RPL_GL_INDEPENDENT_BIN_STATS(nullptr)
                && !statistics->rplmsg_RPL_GL_DEPENDENT_STATS(nullptr));
        const auto compression = qobject_cast<CPREventCompression *>(kinds[0]);
        const auto ventilation = qobject_cast<CPREventVentilation *>(kinds[1]);
        QVERIFY(!compression->isCorrect(nullptr) && !compression->isCompMeanRateOk());
        QVERIFY(!ventilation->isCorrect(nullptr, true));
        qDeleteAll(kinds);
        delete CPREventAED::createAEDTypeEvent(E::AEDTypeVolterm, 0, nullptr);
        CPREvents alone(nullptr, nullptr);
        QVariantMap map;
        alone.telemetryTrainingSessionGuidelineData(map);
        QVERIFY(map.isEmpty());
    }

private:
    struct Loaded {
        bool isComplete;
        Members content;
    };

    static bool isStanding(const E *event)
    {
        const CPREvents &events = *event->events();
        return event == events.cprSessionInfo() || event == events.cprSessionStatistics()
            || event == events.cprSessionScore();
    }

    QByteArray renamed(const ZipEntry &entry, const QByteArray &name) const
    {
        QByteArray zip = m_golden;
        return zip.replace(entry.entry + entrySize + 4, name.size(), name)
            .replace(entry.header + headerSize + 4, name.size(), name);
    }

    Loaded load(const QByteArray &zip)
    {
        warnings.clear();
        if (!store(m_path, zip))
            qFatal("no place for an archive");
        const std::clock_t before = std::clock();
        CPRData session;
        const bool isComplete = loadFrom(m_path, session);
        m_slowest = qMax(m_slowest, double(std::clock() - before) / CLOCKS_PER_SEC);
        return {isComplete, contentOf(session)};
    }

    // In time, nothing is invented, and nothing lost silently but a wave that is not there.
    bool isSound(const Loaded &loaded) const
    {
        return m_slowest < hangSeconds
            && std::all_of(memberNames.begin(), memberNames.end(), [&](const QString &name) {
                   const QByteArray content = loaded.content[name];
                   return content == m_whole[name]
                       || (content == m_empty[name]
                           && (!loaded.isComplete || name.endsWith(".WV")));
               });
    }
};

QTEST_GUILESS_MAIN(TestFaults)

#include "tst_faults.moc"
