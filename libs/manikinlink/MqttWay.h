// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_MQTTWAY_H
#define MANIKINLINK_MQTTWAY_H

#include "manikinlink/LinkAddress.h"
#include "manikinlink/MqttConnection.h"
#include "manikinlog/ManikinLogRecord.h"

#include <QElapsedTimer>
#include <QHash>
#include <QIODevice>
#include <QTimer>

#include <functional>
#include <memory>

namespace manikinlink {

// Ways that lead through a broker. A manikin has three topics below cprlink/SITE/MANIKIN: "stream"
// has what it sends, each message with the stream's first line and the batch's, so that it can be
// understood alone; "answer" has what the receiver says, behind the stream's first line; "about",
// which is retained, describes the manikin, or says that it is gone.

/// A device whose lines come from messages.
class MqttDevice : public QIODevice {
    Q_OBJECT

public:
    MqttDevice();

    bool isSequential() const override { return true; }
    bool canReadLine() const override;
    qint64 bytesAvailable() const override;

protected:
    /// More is not kept for a reader that does not read, in bytes.
    static constexpr int maxWaiting = 512 * 1024;

    bool hasRoom(qint64 size) const { return m_waiting.size() + size <= maxWaiting; }
    void append(const QByteArray &lines);
    qint64 readData(char *data, qint64 maxSize) override;

private:
    QByteArray m_waiting; // for the reader
};

/// The receiver's end of one stream. A broker may drop messages and repeat them: a gap is asked for
/// again, from the last batch that is safe on, and what comes twice is left out.
class MqttSource final : public MqttDevice {
    Q_OBJECT

public:
    /// Gives \a firstLine, which has no end, as the first line. \a answer sends lines to the
    /// manikin.
    MqttSource(const QByteArray &firstLine, std::function<void(const QByteArray &)> answer);

    /// A message without its first line.
    void receive(const QByteArray &lines);
    /// The manikin, or the broker, is gone.
    void end();

protected:
    qint64 writeData(const char *data, qint64 size) override;

private:
    void askAgain();

    const std::function<void(const QByteArray &)> m_answer;
    quint32 m_next = 0; // batch; 0: not known before the receiver's welcome
    quint32 m_safe = 0; // batch that the receiver has acknowledged
    bool m_hasGap = false;
    quint32 m_lowest = 0; // batch that came since it was asked for; 0: none
    quint32 m_lowestBefore = 0; // the same of the time before
    QElapsedTimer m_sinceAsked;
};

/// Finds the manikins of a site, and makes a device for each of their streams. Connects again for
/// as long as it lives.
class MqttListener final : public QObject {
    Q_OBJECT

public:
    /// Gets the devices. One that is described was found by what the broker has kept; its sender
    /// has said nothing yet.
    using Add = std::function<void(std::unique_ptr<QIODevice>, bool isDescribed)>;

    /// Null, and the reason in \a error (may be null), when the broker may not be entered; see
    /// MqttLogin::of(). Whether it can be reached is seen later.
    static std::unique_ptr<MqttListener> listen(const LinkAddress &address, const Add &add,
                                                QString *error);

Q_SIGNALS:
    /// The broker cannot be reached. Comes once for each reason until it is reached again.
    void lost(const QString &reason);

private:
    class Manikin;

    MqttListener(MqttLogin login, const QByteArray &site, Add add);

    void onAbout(const MqttMessage &message);
    void sweep();

    static constexpr int maxManikins = 512;

    const MqttLogin m_login;
    const QByteArray m_site; // with the slash at its end
    const Add m_add;
    MqttConnection m_connection; // for the descriptions; each manikin has its own
    QString m_reason; // that lost() has told
    QHash<QByteArray, Manikin *> m_manikins; // children
    QTimer m_sweep;
};

/// The sender's end of one stream. Each write is one message: the stream's first line, a batch with
/// all of its records, or a control line. Each message gets the first line, a control line also
/// that of the batch before it.
class MqttTarget final : public MqttDevice {
    Q_OBJECT

public:
    /// Begins to connect; connected() or disconnected() comes. Null, and the reason in \a error
    /// (may be null), when the broker may not be entered; see MqttLogin::of().
    static std::unique_ptr<MqttTarget> connectTo(const LinkAddress &address,
                                                 const manikinlog::Stream &stream, QString *error);

    /// The manikin's name for people.
    void setName(const QString &name);
    /// After a bye the description is taken away; else the broker says that the manikin is gone.
    void close() override;
    /// What the broker has not acknowledged.
    qint64 bytesToWrite() const override;

Q_SIGNALS:
    /// The broker can be written to.
    void connected();
    /// The connection could not be made or broke; not after close().
    void disconnected(const QString &reason);

protected:
    /// False when the broker cannot be reached.
    qint64 writeData(const char *data, qint64 size) override;

private:
    MqttTarget(MqttLogin login, const QByteArray &topic, const QByteArray &firstLine);

    void describe();
    void onAnswer(const MqttMessage &message);

    const QByteArray m_topic; // without its last level
    const QByteArray m_firstLine;
    QByteArray m_description;
    QByteArray m_batchLine; // of the last batch, which the receiver has to have
    bool m_saidBye = false;
    MqttConnection m_connection;
};

} // namespace manikinlink

#endif
