// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRData.h"

#include "CPREventSessionInfo.h"
#include "CPRFileHandler.h"
#include "CPRWaveformInfo.h"
#include "private/EnumKey.h"
#include "private/Limits.h"
#include "private/ResponseId.h"
#include "private/SessionMsecs.h"
#include "private/XmlInput.h"
#include "private/XmlOutput.h"
#include "private/XmlReading.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QIODevice>
#include <QLoggingCategory>
#include <QScopedValueRollback>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>

using bls_2010::CommonDefs;

Q_LOGGING_CATEGORY(lcData, "Kelmar.CPRData.CPRData", QtWarningMsg)

namespace {

// The link sends this one for its own purposes.
constexpr quint32 ignoredMessage = 38;

constexpr int msecsPerSecond = 1000;

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

// Releases a member that could be opened when it goes out of sight.
class Member {
public:
    Member(CPRFileHandler &handler, QIODevice *device) : m_handler(handler), m_device(device) { }
    ~Member()
    {
        if (m_device)
            m_handler.releaseFile(m_device);
    }
    Q_DISABLE_COPY(Member)

    explicit operator bool() const { return m_device != nullptr; }
    QIODevice *device() const { return m_device; }

private:
    CPRFileHandler &m_handler;
    QIODevice *m_device;
};

// Lets write(writer) fill the document in \a device; false when the device does not take it all.
template <typename Write> bool writeDocument(QIODevice *device, Write write)
{
    XmlOutput output(device);
    QXmlStreamWriter writer(&output);
    writer.setAutoFormatting(true);
    write(writer);
    return output.finish();
}

// Lets read(reader) take the document in \a device from its beginning. Returns what is wrong with
// it; read() has then taken what comes before that. Empty when the document is whole.
template <typename Read> QString readDocument(QIODevice *device, Read read)
{
    XmlInput input(device);
    QXmlStreamReader reader(&input); // one that has read another document knows its encoding still
    reader.readNext();
    const QString encoding = reader.documentEncoding().toString();
    if (!encoding.isEmpty() && encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) != 0)
        reader.raiseError(QStringLiteral("it is encoded in %1, not in UTF-8").arg(encoding));
    read(reader);
    while (!reader.atEnd())
        reader.readNext();
    if (!reader.hasError())
        return QString();
    return QStringLiteral("line %1, column %2: %3")
        .arg(reader.lineNumber())
        .arg(reader.columnNumber())
        .arg(input.damage().isEmpty() ? reader.errorString() : input.damage());
}

// The member that the description names is the one that is stored, also when the session was
// loaded from members of other names.
void nameMember(CPRWaveformInfo *info, const QString &name)
{
    if (info->fileName() != name)
        info->setFileName(name);
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
            qCWarning(lcData) << "Lost data: the wave jumps from" << m_expectedWaveSequence << "to"
                              << sequenceNumber << "and is not filled";
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
    // The echo of what is being taken over: two sessions that are connected crosswise would answer
    // each other for ever.
    if (!other || (m_takingOverLearners && other->m_learners == m_learners))
        return;
    qCInfo(lcData) << "other laerners" << other->m_learners.join(QLatin1String(", "));
    const QScopedValueRollback<bool> takingOver(m_takingOverLearners, true);
    m_learners = other->m_learners;
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

    const auto writeEvents = [this](QIODevice *device) {
        return writeDocument(device,
                             [this](QXmlStreamWriter &writer) { m_cprEvents->write(&writer); });
    };
    const auto writeWaves = [this](QIODevice *device) {
        return writeDocument(device, [this](QXmlStreamWriter &writer) {
            nameMember(m_compressionData->waveformInfo(), compressionMember);
            nameMember(m_ventilationData->waveformInfo(), ventilationMember);
            writer.writeStartDocument();
            writer.writeStartElement(QStringLiteral("waveFormList"));
            m_compressionData->writeWaveformInfo(&writer);
            m_ventilationData->writeWaveformInfo(&writer);
            writer.writeEndDocument();
        });
    };
    const auto writeGuidelines = [this](QIODevice *device) {
        return writeDocument(device,
                             [this](QXmlStreamWriter &writer) { m_cprGuidelines->write(&writer); });
    };
    struct Part {
        const QString &member;
        std::function<bool(QIODevice *)> write;
        bool isNeeded;
    };
    // A wave that cannot be stored costs only its warning: the events are worth more.
    const std::array<Part, 5> parts{{
        {eventsMember, writeEvents, true},
        {wavesMember, writeWaves, false},
        {compressionMember,
         [this](QIODevice *device) { return m_compressionData->writeCompresseionWave(device); },
         false},
        {ventilationMember,
         [this](QIODevice *device) { return m_ventilationData->writeVentilationWave(device); },
         false},
        {guidelinesMember, writeGuidelines, true},
    }};
    for (const Part &part : parts) {
        const Member member(*handler, handler->openFileForWriting(part.member));
        if (member && part.write(member.device()))
            continue;
        qCWarning(lcData).noquote() << "Unable to write CPR Data," << part.member;
        if (part.isNeeded)
            return false;
    }
    return true;
}

