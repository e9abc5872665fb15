// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRWaveformInfo.h"
#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/ManikinLogWriter.h"
#include "support/EventValues.h"
#include "support/Messages.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include <QBuffer>
#include <QSignalSpy>

#include <limits>

using namespace testsupport;
using namespace manikinlog;
using E = CPREventBase;
using Result = ManikinLogReader::Result;
using Numbers = QVector<qint64>;

namespace {

const QString recording = "two-rescuers.cprlog";

/// Takes and gives so many bytes and then fails.
class BreakingDevice : public QBuffer {
public:
    explicit BreakingDevice(qint64 good) : m_good(good) { setErrorString("worn out"); }

private:
    qint64 readData(char *data, qint64 size) override
    {
        return pos() < m_good ? QBuffer::readData(data, qMin(size, m_good - pos())) : -1;
    }
    qint64 writeData(const char *data, qint64 size) override
    {
        return pos() < m_good ? QBuffer::writeData(data, qMin(size, m_good - pos())) : -1;
    }

    qint64 m_good;
};

QDateTime utc(const char *text)
{
    return QDateTime::fromString(text, Qt::ISODateWithMs);
}

/// The lines that are no comment.
QStringList linesOf(const char *name)
{
    const QByteArray text = bytesOf(TEST_DATA_DIR "/" + QString(name));
    const QStringList lines = QString::fromUtf8(text).split('\n', Qt::SkipEmptyParts);
    return lines.mid(lines.first().startsWith('#') ? 1 : 0);
}

/// Number and sum of the samples, and those at the indices.
template <typename Wave> Numbers figures(const Wave *wave, std::initializer_list<int> indices)
{
    Numbers values{wave->count(), 0};
    for (int i = 0; i < wave->count(); ++i)
        values[1] += wave->at(i);
    for (int index : indices)
        values.append(wave->at(index));
    return values;
}

/// Kind and times, then name and value of the properties and parameters; depths to hundredths.
QString describe(const CPREventBase *event)
{
    QString text =
        QString::asprintf("%s %d-%d", event->typeAsString(), event->msecs(), event->eventEndTime());
    const QMetaObject &meta = *event->metaObject();
    for (int i = CPREventBase::staticMetaObject.propertyCount(); i < meta.propertyCount(); ++i) {
        const char *name = meta.property(i).name();
        text += QString(" %1 %2").arg(name).arg(numberOf(event, name));
    }
    for (const QString &key : event->params() ? event->params()->keys() : QStringList())
        text += QString(" %1 %2").arg(key, event->params()->value(key).toString());
    return text;
}

} // namespace

Q_DECLARE_METATYPE(Record)

class TestManikinLog : public QObject {
    Q_OBJECT

    CPRData m_session; // the recording of two rescuers

private Q_SLOTS:
    void initTestCase() { QVERIFY(play(m_session, recording)); }

    void readerErrors_data()
    {
        QTest::addColumn<QByteArray>("log");
        QTest::addColumn<QString>("error");
        for (const QString &line : linesOf("log-errors.txt")) {
            const QByteArray log = line.section('\t', 0, 0).toUtf8();
            QTest::newRow(log) << QByteArray::fromPercentEncoding(log)
                               << "log:" + line.section('\t', 1);
        }
    }

    void readerErrors()
    {
        QFETCH(QByteArray, log);
        QBuffer device(&log);
        device.open(QIODevice::ReadOnly);
        ManikinLogReader reader(&device, "log");
        Record record;
        while (reader.read(record) == Result::Record)
            record.msecs = -7;
        QTEST(reader.errorString(), "error");
        QCOMPARE(reader.read(record), Result::Error);
        QVERIFY(record.msecs == 0 || record.msecs == -7); // an error leaves it alone
        QCOMPARE(QString::number(reader.line()), reader.errorString().section(':', 1, 1));
    }

