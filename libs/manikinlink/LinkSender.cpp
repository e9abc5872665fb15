// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkSender.h"

#include "manikinlink/MqttWay.h"
#include "manikinlog/RecordText.h"

#include <QFile>
#include <QHostAddress>
#include <QLocalSocket>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <unistd.h>
#include <utility>

namespace manikinlink {

namespace {

// The receiver may have been started again: the first try is soon, the later ones cost nothing.
constexpr int firstPauseMs = 200;
constexpr int longestPauseMs = 5000;
constexpr int patienceMs = 10000; // for the answer to the first line
constexpr int closingMs = 2000; // for the receiver to close
// A line each second at least, with room for a slow way.
constexpr int beatMs = 600;
constexpr int beatCheckMs = 300;
// How long records are added to a batch. Through a broker it is one message, which is sent when it
// is complete: it has to be shorter.
constexpr int batchMs = 100;
constexpr int messageMs = 40;
// The batch in which the way breaks is sent again from its beginning: it should not be long.
constexpr int batchBytes = 4096;
// The rest waits in the batches.
constexpr int maxUnwritten = 64 * 1024;
constexpr int maxAnswerLength = 4096;

} // namespace

LinkSender::LinkSender(const LinkAddress &address, const manikinlog::Stream &stream,
                       QObject *parent)
    : QObject(parent), m_address(address), m_stream(stream), m_pauseMs(firstPauseMs)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &LinkSender::onTimeout);
    m_batchEnd.setSingleShot(true);
    connect(&m_batchEnd, &QTimer::timeout, this, [this] {
        m_isBatchOpen = false;
        pump();
    });
}

LinkSender::~LinkSender()
{
    closeChannel();
}

bool LinkSender::canReach(const LinkAddress &address, QString *error)
{
    return address.way() != LinkAddress::Way::Mqtt || MqttLogin::of(address, error);
}

void LinkSender::open()
{
    if (m_state == State::Idle)
        connectToReceiver();
}

void LinkSender::setState(State state, int timeoutMs)
{
    const bool wasConnected = isConnected();
    m_state = state;
    m_timer.start(timeoutMs);
    if (isConnected() != wasConnected)
        Q_EMIT connectedChanged();
}

void LinkSender::onTimeout()
{
    switch (m_state) {
    case State::Waiting:
        connectToReceiver();
        break;
    case State::Greeting:
        onBroken(QStringLiteral("the receiver does not answer"));
        break;
    case State::Ready:
        m_timer.start(beatCheckMs);
        // What waits to be written is a sign of life as well.
        if (m_channel->bytesToWrite() == 0 && m_sinceWritten.hasExpired(beatMs))
            say(LinkText::Control::Kind::Beat, now());
        break;
    case State::Closing:
        end(m_loss.isEmpty());
        break;
    case State::Idle:
    case State::Ended:
        break;
    }
}

template <typename Socket> Socket *LinkSender::makeSocket()
{
    auto *socket = new Socket(this);
    m_channel = socket;

    connect(socket, &Socket::connected, this, &LinkSender::greet);
    connect(socket, &Socket::disconnected, this,
            [this] { onBroken(QStringLiteral("the receiver has closed the connection")); });
    connect(socket, &Socket::errorOccurred, this, [this, socket] {
        const auto error = socket->error();
        // Qt's text for it names the kind of socket, which helps nobody.
        const bool isAlone = int(error) == QAbstractSocket::ConnectionRefusedError
            || int(error) == QLocalSocket::ServerNotFoundError;
        onBroken(isAlone ? QStringLiteral("nobody listens there") : socket->errorString());
    });
    connect(socket, &QIODevice::readyRead, this, &LinkSender::readAnswers);
    connect(socket, &QIODevice::bytesWritten, this, &LinkSender::pump);
    // A receiver that says more than it should waits.
    socket->setReadBufferSize(2 * maxAnswerLength);
    return socket;
}

void LinkSender::connectToReceiver()
{
    setState(State::Greeting, patienceMs);
    switch (m_address.way()) {
    case LinkAddress::Way::Tcp: {
        auto *socket = makeSocket<QTcpSocket>();
        socket->setProxy(QNetworkProxy::NoProxy);
        socket->connectToHost(QHostAddress(QHostAddress::LocalHost), m_address.port());
        break;
    }
    case LinkAddress::Way::Local:
        // A name without a folder would be looked for where other users can listen at it.
        if (const std::optional<QString> file = m_address.socketFile())
            makeSocket<QLocalSocket>()->connectToServer(*file);
        else
            onBroken(
                QStringLiteral("there is no folder for local sockets that is this user's alone"));
        break;
    case LinkAddress::Way::StandardStream:
        openStandardOutput();
        break;
    case LinkAddress::Way::Mqtt:
        openBroker();
        break;
    }
}

