// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTBASE_H
#define CPREVENTBASE_H

#include "cprdata_export.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPair>
#include <QString>
#include <QVariant>

#include <chestboard/CommonDefs.h>

#include <functional>
#include <memory>

// QML reads the parameters through a property of this type, so moc has to see all of it.
#include <QQmlPropertyMap>

class CPRCompressionData;
class CPREvents;
class CPRGuidelines;
class CPRVentilationData;
class EventParameters;
class QIODevice;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace bls_2010 {
class RMessage;
}

/// Base of every event of a session: a kind, a start and an end in ms of session time, and a set
/// of parameters that QML reads by name (`params.compInactivity`).
///
/// The owner is the event list; an event that is deleted while it is listed takes itself out of
/// the list. The class also holds the enumerations of the event model: kinds, tags, parameters and
/// units, the AED's, the advices and the manikin types; Vocabulary says more about each parameter
/// and kind. The key texts of the enumerations are what files store, so neither keys nor values may
/// change.
class CPRDATA_EXPORT CPREventBase : public QObject {
    Q_OBJECT

    // clang-format off
    /// The kind of event; fixed at construction.
    Q_PROPERTY(EventType        type    READ type         CONSTANT)
    /// Start in ms of session time.
    Q_PROPERTY(int              msec    READ msecs        CONSTANT)
    /// End in ms of session time; equal to the start until it is set.
    Q_PROPERTY(int              endTime READ eventEndTime WRITE setEventEndTime)
    /// The parameters by key text; null until the first one is stored.
    Q_PROPERTY(QQmlPropertyMap *params  READ params       CONSTANT)
    // clang-format on

public:
    // clang-format off
    /// The kinds of events, each with a row in Vocabulary; files hold the key. The feedback kinds, 1 to 18 and 20 to 22, come from
    /// files and hosts only: no message makes them.
    enum EventType : int {
        ShockDelivered              =  0, ///< CPREventShock
        CprVentLittleMoreVolume     =  1,
        CprVentMoreVolume           =  2,
        CprVentMoreOftenRate        =  3,
        CprVentLessOftenRate        =  4,
        CprVentSlowerFlowrate       =  5,
        CprVentLittleSlowerFlowrate =  6,
        CprVentFasterFlowrate       =  7,
        CprPressLittleDeeper        =  8,
        CprPressDeeper              =  9,
        CprPressNotQuiteSoDeep      = 10,
        CprPressNotSoDeep           = 11,
        CprPressLittleFasterRate    = 12,
        CprPressFasterRate          = 13,
        CprPressLittleSlowerRate    = 14,
        CprPressSlowerRate          = 15,
        CprDutyCycleFeedback        = 16,
        CprLeaningFeedback          = 17,
        CprInactivityComp           = 18,
        CprInactivityCPR            = 19, ///< a pause in compressions, CPREventInactivityCPR
        CprInactivityVent           = 20,
        CprCompRate                 = 21,
        CprVentRate                 = 22,
        CprCompEvent                = 23, ///< CPREventCompression
        CprVentEvent                = 24, ///< CPREventVentilation
        CprSessionInfo              = 25, ///< CPREventSessionInfo
        CprSessionStatistics        = 26, ///< CPREventSessionStatistics
        CprSessionScore             = 27, ///< CPREventSessionScore
        CprAedEvent                 = 28, ///< CPREventAED
        CprCprdEvent                = 29, ///< an ECG rhythm, CPREventCPRD
        Event                       = 30, ///< named by host or manikin, CPREventUser
        CprPacketLossStart          = 31, ///< the link lost wave data from here ...
        CprPacketLossEnd            = 32 ///< ... to here
    };
    Q_ENUM(EventType)

    /// What an event is about; an event can carry several.
    enum EventTag : uint {
        TagComp             =   1, ///< compressions
        TagVent             =   2, ///< ventilations
        TagAed              =   4, ///< the AED and its remote control
        TagCprGui           =   8, ///< shown in the interface's event list
        TagInactivity       =  16, ///< pauses in compressions
        TagOther            =  32, ///< summaries, shocks, packet loss and all other kinds
        TagCprd             =  64, ///< ECG rhythms
        TagExclFlowFraction = 128, ///< the session counts as trained with an AED
        LastTag             = TagExclFlowFraction ///< loops over the tags end with it
    };
    Q_ENUM(EventTag)
    /// Tags, combined.
    Q_DECLARE_FLAGS(EventTags, EventTag)
    Q_FLAG(EventTags)

