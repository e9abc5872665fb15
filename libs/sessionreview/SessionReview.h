// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_SESSIONREVIEW_H
#define SESSIONREVIEW_SESSIONREVIEW_H

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class CPRData;
class CPREventBase;
class CPREventCompression;
class CPREventVentilation;

namespace sessionreview {

/// On which side of a target band a value lies. Unknown when there is no value or no band.
enum class Side { Unknown, Below, Inside, Above };

/// A target band of the guideline set.
struct Band {
    double min = 0;
    double max = 0;

    bool operator==(const Band &other) const { return min == other.min && max == other.max; }
    bool isValid() const { return max > min; }
    /// Limits themselves are inside.
    Side side(double value) const;
};

/// What the guideline set of a session asks for.
struct Targets {
    Band depth; ///< mm
    double releaseDepth = 0; ///< mm; the chest has to come back at least to it; 0 when not known
    Band rate; ///< compressions per minute
    Band volume; ///< ml; the maximum itself is too much
    int compressionsPerCycle = 0; ///< 0 when the set has no number
    int ventilationsPerCycle = 0; ///< 0 when the set has no number
    int leastFlowTime = 0; ///< percent; 0 when the protocol has none

    bool operator==(const Targets &other) const;
    bool operator!=(const Targets &other) const { return !(*this == other); }
    Side depthSide(float mm) const;
    Side volumeSide(int ml) const;
};

/// The targets of the session's active set for the protocol that is trained.
Targets targetsOf(const CPRData &session);

/// Times in ms of session time.
struct Compression {
    int begin = 0;
    int peak = 0;
    int end = 0;
    int period = 0; ///< since the start of the compression before; 0 where it is not known
    float depth = 0; ///< mm
    int rate = 0; ///< per minute; 0 for the first of a run and where it is not known
    Side depthSide = Side::Unknown;
    Side rateSide = Side::Unknown;
    bool incompleteRelease = false;
    bool wrongHands = false;
};

struct Ventilation {
    int begin = 0;
    int peak = 0;
    int end = 0;
    int volume = 0; ///< ml
    Side volumeSide = Side::Unknown;
};

/// A depth in mm. Depths are whole hundredths of a mm, which a float only comes near.
double wholeHmm(float mm);

/// An event's measurements. The sides and the rate of what follows a pause are left for judge().
Compression compressionOf(const CPREventCompression &event);
Ventilation ventilationOf(const CPREventVentilation &event);
/// Finds the sides on which the measurements lie.
void judge(Compression &compression, const Targets &targets);
void judge(Ventilation &ventilation, const Targets &targets);

struct Span {
    int begin = 0;
    int end = 0;
};

/// A run of compressions and the ventilations that follow it.
struct Cycle {
    int begin = 0;
    int end = 0;
    int compressions = 0;
    int ventilations = 0;
    /// Other numbers than the guideline set asks for. Never set for the ventilations before the
    /// first compression, nor for a cycle that the end of the session may have cut off.
    bool isMiscounted = false;
};

/// Something that happened around the rescuers.
struct Flag {
    enum class Kind { Shock, Aed, Rhythm, User };

    int msecs = 0;
    Kind kind = Kind::User;
    int code = 0; ///< energy in J; AEDEventType; AEDEcgRhythms
    int detail = 0; ///< remote-control button of an AED event
    QString name; ///< of a user event
};

/// The flag that stands for \a event; none for compressions, ventilations, pauses and the rest.
std::optional<Flag> flagOf(const CPREventBase &event);

/// The figures above the lanes.
struct Summary {
    QStringList learners;
    QDateTime start; ///< invalid when not known
    int protocol = 0;
    int secs = 0; ///< length of the session
    QString manikinName; ///< empty when it has none
    int manikinType = 0; ///< CPREventBase::ManikinType
    QString ageLetter; ///< A, C, I, T or N
    QString guidelines; ///< identifier of the set
    bool hasScores = false;
    int overallScore = 0;
    int compressionScore = 0;
    int ventilationScore = 0;
    int flowTime = -1; ///< percent; -1 when not known
    int primaryAdvice = 0; ///< CPREventBase::Advice
    int secondaryAdvice = 0;

    bool operator==(const Summary &other) const;
};

Summary summaryOf(const CPRData &session);

/// What was found in a session, judged by the session's own guideline set. It has no ties to the
/// session.
struct SessionReview {
    Targets targets;
    Summary summary;
    /// @{
    /// In order of time.
    std::vector<Compression> compressions;
    std::vector<Ventilation> ventilations;
    std::vector<Cycle> cycles;
    std::vector<Span> pauses;
    std::vector<Span> losses; ///< from the first sample that is missing to the one that arrived
    std::vector<Flag> flags;
    /// @}
    int end = 0; ///< ms; where the last event ends

    bool trainsCompressions() const;
    bool trainsVentilations() const;
    /// Whether the protocol lets compressions and ventilations take turns.
    bool hasCycles() const;
};

SessionReview reviewOf(const CPRData &session);

} // namespace sessionreview

#endif
