// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_CLASSMANIKIN_H
#define CPRVIEWER_CLASSMANIKIN_H

#include "ManikinFeed.h"
#include "cprquick/LiveFigures.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqml.h>

#include <memory>

/// A place of a class: a manikin, the learner who trains on it, and the session of now.
class ClassManikin final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The room has them.")

    // clang-format off
    /// Null before the first.
    Q_PROPERTY(CPRData *session     READ session    NOTIFY sessionChanged)
    /// Of the session.
    Q_PROPERTY(cprquick::LiveFigures *figures READ figures CONSTANT)
    /// What the manikin is called, in front of people.
    Q_PROPERTY(QString  name        READ name       NOTIFY stateChanged)
    /// Who trains, in front of people; empty while nobody is named.
    Q_PROPERTY(QString  learner     READ learner    NOTIFY learnerChanged)
    Q_PROPERTY(State    state       READ state      NOTIFY stateChanged)
    /// How long it has been in that state, whole seconds.
    Q_PROPERTY(int      stateSecs   READ stateSecs  NOTIFY tickChanged)
    /// The session has begun and has not ended; its link may be bad, or gone.
    Q_PROPERTY(bool     isRunning   READ isRunning  NOTIFY stateChanged)
    /// The manikin was told to start, and has not answered yet.
    Q_PROPERTY(bool     isStarting  READ isStarting NOTIFY stateChanged)
    /// The session is over, and the next one can begin on the same manikin.
    Q_PROPERTY(bool     isReusable  READ isReusable NOTIFY stateChanged)
    /// The end can be taken back.
    Q_PROPERTY(bool     canResume   READ canResume  NOTIFY stateChanged)
    /// Over a link; lost (batches of records) and delay (ms) are its quality, 0 and -1 without one.
    Q_PROPERTY(bool     isLinked    READ isLinked   NOTIFY stateChanged)
    Q_PROPERTY(int      lost        READ lost       NOTIFY stateChanged)
    Q_PROPERTY(int      delay       READ delay      NOTIFY stateChanged)
    /// Seconds up to the planned end; -1 where none is planned, or after the end.
    Q_PROPERTY(int      remaining   READ remaining  NOTIFY tickChanged)
    /// Of all that train, this one needs help first.
    Q_PROPERTY(bool     isFirst     READ isFirst    NOTIFY isFirstChanged)
    /// Where the session is.
    Q_PROPERTY(Storage  storage     READ storage    NOTIFY stateChanged)
    // clang-format on

public:
    /// As ManikinFeed::State.
    enum State {
        Ready = ManikinFeed::Ready,
        Running = ManikinFeed::Running,
        ManikinLost = ManikinFeed::ManikinLost,
        Silent = ManikinFeed::Silent,
        Gone = ManikinFeed::Gone,
        Ended = ManikinFeed::Ended
    };
    Q_ENUM(State)

    enum Storage {
        InJournal,
        BeingSaved,
        InLibrary,
        Left, ///< in its journal, which the viewer offers
        Nowhere ///< nothing was recorded
    };
    Q_ENUM(Storage)

    explicit ClassManikin(QObject *parent);
    ~ClassManikin() override;

    // clang-format off
    CPRData  *session() const          { return m_feed ? m_feed->session() : nullptr; }
    cprquick::LiveFigures *figures()   { return &m_figures; }
    QString    name() const;
    QString    learner() const;
    State      state() const           { return m_state; }
    int        stateSecs() const;
    bool       isRunning() const       { return m_state == Running || (m_state != Ready && m_state != Ended && hasBegun()); }
    bool       isStarting() const      { return m_feed && m_feed->isStarting(); }
    bool       isReusable() const      { return m_state == Ended && m_feed && m_feed->endsByItself(); }
    bool       canResume() const       { return m_feed && m_storage == InJournal && m_feed->canResume(); }
    bool       isLinked() const        { return delay() >= 0; }
    int        lost() const            { return m_feed ? m_feed->quality().lost : 0; }
    int        delay() const           { return m_feed ? m_feed->quality().delay : -1; }
    int        remaining() const       { return m_remaining; }
    bool       isFirst() const         { return m_isFirst; }
    Storage    storage() const         { return m_storage; }
    // clang-format on

    /// Names the learner, also in the middle of a session; from then on what comes counts for that
    /// one. Nothing for a name that cannot be stored, or after the end.
    Q_INVOKABLE void assign(const QString &name);
    /// As Viewer::addRemark().
    Q_INVOKABLE CPREventBase *addRemark(const QString &text, int msecs);

    /// The session of now; the one before goes, and who was assigned to it. Null for none.
    void setFeed(std::shared_ptr<ManikinFeed> feed);
    const std::shared_ptr<ManikinFeed> &feed() const { return m_feed; }
    /// Session time has gone on: something was recorded, if only up to here.
    bool hasBegun() const;
    /// All who train or have trained in the session, as they are stored; before it knows any, the
    /// one who is to train.
    QStringList learners() const;
    /// Nobody is to train here any more. Who was; empty when nobody was, or the session knows.
    QString releaseLearner();
    /// How long the session is to last, ms; 0 for as long as it does by itself.
    void setPlanned(int msecs);
    void setFirst(bool isFirst);
    void setStorage(Storage storage);
    /// Time goes on: reads the clocks, and ends a session whose time is over, as long as its
    /// manikin can hear of it. To be called some times a second.
    void tick();

Q_SIGNALS:
    void sessionChanged();
    void learnerChanged();
    void stateChanged();
    void tickChanged();
    void isFirstChanged();
    void ended();
    /// The learner \a name was to train here, but the manikin has named another one.
    void givenBack(const QString &name);
    /// For people.
    void problem(const QString &text);

private:
    void readState();
    void nameLearner();

    std::shared_ptr<ManikinFeed> m_feed;
    cprquick::LiveFigures m_figures;
    QString m_assigned; // who is to train, until the session knows
    bool m_isNaming = false; // nameLearner() will be called
    State m_state = Ready;
    QElapsedTimer m_stateClock; // since the state began
    int m_stateSecs = 0;
    int m_plannedMs = 0;
    int m_remaining = -1;
    bool m_isFirst = false;
    Storage m_storage = InJournal;
};

#endif