    /// The unit of a parameter; the key is the text that files hold. hmm are hundredths of a
    /// millimetre.
    enum ParameterUnit : int {
        none    =  0,
        bpm     =  1,
        rpm     =  2,
        lpm     =  3,
        percent =  4,
        sec     =  5,
        s       =  6,
        years   =  7,
        months  =  8,
        mins    =  9,
        mm      = 10,
        hmm     = 11,
        cm      = 12,
        vpm     = 13, ///< ventilations per minute
        cpm     = 14, ///< compressions per minute
        milliG  = 15,
        microG  = 16,
        g       = 17,
        ms      = 18,
        us      = 19,
        ml      = 20,
        J       = 21,
        hours   = 22,
        ah      = 23,
        mah     = 24
    };
    Q_ENUM(ParameterUnit)

    /// The parameters that an event can carry. Values are consecutive from 0; Vocabulary has a row
    /// for each, and docs/session-format.md says which event carries which.
    enum ParameterType : int {
        compRate,
        compDepth,
        compUndershootDepth,
        compPeakForce,
        compReleaseForce,
        compDutyCycle,
        compDutyCycleValid,
        compLeaning,
        compLeadingSlopeTime,
        compTrailingSlopeTime,
        compTime,
        compForceUnits,
        compDepthUnits,
        compIncompleteRelease,
        compPeakTime,
        compInstantaneousPeriod,
        compHandposXiphoid,
        compReleaseDepth,
        compAbsolutePeakDepth,
        compLeaningDepth,
        compLeaningForce,
        compHandposError,
        compInactivity,
        compCount,
        compCyclesCount,
        compCorrectReleaseCount,
        compWithRateInfo,
        compCorrectReleasePercentage,
        compCorrectRatePercentage,
        compTooLowRatePercentage,
        compCorrectDepthPercentage,
        compCorrectStrokeLengthPercentage,
        compAdequateDepthPercentage,
        compMeanDepth,
        compMeanRate,
        compMeanStrokeLength,
        compScore,
        compInactivityPeriodCount,
        compStdDeviationDepth,
        compMeanReleaseDepth,
        compStdDeviationReleaseDepth,
        compStdDeviationRate,
        compHandPosCorrectPercentage,
        compHandPosXiphoidErrorPercentage,
        compStdDeviationStrokeLength,
        compReleaseScoreReduction,
        compDepthScoreReduction,
        compDeepDepthScoreReduction,
        compRateLowScoreReduction,
        compRateHighScoreReduction,
        compHandposScoreReduction,
        compDepthStrokeLengthScoreReduction,
        compCyclesScoreReduction,
        compFlowtimeScoreReduction,
        compOverallScore,
        ventRate,
        ventInflationTime,
        ventNoFlowTime,
        ventRawVolumeZ,
        ventVolumeZ,
        ventVolume,
        ventVolumeUnits,
        ventPeakTime,
        ventDuringCompression,
        ventInstantaneousPeriod,
        ventCount,
        ventCorrectVolumePercentage,
        ventTooMuchVolumePercentage,
        ventNotEnoughVolumePercentage,
        ventMeanRate,
        ventMeanVolume,
        ventScore,
        ventCyclesCount,
        ventStdDeviationVolume,
        ventStdDeviationRate,
        ventCorrectRateCprPercentage,
        ventTooHighRateCprPercentage,
        ventCorrectRateVentOnlyPercentage,
        ventTooHighRateVentOnlyPercentage,
        ventCorrectInflationTimePercentage,
        ventTooFastInflationTimePercentage,
        ventShallowScoreReduction,
        ventExcessiveScoreReduction,
        ventRateLowScoreReduction,
        ventRateHighScoreReduction,
        ventPauseScoreReduction,
        ventCyclesScoreReduction,
        ventOverallScore,
        inactivityTime,
        inactivityAverageTime,
        shockEnergy,
        cprProtocol,
        instructor,
        students,
        manikinType,
        manikinFirmwareVersion,
        manikinStiffness,
        manikinName,
        manikinCompressionCount,
        manikinRfidVersion,
        manikinFeedpodVersion,
        remoteControl,
        remoteControlVersion,
        startTime,
        endTime,
        primaryAdvice,
        secondaryAdvice,
        overallScore,
        categoryThresholdBasic,
        categoryThresholdAdvanced,
        waveDelay,
        softSurface,
        totalTime,
        cprCardId,
        cprCardTimestamp,
        sessionDuration,
        timeFirstShock,
        timeFirstComp,
        timeFirstVent,
        flowTimePercentage,
        compHistogramDepthBin_0,
        compHistogramDepthBin_1,
        compHistogramDepthBin_2,
        compHistogramDepthBin_3,
        compHistogramDepthBin_4,
        compHistogramDepthBin_5,
        compHistogramReleaseBin_0,
        compHistogramReleaseBin_1,
        compHistogramReleaseBin_2,
        compHistogramReleaseBin_3,
        compHistogramReleaseBin_4,
        compHistogramReleaseBin_5,
        compHistogramRateBin_0,
        compHistogramRateBin_1,
        compHistogramRateBin_2,
        compHistogramRateBin_3,
        compHistogramRateBin_4,
        compHistogramRateBin_5,
        compHistogramInactivityBin_0,
        compHistogramInactivityBin_1,
        compHistogramInactivityBin_2,
        compHistogramInactivityBin_3,
        compHistogramInactivityBin_4,
        compHistogramInactivityBin_5,
        ventHistogramVolumeBin_0,
        ventHistogramVolumeBin_1,
        ventHistogramVolumeBin_2,
        ventHistogramVolumeBin_3,
        ventHistogramVolumeBin_4,
        ventHistogramVolumeBin_5,
        ventHistogramRateBin_0,
        ventHistogramRateBin_1,
        ventHistogramRateBin_2,
        ventHistogramRateBin_3,
        ventHistogramRateBin_4,
        ventHistogramRateBin_5,
        aedEventType,
        aedDelayedOnTime,
        aedScenarioNumber,
        aedScenarioFrameNumber,
        aedRemoteScenarioNumber,
        aedRemoteOtherButtonId,
        aedRemoteApplyToAll,
        aedECGRhythm,
        aedECGPulseStatus,
        aedECGShockableStatus,
        aedType,
        eventId,
        userEventType,
        simulationType,
        isScoringModeAED,
        cprScore,
        aedScore,
        preVentsTooFewScoreReduction,
        preVentsTooManyScoreReduction,
        numberOfPreVents,
        manikinVentilationCount,
        minNumberOfCompressionsPerCycle,
        maxNumberOfCompressionsPerCycle,
        averageNumberOfCompressionsPerCycle,
        compCountNoErrors,
        ventMeanInflationTime,
        ventStdDeviationInflationTime,
        minNumberOfVentilationsPerCycle,
        maxNumberOfVentilationsPerCycle,
        averageNumberOfVentilationsPerCycle,
        averageInflationTime,
        ventilationsPerMinute,
        inflationTimeSlowScoreReduction,
        inflationTimeFastScoreReduction,
        ventsPerMinuteSlowScoreReduction,
        ventsPerMinuteFastScoreReduction,
        manikinBatteryCycleCounter,
        manikinBatterySlowChargeCounter,
        manikinBatteryFastChargeCounter,
        manikinBatteryAccumulatedSlowChargeTimeHours,
        manikinBatteryAccumulatedFastChargeTimeHours,
        manikinBatteryAccumulatedChargeTimeDuringLowTemperatureHours,
        manikinBatteryAccumulatedChargeTimeDuringHighTemperatureHours,
        manikinBatteryAvgMinLevelPercent,
        manikinBatteryAvgMaxLevelPercent,
        manikinBatteryCriticalBatteryLevelCounter,
        manikinBatteryAccumulatedDischargeCurrentAh,
        manikinBatteryDesignCapacityMah,
        manikinBatteryFullChargeCapacityMah,
        manikinBatteryDisconnectCounter
    };
    Q_ENUM(ParameterType)