void LinkSender::openBroker()
{
    QString error;
    MqttTarget *const target = MqttTarget::connectTo(m_address, m_stream, &error).release();
    if (!target) {
        m_errorString = error;
        end(false);
        return;
    }
    target->setParent(this);
    target->setName(m_name);
    m_channel = target;
    connect(target, &MqttTarget::connected, this, &LinkSender::greet);
    connect(target, &MqttTarget::disconnected, this, &LinkSender::onBroken);
    connect(target, &QIODevice::readyRead, this, &LinkSender::readAnswers);
    connect(target, &QIODevice::bytesWritten, this, &LinkSender::pump);
}

void LinkSender::openStandardOutput()
{
    auto *file = new QFile(this);
    m_channel = file;
    // Blocks while the pipe is full, which is all that a pipe can say.
    if (!file->open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        onBroken(file->errorString());
        return;
    }
    greet();
    if (m_state != State::Greeting)
        return;
    becomeReady(0);
    if (m_state == State::Ready)
        Q_EMIT started();
}

void LinkSender::greet()
{
    if (auto *socket = qobject_cast<QTcpSocket *>(m_channel))
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    const QByteArray line = LinkText::firstLine(m_stream) + '\n';
    write(line.constData(), line.size());
}

void LinkSender::readAnswers()
{
    const QIODevice *const channel = m_channel;
    bool isTooLong = false;
    while (m_channel == channel && m_channel->canReadLine()) {
        QByteArray line = m_channel->readLine(maxAnswerLength);
        isTooLong = !line.endsWith('\n');
        if (isTooLong)
            break;
        line.chop(1);
        // An answer that is not understood means nothing: a later receiver may say more.
        if (const auto answer = LinkText::parseAnswer(line))
            handle(*answer);
    }
    if (m_channel == channel && (isTooLong || m_channel->bytesAvailable() >= maxAnswerLength))
        onBroken(QStringLiteral("the receiver answers with a line that is too long"));
}

void LinkSender::handle(const LinkText::Answer &answer)
{
    switch (answer.kind) {
    case LinkText::Answer::Kind::Welcome:
        // Again where a message was lost: from there on. Not once all is acknowledged: each bye
        // that is said again would be welcomed again.
        if (m_state == State::Greeting || m_state == State::Ready)
            becomeReady(answer.batch);
        break;
    case LinkText::Answer::Kind::Ack:
        if (m_state == State::Ready)
            acknowledge(answer.batch);
        break;
    case LinkText::Answer::Kind::Start:
        Q_EMIT started();
        break;
    case LinkText::Answer::Kind::Stop:
        Q_EMIT stopWanted();
        break;
    case LinkText::Answer::Kind::Refused:
        closeChannel();
        m_errorString = answer.reason;
        setState(State::Idle, 0);
        Q_EMIT refused(answer.reason);
        break;
    }
}

// The receiver wants what comes behind \a batch.
void LinkSender::becomeReady(quint32 batch)
{
    m_pauseMs = firstPauseMs;
    m_saidBye = false;
    // That the manikin is lost is said again: the receiver may be another one, or may not have
    // heard it. That it was found meanwhile is still to be said.
    m_saidLost = m_saidLost && !m_isLost;
    if (batch < m_acknowledged) {
        m_loss = QStringLiteral("the receiver has lost what came behind batch %1").arg(batch);
        m_errorString = m_loss;
    }
    forgetUpTo(batch);
    m_next = 0;
    m_offset = 0;
    setState(State::Ready, beatCheckMs);
    pump();
}

void LinkSender::acknowledge(quint32 batch)
{
    forgetUpTo(batch);
    pump();
}

// But not what was never written, whatever the receiver says.
void LinkSender::forgetUpTo(quint32 batch)
{
    batch = qMin(batch, m_writtenBatch);
    m_acknowledged = qMax(m_acknowledged, batch);
    while (!m_kept.empty() && m_kept.front().number <= batch) {
        m_keptBytes -= m_kept.front().text.size();
        m_kept.pop_front();
        if (m_next == 0)
            m_offset = 0;
        else
            --m_next;
    }
    if (m_isFull && m_keptBytes < m_capacity) {
        m_isFull = false;
        Q_EMIT spaceFreed();
    }
}

LinkSender::Result LinkSender::send(const manikinlog::Record &record)
{
    if (m_isFinishing || m_state == State::Ended)
        return Result::Refused;
    // Of a recorded log that came over a link: this stream has its own, and they are left out.
    if (std::holds_alternative<manikinlog::Stream>(record.entry)
        || std::holds_alternative<manikinlog::Batch>(record.entry))
        return Result::Accepted;
    if (m_keptBytes >= m_capacity) {
        m_isFull = true;
        return Result::Full;
    }
    const qint64 msecs = qMax(record.msecs, m_msecs);
    QString error;
    const auto line = manikinlog::RecordText::text({msecs, record.entry}, &error);
    if (!line) {
        m_errorString = error;
        return Result::Refused;
    }
    m_msecs = msecs;
    m_sinceMsecs.start();
    if (const auto *name = std::get_if<manikinlog::ManikinName>(&record.entry)) {
        m_name = name->name;
        if (auto *target = qobject_cast<MqttTarget *>(m_channel))
            target->setName(m_name);
    }
    if (!m_isBatchOpen || m_kept.empty() || m_sinceBatch.hasExpired(batchMs)
        || m_kept.back().text.size() >= batchBytes) {
        ++m_lastBatch;
        m_kept.push_back(
            {m_lastBatch, msecs,
             *manikinlog::RecordText::text({msecs, manikinlog::Batch{m_lastBatch}}) + '\n'});
        m_keptBytes += m_kept.back().text.size();
        m_isBatchOpen = true;
        m_sinceBatch.start();
    }
    m_kept.back().text += *line + '\n';
    m_keptBytes += line->size() + 1;
    pump();
    return Result::Accepted;
}

