// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventVentilation.h"

#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "CPRVentilationData.h"
#include "private/MessageFields.h"
#include "private/SessionMsecs.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

CPREventVentilation::CPREventVentilation(int msecs, CPREvents *owner)
    : CPREventBase(CprVentEvent, msecs, owner)
{
}

CPREventVentilation::CPREventVentilation(const CPREventVentilation &other, CPREvents *owner)
    : CPREventBase(other, owner), m_ventVolume(other.m_ventVolume), m_ventRate(other.m_ventRate),
      m_ventInstantaneousPeriod(other.m_ventInstantaneousPeriod),
      m_ventPeakTime(other.m_ventPeakTime), m_ventDuringCompression(other.m_ventDuringCompression)
{
}

CPREventVentilation::~CPREventVentilation() = default;

void CPREventVentilation::takeRateOfWaveform()
{
    if (const CPRVentilationData *wave = ventilationData())
        m_ventRate = wave->rate();
}

void CPREventVentilation::incomingVitilationEvent(
    bls_2010::CommonDefs::VentilationEvent_t ventilation)
{
    m_ventPeakTime = sessionMsecs(qint64(msecs()) + ventilation.startToPeak);
    setEventEndTime(sessionMsecs(qint64(m_ventPeakTime) + ventilation.peakToEnd));
    m_ventInstantaneousPeriod = ventilation.instantaneousPeriod;
    m_ventVolume = ventilation.volume;
    m_ventDuringCompression = ventilation.duringCompression != 0;
    takeRateOfWaveform();
}

// RPL_VENT_EVENT (80)
//   1-2   s16  age of the start, ms
//   3     u8   bit 0: during compression
//   4-5   u16  start to peak, ms
//   6-7   u16  peak to end, ms
//   8-9   u16  time since the previous ventilation, ms
//  10-11  u16  volume, ml
bool CPREventVentilation::incomingMsg(bls_2010::RMessage *msg)
{
    using MessageFields::assembledU16;

    if (MessageFields::identifierOf(msg) != CommunicationIDs::RPL_VENT_EVENT || !events())
        return false;

    bool ok = false;
    const auto age = static_cast<qint16>(assembledU16(*msg, 1, ok));
    if (!ok)
        return false;
    const int sent = events()->calculateSessionTime(msg->getHeader().getSequenceNumber());
    setMSecs(sessionMsecs(qint64(sent) - age));

    m_ventDuringCompression = (msg->getContentByte(3, ok) & 1) != 0;
    if (!ok)
        return false;

    const quint16 startToPeak = assembledU16(*msg, 4, ok);
    if (!ok)
        return false;
    m_ventPeakTime = sessionMsecs(qint64(msecs()) + startToPeak);

    const quint16 peakToEnd = assembledU16(*msg, 6, ok);
    if (!ok)
        return false;
    setEventEndTime(sessionMsecs(qint64(m_ventPeakTime) + peakToEnd));

    m_ventInstantaneousPeriod = assembledU16(*msg, 8, ok);
    if (!ok)
        return false;
    takeRateOfWaveform();

    m_ventVolume = assembledU16(*msg, 10, ok);
    return ok;
}

bool CPREventVentilation::isCorrect(CPRGuidelines *guidelines, bool ventilationsOnly) const
{
    if (!guidelines)
        return false;
    // The maximum itself already counts as too much.
    const bool volumeOk = m_ventVolume >= guidelines->ventilationVolumeMin()
        && m_ventVolume < guidelines->ventilationVolumeMax();
    if (!ventilationsOnly || m_ventInstantaneousPeriod <= 0)
        return volumeOk;

    constexpr int msecsPerMinute = 60000;
    const int rate = msecsPerMinute / m_ventInstantaneousPeriod;
    return volumeOk
        && (rate == 0
            || (rate >= guidelines->ventilationRateMinForVentilationsOnly()
                && rate <= guidelines->ventilationRateMaxForVentilationsOnly()));
}

CPREventVentilation *CPREventVentilation::clone(CPREvents *owner)
{
    return new CPREventVentilation(*this, owner);
}

int CPREventVentilation::tag() const
{
    return TagVent;
}
