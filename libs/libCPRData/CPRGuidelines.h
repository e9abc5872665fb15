// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRGUIDELINES_H
#define CPRGUIDELINES_H

#include "CPRDataBase.h"

namespace bls_2010 {
struct GuidelineValues_t;
}

/// The set of limits by which the manikin judges a session: depth, rate, release, volume,
/// inflation time and inactivity limits, cycle counts, flow-time minimums and the rules for
/// ventilations before the first compression.
///
/// Depths are in hundredths of a millimetre, forces in g, volumes in ml, inflation times in ms,
/// inactivity timeouts in s, rates per minute, flow times in percent. Every setter announces
/// itself through sendSignal(), so that a burst of changes gives one guidelinesChanged().
class CPRDATA_EXPORT CPRGuidelines : public CPRDataBase {
    Q_OBJECT

    // clang-format off
    /// Identifier of the set; idAsString() makes a text for people of it.
    Q_PROPERTY(QString GuidelinesID                                       READ guidelinesID                                       WRITE setGuidelinesID                                       NOTIFY guidelinesChanged)
    /// The manikin says that it uses its default values.
    Q_PROPERTY(bool    UsingDefaultValues                                 READ usingDefaultValues                                 WRITE setUsingDefaultValues                                 NOTIFY guidelinesChanged)
    /// Which of the two depths that a manikin sends forms the depth wave: the absolute or the
    /// relative one.
    Q_PROPERTY(bool    UseAbsoluteDepth                                   READ useAbsoluteDepth                                   WRITE setUseAbsoluteDepth                                   NOTIFY guidelinesChanged)
    /// The manikin says that the set is an official one.
    Q_PROPERTY(bool    IsOfficial                                         READ isOfficial                                         WRITE setIsOfficial                                         NOTIFY guidelinesChanged)
    /// Depth from which a movement counts as a compression, hundredths of a millimetre.
    Q_PROPERTY(int     CompressionDetectDepth                             READ compressionDetectDepth                             WRITE setCompressionDetectDepth                             NOTIFY guidelinesChanged)
    /// @{
    /// Limits of the depth, hundredths of a millimetre.
    Q_PROPERTY(int     CompressionDepthMin                                READ compressionDepthMin                                WRITE setCompressionDepthMin                                NOTIFY guidelinesChanged)
    Q_PROPERTY(int     CompressionDepthMax                                READ compressionDepthMax                                WRITE setCompressionDepthMax                                NOTIFY guidelinesChanged)
    /// @}
    /// CompTooDeepSetting: what the manikin does about compressions that are too deep.
    Q_PROPERTY(int     CompressionTooDeepSetting                          READ compressionTooDeepSetting                          WRITE setCompressionTooDeepSetting                          NOTIFY guidelinesChanged)
    /// Depth down to which the chest counts as released, hundredths of a millimetre.
    Q_PROPERTY(int     CompressionAcceptableReleaseDepth                  READ compressionAcceptableReleaseDepth                  WRITE setCompressionAcceptableReleaseDepth                  NOTIFY guidelinesChanged)
    /// Force from which a movement counts as a compression, g.
    Q_PROPERTY(int     CompressionDetectForce                             READ compressionDetectForce                             WRITE setCompressionDetectForce                             NOTIFY guidelinesChanged)
    /// Force down to which the chest counts as released, g.
    Q_PROPERTY(int     CompressionAcceptableReleaseForce                  READ compressionAcceptableReleaseForce                  WRITE setCompressionAcceptableReleaseForce                  NOTIFY guidelinesChanged)
    /// @{
    /// Limits and target of the compression rate, per minute.
    Q_PROPERTY(int     CompressionRateMin                                 READ compressionRateMin                                 WRITE setCompressionRateMin                                 NOTIFY guidelinesChanged)
    Q_PROPERTY(int     CompressionRateMax                                 READ compressionRateMax                                 WRITE setCompressionRateMax                                 NOTIFY guidelinesChanged)
    Q_PROPERTY(int     CompressionRateTarget                              READ compressionRateTarget                              WRITE setCompressionRateTarget                              NOTIFY guidelinesChanged)
    /// @}
    /// @{
    /// Times without compressions that make a pause, by level, s.
    Q_PROPERTY(int     CompressionInactivityLevel0TimeoutVentilationsOnly READ compressionInactivityLevel0TimeoutVentilationsOnly WRITE setCompressionInactivityLevel0TimeoutVentilationsOnly NOTIFY guidelinesChanged)
    Q_PROPERTY(int     CompressionInactivityLevel0TimeoutCPR              READ compressionInactivityLevel0TimeoutCPR              WRITE setCompressionInactivityLevel0TimeoutCPR              NOTIFY guidelinesChanged)
    Q_PROPERTY(int     CompressionInactivityLevel1Timeout                 READ compressionInactivityLevel1Timeout                 WRITE setCompressionInactivityLevel1Timeout                 NOTIFY guidelinesChanged)
    Q_PROPERTY(int     CompressionInactivityLevel2Timeout                 READ compressionInactivityLevel2Timeout                 WRITE setCompressionInactivityLevel2Timeout                 NOTIFY guidelinesChanged)
    Q_PROPERTY(int     CompressionInactivityLevel3Timeout                 READ compressionInactivityLevel3Timeout                 WRITE setCompressionInactivityLevel3Timeout                 NOTIFY guidelinesChanged)
    /// @}
    /// @{
    /// Compressions in a cycle, with one rescuer and with two; 0 when not prescribed.
    Q_PROPERTY(int     CompressionsBetweenVentilations                    READ compressionsBetweenVentilations                    WRITE setCompressionsBetweenVentilations                    NOTIFY guidelinesChanged)
    Q_PROPERTY(int     CompressionsBetweenVentilationsTwoRescuer          READ compressionsBetweenVentilationsTwoRescuer          WRITE setCompressionsBetweenVentilationsTwoRescuer          NOTIFY guidelinesChanged)
    /// @}
    /// @{
    /// Least share of the time with compressions, percent, by protocol.
    Q_PROPERTY(int     MinimumAcceptedFlowtimePercentageCompressionsOnly  READ minimumAcceptedFlowtimePercentageCompressionsOnly  WRITE setMinimumAcceptedFlowtimePercentageCompressionsOnly  NOTIFY guidelinesChanged)
    Q_PROPERTY(int     MinimumAcceptedFlowtimePercentageSingleRescuerCPR  READ minimumAcceptedFlowtimePercentageSingleRescuerCPR  WRITE setMinimumAcceptedFlowtimePercentageSingleRescuerCPR  NOTIFY guidelinesChanged)
    Q_PROPERTY(int     MinimumAcceptedFlowtimePercentageTwoRescuerCPR     READ minimumAcceptedFlowtimePercentageTwoRescuerCPR     WRITE setMinimumAcceptedFlowtimePercentageTwoRescuerCPR     NOTIFY guidelinesChanged)
    /// @}
    /// Volume from which a ventilation counts, ml.
    Q_PROPERTY(int     VentilationDetectVolume                            READ ventilationDetectVolume                            WRITE setVentilationDetectVolume                            NOTIFY guidelinesChanged)
    /// @{
    /// Limits of the volume, ml; the maximum itself is too much.
    Q_PROPERTY(int     VentilationVolumeMin                               READ ventilationVolumeMin                               WRITE setVentilationVolumeMin                               NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationVolumeMax                               READ ventilationVolumeMax                               WRITE setVentilationVolumeMax                               NOTIFY guidelinesChanged)
    /// @}
    /// @{
    /// Limits and target of the ventilation rate, per minute: with one rescuer, with two, and when
    /// only ventilations are trained.
    Q_PROPERTY(int     VentilationRateMinDuringCPR                        READ ventilationRateMinDuringCPR                        WRITE setVentilationRateMinDuringCPR                        NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationRateMaxDuringCPR                        READ ventilationRateMaxDuringCPR                        WRITE setVentilationRateMaxDuringCPR                        NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationRateTargetDuringCPR                     READ ventilationRateTargetDuringCPR                     WRITE setVentilationRateTargetDuringCPR                     NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationRateMinDuringTwoRescuerCPR              READ ventilationRateMinDuringTwoRescuerCPR              WRITE setVentilationRateMinDuringTwoRescuerCPR              NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationRateMaxDuringTwoRescuerCPR              READ ventilationRateMaxDuringTwoRescuerCPR              WRITE setVentilationRateMaxDuringTwoRescuerCPR              NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationRateTargetDuringTwoRescuerCPR           READ ventilationRateTargetDuringTwoRescuerCPR           WRITE setVentilationRateTargetDuringTwoRescuerCPR           NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationRateMinForVentilationsOnly              READ ventilationRateMinForVentilationsOnly              WRITE setVentilationRateMinForVentilationsOnly              NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationRateMaxForVentilationsOnly              READ ventilationRateMaxForVentilationsOnly              WRITE setVentilationRateMaxForVentilationsOnly              NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationRateTargetForVentilationsOnly           READ ventilationRateTargetForVentilationsOnly           WRITE setVentilationRateTargetForVentilationsOnly           NOTIFY guidelinesChanged)
    /// @}
    /// @{
    /// Limits of the inflation time, ms.
    Q_PROPERTY(int     VentilationInflationTimeMin                        READ ventilationInflationTimeMin                        WRITE setVentilationInflationTimeMin                        NOTIFY guidelinesChanged)
    Q_PROPERTY(int     VentilationInflationTimeMax                        READ ventilationInflationTimeMax                        WRITE setVentilationInflationTimeMax                        NOTIFY guidelinesChanged)
    /// @}
    /// Time without ventilations that makes a pause, s.
    Q_PROPERTY(int     VentilationInactivityTimeout                       READ ventilationInactivityTimeout                       WRITE setVentilationInactivityTimeout                       NOTIFY guidelinesChanged)
    /// Ventilations in a cycle; 0 when not prescribed.
    Q_PROPERTY(int     VentilationsBetweenCompressions                    READ ventilationsBetweenCompressions                    WRITE setVentilationsBetweenCompressions                    NOTIFY guidelinesChanged)
    /// PreventilationUsageEnum: how ventilations before the first compression are taken.
    Q_PROPERTY(int     PreVentilationsUsage                               READ preVentilationsUsage                               WRITE setPreVentilationsUsage                               NOTIFY guidelinesChanged)
    /// @{
    /// Limits of the number of ventilations before the first compression.
    Q_PROPERTY(int     PreVentilationsMax                                 READ preVentilationsMax                                 WRITE setPreVentilationsMax                                 NOTIFY guidelinesChanged)
    Q_PROPERTY(int     PreVentilationsMin                                 READ preVentilationsMin                                 WRITE setPreVentilationsMin                                 NOTIFY guidelinesChanged)
    /// @}
    /// Hand position counts in the score. The host's own choice: messages do not carry it, neither
    /// comparison looks at it, and clone() leaves it alone.
    Q_PROPERTY(bool    UsingHandPosForScore                               READ usingHandPosForScore                               WRITE setUsingHandPosForScore                               NOTIFY guidelinesChanged)
    /// @{
    /// Limits of the ventilation rate in high performance CPR, per minute.
    Q_PROPERTY(uint    VentilationRateMinHPCPR                            READ ventilationRateMinHPCPR                            WRITE setVentilationRateMinHPCPR                            NOTIFY guidelinesChanged)
    Q_PROPERTY(uint    VentilationRateMaxHPCPR                            READ ventilationRateMaxHPCPR                            WRITE setVentilationRateMaxHPCPR                            NOTIFY guidelinesChanged)
    /// @}
    /// High performance CPR has limits of its own. Set by the host: no message carries it.
    Q_PROPERTY(bool    HPGuidelinesAvailable                              READ hpGuidelinesAvailable                              WRITE setHPGuidelinesAvailable                              NOTIFY guidelinesChanged)
    // clang-format on

public:
    /// What the manikin does about compressions that are too deep.
    enum CompTooDeepSetting : int {
        COMP_TOO_DEEP_NO_SUPPORT = 0, ///< nothing, as it does not know the setting
        COMP_TOO_DEEP_NO_SCORE_REDUCTION = 1, ///< reports them
        COMP_TOO_DEEP_SCORE_REDUCTION = 2 ///< takes them off the score
    };
    Q_ENUM(CompTooDeepSetting)

