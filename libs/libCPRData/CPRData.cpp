// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRData.h"

#include "CPREventSessionInfo.h"
#include "CPRFileHandler.h"
#include "CPRReadReport.h"
#include "CPRWaveformInfo.h"
#include "private/EnumKey.h"
#include "private/Limits.h"
#include "private/PrintableText.h"
#include "private/ReadBack.h"
#include "private/RepeatedWarning.h"
#include "private/ResponseId.h"
#include "private/SessionArchive.h"
#include "private/Units.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QLoggingCategory>
#include <QScopedValueRollback>

#include <algorithm>
#include <limits>

using bls_2010::CommonDefs;
using Units::msecsPerSecond;
using Units::sessionMsecs;

Q_LOGGING_CATEGORY(lcData, "Kelmar.CPRData.CPRData", QtWarningMsg)

namespace {

using namespace SessionArchive;

// The link sends this one for its own purposes.
constexpr quint32 ignoredMessage = 38;

CPRGuidelines *guidelinesOf(const QVariant &entry)
{
    return qobject_cast<CPRGuidelines *>(entry.value<QObject *>());
}

} // namespace

CPRData::CPRData(QObject *parent) : QObject(parent)
{
    m_cprGuidelines = new CPRGuidelines(this);
    addGuidelines(m_cprGuidelines);
    m_compressionData = new CPRCompressionData(this);
    m_ventilationData = new CPRVentilationData(this);
    m_cprEvents = new CPREvents(m_cprGuidelines, this);

    connect(m_cprEvents, &CPREvents::cprSessionStatisticsChanged, this,
            &CPRData::onStatisticsReady);
    connectLearners();
}

CPRData::CPRData(const CPRData &other, QObject *parent)
    : QObject(parent), m_lastWaveSequence(other.m_lastWaveSequence),
      m_expectedWaveSequence(other.m_expectedWaveSequence), m_cprState(other.m_cprState),
      m_trimToTotalTime(other.m_trimToTotalTime), m_isSaved(other.m_isSaved),
      m_learners(other.m_learners)
{
    m_compressionData = new CPRCompressionData(*other.m_compressionData, this);
    m_ventilationData = new CPRVentilationData(*other.m_ventilationData, this);
    m_cprGuidelines = new CPRGuidelines(this);
    m_cprEvents = new CPREvents(*other.m_cprEvents, m_cprGuidelines, this);
    for (const QVariant &entry : other.m_cprGuidelinesList)
        addGuidelines(entry.value<QObject *>());
    *m_cprGuidelines = *other.m_cprGuidelines;

    // The copy is not connected to its statistics: it must stay as the original was.
    connectLearners();
}

CPRData::~CPRData() = default;

void CPRData::connectLearners()
{
    connect(this, &CPRData::learnersChanged, this, &CPRData::onLearnersChanged);
    connect(this, &CPRData::learnerNamesUpdated, m_cprEvents, &CPREvents::cprSessionInfoChanged);
}

void CPRData::addGuidelines(QObject *guidelines)
{
    m_cprGuidelinesList.append(QVariant::fromValue(guidelines));
    // A host may delete a set, and a set that a copy shares can go with its own session.
    connect(guidelines, &QObject::destroyed, this, [this](QObject *gone) {
        m_cprGuidelinesList.removeAll(QVariant::fromValue(gone));
        Q_EMIT cprGuidelinesListChanged();
    });
}

void CPRData::setCprState(CprState state)
{
    qCInfo(lcData) << "State =" << EnumKey(state);
    if (state == CPR_MANIKIN_INIT && m_cprState != CPR_MANIKIN_INIT) {
        initialize();
    } else if (state == CPR_INIT && m_cprState != CPR_INIT) {
        reset();
    } else if (state == CPR_START) {
        if (m_cprState != CPR_INIT)
            resume();
        else if (CPREventSessionInfo *info = m_cprEvents->sessionInfo())
            info->setStartTime();
    }
    m_cprState = state;
}

void CPRData::initialize()
{
    qCInfo(lcData) << Q_FUNC_INFO;
    m_packetLossThresholdMs = 0;
    m_lastWaveSequence = 0;
    m_expectedWaveSequence = 1;
    m_cprGuidelines->initialize();
    m_compressionData->initialize();
    m_ventilationData->initialize();
    m_cprEvents->initialize();
    setSessionTime(0);
}

