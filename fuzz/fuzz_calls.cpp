// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// A host's calls in any order, and in every slot some more: each signal of each object of a session
// takes a byte that says what the slot does.

#include "CPRData.h"
#include "CPREventAED.h"
#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREventShock.h"
#include "CPREventUser.h"
#include "Fuzzing.h"
#include "sessionfiles/MemoryFileHandler.h"

#include <chestboard/RMessage.h>

#include <QBuffer>
#include <QMetaMethod>

#include <functional>
#include <iterator>
#include <memory>
#include <utility>

using namespace fuzzing;
using bls_2010::CommonDefs;
using E = CPREventBase;
using sessionfiles::MemoryFileHandler;

namespace {

// Hears every signal that it is connected to, whatever its arguments are.
class Slot final : public QObject {
public:
    explicit Slot(std::function<void()> act) : m_act(std::move(act)) { }

    void listenTo(const QObject *sender)
    {
        const QMetaObject *meta = sender->metaObject();
        const int slot = QObject::staticMetaObject.methodCount();
        for (int i = slot; i < meta->methodCount(); ++i) {
            if (meta->method(i).methodType() == QMetaMethod::Signal) {
                QMetaObject::disconnect(sender, i, this, slot);
                QMetaObject::connect(sender, i, this, slot, Qt::DirectConnection);
            }
        }
    }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        if (QObject::qt_metacall(call, id, arguments) == 0 && call == QMetaObject::InvokeMetaMethod)
            m_act();
        return -1;
    }

private:
    std::function<void()> m_act;
};

const MemoryFileHandler::Members &emptyMembers()
{
    static const auto members =
        sessionfiles::emptySession(); // to write it takes most of a short input
    return members;
}

struct Host {
    explicit Host(Bytes &bytes) : in(bytes) { session = make(std::make_unique<CPRData>()); }

    CPREvents &events() { return *session->cprEvents(); }
    int small() { return static_cast<qint16>(in.number(2)); }
    int time() { return in.below(4) == 0 ? in.signedNumber() : small(); }
    E *event() { return events().at(static_cast<int>(in.below(16))); }
    QString text() { return QString::fromUtf8(in.take(static_cast<int>(in.below(8)))); }
    bool isStanding(const E *event)
    {
        return event == events().cprSessionInfo() || event == events().cprSessionStatistics()
            || event == events().cprSessionScore();
    }

    std::unique_ptr<CPRData> make(std::unique_ptr<CPRData> made)
    {
        listenTo(*made);
        return made;
    }

    // Objects that were replaced meanwhile are listened to, too.
    void listenTo(const CPRData &to)
    {
        slot.listenTo(&to);
        for (const QObject *child : to.findChildren<QObject *>()) {
            if (qobject_cast<const CPRDataBase *>(child) || qobject_cast<const E *>(child))
                slot.listenTo(child);
        }
    }

    void heard()
    {
        constexpr int mostCalls = 32; // in slots; each can be heard by a further one
        if (depth >= 3 || calls >= mostCalls || in.isEmpty())
            return;
        ++calls;
        call();
    }

    void call();

    void send()
    {
        constexpr quint32 known[] = {38, 47, 48, 50,  52,  64,  68,  70,  75,  77,  79, 80,
                                     81, 87, 88, 101, 104, 106, 107, 108, 109, 110, 111};
        const quint32 identifier = known[in.below(std::size(known))];
        const QByteArray content = in.take(static_cast<int>(in.below(80)));
        bls_2010::RMessage message(identifier, content, bls_2010::HeaderElement(sequence));
        session->incomingMsg(&message);
    }

    void sendWave()
    {
        sequence += static_cast<qint32>(in.below(200));
        session->waveHeaderReceived(sequence);
        session->waveDataReceived(CommonDefs::WAVE_RELATIVE_COMP_DEPTH, small(), sequence);
    }

    // In a slot only what is no standing event, which may be the sender.
    void destroy()
    {
        E *gone = event();
        if (depth == 1 || !isStanding(gone))
            delete gone;
    }

    // A session is not deleted in a slot: it may be the sender.
    void copy()
    {
        auto copied = std::make_unique<CPRData>(*session);
        requireWhole(*copied->cprEvents());
        if (depth > 1)
            return;
        listenTo(*copied);
        other = std::exchange(session, std::move(copied));
    }

    void save()
    {
        if (++saves > 2) // which cost as much as a hundred other calls
            return;
        MemoryFileHandler files;
        session->writeData(&files);
        stored = files.members;
    }

    void load()
    {
        if (++loads > 3) // each lets a whole list be heard
            return;
        MemoryFileHandler files(stored);
        session->readData(&files);
    }

    void ask()
    {
        QVariantMap map;
        events().telemetryTrainingSessionScoreData(map);
        events().telemetryTrainingSessionGuidelineData(map);
        QBuffer row;
        row.open(QIODevice::WriteOnly);
        events().write(&row, {{E::students, text()}}, QStringLiteral(";"));
        events().events(E::EventTag(1 << in.below(8)), time());
        events().atTime(E::EventTag(1 << in.below(8)), time());
        require(!QString(*events().sessionInfo()).isEmpty(), "an event has a text");
    }

