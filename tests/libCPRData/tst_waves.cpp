// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRWaveformInfo.h"
#include "support/Messages.h"
#include "support/Rows.h"

#include <QBuffer>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <limits>

using namespace testsupport;
using bls_2010::CommonDefs;

namespace {

constexpr int minInt = std::numeric_limits<int>::min();
constexpr int ownProperties = 2; // after objectName and sessionTime

/// Gives at most three bytes at once, so that samples are split.
class SlowDevice : public QBuffer {
    qint64 readData(char *data, qint64 size) override
    {
        return QBuffer::readData(data, qMin<qint64>(size, 3));
    }
};

template <typename Wave> QString samples(const Wave &wave)
{
    QStringList values;
    for (int i = 0; i < wave.count(); ++i)
        values.append(QString::number(wave.at(i)));
    return values.join(' ');
}

/// All values of a description in the order of its properties, then the sample period.
QString describe(const CPRWaveformInfo &info)
{
    QString text;
    for (int i = ownProperties; i < info.metaObject()->propertyCount(); ++i) {
        const QMetaProperty property = info.metaObject()->property(i);
        const QVariant value = property.read(&info);
        text += (property.isEnumType() ? QString::number(value.toInt()) : value.toString()) + ' ';
    }
    return text + QString::number(info.samplePeriod());
}

/// File, time, period, rate and unit of both waves.
QString sampling(const CPRData &session)
{
    QString text;
    for (const CPRWaveformInfo *info :
         {session.compressionData()->waveformInfo(), session.ventilationData()->waveformInfo()})
        text += info->fileName()
            + QString::asprintf(" %d %d %d %d ", info->msecs(), info->samplePeriod(),
                                info->sampleRate(), info->scaleUnits());
    return text.trimmed();
}

// Both waves under the same names, for what they have in common.
// clang-format off
using Comp = CPRCompressionData;
using Vent = CPRVentilationData;
void record(Comp &wave, int value, int index = -1) { wave.compressionWaveAppend(value, index); }
void record(Vent &wave, int value, int index = -1) { wave.setVentilationData(value, index); }
bool write(const Comp &wave, QIODevice *device) { return wave.writeCompresseionWave(device); }
bool write(const Vent &wave, QIODevice *device) { return wave.writeVentilationWave(device); }
void read(Comp &wave, QIODevice *device) { wave.readCompresseionWave(device); }
void read(Vent &wave, QIODevice *device) { wave.readVentilationWave(device); }
// clang-format on

} // namespace

class TestWaves : public QObject {
    Q_OBJECT

    CPRData m_owner;

    template <typename Wave> void checkRecording(Wave &wave, int index, const QString &expected)
    {
        for (int i = 1; i <= 5; ++i)
            record(wave, i);
        record(wave, 9, index);
        QCOMPARE(samples(wave), expected);
        for (int outside : {-1, wave.count(), wave.count() + 1, minInt})
            QCOMPARE(wave.at(outside), 0);
        wave.fill(0);
        wave.fill(-3);
        QCOMPARE(samples(wave), expected);
        wave.reset();
        QCOMPARE(wave.count(), 0);
    }

