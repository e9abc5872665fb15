// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/Scenario.h"

#include "manikinsim/MessageContents.h"
#include "private/MessageLayouts.h"

#include <private/Units.h>

#include <algorithm>

using bls_2010::CommonDefs;

namespace manikinsim {

namespace {

struct ProtocolName {
    CommonDefs::CprProtocolType protocol;
    const char *name;
};

// clang-format off
constexpr std::array<ProtocolName, 6> names = {{
    {CommonDefs::CPR_SINGLE_RESCUER,   "single-rescuer"},
    {CommonDefs::CPR_COMPRESSION_ONLY, "compression-only"},
    {CommonDefs::CPR_VENTILATION_ONLY, "ventilation-only"},
    {CommonDefs::CPR_AUTOMATIC,        "automatic"},
    {CommonDefs::CPR_TWO_RESCUER,      "two-rescuers"},
    {CommonDefs::CPR_HIGH_PERFORMANCE, "high-performance"},
}};
// clang-format on

constexpr bool standByValue()
{
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i].protocol != i)
            return false;
    }
    return true;
}
static_assert(standByValue());

using Kind = ScriptStep::Kind;

Skill goodSkill()
{
    Skill skill;
    skill.depth = {5450, 200};
    skill.rate = {112, 4};
    skill.incompleteReleases = 2;
    skill.leaningDepth = {750, 80};
    skill.handFaults = 1;
    skill.volume = {540, 65};
    skill.inflationTime = {950, 100};
    return skill;
}

Skill beginnersSkill()
{
    Skill skill;
    skill.depth = {5400, 300};
    skill.fatigue = 400;
    skill.rate = {110, 6};
    skill.incompleteReleases = 10;
    skill.leaningDepth = {800, 120};
    skill.handFaults = 5;
    skill.compressionMiscounts = 15;
    skill.volume = {500, 90};
    skill.inflationTime = {880, 120};
    skill.breathMiscounts = 8;
    skill.breathPace = {112, 10};
    skill.changeOver = {700, 200};
    skill.pauses = 20;
    skill.pauseLength = {5500, 800};
    return skill;
}

// Two analyses: a shockable rhythm after half a minute, a rhythm that needs no shock two minutes
// later.
std::vector<ScriptStep> aedScript()
{
    using E = CPREventBase;
    // clang-format off
    return {
        {  8000, Kind::Aed,          E::AEDPowerOn,                            {},      {}},
        {  8500, Kind::Aed,          E::AEDScenarioNumber,                     {2},     {}},
        { 10000, Kind::RemoteButton, E::RemoteBtnShowPadPlacementLEDS,         {},      {}},
        { 14000, Kind::RemoteButton, E::RemoteBtnPadsLoose,                    {},      {}}, // makes no event
        { 15000, Kind::Aed,          E::AEDPadsLoose,                          {},      {}},
        { 19000, Kind::Aed,          E::AEDPadsOK,                             {},      {}},
        { 19500, Kind::Rhythm,       E::AED_NoECGRhythm,                       {},      {}}, // not yet readable
        { 20000, Kind::Rhythm,       E::AED_VFIB,                              {},      {}},
        { 26000, Kind::HandsOff,     11000,                                    {},      {}},
        { 26000, Kind::Aed,          E::AEDAnalyzing,                          {},      {}},
        { 29500, Kind::Aed,          E::AEDECGRhythmStatus,                    {E::AED_VFIB, E::PulseAbsent, E::Shockable}, {}},
        { 30000, Kind::Aed,          E::AEDShockAdvised,                       {},      {}},
        { 30020, Kind::Aed,          E::AEDStartCharging,                      {},      {}},
        { 34000, Kind::Aed,          E::AEDReadyToShock,                       {},      {}},
        { 36000, Kind::Shock,        200,                                      {},      {}},
        { 36020, Kind::Aed,          E::AEDShockDelivered,                     {},      {}},
        { 36500, Kind::RemoteButton, E::RemoteBtnCPRfirst,                     {},      {}},
        { 38000, Kind::Rhythm,       E::AED_VFIB,                              {},      {}}, // unchanged
        { 60000, Kind::Aed,          E::AEDRemoteControlScenarioButtonPressed, {4, E::ApplyToAllManikins}, {}},
        { 75000, Kind::User,         0,                                        {},      QStringLiteral("Change of rescuer")},
        { 90000, Kind::Rhythm,       E::AED_PEA,                               {},      {}},
        { 97000, Kind::Aed,          E::AEDRemoteControlOtherButtonPressed,    {E::RemoteBtnNonShockableRhythm, E::ApplyToSingleManikin}, {}},
        {140000, Kind::HandsOff,     8000,                                     {},      {}},
        {140000, Kind::Aed,          E::AEDAnalyzing,                          {},      {}},
        {146000, Kind::Aed,          E::AEDNoShockIndicated,                   {},      {}},
        {165000, Kind::Rhythm,       E::AED_NSR,                               {},      {}},
        {170000, Kind::Aed,          E::AEDPowerOff,                           {},      {}},
    };
    // clang-format on
}

