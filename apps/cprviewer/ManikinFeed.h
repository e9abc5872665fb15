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
    enum State {
        Ready, ///< no record of the session has come
        Running,
        ManikinLost, ///< the sender has lost its manikin
        Silent, ///< the sender has sent nothing for a while
        Gone, ///< the way to the sender is closed
        Ended
    };
    Q_ENUM(State)

    /// Of a link.
    struct Quality {
        int lost = 0; ///< packets that never came
        int delay = -1; ///< ms from the sender to here; -1 where there is no link
    };

    /// A rescuer on a simulated manikin, who waits for start(). With \a speed 2 time runs twice as
    /// fast. \a unsaved, which has to outlive the feed, tells where the journal lies.
    static std::unique_ptr<ManikinFeed> simulated(const manikinsim::Scenario &scenario,
                                                  quint64 seed, double speed,
                                                  const UnsavedSessions *unsaved);
    /// What comes over a link. \a stream is not owned.
    static std::unique_ptr<ManikinFeed> linked(manikinlink::LinkStream *stream,
                                               const UnsavedSessions *unsaved);
    ~ManikinFeed() override;

    /// Lives as long as the feed.
    virtual CPRData *session() const = 0;
    virtual State state() const = 0;
    /// Of the manikin; empty when it has none.
    virtual QString name() const = 0;
    virtual Quality quality() const { return {}; }
    /// The session ends at its planned length without being told.
    virtual bool endsByItself() const { return false; }
    /// It was told to start, and no record of the session has come yet. Only a manikin over a link
    /// needs time for it.
    virtual bool isStarting() const { return false; }
    /// Starts a session that is Ready.
    virtual void start() = 0;
    /// Ends it; ended() comes, later over a link.
    virtual void stop() = 0;
    /// stop() was too early, and can be taken back.
    virtual bool canResume() const { return false; }
    virtual void resume() { }
    /// Plays what comes before the session time \a msecs at once; only a simulated manikin can.
    virtual void advanceTo(qint64 msecs) { Q_UNUSED(msecs) }
    /// Lets \a entry, a learner, a remark or its removal, come in now.
    virtual void insert(const manikinlog::Record::Entry &entry) = 0;
    /// The session is over: nothing comes to its journal any more. The journal is deleted if the
    /// session \a isSaved, or is not wanted; else it stays, and the viewer offers it later.
    virtual void closeJournal(bool isSaved) = 0;

Q_SIGNALS:
    /// state(), name(), quality(), isStarting() or canResume().
    void changed();
    /// No more records come, unless the session is resumed.
    void ended();
    /// For people.
    void problem(const QString &text);

protected:
    ManikinFeed() = default;
};

#endif
