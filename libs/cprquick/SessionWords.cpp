// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/SessionWords.h"

#include "cprquick/ParameterText.h"

#include "sessionreview/Words.h"

#include <private/PrintableText.h>
#include <sessionplot/Scales.h>

#include <QAccessible>
#include <QQuickItem>
#include <QTimer>

#include <utility>

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

void SessionWords::announce(QObject *item)
{
    // What a page shows of one thing that has happened follows in several steps.
    if (m_announced.isEmpty())
        QTimer::singleShot(0, this, &SessionWords::say);
    if (!m_announced.contains(item))
        m_announced.append(item);
}

void SessionWords::say()
{
    const auto announced = std::exchange(m_announced, {});
    for (const QPointer<QObject> &each : announced) {
        auto *item = qobject_cast<QQuickItem *>(each);
        if (!QAccessible::isActive() || !item || !item->isVisible())
            continue;
        const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(item);
        QAccessibleEvent event(item, QAccessible::Alert);
        if (spoken && !spoken->text(QAccessible::Name).isEmpty())
            QAccessible::updateAccessibility(&event);
    }
}

} // namespace cprquick
