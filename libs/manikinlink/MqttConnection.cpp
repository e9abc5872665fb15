// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/MqttConnection.h"

#include "private/PrintableText.h"

#include <QFile>
#include <QHostAddress>
#include <QHostInfo>
#include <QPointer>
#include <QRandomGenerator>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <mosquitto.h>
#include <sys/socket.h>
#include <utility>

namespace manikinlink {

namespace {

// A broker is started again in a moment; hundreds of senders should not come back at once.
constexpr int firstPauseMs = 250;
constexpr int longestPauseMs = 10000;
constexpr int patienceMs = 10000;
constexpr int timerMs = 1000;
// After one and a half of it the broker publishes the will.
constexpr int keepAliveSeconds = 10;
constexpr int qos = 1;
constexpr int verifyPeer = 1; // SSL_VERIFY_PEER

// Of the client: two with the same one throw each other out.
QByteArray randomId()
{
    return "cprlink" + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
}

} // namespace

std::optional<MqttLogin> MqttLogin::of(const LinkAddress &address, QString *error)
{
    const auto refuse = [error](const QString &why) {
        if (error)
            *error = why;
        return std::nullopt;
    };
    MqttLogin login;
    login.host = address.host().toLatin1();
    login.port = address.port();
    login.user = qgetenv("CPRLINK_USER");
    login.password = qgetenv("CPRLINK_PASSWORD");
    const std::pair<const char *, QByteArray &> files[] = {{"CPRLINK_CA", login.caFile},
                                                           {"CPRLINK_CERT", login.certificateFile},
                                                           {"CPRLINK_KEY", login.keyFile}};
    for (const auto &[variable, name] : files) {
        name = qgetenv(variable);
        QFile file(QFile::decodeName(name));
        if (!name.isEmpty() && !file.open(QIODevice::ReadOnly))
            return refuse(
                MqttConnection::tr("%1, which %2 names, cannot be read: %3")
                    .arg(file.fileName(), QString::fromLatin1(variable), file.errorString()));
    }
    const bool isHere =
        address.host() == QLatin1String("localhost") || QHostAddress(address.host()).isLoopback();
    if (login.caFile.isEmpty() && !isHere)
        return refuse(MqttConnection::tr("%1 is another machine, and the way there has to be "
                                         "encrypted: name the file with the certificate of the "
                                         "broker's CA in CPRLINK_CA")
                          .arg(address.host()));
    if (login.certificateFile.isEmpty() != login.keyFile.isEmpty()
        || (login.caFile.isEmpty() && !login.keyFile.isEmpty()))
        return refuse(MqttConnection::tr("CPRLINK_CERT needs CPRLINK_KEY and CPRLINK_CA, and "
                                         "CPRLINK_KEY needs both of them"));
    return login;
}

void MqttConnection::Deleter::operator()(mosquitto *client) const
{
    mosquitto_destroy(client);
}

MqttConnection::MqttConnection(MqttLogin login, QObject *parent)
    : QObject(parent), m_login(std::move(login)), m_timer(this), m_retry(this)
{
    mosquitto_lib_init();
    m_timer.setInterval(timerMs);
    connect(&m_timer, &QTimer::timeout, this, &MqttConnection::onTimer);
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &MqttConnection::open);
}

MqttConnection::~MqttConnection()
{
    drop();
    mosquitto_lib_cleanup();
}

void MqttConnection::setWill(const QByteArray &topic, const QByteArray &payload)
{
    m_willTopic = topic;
    m_will = payload;
}

void MqttConnection::keepOpen()
{
    m_pauseMs = firstPauseMs;
    open();
}

void MqttConnection::open()
{
    drop();
    m_sinceOpen.start();
    m_timer.start();
    // The client looks the name up, too, and blocks meanwhile. It gets only a name that was found
    // a moment ago, which is found again at once. By the slot's name: what is found after this
    // connection's end finds no receiver.
    m_lookup =
        QHostInfo::lookupHost(QString::fromLatin1(m_login.host), this, SLOT(onLookedUp(QHostInfo)));
}

void MqttConnection::onLookedUp(const QHostInfo &host)
{
    if (host.lookupId() != m_lookup)
        return;
    m_lookup = -1;
    if (host.error() == QHostInfo::NoError)
        connectToBroker();
    else
        fail(host.errorString());
}

