// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREvents.h"

#include "CPRCompressionData.h"
#include "CPRData.h"
#include "CPREventAED.h"
#include "CPREventCPRD.h"
#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREventShock.h"
#include "CPREventUser.h"
#include "CPRVentilationData.h"
#include "private/EnumKey.h"
#include "private/EventSequence.h"
#include "private/MessageLayouts.h"
#include "private/ResponseId.h"
#include "private/Units.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QIODevice>
#include <QLoggingCategory>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>

#include <QtAlgorithms>

#include <algorithm>
#include <iterator>
#include <utility>

using bls_2010::CommonDefs;
using Units::msecsPerSecond;
using Units::sessionMsecs;

Q_LOGGING_CATEGORY(lcEvents, "Kelmar.CPRData.CPREvents", QtWarningMsg)

namespace {

// A compression that begins later than this after the one before opens a new cycle.
constexpr int cycleGapMs = 500;
constexpr int allTimes = -1;
constexpr int tagCount = 8;
constexpr uint allTags = (1U << tagCount) - 1;

std::vector<EventSequence> newLists()
{
    std::vector<EventSequence> lists;
    for (int bit = EventSequence::allTags; bit < tagCount; ++bit)
        lists.emplace_back(bit);
    return lists;
}

bool lastsOver(const CPREventBase &event, int time)
{
    return event.msecs() <= time && event.eventEndTime() >= time;
}

} // namespace

CPREvents::CPREvents(CPRGuidelines *guidelines, CPRData *cprData)
    : CPRDataBase(cprData), m_lists(newLists()), m_guidelines(guidelines)
{
    CPREvents::initialize();
    connectSignals();
}

CPREvents::CPREvents(const CPREvents &other, CPRGuidelines *guidelines, CPRData *cprData)
    : CPRDataBase(other, cprData), m_lists(newLists()),
      m_sessionInfo(other.m_sessionInfo->clone(this)),
      m_sessionStatistics(other.m_sessionStatistics->clone(this)),
      m_sessionScore(other.m_sessionScore->clone(this)), m_guidelines(guidelines),
      m_cprProtocol(other.m_cprProtocol), m_compressionCounter(other.m_compressionCounter),
      m_lastCompressionEnd(other.m_lastCompressionEnd), m_ScoresReady(other.m_ScoresReady)
{
    connectStandingEvents();
    connectSignals();
    const EventList standing{m_sessionInfo, m_sessionStatistics, m_sessionScore};
    for (CPREventBase *event : standing) {
        m_lists.front().append(event);
        event->m_listed = true;
    }
    for (CPREventBase *event : other.events()) {
        if (event != other.m_sessionInfo && event != other.m_sessionStatistics
            && event != other.m_sessionScore) {
            addEvent(event->clone(this), false);
        }
    }
}

CPREvents::~CPREvents()
{
    // The events die with the QObject below, when there are no lists left to take them out of.
    for (CPREventBase *event : events())
        event->m_listed = false;
    m_sessionInfo->m_standing = m_sessionStatistics->m_standing = m_sessionScore->m_standing =
        false;
}

void CPREvents::connectSignals()
{
    // QML knows classes by itself, but not the enumerations that it hands to an invokable.
    qRegisterMetaType<CPREventBase::EventTag>();
    connect(signalTimer(), &QTimer::timeout, this, &CPREvents::eventsChanged);
    if (m_guidelines) {
        connect(m_guidelines, &CPRGuidelines::guidelinesChanged, this,
                &CPREvents::guidelinesChanged);
    }
}

void CPREvents::connectStandingEvents()
{
    m_sessionInfo->m_standing = m_sessionStatistics->m_standing = m_sessionScore->m_standing = true;
    // Unique, because only one of the three may be new.
    connect(m_sessionInfo, &CPREventSessionInfo::sessionInfoChanged, this,
            &CPREvents::cprSessionInfoChanged, Qt::UniqueConnection);
    connect(m_sessionScore, &CPREventSessionScore::scoresReady, m_sessionInfo,
            &CPREventSessionInfo::onScoresReady, Qt::UniqueConnection);
    connect(m_sessionStatistics, &CPREventSessionStatistics::totalTime, m_sessionInfo,
            qOverload<int>(&CPREventSessionInfo::setTotalTime), Qt::UniqueConnection);
}

