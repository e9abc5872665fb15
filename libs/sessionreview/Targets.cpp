// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/Targets.h"

#include <CPRData.h>
#include <CPREventSessionInfo.h>
#include <private/Units.h>

#include <cmath>
#include <iterator>
#include <tuple>

namespace sessionreview {

namespace {

using bls_2010::CommonDefs;
using G = CPRGuidelines;

/// What a protocol trains, and which values of the guideline set are for it; null for none.
struct ProtocolRow {
    CommonDefs::CprProtocolType protocol;
    bool compressions;
    bool ventilations;
    bool hasSecondRescuer;
    int (G::*compressionsPerCycle)() const;
    int (G::*minFlowTime)() const;
    Band (*ventilationRate)(const G &set);
};

Band rateOfVentilationsOnly(const G &set)
{
    return {double(set.ventilationRateMinForVentilationsOnly()),
            double(set.ventilationRateMaxForVentilationsOnly())};
}

Band rateOfHighPerformance(const G &set)
{
    return {double(set.ventilationRateMinHPCPR()), double(set.ventilationRateMaxHPCPR())};
}

// The scores go by a rule of their own: the manikin gives no advice on an automatic session.
// clang-format off
constexpr ProtocolRow protocols[] = {
    {CommonDefs::CPR_SINGLE_RESCUER,   true,  true,  false, &G::compressionsBetweenVentilations,           &G::minimumAcceptedFlowtimePercentageSingleRescuerCPR, nullptr},
    {CommonDefs::CPR_COMPRESSION_ONLY, true,  false, false, nullptr,                                       &G::minimumAcceptedFlowtimePercentageCompressionsOnly, nullptr},
    {CommonDefs::CPR_VENTILATION_ONLY, false, true,  false, nullptr,                                       nullptr,                                               rateOfVentilationsOnly},
    {CommonDefs::CPR_AUTOMATIC,        true,  true,  false, &G::compressionsBetweenVentilations,           nullptr,                                               nullptr},
    {CommonDefs::CPR_TWO_RESCUER,      true,  true,  true,  &G::compressionsBetweenVentilationsTwoRescuer, &G::minimumAcceptedFlowtimePercentageTwoRescuerCPR,    nullptr},
    {CommonDefs::CPR_HIGH_PERFORMANCE, true,  true,  true,  nullptr,                                       nullptr,                                               rateOfHighPerformance},
};
// clang-format on

constexpr bool standByValue()
{
    for (std::size_t i = 0; i < std::size(protocols); ++i) {
        if (protocols[i].protocol != i)
            return false;
    }
    return true;
}
static_assert(standByValue());

const ProtocolRow &rowOf(int protocol)
{
    const bool isKnown = protocol >= 0 && protocol < static_cast<int>(std::size(protocols));
    return protocols[isKnown ? protocol : CommonDefs::CPR_AUTOMATIC];
}

} // namespace

bool Training::operator==(const Training &other) const
{
    return compressions == other.compressions && ventilations == other.ventilations
        && cycles == other.cycles;
}

Training trainingOf(int protocol)
{
    const ProtocolRow &row = rowOf(protocol);
    return {row.compressions, row.ventilations, row.compressionsPerCycle != nullptr};
}

bool hasSecondRescuer(int protocol)
{
    return rowOf(protocol).hasSecondRescuer;
}

Side Band::side(double value) const
{
    if (!isValid())
        return Side::Unknown;
    if (value < min)
        return Side::Below;
    return value > max ? Side::Above : Side::Inside;
}

bool Targets::operator==(const Targets &other) const
{
    const auto values = [](const Targets &t) {
        return std::tie(t.depth, t.releaseDepth, t.rate, t.volume, t.compressionsPerCycle,
                        t.ventilationsPerCycle, t.minFlowTime, t.ventilationRate.min,
                        t.ventilationRate.max, t.maxSilence);
    };
    return values(*this) == values(other);
}

double roundedToHmm(float mm)
{
    return Units::mmOf(std::round(double(mm) * Units::hmmPerMm));
}

Side Targets::volumeSide(int ml) const
{
    const Side side = volume.side(ml);
    // The maximum itself already counts as too much.
    return side == Side::Inside && ml >= volume.max ? Side::Above : side;
}

Targets targetsOf(const CPRData &session)
{
    Targets targets;
    const G *set = session.cprGuidelines();
    if (!set)
        return targets;
    targets.depth = {Units::mmOf(set->compressionDepthMin()),
                     Units::mmOf(set->compressionDepthMax())};
    targets.releaseDepth = Units::mmOf(set->compressionAcceptableReleaseDepth());
    targets.rate = {double(set->compressionRateMin()), double(set->compressionRateMax())};
    targets.volume = {double(set->ventilationVolumeMin()), double(set->ventilationVolumeMax())};

    const CPREvents *events = session.cprEvents();
    const CPREventBase *info = events ? events->sessionInfo() : nullptr;
    const ProtocolRow &row =
        rowOf(info ? info->parameterValue(CPREventBase::cprProtocol, 0).toInt() : 0);
    if (row.compressionsPerCycle) {
        targets.compressionsPerCycle = (set->*row.compressionsPerCycle)();
        targets.ventilationsPerCycle = set->ventilationsBetweenCompressions();
    }
    if (row.minFlowTime)
        targets.minFlowTime = (set->*row.minFlowTime)();
    targets.maxSilence = Units::msecsPerSecond
        * (row.compressions ? set->compressionInactivityLevel0TimeoutCPR()
                            : set->compressionInactivityLevel0TimeoutVentilationsOnly());
    if (row.ventilationRate)
        targets.ventilationRate = row.ventilationRate(*set);
    return targets;
}

} // namespace sessionreview
