// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// Hands on what a manikin sends to a receiver, "cprsession record" or the viewer. An example to
// copy: put the manikin's own link library in the place of RecordedLink.

#include "RecordedLink.h"
#include "manikinlink/LinkAddress.h"
#include "manikinlink/LinkSender.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSysInfo>
#include <QTimer>
#include <QUuid>

using manikinlink::LinkSender;
using manikinlog::Record;

// What the link library calls, on the thread of the event loop. Times are in ms since the session
// began.
class Gateway {
public:
    explicit Gateway(LinkSender *sender) : m_sender(sender) { }

    void messageReceived(qint64 msecs, const bls_2010::RMessage &message)
    {
        report({msecs, manikinlog::messageOf(message)});
    }
    void waveHeaderReceived(qint64 msecs, const bls_2010::HeaderElement &header)
    {
        report({msecs, manikinlog::WaveHeader{header.getSequenceNumber()}});
    }
    void waveDataReceived(qint64 msecs, bls_2010::CommonDefs::WaveType type, qint32 value,
                          qint32 sequence)
    {
        report({msecs, manikinlog::WaveSample{type, value, sequence}});
    }

    // Also what is no message: the manikin's name, states, the start.
    void report(const Record &record)
    {
        if (m_sender->send(record) == LinkSender::Result::Full)
            qWarning("The receiver has been away for too long: a record is lost");
    }

private:
    LinkSender *m_sender; // not owned
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto address = manikinlink::LinkAddress::parse(arguments.value(2));
    if (!address || !QFile::exists(arguments.value(1))) {
        qCritical("usage: gateway LOG tcp:PORT|local:NAME [SPEED]");
        return 2;
    }
    // The manikin's id, this sender's, and a new one for each session. A host's name may be long,
    // or have characters that an id cannot have.
    QString host = QSysInfo::machineHostName().left(40);
    host.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9._-]")), QStringLiteral("-"));
    LinkSender sender(*address,
                      {QStringLiteral("manikin-1"), QStringLiteral("gateway.") + host,
                       QUuid::createUuid().toString(QUuid::WithoutBraces)});
    Gateway gateway(&sender);
    RecordedLink<Gateway> link(arguments.value(1), qMax(1.0, arguments.value(3).toDouble()),
                               &gateway);
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (!link.goOn())
            sender.finish();
    });
    QObject::connect(&sender, &LinkSender::started, [&] {
        if (!timer.isActive())
            link.start();
        timer.start(10);
    });
    QObject::connect(&sender, &LinkSender::stopWanted, [&] {
        timer.stop();
        link.stop();
        sender.finish();
    });
    QObject::connect(&sender, &LinkSender::refused, &sender, &LinkSender::abandon);
    QObject::connect(&sender, &LinkSender::finished, [&](bool isWhole) {
        if (!isWhole)
            qWarning("%s", sender.errorString().toLocal8Bit().constData());
        application.exit(isWhole ? 0 : 1);
    });
    sender.open();
    link.introduce();
    return application.exec();
}