bool CPRData::readData(CPRFileHandler *handler)
{
    qCInfo(lcData) << Q_FUNC_INFO;
    if (!handler)
        return false;
    m_filename = handler->filename();
    Q_EMIT filenameChanged(m_filename);

    bool isComplete = true;
    {
        const Member member(*handler, handler->openFileForReading(wavesMember));
        if (!member) {
            qCInfo(lcData).noquote() << "No CPR Data," << wavesMember;
            return false;
        }
        const QString damage = readDocument(member.device(), [this](QXmlStreamReader &reader) {
            readNextChild(reader);
            m_compressionData->readWaveformInfo(&reader);
            m_ventilationData->readWaveformInfo(&reader);
        });
        if (!damage.isEmpty()) {
            qCWarning(lcData).noquote()
                << "Unable to read CPR Data," << wavesMember + QLatin1Char(':') << damage;
            isComplete = false;
        }
    }

    struct Wave {
        const char *name;
        QString member;
        std::function<QString(QIODevice *)> read; // returns what is wrong
    };
    const std::array<Wave, 2> waves{{
        {"Compression", m_compressionData->waveformInfo()->fileName(),
         [this](QIODevice *device) { return m_compressionData->readCompresseionWave(device); }},
        {"Ventilation", m_ventilationData->waveformInfo()->fileName(),
         [this](QIODevice *device) { return m_ventilationData->readVentilationWave(device); }},
    }};
    for (const Wave &wave : waves) {
        if (wave.member.isEmpty()) {
            qCWarning(lcData, "Unable to read CPR Data, %s wave", wave.name);
            isComplete = false;
            continue;
        }
        // A wave that cannot be opened reads as an empty one, and is no failure. Its null goes to
        // the handler as a device does.
        QIODevice *device = handler->openFileForReading(wave.member);
        const QString damage = wave.read(device);
        handler->releaseFile(device);
        if (!damage.isEmpty()) {
            qCWarning(lcData).noquote()
                << "Unable to read CPR Data," << wave.member + QLatin1Char(':') << damage;
            isComplete = false;
        }
    }

    struct Document {
        const QString &member;
        CPRDataBase *object;
    };
    const std::array<Document, 2> documents{
        {{eventsMember, m_cprEvents}, {guidelinesMember, m_cprGuidelines}}};
    for (const Document &document : documents) {
        const Member member(*handler, handler->openFileForReading(document.member));
        if (!member) {
            qCWarning(lcData).noquote() << "Unable to read CPR Data," << document.member;
            isComplete = false;
            continue;
        }
        const QString damage = readDocument(member.device(), [&document](QXmlStreamReader &reader) {
            document.object->read(&reader);
        });
        if (!damage.isEmpty()) {
            qCWarning(lcData).noquote()
                << "Unable to read CPR Data," << document.member + QLatin1Char(':') << damage;
            isComplete = false;
        }
        if (document.object == m_cprEvents) {
            const CPREventSessionInfo *info = m_cprEvents->sessionInfo();
            m_learners = info->parameterValue(CPREventBase::students, QVariant())
                             .toString()
                             .split(QLatin1Char(','));
        }
    }

    const int covered = m_compressionData->sessionTimeFromData();
    setSessionTime(covered);
    m_cprEvents->sessionInfo()->setTotalTime(covered / msecsPerSecond
                                             + (covered % msecsPerSecond > 0 ? 1 : 0));
    return isComplete;
}
