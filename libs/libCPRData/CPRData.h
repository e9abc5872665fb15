// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRDATA_H
#define CPRDATA_H

#include "CPRCompressionData.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "CPRVentilationData.h"
#include "cprdata_export.h"

#include <chestboard/CommonDefs.h>

#include <QObject>
#include <QSet>
#include <QStringList>
#include <QVariant>

#include <cstdint>

class CPRFileHandler;
struct CPRReadReport;

/// One CPR training session: what the host holds, feeds with manikin messages, and shows.
///
/// It owns the two waveforms, the guideline set and the event list, routes every message to them,
/// follows the session through its states, keeps the waves in step with time, and saves and loads
/// the session. All of it runs on the thread that owns the object; signals are emitted directly.
class CPRDATA_EXPORT CPRData : public QObject {
    Q_OBJECT

    // clang-format off
    /// The depth wave; a child of the session.
    Q_PROPERTY(CPRCompressionData *compressionData   READ compressionData   CONSTANT)
    /// The volume wave; a child of the session.
    Q_PROPERTY(CPRVentilationData *ventilationData   READ ventilationData   CONSTANT)
    /// The event list; a child of the session.
    Q_PROPERTY(CPREvents          *cprEvents         READ cprEvents         CONSTANT)
    /// The active guideline set; a child of the session, which lives as long. Incoming sets are
    /// copied into it.
    Q_PROPERTY(CPRGuidelines      *cprGuidelines     READ cprGuidelines     CONSTANT)
    /// Every guideline set known to the session (CPRGuidelines). A new session's list begins with
    /// its active set; a copy's has the sets of the original, whose children they stay, and not its
    /// own active set. Sets that the manikin announced are children of the session that they were
    /// announced to. A set that is deleted leaves the list.
    Q_PROPERTY(QVariantList        cprGuidelinesList READ cprGuidelinesList NOTIFY cprGuidelinesListChanged)
    /// Names of the learners; see assignLearner().
    Q_PROPERTY(QStringList         learners          READ learners          NOTIFY learnersChanged)
    /// The archive last written or read; empty before the first.
    Q_PROPERTY(QString             filename          READ filename          NOTIFY filenameChanged)
    /// The host's note that the session was uploaded; the library never sets it.
    Q_PROPERTY(bool                isUploaded        READ isUploaded        NOTIFY isUploadedChanged)
    // clang-format on

public:
    /// What a session is doing; setCprState() says what each change brings about.
    enum CprState : int {
        CPR_UNINITIALIZED = -1, ///< before the first setCprState()
        CPR_MANIKIN_INIT = 0, ///< a manikin has been connected and is being initialised
        CPR_INIT = 1, ///< a new session is being prepared
        CPR_START = 2, ///< the session is running, waves are recorded
        CPR_ENDED = 3, ///< the session has ended, waveforms take no messages
        CPR_STOP = 4, ///< the session was stopped
        CPR_RECONNECTED = 256 ///< the manikin link was re-established
    };
    Q_ENUM(CprState)

    /// A session without events, with the default guidelines, in the state CPR_UNINITIALIZED.
    explicit CPRData(QObject *parent = nullptr);
    /// An independent copy. It shares the other guideline sets that \a other knows, and does not
    /// trim itself when statistics arrive.
    explicit CPRData(const CPRData &other, QObject *parent = nullptr);
    ~CPRData() override;

    /// @{
    /// The properties of the same names.
    CPRCompressionData *compressionData() const { return m_compressionData; }
    CPRVentilationData *ventilationData() const { return m_ventilationData; }
    CPREvents *cprEvents() const { return m_cprEvents; }
    CPRGuidelines *cprGuidelines() const { return m_cprGuidelines; }
    QVariantList cprGuidelinesList() const { return m_cprGuidelinesList; }
    /// @}

