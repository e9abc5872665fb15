// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRGuidelines.h"

#include "CPRData.h"
#include "private/Limits.h"
#include "private/MessageLayouts.h"
#include "private/XmlReading.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/GuidelineValues.h>
#include <chestboard/RMessage.h>

#include <QCoreApplication>
#include <QMetaProperty>
#include <QTimer>
#include <QXmlStreamWriter>

#include <tuple>

namespace {

// The manikin holds depths in whole mm, the set in hundredths.
constexpr int hmmPerMm = 100;

template <typename Structure, typename Raw, typename Owner, typename T> struct FieldOfStructure {
    Raw Structure::*raw;
    T Owner::*field;
    int scale;
};

template <typename Structure, typename Raw, typename Owner, typename T>
constexpr FieldOfStructure<Structure, Raw, Owner, T> pair(Raw Structure::*raw, T Owner::*field,
                                                          int scale = 1)
{
    return {raw, field, scale};
}

int midway(int min, int max)
{
    return min + (max - min) / 2;
}

} // namespace

struct CPRGuidelines::Layouts {
    using V = Values;
    using G = bls_2010::GuidelineValues_t;

    // clang-format off

    // The manikin's structure. The relative-depth flag, the default-values flag and the identifier
    // are not plain fields and stand in the code.
    static constexpr std::tuple structure {
        pair(&G::compressionAcceptableReleaseForce,                  &V::compressionAcceptableReleaseForce),
        pair(&G::compressionAcceptableReleaseDepth,                  &V::compressionAcceptableReleaseDepth, hmmPerMm),
        pair(&G::compressionDepthMin,                                &V::compressionDepthMin,               hmmPerMm),
        pair(&G::compressionDepthMax,                                &V::compressionDepthMax,               hmmPerMm),
        pair(&G::compressionRateTarget,                              &V::compressionRateTarget),
        pair(&G::compressionInactivityLevel3Timeout,                 &V::compressionInactivityLevel3Timeout),
        pair(&G::compressionInactivityLevel2Timeout,                 &V::compressionInactivityLevel2Timeout),
        pair(&G::compressionInactivityLevel1Timeout,                 &V::compressionInactivityLevel1Timeout),
        pair(&G::compressionInactivityLevel0TimeoutCPR,              &V::compressionInactivityLevel0TimeoutCPR),
        pair(&G::compressionInactivityLevel0TimeoutVentilationsOnly, &V::compressionInactivityLevel0TimeoutVentilationsOnly),
        pair(&G::compressionRateMin,                                 &V::compressionRateMin),
        pair(&G::compressionRateMax,                                 &V::compressionRateMax),
        pair(&G::compressionDetectDepth,                             &V::compressionDetectDepth,            hmmPerMm),
        pair(&G::compressionsBetweenVentilations,                    &V::compressionsBetweenVentilations),
        pair(&G::compressionsBetweenVentilationsTwoRescuer,          &V::compressionsBetweenVentilationsTwoRescuer),
        pair(&G::minimumAcceptedFlowtimePercentageCompressionsOnly,  &V::minimumAcceptedFlowtimePercentageCompressionsOnly),
        pair(&G::minimumAcceptedFlowtimePercentageSingleRescuerCPR,  &V::minimumAcceptedFlowtimePercentageSingleRescuerCPR),
        pair(&G::minimumAcceptedFlowtimePercentageTwoRescuerCPR,     &V::minimumAcceptedFlowtimePercentageTwoRescuerCPR),
        pair(&G::compressionTooDeepSetting,                          &V::compressionTooDeepSetting),
        pair(&G::ventilationDetectVolume,                            &V::ventilationDetectVolume),
        pair(&G::ventilationVolumeMin,                               &V::ventilationVolumeMin),
        pair(&G::ventilationVolumeMax,                               &V::ventilationVolumeMax),
        pair(&G::ventilationInflationTimeMin,                        &V::ventilationInflationTimeMin),
        pair(&G::ventilationInflationTimeMax,                        &V::ventilationInflationTimeMax),
        pair(&G::ventilationRateMinDuringCPR,                        &V::ventilationRateMinDuringCPR),
        pair(&G::ventilationRateMaxDuringCPR,                        &V::ventilationRateMaxDuringCPR),
        pair(&G::ventilationRateMinDuringTwoRescuerCPR,              &V::ventilationRateMinDuringTwoRescuerCPR),
        pair(&G::ventilationRateMaxDuringTwoRescuerCPR,              &V::ventilationRateMaxDuringTwoRescuerCPR),
        pair(&G::ventilationRateMinHPCPR,                            &V::ventilationRateMinHPCPR),
        pair(&G::ventilationRateMaxHPCPR,                            &V::ventilationRateMaxHPCPR),
        pair(&G::ventilationRateMinForVentilationsOnly,              &V::ventilationRateMinForVentilationsOnly),
        pair(&G::ventilationRateMaxForVentilationsOnly,              &V::ventilationRateMaxForVentilationsOnly),
        pair(&G::ventilationInactivityTimeout,                       &V::ventilationInactivityTimeout),
        pair(&G::ventilationsBetweenCompressions,                    &V::ventilationsBetweenCompressions),
        pair(&G::preVentilationsUsage,                               &V::preVentilationsUsage),
        pair(&G::preVentilationsMin,                                 &V::preVentilationsMin),
        pair(&G::preVentilationsMax,                                 &V::preVentilationsMax),
        pair(&G::isOfficial,                                         &V::isOfficial),
        pair(&G::manikinGuidelineFlag,                               &V::manikinGuidelineFlag)
    };

