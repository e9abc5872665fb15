// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_TARGETS_H
#define SESSIONREVIEW_TARGETS_H

class CPRData;

namespace sessionreview {

/// What is trained.
struct Training {
    bool compressions = false; ///< somebody is to compress
    bool ventilations = false; ///< somebody is to ventilate
    bool cycles =
        false; ///< a number of compressions, then a number of ventilations, again and again

    /// Whether the same is trained.
    bool operator==(const Training &other) const;
};

/// What a CPR protocol (0 to 5) trains; of any other value, all of it.
Training trainingOf(int protocol);

/// Whether a CPR protocol (0 to 5) trains two rescuers, who take turns at the chest; of any other
/// value, false.
bool hasSecondRescuer(int protocol);

/// On which side of a target band a value lies. Unknown when there is no value or no band.
enum class Side { Unknown, Below, Inside, Above };

/// A target band of the guideline set.
struct Band {
    double min = 0; ///< the least value inside
    double max = 0; ///< the greatest value inside

    /// Whether both limits are the same.
    bool operator==(const Band &other) const { return min == other.min && max == other.max; }
    /// False when the set has no such band.
    bool isValid() const { return max > min; }
    /// Halfway between the limits; 0 when the set has no such band.
    double middle() const { return isValid() ? (min + max) / 2 : 0; }
    /// Limits themselves are inside.
    Side side(double value) const;
};

/// What the guideline set of a session asks for.
struct Targets {
    Band depth; ///< mm
    double releaseDepth = 0; ///< mm; the chest has to come back at least to it; 0 when not known
    Band rate; ///< compressions per minute
    Band volume; ///< ml; the maximum itself is too much
    /// @{
    /// 0 when the protocol has no cycles or the set has no number.
    int compressionsPerCycle = 0;
    int ventilationsPerCycle = 0;
    /// @}
    int minFlowTime = 0; ///< percent; 0 when the protocol has none
    Band ventilationRate; ///< ventilations per minute; none when ventilations wait for compressions
    int maxSilence = 0; ///< ms without anything done, from which on the manikin reports a pause

    /// @{
    /// Whether the same is asked for.
    bool operator==(const Targets &other) const;
    bool operator!=(const Targets &other) const { return !(*this == other); }
    /// @}
    /// On which side of its band a volume lies.
    Side volumeSide(int ml) const;
};

/// The targets of the session's active set for the protocol that is trained.
Targets targetsOf(const CPRData &session);

/// A depth in mm, rounded to a hundredth: depths are stored so, and a float only comes near it.
double roundedToHmm(float mm);

} // namespace sessionreview

#endif