void CPREvents::initialize()
{
    qCDebug(lcEvents) << Q_FUNC_INFO;
    // The new ones are in place before anything is announced, so that no listener finds none.
    auto *info = new CPREventSessionInfo(0, this);
    const auto keep = [this, info](CPREventBase::ParameterType type) {
        const QVariant old =
            m_sessionInfo ? m_sessionInfo->parameterValue(type, QVariant()) : QVariant();
        info->setParameter(type, old.toString());
    };
    keep(CPREventBase::manikinName);
    keep(CPREventBase::students);
    CPREventBase *const oldInfo = std::exchange(m_sessionInfo, info);
    CPREventBase *const oldScore = std::exchange(m_sessionScore, new CPREventSessionScore(0, this));
    CPREventBase *const oldStatistics =
        std::exchange(m_sessionStatistics, new CPREventSessionStatistics(0, this));
    connectStandingEvents();
    retire(oldInfo);
    retire(oldScore);
    retire(oldStatistics);
    if (oldInfo) {
        m_isInitializing = true;
        CPREvents::reset();
    }
    addEvent(m_sessionInfo, true);
}

// Deleted later, because a host may prepare for the next session inside a signal of a standing
// event.
void CPREvents::retire(CPREventBase *event)
{
    if (!event)
        return;
    event->m_standing = false;
    if (event->m_listed)
        unlistEvent(event);
    event->disconnect(this);
    event->deleteLater();
}

void CPREvents::reset()
{
    qCDebug(lcEvents) << Q_FUNC_INFO;
    CPRDataBase::reset();

    const EventList old = events();
    for (EventSequence &list : m_lists)
        list.clear();
    m_lastRead = nullptr;
    const auto drop = [this](CPREventBase *event) {
        if (std::exchange(event->m_listed, false) && !isStanding(event))
            event->deleteLater();
    };
    // A child in front dies at once, while QObject searches for any other, or moves all behind it.
    // So those that stay go to the back, and the others die in the order in which they stand.
    const QObjectList all = children();
    for (QObject *child : all) {
        auto *event = qobject_cast<CPREventBase *>(child);
        if (event && event->m_listed && !isStanding(event)) {
            drop(event);
        } else {
            child->setParent(nullptr);
            child->setParent(this);
        }
    }
    std::for_each(old.begin(), old.end(), drop); // a host may have given one another parent

    // A session info that initialize() has just made is listed when the list has been cleared.
    if (!std::exchange(m_isInitializing, false)) {
        addEvent(m_sessionInfo, true);
        m_sessionInfo->reset();
    }
    CPRDataBase::reset(); // who listened may have set the session time
    m_compressionCounter = 0;
    m_lastCompressionEnd = 0;
    m_ScoresReady = 0;
    Q_EMIT eventsCleared();
}

void CPREvents::resume()
{
    qCDebug(lcEvents) << Q_FUNC_INFO;
    m_ScoresReady = 0;
}

// The main list, then those of its tags.
template <typename Call> void CPREvents::forListsOf(const CPREventBase &event, Call call)
{
    call(m_lists.front());
    uint bit = 0;
    for (uint tags = event.m_listedTags; tags != 0; tags &= ~(1U << bit)) {
        bit = qCountTrailingZeroBits(tags);
        call(m_lists[1 + bit]);
    }
}

