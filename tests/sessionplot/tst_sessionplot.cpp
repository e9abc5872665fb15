// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Lanes.h"
#include "sessionplot/PictureFile.h"
#include "sessionplot/PlotModel.h"
#include "sessionplot/ReviewPicture.h"
#include "sessionplot/WavePainter.h"
#include "support/Messages.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>

using namespace sessionplot;

namespace {

QImage pictureOf(const PlotModel &model, const QSize &size, qint64 from = 0, qint64 to = -1)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    ReviewPicture picture(&model);
    picture.setRange(from, to);
    picture.paint(&painter, QRectF(QPointF(), size));
    return image;
}

// The depth lane alone, from the start, without margins.
QImage depthLane(const CPRData &session, const QSize &size, qint64 to)
{
    const PlotModel model(session);
    QImage image(size, QImage::Format_RGB32);
    const Style style(Theme::light(), 12, &image);
    image.fill(style.theme.lane);
    QPainter painter(&image);
    WavePainter wave;
    paintDepth({&painter, &model, &style, TimeScale({0, to}, 0, size.width())},
               {QRectF(QPointF(), size), {}, {}}, wave);
    return image;
}

// A wave without any event: 0 but for what spike() puts in.
template <typename Spike> void feedWave(CPRData &session, int samples, Spike spike)
{
    testsupport::start(session);
    for (int i = 1; i <= samples; ++i) {
        session.waveHeaderReceived(i);
        session.waveDataReceived(bls_2010::CommonDefs::WAVE_RELATIVE_COMP_DEPTH, spike(i), i);
    }
}

} // namespace

