// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_MQTTCONNECTION_H
#define MANIKINLINK_MQTTCONNECTION_H

#include "manikinlink/LinkAddress.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

class QHostInfo;
class QSocketNotifier;
struct mosquitto;
struct mosquitto_message;

namespace manikinlink {

/// Where a broker is, and how it is entered.
struct MqttLogin {
    QByteArray host;
    int port = 0;
    QByteArray user; // empty for none
    QByteArray password;
    QByteArray caFile; // without one nothing is encrypted
    QByteArray certificateFile;
    QByteArray keyFile;

    /// The broker of \a address, with what the environment says: CPRLINK_USER, CPRLINK_PASSWORD,
    /// CPRLINK_CA, CPRLINK_CERT, CPRLINK_KEY. Nothing, and the reason in \a error (may be null),
    /// when a file cannot be read, a part of the certificate is missing, or the broker is on
    /// another machine and nothing would be encrypted.
    static std::optional<MqttLogin> of(const LinkAddress &address, QString *error);
};

/// What came from the broker.
struct MqttMessage {
    QByteArray topic;
    QByteArray payload;
    bool isRetained; // it is older than the subscription
};

/// One connection to a broker, driven by the event loop; no call waits for the broker. Messages go
/// and come with quality of service 1: at least once, and in order. A clean session: nothing of a
/// connection that broke is repeated by the broker.
class MqttConnection final : public QObject {
    Q_OBJECT

public:
    /// Longer messages are neither sent nor accepted, in bytes.
    static constexpr int maxPayload = 128 * 1024;

    explicit MqttConnection(MqttLogin login, QObject *parent = nullptr);
    /// Breaks the connection: the broker publishes the will.
    ~MqttConnection() override;

    /// What is subscribed to, and what the broker publishes, retained, should the connection break;
    /// to be called before the connection is opened. An empty topic is none.
    void setTopics(const QList<QByteArray> &topics) { m_topics = topics; }
    void setWill(const QByteArray &topic, const QByteArray &payload);

    /// Connects once; opened() or lost() comes. An open connection is broken first.
    void open();
    /// The same, and connects again whenever the connection is lost, after a pause that grows to
    /// 10 s.
    void keepOpen();
    /// Says goodbye, so that the will is not published. What was not written yet is lost. No signal
    /// comes.
    void close();
    /// Breaks the connection, so that the broker publishes the will. No signal comes.
    void abandon();

    /// The broker has accepted the login and all topics.
    bool isOpen() const { return m_isOpen; }
    /// Hands \a payload over; acknowledged() comes when the broker has it. False when the
    /// connection is not open, the message is too long, or the connection breaks now.
    bool publish(const QByteArray &topic, const QByteArray &payload, bool isRetained = false);
    /// Bytes of payload that the broker has not acknowledged.
    qint64 unacknowledged() const { return m_unacknowledged; }

Q_SIGNALS:
    /// isOpen() has become true.
    void opened();
    /// The connection could not be made, was refused or broke; \a reason is one line for people.
    void lost(const QString &reason);
    /// Comes behind opened(), also for messages that the broker has sent before.
    void received(const manikinlink::MqttMessage &message);
    /// The broker has messages with so many bytes of payload.
    void acknowledged(qint64 bytes);

private Q_SLOTS:
    void onLookedUp(const QHostInfo &host);

private:
    struct Deleter {
        void operator()(mosquitto *client) const;
    };

    void connectToBroker();
    QString prepare();
    void onReadable();
    void onWritable();
    void onTimer();
    void settle(int result);
    void fail(const QString &reason);
    void drop();
    void onConnected(int code);
    void onMessage(const mosquitto_message &message);
    void onAcknowledged(int id);

    const MqttLogin m_login;
    QList<QByteArray> m_topics;
    QByteArray m_willTopic; // empty for none
    QByteArray m_will;
    std::unique_ptr<mosquitto, Deleter> m_client; // while it connects or is open
    QSocketNotifier *m_readable = nullptr; // both are children, while there is a socket;
    // deleted later, as they may be who calls
    QSocketNotifier *m_writable = nullptr;
    QTimer m_timer; // for pings, and for a broker that is silent
    QTimer m_retry; // until it connects again
    QElapsedTimer m_sinceOpen; // since it began to connect
    int m_lookup = -1; // of the host's name
    int m_pauseMs = 0; // before it connects again; 0: it does not
    bool m_isConnecting = false; // the socket
    bool m_isAccepted = false; // the login
    bool m_isOpen = false;
    int m_unanswered = 0; // subscriptions
    QString m_refusal; // of the login or of a topic
    QString m_complaint; // the last one about the encryption
    QList<MqttMessage> m_arrived; // handed out when the client does not run
    QHash<int, qint64> m_sizes; // of messages that are not acknowledged
    qint64 m_unacknowledged = 0; // bytes
    qint64 m_justAcknowledged = 0; // bytes; told when the client does not run
};

} // namespace manikinlink

#endif
