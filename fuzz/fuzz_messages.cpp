// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// The link's messages, headers and samples with a host's calls in between. Each step takes a byte
// that chooses what is done, and what that needs from the bytes that follow.

#include "CPRData.h"
#include "CPREventSessionInfo.h"
#include "Fuzzing.h"
#include "private/Limits.h"
#include "sessionfiles/MemoryFileHandler.h"

#include <chestboard/CommonDefs.h>
#include <chestboard/RMessage.h>

#include <QBuffer>

#include <iterator>
#include <limits>
#include <memory>
#include <utility>

using namespace fuzzing;
using bls_2010::CommonDefs;
using E = CPREventBase;

namespace {

struct Host {
    explicit Host(Bytes &bytes) : in(bytes) { take(std::make_unique<CPRData>()); }

    CPREvents &events() { return *session->cprEvents(); }
    bool flag() { return in.below(2) == 0; }
    qint16 small() { return static_cast<qint16>(in.number(2)); }
    int time() { return in.below(4) == 0 ? in.signedNumber() : small(); }
    QString text() { return QString::fromUtf8(in.take(static_cast<int>(in.below(12)))); }

    void take(std::unique_ptr<CPRData> other)
    {
        session = std::move(other);
        requireOrder(events());
        // A host that deletes what it is just told of.
        const auto deleteOnce = [this](CPREventBase *event) {
            if (std::exchange(deletesNext, false))
                delete event;
        };
        QObject::connect(&events(), &CPREvents::compressionEvent, deleteOnce);
        QObject::connect(&events(), &CPREvents::inactivityCPREvent, deleteOnce);
        QObject::connect(&events(), &CPREvents::otherEventAdded, deleteOnce);
    }

    // Mostly the next one; now and then one that no link should send.
    qint32 nextSequence()
    {
        using Limits = std::numeric_limits<qint32>;
        const qint32 odd[] = {0, -1, Limits::min(), Limits::max(), sequence - 3};
        const quint32 choice = in.below(16);
        if (choice < std::size(odd))
            return odd[choice];
        if (sequence > Limits::max() / 2)
            sequence = 0;
        if (choice == 5) // rarely a gap of most of a day: filling it takes its time
            sequence += in.below(64) == 1 ? 4000000 : static_cast<qint32>(in.number(2));
        else
            ++sequence;
        return sequence;
    }

    void sendMessage()
    {
        constexpr quint32 known[] = {38, 47, 48, 50,  52,  64,  68,  70,  75,  77,  79, 80,
                                     81, 87, 88, 101, 104, 106, 107, 108, 109, 110, 111};
        const quint32 choice = in.below(std::size(known) + 1);
        const quint32 identifier = choice < std::size(known) ? known[choice] : in.number(4);
        const qint32 number = in.below(8) == 0 ? nextSequence() : sequence;
        const QByteArray content = in.take(static_cast<int>(in.below(256)));
        bls_2010::RMessage message(identifier, content, bls_2010::HeaderElement(number));
        session->incomingMsg(&message);
        if (identifier == 106 || identifier == 107) // the list does not route them; the host does
            events().sessionInfo()->incomingMsg(&message);
    }

    void sendWave()
    {
        const qint32 number = nextSequence();
        session->waveHeaderReceived(number);
        for (quint32 left = in.below(4); left > 0; --left) {
            constexpr quint8 types[] = {9, 12, 13, 0};
            const auto type = static_cast<CommonDefs::WaveType>(types[in.below(4)]);
            session->waveDataReceived(type, time(), number);
        }
    }

    void sendDecoded()
    {
        const auto start = static_cast<quint32>(time());
        const quint32 choice = in.below(3);
        CommonDefs::CompressionEvent_t compression;
        CommonDefs::VentilationEvent_t ventilation;
        compression.startToPeak = ventilation.startToPeak = static_cast<quint16>(small());
        compression.peakToEnd = ventilation.peakToEnd = static_cast<quint16>(small());
        if (choice == 0)
            events().incomingCompressionEvent(start, time(), compression);
        else if (choice == 1)
            events().incomingVentilationEvent(start, time(), ventilation);
        else
            events().incomingInactivityTime(start, small());
    }

    void connectPeer()
    {
        peer = std::make_unique<CPRData>();
        for (CPRData *from : {peer.get(), session.get()}) {
            CPRData *to = from == peer.get() ? session.get() : peer.get();
            QObject::connect(from, &CPRData::learnersChanged, to, &CPRData::onOtherLearnersChanged);
        }
    }

    // What a host can ask for without changing the session.
    void ask()
    {
        const auto tag = E::EventTag(1 << in.below(8));
        const int at = time();
        const auto lasts = [at](const E *event) {
            return event->msecs() <= at && event->eventEndTime() >= at;
        };
        QList<E *> there;
        E *first = nullptr;
        const QList<E *> tagged = events().events(tag, -1);
        for (E *event : tagged) {
            if (at == -1 || event->msecs() >= at || lasts(event))
                there.append(event);
            if (!first && (at == 0 || lasts(event)))
                first = event;
            require(!QString(*event).isEmpty(), "an event has a text");
        }
        require(events().events(tag, at) == there, "the events at a time are found");
        if (!first && !tagged.isEmpty())
            first = tagged.last();
        require(events().atTime(tag, at) == first, "the first event at a time is found");
        QVariantMap map;
        events().telemetryTrainingSessionScoreData(map);
        events().telemetryTrainingSessionGuidelineData(map);
        QBuffer row;
        row.open(QIODevice::WriteOnly);
        const E::ParameterMapList_t columns{{E::compDepth, text()}, {E::students, text()}};
        events().writeHeader(&row, columns, QStringLiteral(";"));
        events().write(&row, columns, QStringLiteral(";"));
    }

