// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRData.h"

#include "CPREventSessionInfo.h"
#include "CPRFileHandler.h"
#include "CPRWaveformInfo.h"
#include "ResponseId.h"
#include "SessionMsecs.h"
#include "WaveSamples.h"
#include "XmlInput.h"
#include "XmlOutput.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QIODevice>
#include <QLoggingCategory>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <limits>

using bls_2010::CommonDefs;

Q_LOGGING_CATEGORY(lcData, "Kelmar.CPRData.CPRData", QtWarningMsg)

namespace {

// The link sends this one for its own purposes.
constexpr quint32 ignoredMessage = 38;

constexpr int msecsPerSecond = 1000;

// No training lasts as long. A longer gap in the sequence numbers is a corrupt header, and filling
// it could ask for gigabytes.
constexpr qint64 longestGapMs = qint64(24) * 60 * 60 * msecsPerSecond;

// In the file handler's archive; the wave members are named by their descriptions.
const QString eventsMember = QStringLiteral("CPREvents.xml");
const QString wavesMember = QStringLiteral("CPRWaves.xml");
const QString compressionMember = QStringLiteral("COMP.WV");
const QString ventilationMember = QStringLiteral("VENT.WV");
const QString guidelinesMember = QStringLiteral("CPRGuidelines.xml");

CPRGuidelines *guidelinesOf(const QVariant &entry)
{
    return qobject_cast<CPRGuidelines *>(entry.value<QObject *>());
}

// A member that is open for reading or writing for as long as this object lives.
class Member {
public:
    Member(CPRFileHandler &handler, QIODevice *device) : m_handler(handler), m_device(device) { }
    ~Member() { m_handler.releaseFile(m_device); }
    Q_DISABLE_COPY(Member)

    explicit operator bool() const { return m_device != nullptr; }
    QIODevice *device() const { return m_device; }

private:
    CPRFileHandler &m_handler;
    QIODevice *m_device;
};

// Opens the member and lets write(device) fill it; false when it cannot be opened or filled.
template <typename Write>
bool writeMember(CPRFileHandler &handler, const QString &name, Write write)
{
    const Member member(handler, handler.openFileForWriting(name));
    if (member && write(member.device()))
        return true;
    qCWarning(lcData).noquote() << "Unable to write CPR Data," << name;
    return false;
}

template <typename Write>
bool writeXmlMember(CPRFileHandler &handler, const QString &name, Write write)
{
    return writeMember(handler, name, [&write](QIODevice *device) {
        XmlOutput output(device);
        QXmlStreamWriter writer(&output);
        writer.setAutoFormatting(true);
        write(writer);
        return output.finish();
    });
}

bool reportUnread(const QString &name, const QString &damage)
{
    qCWarning(lcData).noquote() << "Unable to read CPR Data," << name + QLatin1Char(':') << damage;
    return false;
}

// Lets read() take the document in \a device from its beginning. False when the document is
// damaged; read() has then taken what comes before that.
template <typename Read>
bool readDocument(QXmlStreamReader &reader, QIODevice *device, const QString &name, Read read)
{
    XmlInput input(device);
    reader.setDevice(&input);
    reader.readNext();
    const QString encoding = reader.documentEncoding().toString();
    if (!encoding.isEmpty() && encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) != 0)
        reader.raiseError(QStringLiteral("it is encoded in %1, not in UTF-8").arg(encoding));
    if (!reader.hasError())
        read();
    while (!reader.atEnd())
        reader.readNext();
    if (!reader.hasError())
        return true;
    const QString damage = input.damage().isEmpty() ? reader.errorString() : input.damage();
    return reportUnread(name,
                        QStringLiteral("line %1, column %2: %3")
                            .arg(reader.lineNumber())
                            .arg(reader.columnNumber())
                            .arg(damage));
}

} // namespace

