// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTS_H
#define CPREVENTS_H

// Complete, so that their pointers are registered with the meta-type system.
#include "CPRDataBase.h"
#include "CPREventBase.h"
#include "CPREventCompression.h"
#include "CPREventInactivityCPR.h"
#include "CPREventVentilation.h"
#include "CPRGuidelines.h"

#include <QHash>
#include <QList>
#include <QPointer>
#include <QVector>

#include <vector>

class CPREventSessionInfo;
class CPREventSessionScore;
class CPREventSessionStatistics;
class EventSequence;

/// The time-ordered list of a session's events, and the router that makes events out of manikin
/// messages.
///
/// The list owns its events. Beside it stand three summary events (session info, statistics,
/// score): they survive reset() and are replaced by initialize(), and they are in the list only
/// when they were put there.
///
/// The host may delete any event at any time, also inside a signal, with one exception: a standing
/// event must not be deleted inside a signal of its own. An event that is deleted leaves every list
/// by itself; a standing event that is deleted is replaced by a new one. initialize() may be called
/// inside any signal: the old standing events leave the lists at once and are deleted later.
class CPRDATA_EXPORT CPREvents : public CPRDataBase {
    Q_OBJECT

    // clang-format off
    /// The standing event about manikin, learners and times; its own type is CPREventSessionInfo.
    Q_PROPERTY(CPREventBase  *cprSessionInfo       READ cprSessionInfo       NOTIFY cprSessionInfoChanged)
    /// The standing event with the manikin's statistics (CPREventSessionStatistics).
    Q_PROPERTY(CPREventBase  *cprSessionStatistics READ cprSessionStatistics NOTIFY cprSessionStatisticsChanged)
    /// The standing event with scores and advices (CPREventSessionScore).
    Q_PROPERTY(CPREventBase  *cprSessionScore      READ cprSessionScore      NOTIFY cprSessionScoreChanged)
    /// The session's active guideline set.
    Q_PROPERTY(CPRGuidelines *cprGuidelines        READ cprGuidelines        CONSTANT)
    // clang-format on

public:
    /// Columns of a CSV export.
    using ParameterMapList_t = CPREventBase::ParameterMapList_t;

    /// An empty list with new standing events. \a guidelines are not owned.
    CPREvents(CPRGuidelines *guidelines, CPRData *cprData);
    /// A copy of every event, the standing ones included, which stand in the list.
    CPREvents(const CPREvents &other, CPRGuidelines *guidelines, CPRData *cprData);
    ~CPREvents() override;

    /// Empties the list and replaces the standing events; the manikin's name and the learners are
    /// kept. Whatever is announced meanwhile, the new standing events are in place.
    void initialize() override;
    /// Empties the list for a new session; emits eventsCleared(). The session info stays in it.
    void reset() override;
    /// Goes on with a session: the scores have to arrive anew.
    void resume();

    /// Routes a manikin message; true when an event took it. False for null.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    /// Inserts \a event in time order into the list and the lists of its tags, and takes it over.
    /// One that is listed already stays where it is. With \a doSignals it is announced, in both
    /// cases. Null and a standing event of another list are left alone.
    void addEvent(CPREventBase *event, bool doSignals);
    /// Does what the kind of event (null: nothing) asks for: numbers compressions in their cycle,
    /// counts summary events, announces the standing ones.
    void handleEvent(CPREventBase *event);
    /// Announces \a event (null: nothing) by one signal, and the list through eventsChanged().
    void emitEvent(CPREventBase *event);
    /// Handles an event that \a a_Exists in the list; adds, handles and announces any other. Ends
    /// the session's receiving state.
    void finalizeIncomingEvent(bool a_Exists, CPREventBase *event);

    /// @{
    /// Take a compression or ventilation that the link library has decoded: \a start in ms of
    /// session time, \a rate per minute, which the wave takes over. Ignored once the session has
    /// ended.
    void incomingCompressionEvent(quint32 start, qint32 rate,
                                  const bls_2010::CommonDefs::CompressionEvent_t &compression);
    void incomingVentilationEvent(quint32 start, qint32 rate,
                                  const bls_2010::CommonDefs::VentilationEvent_t &ventilation);
    /// @}
    /// Takes a running pause of \a secs s: stretches the last pause, or adds one at \a start (ms).
    /// The compression rate becomes 0. Ignored once the session has ended.
    void incomingInactivityTime(quint32 start, qint32 secs);
    /// Cuts or removes the pauses that reach past \a msec (ms of session time).
    void removeInactivityEventAfter(int msec);
    /// @{
    /// Count statistics and scores that the host has computed itself and stored in the standing
    /// event, which is placed at the session time and not listed.
    void incomingSessionStatistics();
    void incomingSessionScores();
    /// @}