    // What a manikin of the older generation knows.
    static auto oldManikinValues(const Values &v)
    {
        return std::tie(
            v.manikinGuidelineFlag,
            v.usingDefaultValues,
            v.useAbsoluteDepth,
            v.compressionDetectDepth,
            v.compressionDepthMin,
            v.compressionDepthMax,
            v.compressionAcceptableReleaseDepth,
            v.compressionDetectForce,
            v.compressionAcceptableReleaseForce,
            v.compressionRateMin,
            v.compressionRateMax,
            v.compressionRateTarget,
            v.compressionInactivityLevel0TimeoutVentilationsOnly,
            v.compressionInactivityLevel0TimeoutCPR,
            v.compressionInactivityLevel1Timeout,
            v.compressionInactivityLevel2Timeout,
            v.compressionInactivityLevel3Timeout,
            v.compressionsBetweenVentilations,
            v.compressionsBetweenVentilationsTwoRescuer,
            v.minimumAcceptedFlowtimePercentageCompressionsOnly,
            v.minimumAcceptedFlowtimePercentageSingleRescuerCPR,
            v.minimumAcceptedFlowtimePercentageTwoRescuerCPR,
            v.ventilationDetectVolume,
            v.ventilationVolumeMin,
            v.ventilationVolumeMax,
            v.ventilationRateMinDuringCPR,
            v.ventilationRateMaxDuringCPR,
            v.ventilationRateTargetDuringCPR,
            v.ventilationRateMinDuringTwoRescuerCPR,
            v.ventilationRateMaxDuringTwoRescuerCPR,
            v.ventilationRateTargetDuringTwoRescuerCPR,
            v.ventilationRateMinForVentilationsOnly,
            v.ventilationRateMaxForVentilationsOnly,
            v.ventilationRateTargetForVentilationsOnly,
            v.ventilationInflationTimeMin,
            v.ventilationInflationTimeMax,
            v.ventilationInactivityTimeout,
            v.ventilationsBetweenCompressions);
    }

    // What only newer manikins know.
    static auto newManikinValues(const Values &v)
    {
        return std::tie(
            v.guidelinesID,
            v.isOfficial,
            v.preVentilationsUsage,
            v.preVentilationsMin,
            v.preVentilationsMax,
            v.compressionTooDeepSetting,
            v.ventilationRateMinHPCPR,
            v.ventilationRateMaxHPCPR,
            v.hpGuidelinesAvailable);
    }
    // clang-format on

    template <typename Raw, typename T>
    static void read(const G &from, const FieldOfStructure<G, Raw, V, T> &row, V &values)
    {
        if constexpr (std::is_same_v<T, bool>)
            values.*row.field = from.*row.raw != 0;
        else
            values.*row.field = static_cast<T>(from.*row.raw) * static_cast<T>(row.scale);
    }