CPRData::CPRData(QObject *parent) : QObject(parent)
{
    m_cprGuidelines = new CPRGuidelines(this);
    m_cprGuidelinesList.append(QVariant::fromValue<QObject *>(m_cprGuidelines));
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
    shareGuidelines(other.m_cprGuidelinesList);
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

void CPRData::shareGuidelines(const QVariantList &list)
{
    m_cprGuidelinesList = list;
    for (const QVariant &entry : list) {
        // The sets belong to another session and can go before this one.
        connect(entry.value<QObject *>(), &QObject::destroyed, this, [this](QObject *gone) {
            m_cprGuidelinesList.removeAll(QVariant::fromValue(gone));
            Q_EMIT cprGuidelinesListChanged();
        });
    }
}

void CPRData::setCprState(CprState state)
{
    qCInfo(lcData) << "State =" << state;
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

void CPRData::takeOver(CPRGuidelines *to, const CPRGuidelines &from)
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
            takeOver(m_cprGuidelines, *guidelines);
            // Manikins with guidelines of 2010 never knew the setting; their hosts expect no more.
            if (!guidelines->guidelinesID().startsWith(QLatin1String("2010"))
                && guidelines->compressionTooDeepSetting()
                    == CPRGuidelines::COMP_TOO_DEEP_NO_SUPPORT) {
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
            takeOver(known, *guidelines);
            Q_EMIT cprGuidelinesRecevied(known);
            delete guidelines;
            return;
        }
    }
    guidelines->setParent(this);
    m_cprGuidelinesList.append(QVariant::fromValue<QObject *>(guidelines));
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
    qCDebug(lcData) << "sequenceNumber" << sequenceNumber << "cprState" << m_cprState;
    // Sequence number 0 belongs to no wave period.
    if (m_cprState == CPR_START && sequenceNumber != 0) {
        const qint64 gap = qint64(sequenceNumber) - m_expectedWaveSequence;
        if (gap > 0)
            fillGap(gap, sequenceNumber);
        setSessionTime(sessionMsecs(samplePeriod() * sequenceNumber));
        m_expectedWaveSequence = static_cast<std::int32_t>(
            qMin<qint64>(qint64(sequenceNumber) + 1, std::numeric_limits<std::int32_t>::max()));
    }
    m_lastWaveSequence = sequenceNumber;
}

void CPRData::fillGap(qint64 gap, std::int32_t sequenceNumber)
{
    const qint64 period = samplePeriod();
    if (gap * period > longestGapMs
        || m_compressionData->count() + gap > WaveSamples::maximalCount) {
        qCWarning(lcData) << "Lost data: the wave jumps from" << m_expectedWaveSequence << "to"
                          << sequenceNumber << "and is not filled";
        return;
    }
    if (gap * period > m_packetLossThresholdMs) {
        const auto addLoss = [this](CPREventBase::EventType type, qint64 msecs) {
            m_cprEvents->addEvent(new CPREventBase(type, sessionMsecs(msecs), m_cprEvents), true);
        };
        addLoss(CPREventBase::CprPacketLossStart, period * m_expectedWaveSequence);
        addLoss(CPREventBase::CprPacketLossEnd, period * (qint64(sequenceNumber) - 1));
    }
    qCDebug(lcData, "waveHeaderSync issue by %lld, %lld ms", gap, period * gap);
    m_compressionData->fill(static_cast<int>(gap));
    m_ventilationData->fill(static_cast<int>(gap));
}

void CPRData::waveDataReceived(CommonDefs::WaveType wType, int data, int seqNumber)
{
    qCDebug(lcData) << "wType" << wType << "data" << data << "seqNumber" << seqNumber;
    const CPREventSessionInfo *info = m_cprEvents->sessionInfo();
    if (const int step = info ? info->waveDataStep() : 0; step > 0)
        data = data / step * step;
    if (wType == CommonDefs::WAVE_VENT_VOLUME)
        m_ventilationData->waveDataReceived(wType, data, seqNumber);
    else
        m_compressionData->waveDataReceived(wType, data, seqNumber);
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
    if (m_learners.contains(name))
        return;
    m_learners.append(name);
    Q_EMIT learnersChanged();
}

void CPRData::releaseLearner(const QString &name)
{
    qCInfo(lcData) << "learner" << name;
    m_learners.removeAll(name);
    Q_EMIT learnersChanged();
}

void CPRData::onLearnersChanged()
{
    qCInfo(lcData) << "learners" << m_learners.join(QLatin1String(", "));
    // The names are stored in one text, so a comma in a name would split it.
    QString students;
    for (QString name : qAsConst(m_learners)) {
        if (!students.isEmpty())
            students += QLatin1Char(',');
        students += name.remove(QLatin1Char(','));
    }
    if (CPREventSessionInfo *info = m_cprEvents->sessionInfo())
        info->setParameter(CPREventBase::students, students);
    Q_EMIT learnerNamesUpdated();
}