    /// Enters an event for a connected AED at the session time.
    void aedDetected(CPREventBase::AEDTypes type);
    /// Enters an AED event with \a parameters at the session time.
    void aedEvent(const QHash<CPREventBase::ParameterType, QVariant> &parameters);
    /// Enters an ECG rhythm at the session time; AED_NoECGRhythm is refused.
    void cprdEvent(CPREventBase::AEDEcgRhythms rhythm, CPREventBase::AEDEcgRhythms second);
    /// Enters an event named \a a_EventId at the session time; the name
    /// "Morvane.Event.Deliver shock" enters a shock.
    void addUserEvent(const QString &a_EventId);

    /// @{
    /// Puts the session's scores and statistics, or its guidelines (nothing when the list has
    /// none), under one key into \a map for the host's telemetry. Other keys stay.
    /// docs/telemetry.md lists what is put there.
    void telemetryTrainingSessionScoreData(QMap<QString, QVariant> &map) const;
    void telemetryTrainingSessionGuidelineData(QMap<QString, QVariant> &map) const;
    /// @}

    /// @{
    /// The properties of the same names.
    CPREventBase *cprSessionInfo() const;
    CPREventBase *cprSessionStatistics() const;
    CPREventBase *cprSessionScore() const;
    CPRGuidelines *cprGuidelines() const { return m_guidelines; }
    /// @}
    /// @{
    /// The standing events by their own type; never null.
    CPREventSessionInfo *sessionInfo() const { return m_sessionInfo; }
    CPREventSessionStatistics *sessionStatistics() const { return m_sessionStatistics; }
    CPREventSessionScore *sessionScore() const { return m_sessionScore; }
    /// @}

    /// The CPR protocol of the session; with a single rescuer until the manikin tells another.
    bls_2010::CommonDefs::CprProtocolType mode() const { return m_cprProtocol; }
    /// Stores the protocol, in the session info too.
    void setCprProtocol(bls_2010::CommonDefs::CprProtocolType protocol);
    /// How many statistics and score events make the scores complete (4 unless changed); the
    /// count begins anew.
    void setScoresToReceive(int n);
    /// Exactly as many statistics and score events have come as setScoresToReceive() asks for.
    Q_INVOKABLE bool isScoresReady() const;
    /// Session time in ms of the message with this sequence number.
    int calculateSessionTime(int sequenceNumber) const;

    /// Every event in order; good until the list changes.
    const QList<CPREventBase *> &events() const;
    /// The events of \a a_Tag that lie at or after \a a_Time (ms) or last over it; all for -1.
    QList<CPREventBase *> events(CPREventBase::EventTag a_Tag, int a_Time) const;
    /// @{
    /// First, last, i-th event of a single tag; null when there is none.
    Q_INVOKABLE CPREventBase *first(CPREventBase::EventTag a_Tag) const;
    Q_INVOKABLE CPREventBase *last(CPREventBase::EventTag a_Tag) const;
    Q_INVOKABLE CPREventBase *at(CPREventBase::EventTag a_Tag, int a_Index) const;
    /// @}
    /// The first event of \a a_Tag that lasts over \a a_Time (ms), else the last; the first for 0.
    Q_INVOKABLE CPREventBase *atTime(CPREventBase::EventTag a_Tag, int a_Time) const;
    /// Number of events of a single tag; 0 for a mask of several.
    Q_INVOKABLE int count(uint a_Tag) const;
    /// The i-th event of the whole list; null outside.
    Q_INVOKABLE CPREventBase *at(int a_Index) const;