    // The times and parameters of one that is listed.
    void change()
    {
        E *changed = event();
        if (!changed)
            return;
        const int parameter = static_cast<int>(in.number(1));
        changed->setEventEndTime(time());
        changed->setParameter(E::ParameterType(parameter), small());
        if (in.below(4) == 0)
            changed->setMSecs(time());
        if (in.below(4) == 0)
            changed->params();
    }

    void moveEvent()
    {
        if (other)
            events().addEvent(other->cprEvents()->at(static_cast<int>(in.below(16))), true);
    }

    void connectLearners()
    {
        if (!other)
            return;
        QObject::connect(session.get(), &CPRData::learnersChanged, other.get(),
                         &CPRData::onOtherLearnersChanged, Qt::UniqueConnection);
        QObject::connect(other.get(), &CPRData::learnersChanged, session.get(),
                         &CPRData::onOtherLearnersChanged, Qt::UniqueConnection);
    }

    // Lets what is due come, what was to be deleted go, and looks at everything.
    void settle()
    {
        if (depth > 1)
            return;
        for (CPRData *each : {session.get(), other.get()}) {
            if (!each)
                continue;
            fireTimers(*each);
            requireWhole(*each->cprEvents());
            listenTo(*each);
        }
    }

    Bytes &in;
    Slot slot{[this] { heard(); }};
    std::unique_ptr<CPRData> session;
    std::unique_ptr<CPRData> other; // which the session was copied from
    MemoryFileHandler::Members stored = emptyMembers();
    qint32 sequence = 0;
    int depth = 0; // of calls in each other
    int calls = 0; // in slots
    int saves = 0;
    int loads = 0;
};

constexpr CPRData::CprState states[] = {CPRData::CPR_MANIKIN_INIT, CPRData::CPR_INIT,
                                        CPRData::CPR_START,        CPRData::CPR_ENDED,
                                        CPRData::CPR_STOP,         CPRData::CPR_RECONNECTED};

// Kept inputs count on the order: a new call comes last.
// clang-format off
void (*const hostCalls[])(Host &) = {
    [](Host & /*h*/) {},
    [](Host &h) { h.session->setCprState(states[h.in.below(std::size(states))]); },
    [](Host &h) { h.session->initialize(); },
    [](Host &h) { h.session->reset(); },
    [](Host &h) { h.events().initialize(); },
    [](Host &h) { h.events().reset(); },
    [](Host &h) { h.send(); },
    [](Host &h) { h.sendWave(); },
    [](Host &h) { h.destroy(); },
    [](Host &h) { h.copy(); },
    [](Host &h) { h.save(); },
    [](Host &h) { h.load(); },
    [](Host &h) { h.ask(); },
    [](Host &h) { h.change(); },
    [](Host &h) { h.moveEvent(); },
    [](Host &h) { h.connectLearners(); },
    [](Host &h) { h.settle(); },
    [](Host &h) { h.session->assignLearner(h.text()); },
    [](Host &h) { h.session->releaseLearner(h.text()); },
    [](Host &h) { h.session->onStatisticsReady(); },
    [](Host &h) { h.session->setTrimToTotalTime(h.in.below(2) == 0); },
    [](Host &h) { h.session->setSessionTime(h.time()); },
    [](Host &h) { h.session->incomingGuidelines(new CPRGuidelines(h.session.get())); },
    [](Host &h) { h.events().addUserEvent(h.text()); },
    [](Host &h) { h.events().addEvent(new CPREventShock(h.time(), &h.events()), true); },
    [](Host &h) { h.events().aedDetected(E::AEDTypes(h.in.below(8))); },
    [](Host &h) { h.events().cprdEvent(E::AEDEcgRhythms(h.in.below(8)), E::AED_PEA); },
    [](Host &h) { h.events().incomingInactivityTime(static_cast<quint32>(h.time()), h.small()); },
    [](Host &h) { h.events().incomingCompressionEvent(static_cast<quint32>(h.time()), 100, {}); },
    [](Host &h) { h.events().incomingVentilationEvent(static_cast<quint32>(h.time()), 10, {}); },
    [](Host &h) { h.events().removeInactivityEventAfter(h.time()); },
    [](Host &h) { h.events().incomingSessionStatistics(); },
    [](Host &h) { h.events().incomingSessionScores(); },
    [](Host &h) { h.events().setCprProtocol(static_cast<CommonDefs::CprProtocolType>(h.in.below(8))); },
    [](Host &h) { h.events().setScoresToReceive(static_cast<int>(h.in.below(4))); },
    [](Host &h) { h.events().finalizeIncomingEvent(h.in.below(2) == 0, h.event()); },
    [](Host &h) { h.session->compressionData()->cutOffWavedataAtTime(h.time()); },
    [](Host &h) { h.session->cprGuidelines()->initialize(); },
};
// clang-format on

void Host::call()
{
    ++depth;
    hostCalls[in.below(std::size(hostCalls))](*this);
    --depth;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepare();
    const Cost cost(size);
    Bytes input(data, size);
    Host host(input);
    while (!input.isEmpty())
        host.call();
    host.depth = 1;
    host.settle();
    return 0;
}
