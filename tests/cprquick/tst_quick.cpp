// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/ComparisonModel.h"
#include "cprquick/EventListModel.h"
#include "cprquick/HistogramItem.h"
#include "cprquick/HistogramModel.h"
#include "cprquick/LiveFigures.h"
#include "cprquick/ParameterModel.h"
#include "cprquick/ParameterText.h"
#include "cprquick/RecordedFigureModel.h"
#include "cprquick/SessionSource.h"
#include "cprquick/SessionSummary.h"
#include "cprquick/SessionWords.h"
#include "cprquick/TimelineItem.h"
#include "cprquick/WaveItem.h"
#include "support/Messages.h"
#include "support/Recorder.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include <QAbstractItemModelTester>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <memory>

using namespace testsupport;
using namespace cprquick;
using bls_2010::CommonDefs;
using E = CPREventBase;

namespace {

CPREventCompression *compression(CPRData &session, int msecs, double depth = 55, int rate = 0)
{
    auto *event = new CPREventCompression(msecs, session.cprEvents(), nullptr);
    event->setEventEndTime(msecs + 400);
    event->setProperty("compDepth", depth);
    event->setCompMeanRate(rate);
    return event;
}

CPREventVentilation *ventilation(CPRData &session, int msecs, int volume = 500)
{
    auto *event = new CPREventVentilation(msecs, session.cprEvents());
    event->setProperty("ventVolume", volume);
    return event;
}

using Step = std::function<void(CPRData &)>;
using Steps = QVector<Step>;
using Counts = QVector<int>;

// What can happen in a session's life.
// clang-format off
Step comp(int msecs)   { return [=](CPRData &session) { session.cprEvents()->addEvent(compression(session, msecs), true); }; }
Step vent(int msecs)   { return [=](CPRData &session) { session.cprEvents()->addEvent(ventilation(session, msecs), true); }; }
Step silent(int msecs) { return [=](CPRData &session) { session.cprEvents()->addEvent(compression(session, msecs), false); }; }
Step again(int index)  { return [=](CPRData &session) { session.cprEvents()->emitEvent(session.cprEvents()->at(index)); }; }
Step erase(int index)  { return [=](CPRData &session) { delete session.cprEvents()->at(index); }; }
Step move(int index)   { return [=](CPRData &session) { CPRData().cprEvents()->addEvent(session.cprEvents()->at(index), true); }; }
Step pause(int secs)   { return [=](CPRData &session) { session.cprEvents()->incomingInactivityTime(quint32(-1), secs); }; } // ends now
const Step reset = [](CPRData &session) { session.reset(); };
const Step initialize = [](CPRData &session) { session.initialize(); };
const Step statistics = [](CPRData &session) { send(session, 110, numberedBytes(37)); send(session, 109, numberedBytes(49)); send(session, 111, numberedBytes(14)); };
const Step later = [](CPRData &session) { session.setSessionTime(40000); };
const Step resume = [](CPRData &session) { session.resume(); };
const Step loaded = [](CPRData &session) { QVERIFY(loadFrom(goldenArchive, session)); };
const Step settled = [](CPRData &session) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(QSignalSpy(session.cprEvents(), &CPREvents::eventsChanged).wait(1000));
};
// clang-format on

/// Whether the rows are the listed events that carry one of \a tags (0: any), in order of time.
bool holdsListed(const EventListModel &model, int tags)
{
    QList<E *> events = model.session()->cprEvents()->events();
    std::stable_sort(events.begin(), events.end(),
                     [](E *a, E *b) { return a->msecs() < b->msecs(); });
    int row = 0;
    for (const E *event : qAsConst(events)) {
        if ((tags == 0 || (event->tag() & tags) != 0) && model.eventAt(row++) != event)
            return false;
    }
    return row == model.rowCount();
}

QString rolesOf(const EventListModel &model, int row)
{
    QStringList texts;
    for (const auto role :
         {EventListModel::StartTextRole, EventListModel::TypeNameRole, EventListModel::DetailRole,
          EventListModel::FaultTextRole, EventListModel::CorrectRole})
        texts.append(model.index(row).data(role).toString());
    return texts.join('|');
}

/// Feeds samples, one each 20 ms; \a depth(i) in hundredths of a mm.
template <typename Depth> void feed(CPRData &session, int first, int last, Depth depth)
{
    for (int i = first; i <= last; ++i) {
        session.waveHeaderReceived(i);
        session.waveDataReceived(CommonDefs::WAVE_RELATIVE_COMP_DEPTH, depth(i), i);
    }
}

