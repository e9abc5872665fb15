// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/EventText.h"

#include "cprquick/ParameterText.h"

#include "sessionreview/Figures.h"
#include "sessionreview/StandClear.h"
#include "sessionreview/Words.h"

#include <CPREventCompression.h>
#include <CPREventVentilation.h>
#include <private/Units.h>
#include <sessionplot/Scales.h>

#include <QCoreApplication>
#include <QLocale>

namespace cprquick {

namespace {

using E = CPREventBase;
using namespace sessionreview;

constexpr qint64 tenthsMs = 100;
constexpr qint64 twoHoursMs = 2 * 60 * Units::msecsPerMinute;

QString numberText(double value, int decimals = 0)
{
    return QLocale().toString(value, 'f', decimals);
}

QString joined(const QStringList &parts)
{
    return parts.join(QStringLiteral(", "));
}

} // namespace

EventText::EventText(const CPREventBase &event, const Targets &targets)
    : m_event(event), m_targets(targets)
{
    if (const auto *compression = qobject_cast<const CPREventCompression *>(&event))
        m_compression = judged(*compression, targets);
    else if (const auto *ventilation = qobject_cast<const CPREventVentilation *>(&event))
        m_ventilation = judged(*ventilation, targets);
}

QString EventText::typeName() const
{
    return eventTypeText(m_event.type());
}

QString EventText::start() const
{
    return sessionplot::timeText(m_event.msecs(), tenthsMs, m_event.msecs() >= twoHoursMs);
}

QString EventText::detail() const
{
    if (m_compression) {
        QStringList parts{QCoreApplication::translate("cprquick", "%1 mm")
                              .arg(numberText(depth().toDouble(), 1))};
        if (m_compression->rate > 0)
            parts.append(QCoreApplication::translate("cprquick", "%1 per min")
                             .arg(numberText(m_compression->rate)));
        return joined(parts);
    }
    if (m_ventilation)
        return QCoreApplication::translate("cprquick", "%1 ml")
            .arg(numberText(m_ventilation->volume));
    if (m_event.type() == E::CprInactivityCPR)
        return isAskedForByAed()
            ? QCoreApplication::translate("cprquick", "%1, asked for by the AED")
                  .arg(valueText(E::compInactivity))
            : valueText(E::compInactivity);
    if (const std::optional<Flag> flag = flagOf(m_event)) {
        const QString text = flagText(*flag);
        return text.isEmpty() ? valueText(E::aedType) : text; // which AED is connected
    }
    return standingDetail();
}

bool EventText::isAskedForByAed() const
{
    return m_event.events()
        && isAskedFor({m_event.msecs(), m_event.eventEndTime()},
                      standClearOf(aedFlagsOf(*m_event.events())));
}

QString EventText::valueText(E::ParameterType type) const
{
    return hasArrived(&m_event, type) ? parameterValueTextIn(m_event, type, m_event.value(type))
                                      : QString();
}

QString EventText::standingDetail() const
{
    QStringList parts;
    switch (m_event.type()) {
    case E::CprSessionInfo:
        parts = QStringList{valueText(E::students), valueText(E::cprProtocol)};
        break;
    case E::CprSessionStatistics:
        return valueText(E::sessionDuration);
    case E::CprSessionScore:
        parts = QStringList{valueText(E::overallScore), valueText(E::primaryAdvice)};
        break;
    default:
        break;
    }
    parts.removeAll(QString());
    return joined(parts);
}

QVariant EventText::depth() const
{
    return m_compression ? QVariant(m_compression->depth) : QVariant();
}

QVariant EventText::releaseDepth() const
{
    return m_compression ? QVariant(m_compression->releaseDepth) : QVariant();
}

QVariant EventText::rate() const
{
    int rate = 0;
    if (m_compression)
        rate = m_compression->rate;
    else if (m_ventilation)
        rate = m_ventilation->rate;
    return rate > 0 ? QVariant(rate) : QVariant();
}

QVariant EventText::volume() const
{
    return m_ventilation ? QVariant(m_ventilation->volume) : QVariant();
}

QVariant EventText::numberInCycle() const
{
    return m_compression ? QVariant(m_compression->number) : QVariant();
}

QVariant EventText::correct() const
{
    const std::optional<bool> right = isRight(m_event, m_targets);
    return right ? QVariant(*right) : QVariant();
}

QStringList EventText::faults() const
{
    if (m_compression)
        return faultTexts(m_compression->faults);
    return m_ventilation ? faultTexts(m_ventilation->faults) : QStringList();
}

} // namespace cprquick
