// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_LIVEFIGURES_H
#define CPRQUICK_LIVEFIGURES_H

#include "cprquick/SessionWatcher.h"

#include "sessionreview/LiveAdvice.h"

#include <QtQml/qqml.h>

#include <memory>
#include <utility>

namespace cprquick {

class PlotSource;

/// What a learner sees while training, in the units that people read, with the limits of the
/// session's own guidelines beside it.
///
/// The figures are read at most once in 15 ms, or as pace says, and not at all while isActive is
/// false.
class CPRQUICK_EXPORT LiveFigures : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(LiveFigures)

    // clang-format off
    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *session              READ session  WRITE setSession NOTIFY sessionChanged)
    /// Set it to whether somebody looks. True unless changed.
    Q_PROPERTY(bool     isActive             READ isActive WRITE setActive  NOTIFY isActiveChanged)
    /// How soon after the waves or the time have changed the figures are read, ms, from 0; 15 unless
    /// changed. Events are read within 15 ms all the same.
    Q_PROPERTY(int      pace                 READ pace     WRITE setPace    NOTIFY paceChanged)
    /// The session time (ms) of which the figures are, as they stood then; -1, as it is from the
    /// start, for now. Limits, training and the result of the session are those of now always.
    Q_PROPERTY(int      at                   READ at       WRITE setAt      NOTIFY atChanged)
    /// ms of session time.
    Q_PROPERTY(int      time                 READ time                 NOTIFY timeChanged)
    /// m:ss, or h:mm:ss from two hours on.
    Q_PROPERTY(QString  timeText             READ timeText             NOTIFY timeTextChanged)
    /// Depth of the chest at the moment, mm.
    Q_PROPERTY(double   depth                READ depth                NOTIFY waveChanged)
    /// Volume at the moment, ml.
    Q_PROPERTY(int      volume               READ volume               NOTIFY waveChanged)
    /// @{
    /// Compressions and ventilations per minute; -1 while it is not known.
    Q_PROPERTY(int      rate                 READ rate                 NOTIFY waveChanged)
    Q_PROPERTY(int      ventilationRate      READ ventilationRate      NOTIFY waveChanged)
    /// @}

    /// @{
    /// Of the last compression and the last ventilation; depths in mm, volume in ml. -1 before the
    /// first.
    Q_PROPERTY(double   lastDepth            READ lastDepth            NOTIFY eventsChanged)
    Q_PROPERTY(double   lastReleaseDepth     READ lastReleaseDepth     NOTIFY eventsChanged)
    Q_PROPERTY(int      lastVolume           READ lastVolume           NOTIFY eventsChanged)
    /// @}
    /// The last depth as a whole number of mm, which is outside the band when the depth is; a dash
    /// before the first.
    Q_PROPERTY(QString  lastDepthText        READ lastDepthText        NOTIFY eventsChanged)
    /// The last compression was released completely; true before the first.
    Q_PROPERTY(bool     isReleased           READ isReleased           NOTIFY eventsChanged)
    /// @{
    /// On which side of its band the last depth, the rates and the last volume lie.
    Q_PROPERTY(Side     depthSide            READ depthSide            NOTIFY eventsChanged)
    Q_PROPERTY(Side     rateSide             READ rateSide             NOTIFY waveChanged)
    Q_PROPERTY(Side     volumeSide           READ volumeSide           NOTIFY eventsChanged)
    Q_PROPERTY(Side     ventilationRateSide  READ ventilationRateSide  NOTIFY waveChanged)
    /// @}
    /// @{
    /// What the last compression and the last ventilation were is so long ago that it says nothing
    /// about now. False before the first.
    Q_PROPERTY(bool     isCompressionOutdated READ isCompressionOutdated NOTIFY pauseChanged)
    Q_PROPERTY(bool     isVentilationOutdated READ isVentilationOutdated NOTIFY pauseChanged)
    /// @}
    /// Faults of the last compression or ventilation, whichever came later.
    Q_PROPERTY(QStringList faults            READ faults               NOTIFY eventsChanged)
    /// @{
    /// One sentence to the learner, which stays long enough to be read, and what kind of sentence
    /// it is; empty while there is nothing to say. Once the manikin has sent its scores it is the
    /// first advice on the session.
    Q_PROPERTY(QString  advice               READ advice               NOTIFY adviceChanged)
    Q_PROPERTY(Tone     adviceTone           READ adviceTone           NOTIFY adviceChanged)
    /// @}
    /// The AED has everybody stand clear.
    Q_PROPERTY(bool     isStandClear         READ isStandClear         NOTIFY pauseChanged)
    /// Somebody should compress now. False once the manikin has sent its scores.
    Q_PROPERTY(bool     areCompressionsDue   READ areCompressionsDue   NOTIFY pauseChanged)
    /// The manikin's score of the session, percent; -1 until it has sent it.
    Q_PROPERTY(int      score                READ score                NOTIFY eventsChanged)
    /// @{
    /// Percent of what was done so far that was right, see sessionreview::scoreSoFar(), -1 while it is
    /// not known; and how much of the waves the link has lost, ms. Worked out once in a second of
    /// session time; -1 and 0 while at is not -1.
    Q_PROPERTY(int      scoreSoFar           READ scoreSoFar           NOTIFY scoreSoFarChanged)
    Q_PROPERTY(int      lostMsecs            READ lostMsecs            NOTIFY scoreSoFarChanged)
    /// @}
    /// Whether two rescuers should change places.
    Q_PROPERTY(Change   rescuerChange        READ rescuerChange        NOTIFY pauseChanged)
    /// @{
    /// What the AED is at, the last shock and the rhythm, in words; empty while there is none.
    Q_PROPERTY(QString  aed                  READ aed                  NOTIFY eventsChanged)
    Q_PROPERTY(QString  shock                READ shock                NOTIFY eventsChanged)
    Q_PROPERTY(QString  rhythm               READ rhythm               NOTIFY eventsChanged)
    /// @}
    /// @{
    /// What is trained or done: the protocol's part that a page needs.
    Q_PROPERTY(bool     hasCompressions      READ hasCompressions      NOTIFY eventsChanged)
    Q_PROPERTY(bool     hasVentilations      READ hasVentilations      NOTIFY eventsChanged)
    /// @}
    /// @{
    /// Compressions, and the ventilations that followed them, in the cycle that is running; whether
    /// they are already more than the protocol asks for.
    Q_PROPERTY(int      compressionsInCycle  READ compressionsInCycle  NOTIFY eventsChanged)
    Q_PROPERTY(int      ventilationsInCycle  READ ventilationsInCycle  NOTIFY eventsChanged)
    Q_PROPERTY(bool     hasTooManyCompressions READ hasTooManyCompressions NOTIFY eventsChanged)
    Q_PROPERTY(bool     hasTooManyVentilations READ hasTooManyVentilations NOTIFY eventsChanged)
    /// @}
    /// @{
    /// Compressions and ventilations of the session.
    Q_PROPERTY(int      compressionCount     READ compressionCount     NOTIFY eventsChanged)
    Q_PROPERTY(int      ventilationCount     READ ventilationCount     NOTIFY eventsChanged)
    /// @}
    /// @{
    /// Time since the last compression, or without compressions in the protocol since the last
    /// ventilation, s; 0 while no pause is running. Whether the rescuer should go on, and whether
    /// the AED asked for it.
    Q_PROPERTY(int      pause                READ pause                NOTIFY pauseChanged)
    Q_PROPERTY(bool     isPauseTooLong       READ isPauseTooLong       NOTIFY pauseChanged)
    Q_PROPERTY(bool     isPauseAskedFor      READ isPauseAskedFor      NOTIFY pauseChanged)
    /// @}

    /// @{
    /// The limits: depths in mm, rates per minute, volumes in ml, numbers in a cycle. Those of a
    /// band that the guidelines do not have are both 0.
    Q_PROPERTY(double   depthMin             READ depthMin             NOTIFY targetsChanged)
    Q_PROPERTY(double   depthMax             READ depthMax             NOTIFY targetsChanged)
    Q_PROPERTY(double   releaseDepth         READ releaseDepth         NOTIFY targetsChanged)
    Q_PROPERTY(int      rateMin              READ rateMin              NOTIFY targetsChanged)
    Q_PROPERTY(int      rateMax              READ rateMax              NOTIFY targetsChanged)
    Q_PROPERTY(double   rateMiddle           READ rateMiddle           NOTIFY targetsChanged)
    Q_PROPERTY(int      volumeMin            READ volumeMin            NOTIFY targetsChanged)
    Q_PROPERTY(int      volumeMax            READ volumeMax            NOTIFY targetsChanged)
    Q_PROPERTY(int      ventilationRateMin   READ ventilationRateMin   NOTIFY targetsChanged)
    Q_PROPERTY(int      ventilationRateMax   READ ventilationRateMax   NOTIFY targetsChanged)
    Q_PROPERTY(int      compressionsPerCycle READ compressionsPerCycle NOTIFY targetsChanged)
    Q_PROPERTY(int      ventilationsPerCycle READ ventilationsPerCycle NOTIFY targetsChanged)
    /// @}
    // clang-format on

