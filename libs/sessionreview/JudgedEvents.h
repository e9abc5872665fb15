// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_JUDGEDEVENTS_H
#define SESSIONREVIEW_JUDGEDEVENTS_H

#include "sessionreview/Targets.h"

#include <QVector>

class CPREventCompression;
class CPREventVentilation;

namespace sessionreview {

/// What a learner can do wrong, in the order in which it is reported.
enum class Fault {
    TooShallow,
    TooDeep,
    IncompleteRelease,
    HandPosition,
    TooSlow,
    TooFast,
    TooLittle, ///< this and the next: volume
    TooMuch
};

/// Times in ms of session time.
struct Compression {
    int begin = 0;
    int peak = 0;
    int end = 0;
    int period = 0; ///< since the start of the compression before; 0 where it is not known
    float depth = 0; ///< mm
    float releaseDepth = 0; ///< mm
    int rate = 0; ///< per minute; 0 for the first of a run and where it is not known
    int number = 0; ///< in its cycle, from 1; 0 where the manikin did not count
    Side depthSide = Side::Unknown;
    Side rateSide = Side::Unknown;
    bool incompleteRelease = false;
    bool wrongHands = false;

    bool has(Fault fault) const;
};

struct Ventilation {
    int begin = 0;
    int peak = 0;
    int end = 0;
    int volume = 0; ///< ml
    int rate = 0; ///< per minute
    Side volumeSide = Side::Unknown;

    bool has(Fault fault) const;
};

/// @{
/// The faults; none when all is right.
QVector<Fault> faultsOf(const Compression &compression);
QVector<Fault> faultsOf(const Ventilation &ventilation);
/// @}
/// The advice (CPREventBase::Advice) about the worst of \a faults: what harms the patient first,
/// then what makes the compression useless.
int adviceOn(const QVector<Fault> &faults);

/// @{
/// An event's measurements. The sides and the rate of what follows a pause are left for judge().
Compression compressionOf(const CPREventCompression &event);
Ventilation ventilationOf(const CPREventVentilation &event);
/// @}
/// @{
/// Finds the sides on which the measurements lie.
void judge(Compression &compression, const Targets &targets);
void judge(Ventilation &ventilation, const Targets &targets);
/// @}
/// @{
/// An event's measurements, judged by themselves. The rate of the first compression in a cycle is
/// left out: it would show how long the pause before it was.
Compression judged(const CPREventCompression &event, const Targets &targets);
Ventilation judged(const CPREventVentilation &event, const Targets &targets);
/// @}

} // namespace sessionreview

#endif
