// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRWAVEFORMINFO_H
#define CPRWAVEFORMINFO_H

#include "CPRDataBase.h"

/// Describes a recorded wave: its sampling, its scale, and the archive member with its samples.
///
/// Every setter announces itself through sendSignal(), so that a burst of changes gives one
/// waveformInfoChanged().
class CPRDATA_EXPORT CPRWaveformInfo : public CPRDataBase {
    Q_OBJECT

    // clang-format off
    /// Physical value of one sample unit, in scaleUnits.
    Q_PROPERTY(float        lsbValue        READ lsbValue        WRITE setLsbValue        NOTIFY waveformInfoChanged)
    /// Unit of the scale and of lsbValue.
    Q_PROPERTY(ScaleUnit    scaleUnits      READ scaleUnits      WRITE setScaleUnits      NOTIFY waveformInfoChanged)
    /// Display scale: units per mm on screen.
    Q_PROPERTY(float        scaleUnitsPerMM READ scaleUnitsPerMM WRITE setScaleUnitsPerMM NOTIFY waveformInfoChanged)
    /// @{
    /// Ends of the display scale, in scaleUnits.
    Q_PROPERTY(float        scaleMax        READ scaleMax        WRITE setScaleMax        NOTIFY waveformInfoChanged)
    Q_PROPERTY(float        scaleMin        READ scaleMin        WRITE setScaleMin        NOTIFY waveformInfoChanged)
    /// @}
    /// Offset of the display scale, in scaleUnits.
    Q_PROPERTY(float        offset          READ offset          WRITE setOffset          NOTIFY waveformInfoChanged)
    /// Archive member that holds the samples.
    Q_PROPERTY(QString      fileName        READ fileName        WRITE setFileName        NOTIFY waveformInfoChanged)
    /// Time value that the manikin reports with the description, ms; of the volume wave also the
    /// session time at which its first sample came.
    Q_PROPERTY(int          msecs           READ msecs           WRITE setMsecs           NOTIFY waveformInfoChanged)
    /// What the wave shows.
    Q_PROPERTY(WaveformType type            READ type            WRITE setType            NOTIFY waveformInfoChanged)
    /// Width of a stored sample; 16 in the session's waves.
    Q_PROPERTY(int          bitsPerSample   READ bitsPerSample   WRITE setBitsPerSample   NOTIFY waveformInfoChanged)
    /// Samples per second, 1 to 1000. Writing it sets the sample period too.
    Q_PROPERTY(int          sampleRate      READ sampleRate      WRITE setSampleRate      NOTIFY waveformInfoChanged)
    /// Number of samples; set just before the description is written.
    Q_PROPERTY(int          length          READ length          WRITE setLength          NOTIFY waveformInfoChanged)
    // clang-format on

public:
    /// What a wave shows; the sessions of this library have comp and vent.
    enum WaveformType : int {
        other = 0,
        chestForce = 1,
        chestAccel = 2,
        refAccel = 3,
        comp = 4,
        vent = 5
    };
    Q_ENUM(WaveformType)

    /// Units of a display scale.
    enum ScaleUnit : int { gram = 0, milliG = 1, mm = 2, l = 3, ml = 4 };
    Q_ENUM(ScaleUnit)

    /// @{
    /// An empty description, or a copy of \a original, for the session \a cprData (may be null),
    /// whose child it becomes.
    explicit CPRWaveformInfo(CPRData *cprData);
    CPRWaveformInfo(const CPRWaveformInfo &original, CPRData *cprData);
    /// @}
    ~CPRWaveformInfo() override;

    // clang-format off
    /// @{
    /// The properties of the same names.
    float        lsbValue() const        { return m_values.lsbValue; }
    ScaleUnit    scaleUnits() const      { return m_values.scaleUnits; }
    float        scaleUnitsPerMM() const { return m_values.scaleUnitsPerMM; }
    float        scaleMax() const        { return m_values.scaleMax; }
    float        scaleMin() const        { return m_values.scaleMin; }
    float        offset() const          { return m_values.offset; }
    QString      fileName() const        { return m_values.fileName; }
    int          msecs() const           { return m_values.msecs; }
    WaveformType type() const            { return m_values.type; }
    int          bitsPerSample() const   { return m_values.bitsPerSample; }
    /// @}
    /// Time between two samples, ms; 0 until it is known.
    int          samplePeriod() const    { return m_values.samplePeriod; }
    /// @{
    /// The properties of the same names.
    int          sampleRate() const      { return m_values.sampleRate; }
    int          length() const          { return m_values.length; }

    void setLsbValue(float value)          { store(m_values.lsbValue, value); }
    void setScaleUnits(ScaleUnit value)    { store(m_values.scaleUnits, value); }
    void setScaleUnitsPerMM(float value)   { store(m_values.scaleUnitsPerMM, value); }
    void setScaleMax(float value)          { store(m_values.scaleMax, value); }
    void setScaleMin(float value)          { store(m_values.scaleMin, value); }
    void setOffset(float value)            { store(m_values.offset, value); }
    void setFileName(const QString &value) { store(m_values.fileName, value); }
    void setMsecs(int value)               { store(m_values.msecs, value); }
    void setType(WaveformType value)       { store(m_values.type, value); }
    void setBitsPerSample(int value)       { store(m_values.bitsPerSample, value); }
    void setLength(int value)              { store(m_values.length, value); }
    /// @}
    // clang-format on

    /// @{
    /// Sets rate and period (integer division of 1000 ms). A value that is not positive, or that
    /// would make the other 0, is refused with a warning: the description keeps its values.
    void setSampleRate(int rate);
    void setSamplePeriod(int period);
    /// @}

    /// Takes sample period and time value from RPL_WAVEINFO (77); false for any other message.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    /// Writes the element "waveForm".
    void write(QXmlStreamWriter *writer) override;
    /// Reads the next element if it is a "waveForm"; otherwise nothing changes.
    void read(QXmlStreamReader *reader) override;

Q_SIGNALS:
    /// Some of the properties have changed; one for a burst of changes.
    void waveformInfoChanged();

private:
    // clang-format off
    struct Values {
        float        lsbValue        = 0;
        ScaleUnit    scaleUnits      = mm;
        float        scaleUnitsPerMM = 0;
        float        scaleMax        = 0;
        float        scaleMin        = 0;
        float        offset          = 0;
        QString      fileName;
        int          msecs           = 0;
        WaveformType type            = other;
        int          bitsPerSample   = 0;
        int          samplePeriod    = 0;
        int          sampleRate      = 0;
        int          length          = 0;
    };
    // clang-format on

    template <typename T> void store(T &field, const T &value)
    {
        field = value;
        sendSignal();
    }
    void announceChanges();

    Values m_values;
    int m_refused = 0; // rates and periods, to be warned of
};

#endif
