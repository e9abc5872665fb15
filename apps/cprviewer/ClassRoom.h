// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_CLASSROOM_H
#define CPRVIEWER_CLASSROOM_H

#include "ClassManikin.h"
#include "SessionWriter.h"

#include <sessionreview/LiveClass.h>

#include <QAbstractListModel>
#include <QElapsedTimer>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqml.h>

#include <memory>
#include <vector>

class ClassList;

namespace cprquick {
class LibraryFolder;
}

namespace manikinlink {
class LinkHub;
class LinkStream;
} // namespace manikinlink

/// The manikins of a class that train at the same time, over links or simulated. A row each, with
/// the role manikin. Learners come from the class list; sessions that end go to the library.
class ClassRoom final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The viewer has it.")

    // clang-format off
    Q_PROPERTY(int     count     READ count     NOTIFY countChanged)
    /// How many sessions run, and how many could be started.
    Q_PROPERTY(int     running   READ running   NOTIFY statesChanged)
    Q_PROPERTY(int     startable READ startable NOTIFY statesChanged)
    /// No session runs, and none waits to be saved.
    Q_PROPERTY(bool    isIdle    READ isIdle    NOTIFY statesChanged)
    /// How many there can be.
    Q_PROPERTY(int     most      READ most      CONSTANT)
    /// Where it listens, for people; empty while it does not.
    Q_PROPERTY(QString addresses READ addresses NOTIFY addressesChanged)
    /// Somebody looks: figures are read.
    Q_PROPERTY(bool    isWatched READ isWatched WRITE setWatched NOTIFY isWatchedChanged)
    // clang-format on

public:
    static constexpr int maxCount = 12; // one key each, 1 to 9 and three more; tiles on one screen

    /// None of them is owned.
    ClassRoom(ClassList *list, const UnsavedSessions *unsaved,
              const cprquick::LibraryFolder *library, QObject *parent = nullptr);
    /// Sessions that run, or wait to be saved, stay in their journals.
    ~ClassRoom() override;

    // clang-format off
    int  rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int  count() const { return static_cast<int>(m_places.size()); }
    int  running() const;
    int  startable() const;
    int  most() const { return maxCount; }
    bool isIdle() const;
    QString addresses() const;
    bool isWatched() const { return m_isWatched; }
    void setWatched(bool isWatched);
    // clang-format on

    /// The manikin of \a row; null when there is none. Stays the same while the manikin is there.
    Q_INVOKABLE ClassManikin *at(int row) const;
    /// Adds a simulated manikin for each of \a scenarios, with the seeds \a seed and up. False,
    /// with a problem, when one is not known or there are too many. With speed 0 time stands still.
    Q_INVOKABLE bool simulate(const QStringList &scenarios, int seed, double speed = 1);
    /// Lets in manikins that send to \a address, manikinlink::LinkAddress as text; each comes with
    /// the next learner of the list. False, with a problem, when that does not work.
    Q_INVOKABLE bool listen(const QString &address);
    /// Starts the session of \a row. On a simulated manikin whose session has ended the next one
    /// begins, with the next learner of the list. Nothing where a session runs or is starting
    /// already.
    Q_INVOKABLE void start(int row);
    Q_INVOKABLE void startAll();

    /// Ends a session that runs. It goes to the library, or stays in its journal where none is
    /// chosen; while it can be resumed, some seconds later. Then it counts for its learners.
    Q_INVOKABLE void stop(int row);
    Q_INVOKABLE void stopAll();

    /// Takes the end back.
    Q_INVOKABLE void resume(int row);
    /// Names the learner; the one who was called before, and has not begun, is next again.
    Q_INVOKABLE void assign(int row, const QString &name);
    /// Takes a manikin away on which no session runs; what has ended is saved. One over a link
    /// comes back as long as its sender is there.
    Q_INVOKABLE void remove(int row);
    /// Ends all sessions, and saves those that have ended, without waiting whether an end is taken
    /// back. isIdle tells when that is done.
    Q_INVOKABLE void finish();
    /// Starts all, and plays \a secs seconds of them at once.
    Q_INVOKABLE void advance(double secs);

Q_SIGNALS:
    void countChanged();
    void statesChanged();
    void isWatchedChanged();
    void addressesChanged();
    /// Other journals than before are left: a session stays in its own, or goes on in one that a
    /// killed viewer has left.
    void left();
    /// For people.
    void problem(const QString &text);

private:
    struct Place {
        std::unique_ptr<ClassManikin> manikin;
        int number = 0; // of the manikin, from 0; no other one gets it
        QString scenario; // of a simulated one; else empty
        QString id; // of one over a link; else empty
        int seed = 0;
        double speed = 1;
    };
    // What is to be saved.
    struct Waiting {
        QPointer<ClassManikin> manikin; // which may have another session by then, or be gone
        std::shared_ptr<ManikinFeed> feed;
    };

    Place &addPlace(int row);
    int rowFor(const QString &id) const;
    QString freeName() const;
    bool begin(Place &place, const QString &assigned);
    void addStream(manikinlink::LinkStream *stream);
    void giveBack(const QString &learner);
    void planAnew();
    bool canStart(const Place &place) const;
    void callLearner(ClassManikin &manikin);
    QStringList busyLearners() const;
    void end(ClassManikin *manikin);
    void store(ClassManikin *manikin);
    void saveNext();
    void finishSaving(const SessionExport::Written &written);
    void leave(const Waiting &waiting);
    void tick();
    void readStates();

    ClassList *m_list; // not owned
    const UnsavedSessions *m_unsaved; // not owned
    const cprquick::LibraryFolder *m_library; // not owned
    std::vector<Place> m_places;
    std::vector<std::unique_ptr<ClassManikin>> m_gone; // pages may still show them
    int m_numbers = 0; // given to manikins
    std::vector<Waiting> m_waiting; // the first one is being saved
    SessionWriter m_writer;
    std::unique_ptr<manikinlink::LinkHub> m_hub; // null until listen()
    sessionreview::FirstToHelp m_firstToHelp;
    QElapsedTimer m_clock;
    QTimer m_ticks; // runs while there is something to see
    QTimer m_takenOver; // until the streams that came last have their journals
    bool m_isWatched = false;
};

#endif