void CPRData::reset()
{
    qCInfo(lcData) << Q_FUNC_INFO;
    m_lastWaveSequence = 0;
    m_expectedWaveSequence = 1;
    m_compressionData->reset();
    m_ventilationData->reset();
    m_cprEvents->reset();
    setSessionTime(0);
}

void CPRData::resume()
{
    qCInfo(lcData) << Q_FUNC_INFO;
    m_cprEvents->resume();
    Q_EMIT resumingSession();
}

bool CPRData::incomingMsg(bls_2010::RMessage *msg)
{
    const quint32 identifier = msg ? msg->getIdentifier() : ignoredMessage;
    if (identifier == ignoredMessage)
        return false;
    qCInfo(lcData) << "ResponseID" << ResponseId{identifier};
    if (m_cprState != CPR_ENDED && m_compressionData->incomingMsg(msg))
        return true;
    if (m_cprState != CPR_ENDED && m_ventilationData->incomingMsg(msg))
        return true;
    if (m_cprEvents->incomingMsg(msg))
        return true;
    return identifier == CommunicationIDs::RPL_GUIDELINES && rplmsg_RPL_GUIDELINES(msg);
}

bool CPRData::rplmsg_RPL_GUIDELINES(bls_2010::RMessage *msg)
{
    qCInfo(lcData) << Q_FUNC_INFO;
    auto *guidelines = new CPRGuidelines(this);
    if (!guidelines->incomingMsg(msg)) {
        delete guidelines;
        return false;
    }
    incomingGuidelines(guidelines);
    return true;
}

bool CPRData::isHeld(const CPRGuidelines *guidelines) const
{
    return guidelines == m_cprGuidelines
        || std::any_of(
               m_cprGuidelinesList.cbegin(), m_cprGuidelinesList.cend(),
               [guidelines](const QVariant &entry) { return guidelinesOf(entry) == guidelines; });
}

void CPRData::copyGuidelines(CPRGuidelines *to, const CPRGuidelines &from)
{
    if (m_cloneIncomingGuidelines)
        to->clone(from);
    else
        *to = from;
}

void CPRData::incomingGuidelines(CPRGuidelines *guidelines)
{
    if (!guidelines)
        return;
    qCInfo(lcData) << "Guideline ID:" << guidelines->guidelinesID()
                   << "is active:" << guidelines->manikinGuidelineFlag();
    if (isHeld(guidelines)) {
        Q_EMIT cprGuidelinesRecevied(guidelines);
        return;
    }

    if (guidelines->manikinGuidelineFlag()) {
        if (*m_cprGuidelines != *guidelines) {
            copyGuidelines(m_cprGuidelines, *guidelines);
            // Manikins with guidelines of 2010 never knew the setting; their hosts expect no more.
            if (!guidelines->guidelinesID().startsWith(QLatin1String("2010"))
                && guidelines->compressionTooDeepSetting()
                    == CPRGuidelines::COMP_TOO_DEEP_NO_SUPPORT) {
                if (isWarningPrinted(lcData, m_unsupported))
                    qCWarning(lcData, "Manikin do not support compression too deep setting");
                Q_EMIT unsupportedFeature(QStringLiteral("CompressionTooDeepSetting"));
            }
        }
        delete guidelines;
        Q_EMIT cprGuidelinesRecevied(m_cprGuidelines);
        return;
    }

    for (const QVariant &entry : qAsConst(m_cprGuidelinesList)) {
        CPRGuidelines *known = guidelinesOf(entry);
        if (known && known->guidelinesID() == guidelines->guidelinesID()) {
            copyGuidelines(known, *guidelines);
            Q_EMIT cprGuidelinesRecevied(known);
            delete guidelines;
            return;
        }
    }
    guidelines->setParent(this);
    addGuidelines(guidelines);
    Q_EMIT cprGuidelinesListChanged();
    Q_EMIT cprGuidelinesRecevied(guidelines);
}

void CPRData::setSessionTime(int a_SessionTime)
{
    qCDebug(lcData) << "sessionTime" << a_SessionTime;
    // The guideline set has no use for the time and is left out on purpose.
    m_compressionData->setSessionTime(a_SessionTime);
    m_ventilationData->setSessionTime(a_SessionTime);
    m_cprEvents->setSessionTime(a_SessionTime);
}

qint64 CPRData::samplePeriod() const
{
    return m_compressionData->waveformInfo()->samplePeriod();
}

