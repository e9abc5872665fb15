// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRDataQml.h"
#include "CPREventAED.h"
#include "CPREventCPRD.h"
#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREventShock.h"
#include "CPREventUser.h"
#include "support/Messages.h"
#include "support/Rows.h"

#include <QFile>
#include <QJSEngine>
#include <QMetaMethod>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>

#include <memory>

using namespace testsupport;
using bls_2010::CommonDefs;

class TestQml : public QObject {
    Q_OBJECT

    CPRData m_session;
    QQmlEngine m_engine; // dies before the session
    QStringList m_warnings;

    // The tests before the first that calls this one run without the host's registration.
    std::unique_ptr<QObject> create(const QByteArray &body)
    {
        static const bool isRegistered = (registerCPRDataTypes(), true);
        Q_UNUSED(isRegistered)
        QQmlComponent component(&m_engine);
        component.setData("import QtQml 2.15\nimport CPRDataTypes 1.0\nQtObject { " + body + " }",
                          QUrl());
        std::unique_ptr<QObject> object(component.create());
        m_warnings +=
            component.errors().isEmpty() ? QStringList() : QStringList(component.errorString());
        return object;
    }

private Q_SLOTS:
    void initTestCase()
    {
        connect(&m_engine, &QQmlEngine::warnings, this, [this](const QList<QQmlError> &warnings) {
            for (const QQmlError &warning : warnings)
                m_warnings.append(warning.toString());
        });
        m_engine.rootContext()->setContextProperty("session", &m_session);
        start(m_session);
        send(m_session, 64,
             bytes({0, 0, 0, 0, 0, 0, 2, 1, 0, 0, 4, 0, 3, 0, 0, 0, 0, 1, 4, 2, 2, 5, 4}));
        send(m_session, 101, bytes({4, 4}));
        m_session.assignLearner("Ann");
        m_session.cprGuidelines()->setGuidelinesID("2025-EU-STD-C-01-20250901");
        m_session.waveDataReceived(CommonDefs::WAVE_RELATIVE_COMP_DEPTH, 5120, 1);
        m_session.waveDataReceived(CommonDefs::WAVE_VENT_VOLUME, 450, 1);
        for (int i = 1; i <= 3; ++i) // start at 600 i, peak after 200, end after another 220 ms
            send(m_session, 79, bytes({0, 0, 0, 100, 0, 0, 0, 0, 0, 0, 0, 0, 200, 0, 220, 0, 0, 0}),
                 30 * i);
        m_session.setSessionTime(5000);
        send(m_session, 47, bytes({0, 0x2C, 1}));
    }

    void typesAreKnown()
    {
        for (const QMetaObject *meta :
             {&CPRData::staticMetaObject, &CPREvents::staticMetaObject,
              &CPRCompressionData::staticMetaObject, &CPRVentilationData::staticMetaObject,
              &CPRGuidelines::staticMetaObject, &CPRWaveformInfo::staticMetaObject,
              &CPREventCompression::staticMetaObject, &CPREventVentilation::staticMetaObject,
              &CPREventInactivityCPR::staticMetaObject, &CPREventSessionInfo::staticMetaObject,
              &CPREventSessionStatistics::staticMetaObject, &CPREventSessionScore::staticMetaObject,
              &CPREventAED::staticMetaObject, &CPREventShock::staticMetaObject,
              &CPREventCPRD::staticMetaObject, &CPREventUser::staticMetaObject}) {
            for (int i = 0; i < meta->methodCount(); ++i) {
                const QMetaMethod method = meta->method(i);
                bool isKnown = method.returnType() != QMetaType::UnknownType;
                for (int k = 0; k < method.parameterCount(); ++k)
                    isKnown &= method.parameterType(k) != QMetaType::UnknownType;
                QVERIFY2(isKnown, method.methodSignature());
            }
            for (int i = 0; i < meta->propertyCount(); ++i)
                QVERIFY2(meta->property(i).userType() != QMetaType::UnknownType,
                         meta->property(i).name());
        }
    }

