// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_JUDGEDEVENTS_H
#define SESSIONREVIEW_JUDGEDEVENTS_H

#include "sessionreview/Targets.h"

#include <QFlags>

#include <optional>

class CPREventBase;
class CPREventCompression;
class CPREventVentilation;

namespace sessionreview {

/// What a learner can do wrong.
enum class Fault {
    TooShallow = 0x01, ///< a compression, as up to TooFast
    TooDeep = 0x02,
    IncompleteRelease = 0x04,
    HandPosition = 0x08,
    TooSlow = 0x10,
    TooFast = 0x20,
    TooLittle = 0x40, ///< volume of a ventilation, as TooMuch
    TooMuch = 0x80
};
/// Several of them, or none.
Q_DECLARE_FLAGS(Faults, Fault)

/// A compression's measurements, and what is wrong with it.
struct Compression {
    /// @{
    /// ms of session time.
    int begin = 0;
    int peak = 0;
    int end = 0;
    /// @}
    int period = 0; ///< since the start of the compression before; 0 where it is not known
    double depth = 0; ///< mm, rounded to a hundredth
    double releaseDepth = 0; ///< the same
    int rate = 0; ///< per minute; 0 for the first of a run and where it is not known
    int number = 0; ///< in its cycle, from 1; 0 where the manikin did not count
    Side depthSide = Side::Unknown; ///< of the target band
    Side rateSide = Side::Unknown; ///< of the target band
    Faults faults; ///< none when all is right
};

/// A ventilation's measurements, and what is wrong with it.
struct Ventilation {
    /// @{
    /// ms of session time.
    int begin = 0;
    int peak = 0;
    int end = 0;
    /// @}
    int volume = 0; ///< ml
    int rate = 0; ///< per minute
    Side volumeSide = Side::Unknown; ///< of the target band
    Faults faults; ///< none when all is right
};

/// @{
/// An event's measurements, and the faults that the manikin itself reports. The rest is left for
/// judge().
Compression compressionOf(const CPREventCompression &event);
Ventilation ventilationOf(const CPREventVentilation &event);
/// @}
/// @{
/// Finds the sides on which the measurements lie, and the faults that follow.
void judge(Compression &compression, const Targets &targets);
void judge(Ventilation &ventilation, const Targets &targets);
/// @}
/// @{
/// An event's measurements, judged by themselves. The rate of the first compression in a cycle is
/// left out: it would show how long the pause before it was.
Compression judged(const CPREventCompression &event, const Targets &targets);
Ventilation judged(const CPREventVentilation &event, const Targets &targets);
/// @}

/// Whether nothing is wrong with \a event. False for a compression or a ventilation with faults,
/// and for a pause as long as LiveAdvice lets it be, unless the AED asked for it; no value for any
/// other pause, and for what is not judged.
std::optional<bool> isRight(const CPREventBase &event, const Targets &targets);

} // namespace sessionreview

#endif
