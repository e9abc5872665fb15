// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRData.h"
#include "CPREventVentilation.h"
#include "sessionfiles/ArchiveCheck.h"
#include "sessionfiles/SessionFile.h"

#include <Vocabulary.h>

#include <QMetaEnum>
#include <QTemporaryDir>
#include <QtTest>

using E = CPREventBase;
using Vocabulary::Kind;

namespace {

QVariant sampleOf(Kind kind)
{
    // clang-format off
    switch (kind) {
    case Kind::Text:     return QString("Mira Holm");
    case Kind::Integer:
    case Kind::Flag:     return 1;
    case Kind::Unsigned: return 7;
    case Kind::Number:   return 1.5F;
    case Kind::Time:     return QString("2026-03-14T15:09:26");
    }
    // clang-format on
    return QVariant();
}

} // namespace

/// A row is all that a parameter or a kind of event needs: each is stored, checked and read back
/// by what its row says.
class TestVocabulary : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_archive = m_dir.filePath("session.zip");

    // Stores a session with the event, which goes to its list; whether the check finds nothing.
    bool save(CPRData &session, E *event)
    {
        session.setCprState(CPRData::CPR_STOP);
        session.cprEvents()->addEvent(event, false);
        if (!sessionfiles::save(m_archive, session).isComplete)
            return false;
        const sessionfiles::FindingList findings = sessionfiles::check(m_archive);
        if (findings.errors() + findings.warnings() > 0)
            qWarning("%s", qPrintable(findings.toText()));
        return findings.errors() + findings.warnings() == 0;
    }

private Q_SLOTS:
    void parameters_data()
    {
        const auto keys = QMetaEnum::fromType<E::ParameterType>();
        QCOMPARE(Vocabulary::parameterCount(), keys.keyCount());
        QTest::addColumn<E::ParameterType>("type");
        for (int i = 0; i < keys.keyCount(); ++i)
            QTest::newRow(keys.key(i)) << E::ParameterType(keys.value(i));
    }

    void parameters()
    {
        QFETCH(const E::ParameterType, type);
        const Vocabulary::Parameter &row = *Vocabulary::parameter(type);
        QCOMPARE(row.type, type);
        QVERIFY(*row.label);
        QCOMPARE(E::parameterKey(type), QString(QTest::currentDataTag()));
        E::ParameterType read{};
        QVERIFY(E::parameterFromKey(QString(QTest::currentDataTag()), read) && read == type);

        CPRData session;
        auto *event = new E(E::CprVentRate, 0, session.cprEvents());
        event->setParameter(type, sampleOf(row.kind));
        QVERIFY(save(session, event));
        CPRData again;
        sessionfiles::load(m_archive, again);
        const E *loaded = again.cprEvents()->events().last();
        QCOMPARE(loaded->type(), E::CprVentRate);
        QCOMPARE(loaded->value(type).toString(),
                 row.isStored ? sampleOf(row.kind).toString() : QString());
    }

    void eventKinds_data()
    {
        const auto keys = QMetaEnum::fromType<E::EventType>();
        QTest::addColumn<E::EventType>("type");
        for (int i = 0; i < keys.keyCount(); ++i)
            QTest::newRow(keys.key(i)) << E::EventType(keys.value(i));
    }

    void eventKinds()
    {
        QFETCH(const E::EventType, type);
        const Vocabulary::EventKind &row = *Vocabulary::eventKind(type);
        QCOMPARE(row.type, type);
        QVERIFY(*row.label);
        if (!row.make)
            return; // a standing event, which every list has
        CPRData session;
        E *event = row.make(type, 0, session.cprEvents());
        QCOMPARE(event->type(), type);
        QVERIFY(!row.measuring || event->metaObject() == row.measuring);
        int place = event->metaObject()->propertyOffset();
        for (const E::ParameterType measurement : row.measurements)
            QCOMPARE(QString(row.measuring->property(place++).name()),
                     E::parameterKey(measurement));
        QVERIFY(save(session, event));
    }

    // Before and after the observable map is made, which hosts and pages write into.
    void allValuesOfAnEvent()
    {
        const auto values = [](const E &event) {
            QStringList texts;
            event.visitValues([&texts](E::ParameterType type, const QVariant &value) {
                texts.append(E::parameterKey(type) + '=' + value.toString());
            });
            return texts.join(' ');
        };
        CPRData session;
        CPREventVentilation event(600, session.cprEvents());
        event.setParameter(E::totalTime, 5);
        event.setParameter(E::ventRate, 9);
        event.setParameter(E::compCount, 3);
        const QString measured = "ventVolume=0 ventInstantaneousPeriod=0 ventPeakTime=0 "
                                 "ventDuringCompression=false ";
        QCOMPARE(values(event), measured + "totalTime=5 ventRate=9 compCount=3");
        QCOMPARE(event.value(E::ventRate).toInt(), 9);
        QVERIFY(!event.value(E::compDepth).isValid() && !event.value(E::endTime).isValid());

        event.params()->insert("compCount", 4);
        event.params()->insert("hostsOwn", 1);
        event.setParameter(E::totalTime, 6);
        event.setParameter(E::shockEnergy, 200);
        const QString after = measured + "totalTime=6 ventRate=9 compCount=4 shockEnergy=200";
        QCOMPARE(values(event), after);
        const CPREventVentilation copy(event, session.cprEvents());
        QCOMPARE(values(copy), after);
        QCOMPARE(copy.params()->value("hostsOwn").toInt(), 1);
    }
};

QTEST_GUILESS_MAIN(TestVocabulary)
#include "tst_vocabulary.moc"
