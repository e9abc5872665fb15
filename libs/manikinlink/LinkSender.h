// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_LINKSENDER_H
#define MANIKINLINK_LINKSENDER_H

#include "manikinlink/LinkAddress.h"
#include "manikinlink/LinkText.h"
#include "manikinlog/ManikinLogRecord.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <cstddef>
#include <deque>
#include <functional>

class QIODevice;

namespace manikinlink {

/// Sends one session of one manikin to a receiver, and loses nothing of it on the way.
///
///     manikinlink::LinkSender sender(address, {manikin, program, session});
///     sender.open();
///     ...
///     sender.send({clock.elapsed(), manikinlog::messageOf(message)});  // from the link library
///     ...
///     sender.finish();                    // finished() comes when the receiver has everything
///
/// Records are gathered into batches, each of which is kept until the receiver has acknowledged it.
/// When the way breaks, it is tried again, after 200 ms, then longer, up to 5 s, and the receiver
/// says from which batch on it wants them. A line comes each second at least, so that the receiver
/// knows that the sender lives.
///
/// What is kept is bounded. A sender that is full takes no more, and says when it has room again:
/// records are dropped by nobody but the caller.
///
/// Needs an event loop. Used on one thread.
class LinkSender final : public QObject {
    Q_OBJECT

public:
    /// What has become of a record.
    enum class Result {
        Accepted, ///< it will be sent
        Full, ///< not accepted: too much waits for the receiver; spaceFreed() will come
        Refused ///< it cannot be sent, now or later: no line can hold it, or finish() was called
    };

    /// Bytes that are kept for a receiver that is away, unless setCapacity() says otherwise: more
    /// than an hour of a manikin.
    static constexpr qint64 usualCapacity = 16 * 1024 * 1024;
    /// The least capacity, in bytes: what is on its way to a receiver that is there has to find
    /// room.
    static constexpr qint64 leastCapacity = 256 * 1024;

    /// \a stream names the manikin, this sender and the session; each is a token, see
    /// RecordText::isToken(), and the session's is new for each session.
    LinkSender(const LinkAddress &address, const manikinlog::Stream &stream,
               QObject *parent = nullptr);
    /// What the receiver does not have is lost.
    ~LinkSender() override;

    /// At most so many bytes are kept, but never less than leastCapacity.
    void setCapacity(qint64 bytes) { m_capacity = qMax(bytes, leastCapacity); }
    /// Beats bear the time of \a clock, in ms since the session's start, instead of that of the
    /// last record and what has passed since.
    void setClock(std::function<qint64()> clock) { m_clock = std::move(clock); }

    /// Whether \a address can be tried at all: false, and the reason in \a error (may be null),
    /// when the way there is not safe or its files cannot be read.
    static bool canReach(const LinkAddress &address, QString *error = nullptr);
    /// Begins to connect, and tries again until it is connected. Nothing is sent before; records
    /// can be given already. After refused() it begins anew. When canReach() is false, finished()
    /// comes at once.
    void open();
    /// Takes \a record, whose time is in ms since the session's start; one before that of the last
    /// record is taken for that. The stream and the batches of a log that came over a link are
    /// accepted and left out. Why no line can hold the record is in errorString().
    Result send(const manikinlog::Record &record);
    /// The manikin cannot be reached, or can be again. The receiver is told, and once it is found,
    /// continues the session.
    void lost() { setLost(true); }
    void found() { setLost(false); }
    /// Nothing more comes. What is kept is sent, and finished() says how that ended; not before
    /// open(), nor after refused(). A record is refused from now on.
    void finish();
    /// Does not wait any longer; finished() comes at once, with false.
    void abandon();

    /// The receiver has answered, and the way to it is open.
    bool isConnected() const { return m_state == State::Ready || m_state == State::Closing; }
    /// What went wrong last, such as why it is not connected; empty when nothing did.
    QString errorString() const { return m_errorString; }
    /// Bytes of batches that the receiver has not acknowledged.
    qint64 keptBytes() const { return m_keptBytes; }

Q_SIGNALS:
    /// isConnected() has changed.
    void connectedChanged();
    /// The instructor lets the session begin. A way without answers says so at once. May come more
    /// than once.
    void started();
    /// The instructor ends the session: what the manikin still tells is to be sent, then finish().
    void stopWanted();
    /// The receiver does not want this session, and has said why, in one line for people. Nothing
    /// is tried any more, and finished() comes with abandon().
    void refused(const QString &reason);
    /// There is room again, after a record found none.
    void spaceFreed();
    /// Comes once, at the end. \a isWhole: the receiver has every record; else errorString() says
    /// why not.
    void finished(bool isWhole);

private:
    enum class State {
        Idle, // before open()
        Waiting, // to try again
        Greeting, // the first line is on its way, or its answer
        Ready, // batches go
        Closing, // all has gone; the receiver closes
        Ended
    };
    struct Batch {
        quint32 number;
        qint64 msecs; // when it begins
        QByteArray text; // its lines
    };

    void setState(State state, int timeoutMs);
    void onTimeout();
    void connectToReceiver();
    template <typename Socket> Socket *makeSocket();
    void openBroker();
    void openStandardOutput();
    void greet();
    void readAnswers();
    void handle(const LinkText::Answer &answer);
    void acknowledge(quint32 batch);
    void becomeReady(quint32 batch);
    void setLost(bool isLost);
    void pump();
    bool sendBatches();
    void forgetUpTo(quint32 batch);
    bool say(LinkText::Control::Kind kind, qint64 msecs);
    bool write(const char *data, qint64 size);
    qint64 now() const;
    void onBroken(const QString &reason);
    void closeChannel();
    void end(bool isWhole);

    const LinkAddress m_address;
    const manikinlog::Stream m_stream;
    QString m_name; // of the manikin, for people; as the last record says
    std::function<qint64()> m_clock; // may be empty
    State m_state = State::Idle;
    QIODevice *m_channel = nullptr; // a child, while there is a way
    QTimer m_timer; // of the state
    int m_pauseMs; // before the next try
    QElapsedTimer m_sinceWritten;
    QString m_errorString;

    std::deque<Batch> m_kept; // until they are acknowledged
    qint64 m_keptBytes = 0;
    qint64 m_capacity = usualCapacity;
    bool m_isFull = false; // a record found no room
    std::size_t m_next = 0; // of m_kept, to be written
    qint64 m_offset = 0; // in its text
    quint32 m_lastBatch = 0;
    bool m_isBatchOpen = false; // records can still be added to the last one
    QElapsedTimer m_sinceBatch;
    QTimer m_batchEnd; // where a batch is a message: until it is sent
    quint32 m_writtenBatch = 0; // the receiver may have it
    quint32 m_acknowledged = 0;
    qint64 m_msecs = 0; // of the last record
    QElapsedTimer m_sinceMsecs;

    bool m_isLost = false; // the manikin
    bool m_saidLost = false; // the receiver may think so
    bool m_isFinishing = false;
    bool m_saidBye = false; // to this channel
    QString m_loss; // why the receiver cannot get every record; empty when it can
};

} // namespace manikinlink

#endif
