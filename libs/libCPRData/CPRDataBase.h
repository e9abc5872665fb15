// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRDATABASE_H
#define CPRDATABASE_H

#include "cprdata_export.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

class CPRCompressionData;
class CPRData;
class CPRVentilationData;
class QTimer;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace bls_2010 {
class RMessage;
}

/// Common base of the data objects that a session owns: the event list, the guideline set, the
/// two waveforms and their descriptions.
///
/// It gives them the session time, a notification that gathers a burst of changes into one
/// signal, the operations with which the session drives its objects, and a binding between
/// properties and XML attributes. Everything but sendSignal() has to be called on the thread of
/// the session.
class CPRDATA_EXPORT CPRDataBase : public QObject {
    Q_OBJECT

    /// Session time in ms. QML hosts listen to sessionTimeChanged(), which carries the value.
    Q_PROPERTY(int sessionTime READ sessionTime CONSTANT)

public:
    /// Units of guideline values; the key is the unit's text. hmm are hundredths of a millimetre.
    // clang-format off
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
        vpm     = 13,
        cpm     = 14,
        milliG  = 15,
        microG  = 16,
        g       = 17,
        ms      = 18,
        us      = 19,
        ml      = 20,
        J       = 21
    };
    // clang-format on
    Q_ENUM(ParameterUnit)

    /// The unit of each guideline value by its name, for labels in a host.
    static const QMap<QString, ParameterUnit> parameterUnit;

    /// Becomes a child of \a cprData, which may be null.
    explicit CPRDataBase(CPRData *cprData);
    /// Copies the session time; the owner is \a cprData.
    CPRDataBase(const CPRDataBase &other, CPRData *cprData);
    ~CPRDataBase() override;

    /// Session time in ms.
    int sessionTime() const { return m_sessionTime; }
    /// Stores \a a_SessionTime (ms) and emits sessionTimeChanged(), also when it is unchanged.
    void setSessionTime(int a_SessionTime);

    /// The session that owns this object; null when there is none.
    CPRData *cprData() const { return m_cprData; }
    /// @{
    /// The session's waveforms; null without a session.
    CPRCompressionData *compressionData() const;
    CPRVentilationData *ventilationData() const;
    /// @}

    /// Brings the object to the state for a newly connected manikin. Does nothing here.
    virtual void initialize();
    /// Empties the object for a new session. Sets the session time to 0 without a signal.
    virtual void reset();
    /// Writes the object as XML. Does nothing here.
    virtual void write(QXmlStreamWriter *writer);
    /// Reads what write() wrote. Does nothing here.
    virtual void read(QXmlStreamReader *reader);
// CPRGuidelines hides this operation as intended, of which one compiler warns here and one there.
#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
    /// Takes a manikin message; false when the message is not for this object, as always here.
    virtual bool incomingMsg(bls_2010::RMessage *msg);
#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif
    /// Announces a change: one timeout of the signal timer follows within about 1 ms, however
    /// often this is called meanwhile. May be called from any thread.
    virtual void sendSignal();

    /// Writes the property \a name as an attribute of the current element: an enumeration by key
    /// (empty when the value has none), a bool as 1 or 0, anything else as its text. Writes
    /// nothing when there is no such property.
    void writeAttribFromProperty(QXmlStreamWriter *writer, const QString &name) const;
    /// Sets every property that an attribute of the current element names; other attributes are
    /// passed over, and a text that does not convert leaves its property unchanged.
    void readAttribsToProperties(QXmlStreamReader *reader);
    /// The text as an int when all of it is a decimal integer, else as a float when all of it is
    /// a number, else as it stands.
    static QVariant variantFromString(const QString &text);
    /// The text form of a value in a file: 1 and 0 for a bool, QVariant::toString() otherwise, with
    /// a question mark for half a surrogate pair.
    static QString variantToString(const QVariant &value);

Q_SIGNALS:
    /// Emitted by setSessionTime(); \a a_SessionTime in ms.
    void sessionTimeChanged(int a_SessionTime);

protected:
    /// The timer behind sendSignal(); subclasses connect its timeout to their change signal.
    QTimer *signalTimer() const
    {
        return m_signalTimer;
    }

private:
    QTimer *m_signalTimer; // child of this object
    int m_sessionTime = 0;
    CPRData *m_cprData; // not owned: it is the parent
};

#endif
