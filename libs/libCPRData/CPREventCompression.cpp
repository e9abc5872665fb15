// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventCompression.h"

#include "CPRCompressionData.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "private/MessageLayouts.h"
#include "private/MessageTime.h"
#include "private/Units.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <algorithm>
#include <cmath>
#include <limits>

using Units::sessionMsecs;

namespace {

constexpr float mmPerRawDepth = 0.01F;
constexpr float notMeasured = -1.0F;

// A file can hold any force; the manikin's have 16 bits.
qint16 gramsOf(float force)
{
    using Limits = std::numeric_limits<qint16>;
    if (std::isnan(force))
        return static_cast<qint16>(notMeasured);
    return static_cast<qint16>(std::clamp<float>(force, Limits::min(), Limits::max()));
}

} // namespace

CPREventCompression::CPREventCompression(int msecs, CPREvents *owner,
                                         const CPREventCompression *previous)
    : CPREventBase(CprCompEvent, msecs, owner)
{
    if (previous) {
        m_previousReleaseDepth = previous->m_compReleaseDepth;
        m_previousReleaseForce = gramsOf(previous->m_compReleaseForce);
    }
}

CPREventCompression::CPREventCompression(const CPREventCompression &other, CPREvents *owner)
    : CPREventBase(other, owner), m_compDepth(other.m_compDepth),
      m_compPeakForce(other.m_compPeakForce), m_compPeakTime(other.m_compPeakTime),
      m_compInstantaneousPeriod(other.m_compInstantaneousPeriod),
      m_compAbsolutePeakDepth(other.m_compAbsolutePeakDepth),
      m_compLeaningDepth(other.m_compLeaningDepth), m_compLeaningForce(other.m_compLeaningForce),
      m_compReleaseForce(other.m_compReleaseForce), m_compReleaseDepth(other.m_compReleaseDepth),
      m_compHandposXiphoid(other.m_compHandposXiphoid),
      m_compHandposError(other.m_compHandposError),
      m_compIncompleteRelease(other.m_compIncompleteRelease), m_compMeanRate(other.m_compMeanRate),
      m_numberInCycle(other.m_numberInCycle), m_previousReleaseDepth(other.m_previousReleaseDepth),
      m_previousReleaseForce(other.m_previousReleaseForce), m_compStatus(other.m_compStatus)
{
}

CPREventCompression::~CPREventCompression() = default;

void CPREventCompression::setCompMeanRate(int rate)
{
    if (rate == m_compMeanRate)
        return;
    m_compMeanRate = rate;
    Q_EMIT compMeanRateChanged();
}

void CPREventCompression::setPeak(int msecsToPeak)
{
    m_compPeakTime = sessionMsecs(qint64(msecs()) + msecsToPeak);
}

void CPREventCompression::storeRateOfWaveform()
{
    if (const CPRCompressionData *wave = compressionData())
        setCompMeanRate(wave->compressionRate());
}

void CPREventCompression::incomingCompressionEvent(
    const bls_2010::CommonDefs::CompressionEvent_t &compression)
{
    setPeak(compression.startToPeak);
    setEventEndTime(sessionMsecs(qint64(m_compPeakTime) + compression.peakToEnd));
    m_compInstantaneousPeriod = compression.instantaneousPeriod;
    m_compDepth = m_compAbsolutePeakDepth = compression.peakDepth * mmPerRawDepth;
    m_compReleaseDepth = compression.releaseDepth * mmPerRawDepth;
    m_compLeaningDepth = m_previousReleaseDepth;
    m_compIncompleteRelease = compression.incorrectRelease != 0;
    m_compHandposXiphoid = m_compHandposError = compression.handPositionError != 0;
    storeRateOfWaveform();
}

bool CPREventCompression::incomingMsg(bls_2010::RMessage *msg)
{
    using Part = MessageLayouts::Compression;

    if (MessageLayouts::identifierOf(msg) != CommunicationIDs::RPL_COMP_EVENT || !events())
        return false;
    const auto accept = [this, msg](const auto &row, const std::optional<qint64> &sent) {
        const int value = static_cast<int>(*sent);
        switch (row.key) {
        case Part::Age:
            setMSecs(startOfEvent(*events(), *msg, value));
            break;
        case Part::PeakForce:
            m_compPeakForce = value;
            break;
        case Part::ReleaseForce:
            m_compReleaseForce = static_cast<float>(value);
            m_compLeaningForce = m_previousReleaseForce;
            m_previousReleaseForce = static_cast<qint16>(value);
            break;
        case Part::Status:
            m_compStatus = CompEventStatusFlags(value);
            m_compIncompleteRelease = m_compStatus.testFlag(CompStatusIncompleteRelease);
            m_compHandposXiphoid = m_compStatus.testFlag(CompStatusHandposXiphoidErrorDetected);
            m_compHandposError = m_compStatus.testFlag(CompStatusHandposErrorDetected);
            break;
        case Part::Depth:
            m_compDepth = m_compAbsolutePeakDepth = static_cast<float>(value) * mmPerRawDepth;
            break;
        case Part::ReleaseDepth:
            m_compReleaseDepth = static_cast<float>(value) * mmPerRawDepth;
            m_compLeaningDepth = m_previousReleaseDepth;
            m_previousReleaseDepth = m_compReleaseDepth;
            break;
        case Part::StartToPeak:
            setPeak(value);
            if (value > std::numeric_limits<qint16>::max()) {
                qDebug("compPeakTime not valid, start2Peak = %d", value);
                return false;
            }
            break;
        case Part::PeakToEnd:
            setEventEndTime(sessionMsecs(qint64(m_compPeakTime) + value));
            if (value > std::numeric_limits<qint16>::max())
                qDebug("endTime not valid, peak2End = %d", value);
            break;
        case Part::Period:
            m_compInstantaneousPeriod = value;
            storeRateOfWaveform();
            break;
        }
        return true;
    };
    return MessageLayouts::decode(*msg, MessageLayouts::compressionEvent, accept);
}

bool CPREventCompression::isCorrect(CPRGuidelines *guidelines) const
{
    if (!guidelines || m_compIncompleteRelease || m_compHandposError)
        return false;
    // The depth limit enters as the number the guidelines hold; hosts rely on it as it is.
    return m_compMeanRate >= guidelines->compressionRateMin()
        && m_compMeanRate <= guidelines->compressionRateMax()
        && m_compAbsolutePeakDepth >= static_cast<float>(guidelines->compressionDepthMin());
}

bool CPREventCompression::isCompMeanRateOk() const
{
    const CPRGuidelines *guidelines = cprGuidelines();
    // Intended: the comparison is the reverse of the one in isCorrect().
    return guidelines && m_compMeanRate <= guidelines->compressionRateMin()
        && m_compMeanRate >= guidelines->compressionRateMax();
}

CPREventCompression *CPREventCompression::clone(CPREvents *owner)
{
    return new CPREventCompression(*this, owner);
}

int CPREventCompression::tag() const
{
    return TagComp;
}