    void bareEngine_data()
    {
        QTest::addColumn<QString>("value");
        QTest::newRow("[e.first(1), e.last(1), e.at(1, 1), e.atTime(1, 1621)].map(v => v.msec)")
            << "600,1800,1200,1800";
        QTest::newRow("[e.count(1), e.at(0).type, e.at(1, 3), e.isScoresReady()]") << "3,25,,false";
        QTest::newRow("[e.last(1).tag(), e.last(1).isCompMeanRateOk(), e.last(8).tag()]")
            << "1,false,168";
        QTest::newRow("[i.isNewborn(), i.isInfant(), i.isInfant9Months(), i.isChild()]")
            << "false,false,false,false";
        QTest::newRow("[i.patientAgeType(), i.hasFeedpod(), i.cprProtocolToString()]")
            << "C,true,Compression and ventilation - Two rescuer";
        QTest::newRow("session.cprGuidelines.idAsString('custom')") << "Custom";
        QTest::newRow("[c.at(0), c.count(), c.sessionTimeFromData(), v.at(0), v.count()]")
            << "5120,1,20,450,1";
    }

    void bareEngine()
    {
        QJSEngine engine;
        QQmlEngine::setObjectOwnership(&m_session, QQmlEngine::CppOwnership);
        engine.globalObject().setProperty("session", engine.newQObject(&m_session));
        const QJSValue value =
            engine.evaluate(QString("const e = session.cprEvents, i = e.cprSessionInfo, c = "
                                    "session.compressionData, v = session.ventilationData; %1")
                                .arg(QTest::currentDataTag()));
        QTEST(value.toString(), "value");
    }

    void expressions_data()
    {
        QTest::addColumn<QString>("value");
        QFile file(TEST_DATA_DIR "/qml-expressions.txt");
        QVERIFY(file.open(QIODevice::ReadOnly));
        while (!file.atEnd()) {
            const QList<QByteArray> cells = file.readLine().trimmed().split('\t');
            if (cells.size() == 2)
                QTest::newRow(cells[0]) << QString::fromUtf8(cells[1]);
        }
    }

    void expressions()
    {
        const QByteArray expression = QTest::currentDataTag();
        const auto object = create("function value() { return '' + (" + expression + ") }");
        QVERIFY(object);
        QVariant value;
        QVERIFY(QMetaObject::invokeMethod(object.get(), "value", Q_RETURN_ARG(QVariant, value)));
        QTEST(value.toString(), "value");
        QCOMPARE(m_warnings, QStringList());
    }

    void handlersAndBindings()
    {
        const auto object = create(R"(
            property string heard
            property int rateMin: session.cprGuidelines.CompressionRateMin
            property string learners: session.learners.join("|")
            property int volume: session.ventilationData.volume
            property Connections events: Connections {
                target: session.cprEvents
                function onCompressionEvent(event) {
                    heard += [event.msec, event.compDepth, event.compPeakForce, event.compMeanRate,
                              event.numberInCycle, event.params] + ";"
                }
                function onVentilationEvent(event) { heard += event.ventVolume + ";" }
                function onInactivityCPREvent(event) { heard += event.params.compInactivity + ";" }
                function onCprGuiEventAdded(event) { heard += event.params.eventId + ";" }
                function onCprSessionInfoChanged() {
                    heard += session.cprEvents.cprSessionInfo.params.students + ";"
                }
            })");
        QVERIFY(object);
        send(m_session, 87, bytes({0, 112, 0}));
        // 10 ms ago, 300 g, 50 mm
        send(m_session, 79,
             bytes({0, 10, 0, 0x2C, 1, 0, 0, 0, 0x88, 0x13, 0, 0, 200, 0, 220, 0, 0, 0}), 120);
        send(m_session, 80, bytes({0, 0, 0, 0, 100, 0, 100, 0, 0, 0, 0xF4, 1}), 200);
        m_session.setSessionTime(9000);
        send(m_session, 81, bytes({0, 4, 0}));
        m_session.addUserEvent("change");
        m_session.assignLearner("Bob");
        QCOMPARE(object->property("heard").toString(), "2390,50,300,112,4,;500;4;change;Ann,Bob;");
        QCOMPARE(object->property("learners").toString(), "Ann|Bob");
        QCOMPARE(object->property("rateMin").toInt(), 100);
        m_session.cprGuidelines()->setCompressionRateMin(95);
        QTRY_COMPARE(object->property("rateMin").toInt(), 95);
        m_session.waveDataReceived(CommonDefs::WAVE_VENT_VOLUME, 600, 2);
        QCOMPARE(object->property("volume").toInt(), 600);
        QCOMPARE(m_warnings, QStringList());
    }
};

QTEST_GUILESS_MAIN(TestQml)

#include "tst_qml.moc"