Scenario named(const char *name, const char *description)
{
    Scenario scenario;
    scenario.name = QLatin1String(name);
    scenario.description = QLatin1String(description);
    return scenario;
}

std::vector<Scenario> namedScenarios()
{
    std::vector<Scenario> scenarios;

    Scenario perfect = named("perfect", "everything as the guidelines want it");
    scenarios.push_back(perfect);

    Scenario good = named("good", "a trained rescuer who slips now and then");
    good.skill = goodSkill();
    scenarios.push_back(good);

    Scenario beginner =
        named("beginner", "uneven depth and rate, leaning, miscounting, short pauses; tires");
    beginner.skill = beginnersSkill();
    scenarios.push_back(beginner);

    Scenario shallow = named("shallow", "nearly all compressions are too shallow");
    shallow.skill.depth = {4500, 200};
    scenarios.push_back(shallow);

    Scenario tooFast = named("too-fast", "nearly all compressions come too fast");
    tooFast.skill.rate = {132, 4};
    scenarios.push_back(tooFast);

    Scenario leaning = named("leaning", "the chest is often not released completely");
    leaning.skill.incompleteReleases = 60;
    scenarios.push_back(leaning);

    Scenario longPauses = named("long-pauses", "long pauses after every cycle");
    longPauses.skill.pauses = 100;
    longPauses.skill.pauseLength = {14000, 2000};
    scenarios.push_back(longPauses);

    Scenario aed = named("aed", "two rescuers with an AED: shock, rhythms, remote control");
    aed.protocol = CommonDefs::CPR_TWO_RESCUER;
    aed.seconds = 180;
    aed.learners.append(QString::fromUtf8("J\xc3\xb6rg Aldane"));
    aed.device.connectedAed = CPREventBase::AEDTypeVolterm;
    aed.skill = goodSkill();
    aed.script = aedScript();
    scenarios.push_back(aed);

    Scenario lossyLink =
        named("lossy-link", "a bad link: lost, late and repeated packets, cut messages");
    lossyLink.skill = goodSkill();
    lossyLink.link.losses = 2;
    lossyLink.link.maxLoss = 20;
    lossyLink.link.latePackets = 1;
    lossyLink.link.repeatedPackets = 1;
    lossyLink.link.cutMessages = 20;
    lossyLink.link.shortMessages = true;
    lossyLink.link.cutGuidelines = true;
    scenarios.push_back(lossyLink);

    return scenarios;
}

bool isShare(int value, int whole)
{
    return value >= 0 && value <= whole;
}

bool isSound(const Measure &measure, int maxMean)
{
    return measure.mean >= 0 && measure.mean <= maxMean && measure.spread >= 0
        && measure.spread <= maxMean;
}

bool isSound(const Skill &skill)
{
    constexpr int maxDepth = 10000; // hundredths of a mm
    constexpr int maxVolume = 3000; // ml
    constexpr int maxTime = 10 * Units::msecsPerMinute;
    constexpr int maxRate = 300;
    return isSound(skill.depth, maxDepth) && isShare(skill.fatigue, maxDepth)
        && isSound(skill.rate, maxRate) && skill.rate.mean > 0
        && isSound(skill.releaseDepth, maxDepth) && isShare(skill.incompleteReleases, 100)
        && isSound(skill.leaningDepth, maxDepth) && isShare(skill.handFaults, 100)
        && isShare(skill.compressionMiscounts, 100) && isSound(skill.volume, maxVolume)
        && isSound(skill.inflationTime, maxTime) && isShare(skill.breathMiscounts, 100)
        && isSound(skill.breathPace, 1000) && skill.breathPace.mean > 0
        && isSound(skill.changeOver, maxTime) && isShare(skill.pauses, 100)
        && isSound(skill.pauseLength, maxTime);
}

bool isSound(const LinkFaults &link)
{
    constexpr int maxPackets = 500; // 10 s
    return isShare(link.losses, 1000) && link.maxLoss >= 1 && link.maxLoss <= maxPackets
        && isShare(link.latePackets, 1000) && isShare(link.repeatedPackets, 1000)
        && isShare(link.losses + link.latePackets + link.repeatedPackets, 1000)
        && isShare(link.cutMessages, 1000);
}

