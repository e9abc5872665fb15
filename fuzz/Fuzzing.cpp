// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Fuzzing.h"

#include "CPRData.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QHash>
#include <QLoggingCategory>
#include <QSet>
#include <QTimer>
#include <QTimerEvent>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>

#ifdef __has_feature
#if __has_feature(address_sanitizer)
#include <sanitizer/allocator_interface.h>
#define COUNTS_MEMORY
#endif
#endif

using E = CPREventBase;

namespace fuzzing {

namespace {

bool isSummary(const CPREventBase *event)
{
    return event->type() == E::CprSessionInfo || event->type() == E::CprSessionStatistics
        || event->type() == E::CprSessionScore;
}

// Behind the last event that has ended when the new one begins.
void requirePlace(const QList<CPREventBase *> &list, const CPREventBase *event)
{
    int i = list.size() - 1;
    for (; i >= 0 && list.at(i) != event; --i)
        require(list.at(i)->eventEndTime() > event->msecs(), "an event stands too far in front");
    require(i >= 0, "an announced event is listed");
    require(i == 0 || list.at(i - 1)->eventEndTime() <= event->msecs(),
            "an event stands too far behind");
}

// Summary events are read but not listed, and of pauses that overlap only the first is read.
auto countOf(const CPREvents &events)
{
    return std::count_if(events.events().cbegin(), events.events().cend(), [](const E *event) {
        return !isSummary(event) && event->type() != E::CprInactivityCPR;
    });
}

#ifdef COUNTS_MEMORY
qint64 inUse = 0; // bytes
qint64 mostInUse = 0;

void countAllocation(const volatile void * /*address*/, std::size_t size)
{
    inUse += qint64(size);
    mostInUse = std::max(mostInUse, inUse);
}

void countRelease(const volatile void *address)
{
    if (address)
        inUse -= qint64(__sanitizer_get_allocated_size(const_cast<const void *>(address)));
}
#endif

qint64 microsecondsOfThread()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1'000'000 + time.tv_nsec / 1000;
}

} // namespace

Cost::Cost(std::size_t bytes)
    : m_bytes(qint64(bytes)), m_memory(0), m_microseconds(microsecondsOfThread())
{
#ifdef COUNTS_MEMORY
    mostInUse = m_memory = inUse;
#endif
}

Cost::~Cost()
{
#ifdef COUNTS_MEMORY
    constexpr qint64 memory = 160 * 1024 * 1024; // two sessions, each with a gap of a day filled
    constexpr qint64 memoryPerByte = 64; // an event of 30 bytes is an object of a thousand
    require(mostInUse - m_memory <= memory + memoryPerByte * m_bytes,
            "memory is bounded by the bytes that are read");
#endif
    constexpr qint64 microseconds = 500'000;
    constexpr qint64 microsecondsPerByte = 10; // with both sanitizers
    require(microsecondsOfThread() - m_microseconds <= microseconds + microsecondsPerByte * m_bytes,
            "time is bounded by the bytes that are read");
}