/// What the review picture is drawn from, and that it shows what it has to.
class TestSessionPlot : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(testsupport::play(m_session, "two-rescuers.cprlog")); }

    void modelHoldsTheSession()
    {
        const PlotModel model(m_session);
        QCOMPARE(model.length(), 120000);
        QCOMPARE(model.depth().at(109), 5100); // see data/README.md
    }

    // Other limits are another picture.
    void pictureAsksTheGuidelines()
    {
        CPRData copy(m_session);
        copy.cprGuidelines()->setCompressionDepthMin(5250);
        QVERIFY(pictureOf(PlotModel(copy), {800, 500})
                != pictureOf(PlotModel(m_session), {800, 500}));
    }

    void extremesMatchAWalk()
    {
        Wave wave;
        std::vector<int> samples;
        quint32 random = 1;
        const auto next = [&random] { return random = random * 1664525U + 1013904223U; };
        for (int round = 0; round < 40; ++round) {
            // Grow, and now and then overwrite the tail as a late packet does.
            const std::size_t size = samples.size() + next() % 700;
            if (round % 5 == 4)
                std::fill(samples.end() - 30, samples.end(), int(next() % 6000));
            while (samples.size() < size)
                samples.push_back(int(next() % 6000));
            wave.follow(int(size), [&samples](int i) { return samples.at(std::size_t(i)); });
            for (int check = 0; check < 50 && size > 0; ++check) {
                const int begin = int(next() % size);
                const int end = begin + 1 + int(next() % (size - std::size_t(begin)));
                const auto [low, high] =
                    std::minmax_element(samples.begin() + begin, samples.begin() + end);
                QCOMPARE(wave.extremes(begin, end).low, *low);
                QCOMPARE(wave.extremes(begin, end).high, *high);
            }
        }
    }

    // One sample in an hour still shows.
    void noPeakIsLost()
    {
        constexpr int hour = 180000;
        CPRData flat;
        feedWave(flat, hour, [](int) { return 0; });
        CPRData spiked;
        feedWave(spiked, hour, [](int i) { return i == 91234 ? 5000 : 0; });
        const QImage without = pictureOf(PlotModel(flat), {1200, 700});
        const QImage with = pictureOf(PlotModel(spiked), {1200, 700});
        int columns = 0;
        for (int x = 0; x < with.width(); ++x) {
            int changed = 0;
            for (int y = 0; y < with.height(); ++y)
                changed += with.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
            columns += changed > 50 ? 1 : 0; // more than a label
        }
        QVERIFY2(columns >= 1 && columns <= 3, qPrintable(QString::number(columns)));
    }

    void depthsInAColumn_data()
    {
        const auto row = testsupport::columns<QVector<double>, int, int>("depths", "top", "bottom");
        row("many", {45, 55.2, 51, 52}, 485, 588);
        row("all shallow", {43.1, 41, 42}, 445, 467);
        row("one", {53.1}, 566, 567);
        row("none", {}, -1, -1);
    }

    // What is drawn goes from the shallowest to the deepest, a pixel beyond, and stays in its
    // column, which is two pixels wide: a second each. 10 pixels for each mm from -3.6 mm.
    void depthsInAColumn()
    {
        QFETCH(QVector<double>, depths);
        QFETCH(int, top);
        QFETCH(int, bottom);
        CPRData session;
        int msecs = 20100;
        for (const double depth : qAsConst(depths)) {
            auto *event = new CPREventCompression(msecs += 400, session.cprEvents(), nullptr);
            event->setProperty("compDepth", depth);
            session.cprEvents()->addEvent(event, false);
        }
        const QImage lane = depthLane(session, {400, 756}, 400000);
        const Theme theme = Theme::light();
        for (int x = 15; x < 30; ++x) {
            int first = -1;
            int last = -1;
            for (int y = 0; y < lane.height(); ++y) {
                const QColor color = lane.pixelColor(x, y);
                if (color == theme.bars || color == theme.fault || color == theme.text)
                    last = first < 0 ? (first = y) : y;
            }
            const bool isColumn = x == 20 || x == 21;
            QCOMPARE(QPoint(first, last), isColumn ? QPoint(top, bottom) : QPoint(-1, -1));
        }
    }

    // The numbers beside the faults are those of the session, whatever time is shown.
    void countsIgnoreTheZoom()
    {
        const PlotModel model(m_session);
        const auto numbers = [&model](qint64 from, qint64 to) {
            QImage image(400, 80, QImage::Format_RGB32);
            image.fill(Qt::white);
            const Style style(Theme::light(), 12, &image);
            QPainter painter(&image);
            paintFaults({&painter, &model, &style, TimeScale({from, to}, 100, 200)},
                        {{100, 0, 200, 80}, {0, 0, 100, 80}, {300, 0, 100, 80}});
            return image.copy(301, 0, 99, 80);
        };
        QCOMPARE(numbers(30000, 32000), numbers(0, 120000));
    }

    // Samples 101 to 600 are missing: from 2.02 to 12.02 s. A pixel is 10, 100 or 500 ms.
    void lostIsUnknown()
    {
        CPRData session;
        testsupport::start(session);
        for (int i = 1; i <= 700; i += i == 100 ? 501 : 1) {
            session.waveHeaderReceived(i);
            session.waveDataReceived(bls_2010::CommonDefs::WAVE_RELATIVE_COMP_DEPTH,
                                     i % 10 < 5 ? 5000 : 0, i);
        }
        QCOMPARE(sessionreview::lostMsecs(PlotModel(session).review()), 10000);
        for (const int width : {1400, 140, 28}) {
            const QImage lane = depthLane(session, {width, 756}, 14000);
            for (const int sec : {1, 3, 7, 11, 13}) {
                const QColor color = lane.pixelColor(sec * width / 14, 277); // 24.1 mm
                QCOMPARE(color == Theme::light().lane, sec > 2 && sec < 12);
            }
        }
    }

    void ticks_data()
    {
        // A step of 0 stands where any will do.
        const auto row = testsupport::columns<qint64, qint64, qint64>("from", "to", "step");
        row("two minutes", 0, 120000, 10000);
        row("not from the start", 61000, 64000, 0);
        row("an hour", 0, 3600000, 300000);
        row("a day", 0, 86400000, 0);
        row("a moment", 5000, 5001, 0);
        row("from before the start", -60000, 60000, 10000);
    }

    // Ticks are multiples of one step, inside the range, and far enough apart.
    void ticks()
    {
        QFETCH(qint64, from);
        QFETCH(qint64, to);
        QFETCH(qint64, step);
        constexpr qint64 zero = 700; // session time; ticks count from it
        const TimeScale scale({from + zero, to + zero}, 50, 1200, zero);
        const TimeTicks ticks = timeTicks(scale, 60);
        QVERIFY(ticks.step > 0);
        if (step > 0)
            QCOMPARE(ticks.step, step);
        for (qint64 each : ticks.msecs) {
            QCOMPARE(each % ticks.step, qint64(0));
            QVERIFY(each >= from && each <= to);
            QVERIFY(qAbs(scale.msecsAt(scale.x(double(each + zero))) - each - zero) <= 1);
        }
        QVERIFY(ticks.msecs.value(0, from) - ticks.step < from);
        for (int i = 1; i < ticks.msecs.size(); ++i)
            QVERIFY(scale.x(double(ticks.msecs.at(i))) - scale.x(double(ticks.msecs.at(i - 1)))
                    >= 60);
    }

    void shownRanges()
    {
        const auto is = [](const TimeRange &range, qint64 from, qint64 to) {
            return range.from == from && range.to == to;
        };
        QVERIFY(is(shownRange(0, -1, 120000), 0, 120000));
        QVERIFY(is(shownRange(30000, 60000, 120000), 30000, 60000));
        QVERIFY(is(shownRange(60000, 30000, 120000), 30000, 60000));
        QVERIFY(shownRange(5000, 5000, 120000).length() > 0);
        QVERIFY(shownRange(0, -1, 0).length() > 0);
    }

    // A model that followed a growing session is the model of the whole.
    void modelFollowsASession()
    {
        CPRData session;
        PlotModel grown;
        int records = 0;
        QVERIFY(testsupport::play(session, "two-rescuers.cprlog", [&](qint64) {
            if (records++ % 500 == 0)
                grown.updateWaves(session);
        }));
        grown.updateWaves(session);
        grown.updateEvents(session);
        QCOMPARE(pictureOf(grown, {900, 600}), pictureOf(PlotModel(session), {900, 600}));
    }

    void anySizeAndRange()
    {
        const PlotModel model(m_session);
        const PlotModel empty(CPRData{});
        for (const QSize &size : {QSize(1, 1), QSize(200, 150), QSize(3000, 60), QSize(60, 3000)}) {
            for (const auto &range : {std::pair<qint64, qint64>(0, -1),
                                      {5000, 5000},
                                      {90000, 10},
                                      {-1000000, 500},
                                      {1LL << 60, -(1LL << 60)}}) {
                pictureOf(model, size, range.first, range.second);
                pictureOf(empty, size, range.first, range.second);
            }
        }
        QVERIFY(pictureOf(model, {400, 300}) != pictureOf(empty, {400, 300}));
    }

    // What fits beside lanes that have 55 % of the width: all texts, titles and numbers, none.
    void textsLeaveTheLanesRoom()
    {
        QImage image(2000, 900, QImage::Format_RGB32);
        const Style style(Theme::light(), 12, &image);
        const qreal all = leftMargin(style);
        const qreal titles = narrowLeftMargin(style);
        const PlotModel model(m_session);
        for (const qreal forTexts : {all, (all + titles) / 2, titles - 1}) {
            const qreal frame = std::round(0.8 * style.em);
            const qreal width = std::ceil((forTexts + rightMargin(style)) / 0.45);
            QPainter painter(&image);
            ReviewPicture picture(&model);
            picture.setTextSize(12);
            picture.paint(&painter, QRectF(0, 0, width + 2 * frame, 900));
            const qreal left = picture.stack().left() - frame;
            QVERIFY(std::abs(left - (forTexts < titles ? 0 : forTexts)) <= 1);
            QVERIFY(picture.stack().width() >= 0.55 * width - 1);
        }
    }

    void anyArguments()
    {
        const PlotModel model(m_session);
        ReviewPicture picture(&model);
        picture.paint(nullptr, QRectF(0, 0, 400, 300));
        QPainter idle;
        picture.paint(&idle, QRectF(0, 0, 400, 300));
        QImage image(400, 300, QImage::Format_RGB32);
        QPainter painter(&image);
        constexpr qint64 times[] = {0, -1, std::numeric_limits<qint64>::min(),
                                    std::numeric_limits<qint64>::max()};
        for (const double odd : {qQNaN(), qInf(), -qInf(), -1.0, 0.0, 1e-300, 1e300, 1e6}) {
            for (const QRectF &area : {QRectF(odd, 0, 400, 300), QRectF(0, odd, 400, 300),
                                       QRectF(0, 0, odd, 300), QRectF(0, 0, 400, odd)})
                ReviewPicture(&model).paint(&painter, area);
            picture.setTextSize(odd);
            picture.paint(&painter, QRectF(0, 0, 400, 300));
            picture.setTextSize(0);
            picture.setColumnsPerUnit(odd);
            picture.paint(&painter, QRectF(0, 0, 400, 300));
            picture.setColumnsPerUnit(0);
            for (const qint64 from : times) {
                for (const qint64 to : times)
                    picture.setRange(from, to), picture.paint(&painter, QRectF(0, 0, 400, 300));
            }
        }
        for (const int rows :
             {-1, 7, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
            picture.setFlagRows(rows);
            picture.paint(&painter, QRectF(0, 0, 400, 300));
        }
        QVERIFY(!writePicture(QString(), QSize(10, 10), 0, -1, m_session, nullptr));
    }

    void namesAreNoMarkup()
    {
        QTemporaryDir directory;
        const QString name = directory.filePath("picture.svg");
        const QString learner =
            "</title><script>Tom & Jerry\u0001\n\u202e" + QString(400000, QChar(0x301));
        CPRData session;
        session.assignLearner(learner);
        QElapsedTimer clock;
        clock.start();
        QVERIFY(writePicture(name, {600, 400}, 0, -1, session, nullptr));
        QVERIFY(clock.elapsed() < 5000); // all the marks take a minute
        QXmlStreamReader picture(testsupport::bytesOf(name));
        while (picture.readNextStartElement() && picture.name() != QLatin1String("title"))
            ;
        QCOMPARE(picture.readElementText(),
                 "</title><script>Tom & Jerry\\u0001 \\u202e" + QString(5, QChar(0x301)));
        while (!picture.atEnd())
            picture.readNext();
        QVERIFY2(!picture.hasError(), qPrintable(picture.errorString()));
    }

    void refusedPictureLeavesTheFile()
    {
        QTemporaryDir directory;
        const QString name = directory.filePath("picture.txt");
        QVERIFY(testsupport::store(name, "kept"));
        QString error;
        QVERIFY(!writePicture(name, {100, 100}, 0, -1, m_session, &error));
        QVERIFY2(error.contains("picture.txt"), qPrintable(error));
        QCOMPARE(testsupport::bytesOf(name), QByteArray("kept"));
    }

private:
    CPRData m_session;
};

QTEST_MAIN(TestSessionPlot)
#include "tst_sessionplot.moc"
