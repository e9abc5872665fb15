// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include <Viewer.h>
#include <ViewerTypes.h>

#include <QEventLoop>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace bench {

namespace {

constexpr int width = 1920;
constexpr int height = 1080;

template <typename Sender, typename Signal> void await(Sender *sender, Signal signal)
{
    QEventLoop loop;
    QObject::connect(sender, signal, &loop, &QEventLoop::quit);
    loop.exec();
}

/// A page of the viewer in a window that paints without a graphics card.
class Page {
public:
    Page(Viewer &viewer, const QString &name)
    {
        QQmlComponent component(&m_engine,
                                QUrl(QStringLiteral("qrc:/cprviewer/qml/%1.qml").arg(name)));
        m_item.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("viewer"), QVariant::fromValue(&viewer)}})));
        if (!m_item)
            qFatal("%s", qPrintable(component.errorString()));
        m_window.resize(width, height);
        m_item->setParentItem(m_window.contentItem());
        m_item->setSize({width, height});
        m_window.show();
        nextFrame();
    }
    QQuickItem *item() const { return m_item.get(); }
    void nextFrame()
    {
        m_window.update();
        await(&m_window, &QQuickWindow::frameSwapped);
    }

private:
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_item;
};

// What comes before a frame counts as well: the page asks for it as the session goes on.
template <typename Change> Figure measureFrame(const Bench &bench, Page &page, Change change)
{
    QImage image(width, height, QImage::Format_RGB32);
    const auto subject = [&](Clock &clock) {
        clock.start();
        change();
        page.nextFrame();
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        clock.start();
        image.fill(Qt::white);
        clock.stop();
        keep(image);
    };
    return compare(bench.pairs, subject, reference);
}

std::vector<Figure> measurePages(Bench &bench)
{
    QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
    useViewerTypes();
    Viewer viewer({});
    viewer.startScenario(QStringLiteral("beginner"), 1, 0);
    Page live(viewer, QStringLiteral("LivePage"));
    constexpr int frameMs = 40;
    int msecs = 60 * msecsPerSecond;
    const Figure liveFrame = measureFrame(bench, live, [&] { viewer.advanceTo(msecs += frameMs); });

    viewer.discard();
    viewer.open(bench.sessions.archive(secondsPerHour));
    await(&viewer, &Viewer::sessionChanged);
    Page review(viewer, QStringLiteral("ReviewPage"));
    auto *timeline = review.item()->property("timelinePanel").value<QQuickItem *>();
    QMetaObject::invokeMethod(timeline, "zoom", Q_ARG(QVariant, 6));
    double share = 0.1;
    const Figure reviewFrame = measureFrame(bench, review, [&] {
        share = -share;
        QMetaObject::invokeMethod(timeline, "pan", Q_ARG(QVariant, share));
    });
    return {withGoal(liveFrame, 4, QStringLiteral("live, 40 ms later")),
            withGoal(reviewFrame, 10, QStringLiteral("review, ten minutes of an hour, moved"))};
}

} // namespace

std::vector<Row> pageRows()
{
    return {{20, "frame of a page without a graphics card, 1920 x 1080", "filling the image",
             measurePages}};
}

} // namespace bench