    template <typename Wave> void checkFiles(Wave &wave)
    {
        QBuffer file;
        file.open(QIODevice::ReadWrite);
        QVERIFY(write(wave, &file));
        QCOMPARE(file.size(), qint64(0));
        for (int value : {70000, -2, 32767, -32769})
            record(wave, value);
        QVERIFY(write(wave, &file));
        QCOMPARE(file.data(), bytes({0x70, 0x11, 0xFE, 0xFF, 0xFF, 0x7F, 0xFF, 0x7F}));
        file.write("\x05");
        file.seek(0);
        read(wave, &file); // appended, without the odd byte
        read(wave, nullptr);
        QCOMPARE(samples(wave), "70000 -2 32767 -32769 4464 -2 32767 32767");

        constexpr int count = 70001; // more than the library handles at once
        wave.reset();
        for (int i = 0; i < count; ++i)
            record(wave, i % 30011 - 15000);
        const QString expected = samples(wave);
        SlowDevice large;
        large.open(QIODevice::ReadWrite | QIODevice::Unbuffered);
        QVERIFY(write(wave, &large));
        QCOMPARE(large.size(), qint64(2) * count);
        QCOMPARE(large.data().mid(2 * 40000, 2), bytes({0x6D, 0xEC})); // 40000 - 30011 - 15000
        large.seek(0);
        wave.reset();
        read(wave, &large);
        QCOMPARE(samples(wave), expected);
    }

private Q_SLOTS:
    void descriptions()
    {
        QString comp = "0.009999999776482582 2 1.5 0 -60 0 COMP.WV 0 4 16 50 0 20";
        QString vent = "1 4 100 3000 -1000 0 VENT.WV 0 5 16 50 0 20";
        CPRData session;
        CPRWaveformInfo &compInfo = *session.compressionData()->waveformInfo();
        CPRWaveformInfo &ventInfo = *session.ventilationData()->waveformInfo();
        QCOMPARE(describe(CPRWaveformInfo(nullptr)), "0 2 0 0 0 0  0 0 0 0 0 0");
        QCOMPARE(describe(compInfo), comp);
        QCOMPARE(describe(ventInfo), vent);
        QString xml;
        QXmlStreamWriter writer(&xml);
        ventInfo.write(&writer);
        QCOMPARE(xml,
                 "<waveForm msecs=\"0\" type=\"vent\" bitsPerSample=\"16\" sampleRate=\"50\" "
                 "length=\"0\"><scale lsbValue=\"1\" scaleUnits=\"ml\" scaleUnitsPerMM=\"100\" "
                 "scaleMax=\"3000\" scaleMin=\"-1000\" offset=\"0\"/>"
                 "<externalFile fileName=\"VENT.WV\"/></waveForm>");
        for (int i = ownProperties; i < compInfo.metaObject()->propertyCount(); ++i) {
            compInfo.metaObject()->property(i).write(&compInfo, 1);
            ventInfo.metaObject()->property(i).write(&ventInfo, 1);
        }
        session.setCprState(CPRData::CPR_MANIKIN_INIT);
        QCOMPARE(describe(compInfo), comp.replace("-60 0", "-60 1")); // all but the offset
        QCOMPARE(describe(ventInfo), vent.replace("50 0", "50 1")); // all but the length
    }

    void settersCoalesce()
    {
        CPRWaveformInfo info(nullptr);
        QSignalSpy changes(&info, &CPRWaveformInfo::waveformInfoChanged);
        const QStringList values{"0.5",  "l",  "2.5",  "7", "-8", "9",
                                 "A.WV", "12", "vent", "8", "30", "99"};
        for (int turn = 0; turn < 2; ++turn) { // announced also when nothing changes
            for (int i = 0; i < values.size(); ++i) {
                const QMetaProperty property = info.metaObject()->property(i + ownProperties);
                for (int burst = 0; burst < 3; ++burst)
                    QVERIFY(property.write(&info, values[i]));
                QVERIFY2(changes.wait(), property.name());
            }
        }
        QCOMPARE(changes.count(), 24);
        QCOMPARE(describe(info), "0.5 3 2.5 7 -8 9 A.WV 12 5 8 30 99 33");
    }

    void samplingValues_data()
    {
        // Period and rate are 20 and 50 before.
        const auto row = columns<bool, int, int, int>("isRate", "value", "period", "rate");
        row("rate 30", true, 30, 33, 30);
        row("rate 1000", true, 1000, 1, 1000);
        row("period 30", false, 30, 30, 33);
        row("period 1000", false, 1000, 1000, 1);
        row("rate 0", true, 0, 20, 50);
        row("rate -5", true, -5, 20, 50);
        row("rate 1001", true, 1001, 20, 50);
        row("rate 2000", true, 2000, 20, 50);
        row("period 0", false, 0, 20, 50);
        row("period -5", false, -5, 20, 50);
        row("period 1001", false, 1001, 20, 50);
        row("period 2000", false, 2000, 20, 50);
    }