bool isSound(const ScriptStep &step)
{
    constexpr int byteMax = 255;
    constexpr int maxEnergy = 1000; // J
    const auto isType = [](int type) { return isShare(type, CPREventBase::AEDNotPossible); };
    if (!isShare(step.msecs, Scenario::maxSeconds * Units::msecsPerSecond))
        return false;
    switch (step.kind) {
    case Kind::HandsOff:
        return isShare(step.value, Scenario::maxSeconds * Units::msecsPerSecond);
    case Kind::Shock:
        return isShare(step.value, maxEnergy);
    case Kind::Aed:
        return step.value >= CPREventBase::AEDPowerOn && isShare(step.value, CPREventBase::AEDType)
            && (!contents::hasDetails(step.value) || !step.details.empty())
            && (step.value != CPREventBase::AEDType || isType(step.details.front()));
    case Kind::RemoteButton:
    case Kind::Rhythm:
        return isShare(step.value, byteMax);
    case Kind::User:
        return step.text.toUtf8().size() <= int(MessageLayouts::userNameLength)
            && !step.text.contains(QChar::Null);
    }
    return false;
}

bool isSound(const bls_2010::GuidelineValues_t &guidelines)
{
    const std::string &id = guidelines.guidelinesID;
    return !id.empty()
        && std::all_of(id.begin(), id.end(), [](char c) { return c > ' ' && c <= '~'; });
}

bool isSound(const QString &name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char('\n'))
        && !name.contains(QLatin1Char('\r'));
}

} // namespace

QString Scenario::problem() const
{
    if (protocol > CommonDefs::CPR_HIGH_PERFORMANCE)
        return QStringLiteral("there is no CPR protocol %1").arg(int(protocol));
    if (seconds < 1 || seconds > maxSeconds)
        return QStringLiteral("a session lasts from 1 to %1 s, not %2 s")
            .arg(QString::number(maxSeconds), QString::number(seconds));
    if (!std::all_of(learners.begin(), learners.end(),
                     [](const QString &learner) { return isSound(learner); }))
        return QStringLiteral("a learner's name is empty or has a line break");
    if (!manikinName.isEmpty() && !isSound(manikinName))
        return QStringLiteral("the manikin's name has a line break");
    if (!isSound(guidelines) || !isSound(otherGuidelines))
        return QStringLiteral("a guideline set has no identifier in plain letters and digits");
    if (guidelines.guidelinesID == otherGuidelines.guidelinesID)
        return QStringLiteral("both guideline sets have the same identifier");
    if (!isSound(skill))
        return QStringLiteral("the rescuer's skill has a value out of range");
    if (preVentilations < 0 || preVentilations > 100)
        return QStringLiteral("%1 breaths before the first compression").arg(preVentilations);
    if (!std::all_of(script.begin(), script.end(),
                     [](const ScriptStep &step) { return isSound(step); }))
        return QStringLiteral("a step of the script has a value out of range");
    if (!isSound(link))
        return QStringLiteral("the link's faults have a value out of range");
    return QString();
}

const std::vector<Scenario> &Scenario::all()
{
    static const std::vector<Scenario> scenarios = namedScenarios();
    return scenarios;
}

const Scenario *Scenario::find(const QString &name)
{
    const auto found = std::find_if(all().begin(), all().end(), [&name](const Scenario &scenario) {
        return scenario.name == name;
    });
    return found == all().end() ? nullptr : &*found;
}

QStringList Scenario::protocolNames()
{
    QStringList result;
    for (const ProtocolName &row : names)
        result.append(QLatin1String(row.name));
    return result;
}

std::optional<Scenario::Protocol> Scenario::protocolFromName(const QString &name)
{
    for (const ProtocolName &row : names) {
        if (name == QLatin1String(row.name))
            return row.protocol;
    }
    return std::nullopt;
}

QString Scenario::protocolName(Protocol protocol)
{
    return protocol < names.size() ? QString::fromLatin1(names[protocol].name) : QString();
}

bool hasCompressions(Scenario::Protocol protocol)
{
    return protocol != CommonDefs::CPR_VENTILATION_ONLY;
}

bool hasBreaths(Scenario::Protocol protocol)
{
    return protocol != CommonDefs::CPR_COMPRESSION_ONLY;
}

bool hasCycles(Scenario::Protocol protocol)
{
    return hasCompressions(protocol) && hasBreaths(protocol)
        && protocol != CommonDefs::CPR_HIGH_PERFORMANCE;
}

} // namespace manikinsim
