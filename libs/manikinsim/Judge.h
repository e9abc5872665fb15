// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_JUDGE_H
#define MANIKINSIM_JUDGE_H

#include "manikinsim/Scenario.h"
#include "manikinsim/SentMessage.h"

#include <private/HistogramBins.h>

#include <array>

namespace manikinsim {

/// Judges what really happened by the guideline set in use, and gives the statistics and scores
/// that the manikin sends when a session has ended. It keeps sums and counts only, however long
/// the session is.
///
/// Statistics
///
/// - Counts are of all compressions, breaths and reported pauses. Means and percentages are rounded
///   to the nearest whole number, halves up. Deviations are those of the whole set (the root of
///   the mean squared distance from the mean), rounded in the same way. A percentage of nothing is
///   -1, every other figure of nothing 0.
/// - A run is a series of compressions each of which begins at most 500 ms after the end of the one
///   before. A compression has a rate unless it is the first of its run: 60000 ms / its period,
///   rounded.
/// - A breath's rate is 60000 ms / its period or, where compressions and breaths take turns,
///   120000 ms / the time since the start of the breath before the last, rounded. A breath has a
///   rate when there are as many breaths before it and, where compressions are trained, no
///   reported pause lies between.
/// - Depth is correct from the minimum to the maximum depth of the set; so is the stroke length,
///   which is depth less release depth. Release is correct up to the acceptable release depth.
///   Rates are correct from their minimum to their maximum. Volume is correct from its minimum to
///   below its maximum. Inflation time, from a breath's start to its peak, is correct from its
///   minimum to its maximum.
///   The hands are right when the manikin says so.
/// - Cycles are counted where compressions and breaths take turns. A series of compressions that
///   neither a breath nor a reported pause interrupts counts as a cycle when a breath ends it, a
///   series of breaths likewise when a compression ends it. Breaths before the first compression
///   are a number of their own.
/// - Flow time is the time from each run's start to its end, in percent of the time from the start
///   of the first compression, breath or reported pause to the end of the last, as far as the
///   pause was reported.
/// - Breaths per minute are those of the whole session. Times of the first compression, breath and
///   shock are in whole seconds, begun ones not counted; -1 when there was none.
/// - A bin holds the percentage of its compressions, pauses or breaths; 0 of nothing. The bins
///   begin at: depth 0, 4500, 5000, 5500, 6000, 6500 hundredths of a mm; release depth 0, 250, 500,
///   750, 1000, 1500 hundredths of a mm; compression rate 0, 80, 100, 110, 121, 141 per minute;
///   pause 0, 5, 10, 15, 20, 30 s; volume 0, 300, 400, 550, 700, 800 ml; ventilation rate 0, 4, 6,
///   9, 11, 13 per minute.
///
/// Scores
///
/// - One rule holds for every reduction: a fault takes off one percentage point for each percent of
///   the compressions (breaths, cycles) that have it; for the rates, of the compressions (breaths)
///   that have a rate. The percentages are rounded as above.
/// - The faults of compressions are: too shallow, too deep (only when the set reduces the score for
///   it), not released, rate too low, rate too high, hands in a wrong place, and cycles whose
///   number of compressions is not the set's.
/// - The faults of breaths are: volume too small, volume too large, rate too low, rate too high,
///   inflation too fast, inflation too slow, and cycles whose number of breaths is not the set's.
///   In high performance CPR the two of the rate are told as those of breaths per minute. Where
///   the set asks for breaths before the first compression, each one missing or beyond takes off
///   10 points.
/// - Flow time takes off one point for each percent that is missing to the set's minimum for the
///   protocol (in high performance CPR to that for compressions only); nothing in a session with
///   an AED, which makes the rescuer wait.
/// - Nothing is taken off for a pause as such and for the stroke length.
/// - The compression score is 100 less the reductions for compressions but flow time. The
///   ventilation score is 100 less those for breaths. Neither falls below 0, and each is 0 when
///   there was nothing to judge.
/// - The overall score weighs the two by 0.75 and 0.25 (infants 0.65 and 0.35) where one or two
///   rescuers take turns with compressions and breaths, after the compression score was reduced to
///   (100 - flow time reduction) percent of itself. It is that compression score alone for
///   compressions only, and the ventilation score alone in every other protocol. Only two perfect
///   scores are rounded up to 100.
class Judge {
public:
    explicit Judge(const Scenario &scenario);