    /// What an AED event tells; stored as the parameter aedEventType.
    enum AEDEventType : int {
        AEDUnknownEventType                   =  0,
        AEDPowerOn                            =  1,
        AEDPowerOff                           =  2,
        AEDScenarioPaused                     =  3,
        AEDScenarioStarted                    =  4,
        AEDAnalyzing                          =  5,
        AEDShockAdvised                       =  6,
        AEDReadyToShock                       =  7,
        AEDNoShockIndicated                   =  8,
        AEDStartCharging                      =  9,
        AEDShockCancelled                     = 10,
        AEDShockDelivered                     = 11,
        AEDAnalyzingInterrupted               = 12,
        AEDBatteryLow                         = 13,
        AEDDelayedONTime                      = 14,
        AEDScenarioNumber                     = 15,
        AEDScenarioFrameNumber                = 16,
        AEDPatientMovementStarted             = 17,
        AEDPatientMovementEnded               = 18,
        AEDECGRhythmStatus                    = 19,
        AEDBatteryDetailedStatusOK            = 20,
        AEDBatteryDetailedStatusLow           = 21,
        AEDBatteryDetailedStatusDepleted      = 22,
        AEDFailure                            = 23,
        AEDNoFailure                          = 24,
        AEDPadsOK                             = 25,
        AEDPadsLoose                          = 26,
        AEDRemoteControlScenarioButtonPressed = 27,
        AEDRemoteControlOtherButtonPressed    = 28,
        AEDType                               = 29
    };
    Q_ENUM(AEDEventType)

