// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkChannel.h"

#include "manikinlog/RecordText.h"
#include "private/FileCalls.h"

#include <QLocalSocket>
#include <QTcpSocket>

#include <algorithm>
#include <cstddef>
#include <sys/socket.h>
#include <utility>

namespace manikinlink {

namespace {

using manikinlog::RecordText::maxLineLength;

// Read in one turn, and kept by Qt: all else waits in the kernels, and in the sender.
constexpr int pieceBytes = 16 * 1024;
// Answers for a sender that does not read them. It gets no others then; its next welcome counts.
constexpr int maxUnsentBytes = 4096;

// -1 for what is no socket.
qintptr descriptorOf(const QIODevice *device)
{
    if (const auto *tcp = qobject_cast<const QAbstractSocket *>(device))
        return tcp->socketDescriptor();
    if (const auto *local = qobject_cast<const QLocalSocket *>(device))
        return local->socketDescriptor();
    return -1;
}

} // namespace

LinkChannel::LinkChannel(std::unique_ptr<QIODevice> device, bool canReturn, QObject *parent)
    : QObject(parent), m_device(std::move(device)), m_canReturn(canReturn)
{
    if (auto *tcp = qobject_cast<QAbstractSocket *>(m_device.get()))
        tcp->setReadBufferSize(pieceBytes);
    else if (auto *local = qobject_cast<QLocalSocket *>(m_device.get()))
        local->setReadBufferSize(pieceBytes);
    // A turn is a turn of the event loop.
    m_turn.setInterval(0);
    connect(&m_turn, &QTimer::timeout, this, &LinkChannel::readTurn);
    connect(m_device.get(), &QIODevice::readyRead, this, [this] {
        if (isReading())
            m_turn.start();
    });
    const auto atEnd = [this] {
        m_isAtEnd = true;
        m_turn.start();
    };
    connect(m_device.get(), &QIODevice::readChannelFinished, this, atEnd);
    if (auto *tcp = qobject_cast<QAbstractSocket *>(m_device.get()))
        connect(tcp, &QAbstractSocket::disconnected, this, atEnd);
    else if (auto *local = qobject_cast<QLocalSocket *>(m_device.get()))
        connect(local, &QLocalSocket::disconnected, this, atEnd);
    m_lastLine.start();
}

// The device closes when it goes, and must not say so to what is left of the channel.
LinkChannel::~LinkChannel()
{
    m_device->disconnect(this);
}

void LinkChannel::setReader(Reader reader)
{
    m_reader = std::move(reader);
    m_lastLine.start();
    if (isReading())
        m_turn.start();
}

void LinkChannel::setPaused(bool isPaused)
{
    m_isPaused = isPaused;
    m_lastLine.start();
    if (isReading())
        m_turn.start();
}

qint64 LinkChannel::silentMs() const
{
    return isReading() ? m_lastLine.elapsed() : 0;
}

void LinkChannel::answer(const LinkText::Answer &answer)
{
    if (!m_device->isWritable() || m_unsent.size() > maxUnsentBytes)
        return;
    m_unsent += LinkText::text(answer) + '\n';
    // Past the buffer of the socket, which has no bound, and at once, so that the answer is on its
    // way when the channel is closed.
    const qintptr file = descriptorOf(m_device.get());
    const auto count = file < 0 ? m_device->write(m_unsent) : FileCalls::repeated([this, file] {
        return ::send(static_cast<int>(file), m_unsent.constData(),
                      static_cast<std::size_t>(m_unsent.size()), MSG_DONTWAIT | MSG_NOSIGNAL);
    });
    m_unsent.remove(0, static_cast<int>(std::max<qint64>(count, 0)));
}

void LinkChannel::close()
{
    m_device->disconnect(this);
    m_turn.stop();
    m_reader = nullptr;
    m_device->close();
}

void LinkChannel::readTurn()
{
    if (!isReading()) {
        m_turn.stop();
        return;
    }
    if (!m_hasLines)
        m_buffer += m_device->read(pieceBytes);
    if (m_isSkipping) {
        const int end = m_buffer.indexOf('\n');
        m_isSkipping = end < 0;
        m_buffer.remove(0, m_isSkipping ? static_cast<int>(m_buffer.size()) : end + 1);
    }
    handOutLines();
    if (!isReading() || m_hasLines || m_device->bytesAvailable() > 0)
        return;
    m_turn.stop();
    if (m_isAtEnd)
        Q_EMIT closed();
}

void LinkChannel::handOutLines()
{
    // Lines behind one that stops the reading wait for the next turn.
    int begin = 0;
    int end = 0;
    m_hasLines = false;
    while (!m_hasLines && (end = m_buffer.indexOf('\n', begin)) >= 0) {
        const bool hasReturn = end > begin && m_buffer.at(end - 1) == '\r';
        const QByteArray line = m_buffer.mid(begin, end - begin - (hasReturn ? 1 : 0));
        begin = end + 1;
        m_lastLine.start();
        m_hasLines = !handOut(line);
    }
    m_buffer.remove(0, begin);
    if (!m_hasLines && m_buffer.size() > maxLineLength + 1) {
        const QByteArray line = m_buffer.left(maxLineLength + 1);
        m_buffer.clear();
        m_isSkipping = true;
        m_hasLines = !handOut(line);
    }
}

// False when no more lines are wanted in this turn.
bool LinkChannel::handOut(const QByteArray &line)
{
    const Reader reader = m_reader; // which may set another one, or close this channel
    return reader(line) && isReading();
}

} // namespace manikinlink