void CPRData::waveHeaderReceived(std::int32_t sequenceNumber)
{
    qCDebug(lcData) << "sequenceNumber" << sequenceNumber << "cprState" << EnumKey(m_cprState);
    // Sequence number 0 belongs to no wave period.
    if (m_cprState == CPR_START && sequenceNumber != 0) {
        const qint64 gap = qint64(sequenceNumber) - m_expectedWaveSequence;
        const qint64 period = samplePeriod();
        if (gap > 0 && gap * period > Limits::maxGapMs) {
            if (isWarningPrinted(lcData, m_jumps))
                qCWarning(lcData) << "Lost data: the wave jumps from" << m_expectedWaveSequence
                                  << "to" << sequenceNumber << "and is not filled";
        } else if (gap > 0) {
            if (gap * period > m_packetLossThresholdMs)
                addPacketLoss(period * m_expectedWaveSequence, period * (sequenceNumber - 1));
            qCDebug(lcData, "waveHeaderSync issue by %lld, %lld ms", gap, period * gap);
            m_compressionData->fill(static_cast<int>(gap));
            m_ventilationData->fill(static_cast<int>(gap));
        }
        // Who listens to the session time finds the number of this header, and may begin anew.
        m_expectedWaveSequence = sequenceNumber;
        setSessionTime(sessionMsecs(samplePeriod() * sequenceNumber));
        if (m_expectedWaveSequence < std::numeric_limits<std::int32_t>::max())
            ++m_expectedWaveSequence;
    }
    m_lastWaveSequence = sequenceNumber;
}

void CPRData::addPacketLoss(qint64 start, qint64 end)
{
    const auto add = [this](CPREventBase::EventType type, qint64 msecs) {
        m_cprEvents->addEvent(new CPREventBase(type, sessionMsecs(msecs), m_cprEvents), true);
    };
    add(CPREventBase::CprPacketLossStart, start);
    add(CPREventBase::CprPacketLossEnd, end);
}

void CPRData::waveDataReceived(CommonDefs::WaveType wType, int data, int seqNumber)
{
    qCDebug(lcData) << "wType" << wType << "data" << data << "seqNumber" << seqNumber;
    const CPREventSessionInfo *info = m_cprEvents->sessionInfo();
    if (const int step = info ? info->waveDataStep() : 0; step > 0)
        data = data / step * step;
    m_compressionData->waveDataReceived(wType, data, seqNumber);
    m_ventilationData->waveDataReceived(wType, data, seqNumber);
}

void CPRData::receivingData(bool receiving)
{
    qCDebug(lcData) << "Receiving" << receiving;
    m_receiving = receiving;
    if (!receiving)
        Q_EMIT receiveDataComplete();
}

void CPRData::addUserEvent(const QString &eventId)
{
    m_cprEvents->addUserEvent(eventId);
}

void CPRData::onStatisticsReady()
{
    qCInfo(lcData) << Q_FUNC_INFO;
    const CPREventSessionInfo *info = m_cprEvents->sessionInfo();
    if (!m_trimToTotalTime || !info)
        return;
    const qint64 totalTime = info->parameterValue(CPREventBase::totalTime, QVariant()).toInt();
    const int cut = sessionMsecs((totalTime + 1) * msecsPerSecond);
    if (cut >= m_compressionData->sessionTime())
        return;
    m_compressionData->cutOffWavedataAtTime(cut);
    m_ventilationData->cutOffWavedataAtTime(cut);
    m_cprEvents->removeInactivityEventAfter(cut);
    setSessionTime(cut);
}

void CPRData::assignLearner(const QString &name)
{
    qCInfo(lcData) << "learner" << name;
    joinNames();
    if (m_joined.names.contains(name))
        return;
    m_learners.append(name);
    Q_EMIT learnersChanged();
}

void CPRData::releaseLearner(const QString &name)
{
    qCInfo(lcData) << "learner" << name;
    if (m_learners.removeAll(name) > 0)
        m_joined = {};
    Q_EMIT learnersChanged();
}

void CPRData::onLearnersChanged()
{
    qCInfo(lcData) << "learners" << m_learners.join(QLatin1String(", "));
    joinNames();
    if (CPREventSessionInfo *info = m_cprEvents->sessionInfo())
        info->setParameter(CPREventBase::students, m_joined.students);
    Q_EMIT learnerNamesUpdated();
}

