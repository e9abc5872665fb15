// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREvents.h"
#include "Vocabulary.h"
#include "private/EventSequence.h"
#include "private/Limits.h"
#include "private/RepeatedWarning.h"
#include "private/XmlReading.h"

#include <QLoggingCategory>
#include <QScopedValueRollback>
#include <QXmlStreamWriter>

// The event list as a document.

Q_DECLARE_LOGGING_CATEGORY(lcEvents)

void CPREvents::write(QXmlStreamWriter *writer)
{
    qCDebug(lcEvents) << Q_FUNC_INFO;
    if (!writer)
        return;
    writer->writeStartDocument();
    writer->writeStartElement(QStringLiteral("eventList"));
    writer->writeNamespace(QStringLiteral("http://www.w3.org/2001/XMLSchema-instance"),
                           QStringLiteral("xsi"));
    writer->writeNamespace(QStringLiteral("http://www.w3.org/2001/XMLSchema"),
                           QStringLiteral("xsd"));
    const EventList all = events();
    for (CPREventBase *event : all) {
        qCDebug(lcEvents).noquote() << "Storing event: " << QString(*event);
        event->write(writer);
    }
    writer->writeEndDocument();
}

CPREventBase *CPREvents::eventToRead(CPREventBase::EventType type, int msecs, bool &isStanding)
{
    if (const auto makeEvent = Vocabulary::eventKind(type)->make) {
        const QScopedValueRollback<bool> making(m_isMaking, true);
        return makeEvent(type, msecs, this);
    }
    CPREventBase *standing = m_sessionInfo;
    if (type == CPREventBase::CprSessionStatistics)
        standing = m_sessionStatistics;
    else if (type == CPREventBase::CprSessionScore)
        standing = m_sessionScore;
    isStanding = true;
    standing->setMSecs(msecs);
    return standing;
}

void CPREvents::read(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    initialize();
    if (!readNextChild(*reader) || reader->name() != QLatin1String("eventList"))
        return;

    m_lastRead = nullptr;
    int parameters = 0;
    int skipped = 0;
    while (readNextChild(*reader) && reader->name() == QLatin1String("evt")) {
        if (m_lists.front().size() >= Limits::maxEvents) {
            reader->raiseError(QStringLiteral("more than %1 events").arg(Limits::maxEvents));
            break;
        }
        qCDebug(lcEvents) << "Reading element at line" << reader->lineNumber();
        const QXmlStreamAttributes attributes = reader->attributes();
        CPREventBase::EventType type{};
        if (!attributes.hasAttribute(QLatin1String("msecs"))
            || !CPREventBase::eventTypeFromKey(attributes.value(QLatin1String("type")), type)) {
            if (isWarningPrinted(lcEvents, skipped))
                qCWarning(lcEvents) << "Skipping element at line" << reader->lineNumber();
            reader->skipCurrentElement();
            continue;
        }
        bool isStanding = false;
        CPREventBase *event =
            eventToRead(type, attributes.value(QLatin1String("msecs")).toInt(), isStanding);
        event->read(reader);
        parameters += isStanding ? 0 : event->storedParameterCount();
        if (parameters > Limits::maxParameters && !reader->hasError())
            reader->raiseError(
                QStringLiteral("more than %1 parameters").arg(Limits::maxParameters));
        if (event->filterEvent(m_lastRead)) {
            if (!isStanding)
                delete event;
        } else {
            if (!isStanding) {
                addEvent(event, false);
                m_lastRead = event;
            }
            handleEvent(event);
            if (!isStanding)
                emitEvent(event);
        }
        // An event that held more than parameters has stopped inside; the list ends with it.
        if (!reader->isEndElement())
            break;
    }
    if (skipped > Limits::maxWarnings)
        qCWarning(lcEvents) << "Skipped" << skipped << "elements";
}