    /// Writes the document "eventList".
    void write(QXmlStreamWriter *writer) override;
    /// Replaces the list by the document's. Elements that are no known event are skipped with a
    /// warning.
    void read(QXmlStreamReader *reader) override;
    /// Writes the titles of a CSV export. Nothing when \a device is not writable.
    void writeHeader(QIODevice *device, const ParameterMapList_t &columns,
                     const QString &separator);
    /// Writes one CSV row: each parameter from the earliest event that holds it, followed by
    /// \a separator, and after each column \a separator once more. The doubled separator is what
    /// the readers of this export expect.
    void write(QIODevice *device, const ParameterMapList_t &columns, const QString &separator);

Q_SIGNALS:
    /// The session info has new values, or the learners have changed.
    void cprSessionInfoChanged();
    /// The statistics are complete; comes right before scoresReady().
    void cprSessionStatisticsChanged();
    /// A scoring has come, whether or not the statistics are complete.
    void cprSessionScoreChanged();
    /// An event for the interface's event list (TagCprGui), such as a shock or a new ECG rhythm.
    void cprGuiEventAdded(CPREventBase *event);
    /// An event of none of the kinds that have a signal of their own.
    void otherEventAdded(CPREventBase *event);
    /// Events were announced; one for a burst of them. Events that are added without signals, or
    /// leave the list, give none.
    void eventsChanged();
    /// By reset(): the events before it are gone, or go with the next turn of the event loop.
    void eventsCleared();
    /// Never emitted; kept under this name because hosts connect to it.
    void guidelinesCham_CategoryThresholdBasicnged();
    /// Statistics and scores are complete.
    void scoresReady();
    /// Passed on from the guideline set.
    void guidelinesChanged();
    /// A new pause. One that goes on is stretched without a signal.
    void inactivityCPREvent(CPREventInactivityCPR *event);
    /// A new compression, already listed and numbered.
    void compressionEvent(CPREventCompression *event);
    /// A new ventilation, already listed.
    void ventilationEvent(CPREventVentilation *event);
    /// The event has left the list and the lists of its tags, most likely because it is being
    /// destroyed: the pointer is good for comparing only. Not for what reset() and initialize()
    /// take out, which eventsCleared() tells of.
    void eventRemoved(CPREventBase *event);
    /// Times or parameters of a listed or standing event are others, whoever has changed them (but
    /// not by its params map); one for a burst of changes, 1 ms after the first of them.
    void eventChanged(CPREventBase *event);

public Q_SLOTS:
    /// @{
    /// Thresholds of the score categories, percent; stored with the scores for the host's use. They
    /// are 50 and 75 unless changed.
    void setCategoryThresholdBasic(int a_Value);
    void setCategoryThresholdAdvanced(int a_Value);
    /// @}

private:
    using EventList = QList<CPREventBase *>;

    friend class CPREventBase; // an event says when it is deleted or changed

    void connectSignals();
    void connectStandingEvents();
    void unlistEvent(CPREventBase *event);
    void retire(CPREventBase *event);
    bool isStanding(const CPREventBase *event) const;
    void enter(CPREventBase *event);
    void forgetEvent(CPREventBase *event);
    void reportChange(CPREventBase *event);
    template <typename Call> void forListsOf(const CPREventBase &event, Call call);
    void storeEarlierEnd(const CPREventBase *event);
    void announceChanges();
    const EventSequence *tagList(uint tag) const;
    CPREventCompression *lastCompression() const;
    bool hasEnded() const;
    void setReceiving(bool receiving);

    template <typename Event, typename... More> Event *make(int msecs, More... more);
    CPREventBase *eventFor(bls_2010::RMessage *msg);
    CPREventBase *remoteControlEventFor(bls_2010::RMessage *msg);
    CPREventBase *inactivityEventFor(bls_2010::RMessage *msg);
    CPREventBase *infoForProtocol(bls_2010::RMessage *msg);
    void numberCompression(CPREventCompression *compression);
    CPREventBase *eventToRead(CPREventBase::EventType type, int msecs, bool &isStanding);

    std::vector<EventSequence> m_lists; // the main list, then that of each tag by its bit
    QVector<QPointer<CPREventBase>> m_changed; // and not announced yet
    CPREventSessionInfo *m_sessionInfo = nullptr; // the standing events are children of the list
    CPREventSessionStatistics *m_sessionStatistics = nullptr;
    CPREventSessionScore *m_sessionScore = nullptr;
    CPREventBase *m_lastRead = nullptr; // while a file is read; null when it has left the list
    bool m_isInitializing = false; // until reset() has seen it
    bool m_isMaking = false; // an event, which becomes a child when it is listed
    CPRGuidelines *m_guidelines; // not owned
    bls_2010::CommonDefs::CprProtocolType m_cprProtocol = bls_2010::CommonDefs::CPR_SINGLE_RESCUER;
    int m_compressionCounter = 0;
    int m_lastCompressionEnd = 0; // ms of session time; 0 when there was none
    int m_ScoresReady = 0;
    int m_scoresToReceive = 4;
};

#endif
