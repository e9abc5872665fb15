// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_MANIKINFEED_H
#define CPRVIEWER_MANIKINFEED_H

#include <CPRData.h>
#include <manikinlog/ManikinLogRecord.h>

#include <QObject>
#include <QString>

#include <memory>

class UnsavedSessions;

namespace manikinlink {
class LinkStream;
}

namespace manikinsim {
struct Scenario;
}

/// One session of one manikin of a class: its records, as they come, and its journal.
class ManikinFeed : public QObject {
    Q_OBJECT

public:
    /// As manikinlink::LinkStream::State. A link can be bad before the session has begun, too.
    enum State {
        Ready, ///< the session has not begun
        Running,
        ManikinLost, ///< the sender has lost its manikin
        Silent, ///< the sender has sent nothing for 10 s
        Gone, ///< the way to the sender is closed
        Ended ///< ended() has come, and the session was not resumed
    };
    Q_ENUM(State)

    /// Of a link.
    struct Quality {
        int lost = 0; ///< batches of records that never came
        int delay = -1; ///< ms from the sender to here; -1 where there is no link
    };

    /// A rescuer on a simulated manikin, who waits for start(). With \a speed 2 time runs twice as
    /// fast. \a unsaved, which has to outlive the feed, tells where the journal lies.
    static std::unique_ptr<ManikinFeed> simulated(const manikinsim::Scenario &scenario,
                                                  quint64 seed, double speed,
                                                  const UnsavedSessions *unsaved);
    /// What comes over a link. \a stream belongs to its hub and is deleted with the feed, if it is
    /// still there. A journal that a killed viewer has left of the same session is continued.
    static std::unique_ptr<ManikinFeed> linked(manikinlink::LinkStream *stream,
                                               const UnsavedSessions *unsaved);
    ~ManikinFeed() override;

    /// Lives as long as the feed.
    virtual CPRData *session() const = 0;
    virtual State state() const = 0;
    /// The session's name in UnsavedSessions; empty when it has not begun, or is not journalled.
    virtual QString target() const = 0;
    /// Of the manikin; over a link its id until it has told the name.
    virtual QString name() const = 0;
    virtual Quality quality() const { return {}; }
    /// The session ends at its planned length without being told.
    virtual bool endsByItself() const { return false; }
    /// It was told to start, and the session has not begun yet. Only a manikin over a link needs
    /// time for it.
    virtual bool isStarting() const { return false; }
    /// Starts a session that is Ready.
    virtual void start() = 0;
    /// Ends it; ended() comes. Over a link that takes up to 10 s, for what the manikin still sends:
    /// its end, statistics and scores.
    virtual void stop() = 0;
    /// stop() was too early, and can be taken back.
    virtual bool canResume() const { return false; }
    virtual void resume() { }
    /// Plays what comes before the session time \a msecs at once; only a simulated manikin can.
    virtual void advanceTo(qint64 msecs) { Q_UNUSED(msecs) }
    /// Lets \a entry, a learner, a remark or its removal, come in now: into the journal, then into
    /// the session. Nothing after closeJournal().
    virtual void insert(const manikinlog::Record::Entry &entry) = 0;
    /// The session is over: nothing comes to its journal any more. With \a isSaved the journal is
    /// deleted, as the session is in an archive or there is nothing in it; else it stays, and the
    /// viewer offers it later.
    virtual void closeJournal(bool isSaved) = 0;

Q_SIGNALS:
    /// state(), name(), quality(), isStarting() or canResume().
    void changed();
    /// No more records come, unless the session is resumed.
    void ended();
    /// For people; empty when the last one is over.
    void problem(const QString &text);

protected:
    ManikinFeed() = default;
};

#endif