    /// The state set last.
    CprState cprState() const { return m_cprState; }
    /// Moves the session to \a state: CPR_MANIKIN_INIT initialises it and CPR_INIT resets it when
    /// that is a change; CPR_START begins a session that was prepared and resumes any other.
    void setCprState(CprState state);
    /// Prepares everything for a new manikin.
    void initialize();
    /// Empties waves and events for a new session; the guidelines stay.
    void reset();
    /// Goes on with the session; emits resumingSession(). The wave numbering goes on, so that a
    /// pause is filled like any other gap.
    void resume();

    /// Routes one manikin message; true when an object took it, false also for null.
    bool incomingMsg(bls_2010::RMessage *msg);
    /// Takes a guideline set out of RPL_GUIDELINES (75); false when it does not parse.
    bool rplmsg_RPL_GUIDELINES(bls_2010::RMessage *msg);
    /// Takes over \a guidelines and deletes it: into the active set when it carries the manikin's
    /// flag, else into the known set with the same identifier. One without such a set joins the
    /// list instead. Null does nothing; a set that the session holds already is only announced.
    void incomingGuidelines(CPRGuidelines *guidelines);

    /// The header of a wave packet, for every packet. A gap in the numbers is filled in both waves
    /// and, when it is longer than packetLossThresholdMs(), entered into the event list. A gap of
    /// more than 24 hours is a corrupt header: it is warned of and not filled, and the numbering
    /// goes on from it.
    void waveHeaderReceived(std::int32_t sequenceNumber);
    /// A wave sample: reduced to the session info's wave data step and passed to the waveforms.
    void waveDataReceived(bls_2010::CommonDefs::WaveType wType, int data, int seqNumber);
    /// The manikin starts or stops sending stored data; emits receiveDataComplete() at the end.
    void receivingData(bool receiving);
    /// The manikin is sending stored data. guidelinesChanged() is not emitted meanwhile, and not
    /// made up for afterwards.
    bool receiving() const { return m_receiving; }
    /// The number of the wave header that comes next when nothing is lost; 1 for a new session.
    std::int32_t expectedWaveSequence() const { return m_expectedWaveSequence; }
    /// The number of the last wave header; 0 before the first.
    std::int32_t lastWaveSequence() const { return m_lastWaveSequence; }

    /// Enters an event named \a eventId at the session time.
    void addUserEvent(const QString &eventId);

    /// The property of the same name.
    QStringList learners() const { return m_learners; }
    /// Adds a learner; emits learnersChanged() when the name is new.
    void assignLearner(const QString &name);
    /// Removes a learner; emits learnersChanged() also when there was none of that name.
    void releaseLearner(const QString &name);

    /// @{
    /// When set, a session that went on is cut, as soon as its statistics are complete, to a second
    /// behind the total time of the session info. (A second session of the same manikin has the
    /// total time 0 unless it was initialized.) False unless changed.
    bool trimToTotalTime() const { return m_trimToTotalTime; }
    void setTrimToTotalTime(bool trim) { m_trimToTotalTime = trim; }
    /// @}
    /// The host's note that the session was saved; the library never sets it.
    bool isSaved() const { return m_isSaved; }
    /// Emits isSavedChanged() on change.
    void setIsSaved(bool saved);
    /// The property of the same name.
    bool isUploaded() const { return m_isUploaded; }
    /// Emits isUploadedChanged() on change.
    void setIsUploaded(bool uploaded);
    /// @{
    /// Whether incoming guideline sets are taken over by CPRGuidelines::clone() instead of the
    /// assignment. False unless changed.
    bool cloneIncomingGuidelines() const { return m_cloneIncomingGuidelines; }
    void setCloneIncomingGuidelines(bool clone) { m_cloneIncomingGuidelines = clone; }
    /// @}
    /// @{
    /// A gap in the wave longer than this (ms) is entered as packet loss; initialize() makes it 0.
    std::int32_t packetLossThresholdMs() const { return m_packetLossThresholdMs; }
    void setPacketLossThresholdMs(std::int32_t msecs) { m_packetLossThresholdMs = msecs; }
    /// @}