    /// How ventilations before the first compression are taken.
    enum PreventilationUsageEnum : int {
        PREVENTILATION_USAGE_NO = 0,
        PREVENTILATION_USAGE_ALLOWPREVENTS = 1,
        PREVENTILATION_USAGE_ALLOWPREVENTSBUTSCOREONLYONNUMBER = 2,
        PREVENTILATION_USAGE_ALLOWPREVENTSBUTIGNORE = 3,
        PREVENTILATION_USAGE_USE_CURRENT_GUIDELINE_DEFAULT = 255
    };
    Q_ENUM(PreventilationUsageEnum)

    /// A set with the default values, owned by \a cprData (may be null).
    explicit CPRGuidelines(CPRData *cprData);
    /// A set with the values of the manikin's structure; what that does not carry has its default.
    CPRGuidelines(const bls_2010::GuidelineValues_t &values, CPRData *cprData);
    /// A copy of \a other with the same owner; the default values when it is null.
    explicit CPRGuidelines(CPRGuidelines *other);
    ~CPRGuidelines() override;

    // clang-format off
    /// @{
    /// The properties of the same names.
    QString guidelinesID() const                                       { return m_values.guidelinesID; }
    bool    usingDefaultValues() const                                 { return m_values.usingDefaultValues; }
    bool    useAbsoluteDepth() const                                   { return m_values.useAbsoluteDepth; }
    bool    isOfficial() const                                         { return m_values.isOfficial; }
    int     compressionDetectDepth() const                             { return m_values.compressionDetectDepth; }
    int     compressionDepthMin() const                                { return m_values.compressionDepthMin; }
    int     compressionDepthMax() const                                { return m_values.compressionDepthMax; }
    int     compressionTooDeepSetting() const                          { return m_values.compressionTooDeepSetting; }
    int     compressionAcceptableReleaseDepth() const                  { return m_values.compressionAcceptableReleaseDepth; }
    int     compressionDetectForce() const                             { return m_values.compressionDetectForce; }
    int     compressionAcceptableReleaseForce() const                  { return m_values.compressionAcceptableReleaseForce; }
    int     compressionRateMin() const                                 { return m_values.compressionRateMin; }
    int     compressionRateMax() const                                 { return m_values.compressionRateMax; }
    int     compressionRateTarget() const                              { return m_values.compressionRateTarget; }
    int     compressionInactivityLevel0TimeoutVentilationsOnly() const { return m_values.compressionInactivityLevel0TimeoutVentilationsOnly; }
    int     compressionInactivityLevel0TimeoutCPR() const              { return m_values.compressionInactivityLevel0TimeoutCPR; }
    int     compressionInactivityLevel1Timeout() const                 { return m_values.compressionInactivityLevel1Timeout; }
    int     compressionInactivityLevel2Timeout() const                 { return m_values.compressionInactivityLevel2Timeout; }
    int     compressionInactivityLevel3Timeout() const                 { return m_values.compressionInactivityLevel3Timeout; }
    int     compressionsBetweenVentilations() const                    { return m_values.compressionsBetweenVentilations; }
    int     compressionsBetweenVentilationsTwoRescuer() const          { return m_values.compressionsBetweenVentilationsTwoRescuer; }
    int     minimumAcceptedFlowtimePercentageCompressionsOnly() const  { return m_values.minimumAcceptedFlowtimePercentageCompressionsOnly; }
    int     minimumAcceptedFlowtimePercentageSingleRescuerCPR() const  { return m_values.minimumAcceptedFlowtimePercentageSingleRescuerCPR; }
    int     minimumAcceptedFlowtimePercentageTwoRescuerCPR() const     { return m_values.minimumAcceptedFlowtimePercentageTwoRescuerCPR; }
    int     ventilationDetectVolume() const                            { return m_values.ventilationDetectVolume; }
    int     ventilationVolumeMin() const                               { return m_values.ventilationVolumeMin; }
    int     ventilationVolumeMax() const                               { return m_values.ventilationVolumeMax; }
    int     ventilationRateMinDuringCPR() const                        { return m_values.ventilationRateMinDuringCPR; }
    int     ventilationRateMaxDuringCPR() const                        { return m_values.ventilationRateMaxDuringCPR; }
    int     ventilationRateTargetDuringCPR() const                     { return m_values.ventilationRateTargetDuringCPR; }
    int     ventilationRateMinDuringTwoRescuerCPR() const              { return m_values.ventilationRateMinDuringTwoRescuerCPR; }
    int     ventilationRateMaxDuringTwoRescuerCPR() const              { return m_values.ventilationRateMaxDuringTwoRescuerCPR; }
    int     ventilationRateTargetDuringTwoRescuerCPR() const           { return m_values.ventilationRateTargetDuringTwoRescuerCPR; }
    int     ventilationRateMinForVentilationsOnly() const              { return m_values.ventilationRateMinForVentilationsOnly; }
    int     ventilationRateMaxForVentilationsOnly() const              { return m_values.ventilationRateMaxForVentilationsOnly; }
    int     ventilationRateTargetForVentilationsOnly() const           { return m_values.ventilationRateTargetForVentilationsOnly; }
    int     ventilationInflationTimeMin() const                        { return m_values.ventilationInflationTimeMin; }
    int     ventilationInflationTimeMax() const                        { return m_values.ventilationInflationTimeMax; }
    int     ventilationInactivityTimeout() const                       { return m_values.ventilationInactivityTimeout; }
    int     ventilationsBetweenCompressions() const                    { return m_values.ventilationsBetweenCompressions; }
    int     preVentilationsUsage() const                               { return m_values.preVentilationsUsage; }
    int     preVentilationsMax() const                                 { return m_values.preVentilationsMax; }
    int     preVentilationsMin() const                                 { return m_values.preVentilationsMin; }
    bool    usingHandPosForScore() const                               { return m_values.usingHandPosForScore; }
    uint    ventilationRateMinHPCPR() const                            { return m_values.ventilationRateMinHPCPR; }
    uint    ventilationRateMaxHPCPR() const                            { return m_values.ventilationRateMaxHPCPR; }
    bool    hpGuidelinesAvailable() const                              { return m_values.hpGuidelinesAvailable; }
    /// @}