void CPREvents::addEvent(CPREventBase *event, bool doSignals)
{
    if (!event || (event->m_owner != this && event->m_standing))
        return;
    qCDebug(lcEvents).noquote() << "Event" << QString(*event) << "doSignals" << doSignals;
    if (event->m_owner != this) {
        CPREvents *const old = event->m_listed ? event->m_owner : nullptr;
        if (old)
            old->unlistEvent(event);
        event->m_owner = this;
        event->m_isChangePending = false;
        event->setParent(this);
        if (old)
            Q_EMIT old->eventRemoved(event);
    } else if (!event->parent()) {
        event->setParent(this);
    }
    if (!std::exchange(event->m_listed, true)) {
        event->m_listedTags = static_cast<quint8>(event->tag() & allTags);
        const bool isDebugEnabled = lcEvents().isDebugEnabled();
        forListsOf(*event, [event, isDebugEnabled](EventSequence &list) {
            list.insert(event);
            if (!isDebugEnabled)
                return;
            if (list.bit() == EventSequence::allTags)
                qCDebug(lcEvents) << "Main event list";
            else
                qCDebug(lcEvents) << "Event list tag"
                                  << EnumKey(CPREventBase::EventTag(1U << uint(list.bit())));
            for (const CPREventBase *listed : list.events())
                qCDebug(lcEvents).noquote() << "Event" << QString(*listed);
        });
    }
    if (doSignals)
        emitEvent(event);
}

void CPREvents::unlistEvent(CPREventBase *event)
{
    event->m_listed = false;
    if (event == m_lastRead)
        m_lastRead = nullptr;
    // Not by the event's tags: they can have changed since, and the event may be half destroyed.
    forListsOf(*event, [event](EventSequence &list) { list.remove(event); });
}

void CPREvents::storeEarlierEnd(const CPREventBase *event)
{
    forListsOf(*event, [event](EventSequence &list) { list.storeEarlierEnd(event); });
}

// The event is being destroyed.
void CPREvents::forgetEvent(CPREventBase *event)
{
    const bool wasListed = event->m_listed;
    if (wasListed)
        unlistEvent(event);
    const bool isInfo = event == m_sessionInfo;
    const bool wasStanding = isStanding(event);
    if (isInfo)
        m_sessionInfo = new CPREventSessionInfo(0, this);
    else if (event == m_sessionStatistics)
        m_sessionStatistics = new CPREventSessionStatistics(0, this);
    else if (event == m_sessionScore)
        m_sessionScore = new CPREventSessionScore(0, this);
    if (wasStanding)
        connectStandingEvents();
    if (wasListed)
        Q_EMIT eventRemoved(event);
    if (isInfo)
        addEvent(m_sessionInfo, true);
}

void CPREvents::reportChange(CPREventBase *event)
{
    if (std::exchange(event->m_isChangePending, true))
        return;
    if (m_changed.isEmpty())
        QTimer::singleShot(1, Qt::PreciseTimer, this, &CPREvents::announceChanges);
    m_changed.append(event);
}

void CPREvents::announceChanges()
{
    // What is changed by those who hear of it is announced the next time.
    const QVector<QPointer<CPREventBase>> changed = std::exchange(m_changed, {});
    for (const QPointer<CPREventBase> &event : changed) {
        if (!event || event->m_owner != this)
            continue; // gone, or in another list by now
        event->m_isChangePending = false;
        if (event->m_listed || event->m_standing)
            Q_EMIT eventChanged(event);
    }
}

void CPREvents::emitEvent(CPREventBase *event)
{
    if (!event)
        return;
    qCDebug(lcEvents).noquote() << "Event" << QString(*event);
    const CPREventBase::EventTags tags(event->tag());
    if (tags.testFlag(CPREventBase::TagComp))
        Q_EMIT compressionEvent(qobject_cast<CPREventCompression *>(event));
    else if (tags.testFlag(CPREventBase::TagVent))
        Q_EMIT ventilationEvent(qobject_cast<CPREventVentilation *>(event));
    else if (tags.testFlag(CPREventBase::TagInactivity))
        Q_EMIT inactivityCPREvent(qobject_cast<CPREventInactivityCPR *>(event));
    else if (tags.testFlag(CPREventBase::TagCprGui))
        Q_EMIT cprGuiEventAdded(event);
    else
        Q_EMIT otherEventAdded(event);
    sendSignal();
}

