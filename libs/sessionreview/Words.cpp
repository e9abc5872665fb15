// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/Words.h"

#include <CPREventBase.h>
#include <private/PrintableText.h>

#include <private/Units.h>

#include <QCoreApplication>
#include <QLocale>
#include <QMetaEnum>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace sessionreview {

namespace {

using E = CPREventBase;

struct Word {
    int value;
    const char *text;
};

// clang-format off

constexpr Word advices[] = {
    {E::Advice_CompressDeepEnough, QT_TRANSLATE_NOOP("sessionreview", "Press deeper.")},
    {E::Advice_CompressNotSoDeep,  QT_TRANSLATE_NOOP("sessionreview", "Do not press so deep.")},
    {E::Advice_ReleaseCompletely,  QT_TRANSLATE_NOOP("sessionreview", "Release the chest completely after each compression.")},
    {E::Advice_CorrectRate,        QT_TRANSLATE_NOOP("sessionreview", "Compress at the target rate, neither slower nor faster.")},
    {E::Advice_CorrectVentRate,    QT_TRANSLATE_NOOP("sessionreview", "Ventilate at the target rate, neither slower nor faster.")},
    {E::Advice_CorrectVolume,      QT_TRANSLATE_NOOP("sessionreview", "Give each ventilation the target volume, neither less nor more.")},
    {E::Advice_CorrectCycleVents,  QT_TRANSLATE_NOOP("sessionreview", "Give the right number of ventilations in each cycle.")},
    {E::Advice_CorrectCycleComps,  QT_TRANSLATE_NOOP("sessionreview", "Give the right number of compressions in each cycle.")},
    {E::Advice_MinimizeNoFlow,     QT_TRANSLATE_NOOP("sessionreview", "Keep the pauses in compressions short.")},
    {E::Advice_HandPosition,       QT_TRANSLATE_NOOP("sessionreview", "Put the hands in the right place on the chest.")},
    {E::Advice_TooFewPreVents,     QT_TRANSLATE_NOOP("sessionreview", "Give more ventilations before the first compression.")},
    {E::Advice_TooManyPreVents,    QT_TRANSLATE_NOOP("sessionreview", "Give fewer ventilations before the first compression.")},
};

struct PromptWord {
    Prompt value;
    const char *text;
};

constexpr PromptWord prompts[] = {
    {Prompt::StandClear,           QT_TRANSLATE_NOOP("sessionreview", "Stand clear.")},
    {Prompt::ContinueCompressions, QT_TRANSLATE_NOOP("sessionreview", "Continue compressions.")},
    {Prompt::ContinueVentilations, QT_TRANSLATE_NOOP("sessionreview", "Continue ventilations.")},
    {Prompt::EndPause,             QT_TRANSLATE_NOOP("sessionreview", "Go on, keep the pause short.")},
    {Prompt::PressDeeper,          QT_TRANSLATE_NOOP("sessionreview", "Press deeper.")},
    {Prompt::PressFaster,          QT_TRANSLATE_NOOP("sessionreview", "Press faster.")},
    {Prompt::PressSlower,          QT_TRANSLATE_NOOP("sessionreview", "Press slower.")},
    {Prompt::ReleaseCompletely,    QT_TRANSLATE_NOOP("sessionreview", "Release the chest completely after each compression.")},
    {Prompt::PressLessDeep,        QT_TRANSLATE_NOOP("sessionreview", "Do not press so deep.")},
    {Prompt::MoveHands,            QT_TRANSLATE_NOOP("sessionreview", "Put the hands in the right place on the chest.")},
    {Prompt::VentilateSlower,      QT_TRANSLATE_NOOP("sessionreview", "Ventilate slower.")},
    {Prompt::BlowLess,             QT_TRANSLATE_NOOP("sessionreview", "Give less air in each ventilation.")},
    {Prompt::VentilateFaster,      QT_TRANSLATE_NOOP("sessionreview", "Ventilate faster.")},
    {Prompt::BlowMore,             QT_TRANSLATE_NOOP("sessionreview", "Give more air in each ventilation.")},
    {Prompt::CountCycles,          QT_TRANSLATE_NOOP("sessionreview", "Give the right numbers of compressions and ventilations in each cycle.")},
    {Prompt::Right,                QT_TRANSLATE_NOOP("sessionreview", "Well done, keep going.")},
};

// Where the values lay on one side of the target.
constexpr Word morePlease[] = {
    {E::Advice_CorrectRate,     QT_TRANSLATE_NOOP("sessionreview", "Press faster.")},
    {E::Advice_CorrectVentRate, QT_TRANSLATE_NOOP("sessionreview", "Ventilate faster.")},
    {E::Advice_CorrectVolume,   QT_TRANSLATE_NOOP("sessionreview", "Give more air in each ventilation.")},
};
constexpr Word lessPlease[] = {
    {E::Advice_CorrectRate,     QT_TRANSLATE_NOOP("sessionreview", "Press slower.")},
    {E::Advice_CorrectVentRate, QT_TRANSLATE_NOOP("sessionreview", "Ventilate slower.")},
    {E::Advice_CorrectVolume,   QT_TRANSLATE_NOOP("sessionreview", "Give less air in each ventilation.")},
};

constexpr Word protocols[] = {
    {0, QT_TRANSLATE_NOOP("sessionreview", "CPR with one rescuer")},
    {1, QT_TRANSLATE_NOOP("sessionreview", "Compressions only")},
    {2, QT_TRANSLATE_NOOP("sessionreview", "Ventilations only")},
    {3, QT_TRANSLATE_NOOP("sessionreview", "Automatic")},
    {4, QT_TRANSLATE_NOOP("sessionreview", "CPR with two rescuers")},
    {5, QT_TRANSLATE_NOOP("sessionreview", "High performance CPR")},
};

struct FaultWord {
    Fault fault;
    const char *text;
};

constexpr FaultWord faults[] = {
    {Fault::TooShallow,        QT_TRANSLATE_NOOP("sessionreview", "Too shallow")},
    {Fault::TooDeep,           QT_TRANSLATE_NOOP("sessionreview", "Too deep")},
    {Fault::IncompleteRelease, QT_TRANSLATE_NOOP("sessionreview", "Incomplete release")},
    {Fault::HandPosition,      QT_TRANSLATE_NOOP("sessionreview", "Hand position")},
    {Fault::TooSlow,           QT_TRANSLATE_NOOP("sessionreview", "Too slow")},
    {Fault::TooFast,           QT_TRANSLATE_NOOP("sessionreview", "Too fast")},
    {Fault::TooLittle,         QT_TRANSLATE_NOOP("sessionreview", "Too little")},
    {Fault::TooMuch,           QT_TRANSLATE_NOOP("sessionreview", "Too much")},
};

// Faults in a stretch; of compressions in the words above.
constexpr PromptWord stretches[] = {
    {Prompt::EndPause,          QT_TRANSLATE_NOOP("sessionreview", "Pause of %1 s")},
    {Prompt::PressDeeper,       QT_TRANSLATE_NOOP("sessionreview", "Too shallow")},
    {Prompt::PressFaster,       QT_TRANSLATE_NOOP("sessionreview", "Too slow")},
    {Prompt::PressSlower,       QT_TRANSLATE_NOOP("sessionreview", "Too fast")},
    {Prompt::ReleaseCompletely, QT_TRANSLATE_NOOP("sessionreview", "Incomplete release")},
    {Prompt::PressLessDeep,     QT_TRANSLATE_NOOP("sessionreview", "Too deep")},
    {Prompt::MoveHands,         QT_TRANSLATE_NOOP("sessionreview", "Hand position")},
    {Prompt::VentilateSlower,   QT_TRANSLATE_NOOP("sessionreview", "Ventilated too fast")},
    {Prompt::BlowLess,          QT_TRANSLATE_NOOP("sessionreview", "Too much air")},
    {Prompt::VentilateFaster,   QT_TRANSLATE_NOOP("sessionreview", "Ventilated too slowly")},
    {Prompt::BlowMore,          QT_TRANSLATE_NOOP("sessionreview", "Too little air")},
};

// Files hold the English ones.
constexpr const char *remarks[] = {
    QT_TRANSLATE_NOOP("sessionreview", "Hands"),
    QT_TRANSLATE_NOOP("sessionreview", "Depth"),
    QT_TRANSLATE_NOOP("sessionreview", "Rate"),
    QT_TRANSLATE_NOOP("sessionreview", "Release"),
    QT_TRANSLATE_NOOP("sessionreview", "Ventilation"),
    QT_TRANSLATE_NOOP("sessionreview", "Pause"),
    QT_TRANSLATE_NOOP("sessionreview", "AED"),
    QT_TRANSLATE_NOOP("sessionreview", "Teamwork"),
    QT_TRANSLATE_NOOP("sessionreview", "Well done"),
};
static_assert(std::size(remarks) == 9, "a key each");

constexpr int maxRemarkLength = 200; // fits on two lines of a page

constexpr Word rhythms[] = {
    {E::AED_NoECGRhythm, QT_TRANSLATE_NOOP("sessionreview", "no rhythm")},
    {E::AED_VFIB,        QT_TRANSLATE_NOOP("sessionreview", "VF")},
    {E::AED_VTFAST,      QT_TRANSLATE_NOOP("sessionreview", "fast VT")},
    {E::AED_VTSLOW,      QT_TRANSLATE_NOOP("sessionreview", "slow VT")},
    {E::AED_NSR,         QT_TRANSLATE_NOOP("sessionreview", "sinus rhythm")},
    {E::AED_ASYSTOLE,    QT_TRANSLATE_NOOP("sessionreview", "asystole")},
    {E::AED_PEA,         QT_TRANSLATE_NOOP("sessionreview", "PEA")},
    {E::AED_BRADYCARDIA, QT_TRANSLATE_NOOP("sessionreview", "bradycardia")},
    {E::AED_SVT,         QT_TRANSLATE_NOOP("sessionreview", "SVT")},
};

// Buttons of the remote control that make events.
constexpr Word buttons[] = {
    {E::RemoteBtnShowPadPlacementLEDS, QT_TRANSLATE_NOOP("sessionreview", "remote: show pads")},
    {E::RemoteBtnCPRfirst,             QT_TRANSLATE_NOOP("sessionreview", "remote: CPR first")},
};

struct AedWord {
    int value;
    int weight;
    const char *text;
};

constexpr int weightOfShock  = 5;
constexpr int weightOfRhythm = 4;
constexpr int weightOfUser   = 3;

// What the AED does and the learner notices. Its scenarios and its battery's details are left out,
// and so is the delivered shock, which is an event of its own.
constexpr AedWord aedEvents[] = {
    {E::AEDPowerOn,                         3, QT_TRANSLATE_NOOP("sessionreview", "AED on")},
    {E::AEDPowerOff,                        3, QT_TRANSLATE_NOOP("sessionreview", "AED off")},
    {E::AEDAnalyzing,                       2, QT_TRANSLATE_NOOP("sessionreview", "analysing")},
    {E::AEDShockAdvised,                    2, QT_TRANSLATE_NOOP("sessionreview", "shock advised")},
    {E::AEDReadyToShock,                    1, QT_TRANSLATE_NOOP("sessionreview", "ready to shock")},
    {E::AEDNoShockIndicated,                2, QT_TRANSLATE_NOOP("sessionreview", "no shock advised")},
    {E::AEDStartCharging,                   1, QT_TRANSLATE_NOOP("sessionreview", "charging")},
    {E::AEDShockCancelled,                  2, QT_TRANSLATE_NOOP("sessionreview", "shock cancelled")},
    {E::AEDAnalyzingInterrupted,            2, QT_TRANSLATE_NOOP("sessionreview", "analysis interrupted")},
    {E::AEDBatteryLow,                      3, QT_TRANSLATE_NOOP("sessionreview", "battery low")},
    {E::AEDPatientMovementStarted,          3, QT_TRANSLATE_NOOP("sessionreview", "movement")},
    {E::AEDPatientMovementEnded,            1, QT_TRANSLATE_NOOP("sessionreview", "movement ended")},
    {E::AEDFailure,                         3, QT_TRANSLATE_NOOP("sessionreview", "AED failure")},
    {E::AEDPadsOK,                          3, QT_TRANSLATE_NOOP("sessionreview", "pads on")},
    {E::AEDPadsLoose,                       3, QT_TRANSLATE_NOOP("sessionreview", "pads loose")},
    {E::AEDRemoteControlOtherButtonPressed, 1, QT_TRANSLATE_NOOP("sessionreview", "remote control")},
};

// clang-format on

template <typename Words, typename Value> QString textOf(const Words &words, Value value)
{
    for (const auto &word : words) {
        if (word.value == value)
            return QCoreApplication::translate("sessionreview", word.text);
    }
    return QString();
}

QString ageText(const QString &letter)
{
    if (letter == QLatin1String("A"))
        return QCoreApplication::translate("sessionreview", "adult");
    if (letter == QLatin1String("C"))
        return QCoreApplication::translate("sessionreview", "child");
    if (letter == QLatin1String("I") || letter == QLatin1String("T"))
        return QCoreApplication::translate("sessionreview", "infant");
    if (letter == QLatin1String("N"))
        return QCoreApplication::translate("sessionreview", "newborn");
    return QString();
}

} // namespace