    // A copy stays when its original goes.
    void copy()
    {
        peer.reset();
        take(std::make_unique<CPRData>(*session));
        requireWhole(events());
    }

    void store()
    {
        // Samples of a day, which one gap can bring, take a second: too few inputs would be tried.
        // These are some blocks of those that waves are read and written in. A store costs as much
        // as a hundred other steps, and a further one finds little.
        constexpr qint64 mostSamplesStored = 200'000;
        constexpr int mostStores = 2;
        storedSamples += session->compressionData()->count() + session->ventilationData()->count();
        if (storedSamples > mostSamplesStored || ++stores > mostStores)
            return;
        copy(); // which lists all standing events
        sessionfiles::MemoryFileHandler memory;
        require(session->writeData(&memory), "memory takes every member");
        CPRData loaded;
        require(loaded.readData(&memory), "what was stored can be read");
        requireSame(*session, loaded);
        if (flag()) // the samples are added to those that are there
            require(session->readData(&memory), "a session can be read over another");
    }

    void finish()
    {
        // Gaps are filled up to the limit at most; each step of the longest input brings 3 samples.
        constexpr int mostSamples = Limits::maxSamples + 3 * 4096;
        require(session->compressionData()->count() <= mostSamples
                    && session->ventilationData()->count() <= mostSamples,
                "waves are bounded");
        requireWhole(events());
        fireTimers(*session);
    }

    Bytes &in;
    std::unique_ptr<CPRData> session;
    std::unique_ptr<CPRData> peer; // the two tell each other of their learners
    qint32 sequence = 0;
    qint64 storedSamples = 0;
    int stores = 0;
    bool deletesNext = false;
};

constexpr CPRData::CprState states[] = {CPRData::CPR_MANIKIN_INIT, CPRData::CPR_INIT,
                                        CPRData::CPR_START,        CPRData::CPR_ENDED,
                                        CPRData::CPR_STOP,         CPRData::CPR_RECONNECTED};

// What a host calls besides handing over what comes from the link. Kept inputs count on the order:
// a new call comes last.
// clang-format off
void (*const hostCalls[])(Host &) = {
    [](Host &h) { h.session->setCprState(states[h.in.below(std::size(states))]); },
    [](Host &h) { h.session->assignLearner(h.text()); },
    [](Host &h) { h.session->releaseLearner(h.text()); },
    [](Host &h) { h.session->setTrimToTotalTime(h.flag()); },
    [](Host &h) { h.session->setCloneIncomingGuidelines(h.flag()); },
    [](Host &h) { h.session->setPacketLossThresholdMs(h.time()); },
    [](Host &h) { h.session->setSessionTime(h.time()); },
    [](Host &h) { h.session->receivingData(h.flag()); },
    [](Host &h) { h.session->onStatisticsReady(); },
    [](Host &h) { h.session->incomingGuidelines(h.flag() ? nullptr : h.session->cprGuidelines()); },
    [](Host &h) { *h.session->cprGuidelines() = *h.session->cprGuidelines(); },
    [](Host &h) { h.session->addUserEvent(QStringLiteral("Morvane.Event.Deliver shock")); },
    [](Host &h) { h.session->addUserEvent(h.text()); },
    [](Host &h) { h.session->compressionData()->cutOffWavedataAtTime(h.time()); },
    [](Host &h) { h.session->ventilationData()->cutOffWavedataAtTime(h.time()); },
    [](Host &h) { require(!h.session->incomingMsg(nullptr), "nobody takes no message"); },
    [](Host &h) { h.events().setScoresToReceive(static_cast<int>(h.in.below(6))); },
    [](Host &h) { h.events().setCprProtocol(static_cast<CommonDefs::CprProtocolType>(h.in.below(256))); },
    [](Host &h) { h.events().setCategoryThresholdBasic(h.time()); },
    [](Host &h) { h.events().incomingSessionStatistics(); },
    [](Host &h) { h.events().incomingSessionScores(); },
    [](Host &h) { h.events().removeInactivityEventAfter(h.time()); },
    [](Host &h) { h.events().cprdEvent(E::AEDEcgRhythms(h.in.below(8)), E::AEDEcgRhythms(h.in.below(8))); },
    [](Host &h) { h.events().aedDetected(E::AEDTypes(h.in.below(8))); },
    [](Host &h) { h.events().aedEvent({{E::aedEventType, h.time()}, {E::aedType, h.text()}}); },
    [](Host &h) { h.events().addEvent(h.events().at(h.small()), true); },
    [](Host &h) { h.events().addEvent(h.peer ? h.peer->cprEvents()->at(h.small()) : nullptr, true); },
    [](Host &h) { h.deletesNext = true; },
    [](Host &h) { delete h.events().at(h.small()); },
    [](Host &h) { h.connectPeer(); },
    [](Host &h) { h.ask(); },
    [](Host &h) { h.copy(); },
    [](Host &h) { h.store(); },
    [](Host &h) { fireTimers(*h.session); },
    [](Host &h) { requireWhole(h.events()); },
};
// clang-format on

void step(Host &host)
{
    const quint32 choice = host.in.number(1);
    if (choice < std::size(hostCalls))
        return hostCalls[choice](host);
    switch (choice % 4) {
    case 0:
        return host.sendDecoded();
    case 1:
        return host.sendWave();
    default:
        return host.sendMessage();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepare();
    const Cost cost(size);
    Bytes input(data, size);
    Host host(input);
    while (!input.isEmpty())
        step(host);
    host.finish();
    return 0;
}
