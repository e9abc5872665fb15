// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_MESSAGECONTENTS_H
#define MANIKINSIM_MESSAGECONTENTS_H

#include "manikinsim/Scenario.h"
#include "manikinsim/SentMessage.h"

#include <QByteArray>

#include <vector>

/// The contents of the manikin's messages, index 0 first. A value that its field cannot hold is
/// sent as the nearest one that it can.
namespace manikinsim::contents {

/// RPL_VERSIONINFO (64); an older manikin does not tell about a connected AED.
QByteArray versionInfo(const Device &device, bool isOld);
/// RPL_LIFETIMEINFO (70): the compressions, the breaths, the battery.
QByteArray lifetimeCompressions(quint32 count);
QByteArray lifetimeVentilations(quint32 count);
QByteArray lifetimeBattery(const Device &device);
/// RPL_GUIDELINES (75)
QByteArray guidelines(bls_2010::GuidelineValues_t values, bool isInUse);
/// RPL_WAVEINFO (77) of a wave with a sample each \a period ms
QByteArray waveInfo(quint8 waveType, int period, int waveDelay);
/// RPL_COMP_EVENT (79), \a age ms after the compression's start
QByteArray compression(const Compression &compression, int age);
/// RPL_VENT_EVENT (80), \a age ms after the breath's start
QByteArray ventilation(const Ventilation &ventilation, int age);
/// RPL_CPR_PROTOCOL_CTRL (101)
QByteArray protocol(Scenario::Protocol protocol);
/// RPL_ECG_STATUS (52)
QByteArray rhythm(int rhythm);
/// RPL_USER_EVENT (68); of the name as many bytes of UTF-8 as there is room for
QByteArray userEvent(const QString &name);

/// RPL_GENERIC_EVENT (48) of an AED event; details beyond those that the kind has are left out.
QByteArray aedEvent(int kind, const std::vector<int> &details);
/// Whether the kind says nothing without a detail; at least the first is needed then.
bool hasDetails(int kind);

/// The values as the fields of the statistics and score messages can hold them.
Parameters fitted(const Parameters &values);
/// RPL_GL_INDEPENDENT_STATS (109); an older manikin ends before the inflation times.
QByteArray independentStatistics(const Parameters &values, bool isOld);
/// RPL_GL_INDEPENDENT_BIN_STATS (110)
QByteArray histograms(const Parameters &values);
/// RPL_GL_DEPENDENT_STATS (111)
QByteArray dependentStatistics(const Parameters &values);
/// RPL_CPR_SCORES (108); an older manikin ends before the overall score.
QByteArray scores(const Parameters &values, bool isOld);

} // namespace manikinsim::contents

#endif