QString adviceText(int advice, Side side)
{
    if (side == Side::Below || side == Side::Above) {
        const QString text = textOf(side == Side::Below ? morePlease : lessPlease, advice);
        if (!text.isEmpty())
            return text;
    }
    return textOf(advices, advice);
}

QString promptText(Prompt prompt)
{
    return textOf(prompts, prompt);
}

QString protocolText(int protocol)
{
    const QString text = textOf(protocols, protocol);
    return text.isEmpty() ? QCoreApplication::translate("sessionreview", "Unknown protocol") : text;
}

QString manikinText(int type, const QString &ageLetter)
{
    const char *key = QMetaEnum::fromType<E::ManikinType>().valueToKey(type);
    if (!key || type == E::NOT_DEFINED)
        return QString();
    const QString name = QString::fromLatin1(key).replace(QLatin1Char('_'), QLatin1Char(' '));
    const QString age = ageText(ageLetter);
    return age.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, age);
}

QString rhythmText(int rhythm)
{
    return textOf(rhythms, rhythm);
}

QString aedEventText(int event)
{
    return textOf(aedEvents, event);
}

QString aedStepText(const Flag &flag)
{
    if (flag.kind == Flag::Kind::Shock)
        return flagText(flag);
    if (flag.kind != Flag::Kind::Aed)
        return QString();
    switch (flag.code) {
    // How the AED is, not what it tells the rescuer.
    case E::AEDBatteryLow:
    case E::AEDPatientMovementStarted:
    case E::AEDPatientMovementEnded:
        return QString();
    case E::AEDShockDelivered: // of a manikin that sends no event of the shock itself
        return QCoreApplication::translate("sessionreview", "shock");
    case E::AEDRemoteControlOtherButtonPressed:
        return flag.detail == E::RemoteBtnCPRfirst
            ? QCoreApplication::translate("sessionreview", "CPR asked for")
            : QString();
    default:
        return aedEventText(flag.code);
    }
}

