// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// A QML page over a live session. The manikin is a recorded log, played in real time.

#include <CPRData.h>
#include <CPRDataQml.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/ManikinLogReader.h>

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QTimer>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QFile log(application.arguments().value(1));
    if (!log.open(QIODevice::ReadOnly)) {
        qCritical("usage: qml-host LOG");
        return 2;
    }

    registerCPRDataTypes();
    CPRData session;
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("session"), &session);
    engine.load(QUrl(QStringLiteral("qrc:/main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;

    manikinlog::ManikinLogReader reader(&log, log.fileName());
    manikinlog::ManikinLogPlayer player(&session);
    manikinlog::Record record;
    bool more = reader.read(record) == manikinlog::ManikinLogReader::Result::Record;
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        while (more && record.msecs <= clock.elapsed()) {
            player.play(record);
            more = reader.read(record) == manikinlog::ManikinLogReader::Result::Record;
        }
    });
    timer.start(20);
    return QGuiApplication::exec();
}