void CPREvents::handleEvent(CPREventBase *event)
{
    if (!event)
        return;
    qCDebug(lcEvents).noquote() << "Event" << QString(*event);
    const CPREventBase::EventType type = event->type();
    switch (type) {
    case CPREventBase::CprSessionStatistics:
    case CPREventBase::CprSessionScore:
        qCDebug(lcEvents) << "m_ScoresReady" << m_ScoresReady;
        ++m_ScoresReady;
        if (isScoresReady()) {
            Q_EMIT cprSessionStatisticsChanged();
            Q_EMIT scoresReady();
        }
        if (type == CPREventBase::CprSessionScore)
            Q_EMIT cprSessionScoreChanged();
        break;
    case CPREventBase::CprSessionInfo:
        Q_EMIT cprSessionInfoChanged();
        break;
    case CPREventBase::CprCompEvent:
        if (auto *compression = qobject_cast<CPREventCompression *>(event))
            numberCompression(compression);
        break;
    case CPREventBase::CprVentEvent:
    case CPREventBase::CprInactivityCPR:
        m_compressionCounter = 0; // the next compression opens a new cycle
        break;
    default:
        break;
    }
}

void CPREvents::numberCompression(CPREventCompression *compression)
{
    const qint64 gap = qint64(compression->msecs()) - m_lastCompressionEnd;
    const CPREventBase *before = at(m_lists.front().size() - 2);

    if (m_lastCompressionEnd != 0 && gap > cycleGapMs) {
        m_compressionCounter = 1;
        compression->setNumberInCycle(m_compressionCounter);
    } else if (before && before->type() == CPREventBase::CprVentEvent
               && before->msecs() > compression->compPeakTime()) {
        // The ventilation began after this compression, though it was reported before it: the
        // cycle goes on from the previous compression, and the counter stays reset for the next.
        const int previous = count(CPREventBase::TagComp) - 2;
        const auto *continued =
            qobject_cast<const CPREventCompression *>(at(CPREventBase::TagComp, previous));
        compression->setNumberInCycle(continued ? continued->numberInCycle() + 1 : 1);
    } else {
        ++m_compressionCounter;
        compression->setNumberInCycle(m_compressionCounter);
    }
    m_lastCompressionEnd = compression->eventEndTime();
}

void CPREvents::setReceiving(bool receiving)
{
    if (cprData())
        cprData()->receivingData(receiving);
}

void CPREvents::finalizeIncomingEvent(bool a_Exists, CPREventBase *event)
{
    if (event && a_Exists)
        handleEvent(event);
    else if (event)
        enter(event);
    setReceiving(false);
}

// Tells by the address alone: inside a signal a host may have deleted the event, or initialized the
// list, and then another one stands in its place.
bool CPREvents::isStanding(const CPREventBase *event) const
{
    return event == m_sessionInfo || event == m_sessionStatistics || event == m_sessionScore;
}

void CPREvents::enter(CPREventBase *event)
{
    const bool wasStanding = isStanding(event);
    addEvent(event, false);
    handleEvent(event);
    if (!wasStanding || isStanding(event))
        emitEvent(event);
}

bool CPREvents::hasEnded() const
{
    return cprData() && cprData()->cprState() == CPRData::CPR_ENDED;
}

CPREventCompression *CPREvents::lastCompression() const
{
    return qobject_cast<CPREventCompression *>(last(CPREventBase::TagComp));
}

bool CPREvents::incomingMsg(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    qCDebug(lcEvents) << "id" << ResponseId{msg->getIdentifier()};
    CPREventBase *event = eventFor(msg);
    if (!event)
        return false;
    qCDebug(lcEvents).noquote() << "Event:" << QString(*event);
    const bool wasStanding = isStanding(event);
    if (!event->incomingMsg(msg)) {
        if (!wasStanding && !event->m_listed) {
            qCDebug(lcEvents) << "ignoring event";
            delete event;
        }
        return false;
    }
    if (wasStanding && !isStanding(event))
        return true;
    if (event->m_listed)
        handleEvent(event);
    else
        enter(event);
    return true;
}

// An event that may be refused, and deleted, before it is listed. It is no child until then: the
// time to delete a child grows with the number of children.
template <typename Event, typename... More> Event *CPREvents::make(int msecs, More... more)
{
    const QScopedValueRollback<bool> making(m_isMaking, true);
    return new Event(msecs, this, more...);
}