QStringList faultTexts(Faults present)
{
    QStringList texts;
    for (const FaultWord &word : faults) {
        if (present.testFlag(word.fault))
            texts.append(QCoreApplication::translate("sessionreview", word.text));
    }
    return texts;
}

QStringList faultTexts(const FaultCounts &counts)
{
    QStringList texts;
    for (const FaultWord &word : faults) {
        if (const int count = counts.of(word.fault))
            texts.append(QStringLiteral("%1 %2")
                             .arg(QCoreApplication::translate("sessionreview", word.text))
                             .arg(count));
    }
    return texts;
}

QString momentText(const Moment &moment, const QLocale &locale)
{
    const QString text = textOf(stretches, moment.prompt);
    if (moment.prompt == Prompt::EndPause) {
        const double secs = (double(moment.end) - moment.begin) / Units::msecsPerSecond;
        return text.arg(locale.toString(secs, 'f', 1));
    }
    return QCoreApplication::translate("sessionreview", "%1, %2 times")
        .arg(text, locale.toString(moment.count));
}

QStringList quickRemarks()
{
    QStringList texts;
    for (const char *text : remarks)
        texts.append(QString::fromLatin1(text));
    return texts;
}

QString remarkText(const QString &name)
{
    const auto known =
        std::find_if(std::begin(remarks), std::end(remarks),
                     [&name](const char *text) { return name == QLatin1String(text); });
    return known == std::end(remarks) ? name : QCoreApplication::translate("sessionreview", *known);
}

