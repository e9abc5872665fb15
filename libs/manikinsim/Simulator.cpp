// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/Simulator.h"

#include "manikinlog/ManikinLogWriter.h"
#include "manikinsim/Judge.h"
#include "manikinsim/Link.h"
#include "manikinsim/Manikin.h"
#include "manikinsim/MessageContents.h"
#include "manikinsim/Rescuer.h"
#include "private/MessageLayouts.h"

#include <chestboard/CommunicationIDs.h>

#include <deque>
#include <utility>

using bls_2010::CommonDefs;

namespace manikinsim {

namespace {

constexpr int packetsPerSecond = 1000 / Manikin::period;

// In a wave period messages follow the packet; a late packet follows them.
constexpr int messageDelay = 1; // ms
constexpr int lateDelay = 2;

bool hasAed(const Device &device)
{
    return device.connectedAed != CPREventBase::AEDNotDetected
        && device.connectedAed != CPREventBase::AEDNotPossible;
}

/// Whether the rescuer has to wait for what the message is about.
bool excusesPauses(const Fact &fact)
{
    return std::holds_alternative<Shock>(fact) || std::holds_alternative<AedEvent>(fact)
        || std::holds_alternative<Rhythm>(fact) || std::holds_alternative<UserEvent>(fact);
}

} // namespace

class Simulator::Private {
public:
    Private(const Scenario &theScenario, quint64 seed, Listener *theListener);

    void goOn();
    void stop();

    const Scenario scenario;
    Judge judge;
    Rescuer rescuer;
    Manikin manikin;
    Link link;
    Listener *const listener; // not owned; null when nobody listens

    std::deque<manikinlog::Record> records; // ready to be handed out
    bool isOver = false;

private:
    template <typename Entry> void add(qint64 msecs, Entry &&entry)
    {
        records.push_back({msecs, std::forward<Entry>(entry)});
    }
    void addState(qint64 msecs, CPRData::CprState state);
    void addMessage(qint64 msecs, quint32 identifier, const QByteArray &content);
    void addPacket(qint64 msecs, const WavePacket &packet);
    void prepare();
    void act();
    void end();