    /// Announces only a text that differs.
    void setGuidelinesID(const QString &id);
    /// @{
    /// Sets the property of the same name and announces it.
    void setUsingDefaultValues(bool value)                                 { store(m_values.usingDefaultValues, value); }
    void setUseAbsoluteDepth(bool value)                                   { store(m_values.useAbsoluteDepth, value); }
    void setIsOfficial(bool value)                                         { store(m_values.isOfficial, value); }
    void setCompressionDetectDepth(int  value)                             { store(m_values.compressionDetectDepth, value); }
    void setCompressionDepthMin(int  value)                                { store(m_values.compressionDepthMin, value); }
    void setCompressionDepthMax(int  value)                                { store(m_values.compressionDepthMax, value); }
    void setCompressionTooDeepSetting(int  value)                          { store(m_values.compressionTooDeepSetting, value); }
    void setCompressionAcceptableReleaseDepth(int  value)                  { store(m_values.compressionAcceptableReleaseDepth, value); }
    void setCompressionDetectForce(int  value)                             { store(m_values.compressionDetectForce, value); }
    void setCompressionAcceptableReleaseForce(int  value)                  { store(m_values.compressionAcceptableReleaseForce, value); }
    void setCompressionRateMin(int  value)                                 { store(m_values.compressionRateMin, value); }
    void setCompressionRateMax(int  value)                                 { store(m_values.compressionRateMax, value); }
    void setCompressionRateTarget(int  value)                              { store(m_values.compressionRateTarget, value); }
    void setCompressionInactivityLevel0TimeoutVentilationsOnly(int  value) { store(m_values.compressionInactivityLevel0TimeoutVentilationsOnly, value); }
    void setCompressionInactivityLevel0TimeoutCPR(int  value)              { store(m_values.compressionInactivityLevel0TimeoutCPR, value); }
    void setCompressionInactivityLevel1Timeout(int  value)                 { store(m_values.compressionInactivityLevel1Timeout, value); }
    void setCompressionInactivityLevel2Timeout(int  value)                 { store(m_values.compressionInactivityLevel2Timeout, value); }
    void setCompressionInactivityLevel3Timeout(int  value)                 { store(m_values.compressionInactivityLevel3Timeout, value); }
    void setCompressionsBetweenVentilations(int  value)                    { store(m_values.compressionsBetweenVentilations, value); }
    void setCompressionsBetweenVentilationsTwoRescuer(int  value)          { store(m_values.compressionsBetweenVentilationsTwoRescuer, value); }
    void setMinimumAcceptedFlowtimePercentageCompressionsOnly(int  value)  { store(m_values.minimumAcceptedFlowtimePercentageCompressionsOnly, value); }
    void setMinimumAcceptedFlowtimePercentageSingleRescuerCPR(int  value)  { store(m_values.minimumAcceptedFlowtimePercentageSingleRescuerCPR, value); }
    void setMinimumAcceptedFlowtimePercentageTwoRescuerCPR(int  value)     { store(m_values.minimumAcceptedFlowtimePercentageTwoRescuerCPR, value); }
    void setVentilationDetectVolume(int  value)                            { store(m_values.ventilationDetectVolume, value); }
    void setVentilationVolumeMin(int  value)                               { store(m_values.ventilationVolumeMin, value); }
    void setVentilationVolumeMax(int  value)                               { store(m_values.ventilationVolumeMax, value); }
    void setVentilationRateMinDuringCPR(int  value)                        { store(m_values.ventilationRateMinDuringCPR, value); }
    void setVentilationRateMaxDuringCPR(int  value)                        { store(m_values.ventilationRateMaxDuringCPR, value); }
    void setVentilationRateTargetDuringCPR(int  value)                     { store(m_values.ventilationRateTargetDuringCPR, value); }
    void setVentilationRateMinDuringTwoRescuerCPR(int  value)              { store(m_values.ventilationRateMinDuringTwoRescuerCPR, value); }
    void setVentilationRateMaxDuringTwoRescuerCPR(int  value)              { store(m_values.ventilationRateMaxDuringTwoRescuerCPR, value); }
    void setVentilationRateTargetDuringTwoRescuerCPR(int  value)           { store(m_values.ventilationRateTargetDuringTwoRescuerCPR, value); }
    void setVentilationRateMinForVentilationsOnly(int  value)              { store(m_values.ventilationRateMinForVentilationsOnly, value); }
    void setVentilationRateMaxForVentilationsOnly(int  value)              { store(m_values.ventilationRateMaxForVentilationsOnly, value); }
    void setVentilationRateTargetForVentilationsOnly(int  value)           { store(m_values.ventilationRateTargetForVentilationsOnly, value); }
    void setVentilationInflationTimeMin(int  value)                        { store(m_values.ventilationInflationTimeMin, value); }
    void setVentilationInflationTimeMax(int  value)                        { store(m_values.ventilationInflationTimeMax, value); }
    void setVentilationInactivityTimeout(int  value)                       { store(m_values.ventilationInactivityTimeout, value); }
    void setVentilationsBetweenCompressions(int  value)                    { store(m_values.ventilationsBetweenCompressions, value); }
    void setPreVentilationsUsage(int  value)                               { store(m_values.preVentilationsUsage, value); }
    void setPreVentilationsMax(int  value)                                 { store(m_values.preVentilationsMax, value); }
    void setPreVentilationsMin(int  value)                                 { store(m_values.preVentilationsMin, value); }
    void setUsingHandPosForScore(bool value)                               { store(m_values.usingHandPosForScore, value); }
    void setVentilationRateMinHPCPR(uint value)                            { store(m_values.ventilationRateMinHPCPR, value); }
    void setVentilationRateMaxHPCPR(uint value)                            { store(m_values.ventilationRateMaxHPCPR, value); }
    void setHPGuidelinesAvailable(bool value)                              { store(m_values.hpGuidelinesAvailable, value); }
    /// @}
    // clang-format on