// The names are stored in one text, so a comma in a name would split it.
void CPRData::joinNames()
{
    for (; m_joined.count < m_learners.size(); ++m_joined.count) {
        QString name = m_learners.at(m_joined.count);
        m_joined.names.insert(name);
        if (!m_joined.students.isEmpty())
            m_joined.students += QLatin1Char(',');
        m_joined.students += name.remove(QLatin1Char(','));
    }
}

void CPRData::onOtherLearnersChanged()
{
    const auto *other = qobject_cast<const CPRData *>(sender());
    // The echo of what is being taken over: two sessions that are connected crosswise would answer
    // each other for ever.
    if (!other || (m_takingOverLearners && other->m_learners == m_learners))
        return;
    qCInfo(lcData) << "other laerners" << other->m_learners.join(QLatin1String(", "));
    const QScopedValueRollback<bool> takingOver(m_takingOverLearners, true);
    const QStringList &names = other->m_learners;
    if (m_learners.size() <= names.size()
        && std::equal(m_learners.cbegin(), m_learners.cend(), names.cbegin())) {
        m_learners += names.mid(m_learners.size());
    } else {
        m_learners = names;
        m_joined = {};
    }
    Q_EMIT learnersChanged();
}

void CPRData::setIsSaved(bool saved)
{
    if (saved == m_isSaved)
        return;
    m_isSaved = saved;
    Q_EMIT isSavedChanged();
}

void CPRData::setIsUploaded(bool uploaded)
{
    if (uploaded == m_isUploaded)
        return;
    m_isUploaded = uploaded;
    Q_EMIT isUploadedChanged();
}

bool CPRData::writeData(CPRFileHandler *handler)
{
    qCInfo(lcData) << Q_FUNC_INFO;
    if (!handler)
        return false;
    m_filename = handler->filename();
    Q_EMIT filenameChanged(m_filename);

    if (const std::optional<QString> loss = lossWhenReadBack(*this))
        qCWarning(lcData).noquote() << "The session cannot be read back whole:" << *loss;
    for (const MemberIndex index : writingOrder) {
        if (writeMember(*this, index, *handler))
            continue;
        qCWarning(lcData).noquote() << "Unable to write CPR Data," << nameInFolder(index);
        // A wave that cannot be stored costs only its warning: the events are worth more.
        if (index == Events || index == Guidelines)
            return false;
    }
    return true;
}

bool CPRData::readData(CPRFileHandler *handler)
{
    CPRReadReport report;
    return readData(handler, report);
}

bool CPRData::readData(CPRFileHandler *handler, CPRReadReport &report)
{
    qCInfo(lcData) << Q_FUNC_INFO;
    if (!handler)
        return false;
    m_filename = handler->filename();
    Q_EMIT filenameChanged(m_filename);

    report.members.clear();
    bool isComplete = true;
    for (const MemberIndex index : readingOrder) {
        const QString name = nameToRead(*this, index);
        if (name.isEmpty()) {
            qCWarning(lcData, "Unable to read CPR Data, %s wave",
                      index == Compressions ? "Compression" : "Ventilation");
            CPRReadReport::Member &list = report.members.first();
            if (list.state == CPRReadReport::Member::Complete) {
                list.state = CPRReadReport::Member::Damaged;
                list.reason = QStringLiteral("it does not name the members of both waves");
            }
            isComplete = false;
            continue;
        }
        const QString damage = readMember(*this, index, *handler, report);
        const bool isMissing = report.members.last().state == CPRReadReport::Member::Missing;
        if (isMissing && index == Waves) {
            qCInfo(lcData).noquote() << "No CPR Data," << PrintableText::escaped(name);
            return false;
        }
        // A wave that cannot be opened reads as an empty one, and is no failure.
        if ((isMissing && !isWave(index)) || !damage.isEmpty()) {
            const QString text = isMissing ? name : name + QLatin1String(": ") + damage;
            qCWarning(lcData).noquote()
                << "Unable to read CPR Data," << PrintableText::escaped(text);
            isComplete = false;
        }
        if (index == Events && !isMissing) {
            m_learners = m_cprEvents->sessionInfo()
                             ->parameterValue(CPREventBase::students, QVariant())
                             .toString()
                             .split(QLatin1Char(','));
            m_joined = {};
        }
    }
    const int covered = m_compressionData->sessionTimeFromData();
    setSessionTime(covered);
    m_cprEvents->sessionInfo()->setTotalTime(Units::secsBegun(covered));
    return isComplete;
}