void CPRData::onOtherLearnersChanged()
{
    const auto *other = qobject_cast<const CPRData *>(sender());
    // Two sessions that are connected crosswise would answer each other for ever.
    if (!other || m_takingOverLearners)
        return;
    qCInfo(lcData) << "other laerners" << other->m_learners.join(QLatin1String(", "));
    m_learners = other->m_learners;
    m_takingOverLearners = true;
    Q_EMIT learnersChanged();
    m_takingOverLearners = false;
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

    const bool eventsStored = writeXmlMember(
        *handler, eventsMember, [this](QXmlStreamWriter &writer) { m_cprEvents->write(&writer); });
    if (!eventsStored)
        return false;
    writeXmlMember(*handler, wavesMember, [this](QXmlStreamWriter &writer) {
        writer.writeStartDocument();
        writer.writeStartElement(QStringLiteral("waveFormList"));
        m_compressionData->writeWaveformInfo(&writer);
        m_ventilationData->writeWaveformInfo(&writer);
        writer.writeEndDocument();
    });
    // A wave that cannot be stored costs only its warning: the events are worth more.
    writeMember(*handler, compressionMember, [this](QIODevice *device) {
        return m_compressionData->writeCompresseionWave(device);
    });
    writeMember(*handler, ventilationMember, [this](QIODevice *device) {
        return m_ventilationData->writeVentilationWave(device);
    });
    return writeXmlMember(*handler, guidelinesMember,
                          [this](QXmlStreamWriter &writer) { m_cprGuidelines->write(&writer); });
}

bool CPRData::readData(CPRFileHandler *handler)
{
    qCInfo(lcData) << Q_FUNC_INFO;
    if (!handler)
        return false;
    m_filename = handler->filename();
    Q_EMIT filenameChanged(m_filename);

    QXmlStreamReader reader;
    bool isComplete = true;
    {
        const Member member(*handler, handler->openFileForReading(wavesMember));
        if (!member) {
            qCInfo(lcData).noquote() << "No CPR Data," << wavesMember;
            return false;
        }
        isComplete = readDocument(reader, member.device(), wavesMember, [&] {
            reader.readNextStartElement();
            m_compressionData->readWaveformInfo(&reader);
            m_ventilationData->readWaveformInfo(&reader);
        });
    }

    const auto readWave = [&](const QString &name, const char *wave, auto read) {
        if (name.isEmpty()) {
            qCWarning(lcData, "Unable to read CPR Data, %s wave", wave);
            isComplete = false;
            return;
        }
        // A wave that is missing is no failure, one that is damaged is.
        const Member member(*handler, handler->openFileForReading(name));
        const QString damage = read(member.device());
        if (!damage.isEmpty())
            isComplete = reportUnread(name, damage);
    };
    readWave(m_compressionData->waveformInfo()->fileName(), "Compression",
             [this](QIODevice *device) { return m_compressionData->readCompresseionWave(device); });
    readWave(m_ventilationData->waveformInfo()->fileName(), "Ventilation",
             [this](QIODevice *device) { return m_ventilationData->readVentilationWave(device); });

    const auto readObject = [&](const QString &name, CPRDataBase &object) {
        const Member member(*handler, handler->openFileForReading(name));
        if (!member) {
            qCWarning(lcData).noquote() << "Unable to read CPR Data," << name;
            isComplete = false;
            return false;
        }
        isComplete &= readDocument(reader, member.device(), name, [&] { object.read(&reader); });
        return true;
    };
    if (readObject(eventsMember, *m_cprEvents)) {
        m_learners = m_cprEvents->sessionInfo()
                         ->parameterValue(CPREventBase::students, QVariant())
                         .toString()
                         .split(QLatin1Char(','));
    }
    readObject(guidelinesMember, *m_cprGuidelines);

    const int covered = m_compressionData->sessionTimeFromData();
    setSessionTime(covered);
    m_cprEvents->sessionInfo()->setTotalTime(covered / msecsPerSecond
                                             + (covered % msecsPerSecond > 0 ? 1 : 0));
    return isComplete;
}
