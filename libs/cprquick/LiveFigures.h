// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_LIVEFIGURES_H
#define CPRQUICK_LIVEFIGURES_H

#include "cprquick/SessionWatcher.h"

#include "sessionreview/LatestEvents.h"

#include <QtQml/qqml.h>

namespace cprquick {

/// What a learner sees while training, in the units that people read, with the limits of the
/// session's own guidelines beside it.
///
/// The figures are read at most once in 15 ms, and not at all while isActive is false.
class CPRQUICK_EXPORT LiveFigures : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(LiveFigures)

    // clang-format off
    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *session              READ session  WRITE setSession NOTIFY sessionChanged)
    /// Set it to whether somebody looks. True unless changed.
    Q_PROPERTY(bool     isActive             READ isActive WRITE setActive  NOTIFY isActiveChanged)
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
    /// The last compression was released completely; true before the first.
    Q_PROPERTY(bool     isReleased           READ isReleased           NOTIFY eventsChanged)
    /// @{
    /// On which side of its band the last depth, the rate and the last volume lie.
    Q_PROPERTY(Side     depthSide            READ depthSide            NOTIFY eventsChanged)
    Q_PROPERTY(Side     rateSide             READ rateSide             NOTIFY waveChanged)
    Q_PROPERTY(Side     volumeSide           READ volumeSide           NOTIFY eventsChanged)
    /// @}
    /// @{
    /// Faults of the last compression or ventilation, whichever came later. One sentence to the
    /// learner about the worst of them; empty when all is right. Once the manikin has sent its
    /// scores it is the first advice on the session.
    Q_PROPERTY(QStringList faults            READ faults               NOTIFY eventsChanged)
    Q_PROPERTY(QString  advice               READ advice               NOTIFY eventsChanged)
    /// @}
    /// @{
    /// Compressions, and the ventilations that followed them, in the cycle that is running.
    Q_PROPERTY(int      compressionsInCycle  READ compressionsInCycle  NOTIFY eventsChanged)
    Q_PROPERTY(int      ventilationsInCycle  READ ventilationsInCycle  NOTIFY eventsChanged)
    /// @}
    /// @{
    /// Compressions and ventilations of the session.
    Q_PROPERTY(int      compressionCount     READ compressionCount     NOTIFY eventsChanged)
    Q_PROPERTY(int      ventilationCount     READ ventilationCount     NOTIFY eventsChanged)
    /// @}
    /// Length of the pause that is running, s; 0 when none is.
    Q_PROPERTY(int      pause                READ pause                NOTIFY pauseChanged)

    /// @{
    /// The limits: depths in mm, rates per minute, volumes in ml, numbers in a cycle. Those of a
    /// band that the guidelines do not have are both 0.
    Q_PROPERTY(double   depthMin             READ depthMin             NOTIFY targetsChanged)
    Q_PROPERTY(double   depthMax             READ depthMax             NOTIFY targetsChanged)
    Q_PROPERTY(double   releaseDepth         READ releaseDepth         NOTIFY targetsChanged)
    Q_PROPERTY(int      rateMin              READ rateMin              NOTIFY targetsChanged)
    Q_PROPERTY(int      rateMax              READ rateMax              NOTIFY targetsChanged)
    Q_PROPERTY(int      volumeMin            READ volumeMin            NOTIFY targetsChanged)
    Q_PROPERTY(int      volumeMax            READ volumeMax            NOTIFY targetsChanged)
    Q_PROPERTY(int      compressionsPerCycle READ compressionsPerCycle NOTIFY targetsChanged)
    Q_PROPERTY(int      ventilationsPerCycle READ ventilationsPerCycle NOTIFY targetsChanged)
    /// @}
    // clang-format on

public:
    /// Unknown without a value or a band.
    enum Side { Unknown, Below, Inside, Above };
    Q_ENUM(Side)

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
    int         time() const                 { return m_wave.time; }
    QString     timeText() const             { return m_timeText; }
    double      depth() const                { return m_wave.depth; }
    int         volume() const               { return m_wave.volume; }
    int         rate() const                 { return m_wave.rate; }
    int         ventilationRate() const      { return m_wave.ventilationRate; }
    double      lastDepth() const            { return m_latest.compression ? m_latest.compression->depth : -1; }
    double      lastReleaseDepth() const     { return m_latest.compression ? m_latest.compression->releaseDepth : -1; }
    int         lastVolume() const           { return m_latest.ventilation ? m_latest.ventilation->volume : -1; }
    bool        isReleased() const           { return !m_latest.compression || !m_latest.compression->faults.testFlag(sessionreview::Fault::IncompleteRelease); }
    Side        depthSide() const;
    Side        rateSide() const;
    Side        volumeSide() const;
    QStringList faults() const;
    QString     advice() const;
    int         compressionsInCycle() const  { return m_latest.compressionsInCycle; }
    int         ventilationsInCycle() const  { return m_latest.ventilationsInCycle; }
    int         compressionCount() const     { return m_compressionCount; }
    int         ventilationCount() const     { return m_ventilationCount; }
    int         pause() const                { return m_pause; }
    double      depthMin() const             { return m_targets.depth.min; }
    double      depthMax() const             { return m_targets.depth.max; }
    double      releaseDepth() const         { return m_targets.releaseDepth; }
    int         rateMin() const              { return static_cast<int>(m_targets.rate.min); }
    int         rateMax() const              { return static_cast<int>(m_targets.rate.max); }
    int         volumeMin() const            { return static_cast<int>(m_targets.volume.min); }
    int         volumeMax() const            { return static_cast<int>(m_targets.volume.max); }
    int         compressionsPerCycle() const { return m_targets.compressionsPerCycle; }
    int         ventilationsPerCycle() const { return m_targets.ventilationsPerCycle; }
    /// @}
    // clang-format on

Q_SIGNALS:
    /// @{
    /// The properties of that name, or those that notify by it, have changed.
    void sessionChanged();
    void isActiveChanged();
    void timeChanged();
    void timeTextChanged();
    void waveChanged();
    void eventsChanged();
    void pauseChanged();
    void targetsChanged();
    /// @}

private:
    struct WaveFigures {
        int time = 0;
        double depth = 0;
        int volume = 0;
        int rate = -1;
        int ventilationRate = -1;
    };

    void readEventsSoon();
    void readSoon();
    void read();
    void readWaves();
    void readEvents(const sessionreview::Targets &targets);
    void readPause();

    SessionWatcher m_watcher;
    QTimer m_reading;
    bool m_isActive = true;
    bool m_areEventsStale = true;
    WaveFigures m_wave;
    QString m_timeText;
    sessionreview::LatestEvents m_latest;
    int m_compressionCount = 0;
    int m_ventilationCount = 0;
    int m_pause = 0;
    sessionreview::Targets m_targets;
};

} // namespace cprquick

#endif
