// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_LINKSTREAM_H
#define MANIKINLINK_LINKSTREAM_H

#include "manikinlink/LinkText.h"
#include "manikinlog/ManikinLogRecord.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

#include <array>
#include <functional>
#include <optional>

namespace manikinlog {
class JournalSync;
}

namespace manikinlink {

class LinkChannel;
class LinkHub;

/// One session of one manikin as it is received. It survives its channels: a sender that comes
/// back goes on where the receiver is, and nothing is played twice.
///
/// The hub makes it and is its parent; a LinkSession deletes it with itself.
class LinkStream final : public QObject {
    Q_OBJECT

public:
    /// How the session is.
    enum State {
        Ready, ///< the manikin is there, and its session has not started
        Running, ///< the session has started
        ManikinLost, ///< the sender is there and has lost its manikin
        Silent, ///< no line for 10 s
        Gone, ///< no channel; the sender may come back
        Ended ///< nothing more comes
    };
    Q_ENUM(State)

    /// What the link does to the session.
    struct Quality {
        qint64 batches = 0; ///< that were begun
        qint64 lostBatches = 0; ///< that never came
        qint64 repeatedBatches = 0; ///< that came again
        qint64 badLines = 0; ///< that mean nothing
        /// How much later the last line came than it was sent, in ms above the smallest such time
        /// of the last minute: what the way adds, whatever the clocks say.
        qint64 delayMs = 0;
    };

    /// Where the sink is.
    struct Position {
        quint32 batch = 0; ///< the last one that was begun; 0 before the first
        qint64 records = 0; ///< of that batch, which the sink has
        qint64 msecs = 0; ///< of the last record, ms since the sender's session began
        CPRData::CprState state = CPRData::CPR_UNINITIALIZED; ///< of the session
        bool hasStarted = false; ///< the session was in CPR_START
        QString name; ///< the manikin's, or empty

        /// The session is in \a newState.
        void setState(CPRData::CprState newState)
        {
            state = newState;
            hasStarted |= (newState == CPRData::CPR_START);
        }
    };

    /// Gets each record, with a time that is not before that of the last one. False when it could
    /// keep the record nowhere. It may end, refuse and pause the stream, but not delete it.
    using Sink = std::function<bool(const manikinlog::Record &record)>;

    ~LinkStream() override;

    /// Manikin, sender and session.
    const manikinlog::Stream &ids() const { return m_ids; }
    /// The manikin's id.
    QString manikin() const { return m_ids.manikin; }
    /// The sender's id.
    QString sender() const { return m_ids.sender; }
    /// The session's id.
    QString sessionId() const { return m_ids.session; }
    /// The manikin's name; its id until it has told the name.
    QString name() const { return m_position.name.isEmpty() ? m_ids.manikin : m_position.name; }
    /// How the session is.
    State state() const { return m_state; }
    /// The sender has said bye.
    bool isWhole() const { return m_isWhole; }
    /// What the link has done to the session so far.
    Quality quality() const { return m_quality; }
    /// Where the sink is.
    const Position &position() const { return m_position; }
    /// The last batch of which all has come; 0 before the first.
    quint32 completeBatch() const;
    /// The hub's, for the journals of all streams; null when the hub is gone.
    manikinlog::JournalSync *journalSync() const;

    /// From now on \a sink gets the records that come behind \a position: that of the end of a
    /// journal that goes on, or {} for a new session. Nothing is read before; the sender waits for
    /// its welcome.
    void setSink(Sink sink, const Position &position);
    /// While paused nothing is read, and the sender waits.
    void setPaused(bool isPaused);
    /// The disk has the batches up to \a batch: the sender may forget them.
    void acknowledge(quint32 batch);
    /// Gives the sink a record of the receiver, at the time of the last one, that belongs to no
    /// batch of the sender. False when there is no sink yet, or it could not keep the record.
    bool insert(const manikinlog::Record::Entry &entry);

    /// The session may begin. It is said again to a sender that comes back.
    void start();
    /// The sender should end the session: it sends what the manikin still tells, and then bye. It
    /// is said again to a sender that comes back.
    void stop();
    /// Ends the stream as far as it has come, and closes its connection.
    void end();
    /// The same, and tells the sender and the hub's host why; see LinkHub::refused().
    void refuse(const QString &reason);

Q_SIGNALS:
    void stateChanged();
    void nameChanged();
    /// At most once a second.
    void qualityChanged();
    /// completeBatch() has grown.
    void batchCompleted();
    /// Comes once, behind the last record. The hub has forgotten the stream, which stays.
    void ended();

private:
    friend class LinkHub;

    LinkStream(const manikinlog::Stream &ids, LinkHub *hub);

    void attach(LinkChannel *channel);
    bool isAlive() const;
    void tick();
    bool parse(const QByteArray &line);
    bool handle(const LinkText::Control &control);
    bool handle(const manikinlog::Record &record);
    bool handleBatch(const manikinlog::Batch &batch);
    void manikinFound();
    bool give(const manikinlog::Record &record);
    void lookAt(const manikinlog::Record &record);
    void measureDelay(qint64 msecs);
    void welcome();
    void answer(LinkText::Answer::Kind kind, quint32 batch = 0);
    bool countBadLine(const QString &error);
    void finish(bool isWhole);
    void updateState();
    void channelClosed();

    static constexpr int delaySlots = 6;

    const manikinlog::Stream m_ids;
    const QPointer<LinkHub> m_hub;
    QPointer<LinkChannel> m_channel; // owned
    Sink m_sink;
    State m_state = Ready;
    Position m_position;
    quint32 m_lineBatch = 0; // of the line read last, on this channel
    qint64 m_toSkip = 0; // records of m_lineBatch that were given before; -1 for all
    bool m_isWhole = false;
    bool m_isManikinLost = false;
    bool m_isPaused = false;
    bool m_wantsStart = false;
    bool m_wantsStop = false;
    qint64 m_badLinesOfChannel = 0;
    Quality m_quality;
    Quality m_announced; // by qualityChanged()
    std::array<std::optional<qint64>, delaySlots> m_leastDelays; // newest first
    QElapsedTimer m_delaySlot; // since the newest began
    QElapsedTimer m_clock; // since the stream began
    QElapsedTimer m_gone; // since there is no channel
};

} // namespace manikinlink

#endif