// The event that is to read the message: a new one, which is not listed yet, or one that is there.
// Null when none is.
CPREventBase *CPREvents::eventFor(bls_2010::RMessage *msg)
{
    // clang-format off
    switch (msg->getIdentifier()) {
    case CommunicationIDs::RPL_DEFIB_SHOCK_EVENT:
        return make<CPREventShock>(0);
    case CommunicationIDs::RPL_GENERIC_EVENT:
        return make<CPREventAED>(0);
    case CommunicationIDs::RPL_AED_REMOTE_CTRL:
        return remoteControlEventFor(msg);
    case CommunicationIDs::RPL_ECG_STATUS:
        return make<CPREventCPRD>(0);
    case CommunicationIDs::RPL_VERSIONINFO:
    case CommunicationIDs::RPL_LIFETIMEINFO:
        return m_sessionInfo;
    case CommunicationIDs::RPL_USER_EVENT:
        return make<CPREventUser>(0, QString());
    case CommunicationIDs::RPL_COMP_EVENT:
        return hasEnded() ? nullptr : make<CPREventCompression>(0, lastCompression());
    case CommunicationIDs::RPL_VENT_EVENT:
        return hasEnded() ? nullptr : make<CPREventVentilation>(0);
    case CommunicationIDs::RPL_COMP_INACTIVITY_TIME:
        return inactivityEventFor(msg);
    case CommunicationIDs::RPL_CPR_PROTOCOL_CTRL:
        return infoForProtocol(msg);
    case CommunicationIDs::RPL_CPR_SCORES:
        return m_sessionScore;
    case CommunicationIDs::RPL_GL_INDEPENDENT_STATS:
    case CommunicationIDs::RPL_GL_INDEPENDENT_BIN_STATS:
    case CommunicationIDs::RPL_GL_DEPENDENT_STATS:
        return m_sessionStatistics;
    default:
        return nullptr;
    }
    // clang-format on
}

CPREventBase *CPREvents::remoteControlEventFor(bls_2010::RMessage *msg)
{
    return CPREventAED::isRecordedButton(MessageLayouts::intOf(*msg, MessageLayouts::remoteButton))
        ? make<CPREventAED>(0)
        : nullptr;
}

CPREventBase *CPREvents::inactivityEventFor(bls_2010::RMessage *msg)
{
    if (!cprData() || cprData()->cprState() != CPRData::CPR_START)
        return nullptr;
    m_sessionInfo->incomingMsg(msg);
    CPREventBase *running = last(CPREventBase::TagInactivity);
    // A pause that takes the report here gets it a second time from the caller. That is intended.
    if (running && running->incomingMsg(msg))
        return running;
    constexpr int noStart = -1;
    return make<CPREventInactivityCPR>(noStart);
}

CPREventBase *CPREvents::infoForProtocol(bls_2010::RMessage *msg)
{
    setCprProtocol(static_cast<CommonDefs::CprProtocolType>(
        MessageLayouts::intOf(*msg, MessageLayouts::protocolOfList)));
    return m_sessionInfo;
}

void CPREvents::incomingCompressionEvent(quint32 start, qint32 rate,
                                         const CommonDefs::CompressionEvent_t &compression)
{
    qCDebug(lcEvents) << "sessionTime:" << sessionTime() << "start:" << start << "rate:" << rate
                      << "peak depth:" << compression.peakDepth
                      << "release depth:" << compression.releaseDepth
                      << "incorrect release:" << (compression.incorrectRelease != 0);
    if (hasEnded())
        return;
    setReceiving(true);
    auto *event = new CPREventCompression(sessionMsecs(start), this, lastCompression());
    if (compressionData())
        compressionData()->setCompressionRate(static_cast<short>(rate));
    event->incomingCompressionEvent(compression);
    finalizeIncomingEvent(false, event);
}

void CPREvents::incomingVentilationEvent(quint32 start, qint32 rate,
                                         const CommonDefs::VentilationEvent_t &ventilation)
{
    qCDebug(lcEvents) << "sessionTime:" << sessionTime() << "start:" << start << "rate:" << rate
                      << "peak volume:" << ventilation.volume;
    if (hasEnded())
        return;
    setReceiving(true);
    auto *event = new CPREventVentilation(sessionMsecs(start), this);
    if (ventilationData())
        ventilationData()->setVentilationRate(rate);
    event->incomingVitilationEvent(ventilation);
    finalizeIncomingEvent(false, event);
}