    /// Whom a button of the remote control concerns (aedRemoteApplyToAll).
    enum AEDRemoteApplyToAllStatus : int {
        ApplyToSingleManikin =  0,
        ApplyToAllManikins   =  1
    };
    Q_ENUM(AEDRemoteApplyToAllStatus)

    /// Buttons of the remote control (aedRemoteOtherButtonId).
    enum AEDRemoteOtherButtons : int {
        RemoteBtnUndefined               =  0,
        RemoteBtnShowScenario            =  1,
        RemoteBtnPlayScenario            =  2,
        RemoteBtnPauseScenario           =  3,
        RemoteBtnSimulatePatientMovement =  4,
        RemoteBtnPadsLoose               =  5,
        RemoteBtnPadsOK                  =  6,
        RemoteBtnShockableRhythm         =  7,
        RemoteBtnNonShockableRhythm      =  8,
        RemoteBtnShowPadPlacementLEDS    =  9,
        RemoteBtnSimulateBatteryLow      = 10,
        RemoteBtnSimulateAEDFailure      = 11,
        RemoteBtnVolumeDown              = 12,
        RemoteBtnVolumeUp                = 13,
        RemoteBtnCPRfirst                = 14
    };
    Q_ENUM(AEDRemoteOtherButtons)

    /// ECG rhythms (aedECGRhythm).
    enum AEDEcgRhythms : int {
        AED_NoECGRhythm =  0,
        AED_VFIB        =  1,
        AED_VTFAST      =  2,
        AED_VTSLOW      =  3,
        AED_NSR         =  4,
        AED_ASYSTOLE    =  5,
        AED_PEA         =  6,
        AED_BRADYCARDIA =  7,
        AED_SVT         =  8
    };
    Q_ENUM(AEDEcgRhythms)

    /// Kinds of AED that a manikin can be connected to (aedType).
    enum AEDTypes : int {
        AEDNotDetected              =  0,
        AEDDetectedButNotIdentified =  1,
        AEDTypeVolterm              =  2,
        AEDTypeAEDPracta3           =  3,
        AEDNotPossible              =  4
    };
    Q_ENUM(AEDTypes)

    /// Whether the rhythm comes with a pulse (aedECGPulseStatus).
    enum AEDEcgPulseStatus : int {
        PulsePresent =  0,
        PulseAbsent  =  1
    };
    Q_ENUM(AEDEcgPulseStatus)

    /// Whether the rhythm is to be shocked (aedECGShockableStatus).
    enum AEDEcgShockableStatus : int {
        NonShockable =  0,
        Shockable    =  1
    };
    Q_ENUM(AEDEcgShockableStatus)

    /// What the learner is told after the session.
    enum Advice : int {
        Advice_None               =  0,
        Advice_CompressDeepEnough =  1,
        Advice_CompressNotSoDeep  =  2,
        Advice_ReleaseCompletely  =  3,
        Advice_CorrectRate        =  4,
        Advice_CorrectVentRate    =  5,
        Advice_CorrectVolume      =  6,
        Advice_CorrectCycleVents  =  7,
        Advice_CorrectCycleComps  =  8,
        Advice_MinimizeNoFlow     =  9,
        Advice_HandPosition       = 10,
        Advice_TooFewPreVents     = 11,
        Advice_TooManyPreVents    = 12
    };
    Q_ENUM(Advice)