// A new client; empty, or what it did not accept.
QString MqttConnection::prepare()
{
    m_client.reset(mosquitto_new(randomId().constData(), true, this));
    mosquitto *const client = m_client.get();
    if (!client)
        return QString::fromLocal8Bit(std::strerror(errno));
    mosquitto_connect_callback_set(client, [](mosquitto *, void *self, int code) {
        static_cast<MqttConnection *>(self)->onConnected(code);
    });
    mosquitto_subscribe_callback_set(
        client, [](mosquitto *, void *self, int, int count, const int *granted) {
            auto *connection = static_cast<MqttConnection *>(self);
            --connection->m_unanswered;
            if (std::any_of(granted, granted + count, [](int level) { return level != qos; }))
                connection->m_refusal = tr("the broker does not let this user read");
        });
    mosquitto_message_callback_set(client,
                                   [](mosquitto *, void *self, const mosquitto_message *message) {
                                       static_cast<MqttConnection *>(self)->onMessage(*message);
                                   });
    mosquitto_publish_callback_set(client, [](mosquitto *, void *self, int id) {
        static_cast<MqttConnection *>(self)->onAcknowledged(id);
    });
    mosquitto_log_callback_set(client, [](mosquitto *, void *self, int level, const char *text) {
        if (level == MOSQ_LOG_ERR)
            static_cast<MqttConnection *>(self)->m_complaint = QString::fromUtf8(text);
    });
    int result = mosquitto_int_option(client, MOSQ_OPT_TCP_NODELAY, 1);
    const auto textOf = [](const QByteArray &text) {
        return text.isEmpty() ? nullptr : text.constData();
    };
    if (result == MOSQ_ERR_SUCCESS && !m_login.user.isEmpty())
        result = mosquitto_username_pw_set(client, textOf(m_login.user), textOf(m_login.password));
    if (result == MOSQ_ERR_SUCCESS && !m_login.caFile.isEmpty()) {
        // A key with a password would be asked for on the terminal.
        const auto noPassword = [](char *, int, int, void *) { return 0; };
        result =
            mosquitto_tls_set(client, textOf(m_login.caFile), nullptr,
                              textOf(m_login.certificateFile), textOf(m_login.keyFile), noPassword);
        if (result == MOSQ_ERR_SUCCESS)
            result = mosquitto_tls_opts_set(client, verifyPeer, nullptr, nullptr);
    }
    if (result == MOSQ_ERR_SUCCESS && !m_willTopic.isEmpty())
        result = mosquitto_will_set(client, m_willTopic.constData(), m_will.size(),
                                    m_will.constData(), qos, true);
    return result == MOSQ_ERR_SUCCESS ? QString() : QString::fromUtf8(mosquitto_strerror(result));
}

void MqttConnection::connectToBroker()
{
    const QString error = prepare();
    if (!error.isEmpty()) {
        fail(error);
        return;
    }
    const int result = mosquitto_connect_async(m_client.get(), m_login.host.constData(),
                                               m_login.port, keepAliveSeconds);
    const int socket = mosquitto_socket(m_client.get());
    if (result > MOSQ_ERR_SUCCESS || socket < 0) {
        fail(result == MOSQ_ERR_ERRNO ? QString::fromLocal8Bit(std::strerror(errno))
                                      : QString::fromUtf8(mosquitto_strerror(result)));
        return;
    }
    m_isConnecting = true;
    m_readable = new QSocketNotifier(socket, QSocketNotifier::Read, this);
    m_writable = new QSocketNotifier(socket, QSocketNotifier::Write, this);
    connect(m_readable, &QSocketNotifier::activated, this, &MqttConnection::onReadable);
    connect(m_writable, &QSocketNotifier::activated, this, &MqttConnection::onWritable);
}

void MqttConnection::onReadable()
{
    if (!m_isAccepted) {
        // The client says nothing but "lost" of a broker that closes before it has answered.
        char byte = 0;
        const ssize_t size =
            recv(mosquitto_socket(m_client.get()), &byte, 1, MSG_PEEK | MSG_DONTWAIT);
        if (size == 0 || (size < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR)) {
            fail(size == 0 ? tr("the broker has closed the connection")
                           : QString::fromLocal8Bit(std::strerror(errno)));
            return;
        }
    }
    settle(mosquitto_loop_read(m_client.get(), 1));
}

void MqttConnection::onWritable()
{
    if (!m_isConnecting) {
        settle(mosquitto_loop_write(m_client.get(), 1));
        return;
    }
    m_isConnecting = false;
    int error = 0;
    socklen_t size = sizeof(error);
    getsockopt(mosquitto_socket(m_client.get()), SOL_SOCKET, SO_ERROR, &error, &size);
    if (error != 0) {
        fail(QString::fromLocal8Bit(std::strerror(error)));
        return;
    }
    // With encryption a read begins the handshake.
    settle(m_login.caFile.isEmpty() ? MOSQ_ERR_SUCCESS : mosquitto_loop_read(m_client.get(), 1));
}

void MqttConnection::onTimer()
{
    if (!m_timer.isActive())
        return; // publish() has called, and the connection has ended since
    if (!m_isOpen && m_sinceOpen.hasExpired(patienceMs))
        fail(tr("the broker does not answer"));
    else if (m_client)
        settle(mosquitto_loop_misc(m_client.get()));
}

