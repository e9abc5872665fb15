// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/Messages.h"
#include "support/Rows.h"

#include <chestboard/GuidelineValues.h>

#include <QFile>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <QtEndian>

#include <cstring>
#include <memory>

using namespace testsupport;
using bls_2010::GuidelineValues_t;

namespace {

/// A line of data/guidelines.txt, which says what the columns are.
struct Row {
    QByteArray name, type;
    int byDefault, inMessage, offset, width, raw, inStructure;
    QByteArray compared, unit;

    QVariant variant(int value) const { return type == "b" ? QVariant(value != 0) : value; }
};
QVector<Row> rows;
QStringList logged;

void takeLogLine(QtMsgType, const QMessageLogContext &context, const QString &text)
{
    logged.append(QString("%1|%2|%3").arg(context.category, context.function, text));
}

std::unique_ptr<CPRGuidelines> newSet()
{
    return std::make_unique<CPRGuidelines>(static_cast<CPRData *>(nullptr));
}

/// The properties that do not have the value of this column.
QString differences(const CPRGuidelines &set, int Row::*column)
{
    QString names;
    for (const Row &row : rows) {
        if (set.property(row.name) != row.variant(row.*column))
            names += row.name + '=' + set.property(row.name).toString() + ' ';
    }
    return names;
}

QByteArray bytesOf(const GuidelineValues_t &values)
{
    return QByteArray(reinterpret_cast<const char *>(&values), 64);
}

GuidelineValues_t manikinValues()
{
    GuidelineValues_t values;
    for (const Row &row : rows) {
        const qint32 raw = qToLittleEndian(row.raw);
        if (row.offset >= 0)
            std::memcpy(reinterpret_cast<char *>(&values) + row.offset, &raw,
                        std::size_t(row.width));
    }
    values.manikinGuidelineFlag = 1;
    values.guidelinesID = "ÄB";
    return values;
}

bool receive(CPRGuidelines &set, const QByteArray &content, quint32 identifier = 75)
{
    const bls_2010::RMessage message(identifier, content);
    return set.incomingMsg(&message);
}

class Translator : public QTranslator {
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QByteArray(context) + text == "CPR GuidelinesSettingsCustom" ? "Eigene" : QString();
    }
};

} // namespace