void LinkSender::setLost(bool isLost)
{
    m_isLost = isLost;
    m_isBatchOpen = false;
    pump();
}

void LinkSender::finish()
{
    m_isFinishing = true;
    m_isBatchOpen = false;
    pump();
}

void LinkSender::abandon()
{
    if (m_errorString.isEmpty())
        m_errorString = QStringLiteral("it was given up");
    end(false);
}

// Writes what can be written now.
void LinkSender::pump()
{
    if (m_state != State::Ready)
        return;
    // What is found comes before its records, what is lost behind them.
    if (m_saidLost && !m_isLost) {
        const bool isBehind = m_next < m_kept.size();
        if (!say(LinkText::Control::Kind::Found, isBehind ? m_kept[m_next].msecs : m_msecs))
            return;
        m_saidLost = false;
    }
    if (!sendBatches())
        return;
    if (m_isLost && !m_saidLost && !m_isFinishing)
        m_saidLost = say(LinkText::Control::Kind::Lost, now());
    if (m_isFinishing && !m_saidBye)
        m_saidBye = say(LinkText::Control::Kind::Bye, m_msecs);
    if (!m_saidBye || !m_kept.empty() || m_state != State::Ready)
        return;
    if (m_address.way() == LinkAddress::Way::StandardStream)
        end(m_loss.isEmpty());
    else
        setState(State::Closing, closingMs);
}

// False when something is left that has to wait for the way.
bool LinkSender::sendBatches()
{
    while (m_next < m_kept.size()) {
        const Batch &batch = m_kept[m_next];
        // The last one may still grow; through a broker it waits for that.
        const bool isOpen = m_isBatchOpen && m_next + 1 == m_kept.size();
        if (isOpen && m_address.way() == LinkAddress::Way::Mqtt) {
            if (!m_batchEnd.isActive())
                m_batchEnd.start(messageMs);
            break;
        }
        const qint64 left = batch.text.size() - m_offset;
        if (left > 0) {
            if (m_channel->bytesToWrite() >= maxUnwritten
                || !write(batch.text.constData() + m_offset, left))
                return false;
            m_offset += left;
        }
        if (isOpen)
            break;
        m_writtenBatch = qMax(m_writtenBatch, batch.number);
        ++m_next;
        m_offset = 0;
    }
    // Nobody acknowledges what goes into a pipe.
    if (m_address.way() == LinkAddress::Way::StandardStream)
        forgetUpTo(m_writtenBatch);
    return true;
}

bool LinkSender::say(LinkText::Control::Kind kind, qint64 msecs)
{
    if (msecs > m_msecs) {
        m_msecs = msecs;
        m_sinceMsecs.start();
    }
    const QByteArray line = LinkText::text(LinkText::Control{msecs, kind}) + '\n';
    return write(line.constData(), line.size());
}

bool LinkSender::write(const char *data, qint64 size)
{
    const bool isWritten = m_channel->write(data, size) == size;
    if (isWritten)
        m_sinceWritten.start();
    else if (m_channel)
        onBroken(m_channel->errorString());
    return isWritten && m_channel;
}

qint64 LinkSender::now() const
{
    if (m_clock)
        return qMax(m_msecs, m_clock());
    return m_sinceMsecs.isValid() ? m_msecs + m_sinceMsecs.elapsed() : m_msecs;
}

void LinkSender::onBroken(const QString &reason)
{
    m_errorString = reason;
    closeChannel();
    m_isBatchOpen = false;
    if (m_saidBye && m_kept.empty()) {
        end(m_loss.isEmpty());
    } else if (m_address.way() == LinkAddress::Way::StandardStream) {
        end(false);
    } else {
        setState(State::Waiting, m_pauseMs);
        m_pauseMs = qMin(2 * m_pauseMs, longestPauseMs);
    }
}

void LinkSender::closeChannel()
{
    if (!m_channel)
        return;
    QIODevice *const channel = std::exchange(m_channel, nullptr);
    channel->disconnect(this);
    channel->close();
    channel->deleteLater();
}

void LinkSender::end(bool isWhole)
{
    if (m_state == State::Ended)
        return;
    closeChannel();
    if (!m_loss.isEmpty())
        m_errorString = m_loss;
    setState(State::Ended, 0);
    m_timer.stop();
    Q_EMIT finished(isWhole);
}

} // namespace manikinlink