    template <typename Raw, typename T>
    static void write(const V &values, const FieldOfStructure<G, Raw, V, T> &row, G &to)
    {
        to.*row.raw = static_cast<Raw>(values.*row.field / static_cast<T>(row.scale));
    }

    static void readStructure(const G &from, V &values)
    {
        std::apply([&](const auto &...row) { (read(from, row, values), ...); }, structure);
        values.useAbsoluteDepth = from.useRelativeDepth == 0;
        values.guidelinesID = QString::fromStdString(from.guidelinesID);
    }
};

CPRGuidelines::CPRGuidelines(CPRData *cprData) : CPRDataBase(cprData)
{
    announceChanges();
}

CPRGuidelines::CPRGuidelines(const bls_2010::GuidelineValues_t &values, CPRData *cprData)
    : CPRDataBase(cprData)
{
    clone(values);
    announceChanges();
}

CPRGuidelines::CPRGuidelines(CPRGuidelines *other) : CPRDataBase(other ? other->cprData() : nullptr)
{
    if (other)
        clone(*other);
    announceChanges();
}

CPRGuidelines::~CPRGuidelines() = default;

void CPRGuidelines::announceChanges()
{
    connect(signalTimer(), &QTimer::timeout, this, &CPRGuidelines::onGuidelineChangedTimeout);
}

void CPRGuidelines::setGuidelinesID(const QString &id)
{
    if (id != m_values.guidelinesID)
        store(m_values.guidelinesID, id);
}

void CPRGuidelines::clone(const bls_2010::GuidelineValues_t &values)
{
    Layouts::readStructure(values, m_values);
    m_values.usingDefaultValues = values.usingDefaultValues != 0;
}

void CPRGuidelines::clone(const CPRGuidelines &other)
{
    const bool usingHandPosForScore = m_values.usingHandPosForScore;
    m_values = other.m_values;
    m_values.usingHandPosForScore = usingHandPosForScore;
    sendSignal();
}

CPRGuidelines &CPRGuidelines::operator=(const CPRGuidelines &other)
{
    clone(other);
    sendSignal();
    return *this;
}

void CPRGuidelines::setValues(bls_2010::GuidelineValues_t &values)
{
    Layouts::readStructure(values, m_values);
    // Intended: this reader lets the default-values flag decide over the depth kind.
    m_values.useAbsoluteDepth = values.usingDefaultValues != 0;
    m_values.ventilationRateTargetForVentilationsOnly = midway(
        values.ventilationRateMinForVentilationsOnly, values.ventilationRateMaxForVentilationsOnly);
    sendSignal();
}

void CPRGuidelines::fillManikinStruct(bls_2010::GuidelineValues_t &values) const
{
    std::apply([&](const auto &...row) { (Layouts::write(m_values, row, values), ...); },
               Layouts::structure);
    values.useRelativeDepth = m_values.useAbsoluteDepth ? 0 : 1;
    values.usingDefaultValues = m_values.usingDefaultValues ? 1 : 0;
    values.guidelinesID = m_values.guidelinesID.toStdString();
}

bool CPRGuidelines::incomingMsg(const bls_2010::RMessage *msg)
{
    if (MessageLayouts::identifierOf(msg) != CommunicationIDs::RPL_GUIDELINES)
        return false;
    const unsigned int length = msg->getDataLength();
    // The data length is the index of the last byte.
    if (length < MessageLayouts::guidelineIdByte - 1) {
        qWarning("Invalid guideline received");
        return false;
    }

    bls_2010::GuidelineValues_t sent;
    MessageLayouts::store(sent, *msg, MessageLayouts::guidelines);
    clone(sent);
    Values &v = m_values;
    v.ventilationRateTargetForVentilationsOnly =
        midway(v.ventilationRateMinForVentilationsOnly, v.ventilationRateMaxForVentilationsOnly);
    v.ventilationRateTargetDuringCPR =
        midway(v.ventilationRateMinDuringCPR, v.ventilationRateMaxDuringCPR);
    v.ventilationRateTargetDuringTwoRescuerCPR =
        midway(v.ventilationRateMinDuringTwoRescuerCPR, v.ventilationRateMaxDuringTwoRescuerCPR);

    QString identifier;
    bool ok = true;
    for (unsigned int i = MessageLayouts::guidelineIdByte; ok && i <= length; ++i) {
        const quint8 character = msg->getContentByte(i, ok);
        if (ok)
            identifier.append(QLatin1Char(static_cast<char>(character)));
    }
    if (identifier.isEmpty())
        qWarning("CPRGuidelines::incomingMsg - empty guideline ID");
    v.guidelinesID = identifier;
    sendSignal();
    return true;
}