/// Shows \a item and gives what the next frame shows.
class Stage {
public:
    Stage(PlotItem &item, const QSize &size)
    {
        m_window.resize(size);
        item.setParentItem(m_window.contentItem());
        item.setSize(size);
        m_window.show();
        if (!QTest::qWaitForWindowExposed(&m_window))
            qFatal("no window");
    }
    QImage frame()
    {
        const auto grab = m_window.contentItem()->grabToImage();
        QSignalSpy ready(grab.data(), &QQuickItemGrabResult::ready);
        return ready.wait() ? grab->image() : QImage();
    }

private:
    QQuickWindow m_window;
};

} // namespace

Q_DECLARE_METATYPE(Step)

/// What the QML module is made of: models, items and the plugin.
class TestQuick : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textsAreFitToBeShown_data()
    {
        const auto row = testsupport::columns<QString, QString>("text", "shown");
        row("plain", "  J\u00f6rg \U0001f600 ", "  J\u00f6rg \U0001f600 ");
        row("lines", "a\n\u2028b", "a  b");
        row("invisible", "\u009b31m\u202e", "\\u009b31m\\u202e");
        row("outside the plane", "\U000e0041", "\\udb40\\udc41");
        row("marks", "a" + QString(9, QChar(0x301)), "a" + QString(5, QChar(0x301)));
        row("long", QString(399, 'a') + "e\u0301b", QString(399, 'a') + "\u2026");
    }
    void textsAreFitToBeShown()
    {
        QFETCH(QString, text);
        QTEST(SessionWords().shown(text), "shown");
    }

    void initTestCase() { QQuickWindow::setSceneGraphBackend(QStringLiteral("software")); }

    // How many rows were inserted and removed: of all events, of compressions, of ventilations and
    // pauses. The list need not have told of silent events before the end.
    void rowsFollowTheList_data()
    {
        const auto row = columns<Steps, Counts, bool>("steps", "counts", "isSilent");
        // clang-format off
        row("in order", {comp(1000), comp(2000), vent(3000)}, {3, 0, 2, 0, 1, 0}, false);
        row("out of order", {comp(1000), comp(4000), comp(2000), vent(3000), vent(10)}, {5, 0, 3, 0, 2, 0}, false);
        row("during another", {comp(1000), vent(1200), comp(1500), vent(1500)}, {4, 0, 2, 0, 2, 0}, false);
        row("statistics again", {statistics, comp(1000), comp(30000), later, statistics, settled}, {4, 1, 2, 0, 0, 0}, true);
        row("announced again", {comp(1000), vent(2000), again(1), again(2)}, {2, 0, 1, 0, 1, 0}, false);
        row("silently", {comp(1000), silent(2000), comp(3000), silent(500), settled}, {4, 0, 4, 0, 0, 0}, true);
        row("silent, deleted", {comp(1000), silent(500), erase(2), comp(2000), settled}, {3, 1, 3, 1, 0, 0}, true);
        row("silent, another again", {comp(1000), silent(2000), again(1), settled}, {2, 0, 2, 0, 0, 0}, true);
        row("deleted", {comp(1000), comp(2000), vent(3000), erase(2), comp(4000), erase(3)}, {4, 2, 3, 2, 1, 0}, false);
        row("moved", {comp(1000), vent(2000), move(1)}, {2, 1, 1, 1, 1, 0}, false);
        row("cleared", {comp(1000), vent(2000), reset, settled, comp(500)}, {3, 2, 2, 1, 1, 1}, false);
        row("new manikin", {comp(1000), vent(2000), initialize, settled, comp(500)}, {4, 3, 2, 1, 1, 1}, false);
        row("resumed", {comp(1000), resume, comp(2000)}, {2, 0, 2, 0, 0, 0}, false);
        row("loaded twice", {loaded, settled, loaded, settled, comp(9000)}, {27, 14, 5, 2, 4, 2}, false);
        row("pause", {comp(1000), pause(5), pause(6)}, {2, 0, 1, 0, 1, 0}, false);
        // clang-format on
    }

    void rowsFollowTheList()
    {
        QFETCH(Steps, steps);
        QFETCH(bool, isSilent);
        CPRData session;
        start(session);
        session.setSessionTime(20000);
        const int tags[] = {0, E::TagComp, E::TagVent | E::TagInactivity};
        EventListModel models[3];
        std::vector<std::unique_ptr<QAbstractItemModelTester>> testers;
        int inserted[3] = {};
        int removed[3] = {};
        for (int i = 0; i < 3; ++i) {
            models[i].setTags(tags[i]);
            models[i].setSession(&session);
            testers.push_back(std::make_unique<QAbstractItemModelTester>(models + i));
            connect(models + i, &EventListModel::rowsInserted, this,
                    [&sum = inserted[i]](auto, int first, int last) { sum += last - first + 1; });
            connect(models + i, &EventListModel::rowsRemoved, this,
                    [&sum = removed[i]](auto, int first, int last) { sum += last - first + 1; });
            connect(models + i, &EventListModel::modelReset, this, [] { QFAIL("rebuilt"); });
        }
        for (int step = 0; step < steps.size(); ++step) {
            steps.at(step)(session);
            for (int i = 0; i < 3 && (!isSilent || step == steps.size() - 1); ++i)
                QVERIFY2(holdsListed(models[i], tags[i]), qPrintable(QString::number(step)));
        }
        QTEST(Counts({inserted[0], removed[0], inserted[1], removed[1], inserted[2], removed[2]}),
              "counts");
    }

    void modelsOutliveTheSession()
    {
        auto session = std::make_unique<CPRData>();
        loaded(*session);
        EventListModel events;
        ParameterModel parameters;
        HistogramModel histograms;
        LiveFigures figures;
        events.setSession(session.get());
        parameters.setEvent(session->cprEvents()->at(4));
        histograms.setSession(session.get());
        figures.setSession(session.get());
        QCOMPARE(events.count(), 13);
        QVERIFY(parameters.count() > 0 && figures.compressionCount() == 2);
        QVERIFY(histograms.isReceived());
        session.reset();
        QVERIFY(!events.session() && !parameters.shownEvent() && !figures.session());
        QCOMPARE(events.count() + parameters.count() + figures.compressionCount(), 0);
        QVERIFY(!histograms.isReceived());
    }

    void comparison()
    {
        CPRData session;
        start(session);
        auto other = std::make_unique<CPRData>();
        start(*other);
        for (int msecs : {5000, 5500}) {
            session.cprEvents()->addEvent(compression(session, msecs, 54), true);
            other->cprEvents()->addEvent(compression(*other, msecs - 3000, 40), true);
        }
        other->cprEvents()->addEvent(compression(*other, 30000, 40), true);
        ComparisonModel model;
        const QAbstractItemModelTester tester(&model);
        model.setSession(&session);
        QCOMPARE(model.count(), 0);
        model.setOther(other.get());
        const auto texts = [&model](const QString &key) {
            QStringList all;
            for (const QModelIndex &row :
                 model.match(model.index(0), ComparisonModel::KeyRole, key))
                for (int role = ComparisonModel::NameRole; role <= ComparisonModel::OutcomeTextRole;
                     ++role)
                    all.append(row.data(role).toString().replace(QChar(0xa0), ' '));
            return all.join('|');
        };
        QCOMPARE(texts("mean_depth_mm"), QString("Mean depth|54.0 mm|40.0 mm|+14.0 mm|2|better"));
        QCOMPARE(texts("mean_volume_ml"), QString()); // neither has one
        QCOMPARE(model.faults().size(), 1);
        QCOMPARE(model.faults().first().toMap().value("other").toInt(), 3);
        const auto times = [&model] {
            return QVector<int>{model.zero(), model.otherZero(), model.begin(), model.end()};
        };
        QCOMPARE(times(), QVector<int>({0, 0, 0, 30000}));
        model.setAlignment(ComparisonModel::FirstCompression);
        QCOMPARE(times(), QVector<int>({5000, 2000, -5000, 28000}));
        session.cprEvents()->addEvent(compression(session, 6000, 60), true);
        QTRY_COMPARE(texts("mean_depth_mm"),
                     QString("Mean depth|56.0 mm|40.0 mm|+16.0 mm|2|better"));
        other.reset();
        QCOMPARE(model.count(), 0);
        QVERIFY(!model.other() && !model.canAlignCompressions());
    }

    // Limits: 50 to 60 mm, 100 to 120 per minute, 400 to 699 ml.
    void eventsAreJudged()
    {
        CPRData session;
        start(session);
        EventListModel model;
        LiveFigures live;
        model.setSession(&session);
        live.setSession(&session);
        CPREvents *events = session.cprEvents();
        for (int i = 0; i < 3; ++i)
            events->finalizeIncomingEvent(false, compression(session, 60000 + i * 500, 49.99, 121));
        QTRY_COMPARE(live.compressionsInCycle(), 3);
        QCOMPARE(live.lastDepth(), 49.99);
        QCOMPARE(live.lastDepthText(), QString("49")); // 50 would be right
        QCOMPARE(live.depthSide(), LiveFigures::Below);
        events->addEvent(ventilation(session, 62000, 700), true);
        session.setSessionTime(83400);
        session.addUserEvent("change");
        QCOMPARE(rolesOf(model, 1), QString("1:00.0|Compression|50.0 mm|Too shallow|false"));
        QCOMPARE(rolesOf(model, 3),
                 QString("1:01.0|Compression|50.0 mm, 121 per min|Too shallow, Too fast|false"));
        QCOMPARE(rolesOf(model, 4), QString("1:02.0|Ventilation|700 ml|Too much|false"));
        QCOMPARE(rolesOf(model, 5), QString("1:23.4|User event|change||"));
        QCOMPARE(model.rowAt(60999), 2);
        QTRY_COMPARE(live.ventilationsInCycle(), 1);
        QCOMPARE(live.faults(), QStringList("Too much"));
        QCOMPARE(live.volumeSide(), LiveFigures::Above);
        QCOMPARE(parameterValueText(E::compPeakForce, 27250), QString("27.3\u00a0kg"));
        // Half a tenth that a float only comes near.
        QCOMPARE(parameterValueText(E::compDepth, 54.449997f), QString("54.5\u00a0mm"));

        // Other limits are another judgement, and a running pause grows.
        QSignalSpy changed(&model, &EventListModel::dataChanged);
        session.cprGuidelines()->setCompressionDepthMin(4999);
        QVERIFY(changed.wait(1000));
        QCOMPARE(rolesOf(model, 1), QString("1:00.0|Compression|50.0 mm||true"));
        QTRY_COMPARE(live.depthMin(), 49.99);
        QCOMPARE(live.depthSide(), LiveFigures::Inside);
        pause(5)(session);
        pause(6)(session);
        changed.clear();
        QVERIFY(changed.wait(1000));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(rolesOf(model, 5), QString("1:18.4|Pause in CPR|6\u00a0s||false"));
        QTRY_COMPARE(live.pause(), 22); // since the compression that ended at 61400
        QVERIFY(live.isPauseTooLong() && live.isCompressionOutdated());
        session.setSessionTime(78500);
        send(session, 48, bytes({0, E::AEDAnalyzing}));
        QStringList rows;
        for (int i = 0; i < model.count(); ++i)
            rows.append(rolesOf(model, i));
        QVERIFY(rows.contains("1:18.4|Pause in CPR|6\u00a0s, asked for by the AED||"));
    }

    void parametersThatComeLater()
    {
        CPRData session;
        start(session);
        ParameterModel model;
        const QAbstractItemModelTester tester(&model);
        model.setSubject(ParameterModel::Statistics);
        model.setSession(&session);
        HistogramModel histograms;
        histograms.setSession(&session);
        connect(&model, &ParameterModel::modelReset, this, [] { QFAIL("rebuilt"); });
        const int before = model.count();
        RecordedFigureModel recorded;
        const QAbstractItemModelTester recordedTester(&recorded);
        recorded.setSession(&session);
        QCOMPARE(recorded.count(), 3); // three numbers of events
        QVERIFY(!recorded.hasManikin());
        // Every byte is its own index: bar 0 of the depths at byte 1, mean depth at 23 and 24.
        send(session, 110, numberedBytes(37));
        send(session, 109, numberedBytes(49));
        send(session, 111, numberedBytes(14));
        QTRY_VERIFY(model.count() > before + 36);
        QHash<QString, QString> values;
        for (int row = 0; row < model.count(); ++row) {
            const QModelIndex index = model.index(row);
            values.insert(index.data(ParameterModel::NameRole).toString(),
                          index.data(ParameterModel::ValueTextRole).toString());
        }
        QCOMPARE(values.size(), model.count()); // no two of one name
        QVERIFY(
            values.value("CPR card time").contains("72")); // 0x04030201 s are two years and a bit
        QCOMPARE(values.value("Mean depth"), QString("61.7\u00a0mm")); // 24 * 256 + 23 = 6167
        QCOMPARE(values.value("Depth histogram, bar 1"), QString("1"));
        QCOMPARE(values.value("Correct depth"), QString("1\u00a0%"));
        // Compressions at byte 13, ventilations at byte 17; how many had a rate is not sent.
        QTRY_VERIFY(recorded.hasManikin());
        const auto depth =
            recorded.match(recorded.index(0), RecordedFigureModel::KeyRole, "mean_depth_mm")
                .value(0);
        QCOMPARE(depth.data(RecordedFigureModel::ManikinTextRole).toString(),
                 QString("61.7\u00a0mm"));
        QVERIFY(depth.isValid() && !depth.data(RecordedFigureModel::ValueRole).isValid());
        const int totals[] = {3597, 3597, 0, 0, 4625, 0};
        for (int row = 0; row < histograms.rowCount(); ++row)
            QTRY_COMPARE(histograms.index(row).data(HistogramModel::TotalRole).toInt(),
                         totals[row]);
        const auto rangeOf = [&histograms](int row, int bar) {
            return histograms.index(row)
                .data(HistogramModel::RangesRole)
                .toList()
                .at(bar)
                .toString();
        };
        QCOMPARE(rangeOf(0, 1), QString("45\u201350 mm"));
        QCOMPARE(rangeOf(1, 0), QString("below 2.5 mm"));
        QCOMPARE(rangeOf(2, 3), QString("110\u2013120 per min"));
        QCOMPARE(rangeOf(4, 5), QString("800 ml or more"));
        HistogramItem item;
        item.setWidth(120);
        item.setProperty("values", histograms.index(0).data(HistogramModel::ValuesRole));
        QCOMPARE(QVector<int>({item.barAt(-1), item.barAt(59), item.barAt(60), item.barAt(120)}),
                 QVector<int>({-1, 2, 3, -1}));
    }

    // The page names every type of the module; the module lies where an installed one would.
    void moduleFromTheBuildTree()
    {
        QQmlEngine engine;
        QStringList warnings;
        connect(&engine, &QQmlEngine::warnings, this, [&warnings](const QList<QQmlError> &errors) {
            for (const QQmlError &error : errors)
                warnings.append(error.toString());
        });
        engine.addImportPath(QML_MODULES_DIR);
        QQmlComponent component(&engine, QUrl::fromLocalFile(TEST_DATA_DIR "/module.qml"));
        std::unique_ptr<QObject> page(component.create());
        QVERIFY2(page, qPrintable(component.errorString()));
        QCOMPARE(page->property("words").toString(),
                 QString("Mean depth|53.1\u00a0mm|not measured|per min|Put the hands in the right "
                         "place on the chest.|Pause in CPR|1:23.4|"));
        QCOMPARE(page->property("state").toInt(), 2);

        CPRData session;
        session.assignLearner("Ann");
        session.cprEvents()->addEvent(ventilation(session, 2000, 650), true);
        page->setProperty("session", QVariant::fromValue(&session));
        QCOMPARE(page->property("rows").toString(), QString("0:02.0 Ventilation 650 ml  true;"));
        QVERIFY(page->property("parameters").toString().startsWith("Ventilation rate=0"));
        QCOMPARE(page->property("rateMin").toInt(), 100);
        QTRY_COMPARE(page->property("summaryLearners").toStringList(), QStringList("Ann"));
        // What QML has seen stays the session's.
        engine.collectGarbage();
        page.reset();
        engine.collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(session.cprEvents()->count(E::TagVent), 1);
        QCOMPARE(warnings, QStringList());
    }

    // The page of the module's guide opens files by itself.
    void pageOpensFiles()
    {
        QQmlEngine engine;
        engine.addImportPath(QML_MODULES_DIR);
        QQmlComponent component(&engine, QUrl::fromLocalFile(EXAMPLES_DIR "/qml-page/page.qml"));
        const std::unique_ptr<QObject> page(component.create());
        QVERIFY2(page, qPrintable(component.errorString()));
        auto *source = page->findChild<SessionSource *>();
        const auto opens = [&](const QString &name, int compressions, const QString &problem) {
            page->setProperty("file", QUrl::fromLocalFile(name));
            QSignalSpy(source, &SessionSource::isLoadingChanged).wait();
            CPRData *session = source->session();
            engine.collectGarbage(); // takes no session
            QCOMPARE(source->problem().section(' ', 1), problem);
            QCOMPARE(session ? session->cprEvents()->count(E::TagComp) : -1, compressions);
        };
        opens(TEST_DATA_DIR "/two-rescuers.cprlog", 162, "");
        opens(TEST_DATA_DIR "/golden.zip", 2, "");
        opens(TEST_DATA_DIR "/fonts.conf", -1, "is neither a session archive nor a recorded log");
        opens("nowhere.zip", -1, "cannot be read; is it there and a file?");
    }

    // 10 pixels for each mm from -3.6 to 72 mm, 1 for each 10 ms; a pulse of 50 mm from 2 to 3 s.
    void waveColumns()
    {
        CPRData session;
        start(session);
        WaveItem item;
        item.setHasAxes(false);
        item.setTo(4000);
        item.setSession(&session);
        feed(session, 1, 200, [](int i) { return i >= 100 && i < 150 ? 5000 : 0; });
        Stage stage(item, {401, 757});
        const QImage image = stage.frame();
        const auto isAt = [&image](int x, int y, int red, int green, int blue) {
            const QRgb pixel = image.pixel(x, y);
            return qAbs(qRed(pixel) - red) + qAbs(qGreen(pixel) - green) + qAbs(qBlue(pixel) - blue)
                <= 3;
        };
        // Grid lines stand at whole tenths of a second, 10 pixels apart or more, as the font asks.
        QVERIFY(isAt(155, 300, 247, 248, 250)); // the lane
        QVERIFY(isAt(155, 580, 193, 228, 220)); // 54.4 mm: 56/255 of (0, 158, 115) over the lane
        QVERIFY(isAt(255, 580, 193, 228, 220));
        QVERIFY(isAt(255, 300, 179, 211, 230)); // 70/255 of (0, 114, 178) over the lane
        QCOMPARE(item.xAt(2500), 250.0);

        // What nobody sees is not computed.
        item.setVisible(false);
        feed(session, 201, 300, [](int) { return 0; });
        stage.frame();
        QCOMPARE(item.length(), 4000);
        item.setVisible(true);
        stage.frame();
        QCOMPARE(item.length(), 6000);
        // A pause since 5 s, which is dark, goes on without an event; 6.56 s are at 328,
        // between two tenths of a second.
        item.setTo(8000);
        pause(1)(session);
        QCOMPARE(qGreen(stage.frame().pixel(328, 300)), 248);
        feed(session, 301, 350, [](int) { return 0; });
        pause(2)(session);
        feed(session, 351, 351, [](int) { return 0; });
        QVERIFY(qGreen(stage.frame().pixel(328, 300)) < 240);
        session.reset();
        stage.frame();
        QCOMPARE(item.length(), 0);
    }

    void windowOfTime()
    {
        CPRData session;
        start(session);
        feed(session, 1, 5000, [](int) { return 0; }); // 100 s
        SessionSummary summary;
        summary.setSession(&session);
        QCOMPARE(summary.length(), 100); // which the manikin has not told yet
        TimelineItem item;
        item.setSession(&session);
        Stage stage(item, {800, 400});
        stage.frame();
        const auto shown = [&item] { return QVector<int>{item.shownFrom(), item.shownTo()}; };
        QTRY_VERIFY(item.plotArea().width() > 400);
        QCOMPARE(shown(), QVector<int>({0, 100000}));
        item.zoom(4, item.xAt(40000));
        QCOMPARE(shown(), QVector<int>({30000, 55000}));
        item.pan(60000); // up to the end
        QCOMPARE(shown(), QVector<int>({75000, 100000}));
        item.reveal(20000);
        QCOMPARE(shown(), QVector<int>({20000, 45000}));
        // 10 s of another session lie before it, 20 s behind it.
        item.setEarliest(-10000);
        item.setLatest(120000);
        item.zoomAt(0.1, 20000);
        QCOMPARE(shown(), QVector<int>({-10000, 120000}));
        item.zoomAt(10, -10000);
        item.pan(-1000);
        QCOMPARE(shown(), QVector<int>({-10000, 3000}));
        item.pan(200000);
        QCOMPARE(shown(), QVector<int>({107000, 120000}));
        item.setFrom(-3000);
        item.setTo(-1);
        stage.frame();
        QCOMPARE(shown(), QVector<int>({-3000, -1})); // not to the end
        item.setSpan(12000);
        feed(session, 5001, 5100, [](int) { return 0; });
        stage.frame();
        QCOMPARE(shown(), QVector<int>({90000, 102000}));
    }
};

QTEST_MAIN(TestQuick)

#include "tst_quick.moc"