    const quint8 m_depthWave; // wave type
    qint32 m_lastSequence;
    qint32 m_sequence = 0; // of the last wave period
    bool m_isPrepared = false;
    bool m_isWithAed; // time without flow is not the rescuer's fault
};

Simulator::Private::Private(const Scenario &theScenario, quint64 seed, Listener *theListener)
    : scenario(theScenario), judge(scenario), rescuer(scenario, seed),
      manikin(scenario, seed, &rescuer, &judge), link(scenario, seed), listener(theListener),
      isOver(!scenario.problem().isEmpty()),
      m_depthWave(scenario.guidelines.useRelativeDepth != 0 ? CommonDefs::WAVE_RELATIVE_COMP_DEPTH
                                                            : CommonDefs::WAVE_ABSOLUTE_COMP_DEPTH),
      m_lastSequence(scenario.seconds * packetsPerSecond),
      m_isWithAed(!scenario.link.shortMessages && hasAed(scenario.device))
{
}

void Simulator::Private::addState(qint64 msecs, CPRData::CprState state)
{
    add(msecs, manikinlog::State{state});
}

void Simulator::Private::addMessage(qint64 msecs, quint32 identifier, const QByteArray &content)
{
    add(msecs, manikinlog::Message{identifier, m_sequence, content});
}

void Simulator::Private::addPacket(qint64 msecs, const WavePacket &packet)
{
    add(msecs, manikinlog::WaveHeader{packet.sequence});
    add(msecs, manikinlog::WaveSample{m_depthWave, packet.depth, packet.sequence});
    add(msecs,
        manikinlog::WaveSample{CommonDefs::WAVE_VENT_VOLUME, packet.volume, packet.sequence});
}

void Simulator::Private::goOn()
{
    if (!m_isPrepared)
        prepare();
    else if (m_sequence < m_lastSequence)
        act();
    else
        end();
}

void Simulator::Private::stop()
{
    const int seconds = m_sequence / packetsPerSecond + 1;
    if (seconds >= m_lastSequence / packetsPerSecond)
        return;
    m_lastSequence = seconds * packetsPerSecond;
    judge.endAfter(seconds);
    link.endAfter(seconds);
}

/// The manikin is connected and introduces itself; the host prepares a session.
void Simulator::Private::prepare()
{
    using ID = CommunicationIDs;
    const Device &device = scenario.device;
    const bool isOld = scenario.link.shortMessages;
    const QByteArray guidelines = contents::guidelines(scenario.guidelines, true);
    constexpr int tooShort = MessageLayouts::guidelineIdByte - 1; // a message that is refused

    if (scenario.start.isValid())
        add(0, manikinlog::Start{scenario.start});
    if (!scenario.manikinName.isEmpty())
        add(0, manikinlog::ManikinName{scenario.manikinName});
    addState(0, CPRData::CPR_MANIKIN_INIT);
    addMessage(120, ID::RPL_VERSIONINFO, contents::versionInfo(device, isOld));
    addMessage(140, ID::RPL_LIFETIMEINFO, contents::lifetimeCompressions(device.compressions));
    addMessage(160, ID::RPL_LIFETIMEINFO, contents::lifetimeVentilations(device.ventilations));
    addMessage(180, ID::RPL_LIFETIMEINFO, contents::lifetimeBattery(device));
    if (scenario.link.cutGuidelines)
        addMessage(200, ID::RPL_GUIDELINES, guidelines.left(tooShort));
    addMessage(220, ID::RPL_GUIDELINES, guidelines);
    addMessage(240, ID::RPL_GUIDELINES, contents::guidelines(scenario.otherGuidelines, false));
    // The guideline set in use decides which depth wave is recorded, so it goes first.
    addMessage(260, ID::RPL_WAVEINFO,
               contents::waveInfo(m_depthWave, Manikin::period, device.waveDelay));
    addMessage(280, ID::RPL_WAVEINFO,
               contents::waveInfo(CommonDefs::WAVE_VENT_VOLUME, Manikin::period, device.waveDelay));
    for (const QString &learner : scenario.learners)
        add(900, manikinlog::Learner{learner});
    addMessage(1000, ID::RPL_CPR_PROTOCOL_CTRL, contents::protocol(scenario.protocol));
    addState(2000, CPRData::CPR_INIT);
    // A host that prepares a session forgets how fine the manikin's samples are.
    addMessage(2020, ID::RPL_VERSIONINFO, contents::versionInfo(device, isOld));
    addState(sessionStart, CPRData::CPR_START);
    m_isPrepared = true;
}

/// A wave period.
void Simulator::Private::act()
{
    ++m_sequence;
    const qint64 now = sessionStart + qint64(m_sequence) * Manikin::period;
    std::vector<SentMessage> messages;
    const WavePacket packet = manikin.advance(m_sequence, messages);
    for (const Link::Delivery &delivery : link.carry(packet, messages)) {
        if (const auto *arrived = std::get_if<WavePacket>(&delivery)) {
            addPacket(now + (arrived->sequence == m_sequence ? 0 : lateDelay), *arrived);
            if (listener)
                listener->arrived(*arrived);
        } else if (const auto *message = std::get_if<SentMessage>(&delivery)) {
            if (message->fate != SentMessage::Fate::Lost) {
                add(now + messageDelay,
                    manikinlog::Message{message->identifier, message->sequence, message->content});
            }
            m_isWithAed = m_isWithAed || excusesPauses(message->fact);
            if (listener)
                listener->arrived(*message);
        }
    }
}

void Simulator::Private::end()
{
    using ID = CommunicationIDs;
    const qint64 now = sessionStart + qint64(m_lastSequence) * Manikin::period;
    const bool isOld = scenario.link.shortMessages;
    const Parameters statistics = contents::fitted(judge.statistics());
    const Parameters scores = contents::fitted(judge.scores(m_isWithAed));

    addState(now + 20, CPRData::CPR_ENDED);
    addMessage(now + 100, ID::RPL_GL_INDEPENDENT_STATS,
               contents::independentStatistics(statistics, isOld));
    addMessage(now + 120, ID::RPL_GL_INDEPENDENT_BIN_STATS, contents::histograms(statistics));
    addMessage(now + 140, ID::RPL_GL_DEPENDENT_STATS, contents::dependentStatistics(statistics));
    addMessage(now + 200, ID::RPL_CPR_SCORES, contents::scores(scores, isOld));
    if (listener)
        listener->finished(statistics, scores);
    isOver = true;
}

Simulator::Simulator(const Scenario &scenario, quint64 seed, Listener *listener)
    : d(std::make_unique<Private>(scenario, seed, listener))
{
}

Simulator::~Simulator() = default;

bool Simulator::next(manikinlog::Record &record)
{
    while (d->records.empty()) {
        if (d->isOver)
            return false;
        d->goOn();
    }
    record = std::move(d->records.front());
    d->records.pop_front();
    return true;
}

void Simulator::stop()
{
    d->stop();
}

bool Simulator::write(manikinlog::ManikinLogWriter &writer)
{
    manikinlog::Record record;
    while (next(record)) {
        if (!writer.write(record))
            return false;
    }
    return true;
}

const Scenario &Simulator::scenario() const
{
    return d->scenario;
}

} // namespace manikinsim
