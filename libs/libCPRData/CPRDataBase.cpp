// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRDataBase.h"

#include "CPRData.h"
#include "private/NumberText.h"

#include <QMetaEnum>
#include <QMetaProperty>
#include <QThread>
#include <QTimer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

constexpr int notificationDelayMs = 1;

QTimer *newSignalTimer(QObject *parent)
{
    auto *timer = new QTimer(parent);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(notificationDelayMs);
    timer->setSingleShot(true);
    return timer;
}

} // namespace

// The hosts' labels rely on this table as it is: two of its names embed a scope, and
// CompressionDepthMaxNoScoring has no unit although it is a depth.
// clang-format off
const QMap<QString, CPRDataBase::ParameterUnit> CPRDataBase::parameterUnit = {
    {QStringLiteral("CompressionDetectDepth"),                                         hmm},
    {QStringLiteral("CompressionDepthMin"),                                            hmm},
    {QStringLiteral("CompressionDepthMax"),                                            hmm},
    {QStringLiteral("CompressionDepthMaxNoScoring"),                                   none},
    {QStringLiteral("CompressionAcceptableReleaseDepth"),                              hmm},
    {QStringLiteral("CompressionDetectForce"),                                         hmm},
    {QStringLiteral("CompressionAcceptableReleaseForce"),                              hmm},
    {QStringLiteral("CompressionRateMin"),                                             rpm},
    {QStringLiteral("CompressionRateMax"),                                             rpm},
    {QStringLiteral("CompressionRateTarget"),                                          rpm},
    {QStringLiteral("CompressionInactivityLevel0TimeoutVentilationsOnly"),             sec},
    {QStringLiteral("CompressionInactivityLevel0TimeoutCPR"),                          sec},
    {QStringLiteral("CompressionInactivityLevel1Timeout"),                             sec},
    {QStringLiteral("CompressionInactivityLevel2Timeout"),                             sec},
    {QStringLiteral("CompressionInactivityLevel3Timeout"),                             sec},
    {QStringLiteral("CompressionsBetweenVentilations"),                                none},
    {QStringLiteral("CompressionsBetweenVentilationsTwoRescuer"),                      none},
    {QStringLiteral("MinimumAcceptedFlowtimeCPRDataBase::percentageCompressionsOnly"), percent},
    {QStringLiteral("MinimumAcceptedFlowtimeCPRDataBase::percentageSingleRescuerCPR"), percent},
    {QStringLiteral("MinimumAcceptedFlowtimeCPRDataBase::percentageTwoRescuerCPR"),    percent},
    {QStringLiteral("VentilationDetectVolume"),                                        ml},
    {QStringLiteral("VentilationVolumeMin"),                                           ml},
    {QStringLiteral("VentilationVolumeMax"),                                           ml},
    {QStringLiteral("VentilationRateMinDuringCPR"),                                    rpm},
    {QStringLiteral("VentilationRateMaxDuringCPR"),                                    rpm},
    {QStringLiteral("VentilationRateTargetDuringCPR"),                                 rpm},
    {QStringLiteral("VentilationRateMinDuringTwoRescuerCPR"),                          rpm},
    {QStringLiteral("VentilationRateMaxDuringTwoRescuerCPR"),                          rpm},
    {QStringLiteral("VentilationRateTargetDuringTwoRescuerCPR"),                       rpm},
    {QStringLiteral("VentilationRateMinForVentilationsOnly"),                          rpm},
    {QStringLiteral("VentilationRateMaxForVentilationsOnly"),                          rpm},
    {QStringLiteral("VentilationRateTargetForVentilationsOnly"),                       rpm},
    {QStringLiteral("VentilationRateMinHPCPR"),                                        rpm},
    {QStringLiteral("VentilationRateMaxHPCPR"),                                        rpm},
    {QStringLiteral("VentilationInflationTimeMin"),                                    ms},
    {QStringLiteral("VentilationInflationTimeMax"),                                    ms},
    {QStringLiteral("VentilationInactivityTimeout"),                                   sec},
    {QStringLiteral("VentilationsBetweenCompressions"),                                none},
    {QStringLiteral("UseAbsoluteDepth"),                                               none},
    {QStringLiteral("UsingDefaultValues"),                                             none},
    {QStringLiteral("UsingHandPosForScore"),                                           none},
};
// clang-format on

CPRDataBase::CPRDataBase(CPRData *cprData)
    : QObject(cprData), m_signalTimer(newSignalTimer(this)), m_cprData(cprData)
{
}

CPRDataBase::CPRDataBase(const CPRDataBase &other, CPRData *cprData)
    : QObject(cprData), m_signalTimer(newSignalTimer(this)), m_sessionTime(other.m_sessionTime),
      m_cprData(cprData)
{
}

CPRDataBase::~CPRDataBase() = default;

void CPRDataBase::setSessionTime(int a_SessionTime)
{
    m_sessionTime = a_SessionTime;
    Q_EMIT sessionTimeChanged(a_SessionTime);
}

CPRCompressionData *CPRDataBase::compressionData() const
{
    return m_cprData ? m_cprData->compressionData() : nullptr;
}

CPRVentilationData *CPRDataBase::ventilationData() const
{
    return m_cprData ? m_cprData->ventilationData() : nullptr;
}

void CPRDataBase::initialize()
{
}

void CPRDataBase::reset()
{
    m_sessionTime = 0;
}

void CPRDataBase::write(QXmlStreamWriter * /*writer*/)
{
}

void CPRDataBase::read(QXmlStreamReader * /*reader*/)
{
}

bool CPRDataBase::incomingMsg(bls_2010::RMessage * /*msg*/)
{
    return false;
}

void CPRDataBase::sendSignal()
{
    QTimer *timer = m_signalTimer;
    // A running timer is left alone: restarted on every change, it would never fire while changes
    // keep coming.
    const auto start = [timer] {
        if (!timer->isActive())
            timer->start();
    };
    if (timer->thread() == QThread::currentThread())
        start();
    else
        QMetaObject::invokeMethod(timer, start);
}

void CPRDataBase::writeAttribFromProperty(QXmlStreamWriter *writer, const QString &name) const
{
    const int index = metaObject()->indexOfProperty(name.toLatin1().constData());
    if (!writer || index < 0)
        return;
    const QMetaProperty property = metaObject()->property(index);
    const QVariant value = property.read(this);
    if (property.isEnumType()) {
        const char *key = property.enumerator().valueToKey(value.toInt());
        writer->writeAttribute(name, QString::fromLatin1(key));
    } else {
        writer->writeAttribute(name, variantToString(value));
    }
}

void CPRDataBase::readAttribsToProperties(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    const QXmlStreamAttributes attributes = reader->attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        const int index = metaObject()->indexOfProperty(attribute.name().toLatin1().constData());
        if (index >= 0)
            metaObject()->property(index).write(this, attribute.value().toString());
    }
}

QVariant CPRDataBase::variantFromString(const QString &text)
{
    return NumberText::toVariant(text);
}

QString CPRDataBase::variantToString(const QVariant &value)
{
    if (value.userType() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    const QString text = NumberText::fromVariant(value);
    // Of half a surrogate pair, which is no character, the writer would keep the half and swallow
    // what follows. UTF-8 makes a question mark of it.
    const bool mayHaveHalf =
        std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSurrogate(); });
    return mayHaveHalf ? QString::fromUtf8(text.toUtf8()) : text;
}
