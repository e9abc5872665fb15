// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/AnyInput.h"
#include "support/StoredSession.h"

#include <QMap>
#include <QTemporaryDir>
#include <QtTest>

using namespace testsupport;
using E = CPREventBase;

namespace {

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
        const QString name = directory.filePath("first.zip");
        CPRData writable(copy);
        CPRData loaded;
        QVERIFY(saveTo(name, writable) && loadFrom(name, loaded));
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
};

QTEST_GUILESS_MAIN(TestAnyInput)
#include "tst_anyinput.moc"