    /// In order of their ends.
    void add(const Compression &compression);
    void add(const Ventilation &ventilation);
    /// A pause since \a start (ms) has lasted \a seconds, as it is reported again and again.
    void addPause(int start, int seconds);
    void addShock(int msecs);
    /// The session lasts for \a seconds, not for as long as the scenario says.
    void endAfter(int seconds) { m_seconds = seconds; }

    /// The rate of the last breath; -1 when it is not known.
    int breathRate() const { return m_breathRate; }

    Parameters statistics() const;
    /// \a isAed: the session is one with an AED.
    Parameters scores(bool isAed) const;

private:
    /// Sums of a quantity.
    class Series {
    public:
        void add(qint64 value);
        qint64 count() const { return m_count; }
        int mean() const;
        int deviation() const;

    private:
        qint64 m_count = 0;
        qint64 m_sum = 0;
        qint64 m_squares = 0;
    };

    struct Histogram {
        HistogramBins::Beginnings beginnings;
        std::array<qint64, 6> counts = {};

        void add(int value);
        void store(Parameters &values, CPREventBase::ParameterType first) const;
    };

    /// The numbers of compressions or breaths in the cycles.
    struct Cycles {
        Series numbers;
        qint64 wrong = 0;
        int minimum = 0;
        int maximum = 0;

        void add(int number, int wanted);
    };

    enum class InSeries { Nothing, Compressions, Breaths };

    void followSeries(InSeries kind);
    void extend(int start, int end);
    bool isCycleProtocol() const { return hasCycles(m_scenario.protocol); }
    int wantedCompressions() const;
    int flowTimePercentage() const;
    int flowTimeReduction(bool isAed) const;
    int overallScore(const Parameters &scores, bool isAed) const;

    const Scenario m_scenario;
    int m_seconds; // of the session

    Series m_depths;
    Series m_releases;
    Series m_strokes;
    Series m_rates;
    Series m_volumes;
    Series m_inflations;
    Series m_breathRates;
    Histogram m_depthBins{HistogramBins::depths};
    Histogram m_releaseBins{HistogramBins::releases};
    Histogram m_rateBins{HistogramBins::rates};
    Histogram m_volumeBins{HistogramBins::volumes};
    Histogram m_breathRateBins{HistogramBins::ventilationRates};
    Histogram m_pauseBins{HistogramBins::pauses};

    qint64 m_shallow = 0;
    qint64 m_deep = 0;
    qint64 m_wrongStrokes = 0;
    qint64 m_unreleased = 0;
    qint64 m_slow = 0;
    qint64 m_fast = 0;
    qint64 m_wrongHands = 0;
    qint64 m_xiphoid = 0;
    qint64 m_smallVolumes = 0;
    qint64 m_largeVolumes = 0;
    qint64 m_slowBreaths = 0;
    qint64 m_fastBreaths = 0;
    qint64 m_fastInflations = 0;
    qint64 m_slowInflations = 0;

    Cycles m_compressionCycles;
    Cycles m_breathCycles;
    InSeries m_series = InSeries::Nothing;
    int m_inSeries = 0;
    int m_preVentilations = 0;

    std::array<int, 2> m_breathStarts = {}; // of the last breath and the one before
    qint64 m_breathsSincePause = 0;
    int m_breathRate = -1;

    qint64 m_pauses = 0;
    qint64 m_pauseSeconds = 0; // of the pauses that have ended
    int m_pauseStart = -1; // of the last pause, ms
    int m_pause = 0; // its seconds

    int m_begin = -1; // of the first compression, breath or pause, ms
    int m_end = 0; // of the last
    int m_lastEnd = -1; // of the last compression
    qint64 m_flow = 0; // ms
    int m_firstCompression = -1;
    int m_firstBreath = -1;
    int m_firstShock = -1;
};

} // namespace manikinsim

#endif