bool CPRGuidelines::operator==(const CPRGuidelines &other) const
{
    return Layouts::newManikinValues(m_values) == Layouts::newManikinValues(other.m_values)
        && oldManikinEquals(other);
}

bool CPRGuidelines::oldManikinEquals(const CPRGuidelines &other) const
{
    return Layouts::oldManikinValues(m_values) == Layouts::oldManikinValues(other.m_values);
}

QString CPRGuidelines::idAsString(const QString &id) const
{
    if (id.startsWith(QLatin1String("custom"), Qt::CaseInsensitive))
        return QCoreApplication::translate("CPR GuidelinesSettings", "Custom");
    return QStringLiteral("%1 (%2) - %3<br><font size=\"2\">%4</font>")
        .arg(id.left(4), id.mid(5, 2), id.mid(8, 3), id.right(8));
}

QString CPRGuidelines::patientAgeType(const QString &defaultValue) const
{
    const QString &id = m_values.guidelinesID;
    if (id.size() == 25)
        return id.mid(12, 1);
    if (id.size() == 8 && id.startsWith(QLatin1String("Custom.")))
        return id.mid(7, 1);
    return defaultValue;
}

void CPRGuidelines::write(QXmlStreamWriter *writer)
{
    static const QMetaEnum units = QMetaEnum::fromType<ParameterUnit>();

    if (!writer)
        return;
    writer->writeStartDocument();
    writer->writeStartElement(QStringLiteral("GuideLineSettings"));
    writer->writeNamespace(QStringLiteral("http://www.w3.org/2001/XMLSchema-instance"),
                           QStringLiteral("xsi"));
    writer->writeNamespace(QStringLiteral("http://www.w3.org/2001/XMLSchema"),
                           QStringLiteral("xsd"));
    for (int i = 0; i < metaObject()->propertyCount(); ++i) {
        const QMetaProperty property = metaObject()->property(i);
        const QString name = QString::fromLatin1(property.name());
        const QVariant value = property.read(this);
        if (name == QLatin1String("objectName") || name == QLatin1String("sessionTime")
            || !value.isValid()) {
            continue;
        }
        writer->writeStartElement(name);
        writer->writeAttribute(QStringLiteral("value"), variantToString(value));
        writer->writeAttribute(
            QStringLiteral("unit"),
            QString::fromLatin1(units.valueToKey(parameterUnit.value(name, none))));
        writer->writeEndElement();
    }
    writer->writeEndElement();
}

void CPRGuidelines::read(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    const bool hasRoot = readNextChild(*reader);
    if (!hasRoot
        || (reader->name() != QLatin1String("guidelines")
            && reader->name() != QLatin1String("GuideLineSettings"))) {
        qWarning("Unable to read guideline xml");
        return;
    }
    initialize();
    int unknown = 0; // values, which are kept for the host
    while (readNextChild(*reader)) {
        const QByteArray name = reader->name().toUtf8();
        const QXmlStreamAttributes attributes = reader->attributes();
        if (name != "objectName" && attributes.hasAttribute(QLatin1String("value"))
            && (metaObject()->indexOfProperty(name.constData()) >= 0
                || ++unknown <= Limits::maxUnknownValues)) {
            const QString text = attributes.value(QLatin1String("value")).toString();
            setProperty(name.constData(), variantFromString(text));
        }
        reader->skipCurrentElement();
    }
}

void CPRGuidelines::onGuidelineChangedTimeout()
{
    const auto *session = qobject_cast<const CPRData *>(parent());
    if (!session || !session->receiving())
        Q_EMIT guidelinesChanged();
}