    /// The property of the same name.
    QString filename() const { return m_filename; }
    /// Saves the session into the open \a handler (null: false); emits filenameChanged(). False
    /// when the events or the guidelines could not be stored; what was written before stays. True
    /// means that the handler took them; whether they are on the disk its closing tells. A warning
    /// tells of a session that goes beyond what readData() accepts; it is stored all the same.
    bool writeData(CPRFileHandler *handler);
    /// Loads a session from the open \a handler (null: false); emits filenameChanged(). False when
    /// a member other than a wave cannot be opened or any member is damaged, which a warning names
    /// with the reason; what could be read is there. A wave that cannot be opened is empty and no
    /// failure. Nothing is taken from a member that the handler found damaged, and of a document
    /// that oversteps a limit or is no XML only what comes before.
    /// The event list is replaced; samples are appended to the waves, so load into a new session or
    /// reset() it before.
    bool readData(CPRFileHandler *handler);
    /// The same, and \a report tells what became of each member. A report that gives up makes the
    /// member damaged that is being read; the session is then not to be used.
    bool readData(CPRFileHandler *handler, CPRReadReport &report);

Q_SIGNALS:
    /// A guideline set has come in and was taken over into \a guidelines, which the session holds.
    /// Spelt so on purpose: the name is part of the interface.
    void cprGuidelinesRecevied(CPRGuidelines *guidelines);
    /// A set has joined cprGuidelinesList, or left it because it was destroyed.
    void cprGuidelinesListChanged();
    /// @{
    /// The host has changed its note.
    void isSavedChanged();
    void isUploadedChanged();
    /// @}
    /// By assignLearner(), releaseLearner() and onOtherLearnersChanged(); loading does not emit it.
    void learnersChanged();
    /// By receivingData(false): no more stored data follow. Comes after each decoded event and
    /// after statistics and scores of the host's own, too.
    void receiveDataComplete();
    /// The names stand in the session info; CPREvents::cprSessionInfoChanged() follows.
    void learnerNamesUpdated();
    /// By resume().
    void resumingSession();
    /// The manikin does not know \a feature, which the host may want to tell its user.
    void unsupportedFeature(QString feature);
    /// By writeData() and readData(), also when the name is the same.
    void filenameChanged(QString filename);

public Q_SLOTS:
    /// Sets the session time (ms) of the waveforms and the event list.
    void setSessionTime(int a_SessionTime);
    /// Puts the learners' names into the session info.
    void onLearnersChanged();
    /// For the learnersChanged() of another session, whose learners this one takes over. Has to be
    /// called through a connection. Two sessions may be connected crosswise.
    void onOtherLearnersChanged();
    /// Trims the session when trimToTotalTime() is set.
    void onStatisticsReady();

private:
    /// What is made of the first names of the learners, so that one more costs the same for all
    /// that are there.
    struct JoinedNames {
        int count = 0;
        QSet<QString> names;
        QString students; ///< as the session info holds them
    };

    void connectLearners();
    void joinNames();
    void addGuidelines(QObject *guidelines);
    void copyGuidelines(CPRGuidelines *to, const CPRGuidelines &from);
    bool isHeld(const CPRGuidelines *guidelines) const;
    void addPacketLoss(qint64 start, qint64 end);
    qint64 samplePeriod() const;

    CPRCompressionData *m_compressionData = nullptr; // these four are children of the session
    CPRVentilationData *m_ventilationData = nullptr;
    CPRGuidelines *m_cprGuidelines = nullptr;
    CPREvents *m_cprEvents = nullptr;
    std::int32_t m_lastWaveSequence = 0;
    std::int32_t m_expectedWaveSequence = 1;
    CprState m_cprState = CPR_UNINITIALIZED;
    QVariantList m_cprGuidelinesList; // of QObject *, each a CPRGuidelines
    bool m_trimToTotalTime = false;
    bool m_isSaved = false;
    bool m_isUploaded = false;
    QStringList m_learners;
    JoinedNames m_joined;
    int m_jumps = 0; // of the wave, and
    int m_unsupported = 0; // settings that the manikin does not know; both to be warned of
    bool m_receiving = false;
    bool m_cloneIncomingGuidelines = false;
    std::int32_t m_packetLossThresholdMs = 0;
    QString m_filename;
    bool m_takingOverLearners = false;
};

#endif