void prepare()
{
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    static int count = 1;
    static QCoreApplication *application = nullptr;
    if (application)
        return;
#ifdef COUNTS_MEMORY
    __sanitizer_install_malloc_and_free_hooks(countAllocation, countRelease);
#endif
    application = new QCoreApplication(count, arguments); // lives as long as the process
    const QByteArray log = qgetenv("CPRDATA_FUZZ_LOG");
    QLoggingCategory::setFilterRules(log.isEmpty() ? QStringLiteral("*=false")
                                                   : QStringLiteral("*=true"));
    if (log != "show")
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

void require(bool holds, const char *rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", rule);
    std::abort();
}

void requireWhole(const CPREvents &events)
{
    QHash<const CPREventBase *, int> tagsOf;
    for (const CPREventBase *event : events.events()) {
        require(event->events() == &events && event->parent() == &events, "the list owns events");
        require(!tagsOf.contains(event), "an event is listed once");
        tagsOf.insert(event, 0);
    }
    for (int tag = 1; tag <= int(E::LastTag); tag <<= 1) {
        for (const CPREventBase *event : events.events(E::EventTag(tag), -1)) {
            require(tagsOf.contains(event), "an event of a tag's list is in the main list");
            require((tagsOf[event] & tag) == 0, "an event is listed once for a tag");
            tagsOf[event] |= tag;
        }
    }
    for (auto it = tagsOf.cbegin(); it != tagsOf.cend(); ++it) {
        // A copy lists its summary events for no tag.
        require(it.value() == it.key()->tag() || (it.value() == 0 && isSummary(it.key())),
                "an event is in the lists of its tags");
    }
}

void requireOrder(CPREvents &events)
{
    // A listed event that is added again is announced again, and keeps its place.
    const auto placed = std::make_shared<QSet<const CPREventBase *>>();
    const auto takeListed = [&events, placed] {
        const auto &list = events.events();
        *placed = QSet<const CPREventBase *>(list.cbegin(), list.cend());
    };
    takeListed();
    QObject::connect(&events, &CPREvents::eventsCleared, &events, takeListed);
    QObject::connect(&events, &CPREvents::eventRemoved, &events,
                     [placed](const CPREventBase *event) { placed->remove(event); });
    const auto check = [&events, placed](const CPREventBase *event) {
        if (placed->contains(event))
            return;
        placed->insert(event);
        // When statistics and score arrive they can trim pauses that stood behind them.
        if (isSummary(event) && event->type() != E::CprSessionInfo)
            return;
        requirePlace(events.events(), event);
        for (int tag = 1; tag <= int(E::LastTag); tag <<= 1) {
            if ((event->tag() & tag) != 0)
                requirePlace(events.events(E::EventTag(tag), -1), event);
        }
    };
    QObject::connect(&events, &CPREvents::compressionEvent, &events, check);
    QObject::connect(&events, &CPREvents::ventilationEvent, &events, check);
    QObject::connect(&events, &CPREvents::inactivityCPREvent, &events, check);
    QObject::connect(&events, &CPREvents::cprGuiEventAdded, &events, check);
    QObject::connect(&events, &CPREvents::otherEventAdded, &events, check);
}

void requireSame(const CPRData &stored, const CPRData &loaded)
{
    require(countOf(*stored.cprEvents()) == countOf(*loaded.cprEvents()), "every event is kept");
    require(stored.compressionData()->count() == loaded.compressionData()->count()
                && stored.ventilationData()->count() == loaded.ventilationData()->count(),
            "every sample is kept");
    // The flag is not stored, and an identifier that looks like a number comes back as a number.
    CPRGuidelines guidelines(stored.cprGuidelines());
    guidelines.setManikinGuidelineFlag(loaded.cprGuidelines()->manikinGuidelineFlag());
    guidelines.setGuidelinesID(loaded.cprGuidelines()->guidelinesID());
    require(guidelines == *loaded.cprGuidelines(), "guidelines are kept");
}

void fireTimers(CPRData &session)
{
    for (QTimer *timer : session.findChildren<QTimer *>()) {
        if (timer->isActive()) {
            QTimerEvent due(timer->timerId());
            QCoreApplication::sendEvent(timer, &due);
        }
    }
    // Single shots belong to the dispatcher, and outlive those that they are for. None may be left,
    // neither of them nor of posted events: to look for one takes longer with each.
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    const QObjectList shots = dispatcher->children();
    for (QObject *shot : shots) {
        for (const QAbstractEventDispatcher::TimerInfo &timer :
             dispatcher->registeredTimers(shot)) {
            QTimerEvent due(timer.timerId);
            QCoreApplication::sendEvent(shot, &due);
        }
    }
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QString document(const std::function<void(QXmlStreamWriter &)> &write)
{
    QString text;
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(true);
    write(writer);
    return text;
}

} // namespace fuzzing