public:
    /// Unknown without a value or a band.
    enum Side { Unknown, Below, Inside, Above };
    Q_ENUM(Side)
    /// What kind of sentence an advice is: none, praise, what to do now, a fault, or the result of
    /// a session that has ended.
    enum Tone { Silence, Praise, Instruction, Fault, Result };
    Q_ENUM(Tone)
    /// Whether rescuers should take turns at the chest; see sessionreview::RescuerChange.
    enum Change { NoChange, ChangeSoon, ChangeNow };
    Q_ENUM(Change)

    /// Shows nothing until it has a session.
    explicit LiveFigures(QObject *parent = nullptr);
    ~LiveFigures() override;

    // clang-format off
    /// @{
    /// Getters and setters of the properties.
    CPRData    *session() const              { return m_watcher.session(); }
    void        setSession(CPRData *session) { m_watcher.setSession(session); }
    bool        isActive() const             { return m_isActive; }
    void        setActive(bool active);
    int         pace() const                 { return m_paceMs; }
    void        setPace(int msecs);
    int         at() const                   { return m_at; }
    void        setAt(int msecs);
    int         time() const                 { return m_wave.time; }
    QString     timeText() const             { return m_timeText; }
    double      depth() const                { return m_wave.depth; }
    int         volume() const               { return m_wave.volume; }
    int         rate() const                 { return m_wave.rate; }
    int         ventilationRate() const      { return m_wave.ventilationRate; }
    double      lastDepth() const            { return m_latest.compression ? m_latest.compression->depth : -1; }
    double      lastReleaseDepth() const     { return m_latest.compression ? m_latest.compression->releaseDepth : -1; }
    int         lastVolume() const           { return m_latest.ventilation ? m_latest.ventilation->volume : -1; }
    QString     lastDepthText() const;
    bool        isReleased() const           { return !m_latest.compression || !m_latest.compression->faults.testFlag(sessionreview::Fault::IncompleteRelease); }
    Side        depthSide() const;
    Side        rateSide() const;
    Side        volumeSide() const;
    Side        ventilationRateSide() const;
    bool        isCompressionOutdated() const { return m_pause.isCompressionOutdated; }
    bool        isVentilationOutdated() const { return m_pause.isVentilationOutdated; }
    QStringList faults() const;
    QString     advice() const               { return m_advice; }
    Tone        adviceTone() const           { return m_adviceTone; }
    bool        isStandClear() const         { return m_pause.isStandClear; }
    bool        areCompressionsDue() const   { return m_pause.areCompressionsDue; }
    int         score() const                { return m_score; }
    int         scoreSoFar() const           { return m_scoreSoFar; }
    int         lostMsecs() const            { return m_lostMs; }
    Change      rescuerChange() const        { return m_pause.change; }
    QString     aed() const;
    QString     shock() const;
    QString     rhythm() const;
    bool        hasCompressions() const      { return m_latest.training.compressions; }
    bool        hasVentilations() const      { return m_latest.training.ventilations; }
    bool        hasTooManyCompressions() const { return m_latest.hasTooManyCompressions; }
    bool        hasTooManyVentilations() const { return m_latest.hasTooManyVentilations; }
    int         compressionsInCycle() const  { return m_latest.compressionsInCycle; }
    int         ventilationsInCycle() const  { return m_latest.ventilationsInCycle; }
    int         compressionCount() const     { return m_compressionCount; }
    int         ventilationCount() const     { return m_ventilationCount; }
    int         pause() const                { return m_pause.secs; }
    bool        isPauseTooLong() const       { return m_pause.isTooLong; }
    bool        isPauseAskedFor() const      { return m_pause.isAskedFor; }
    double      depthMin() const             { return m_targets.depth.min; }
    double      depthMax() const             { return m_targets.depth.max; }
    double      releaseDepth() const         { return m_targets.releaseDepth; }
    int         rateMin() const              { return static_cast<int>(m_targets.rate.min); }
    int         rateMax() const              { return static_cast<int>(m_targets.rate.max); }
    double      rateMiddle() const           { return m_targets.rate.middle(); }
    int         volumeMin() const            { return static_cast<int>(m_targets.volume.min); }
    int         volumeMax() const            { return static_cast<int>(m_targets.volume.max); }
    int         ventilationRateMin() const   { return static_cast<int>(m_targets.ventilationRate.min); }
    int         ventilationRateMax() const   { return static_cast<int>(m_targets.ventilationRate.max); }
    int         compressionsPerCycle() const { return m_targets.compressionsPerCycle; }
    int         ventilationsPerCycle() const { return m_targets.ventilationsPerCycle; }
    /// @}
    // clang-format on
    /// What adviceDue() has announced last; Prompt::None for nothing, and once there are scores.
    sessionreview::Prompt prompt() const { return m_heard.first; }

