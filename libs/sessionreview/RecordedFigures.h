// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_RECORDEDFIGURES_H
#define SESSIONREVIEW_RECORDEDFIGURES_H

#include "sessionreview/SessionReview.h"

#include <QString>

#include <optional>
#include <vector>

class QLocale;

/// Figures that are worked out from the recorded events, whatever the manikin has sent of its own.
/// What there is nothing to work out from has no value.
///
/// The definitions are those of resuscitation guidelines and of Utstein-style reports on the
/// quality of CPR, in words of our own. Where those leave a choice it stands at the function.
namespace sessionreview {

/// What is measured. Rates are instantaneous: a minute divided by the time between the starts of
/// two compressions of a run. The marks on each compression go by the running rate that the manikin
/// showed, and so do the shares.
enum class Measurement {
    Depth, ///< mm; of compressions, as up to Rate
    ReleaseDepth, ///< mm; what is left of the depth when the hands are lifted, also called leaning
    Rate, ///< per minute; not of the first compression of a run
    Volume ///< ml; of ventilations
};

/// Mean of all that were recorded, right or wrong, as guidelines report depth, rate and volume.
std::optional<double> mean(const SessionReview &review, Measurement measurement);
/// Standard deviation of all that were recorded: the root of the mean squared distance from the
/// mean. None of less than two.
std::optional<double> deviation(const SessionReview &review, Measurement measurement);

/// Percent of the compressions, or of the ventilations for a fault of volume, that have none of
/// \a faults: the share within the guidelines' target. Only those count that can be judged: for the
/// rate not the first compression of a run.
std::optional<double> shareWithout(const SessionReview &review, Faults faults);
/// Percent that have the fault: the rest.
std::optional<double> shareWith(const SessionReview &review, Fault fault);
/// Percent of the ventilations that were given at a rate within the guidelines' target, or on one
/// \a side of it; of those with a rate. No value in protocols whose ventilations wait for
/// compressions.
std::optional<double> shareAtVentilationRate(const SessionReview &review, Side side);
/// Percent of the compressions with depth, rate and release right, which guidelines ask for all at
/// once. All compressions count; the first of a run is judged by depth and release.
std::optional<double> shareAllCorrect(const SessionReview &review);

/// Chest compression fraction, as Utstein-style reports have it: the share (0 to 1) of the
/// session's time in which the chest was compressed.
///
/// The session begins where its first compression, ventilation or reported pause begins and ends
/// where the last of them ends, a ventilation at its peak (archives do not hold its end). A gap is
/// the time from the end of a compression to the start of the next, from the session's begin to the
/// first compression and from the last to the session's end. A gap of more than 2 s is time without
/// compressions, all of it, for ventilations and AED too; any other counts as time with
/// compressions. A loss on the link of more than 2 s in a gap is left out of the session's time:
/// nobody knows what was done.
std::optional<double> compressionFraction(const SessionReview &review);

/// The pauses in compressions, as guidelines count them: gaps of more than 2 s between two
/// compressions, from the end of one to the start of the next. Time in which the AED has everybody
/// stand clear is cut out of them, and so are losses on the link of more than 2 s. A compression of
/// which no message arrived shows in the period of the one behind it.
std::vector<Span> pausesOf(const SessionReview &review);
/// A pause may last as long, s: guidelines ask for no longer one.
constexpr double maxPauseSecs = 10;
/// Whether it lasts longer.
bool isLongPause(const Span &pause);
/// The longest of them, s.
std::optional<double> longestPause(const SessionReview &review);
/// How many are long. No value with less than two compressions.
std::optional<double> longPauses(const SessionReview &review);
/// Mean of those in which a ventilation came to its peak, s. Guidelines ask for less than 10 s for
/// two breaths. Protocols without cycles have none.
std::optional<double> meanVentilationPause(const SessionReview &review);
/// Time without compressions while the AED had everybody stand clear, s. No value when it never
/// has.
std::optional<double> aedPause(const SessionReview &review);

/// The pauses around a shock, s, as Utstein-style reports have them. One that has no compression on
/// its side has no value.
struct ShockPauses {
    int msecs = 0; ///< of the shock, session time
    std::optional<double> before; ///< from the end of the last compression to the shock
    std::optional<double> after; ///< from the shock to the start of the next compression
    std::optional<double> around; ///< both together
};
/// Of each shock, in order of time.
std::vector<ShockPauses> shockPausesOf(const SessionReview &review);

/// @{
/// Of the cycles that are judged: how many have the numbers that the protocol asks for, in percent,
/// and the mean numbers in one. No value for protocols without cycles.
std::optional<double> shareOfCorrectCycles(const SessionReview &review);
std::optional<double> compressionsPerCycle(const SessionReview &review);
std::optional<double> ventilationsPerCycle(const SessionReview &review);
/// @}

/// Which value of a figure is the better one.
enum class Aim {
    Neither, ///< a count, or what somebody else asks for: neither tells how well it was done
    More,
    Less,
    Target ///< the one nearer to the target that the figure's standard names
};

/// What of the guideline set or of the protocol a figure goes by. Figures that went by different
/// ones are not compared.
enum class Standard {
    None,
    Depth, ///< its target band, as up to Volume
    Release,
    Rate,
    DepthRateRelease, ///< all three
    Volume,
    CompressionsPerCycle, ///< the number that is asked for
    VentilationsPerCycle, ///< the same
    Cycle, ///< both numbers
    Protocol, ///< what is trained, in cycles of which numbers
    All ///< the whole set, and the protocol
};

/// A figure with what programs and people call it.
struct RecordedFigure {
    /// In what it is told. A fraction is a number from 0 to 1 for programs, percent for people.
    enum class Unit { Count, Number, Mm, PerMinute, Ml, Percent, Fraction, Seconds };

    const char *key; ///< for programs, with the unit behind it; never changes
    const char *title; ///< for people, in English
    Unit unit; ///< of the value
    int parameter; ///< CPREventBase::ParameterType of the manikin's own figure; -1 when it has none
    Aim aim; ///< which value is the better one
    Standard standard; ///< what the figure goes by
    std::optional<double> (*workOut)(const SessionReview &review); ///< not rounded

    /// Rounded to hundredths, a fraction to a hundredth of a percent, seconds to thousandths.
    std::optional<double> value(const SessionReview &review) const;
    double rounded(double value) const; ///< the same for any value of the figure
    QString titleText() const; ///< translated
    QString text(double value, const QLocale &locale) const; ///< with its unit
    QString number(double value, const QLocale &locale) const; ///< without it, for people
    QString unitText() const; ///< translated; empty for a number
    double shown(double value) const; ///< rounded as text() rounds it
};

/// All figures, in the order in which they are shown.
const std::vector<RecordedFigure> &recordedFigures();
/// The one with that key; null when there is none.
const RecordedFigure *recordedFigure(const char *key);

/// What a person calls the pauses of the shock with that number, from 1.
QString shockTitle(const ShockPauses &shock, int number);
/// Its pauses before, after and around.
QString shockText(const ShockPauses &shock, const QLocale &locale);

} // namespace sessionreview

#endif