void MqttConnection::onConnected(int code)
{
    m_isAccepted = code == 0;
    if (code != 0) {
        m_refusal = QString::fromUtf8(mosquitto_connack_string(code));
        return;
    }
    for (const QByteArray &topic : std::as_const(m_topics)) {
        const int result = mosquitto_subscribe(m_client.get(), nullptr, topic.constData(), qos);
        if (result == MOSQ_ERR_SUCCESS)
            ++m_unanswered;
        else
            m_refusal = QString::fromUtf8(mosquitto_strerror(result));
    }
}

void MqttConnection::onMessage(const mosquitto_message &message)
{
    if (message.payloadlen <= maxPayload)
        m_arrived.append(
            {QByteArray(message.topic),
             QByteArray(static_cast<const char *>(message.payload), message.payloadlen),
             message.retain});
}

void MqttConnection::onAcknowledged(int id)
{
    m_justAcknowledged += m_sizes.take(id);
}

// After each call of the client: what came of it. Signals are emitted here alone, where the client
// does not run, as who gets them may delete this connection.
void MqttConnection::settle(int result)
{
    // What the call left to be written, and, once the socket is connected, the greeting.
    if (result == MOSQ_ERR_SUCCESS && m_isAccepted && mosquitto_want_write(m_client.get()))
        result = mosquitto_loop_write(m_client.get(), 1);
    else if (result == MOSQ_ERR_SUCCESS && !m_isConnecting && !m_isAccepted)
        result = mosquitto_loop_write(m_client.get(), 1);
    if (!m_refusal.isEmpty()) {
        fail(std::exchange(m_refusal, QString()));
        return;
    }
    if (result != MOSQ_ERR_SUCCESS || mosquitto_socket(m_client.get()) < 0) {
        const QString reason = QString::fromUtf8(
            mosquitto_strerror(result == MOSQ_ERR_SUCCESS ? MOSQ_ERR_CONN_LOST : result));
        fail(m_complaint.isEmpty() ? reason : reason + QStringLiteral(" ") + m_complaint);
        return;
    }
    // Until it is accepted the client does not say what it wants to write.
    m_writable->setEnabled(m_isConnecting
                           || (m_isAccepted && mosquitto_want_write(m_client.get())));
    const QPointer<MqttConnection> self(this);
    if (!m_isOpen && m_isAccepted && m_unanswered <= 0) {
        m_isOpen = true;
        if (m_pauseMs > 0)
            m_pauseMs = firstPauseMs;
        Q_EMIT opened();
    }
    // Retained messages may come before the answer to the subscription; they wait for opened().
    while (self && m_isOpen && !m_arrived.isEmpty())
        Q_EMIT received(m_arrived.takeFirst());
    if (self && m_justAcknowledged > 0) {
        const qint64 bytes = std::exchange(m_justAcknowledged, 0);
        m_unacknowledged -= bytes;
        Q_EMIT acknowledged(bytes);
    }
}

bool MqttConnection::publish(const QByteArray &topic, const QByteArray &payload, bool isRetained)
{
    if (!m_isOpen || payload.size() > maxPayload)
        return false;
    int id = 0;
    const int size = payload.size();
    if (mosquitto_publish(m_client.get(), &id, topic.constData(), size, payload.constData(), qos,
                          isRetained)
        != MOSQ_ERR_SUCCESS) {
        // Later: who calls does not expect a signal now.
        QMetaObject::invokeMethod(this, &MqttConnection::onTimer, Qt::QueuedConnection);
        return false;
    }
    m_sizes.insert(id, size);
    m_unacknowledged += size;
    m_writable->setEnabled(mosquitto_want_write(m_client.get()));
    return true;
}

void MqttConnection::fail(const QString &reason)
{
    drop();
    if (m_pauseMs > 0) {
        // Half of it is by chance, so that not all senders come back at the same time.
        m_retry.start(m_pauseMs / 2 + QRandomGenerator::global()->bounded(m_pauseMs));
        m_pauseMs = std::min(2 * m_pauseMs, longestPauseMs);
    }
    Q_EMIT lost(PrintableText::escaped(reason));
}

void MqttConnection::close()
{
    if (m_client)
        mosquitto_disconnect(m_client.get());
    abandon();
}

void MqttConnection::abandon()
{
    m_pauseMs = 0;
    drop();
}

void MqttConnection::drop()
{
    m_lookup = -1;
    m_retry.stop();
    m_timer.stop();
    // A notifier may be who calls.
    for (QSocketNotifier **notifier : {&m_readable, &m_writable}) {
        if (*notifier) {
            (*notifier)->setEnabled(false);
            std::exchange(*notifier, nullptr)->deleteLater();
        }
    }
    m_client.reset();
    m_isConnecting = m_isAccepted = m_isOpen = false;
    m_unanswered = 0;
    m_refusal.clear();
    m_complaint.clear();
    m_arrived.clear();
    m_sizes.clear();
    m_unacknowledged = m_justAcknowledged = 0;
}

} // namespace manikinlink
