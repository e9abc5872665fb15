// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include "manikinlink/LinkText.h"
#include "manikinlog/RecordText.h"
#include "manikinsim/Simulator.h"

#include <ClassRoom.h>
#include <Viewer.h>
#include <ViewerTypes.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QHostAddress>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <mutex>

namespace bench {

namespace {

constexpr int manikins = 12;
constexpr int runMs = 30000;
constexpr int compressionMessage = 79; // of a whole compression

/// A window that keeps what its frames cost, ns.
class Window : public QQuickWindow {
public:
    std::vector<double> frames;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::UpdateRequest)
            return QQuickWindow::event(event);
        Clock clock;
        clock.start();
        const bool isTaken = QQuickWindow::event(event);
        clock.stop();
        frames.push_back(clock.elapsed());
        return isTaken;
    }
};

/// Simulated manikins that send to a port, on a thread of their own; their names are 0, 1, ...
class Senders {
public:
    Senders(int port, const QElapsedTimer &clock) : m_clock(clock)
    {
        m_thread.reset(QThread::create([this, port] { run(port); }));
        m_thread->start();
    }
    ~Senders() { m_thread->wait(); }
    /// When a compression was written, ns of the clock; both are counted from 0.
    qint64 writtenAt(int manikin, int compression)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_written[manikin].at(static_cast<std::size_t>(compression));
    }

private:
    void run(int port)
    {
        struct Sender {
            QTcpSocket socket;
            manikinlog::Record next;
            std::unique_ptr<manikinsim::Simulator> simulator;
        };
        std::vector<std::unique_ptr<Sender>> senders;
        const std::vector<manikinsim::Scenario> &all = manikinsim::Scenario::all();
        for (int i = 0; i < manikins; ++i) {
            senders.push_back(std::make_unique<Sender>());
            Sender &sender = *senders.back();
            sender.socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
            if (!sender.socket.waitForConnected())
                qFatal("No way to the viewer");
            sender.socket.write(
                manikinlink::LinkText::firstLine(
                    {QString::number(i), QStringLiteral("bench"), QStringLiteral("1")})
                + "\n0 batch 1\n");
            manikinsim::Scenario scenario = all[static_cast<std::size_t>(i) % all.size()];
            scenario.manikinName = QString::number(i);
            scenario.link = {}; // what it loses could not be timed
            sender.simulator = std::make_unique<manikinsim::Simulator>(scenario, quint64(i));
            sender.simulator->next(sender.next);
        }
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < runMs) {
            for (int i = 0; i < manikins; ++i) {
                Sender &sender = *senders[static_cast<std::size_t>(i)];
                while (sender.next.msecs <= clock.elapsed())
                    write(i, sender.socket, sender.next, *sender.simulator);
                sender.socket.flush();
            }
            QThread::msleep(2);
        }
    }
    void write(int manikin, QTcpSocket &socket, manikinlog::Record &record,
               manikinsim::Simulator &simulator)
    {
        const auto *message = std::get_if<manikinlog::Message>(&record.entry);
        if (message && message->identifier == compressionMessage) {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_written[manikin].push_back(m_clock.nsecsElapsed());
        }
        socket.write(*manikinlog::RecordText::text(record) + '\n');
        simulator.next(record);
    }

    const QElapsedTimer &m_clock;
    std::mutex m_mutex; // of m_written
    std::vector<qint64> m_written[manikins];
    std::unique_ptr<QThread> m_thread;
};

Figure against(double measured, double limitMs, const QString &label)
{
    Figure figure;
    figure.subject = measured;
    figure.reference = limitMs * 1e6;
    figure.ratio = figure.subject / figure.reference;
    return withGoal(figure, 1, label);
}

std::vector<Figure> measureClass(Bench &)
{
    const QString painter = QStringLiteral("software");
    if (QQuickWindow::sceneGraphBackend() != painter)
        QQuickWindow::setSceneGraphBackend(painter);
    useViewerTypes();
    Viewer viewer({});
    ClassRoom &room = *viewer.room();
    if (!room.listen(QStringLiteral("tcp:0")))
        qFatal("%s", qPrintable(viewer.problem()));
    QQmlEngine engine;
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/cprviewer/qml/RoomPage.qml")));
    Window window;
    window.resize(1920, 1080);
    const std::unique_ptr<QQuickItem> page(
        qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("viewer"), QVariant::fromValue(&viewer)}})));
    if (!page)
        qFatal("%s", qPrintable(component.errorString()));
    page->setParentItem(window.contentItem());
    page->setSize(window.size());
    window.show();

    QElapsedTimer clock;
    clock.start();
    Senders senders(room.addresses().section(QLatin1Char(':'), 1).toInt(), clock);
    QEventLoop loop;
    std::vector<double> delays;
    QObject::connect(&room, &ClassRoom::countChanged, &loop, [&] {
        ClassManikin *manikin = room.at(room.count() - 1);
        cprquick::LiveFigures *figures = manikin->figures();
        auto shown = std::make_shared<int>(0);
        QObject::connect(
            figures, &cprquick::LiveFigures::eventsChanged, &loop, [&, figures, shown, manikin] {
                for (; *shown < figures->compressionCount(); ++*shown)
                    delays.push_back(double(clock.nsecsElapsed()
                                            - senders.writtenAt(manikin->name().toInt(), *shown)));
            });
    });
    QTimer::singleShot(runMs / 6, &loop, [&window] { window.frames.clear(); }); // of the beginning
    QTimer::singleShot(runMs, &loop, &QEventLoop::quit);
    loop.exec();
    if (room.count() != manikins || delays.size() < 20 * manikins || window.frames.empty())
        qFatal("The class did not train");
    std::sort(delays.begin(), delays.end());
    return {against(median(window.frames), 5, QStringLiteral("median frame")),
            against(*std::max_element(window.frames.begin(), window.frames.end()), 16,
                    QStringLiteral("worst frame")),
            against(delays[delays.size() * 99 / 100], 33,
                    QStringLiteral("a compression from write to page, 99th percentile"))};
}

} // namespace

std::vector<Row> classRows()
{
    return {{24, "class page of twelve manikins that send, without a graphics card, 1920 x 1080",
             "what is allowed", measureClass}};
}

} // namespace bench