void CPREvents::incomingInactivityTime(quint32 start, qint32 secs)
{
    qCDebug(lcEvents) << "sessionTime:" << sessionTime() << "start:" << start << "secs:" << secs;
    if (hasEnded())
        return;
    setReceiving(true);
    // Guarded: who hears that the rate is 0 may delete the pause.
    QPointer pause = qobject_cast<CPREventInactivityCPR *>(last(CPREventBase::TagInactivity));
    const bool goesOn = pause && pause->setInactivityTime(secs, true);
    if (!goesOn) {
        // Not brought into range: all bits set are the start -1 of a pause without a place.
        pause = new CPREventInactivityCPR(static_cast<qint32>(start), this);
        // One that is out of step is entered all the same; its end stays at its start.
        pause->setInactivityTime(secs, false);
    }
    if (compressionData())
        compressionData()->setCompressionRate(0);
    finalizeIncomingEvent(goesOn, pause);
}

void CPREvents::removeInactivityEventAfter(int msec)
{
    qCDebug(lcEvents) << Q_FUNC_INFO;
    while (CPREventBase *pause = last(CPREventBase::TagInactivity)) {
        if (pause->eventEndTime() <= msec)
            return;
        const qint64 secs = (qint64(msec) - pause->msecs()) / msecsPerSecond;
        const int shortest =
            m_guidelines ? m_guidelines->compressionInactivityLevel0TimeoutCPR() : 0;
        if (pause->msecs() < msec && secs >= shortest) {
            pause->setEventEndTime(msec);
            pause->setParameter(CPREventBase::compInactivity, static_cast<int>(secs));
            return;
        }
        delete pause;
    }
}

void CPREvents::incomingSessionStatistics()
{
    qCDebug(lcEvents) << "sessionTime:" << sessionTime();
    setReceiving(true);
    m_sessionStatistics->setMSecs(sessionTime());
    finalizeIncomingEvent(true, m_sessionStatistics);
}

void CPREvents::incomingSessionScores()
{
    qCDebug(lcEvents) << "sessionTime:" << sessionTime();
    setReceiving(true);
    m_sessionInfo->setTotalTime(
        m_sessionScore->parameterValue(CPREventBase::sessionDuration, 0).toInt());
    m_sessionScore->setMSecs(sessionTime());
    finalizeIncomingEvent(true, m_sessionScore);
}

void CPREvents::aedDetected(CPREventBase::AEDTypes type)
{
    qCDebug(lcEvents) << "AED Type:" << EnumKey(type);
    addEvent(CPREventAED::createAEDTypeEvent(type, sessionTime(), this), true);
}

void CPREvents::aedEvent(const QHash<CPREventBase::ParameterType, QVariant> &parameters)
{
    setReceiving(true);
    auto *event = new CPREventAED(sessionTime(), this);
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it)
        event->setParameter(it.key(), it.value());
    finalizeIncomingEvent(false, event);
}

void CPREvents::cprdEvent(CPREventBase::AEDEcgRhythms rhythm, CPREventBase::AEDEcgRhythms second)
{
    setReceiving(true);
    auto *event = new CPREventCPRD(sessionTime(), this);
    if (event->setRhytmn(rhythm, second)) {
        finalizeIncomingEvent(false, event);
    } else {
        delete event;
        setReceiving(false);
    }
}

void CPREvents::addUserEvent(const QString &a_EventId)
{
    qCDebug(lcEvents) << "a_EventId" << a_EventId;
    if (a_EventId == QLatin1String("Morvane.Event.Deliver shock"))
        addEvent(new CPREventShock(sessionTime(), this), true);
    else
        addEvent(new CPREventUser(sessionTime(), this, a_EventId), true);
}

CPREventBase *CPREvents::cprSessionInfo() const
{
    return m_sessionInfo;
}

CPREventBase *CPREvents::cprSessionStatistics() const
{
    return m_sessionStatistics;
}

CPREventBase *CPREvents::cprSessionScore() const
{
    return m_sessionScore;
}