    void samplingValues()
    {
        QFETCH(bool, isRate);
        QFETCH(int, value);
        QFETCH(int, rate);
        CPRWaveformInfo info(nullptr);
        info.setSampleRate(50);
        if (rate == 50)
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression("^Sample (rate|period) refused:"));
        isRate ? info.setSampleRate(value) : info.setSamplePeriod(value);
        QTEST(info.samplePeriod(), "period");
        QCOMPARE(info.sampleRate(), rate);
    }

    void waveInfoMessage_data()
    {
        const auto row =
            columns<bool, int, int, QString>("usesAbsoluteDepth", "waveType", "period", "sampling");
        // clang-format off
        row("relative", false, CommonDefs::WAVE_RELATIVE_COMP_DEPTH, 40, "COMP.WV 42768 40 25 2 VENT.WV 0 20 50 4");
        row("absolute", true, CommonDefs::WAVE_ABSOLUTE_COMP_DEPTH, 40, "COMP.WV 42768 40 25 2 VENT.WV 0 20 50 4");
        row("volume", true, CommonDefs::WAVE_VENT_VOLUME, 40, "COMP.WV 0 20 50 2 VENT.WV 42768 40 25 4");
        row("relative, not in use", true, CommonDefs::WAVE_RELATIVE_COMP_DEPTH, 40, "COMP.WV 0 20 50 2 VENT.WV 0 20 50 4");
        row("absolute, not in use", false, CommonDefs::WAVE_ABSOLUTE_COMP_DEPTH, 40, "COMP.WV 0 20 50 2 VENT.WV 0 20 50 4");
        row("other", false, 10, 40, "COMP.WV 0 20 50 2 VENT.WV 0 20 50 4");
        row("longest", false, CommonDefs::WAVE_RELATIVE_COMP_DEPTH, 255, "COMP.WV 42768 255 3 2 VENT.WV 0 20 50 4");
        row("no period", false, CommonDefs::WAVE_RELATIVE_COMP_DEPTH, 0, "COMP.WV 0 20 50 2 VENT.WV 0 20 50 4");
        // clang-format on
    }

    void waveInfoMessage()
    {
        QFETCH(bool, usesAbsoluteDepth);
        QFETCH(int, waveType);
        QFETCH(int, period);
        const QByteArray content = bytes({0, waveType, period, 3, 4, 5, 6, 0x10, 0xA7});
        CPRData session;
        session.cprGuidelines()->setUseAbsoluteDepth(usesAbsoluteDepth);
        const bool isRefused = period == 0;
        if (isRefused)
            QTest::ignoreMessage(QtWarningMsg, "Sample period refused: 0 ms");
        const bool isTaken = send(session, 77, content);
        QTEST(sampling(session), "sampling");
        QCOMPARE(isTaken, isRefused || sampling(session).contains("42768"));
        QVERIFY(!send(session, 78, content));
    }

    void readsDescription_data()
    {
        const auto row = columns<QString>("sampling");
        row("<w/>", "COMP.WV 0 20 50 2 VENT.WV 0 20 50 4");
        row("<w><x/></w>", "COMP.WV 0 20 50 2 VENT.WV 0 20 50 4");
        row("<w><waveForm msecs=\"1\" x=\"3\"/><waveForm msecs=\"2\" sampleRate=\"25\"/></w>",
            "COMP.WV 1 20 50 2 VENT.WV 2 40 25 4");
        row("<w><waveForm><x><scale scaleUnits=\"l\"/><y/></x><externalFile "
            "fileName=\"A\"><z/></externalFile></waveForm><waveForm><scale "
            "scaleUnits=\"gram\"/></waveForm></w>",
            "A 0 20 50 3 VENT.WV 0 20 50 0");
        row("<w><waveForm><scale scaleUnits=\"l\">", "COMP.WV 0 20 50 3 VENT.WV 0 20 50 4");
    }

    void readsDescription()
    {
        CPRData session;
        QXmlStreamReader reader(QTest::currentDataTag());
        reader.readNextStartElement();
        session.compressionData()->readWaveformInfo(&reader);
        session.ventilationData()->readWaveformInfo(&reader);
        QTEST(sampling(session), "sampling");
    }

    void recording_data()
    {
        // A sample 9 with this index after the samples 1 to 5.
        const auto row = columns<int, QString>("index", "expected");
        row("0", 0, "9 9 9 9 9");
        row("2", 2, "1 2 9 9 9");
        row("4", 4, "1 2 3 4 9");
        row("5", 5, "1 2 3 4 5 9");
        row("6", 6, "1 2 3 4 5 9");
        row("1000", 1000, "1 2 3 4 5 9");
        row("-1", -1, "1 2 3 4 5 9");
    }

    void recording()
    {
        QFETCH(int, index);
        QFETCH(QString, expected);
        CPRData session;
        checkRecording(*session.compressionData(), index, expected);
        checkRecording(*session.ventilationData(), index, expected);
        // A gap is filled with the last depth, which a new session keeps, and with no volume.
        session.compressionData()->setAbsoluteCompressionData(33, 1);
        session.ventilationData()->setVentilationData(44, 1);
        session.reset();
        session.compressionData()->fill(2);
        session.ventilationData()->fill(3);
        QCOMPARE(samples(*session.compressionData()), "33 33");
        QCOMPARE(samples(*session.ventilationData()), "0 0 0");
        QCOMPARE(session.compressionData()->sessionTimeFromData(), 40);
    }

    void depthKind()
    {
        CPRData session;
        CPRCompressionData &comp = *session.compressionData();
        for (int depth : {10, 20}) {
            session.cprGuidelines()->setUseAbsoluteDepth(depth == 20);
            comp.setAbsoluteCompressionData(depth + 1, -1);
            comp.setRelativeCompressionData(depth + 2, -1);
            comp.setAbsoluteCompressionData(depth + 3, -1);
            comp.fill(1); // the last of either kind
        }
        QCOMPARE(samples(comp), "12 13 21 23 23");
        QCOMPARE(comp.absoluteDepth() - comp.relativeDepth(), 1);
    }

    void cutOff_data()
    {
        // What is kept of 100 samples, one each 20 ms.
        const auto row = columns<int, int>("msecs", "kept");
        row("1000", 1000, 51);
        row("999", 999, 50);
        row("1019", 1019, 51);
        row("1020", 1020, 52);
        row("0", 0, 1);
        row("-19", -19, 1);
        row("-20", -20, 0);
        row("-5000", -5000, 0);
        row("1979", 1979, 99);
        row("1980", 1980, 100);
        row("5000", 5000, 100);
        row("2147483647", 2147483647, 100);
        row("-2147483648", minInt, 0);
    }

    void cutOff()
    {
        CPRData session;
        QFETCH(int, msecs);
        session.compressionData()->fill(100);
        session.ventilationData()->fill(100);
        session.compressionData()->cutOffWavedataAtTime(msecs);
        session.ventilationData()->cutOffWavedataAtTime(msecs);
        QTEST(session.compressionData()->count(), "kept");
        QTEST(session.ventilationData()->count(), "kept");
    }

    void files()
    {
        CPRData session;
        checkFiles(*session.compressionData());
        checkFiles(*session.ventilationData());
    }

    // A wave keeps its first samples up to its limit and says once what it leaves out.
    void fullWaves()
    {
        constexpr int limit = 8730000;
        CPRData session;
        CPRCompressionData &comp = *session.compressionData();
        QTest::ignoreMessage(QtWarningMsg, "Lost data: a wave holds no more than 8730000 samples");
        comp.fill(limit - 1);
        for (int value = 7; value < 9; ++value)
            comp.compressionWaveAppend(value, -1);
        comp.fill(5);
        QCOMPARE(comp.count(), limit);
        QCOMPARE(comp.at(limit - 1), 7);
        comp.compressionWaveAppend(9, limit - 1);
        QCOMPARE(comp.at(limit - 1), 9);
        QBuffer file;
        file.open(QIODevice::ReadWrite);
        QVERIFY(comp.writeCompresseionWave(&file));
        file.seek(0);
        QCOMPARE(session.ventilationData()->readVentilationWave(&file), QString());
        QCOMPARE(session.ventilationData()->at(limit - 1), 9);
        file.seek(0);
        session.ventilationData()->cutOffWavedataAtTime(20 * (limit / 2 - 1));
        QCOMPARE(session.ventilationData()->readVentilationWave(&file),
                 QString("more than 8730000 samples"));
        QCOMPARE(session.ventilationData()->count(), limit);
    }

    void signalsOnChange()
    {
        CPRData session;
        session.setSessionTime(4000);
        CPRCompressionData &comp = *session.compressionData();
        CPRVentilationData &vent = *session.ventilationData();
        QStringList heard;
        const auto watch = [&](const auto *sender, auto signal, const char *name) {
            connect(sender, signal, this,
                    [&heard, name](int value) { heard.append(name + QString::number(value)); });
        };
        watch(&comp, &CPRCompressionData::absoluteCompressionDepthChanged, "abs");
        watch(&comp, &CPRCompressionData::relativeCompressionDepthChanged, "rel");
        watch(&comp, &CPRCompressionData::compressionPeakDepthChanged, "peak");
        watch(&comp, &CPRCompressionData::compressionRateChanged, "rate");
        watch(&vent, &CPRVentilationData::ventilationVolumeChanged, "volume");
        watch(&vent, &CPRVentilationData::ventilationRateChanged, "breaths");
        for (int value : {0, 5, 5, 0}) {
            for (int type : {13, 9, 12, 10}) {
                comp.waveDataReceived(static_cast<CommonDefs::WaveType>(type), value, -1);
                vent.waveDataReceived(static_cast<CommonDefs::WaveType>(type), value, -1);
            }
        }
        for (int value : {0, 300, 300, -2}) {
            for (quint32 identifier : {87U, 104U, 88U})
                QVERIFY(send(session, identifier, bytes({0, value, value >> 8})));
        }
        QCOMPARE(heard.join(' '),
                 "volume0 abs5 rel5 volume5 abs0 rel0 volume0 peak0 breaths0 "
                 "rate300 peak300 breaths44 peak300 rate-2 peak-2 breaths-2");
        QCOMPARE(comp.compressionRate(), short(-2));
        QCOMPARE(samples(vent), "0 5 5 0");
        QCOMPARE(vent.waveformInfo()->msecs(), 4000);
    }

    void copies()
    {
        auto session = std::make_unique<CPRData>();
        session->compressionData()->setRelativeCompressionData(7, 1);
        session->compressionData()->setCompressionRate(99);
        session->ventilationData()->setVentilationData(8, 1);
        session->ventilationData()->setVentilationRate(9);
        session->compressionData()->waveformInfo()->setMsecs(12);
        CPRCompressionData comp(*session->compressionData(), &m_owner);
        CPRVentilationData vent(*session->ventilationData(), &m_owner);
        session->compressionData()->setRelativeCompressionData(1, 0);
        session->ventilationData()->setVentilationData(1, 0);
        session->compressionData()->waveformInfo()->setMsecs(13);
        session.reset();
        comp.fill(1);
        QCOMPARE(samples(comp) + ", " + samples(vent), "7 7, 8");
        QCOMPARE(QVector<int>(
                     {comp.compressionRate(), comp.relativeDepth(), vent.rate(), vent.volume()}),
                 QVector<int>({99, 7, 9, 8}));
        QCOMPARE(describe(*comp.waveformInfo()),
                 "0.009999999776482582 2 1.5 0 -60 0 COMP.WV 12 4 16 50 0 20");
        QSignalSpy changes(comp.waveformInfo(), &CPRWaveformInfo::waveformInfoChanged);
        comp.waveformInfo()->setMsecs(1);
        QVERIFY(changes.wait());
    }
};

QTEST_GUILESS_MAIN(TestWaves)

#include "tst_waves.moc"