class TestGuidelines : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(TEST_DATA_DIR "/guidelines.txt");
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (const QByteArray &line : file.readAll().split('\n')) {
            const QList<QByteArray> c = line.simplified().split(' ');
            if (!line.startsWith('#') && c.size() == 10)
                rows.append({c[0], c[1], c[2].toInt(), c[3].toInt(), c[4].toInt(), c[5].toInt(),
                             c[6].toInt(), c[7].toInt(), c[8], c[9]});
        }
        QCOMPARE(rows.size(), 46);
        qInstallMessageHandler(takeLogLine);
    }

    void init() { logged.clear(); }

    void defaults()
    {
        const QMetaObject &meta = CPRGuidelines::staticMetaObject;
        QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 47);
        QCOMPARE(meta.property(meta.propertyOffset()).name(), "GuidelinesID");
        for (int i = 0; i < rows.size(); ++i) {
            const QMetaProperty property = meta.property(meta.propertyOffset() + 1 + i);
            QCOMPARE(property.name(), rows[i].name);
            QVERIFY(QByteArray(property.typeName()).startsWith(rows[i].type));
            QCOMPARE(property.notifySignal().name(), "guidelinesChanged");
        }
        QCOMPARE(differences(*newSet(), &Row::byDefault), "");
        QCOMPARE(newSet()->guidelinesID(), "");
        QCOMPARE(newSet()->manikinGuidelineFlag(), false);
    }

    void settersStoreAndAnnounce()
    {
        const auto set = newSet();
        QSignalSpy changes(set.get(), &CPRGuidelines::guidelinesChanged);
        const auto isAnnounced = [&](const QByteArray &name, const QVariant &value) {
            changes.clear();
            set->setProperty(name, value);
            changes.wait(name == "GuidelinesID" ? 30 : 1000);
            return set->property(name) == value ? changes.count() : -1;
        };
        for (const Row &row : rows) {
            const QVariant a = row.variant(row.type == "b" ? !row.byDefault : 77);
            QCOMPARE(isAnnounced(row.name, a), 1);
            QCOMPARE(isAnnounced(row.name, a), 1);
            QCOMPARE(isAnnounced(row.name, row.variant(row.byDefault)), 1);
        }
        QCOMPARE(differences(*set, &Row::byDefault), "");
        QCOMPARE(isAnnounced("GuidelinesID", "a"), 1);
        QCOMPARE(isAnnounced("GuidelinesID", "a"), 0);
        QCOMPARE(isAnnounced("GuidelinesID", "b"), 1);
        for (const Row &row : qAsConst(rows)) // a burst
            set->setProperty(row.name, row.variant(1));
        QCOMPARE(isAnnounced("GuidelinesID", "c"), 1);
    }

    void heldBackWhileReceiving()
    {
        CPRData session;
        QSignalSpy changes(session.cprGuidelines(), &CPRGuidelines::guidelinesChanged);
        QSignalSpy relayed(session.cprEvents(), &CPREvents::guidelinesChanged);
        session.receivingData(true);
        session.cprGuidelines()->setCompressionRateMin(90);
        QVERIFY(!changes.wait(30));
        session.receivingData(false);
        session.cprGuidelines()->setCompressionRateMin(91);
        QVERIFY(changes.wait());
        QCOMPARE(changes.count() + relayed.count(), 2);
    }

    void messageOfEveryLength()
    {
        QVERIFY(!receive(*newSet(), numberedBytes(60), 76));
        for (int length = 0; length <= 60; ++length) { // bytes after index 0
            const auto set = newSet();
            set->setGuidelinesID("old");
            const bool isTaken = length > 50;
            logged.clear();
            QCOMPARE(receive(*set, numberedBytes(length + 1, 100)), isTaken);
            QCOMPARE(differences(*set, isTaken ? &Row::inMessage : &Row::byDefault), "");
            QString id = isTaken ? "" : "old";
            for (int i = 52; i <= length; ++i)
                id += QChar(100 + i);
            QCOMPARE(set->guidelinesID(), id);
            const QString context =
                "default|bool CPRGuidelines::incomingMsg(const bls_2010::RMessage*)|";
            const char *warning = isTaken ? "CPRGuidelines::incomingMsg - empty guideline ID"
                                          : "Invalid guideline received";
            QCOMPARE(logged.join('\n'), length > 51 ? "" : context + warning);
        }
    }

    void messageFlagsAndTargets_data()
    {
        // All other bytes are 1. The targets: 8 - 7 / 2, 1 + 13 / 2, 1 + 7 / 2.
        const auto row =
            columns<int, int, QByteArray, QVariant>("byte", "value", "property", "expected");
        row("absolute", 36, 0, "UseAbsoluteDepth", true);
        row("relative", 36, 1, "UseAbsoluteDepth", false);
        row("relative 2", 36, 2, "UseAbsoluteDepth", false);
        row("official", 45, 1, "IsOfficial", true);
        row("not official", 45, 2, "IsOfficial", false);
        row("active", 50, 1, "", true);
        row("not active", 50, 2, "", false);
        row("default values", 51, 1, "UsingDefaultValues", true);
        row("no default values", 51, 2, "UsingDefaultValues", false);
        row("ventilations only", 35, 8, "VentilationRateTargetForVentilationsOnly", 5);
        row("one rescuer", 14, 14, "VentilationRateTargetDuringCPR", 7);
        row("two rescuers", 44, 8, "VentilationRateTargetDuringTwoRescuerCPR", 4);
    }

    void messageFlagsAndTargets()
    {
        QFETCH(int, byte);
        QFETCH(int, value);
        QFETCH(QByteArray, property);
        const auto set = newSet();
        QByteArray content(60, '\1');
        content[byte] = char(value);
        QSignalSpy changes(set.get(), &CPRGuidelines::guidelinesChanged);
        QVERIFY(receive(*set, content));
        const QVariant flag = set->manikinGuidelineFlag();
        QTEST(property.isEmpty() ? flag : set->property(property), "expected");
        QVERIFY(changes.wait());
    }

    void fromStructure()
    {
        GuidelineValues_t values = manikinValues();
        CPRData session;
        const CPRGuidelines constructed(values, &session);
        QCOMPARE(differences(constructed, &Row::inStructure), "");
        QCOMPARE(constructed.guidelinesID(), "ÄB");
        QCOMPARE(constructed.manikinGuidelineFlag(), true);
        QCOMPARE(constructed.parent(), &session);
        // clone() takes the two flags as they are and is silent; setValues() does neither.
        const auto cloned = newSet();
        const auto set = newSet();
        QSignalSpy clonedChanges(cloned.get(), &CPRGuidelines::guidelinesChanged);
        QSignalSpy setChanges(set.get(), &CPRGuidelines::guidelinesChanged);
        values.useRelativeDepth = 1;
        set->setUsingDefaultValues(false);
        QVERIFY(setChanges.wait());
        cloned->clone(values);
        set->setValues(values);
        QVERIFY(setChanges.wait());
        QCOMPARE(clonedChanges.count(), 0);
        QCOMPARE(differences(*cloned, &Row::inStructure), "UseAbsoluteDepth=false ");
        QCOMPARE(differences(*set, &Row::inStructure), // the target is 24 - 5 / 2
                 "UsingDefaultValues=false VentilationRateTargetForVentilationsOnly=22 ");
    }

    void toStructure()
    {
        const GuidelineValues_t expected = manikinValues();
        CPRGuidelines set(expected, nullptr);
        GuidelineValues_t values;
        set.fillManikinStruct(values);
        for (const Row &row : qAsConst(rows))
            QCOMPARE(bytesOf(values).mid(row.offset, row.width),
                     bytesOf(expected).mid(row.offset, row.width));
        QCOMPARE(values.manikinGuidelineFlag, quint8(1));
        QCOMPARE(values.guidelinesID, std::string("ÄB"));
        set.setCompressionDepthMin(5099);
        set.setUseAbsoluteDepth(false);
        set.fillManikinStruct(values);
        QCOMPARE(values.compressionDepthMin, quint8(50));
        QCOMPARE(values.useRelativeDepth, 1U);
    }

    void copyAndCompare()
    {
        const auto check = [](CPRGuidelines &changed, const Row &row) {
            const auto other = newSet();
            QVERIFY2((changed == *other) == (row.compared == "-"), row.name);
            QVERIFY2((changed != *other) == (row.compared != "-"), row.name);
            QVERIFY2(changed.oldManikinEquals(*other) == (row.compared != "o"), row.name);
            // A copy has all but UsingHandPosForScore.
            QSignalSpy changes(other.get(), &CPRGuidelines::guidelinesChanged);
            *other = changed;
            const CPRGuidelines constructed(&changed);
            QVERIFY2(*other == changed && constructed == changed, row.name);
            QVERIFY(other->usingHandPosForScore() && changes.wait());
            QCOMPARE(changes.count(), 1);
        };
        for (const Row &row : qAsConst(rows)) {
            const auto changed = newSet();
            changed->setProperty(row.name, row.variant(row.type == "b" ? !row.byDefault : 78));
            check(*changed, row);
        }
        const auto changed = newSet();
        changed->setGuidelinesID("a");
        check(*changed, {"GuidelinesID", {}, 0, 0, 0, 0, 0, 0, "n", {}});
        changed->setGuidelinesID("");
        changed->setManikinGuidelineFlag(true);
        check(*changed, {"manikinGuidelineFlag", {}, 0, 0, 0, 0, 0, 0, "o", {}});
    }

    void writesXml()
    {
        const auto set = newSet();
        set->setGuidelinesID("a\"b");
        set->setProperty("Dynamic", 1);
        set->setObjectName("name");
        QString xml;
        QXmlStreamWriter writer(&xml);
        set->write(&writer);
        QString expected = "<?xml version=\"1.0\"?><GuideLineSettings "
                           "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                           "xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\">"
                           "<GuidelinesID value=\"a&quot;b\" unit=\"none\"/>";
        for (const Row &row : qAsConst(rows))
            expected += QString("<%1 value=\"%2\" unit=\"%3\"/>")
                            .arg(row.name, QString::number(row.byDefault), row.unit);
        QCOMPARE(xml, expected + "</GuideLineSettings>");
    }

    void readsXml_data()
    {
        // VentilationVolumeMin, GuidelinesID and the dynamic property.
        const auto row = columns<QString, int, QString, QVariant>("xml", "volume", "id", "other");
        row("wrong root", "<x><VentilationVolumeMin value=\"5\"/></x>", 400, "old", {});
        row("nothing", "", 400, "old", {});
        row("root of old", "<guidelines><VentilationVolumeMin value=\"5\"/></guidelines>", 5, "old",
            {});
        row("any order",
            "<GuideLineSettings><Other value=\"12.5\"/><GuidelinesID "
            "value=\"007\"/><VentilationVolumeMin value=\"6\"><VentilationVolumeMin "
            "value=\"7\"/></VentilationVolumeMin></GuideLineSettings>",
            6, "7", 12.5F);
        row("objectName",
            "<GuideLineSettings><objectName value=\"x\"/><VentilationVolumeMin "
            "value=\"8\"/></GuideLineSettings>",
            8, "old", {});
        row("no value",
            "<GuideLineSettings><VentilationVolumeMin val=\"8\"/><Other "
            "value=\"ab\"/></GuideLineSettings>",
            400, "old", "ab");
    }

    void readsXml()
    {
        QFETCH(QString, xml);
        QFETCH(QVariant, other);
        const auto set = newSet();
        set->setGuidelinesID("old");
        set->setObjectName("kept");
        QXmlStreamReader reader(xml);
        set->read(&reader);
        QTEST(set->ventilationVolumeMin(), "volume");
        QTEST(set->guidelinesID(), "id");
        QCOMPARE(set->property("Other"), other);
        QCOMPARE(set->property("Other").typeName(), other.typeName());
        QCOMPARE(set->objectName(), "kept");
        const bool isRefused = xml.isEmpty() || xml.startsWith("<x");
        QCOMPARE(logged.join('\n'),
                 isRefused ? "default|virtual void CPRGuidelines::read("
                             "QXmlStreamReader*)|Unable to read guideline xml"
                           : "");
    }

    // However many values a file holds that nobody knows, the known ones behind them are read.
    void unknownValues()
    {
        const auto set = newSet();
        QString xml = "<guidelines>";
        for (int i = 0; i < 1500; ++i)
            xml += QString("<VentilationVolumeMax value=\"many\"/><x%1 value=\"1\"/>").arg(i);
        QXmlStreamReader reader(xml + "<VentilationVolumeMin value=\"5\"/></guidelines>");
        set->read(&reader);
        QVERIFY(!reader.hasError());
        QCOMPARE(set->ventilationVolumeMin(), 5);
        QCOMPARE(set->dynamicPropertyNames().size(), 1000);
        QCOMPARE(set->dynamicPropertyNames().last(), QByteArray("x999"));
    }

    // Seen as any data object of a session, a set takes no message.
    void takesNoMessageAsDataObject()
    {
        const auto set = newSet();
        bls_2010::RMessage message(75, QByteArray(60, 'x'));
        CPRDataBase &object = *set;
        QVERIFY(!object.incomingMsg(&message));
        QVERIFY(set->guidelinesID().isEmpty());
        QVERIFY(set->incomingMsg(&message));
        QVERIFY(CPRGuidelines(static_cast<CPRGuidelines *>(nullptr)) == *newSet());
    }

    void identifiers_data()
    {
        // The age letter is x when the identifier has none.
        const auto row = columns<QString, QString>("text", "age");
        row("2025-EU-STD-A-01-20250901", "2025 (EU) - STD<br><font size=\"2\">20250901</font>",
            "A");
        row("%2-3-%4-%1%-C-01-12%3%1%2", "%2-3 (%4) - %1%<br><font size=\"2\">12%3%1%2</font>",
            "C");
        row("2025-EU-STD-A-01-2025090", "2025 (EU) - STD<br><font size=\"2\">-2025090</font>", "x");
        row("Custom.I", "Eigene", "I");
        row("custom.I", "Eigene", "x");
        row("CUSTOMER", "Eigene", "x");
        row("Custom.II", "Eigene", "x");
        row("", " () - <br><font size=\"2\"></font>", "x");
    }

    void identifiers()
    {
        Translator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        const auto set = newSet();
        set->setGuidelinesID(QTest::currentDataTag());
        QTEST(set->idAsString(set->guidelinesID()), "text");
        QTEST(set->patientAgeType("x"), "age");
    }
};

QTEST_GUILESS_MAIN(TestGuidelines)

#include "tst_guidelines.moc"
