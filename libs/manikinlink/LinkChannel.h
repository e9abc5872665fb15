// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_LINKCHANNEL_H
#define MANIKINLINK_LINKCHANNEL_H

#include "manikinlink/LinkText.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QIODevice>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace manikinlink {

/// The receiver's end of one connection: it pulls lines out of the device, a piece each turn of
/// the event loop, so that a flood waits in the sender and every channel gets its turn.
class LinkChannel final : public QObject {
    Q_OBJECT

public:
    /// Called with each line, without its end; a line that is too long comes cut, yet longer than
    /// any line may be. False: no more lines in this turn.
    using Reader = std::function<bool(const QByteArray &line)>;

    /// \a device is open and sequential. \a canReturn: a sender whose connection broke can come
    /// back.
    LinkChannel(std::unique_ptr<QIODevice> device, bool canReturn, QObject *parent);
    ~LinkChannel() override;

    /// From now on \a reader gets the lines; without one nothing is read, and the sender waits.
    void setReader(Reader reader);
    /// While paused nothing is read, and the sender waits.
    void setPaused(bool isPaused);
    /// Sends it if the device can be written. Never waits for a sender that does not read: when
    /// 4096 bytes of answers wait for one, further ones are dropped.
    void answer(const LinkText::Answer &answer);
    /// Ends the connection: closed() does not come any more. What was answered still goes out.
    void close();
    /// As it was made: false for a pipe, which nobody can open again.
    bool canReturn() const { return m_canReturn; }
    /// Ms since the last line; 0 while nothing is read.
    qint64 silentMs() const;

Q_SIGNALS:
    /// The sender has closed, and its last line has been read.
    void closed();

private:
    void readTurn();
    void handOutLines();
    bool handOut(const QByteArray &line);
    bool isReading() const { return m_reader && !m_isPaused; }

    std::unique_ptr<QIODevice> m_device;
    Reader m_reader;
    QByteArray m_buffer; // read, and not yet handed out
    QByteArray m_unsent; // answers that the sender has not made room for
    bool m_hasLines = false; // in m_buffer, for the next turn
    bool m_isSkipping = false; // the rest of a line that is too long
    bool m_canReturn;
    bool m_isPaused = false;
    bool m_isAtEnd = false;
    QTimer m_turn;
    QElapsedTimer m_lastLine;
};

} // namespace manikinlink

#endif