void CPREvents::setCprProtocol(CommonDefs::CprProtocolType protocol)
{
    m_cprProtocol = protocol;
    m_sessionInfo->setCprProtocol(static_cast<signed char>(protocol));
}

void CPREvents::setScoresToReceive(int n)
{
    m_scoresToReceive = n;
    m_ScoresReady = 0;
}

bool CPREvents::isScoresReady() const
{
    return m_ScoresReady == m_scoresToReceive;
}

int CPREvents::calculateSessionTime(int sequenceNumber) const
{
    const CPRCompressionData *wave = compressionData();
    return wave ? sessionMsecs(qint64(sequenceNumber) * wave->waveformInfo()->samplePeriod()) : 0;
}

void CPREvents::setCategoryThresholdBasic(int a_Value)
{
    m_sessionScore->setParameter(CPREventBase::categoryThresholdBasic, a_Value);
}

void CPREvents::setCategoryThresholdAdvanced(int a_Value)
{
    m_sessionScore->setParameter(CPREventBase::categoryThresholdAdvanced, a_Value);
}

// Null for none and for several tags.
const EventSequence *CPREvents::tagList(uint tag) const
{
    if (tag == 0 || (tag & (tag - 1)) != 0 || tag > CPREventBase::LastTag)
        return nullptr;
    return &m_lists[1 + qCountTrailingZeroBits(tag)];
}

const QList<CPREventBase *> &CPREvents::events() const
{
    return m_lists.front().events();
}

CPREventBase *CPREvents::first(CPREventBase::EventTag a_Tag) const
{
    return at(a_Tag, 0);
}

CPREventBase *CPREvents::last(CPREventBase::EventTag a_Tag) const
{
    return at(a_Tag, count(a_Tag) - 1);
}

CPREventBase *CPREvents::at(CPREventBase::EventTag a_Tag, int a_Index) const
{
    const EventSequence *tagged = tagList(a_Tag);
    return tagged ? tagged->at(a_Index) : nullptr;
}

CPREventBase *CPREvents::at(int a_Index) const
{
    return m_lists.front().at(a_Index);
}

int CPREvents::count(uint a_Tag) const
{
    const EventSequence *tagged = tagList(a_Tag);
    return tagged ? tagged->size() : 0;
}

CPREventBase *CPREvents::atTime(CPREventBase::EventTag a_Tag, int a_Time) const
{
    const EventSequence *tagged = tagList(a_Tag);
    if (!tagged)
        return nullptr;
    if (a_Time == 0)
        return first(a_Tag);
    const EventList &events = tagged->events();
    const auto found =
        std::find_if(events.cbegin(), events.cend(),
                     [a_Time](const CPREventBase *event) { return lastsOver(*event, a_Time); });
    return found == events.cend() ? last(a_Tag) : *found;
}

QList<CPREventBase *> CPREvents::events(CPREventBase::EventTag a_Tag, int a_Time) const
{
    const EventSequence *tagged = tagList(a_Tag);
    if (!tagged)
        return {};
    if (a_Time == allTimes)
        return tagged->events();
    EventList found;
    std::copy_if(tagged->events().cbegin(), tagged->events().cend(), std::back_inserter(found),
                 [a_Time](const CPREventBase *event) {
                     return event->msecs() >= a_Time || lastsOver(*event, a_Time);
                 });
    return found;
}

void CPREvents::writeHeader(QIODevice *device, const ParameterMapList_t &columns,
                            const QString &separator)
{
    qCDebug(lcEvents) << Q_FUNC_INFO;
    if (!device || !device->isWritable())
        return;
    for (const auto &column : columns)
        CPREventBase::writeHeader(device, column, separator);
}

void CPREvents::write(QIODevice *device, const ParameterMapList_t &columns,
                      const QString &separator)
{
    if (!device || !device->isWritable())
        return;
    const EventList all = events();
    for (const auto &column : columns) {
        for (CPREventBase *event : all) {
            if (event->write(device, column, separator)) {
                qCDebug(lcEvents).noquote() << "Stored event in csv-file: " << QString(*event);
                break;
            }
        }
        if (!separator.isEmpty())
            device->write(separator.toUtf8());
    }
}
