// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef READBACK_H
#define READBACK_H

#include "CPRData.h"
#include "Vocabulary.h"
#include "private/Limits.h"

#include <QString>

#include <algorithm>
#include <optional>

/// Whether the element that holds \a text is longer than a document may have it.
inline bool isTooLongForXml(const QString &text)
{
    constexpr qint64 restOfElement = 256; // names, units, quotes
    constexpr qint64 maxEscapeBytes = 6; // bytes for one character
    if (text.size() * maxEscapeBytes + restOfElement <= Limits::maxTextBytes)
        return false;
    const QByteArray bytes = text.toHtmlEscaped().toUtf8();
    const auto breaks = std::count_if(bytes.begin(), bytes.end(),
                                      [](char c) { return c == '\t' || c == '\n' || c == '\r'; });
    return bytes.size() + breaks * (maxEscapeBytes - 2) + restOfElement > Limits::maxTextBytes;
}

/// What of \a session would be missing when its archive is read: the first reason, in English.
/// None when all can be read back. The session itself has no limits but that of its waves: a host
/// and a manikin can go on for longer than an archive is read.
inline std::optional<QString> lossWhenReadBack(const CPRData &session)
{
    int listed = 1; // while a list is read: the session info stands there before all others
    int parameters = 0;
    bool isTextTooLong = false;
    for (const CPREventBase *event : session.cprEvents()->events()) {
        const Vocabulary::EventKind *kind = Vocabulary::eventKind(event->type());
        if (!kind)
            return QStringLiteral("an event of an unknown kind");
        if (listed >= Limits::maxEvents)
            return QStringLiteral("more than %1 events").arg(Limits::maxEvents);
        const bool isStanding = kind->make == nullptr;
        listed += isStanding ? 0 : 1;
        if (kind->measuring)
            continue;
        event->visitValues([&](CPREventBase::ParameterType type, const QVariant &value) {
            if (!Vocabulary::parameter(type)->isStored)
                return;
            parameters += isStanding ? 0 : 1;
            isTextTooLong |= isTooLongForXml(value.toString());
        });
        if (parameters > Limits::maxParameters)
            return QStringLiteral("more than %1 parameters").arg(Limits::maxParameters);
    }
    if (isTextTooLong || isTooLongForXml(session.cprGuidelines()->guidelinesID()))
        return QStringLiteral("a text of more than %1 bytes").arg(Limits::maxTextBytes);
    return std::nullopt;
}

#endif