    void readsBackWhatWasWritten()
    {
        const int least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
        const QList<Record> records{{0, Message{4294967295U, -1, bytes({0, 0xFF, 0x10})}},
                                    {0, Message{1, 0, {}}},
                                    {5, WaveHeader{-7}},
                                    {5, WaveSample{255, least, most}},
                                    {6, State{CPRData::CPR_UNINITIALIZED}},
                                    {7, Start{utc("2026-01-31T09:00:00Z")}},
                                    {7, Start{utc("2026-01-31T09:00:00.250Z")}},
                                    {8, ManikinName{" Manikin, \t1"}},
                                    {9, Remark{-1, " 7  Hände "}},
                                    {9, RemarkRemoval{-1, " 7  Hände "}},
                                    {9, Stream{"m.1", "A_b-", QString(64, 'x')}},
                                    {9, Batch{4294967295U}},
                                    {9000000000, Learner{" Ann,  Jörg "}}};
        const QByteArray text = "cprlog 1\n0 msg 4294967295 -1 00ff10\n0 msg 1 0\n5 header -7\n"
                                "5 wave 255 -2147483648 2147483647\n6 state CPR_UNINITIALIZED\n"
                                "7 start 2026-01-31T09:00:00Z\n7 start 2026-01-31T09:00:00.250Z\n"
                                "8 manikin  Manikin, \t1\n9 remark -1  7  Hände \n"
                                "9 unremark -1  7  Hände \n9 stream m.1 A_b- "
            + QByteArray(64, 'x') + "\n9 batch 4294967295\n9000000000 learner  Ann,  Jörg \n";
        QBuffer first, second;
        first.open(QIODevice::ReadWrite);
        second.open(QIODevice::ReadWrite);
        ManikinLogWriter writer(&first);
        QCOMPARE(first.data(), QByteArray("cprlog 1\n"));
        for (const Record &record : records)
            QVERIFY(writer.write(record));
        QCOMPARE(first.data(), text);
        first.seek(0);
        ManikinLogReader reader(&first, "log");
        ManikinLogWriter copy(&second);
        Record record;
        while (reader.read(record) == Result::Record)
            QVERIFY(copy.write(record));
        QCOMPARE(reader.read(record), Result::End);
        QCOMPARE(second.data(), text);
    }

    void refusedRecords_data()
    {
        const auto learner = [](const QString &name) { return Record{8, Learner{name}}; };
        QTest::addColumn<Record>("record");
        QTest::newRow("the time 6 ms lies before 7 ms") << Record{6, WaveHeader{1}};
        QTest::newRow("the time -1 ms lies before 7 ms") << Record{-1, WaveHeader{1}};
        QTest::newRow("9 is no session state") << Record{8, State{CPRData::CprState(9)}};
        QTest::newRow("the learner's name is empty") << learner("");
        QTest::newRow("the learner's name contains a line break") << learner("a\nb");
        QTest::newRow("the learner's name contains a line break ") << learner("a\r");
        QTest::newRow("the learner's name cannot be written as UTF-8") << learner(QChar(0xD800));
        QTest::newRow("the learner's name cannot be written as UTF-8 ") << learner(QChar(0xFEFF));
        QTest::newRow("the start has no time that can be written") << Record{8, Start{}};
        QTest::newRow("the manikin's name is empty") << Record{8, ManikinName{""}};
        QTest::newRow("the remark contains a line break") << Record{8, Remark{0, "a\nb"}};
        QTest::newRow("the remark is empty") << Record{8, RemarkRemoval{0, ""}};
        QTest::newRow("\"..\" is no id") << Record{8, Stream{"m", "s", ".."}};
        QTest::newRow("the record needs a line of more than 65536 bytes")
            << Record{8, Message{1, 0, QByteArray(32764, 'x')}};
    }