    /// @{
    /// The manikin's flag of the set in use: a set that arrives with it becomes the session's
    /// active set. Carried and compared, but no property.
    bool manikinGuidelineFlag() const { return m_values.manikinGuidelineFlag; }
    void setManikinGuidelineFlag(bool flag) { store(m_values.manikinGuidelineFlag, flag); }
    /// @}

    /// Takes over the manikin's structure as it is laid out. Computes no target rate and
    /// announces nothing.
    void clone(const bls_2010::GuidelineValues_t &values);
    /// Takes over every value of \a other but UsingHandPosForScore, which is the host's own
    /// choice, and announces it.
    void clone(const CPRGuidelines &other);
    /// clone(), announced once more.
    CPRGuidelines &operator=(const CPRGuidelines &other);
    /// Takes over the manikin's structure, computes VentilationRateTargetForVentilationsOnly, and
    /// announces it. Unlike clone() it takes UseAbsoluteDepth from the structure's
    /// default-values flag and leaves UsingDefaultValues alone; that is intended.
    void setValues(bls_2010::GuidelineValues_t &values);
    /// Writes the set into the manikin's structure; depths are truncated to whole mm.
    void fillManikinStruct(bls_2010::GuidelineValues_t &values) const;

#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
    /// Takes the message RPL_GUIDELINES (75); false for any other (null, too), and for one that is
    /// too short, which changes nothing. Announces the change. It hides the data object's operation
    /// and does not replace it, as intended: a set that is seen as a data object takes no message.
    bool incomingMsg(const bls_2010::RMessage *msg);
#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif

    /// Equal in all but UsingHandPosForScore.
    bool operator==(const CPRGuidelines &other) const;
    /// The opposite.
    bool operator!=(const CPRGuidelines &other) const
    {
        return !(*this == other);
    }
    /// Equal in what a manikin of the older generation knows; deliberately narrower than ==.
    bool oldManikinEquals(const CPRGuidelines &other) const;

    /// The identifier \a id as a rich text for people.
    Q_INVOKABLE QString idAsString(const QString &id) const;
    /// The patient's age letter that the identifier of this set carries, or \a defaultValue when
    /// the identifier has neither of the two forms that carry one.
    QString patientAgeType(const QString &defaultValue) const;

    /// Writes the set as the XML document "GuideLineSettings".
    void write(QXmlStreamWriter *writer) override;
    /// Reads what write() wrote; a document with another root element changes nothing. An element
    /// that names no property becomes a dynamic property; behind 1,000 of those they are skipped.
    void read(QXmlStreamReader *reader) override;

Q_SIGNALS:
    /// Values have changed. Not emitted while the owning session is receiving stored data.
    void guidelinesChanged();

public Q_SLOTS:
    /// Emits guidelinesChanged(), unless the session is receiving stored data.
    void onGuidelineChangedTimeout();

private:
    // clang-format off
    struct Values {
        QString guidelinesID;
        bool    usingDefaultValues                                 = true;
        bool    useAbsoluteDepth                                   = false;
        bool    isOfficial                                         = false;
        int     compressionDetectDepth                             = 1000;
        int     compressionDepthMin                                = 5000;
        int     compressionDepthMax                                = 6000;
        int     compressionTooDeepSetting                          = 0;
        int     compressionAcceptableReleaseDepth                  = 500;
        int     compressionDetectForce                             = 2000;
        int     compressionAcceptableReleaseForce                  = 2500;
        int     compressionRateMin                                 = 100;
        int     compressionRateMax                                 = 120;
        int     compressionRateTarget                              = 110;
        int     compressionInactivityLevel0TimeoutVentilationsOnly = 8;
        int     compressionInactivityLevel0TimeoutCPR              = 3;
        int     compressionInactivityLevel1Timeout                 = 10;
        int     compressionInactivityLevel2Timeout                 = 20;
        int     compressionInactivityLevel3Timeout                 = 15;
        int     compressionsBetweenVentilations                    = 0;
        int     compressionsBetweenVentilationsTwoRescuer          = 0;
        int     minimumAcceptedFlowtimePercentageCompressionsOnly  = 100;
        int     minimumAcceptedFlowtimePercentageSingleRescuerCPR  = 70;
        int     minimumAcceptedFlowtimePercentageTwoRescuerCPR     = 80;
        int     ventilationDetectVolume                            = 100;
        int     ventilationVolumeMin                               = 400;
        int     ventilationVolumeMax                               = 700;
        int     ventilationRateMinDuringCPR                        = 4;
        int     ventilationRateMaxDuringCPR                        = 12;
        int     ventilationRateTargetDuringCPR                     = 8;
        int     ventilationRateMinDuringTwoRescuerCPR              = 4;
        int     ventilationRateMaxDuringTwoRescuerCPR              = 12;
        int     ventilationRateTargetDuringTwoRescuerCPR           = 8;
        int     ventilationRateMinForVentilationsOnly              = 8;
        int     ventilationRateMaxForVentilationsOnly              = 14;
        int     ventilationRateTargetForVentilationsOnly           = 11;
        int     ventilationInflationTimeMin                        = 700;
        int     ventilationInflationTimeMax                        = 1500;
        int     ventilationInactivityTimeout                       = 30;
        int     ventilationsBetweenCompressions                    = 0;
        int     preVentilationsUsage                               = 0;
        int     preVentilationsMax                                 = 5;
        int     preVentilationsMin                                 = 5;
        bool    usingHandPosForScore                               = true;
        uint    ventilationRateMinHPCPR                            = 0;
        uint    ventilationRateMaxHPCPR                            = 0;
        bool    hpGuidelinesAvailable                              = false;
        bool    manikinGuidelineFlag                               = false;
    };
    // clang-format on
    struct Layouts; // a row for each value, and what the link makes of it

    template <typename T> void store(T &field, T value)
    {
        field = value;
        sendSignal();
    }
    void announceChanges();

    Values m_values;
};

#endif
