// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/ParameterText.h"

#include "sessionreview/Scores.h"
#include "sessionreview/SessionReview.h"
#include "sessionreview/Targets.h"
#include "sessionreview/Words.h"

#include <Vocabulary.h>
#include <private/PrintableText.h>
#include <private/Units.h>

#include <sessionplot/Scales.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <cstddef>

namespace cprquick {

namespace {

using E = CPREventBase;
using Vocabulary::Form;

struct UnitRow {
    E::ParameterUnit unit;
    const char *text;
};

// clang-format off

// Units whose key is not what people read, and mm, which files hold in another unit.
constexpr UnitRow units[] = {
    {E::none,    ""},
    {E::percent, "%"},
    {E::sec,     QT_TRANSLATE_NOOP("cprquick", "s")},
    {E::mm,      "mm"},
    {E::vpm,     QT_TRANSLATE_NOOP("cprquick", "per min")},
    {E::cpm,     QT_TRANSLATE_NOOP("cprquick", "per min")},
    {E::hours,   "h"},
    {E::ah,      "Ah"},
    {E::mah,     "mAh"},
};

constexpr const char *stiffnesses[] = {
    QT_TRANSLATE_NOOP("cprquick", "not known"),
    QT_TRANSLATE_NOOP("cprquick", "soft"),
    QT_TRANSLATE_NOOP("cprquick", "medium"),
    QT_TRANSLATE_NOOP("cprquick", "hard"),
};

constexpr const char *aedTypes[] = {
    QT_TRANSLATE_NOOP("cprquick", "none"),
    QT_TRANSLATE_NOOP("cprquick", "of an unknown kind"),
    "Volterm",
    "AED Practa 3",
    QT_TRANSLATE_NOOP("cprquick", "not possible"),
};

// What the AED says of itself, beside what the learner notices.
struct AedText {
    E::AEDEventType value;
    const char *text;
};
constexpr AedText aedTexts[] = {
    {E::AEDScenarioPaused,                     QT_TRANSLATE_NOOP("cprquick", "scenario paused")},
    {E::AEDScenarioStarted,                    QT_TRANSLATE_NOOP("cprquick", "scenario started")},
    {E::AEDShockDelivered,                     QT_TRANSLATE_NOOP("cprquick", "shock delivered")},
    {E::AEDDelayedONTime,                      QT_TRANSLATE_NOOP("cprquick", "delayed switching on")},
    {E::AEDScenarioNumber,                     QT_TRANSLATE_NOOP("cprquick", "scenario chosen")},
    {E::AEDScenarioFrameNumber,                QT_TRANSLATE_NOOP("cprquick", "step of the scenario")},
    {E::AEDECGRhythmStatus,                    QT_TRANSLATE_NOOP("cprquick", "ECG rhythm")},
    {E::AEDBatteryDetailedStatusOK,            QT_TRANSLATE_NOOP("cprquick", "battery good")},
    {E::AEDBatteryDetailedStatusLow,           QT_TRANSLATE_NOOP("cprquick", "battery low")},
    {E::AEDBatteryDetailedStatusDepleted,      QT_TRANSLATE_NOOP("cprquick", "battery empty")},
    {E::AEDNoFailure,                          QT_TRANSLATE_NOOP("cprquick", "no failure")},
    {E::AEDRemoteControlScenarioButtonPressed, QT_TRANSLATE_NOOP("cprquick", "remote control: scenario")},
    {E::AEDType,                               QT_TRANSLATE_NOOP("cprquick", "AED connected")},
};

constexpr const char *pulses[]     = {QT_TRANSLATE_NOOP("cprquick", "present"), QT_TRANSLATE_NOOP("cprquick", "absent")};
constexpr const char *shockables[] = {QT_TRANSLATE_NOOP("cprquick", "no"), QT_TRANSLATE_NOOP("cprquick", "yes")};

// clang-format on

QString translated(const char *text)
{
    return *text ? QCoreApplication::translate("cprquick", text) : QString();
}

template <std::size_t size> QString textOf(const char *const (&texts)[size], const QVariant &value)
{
    const auto place = static_cast<std::size_t>(value.toUInt());
    return place < size ? translated(texts[place]) : value.toString();
}

QString orNumber(const QString &text, const QVariant &value)
{
    return text.isEmpty() ? value.toString() : text;
}

QString aedText(int event)
{
    for (const AedText &row : aedTexts) {
        if (row.value == event)
            return translated(row.text);
    }
    return sessionreview::aedEventText(event);
}

QString buttonText(const QVariant &value)
{
    sessionreview::Flag flag;
    flag.kind = sessionreview::Flag::Kind::Aed;
    flag.code = E::AEDRemoteControlOtherButtonPressed;
    const QString unnamed = sessionreview::flagText(flag);
    flag.detail = value.toInt();
    const QString text = sessionreview::flagText(flag);
    return text == unnamed ? value.toString() : text;
}

E::ParameterUnit storedUnit(E::ParameterType type)
{
    return E::parameterUnit.value(type, E::none);
}

QString numberText(E::ParameterType type, const QVariant &value)
{
    const QLocale locale;
    const auto kind = value.userType();
    constexpr double gramsPerKg = 1000;
    if (Vocabulary::parameter(type)->form == Form::Force)
        return locale.toString(value.toDouble() / gramsPerKg, 'f', 1);
    if (storedUnit(type) == E::hmm)
        return locale.toString(Units::mmOf(value.toDouble()), 'f', 1);
    if (kind == QMetaType::Float) // as wherever else depths are told
        return locale.toString(sessionreview::roundedToHmm(value.toFloat()), 'f', 1);
    if (kind == QMetaType::Double)
        return locale.toString(value.toDouble(), 'f', 1);
    if (kind == QMetaType::Int && storedUnit(type) != E::none)
        return locale.toString(value.toInt());
    return value.toString();
}

QString withUnit(const QString &number, E::ParameterType type)
{
    const QString unit = parameterUnitText(type);
    return unit.isEmpty() || number.isEmpty() ? number
                                              : QStringLiteral("%1\u00a0%2").arg(number, unit);
}

QString dateText(const QVariant &value)
{
    const QDateTime date = QDateTime::fromString(value.toString(), Qt::ISODate);
    return date.isValid() ? QLocale().toString(date, QLocale::ShortFormat) : value.toString();
}

QString timestampText(qint64 secs)
{
    return secs > 0 ? QLocale().toString(QDateTime::fromSecsSinceEpoch(secs), QLocale::ShortFormat)
                    : QCoreApplication::translate("cprquick", "not known");
}

QString clockText(const QVariant &value)
{
    constexpr qint64 tenthsMs = 100;
    return sessionplot::timeText(value.toInt(), tenthsMs, false);
}

QString valueText(const Vocabulary::Parameter &row, E::ParameterType type, const QVariant &value)
{
    // clang-format off
    switch (row.form) {
    case Form::Percent:
    case Form::PerMinute:
    case Form::Force:     return value.toDouble() < 0 ? QCoreApplication::translate("cprquick", "not measured") : withUnit(numberText(type, value), type);
    case Form::Seconds:   return value.toDouble() < 0 ? QCoreApplication::translate("cprquick", "none") : withUnit(numberText(type, value), type);
    case Form::YesNo:     return textOf(shockables, value.toBool() ? 1 : 0);
    case Form::Names:     return value.toString().split(QLatin1Char(','), Qt::SkipEmptyParts).join(QLatin1String(", "));
    case Form::Clock:     return clockText(value);
    case Form::Date:      return dateText(value);
    case Form::Timestamp: return timestampText(value.toLongLong());
    case Form::Advice:    return value.toInt() == E::Advice_None ? QCoreApplication::translate("cprquick", "none") : orNumber(sessionreview::adviceText(value.toInt()), value);
    case Form::Protocol:  return sessionreview::protocolText(value.toInt());
    case Form::Manikin:   return orNumber(sessionreview::manikinText(value.toInt(), QString()), value);
    case Form::Stiffness: return textOf(stiffnesses, value);
    case Form::AedEvent:  return orNumber(aedText(value.toInt()), value);
    case Form::AedType:   return textOf(aedTypes, value);
    case Form::Rhythm:    return orNumber(sessionreview::rhythmText(value.toInt()), value);
    case Form::Pulse:     return textOf(pulses, value);
    case Form::Shockable: return textOf(shockables, value);
    case Form::Button:    return buttonText(value);
    case Form::Internal:  return QString();
    case Form::Plain:     break;
    }
    // clang-format on
    return withUnit(numberText(type, value), type);
}

} // namespace

QString eventTypeText(E::EventType type)
{
    const Vocabulary::EventKind *row = Vocabulary::eventKind(type);
    return row ? translated(row->label) : QString::number(type);
}

QString parameterText(E::ParameterType type)
{
    const Vocabulary::Parameter *row = Vocabulary::parameter(type);
    return row ? translated(row->label) : QString();
}

QString parameterUnitText(E::ParameterType type)
{
    const Vocabulary::Parameter *row = Vocabulary::parameter(type);
    if (!row)
        return QString();
    if (row->form == Form::Clock)
        return QString();
    if (row->form == Form::Force)
        return QStringLiteral("kg");
    const E::ParameterUnit unit = Vocabulary::shownUnit(type);
    for (const UnitRow &known : units) {
        if (known.unit == unit)
            return translated(known.text);
    }
    return E::unitText(type);
}

QString parameterValueText(E::ParameterType type, const QVariant &value)
{
    const Vocabulary::Parameter *row = Vocabulary::parameter(type);
    if (!row || !value.isValid())
        return QString();
    return PrintableText::shown(valueText(*row, type, value));
}

QString parameterTextIn(const CPREventBase &event, E::ParameterType type)
{
    return translated(Vocabulary::label(type, event.type()));
}

QString parameterValueTextIn(const CPREventBase &event, E::ParameterType type,
                             const QVariant &value)
{
    const bool isAdvice = type == E::primaryAdvice || type == E::secondaryAdvice;
    const sessionreview::Side side =
        isAdvice ? sessionreview::adviceSide(event, value.toInt()) : sessionreview::Side::Unknown;
    return side != sessionreview::Side::Unknown ? sessionreview::adviceText(value.toInt(), side)
                                                : parameterValueText(type, value);
}

} // namespace cprquick