    void refusedRecords()
    {
        QFETCH(Record, record);
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        ManikinLogWriter writer(&device);
        QVERIFY(writer.write({7, WaveHeader{1}}));
        QVERIFY(!writer.write(record));
        QCOMPARE(writer.errorString(), QString(QTest::currentDataTag()).trimmed());
        QVERIFY(writer.write({7, WaveHeader{2}}));
        QCOMPARE(device.data(), QByteArray("cprlog 1\n7 header 1\n7 header 2\n"));
    }

    void longestLine()
    {
        QBuffer device;
        device.open(QIODevice::ReadWrite);
        ManikinLogWriter writer(&device);
        const QByteArray content(32763, 'x'); // with "0 msg 1 0 " 65536 bytes
        QVERIFY(writer.write({0, Message{1, 0, content}}));
        device.write("0 learner " + QByteArray(65527, 'y') + '\n'); // a byte too long
        device.seek(0);
        ManikinLogReader reader(&device, "log");
        Record record;
        QCOMPARE(reader.read(record), Result::Record);
        QCOMPARE(std::get<Message>(record.entry).content, content);
        QCOMPARE(reader.read(record), Result::Error);
        QCOMPARE(reader.errorString(),
                 "log:3: expected a line of at most 65536 bytes, found "
                 "\"0 learner yyyyyyyyyyyyyyyyyyyyyyyyyyyyyy...\"");
    }

    void brokenDevices()
    {
        BreakingDevice device(25);
        device.open(QIODevice::ReadWrite | QIODevice::Unbuffered);
        ManikinLogWriter writer(&device);
        QVERIFY(writer.write({1, WaveHeader{1}}));
        QVERIFY(!writer.write({2, WaveHeader{2}})); // of 11 bytes 5 fit
        QVERIFY(!writer.errorString().isEmpty());
        QVERIFY(!writer.write({3, WaveHeader{3}}));
        QCOMPARE(device.data(), QByteArray("cprlog 1\n1 header 1\n2 hea"));
        device.seek(0);
        ManikinLogReader reader(&device, "log");
        CPRData session;
        int played = 0;
        QVERIFY(!ManikinLogPlayer(&session).play(reader, [&played](qint64) { ++played; }));
        QCOMPARE(played, 1);
        QVERIFY(reader.errorString().startsWith("log:3: cannot be read: "));
    }

    void nullArguments()
    {
        ManikinLogReader reader(nullptr, "log");
        Record record;
        QCOMPARE(reader.read(record), Result::Error);
        QCOMPARE(reader.errorString(), QString("log:1: cannot be read: no device"));
        QVERIFY(!ManikinLogWriter(nullptr).write(record));
        ManikinLogPlayer player(nullptr);
        QVERIFY(!player.play(record));
        player.setJournal(nullptr);
        player.finish();
    }

    void playsEvents()
    {
        const CPREvents &events = *m_session.cprEvents();
        QCOMPARE(events.events().size(), 187);
        QVector<int> counts;
        for (uint tag = 1; tag <= E::LastTag; tag *= 2)
            counts.append(events.count(tag));
        QCOMPARE(counts, QVector<int>({162, 8, 5, 7, 2, 6, 3, 10}));
        QCOMPARE(events.at(0), events.cprSessionInfo());
        QCOMPARE(events.at(2), events.cprSessionStatistics());
        QCOMPARE(events.at(186), events.cprSessionScore());
        QStringList actual;
        for (const CPREventBase *event : events.events()) {
            if (!QByteArray(event->typeAsString()).startsWith("CprSession"))
                actual.append(describe(event));
        }
        QStringList expected = linesOf("two-rescuers-events.txt");
        expected.sort();
        actual.sort();
        QCOMPARE(actual, expected);
    }

