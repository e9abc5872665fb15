// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CHESTBOARD_COMMONDEFS_H
#define CHESTBOARD_COMMONDEFS_H

#include <QtGlobal>

#include <cstddef>

namespace bls_2010 {

/// Structures and enumerations that the link library hands out already decoded.
class CommonDefs {
public:
    /// One chest compression. Times in ms, depths in hundredths of a millimetre.
    struct CompressionEvent_t {
        quint16 reserved0 = 0; ///< not used
        quint16 startToPeak = 0; ///< time from the start to the deepest point
        quint16 peakToEnd = 0; ///< time from there to the end
        quint16 instantaneousPeriod = 0; ///< time since the previous compression
        qint16 peakDepth = 0; ///< depth of the deepest point
        qint16 releaseDepth = 0; ///< depth to which the chest came back
        quint8 reserved12[12] = {}; ///< not used
        quint8 incorrectRelease = 0; ///< non-zero: the chest was not released completely
        quint8 reserved25 = 0; ///< not used
        quint8 handPositionError = 0; ///< non-zero: wrong hand position
    };

    /// One ventilation. Times in ms, volume in ml.
    struct VentilationEvent_t {
        quint16 reserved0 = 0; ///< not used
        quint16 startToPeak = 0; ///< time from the start to the greatest volume
        quint16 peakToEnd = 0; ///< time from there to the end
        quint16 instantaneousPeriod = 0; ///< time since the previous ventilation
        quint16 volume = 0; ///< inflated volume
        quint8 duringCompression = 0; ///< non-zero: given while the chest was compressed
    };

    /// The waves that the manikin can send.
    enum WaveType : quint8 {
        WAVE_RELATIVE_COMP_DEPTH = 9, ///< depth, hundredths of a millimetre
        WAVE_VENT_VOLUME = 12, ///< volume, ml
        WAVE_ABSOLUTE_COMP_DEPTH = 13 ///< depth, hundredths of a millimetre
    };

    /// How the session is trained. The underlying type is fixed: the link carries one byte.
    enum CprProtocolType : quint8 {
        CPR_SINGLE_RESCUER = 0,
        CPR_COMPRESSION_ONLY = 1,
        CPR_VENTILATION_ONLY = 2,
        CPR_AUTOMATIC = 3,
        CPR_TWO_RESCUER = 4,
        CPR_HIGH_PERFORMANCE = 5
    };
};

// clang-format off
static_assert(offsetof(CommonDefs::CompressionEvent_t, startToPeak)         ==  2);
static_assert(offsetof(CommonDefs::CompressionEvent_t, peakToEnd)           ==  4);
static_assert(offsetof(CommonDefs::CompressionEvent_t, instantaneousPeriod) ==  6);
static_assert(offsetof(CommonDefs::CompressionEvent_t, peakDepth)           ==  8);
static_assert(offsetof(CommonDefs::CompressionEvent_t, releaseDepth)        == 10);
static_assert(offsetof(CommonDefs::CompressionEvent_t, incorrectRelease)    == 24);
static_assert(offsetof(CommonDefs::CompressionEvent_t, handPositionError)   == 26);

static_assert(offsetof(CommonDefs::VentilationEvent_t, startToPeak)         ==  2);
static_assert(offsetof(CommonDefs::VentilationEvent_t, peakToEnd)           ==  4);
static_assert(offsetof(CommonDefs::VentilationEvent_t, instantaneousPeriod) ==  6);
static_assert(offsetof(CommonDefs::VentilationEvent_t, volume)              ==  8);
static_assert(offsetof(CommonDefs::VentilationEvent_t, duringCompression)   == 10);
// clang-format on

} // namespace bls_2010

#endif