QString remarkOf(const QString &typed)
{
    constexpr char32_t byteOrderMark = 0xFEFF;
    QString text;
    // What is no character becomes one that says so.
    for (const uint value : QString::fromUtf8(typed.simplified().toUtf8()).toUcs4()) {
        const auto code = static_cast<char32_t>(value);
        const bool isStorable = QChar::category(code) != QChar::Other_Control
            && !QChar::isNonCharacter(code) && code != byteOrderMark;
        const QString character = QString::fromUcs4(&code, 1);
        if (isStorable && text.size() + character.size() <= maxRemarkLength)
            text += character;
    }
    return text.simplified();
}

QString flagText(const Flag &flag)
{
    switch (flag.kind) {
    case Flag::Kind::Shock:
        return flag.code > 0
            ? QCoreApplication::translate("sessionreview", "shock %1 J").arg(flag.code)
            : QCoreApplication::translate("sessionreview", "shock");
    case Flag::Kind::Rhythm:
        return rhythmText(flag.code);
    case Flag::Kind::User:
        return flag.name.isEmpty() ? QCoreApplication::translate("sessionreview", "event")
                                   : PrintableText::shown(remarkText(flag.name)).simplified();
    case Flag::Kind::Aed:
        break;
    }
    const QString button = flag.code == E::AEDRemoteControlOtherButtonPressed
        ? textOf(buttons, flag.detail)
        : QString();
    return button.isEmpty() ? aedEventText(flag.code) : button;
}

int flagWeight(const Flag &flag)
{
    switch (flag.kind) {
    case Flag::Kind::Shock:
        return weightOfShock;
    case Flag::Kind::Rhythm:
        return flagText(flag).isEmpty() ? 0 : weightOfRhythm;
    case Flag::Kind::User:
        return weightOfUser;
    case Flag::Kind::Aed:
        break;
    }
    for (const AedWord &word : aedEvents) {
        if (word.value == flag.code)
            return word.weight;
    }
    return 0;
}

} // namespace sessionreview