    /// The kinds of manikins (manikinType); patientAgeType() tells whom a kind stands for.
    enum ManikinType : int {
        ALS_ORM                  =   1,
        ORMMAN_ALS               =  32,
        KDX_BASIC                =   2,
        SOUNDS_TRAINER           =   3,
        KDX_ADULT_MALE           =   4,
        KDX_ADULT_FEMALE         =   5,
        KDX_CHILD                =   6,
        BP_TRAINER               =   7,
        KDX_INFANT               =   8,
        ECG_TRAINER              =   9,
        VZ_ORM                   =  20,
        ORM_JUNIOR               =  21,
        ORM_MOM                  =  22,
        ADV_SKILLTRAINER         =  23,
        ORM_NEW_B                =  30,
        ORM_NEW_B_ADV            =  31,
        VIVARO_BABY_MK_II        =  38,
        VIVARO_ZENNA_PLUS_MK_II  =  39,
        VIVARO_ZENNA_PLUS        =  40,
        VIVARO_BABY              =  41,
        VIVARO_ZENNA_PLUS_CPR_D  =  42,
        VIVARO_JUNIOR            =  43,
        LITTLE_ZENNA_TEVO_PLUGIN =  44,
        PREMATURE_ZENNA          =  50,
        CAN_ORMBABY              = 100,
        CAN_ORMNEWB              = 101,
        NOT_DEFINED              = 255
    };
    Q_ENUM(ManikinType)

    /// How hard the manikin's chest is set (manikinStiffness).
    enum ManikinStiffness : int {
        Manikin_Stiffness_Unknown = 0,
        Manikin_Stiffness_Soft    = 1,
        Manikin_Stiffness_Medium  = 2,
        Manikin_Stiffness_Hard    = 3
    };
    Q_ENUM(ManikinStiffness)
    // clang-format on

    /// Columns of a CSV export: the parameter and the title of its column.
    using ParameterMapList_t = QList<QPair<ParameterType, QString>>;

    /// The unit of each parameter. A parameter without an entry has the unit none.
    static const QMap<ParameterType, ParameterUnit> parameterUnit;
    /// Builds parameterUnit.
    static QMap<ParameterType, ParameterUnit> initParameterUnit();

    /// The text of the unit of \a type as files show it; empty for the unit none.
    static QString unitText(ParameterType type);
    /// The key text of \a type; empty for a value outside the enumeration.
    static QString parameterKey(ParameterType type);
    /// The parameter with the key text \a key; false, and \a type untouched, when there is none.
    static bool parameterFromKey(QStringView key, ParameterType &type);
    /// The event kind with the key text \a key; false, and \a type untouched, when there is none.
    static bool eventTypeFromKey(QStringView key, EventType &type);

    /// Start and end are \a msecs; the parent is \a owner, which may be null.
    CPREventBase(EventType type, int msecs, CPREvents *owner);
    /// Copies kind, times and parameters for the list \a owner.
    CPREventBase(const CPREventBase &other, CPREvents *owner);
    ~CPREventBase() override;

    /// The kind of event.
    EventType type() const { return m_type; }
    /// The key text of type(), in static memory; null for a value outside the enumeration.
    const char *typeAsString() const;
    /// Start in ms of session time.
    int msecs() const { return m_msecs; }
    /// Sets the start, and the end to the same time (ms).
    void setMSecs(int msecs);
    /// End in ms of session time.
    int eventEndTime() const { return m_endTime; }
    /// Sets the end alone (ms of session time).
    void setEventEndTime(int msecs);

