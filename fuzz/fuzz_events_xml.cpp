// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// The event list's document: read, written, read again.

#include "CPRData.h"
#include "CPREventSessionInfo.h"
#include "Fuzzing.h"

#include <QStringList>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

using namespace fuzzing;

namespace {

// The list's elements in a fixed order, pauses left out: the order of events that overlap depends
// on the order in which they came, and of pauses that overlap only the first is read.
QStringList elements(const QString &document)
{
    QStringList found = document.left(document.indexOf(QLatin1String("</eventList>")))
                            .split(QStringLiteral("<evt "))
                            .mid(1);
    for (QString &element : found) {
        if (element.startsWith(QLatin1String("type=\"CprInactivityCPR\"")))
            element.clear();
        element = element.trimmed();
    }
    found.removeAll(QString());
    found.sort();
    return found;
}

QString readAndWrite(CPRData &session, const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    session.cprEvents()->read(&reader);
    requireWhole(*session.cprEvents());
    return document([&session](QXmlStreamWriter &writer) { session.cprEvents()->write(&writer); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepare();
    const Cost cost(size);
    // One session for all inputs: reading begins with an empty list.
    static auto *const session = [] {
        auto *made = new CPRData;
        requireOrder(*made->cprEvents());
        return made;
    }();
    const QString once = readAndWrite(*session, Bytes(data, size).rest());
    const QString twice = readAndWrite(*session, once.toUtf8());
    require(elements(once) == elements(twice), "a list that is read again is the same list");
    // These outlive the reading of another document.
    session->cprEvents()->sessionInfo()->setParameter(CPREventBase::manikinName, QString());
    session->cprEvents()->sessionInfo()->setParameter(CPREventBase::students, QString());
    fireTimers(*session);
    return 0;
}