Q_SIGNALS:
    /// @{
    /// The properties of that name, or those that notify by it, have changed.
    void sessionChanged();
    void isActiveChanged();
    void paceChanged();
    void atChanged();
    void timeChanged();
    void timeTextChanged();
    void waveChanged();
    void eventsChanged();
    void pauseChanged();
    void adviceChanged();
    void scoreSoFarChanged();
    void targetsChanged();
    /// @}
    /// What prompt() says is due to be heard: it is new, or a fault that stays. Also when there is
    /// nothing to hear any more.
    void adviceDue();

private:
    static constexpr int readingMs = 15; // shorter than a frame
    static constexpr int notScored = -2; // neither a time nor, as -1, none

    struct Pause {
        int secs = 0;
        bool isTooLong = false;
        bool isAskedFor = false;
        bool isCompressionOutdated = false;
        bool isVentilationOutdated = false;
        bool isStandClear = false;
        bool areCompressionsDue = false;
        Change change = NoChange;
    };
    struct WaveFigures {
        int time = 0;
        double depth = 0;
        int volume = 0;
        int rate = -1;
        int ventilationRate = -1;
    };

    int shownTime() const;
    void usePlot();
    void readEventsSoon();
    void readSoon(int msecs);
    void read();
    void readWaves();
    void readAdvice();
    WaveFigures wavesNow() const;
    WaveFigures wavesThen() const;
    void readEvents(const sessionreview::Targets &targets);
    void readPause();
    void readScoreSoFar();

    SessionWatcher m_watcher;
    std::shared_ptr<PlotSource> m_plot; // the waves; null while no time is asked for
    int m_at = -1;
    QTimer m_reading;
    int m_paceMs = readingMs;
    bool m_isActive = true;
    bool m_areEventsStale = true;
    WaveFigures m_wave;
    QString m_timeText;
    sessionreview::LatestEvents m_latest;
    int m_compressionCount = 0;
    int m_ventilationCount = 0;
    Pause m_pause;
    sessionreview::LiveAdvice m_liveAdvice;
    QString m_advice;
    Tone m_adviceTone = Silence;
    std::pair<sessionreview::Prompt, int> m_heard{sessionreview::Prompt::None, 0}; // and when
    int m_score = -1;
    int m_scoreSoFar = -1;
    int m_lostMs = 0;
    int m_scoredAt = notScored; // s of session time
    sessionreview::Targets m_targets;
};

} // namespace cprquick

#endif