    /// The parameters, owned by the event; null until the first one is stored.
    QQmlPropertyMap *params() const;
    /// Stores \a value, replacing an earlier one.
    void setParameter(ParameterType type, const QVariant &value);
    /// The value of \a type, or \a defaultValue when the event holds others but not this one. An
    /// event that never held a parameter answers with an invalid variant, whatever the default:
    /// callers tell "nothing known yet" from "not among what is known" by it.
    QVariant parameterValue(ParameterType type, const QVariant &defaultValue) const;
    /// Puts the key text of \a type into \a key and tells whether the event holds it.
    bool hasParameterType(ParameterType type, QString &key) const;
    /// The value of \a type, be it a parameter or a measurement that the event keeps in a property
    /// of that name; invalid when the event has none. A parameter is preferred.
    QVariant value(ParameterType type) const;
    /// Calls \a visit with each value that value() gives: first the measurements in the order of
    /// files, then the parameters in the order in which they came.
    void visitValues(const std::function<void(ParameterType, const QVariant &)> &visit) const;
    /// The unit of \a type; none when the table has no entry.
    ParameterUnit unit(ParameterType type) const;
    /// Takes over the parameters of \a other; those that only this event holds stay.
    void copyParametersFrom(const CPREventBase &other);

    /// The event list given at construction; null when there is none.
    CPREvents *events() const { return m_owner; }
    /// Session time of the list in ms, 0 without a list.
    int sessionTime() const;
    /// The CPR protocol of the list; with a single rescuer without a list.
    bls_2010::CommonDefs::CprProtocolType mode() const;
    /// @{
    /// The waveforms and guidelines of the list; null without a list.
    CPRCompressionData *compressionData() const;
    CPRVentilationData *ventilationData() const;
    CPRGuidelines *cprGuidelines() const;
    /// @}

    /// True once a parameter is stored. The measurements of compressions and ventilations are
    /// properties and do not count.
    virtual bool hasParameters() const;
    /// Writes the element "evt" with kind, start and parameters.
    virtual void write(QXmlStreamWriter *writer);
    /// Writes the value of the column's parameter and \a separator as UTF-8. Writes nothing, and
    /// returns false, when the event does not hold the parameter.
    virtual bool write(QIODevice *device, const QPair<ParameterType, QString> &column,
                       const QString &separator);
    /// Reads the parameters of the element that \a reader stands on.
    virtual void read(QXmlStreamReader *reader);
    /// Takes a manikin message; false when it is not for this event, or not acceptable.
    virtual bool incomingMsg(bls_2010::RMessage *msg);
    /// Empties the event for a new session. Does nothing here.
    virtual void reset();
    /// Brings the event to its starting state; calls reset().
    virtual void initialize();
    /// A new event of the same class for the list \a owner (may be null), which owns it.
    virtual CPREventBase *clone(CPREvents *owner);
    /// While a list is read: true when this event must be dropped because of \a previous (may be
    /// null).
    virtual bool filterEvent(CPREventBase *previous);
    /// One line for logs, then a line per parameter.
    virtual operator QString() const;
    /// What the event is about: EventTag values combined. An int, since QML cannot calculate with a
    /// flags type that an invokable returns.
    Q_INVOKABLE virtual int tag() const;

    /// Writes the title of a CSV column, its unit in parentheses, and \a separator as UTF-8.
    static void writeHeader(QIODevice *device, const QPair<ParameterType, QString> &column,
                            const QString &separator);

    /// Writes one "param" element per parameter. Battery parameters stay out of files.
    virtual void writeParameters(QXmlStreamWriter *writer);
    /// Reads "param" elements into the parameters up to the first token that is none. Unknown
    /// parameters are passed over.
    virtual void readParameters(QXmlStreamReader *reader);
    /// As readParameters(), but into the properties of the same names.
    void readParametersToProperties(QXmlStreamReader *reader);
    /// Writes one "param" element named \a name.
    void writeParam(QXmlStreamWriter &writer, const char *name, const QVariant &value,
                    ParameterType type) const;

private:
    friend class CPREvents; // keeps what says how the event is listed
    friend class EventSequence;

    void reportChange();
    int storedParameterCount() const;
    EventParameters &madeParameters();

    CPREvents *m_owner; // not owned: it is the parent
    EventType m_type;
    int m_msecs;
    int m_endTime;
    quint32 m_block = 0; // of the main list in which the event stands
    std::unique_ptr<EventParameters> m_parameters; // null until the first is stored
    bool m_listed = false;
    bool m_standing = false; // one of the three that the list always has
    bool m_isChangePending = false; // by the list, which has not announced it yet
    quint8 m_listedTags = 0; // in whose lists the event stands
    quint32 m_blockOfTag = 0; // of the list of the first of these tags
};

Q_DECLARE_OPERATORS_FOR_FLAGS(CPREventBase::EventTags)

#endif
