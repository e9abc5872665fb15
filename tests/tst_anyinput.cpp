// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"
#include "CPREventUser.h"
#include "CPRFileHandlerZip.h"
#include "TestSupport.h"

#include <QMap>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>
#include <random>

using namespace TestSupport;
using E = CPREventBase;
using bls_2010::CommonDefs;

namespace {

// Messages, headers, samples and host calls in any order, with any content.
class AnyInput {
public:
    explicit AnyInput(quint32 seed) : m_random(seed) { }

    void act(CPRData &session)
    {
        CPREvents &events = *session.cprEvents();
        switch (below(20)) {
        case 0:
            session.setCprState(CPRData::CprState(int(below(6)) - 1));
            break;
        case 1:
            session.waveHeaderReceived(oddSequence());
            break;
        case 2:
            session.addUserEvent(below(3) == 0 ? QStringLiteral("Morvane.Event.Deliver shock")
                                               : QString(QChar(below(0xFFFF))));
            break;
        case 3:
            session.assignLearner(QString(QChar(below(0xFFFF))));
            break;
        case 4:
            events.incomingInactivityTime(number(), qint32(below(100)) - 10);
            break;
        case 5: {
            CommonDefs::CompressionEvent_t compression;
            compression.startToPeak = quint16(number());
            compression.peakToEnd = quint16(number());
            compression.peakDepth = qint16(number());
            events.incomingCompressionEvent(below(4) == 0 ? number() : below(100000),
                                            qint32(number()), compression);
            break;
        }
        case 6: {
            CommonDefs::VentilationEvent_t ventilation;
            ventilation.startToPeak = quint16(number());
            ventilation.volume = quint16(number());
            events.incomingVentilationEvent(below(100000), qint32(number()), ventilation);
            break;
        }
        case 7:
            events.removeInactivityEventAfter(int(number()));
            break;
        case 8:
            session.compressionData()->cutOffWavedataAtTime(int(below(200000)) - 1000);
            break;
        case 9:
            if (!events.events().isEmpty() && below(4) == 0)
                deleteOne(events);
            break;
        case 10:
            events.cprdEvent(E::AEDEcgRhythms(below(12)), E::AEDEcgRhythms(below(12)));
            break;
        case 11:
            events.aedDetected(E::AEDTypes(below(8)));
            break;
        case 12:
        case 13:
            session.waveHeaderReceived(++m_sequence);
            session.waveDataReceived(CommonDefs::WaveType(below(16)), int(number()), m_sequence);
            break;
        default:
            send(session, identifier(), content(), below(20) == 0 ? oddSequence() : m_sequence);
        }
    }

private:
    quint32 number() { return quint32(m_random()); }
    quint32 below(quint32 limit) { return number() % limit; }

    qint32 oddSequence()
    {
        const qint32 sequences[] = {0,
                                    -1,
                                    1,
                                    m_sequence - 3,
                                    m_sequence + 7,
                                    std::numeric_limits<qint32>::min(),
                                    std::numeric_limits<qint32>::max()};
        return sequences[below(7)];
    }

    quint32 identifier()
    {
        constexpr quint32 known[] = {38, 47, 48, 50,  52,  64,  68,  70,  75,  77,  79, 80,
                                     81, 87, 88, 101, 104, 106, 107, 108, 109, 110, 111};
        return below(20) == 0 ? number() : known[below(23)];
    }

    QByteArray content()
    {
        QByteArray bytes;
        for (quint32 left = below(90); left > 0; --left)
            bytes.append(static_cast<char>(number()));
        return bytes;
    }

    // A host deletes what it should not have.
    void deleteOne(CPREvents &events)
    {
        CPREventBase *event = events.at(int(below(quint32(events.events().size()))));
        if (event != events.sessionInfo() && event != events.cprSessionScore()
            && event != events.cprSessionStatistics())
            delete event;
    }

    std::mt19937 m_random;
    qint32 m_sequence = 0;
};

QMap<E::EventType, int> countsOf(const CPREvents &events)
{
    QMap<E::EventType, int> counts;
    for (const E *event : events.events())
        ++counts[event->type()];
    return counts;
}

} // namespace

/// Whatever comes from the link and the host, a session stays whole and can be stored.
class TestAnyInput : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("*=false"); }

    void sessionStaysWhole_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 60; ++seed)
            QTest::addRow("%u", seed) << seed;
    }

    void sessionStaysWhole()
    {
        QFETCH(quint32, seed);
        CPRData session;
        AnyInput input(seed);
        for (int step = 0; step < 600; ++step) {
            input.act(session);
            if (step % 50 == 0)
                checkLists(*session.cprEvents());
            QCoreApplication::processEvents();
        }
        checkLists(*session.cprEvents());

        // A copy lists the standing events, is independent, and survives the original's end.
        auto original = std::make_unique<CPRData>(session);
        const CPRData copy(*original);
        original.reset();
        checkLists(*copy.cprEvents());

        QTemporaryDir directory;
        CPRData loaded;
        storeAndLoad(directory.filePath("first.zip"), copy, loaded);
        auto stored = countsOf(*copy.cprEvents());
        auto read = countsOf(*loaded.cprEvents());
        for (auto standing : {E::CprSessionInfo, E::CprSessionStatistics, E::CprSessionScore}) {
            stored.remove(standing); // these are read, not listed
            read.remove(standing);
        }
        QVERIFY(read.value(E::CprInactivityCPR) <= stored.value(E::CprInactivityCPR));
        stored.remove(E::CprInactivityCPR); // one that overlaps another is dropped
        read.remove(E::CprInactivityCPR);
        QCOMPARE(read, stored);
        QCOMPARE(loaded.compressionData()->count(), copy.compressionData()->count());
        QCOMPARE(loaded.ventilationData()->count(), copy.ventilationData()->count());
        QVERIFY(*loaded.cprGuidelines() == *copy.cprGuidelines());
    }

private:
    // Every listed event stands in the lists of its tags, and in no other.
    void checkLists(const CPREvents &events)
    {
        for (uint tag = 1; tag <= E::LastTag; tag <<= 1) {
            for (E *event : events.events(E::EventTag(tag), -1)) {
                QVERIFY((uint(event->tag()) & tag) != 0);
                QCOMPARE(events.events().count(event), 1);
            }
        }
        for (const E *event : events.events())
            QVERIFY(event->events() == &events && event->parent() == &events);
    }

    void storeAndLoad(const QString &name, const CPRData &session, CPRData &loaded)
    {
        CPRData writable(session);
        CPRFileHandlerZip zip;
        QVERIFY(zip.open(name, CPRFileHandlerZip::Create));
        QVERIFY(writable.writeData(&zip));
        QVERIFY(zip.close());
        QVERIFY(zip.open(name, CPRFileHandlerZip::Read));
        QVERIFY(loaded.readData(&zip));
        QVERIFY(zip.close());
    }
};

QTEST_GUILESS_MAIN(TestAnyInput)
#include "tst_anyinput.moc"
