// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventVentilation.h"

#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "CPRVentilationData.h"
#include "private/MessageLayouts.h"
#include "private/MessageTime.h"
#include "private/Units.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

using Units::sessionMsecs;

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

void CPREventVentilation::storeRateOfWaveform()
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
    storeRateOfWaveform();
}

bool CPREventVentilation::incomingMsg(bls_2010::RMessage *msg)
{
    using Part = MessageLayouts::Ventilation;

    if (MessageLayouts::identifierOf(msg) != CommunicationIDs::RPL_VENT_EVENT || !events())
        return false;
    const auto accept = [this, msg](const auto &row, const std::optional<qint64> &sent) {
        const int value = static_cast<int>(*sent);
        switch (row.key) {
        case Part::Age:
            setMSecs(startOfEvent(*events(), *msg, value));
            break;
        case Part::DuringCompression:
            m_ventDuringCompression = (value & 1) != 0;
            break;
        case Part::StartToPeak:
            m_ventPeakTime = sessionMsecs(qint64(msecs()) + value);
            break;
        case Part::PeakToEnd:
            setEventEndTime(sessionMsecs(qint64(m_ventPeakTime) + value));
            break;
        case Part::Period:
            m_ventInstantaneousPeriod = value;
            storeRateOfWaveform();
            break;
        case Part::Volume:
            m_ventVolume = value;
            break;
        }
        return true;
    };
    return MessageLayouts::decode(*msg, MessageLayouts::ventilationEvent, accept);
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

    const int rate = Units::msecsPerMinute / m_ventInstantaneousPeriod;
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
