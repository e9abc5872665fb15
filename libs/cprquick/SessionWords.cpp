// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/SessionWords.h"

#include "cprquick/ParameterText.h"

#include "sessionreview/Words.h"

#include <private/PrintableText.h>
#include <sessionplot/Scales.h>

#include <QAccessible>

namespace cprquick {

namespace {

/// \a text of the parameter with that key.
template <typename Text> QString ofParameter(const QString &key, Text text)
{
    CPREventBase::ParameterType type{};
    return CPREventBase::parameterFromKey(key, type) ? text(type) : QString();
}

} // namespace

SessionWords::SessionWords(QObject *parent) : QObject(parent)
{
}

SessionWords::~SessionWords() = default;

QString SessionWords::eventType(int type) const
{
    return eventTypeText(static_cast<CPREventBase::EventType>(type));
}

QString SessionWords::parameter(const QString &key) const
{
    return ofParameter(key, parameterText);
}

QString SessionWords::unit(const QString &key) const
{
    return ofParameter(key, parameterUnitText);
}

QString SessionWords::value(const QString &key, const QVariant &value) const
{
    return ofParameter(key, [&value](CPREventBase::ParameterType type) {
        return parameterValueText(type, value);
    });
}

QString SessionWords::shown(const QString &text) const
{
    return PrintableText::shown(text);
}

QString SessionWords::advice(int advice) const
{
    return sessionreview::adviceText(advice);
}

QString SessionWords::protocol(int protocol) const
{
    return sessionreview::protocolText(protocol);
}

QStringList SessionWords::quickRemarks() const
{
    return sessionreview::quickRemarks();
}

QString SessionWords::remark(const QString &stored) const
{
    return PrintableText::shown(sessionreview::remarkText(stored));
}

QString SessionWords::time(int msecs, bool withTenths) const
{
    constexpr qint64 second = 1000;
    constexpr qint64 tenth = 100;
    return sessionplot::timeText(msecs, withTenths ? tenth : second,
                                 sessionplot::needsHours({0, msecs}));
}

void SessionWords::announce(QObject *item) const
{
    QAccessibleEvent event(item, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace cprquick
