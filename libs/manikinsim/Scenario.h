// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_SCENARIO_H
#define MANIKINSIM_SCENARIO_H

#include "CPREventBase.h"
#include "manikinsim/GuidelineSets.h"

#include <chestboard/CommonDefs.h>

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

namespace manikinsim {

/// A quantity that varies: a bell curve around \a mean, \a spread its standard deviation. Nothing
/// is further away from the mean than three spreads.
struct Measure {
    int mean = 0;
    int spread = 0;
};

// clang-format off

/// How a rescuer works. Depths in hundredths of a millimetre, times in ms, volumes in ml.
struct Skill {
    Measure depth              {5500, 120};
    int     fatigue            = 0;         ///< depth that is lost from the first to the thirtieth compression of a run
    Measure rate               {110, 2};    ///< compressions per minute
    Measure releaseDepth       {80, 40};    ///< what a chest shows that was let go completely
    int     incompleteReleases = 0;         ///< percent of the compressions
    Measure leaningDepth       {1000, 150}; ///< what a chest shows that was not
    int     handFaults         = 0;         ///< percent of the compressions with the hands in a wrong place
    int     compressionMiscounts = 0;       ///< percent of the cycles with too many or too few compressions
    Measure volume             {550, 30};
    Measure inflationTime      {1000, 60};
    int     breathMiscounts    = 0;         ///< percent of the cycles with a breath too many or too few
    Measure breathPace         {100, 3};    ///< percent of the pace midway between the limits, where breaths keep a pace of their own
    Measure changeOver         {350, 40};   ///< from compressions to breaths and back; two rescuers take a third of it
    int     pauses             = 0;         ///< percent of the cycles (without cycles: of the runs of 30 compressions or 6 breaths) that a pause follows
    Measure pauseLength        {6000, 1000};
};

/// What goes wrong on the link between manikin and host. Shares are per thousand wave packets or
/// messages. The first second and the last two of a session are spared.
struct LinkFaults {
    int  losses            = 0; ///< a loss begins: neither header nor samples arrive
    int  maxLoss       = 1; ///< wave packets; each length up to it is as likely
    int  latePackets       = 0; ///< a wave packet arrives after the one that follows it
    int  repeatedPackets   = 0; ///< a wave packet arrives twice
    int  cutMessages       = 0; ///< a message about compressions, breaths or a pause arrives without its end
    /// Messages end where those of older manikins do: no connected AED in the version, no inflation
    /// times and cycles in the statistics, no overall score and no later reductions in the scores.
    bool shortMessages     = false;
    /// A guideline message arrives cut before the whole one.
    bool cutGuidelines     = false;
};

/// The manikin's own figures.
struct Device {
    CPREventBase::ManikinType type     = CPREventBase::KDX_ADULT_MALE;
    std::array<quint8, 3> firmware     {3, 2, 1};
    quint16 firmwareBuild              = 1047;
    std::array<quint8, 3> rfid         {1, 4, 2};
    std::array<quint8, 2> feedpod      {2, 5};
    CPREventBase::AEDTypes connectedAed = CPREventBase::AEDNotPossible;
    quint32 compressions               = 184320; ///< over its life
    quint32 ventilations               = 12288;  ///< over its life
    /// In the order of the parameters manikinBatteryCycleCounter to manikinBatteryDisconnectCounter.
    std::array<quint16, 14> battery    {210, 160, 50, 640, 75, 3, 4, 35, 97, 6, 480, 2600, 2450, 9};
    quint16 waveDelay                  = 40;     ///< ms
};

/// Something that happens around the rescuer at a time. What lies behind the session's end does not
/// happen.
struct ScriptStep {
    enum class Kind {
        HandsOff,     ///< nobody touches the manikin for value ms
        Shock,        ///< of value J
        Aed,          ///< the AED reports value, a CPREventBase::AEDEventType, with details
        RemoteButton, ///< of the AED's remote control; value is a CPREventBase::AEDRemoteOtherButtons
        Rhythm,       ///< the ECG shows value, a CPREventBase::AEDEcgRhythms
        User          ///< the instructor enters an event named text
    };

    int msecs  = 0; ///< session time
    Kind kind  = Kind::User;
    int value  = 0;
    std::vector<int> details; ///< in the order in which the AED reports them
    QString text;
};

// clang-format on

/// Everything that decides a session but chance: who trains what on which manikin, how well, and
/// what happens meanwhile. A named scenario can be changed in any part before it is simulated.
struct Scenario {
    using Protocol = bls_2010::CommonDefs::CprProtocolType;

    QString name;
    QString description; ///< one line
    Protocol protocol = bls_2010::CommonDefs::CPR_SINGLE_RESCUER;
    int seconds = 120; ///< length of the session
    QStringList learners{QStringLiteral("Mira Holm")};
    QString manikinName; ///< empty for none
    QDateTime start; ///< when it is recorded; invalid for whenever it is played
    Device device;
    /// The set that the manikin judges by; it is sent with the manikin's flag of the set in use.
    bls_2010::GuidelineValues_t guidelines = adultGuidelines();
    /// A set that the manikin knows and does not use.
    bls_2010::GuidelineValues_t otherGuidelines = childGuidelines();
    Skill skill;
    /// Breaths before the first compression.
    int preVentilations = 0;
    std::vector<ScriptStep> script;
    LinkFaults link;

    /// Why this cannot be simulated, for people; empty when it can.
    QString problem() const;

    static constexpr int maxSeconds = 24 * 60 * 60;

    /// The named scenarios, in the order in which they are shown.
    static const std::vector<Scenario> &all();
    /// The scenario of that name; null when there is none.
    static const Scenario *find(const QString &name);

    /// The protocols by the names that a person types, in the order of their values.
    static QStringList protocolNames();
    static std::optional<Protocol> protocolFromName(const QString &name);
    static QString protocolName(Protocol protocol);
};

/// Whether the protocol trains compressions.
bool hasCompressions(Scenario::Protocol protocol);
/// Whether the protocol trains breaths.
bool hasBreaths(Scenario::Protocol protocol);
/// Whether compressions and breaths take turns.
bool hasCycles(Scenario::Protocol protocol);

} // namespace manikinsim

#endif
