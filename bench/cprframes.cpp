// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// How long the viewer's window needs: until an hour can be looked over, and for a frame of a live
// session at its begin and at the end of its first hour.

#include "Measure.h"
#include "Sessions.h"

#include <Viewer.h>
#include <ViewerTypes.h>
#include <manikinlog/ManikinLogWriter.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QQmlApplicationEngine>
#include <QQuickPaintedItem>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

constexpr QSize windowSize(1280, 800);
constexpr int frameMs = 20; // a wave packet each
constexpr int measuredMs = 60 * 1000;

/// The yardstick: it paints nothing, as large as the window.
class EmptyItem final : public QQuickPaintedItem {
public:
    void paint(QPainter * /*painter*/) override { }
};

/// CPU time of this thread from now until \a window has shown a new frame, in ms. What the models
/// do for the frame belongs to it, waiting for it does not.
double frameTime(QQuickWindow &window)
{
    bool isShown = false;
    const auto connection =
        QObject::connect(&window, &QQuickWindow::frameSwapped, [&isShown] { isShown = true; });
    const qint64 begin = bench::cpuTime();
    window.update();
    while (!isShown)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const qint64 end = bench::cpuTime();
    QObject::disconnect(connection);
    return double(end - begin) / 1e6;
}

void print(const char *what, std::vector<double> times)
{
    const double worst = *std::max_element(times.begin(), times.end());
    std::printf("%-44s %8.2f ms %8.2f ms\n", what, bench::median(std::move(times)), worst);
}

QString hourLog(bench::Sessions &sessions)
{
    const QString name = sessions.file(QStringLiteral("hour.cprlog"));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(name));
    manikinlog::ManikinLogWriter writer(&file);
    for (const manikinlog::Record &record : sessions.hour())
        writer.write(record);
    return name;
}

/// From the file to the first frame of the review page, and the longest time in which the window
/// could not have answered.
void measureLoading(Viewer &viewer, QQuickWindow &window, const QString &archive)
{
    QElapsedTimer whole;
    QElapsedTimer gap;
    qint64 longestGap = 0;
    QTimer heartbeat;
    QObject::connect(&heartbeat, &QTimer::timeout,
                     [&] { longestGap = std::max(longestGap, gap.restart()); });
    heartbeat.start(1);
    whole.start();
    gap.start();
    viewer.open(archive);
    while (viewer.isLoading())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const qint64 loaded = whole.elapsed();
    frameTime(window);
    longestGap = std::max(longestGap, gap.elapsed());
    std::printf("an hour's archive: loaded after %lld ms, on the page after %lld ms; the window "
                "stood still for %lld ms at the most\n\n",
                loaded, whole.elapsed(), longestGap);
}

/// Frames of the live page, and of the empty item in turn with them.
std::vector<double> measureFrames(Viewer &viewer, QQuickWindow &window, QQuickWindow &emptyWindow,
                                  EmptyItem &item, int from, std::vector<double> &empty)
{
    std::vector<double> live;
    viewer.advanceTo(from);
    frameTime(window);
    for (int msecs = from; msecs < from + measuredMs; msecs += frameMs) {
        viewer.advanceTo(msecs);
        live.push_back(frameTime(window));
        item.update();
        empty.push_back(frameTime(emptyWindow));
    }
    return live;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    useViewerTypes();

    bench::Sessions sessions;
    Viewer viewer({sessions.file(QStringLiteral("settings")), {}});
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("viewer"), QVariant::fromValue(&viewer)},
                                 {QStringLiteral("width"), windowSize.width()},
                                 {QStringLiteral("height"), windowSize.height()}});
    engine.load(QUrl(QStringLiteral("qrc:/cprviewer/qml/Main.qml")));
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window)
        return 1;
    frameTime(*window);
    measureLoading(viewer, *window, sessions.archive(bench::secondsPerHour));

    QQuickWindow emptyWindow;
    EmptyItem item;
    item.setParentItem(emptyWindow.contentItem());
    item.setSize(windowSize);
    emptyWindow.resize(windowSize);
    emptyWindow.show();
    std::vector<double> empty;
    viewer.startReplay(hourLog(sessions), 0);
    const int hourMs = bench::secondsPerHour * bench::msecsPerSecond;
    auto first = measureFrames(viewer, *window, emptyWindow, item, 0, empty);
    auto last = measureFrames(viewer, *window, emptyWindow, item, hourMs - measuredMs, empty);
    std::printf("%-44s %11s %11s\n", "a frame, 1280x800, CPU time", "median", "worst");
    print("an empty item", std::move(empty));
    print("the live page, first minute", std::move(first));
    print("the live page, last minute of an hour", std::move(last));
    return 0;
}
