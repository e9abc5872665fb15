// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Words.h"

#include <CPREventBase.h>

#include <QCoreApplication>
#include <QMetaEnum>

namespace sessionplot {

namespace {

using E = CPREventBase;

struct Word {
    int value;
    const char *text;
};

// clang-format off

constexpr Word advices[] = {
    {E::Advice_CompressDeepEnough, QT_TRANSLATE_NOOP("sessionplot", "Press deeper.")},
    {E::Advice_CompressNotSoDeep,  QT_TRANSLATE_NOOP("sessionplot", "Do not press so deep.")},
    {E::Advice_ReleaseCompletely,  QT_TRANSLATE_NOOP("sessionplot", "Release the chest completely after each compression.")},
    {E::Advice_CorrectRate,        QT_TRANSLATE_NOOP("sessionplot", "Compress at the target rate, neither slower nor faster.")},
    {E::Advice_CorrectVentRate,    QT_TRANSLATE_NOOP("sessionplot", "Ventilate at the target rate, neither slower nor faster.")},
    {E::Advice_CorrectVolume,      QT_TRANSLATE_NOOP("sessionplot", "Give each ventilation the target volume, neither less nor more.")},
    {E::Advice_CorrectCycleVents,  QT_TRANSLATE_NOOP("sessionplot", "Give the right number of ventilations in each cycle.")},
    {E::Advice_CorrectCycleComps,  QT_TRANSLATE_NOOP("sessionplot", "Give the right number of compressions in each cycle.")},
    {E::Advice_MinimizeNoFlow,     QT_TRANSLATE_NOOP("sessionplot", "Keep the pauses in compressions short.")},
    {E::Advice_HandPosition,       QT_TRANSLATE_NOOP("sessionplot", "Put the hands in the right place on the chest.")},
    {E::Advice_TooFewPreVents,     QT_TRANSLATE_NOOP("sessionplot", "Give more ventilations before the first compression.")},
    {E::Advice_TooManyPreVents,    QT_TRANSLATE_NOOP("sessionplot", "Give fewer ventilations before the first compression.")},
};

constexpr Word protocols[] = {
    {0, QT_TRANSLATE_NOOP("sessionplot", "CPR with one rescuer")},
    {1, QT_TRANSLATE_NOOP("sessionplot", "Compressions only")},
    {2, QT_TRANSLATE_NOOP("sessionplot", "Ventilations only")},
    {3, QT_TRANSLATE_NOOP("sessionplot", "Automatic")},
    {4, QT_TRANSLATE_NOOP("sessionplot", "CPR with two rescuers")},
    {5, QT_TRANSLATE_NOOP("sessionplot", "High performance CPR")},
};

constexpr Word rhythms[] = {
    {E::AED_NoECGRhythm, QT_TRANSLATE_NOOP("sessionplot", "no rhythm")},
    {E::AED_VFIB,        QT_TRANSLATE_NOOP("sessionplot", "VF")},
    {E::AED_VTFAST,      QT_TRANSLATE_NOOP("sessionplot", "fast VT")},
    {E::AED_VTSLOW,      QT_TRANSLATE_NOOP("sessionplot", "slow VT")},
    {E::AED_NSR,         QT_TRANSLATE_NOOP("sessionplot", "sinus rhythm")},
    {E::AED_ASYSTOLE,    QT_TRANSLATE_NOOP("sessionplot", "asystole")},
    {E::AED_PEA,         QT_TRANSLATE_NOOP("sessionplot", "PEA")},
    {E::AED_BRADYCARDIA, QT_TRANSLATE_NOOP("sessionplot", "bradycardia")},
    {E::AED_SVT,         QT_TRANSLATE_NOOP("sessionplot", "SVT")},
};

// Buttons of the remote control that make events.
constexpr Word buttons[] = {
    {E::RemoteBtnShowPadPlacementLEDS, QT_TRANSLATE_NOOP("sessionplot", "remote: show pads")},
    {E::RemoteBtnCPRfirst,             QT_TRANSLATE_NOOP("sessionplot", "remote: CPR first")},
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
    {E::AEDPowerOn,                         3, QT_TRANSLATE_NOOP("sessionplot", "AED on")},
    {E::AEDPowerOff,                        3, QT_TRANSLATE_NOOP("sessionplot", "AED off")},
    {E::AEDAnalyzing,                       2, QT_TRANSLATE_NOOP("sessionplot", "analysing")},
    {E::AEDShockAdvised,                    2, QT_TRANSLATE_NOOP("sessionplot", "shock advised")},
    {E::AEDReadyToShock,                    1, QT_TRANSLATE_NOOP("sessionplot", "ready to shock")},
    {E::AEDNoShockIndicated,                2, QT_TRANSLATE_NOOP("sessionplot", "no shock advised")},
    {E::AEDStartCharging,                   1, QT_TRANSLATE_NOOP("sessionplot", "charging")},
    {E::AEDShockCancelled,                  2, QT_TRANSLATE_NOOP("sessionplot", "shock cancelled")},
    {E::AEDAnalyzingInterrupted,            2, QT_TRANSLATE_NOOP("sessionplot", "analysis interrupted")},
    {E::AEDBatteryLow,                      3, QT_TRANSLATE_NOOP("sessionplot", "battery low")},
    {E::AEDPatientMovementStarted,          3, QT_TRANSLATE_NOOP("sessionplot", "movement")},
    {E::AEDPatientMovementEnded,            1, QT_TRANSLATE_NOOP("sessionplot", "movement ended")},
    {E::AEDFailure,                         3, QT_TRANSLATE_NOOP("sessionplot", "AED failure")},
    {E::AEDPadsOK,                          3, QT_TRANSLATE_NOOP("sessionplot", "pads on")},
    {E::AEDPadsLoose,                       3, QT_TRANSLATE_NOOP("sessionplot", "pads loose")},
    {E::AEDRemoteControlOtherButtonPressed, 1, QT_TRANSLATE_NOOP("sessionplot", "remote control")},
};

// clang-format on

template <typename Words> QString textOf(const Words &words, int value)
{
    for (const auto &word : words) {
        if (word.value == value)
            return QCoreApplication::translate("sessionplot", word.text);
    }
    return QString();
}

QString ageText(const QString &letter)
{
    if (letter == QLatin1String("A"))
        return QCoreApplication::translate("sessionplot", "adult");
    if (letter == QLatin1String("C"))
        return QCoreApplication::translate("sessionplot", "child");
    if (letter == QLatin1String("I") || letter == QLatin1String("T"))
        return QCoreApplication::translate("sessionplot", "infant");
    if (letter == QLatin1String("N"))
        return QCoreApplication::translate("sessionplot", "newborn");
    return QString();
}

} // namespace

QString adviceText(int advice)
{
    return textOf(advices, advice);
}

QString protocolText(int protocol)
{
    const QString text = textOf(protocols, protocol);
    return text.isEmpty() ? QCoreApplication::translate("sessionplot", "Unknown protocol") : text;
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

namespace {

struct FaultWord {
    bool has;
    const char *text;
};

QStringList textsOf(std::initializer_list<FaultWord> faults)
{
    QStringList texts;
    for (const FaultWord &fault : faults) {
        if (fault.has)
            texts.append(QCoreApplication::translate("sessionplot", fault.text));
    }
    return texts;
}

} // namespace

QStringList faultTexts(const Compression &compression)
{
    return textsOf({
        {compression.depthSide == Side::Below, QT_TRANSLATE_NOOP("sessionplot", "Too shallow")},
        {compression.depthSide == Side::Above, QT_TRANSLATE_NOOP("sessionplot", "Too deep")},
        {compression.incompleteRelease, QT_TRANSLATE_NOOP("sessionplot", "Incomplete release")},
        {compression.wrongHands, QT_TRANSLATE_NOOP("sessionplot", "Hand position")},
        {compression.rateSide == Side::Below, QT_TRANSLATE_NOOP("sessionplot", "Too slow")},
        {compression.rateSide == Side::Above, QT_TRANSLATE_NOOP("sessionplot", "Too fast")},
    });
}

QStringList faultTexts(const Ventilation &ventilation)
{
    return textsOf({
        {ventilation.volumeSide == Side::Below, QT_TRANSLATE_NOOP("sessionplot", "Too little")},
        {ventilation.volumeSide == Side::Above, QT_TRANSLATE_NOOP("sessionplot", "Too much")},
    });
}

QString flagText(const Flag &flag)
{
    switch (flag.kind) {
    case Flag::Kind::Shock:
        return flag.code > 0
            ? QCoreApplication::translate("sessionplot", "shock %1 J").arg(flag.code)
            : QCoreApplication::translate("sessionplot", "shock");
    case Flag::Kind::Rhythm:
        return rhythmText(flag.code);
    case Flag::Kind::User:
        return flag.name.isEmpty() ? QCoreApplication::translate("sessionplot", "event")
                                   : flag.name.simplified();
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

} // namespace sessionplot