    void playsResults()
    {
        const CPREvents &events = *m_session.cprEvents();
        const QVariantList sets = m_session.cprGuidelinesList();
        QCOMPARE(sets.size(), 2);
        const QMap<QString, QObject *> objects{
            {"info", events.cprSessionInfo()},
            {"statistics", events.cprSessionStatistics()},
            {"score", events.cprSessionScore()},
            {"active", m_session.cprGuidelines()},
            {"inactive", sets[1].value<QObject *>()},
            {"depthwave", m_session.compressionData()->waveformInfo()},
            {"volumewave", m_session.ventilationData()->waveformInfo()}};
        for (const QString &line : linesOf("two-rescuers-figures.txt")) {
            const QByteArray name = line.section(' ', 1, 1).toLatin1();
            const QObject *object = objects[line.section(' ', 0, 0)];
            QVariant value = object->property(name);
            if (!value.isValid())
                value = object->property("params").value<QQmlPropertyMap *>()->value(name);
            QCOMPARE(QString(line.section(' ', 0, 1) + ' ' + value.toString()), line);
        }
        QCOMPARE(figures(m_session.compressionData(), {99, 104, 109, 120, 1341, 1353, 1354}),
                 Numbers({6000, 8848500, 0, 2550, 5100, 0, 900, 900, 4690}));
        QCOMPARE(figures(m_session.ventilationData(), {908, 928, 948, 958, 968, 4339}),
                 Numbers({6000, 120400, 0, 260, 520, 260, 0, 740}));
        QCOMPARE(m_session.expectedWaveSequence(), 6001);
        QCOMPARE(events.sessionTime(), 120000);
        QVERIFY(events.isScoresReady());
        QCOMPARE(m_session.learners(), QStringList({"Mira Holm", "Jörg Aldane"}));
        QVERIFY(m_session.cprGuidelines()->manikinGuidelineFlag());
        QVERIFY(!sets[1].value<CPRGuidelines *>()->manikinGuidelineFlag());
    }

    void playsTheTimesOfTheRecording()
    {
        QByteArray log = "cprlog 1\n5 start 2026-03-29T00:59:58.600Z\n5 state CPR_MANIKIN_INIT\n"
                         "6 manikin Manikin 1\n9 state CPR_INIT\n10 state CPR_START\n"
                         "1505 header 1\n";
        QBuffer device(&log);
        device.open(QIODevice::ReadOnly);
        ManikinLogReader reader(&device, "log");
        CPRData session;
        QVERIFY(ManikinLogPlayer(&session).play(reader));
        const CPREventBase &info = *session.cprEvents()->cprSessionInfo();
        const auto value = [&info](E::ParameterType type) {
            return info.parameterValue(type, {}).toString();
        };
        QCOMPARE(value(E::startTime), "2026-03-29T00:59:58Z");
        QCOMPARE(value(E::endTime), "2026-03-29T01:00:00Z"); // 1.5 s later
        QCOMPARE(value(E::manikinName), "Manikin 1");
    }

    void playsTheSameTwice()
    {
        CPRData session;
        const auto &comp = *session.compressionData();
        QSignalSpy rates(&comp, &CPRCompressionData::compressionRateChanged);
        QSignalSpy peaks(&comp, &CPRCompressionData::compressionPeakDepthChanged);
        QSignalSpy breaths(session.ventilationData(), &CPRVentilationData::ventilationRateChanged);
        Numbers records{0, 0}; // number and last time
        QVERIFY(play(session, recording, [&records](qint64 msecs) {
            records = {records[0] + 1, msecs};
        }));
        QCOMPARE(records, Numbers({18503, 123220}));
        QCOMPARE(Numbers({rates.count(), breaths.count(), peaks.count()}), Numbers({8, 3, 162}));
        for (CPRData *each : {&session, &m_session}) {
            each->cprEvents()->cprSessionInfo()->setParameter(E::startTime, "fixed");
            each->cprEvents()->cprSessionInfo()->setParameter(E::endTime, "fixed");
        }
        QVERIFY(saved(session)[memberNames[0]].size() > 50000);
        QCOMPARE(saved(session), saved(m_session));
    }
};

QTEST_GUILESS_MAIN(TestManikinLog)

#include "tst_manikinlog.moc"
