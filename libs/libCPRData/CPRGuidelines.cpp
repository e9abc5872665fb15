// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRGuidelines.h"

#include "CPRData.h"
#include "private/Limits.h"
#include "private/MessageLayouts.h"
#include "private/Units.h"
#include "private/XmlReading.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/GuidelineValues.h>
#include <chestboard/RMessage.h>

#include <QCoreApplication>
#include <QMetaProperty>
#include <QTimer>
#include <QXmlStreamWriter>

#include <algorithm>
#include <iterator>
#include <variant>

namespace {

// The manikin holds depths in whole mm, the set in hundredths.
using Units::hmmPerMm;

int midway(int min, int max)
{
    return min + (max - min) / 2;
}

} // namespace

struct Q_DECL_HIDDEN CPRGuidelines::Layouts {
    using V = Values;
    using G = bls_2010::GuidelineValues_t;

    // clang-format off

    // Who compares a value: manikins of every generation, newer ones only, or nobody.
    enum Compared { Old, New, None };

    using Number = std::variant<int V::*, uint V::*, bool V::*>;
    using Carried = std::variant<std::monostate, quint8 G::*, quint16 G::*, quint32 G::*>;

    struct Row {
        Number   value;
        Carried  carried; // by the manikin's structure
        Compared compared;
        int      scale; // of the structure's value to the set's
    };

    // All values but the identifier. Which depth is used is carried as well, but the other way round.
    static constexpr Row rows[] = {
        {&V::usingDefaultValues,                                 &G::usingDefaultValues,                                 Old,  1},
        {&V::useAbsoluteDepth,                                   {},                                                     Old,  1},
        {&V::isOfficial,                                         &G::isOfficial,                                         New,  1},
        {&V::compressionDetectDepth,                             &G::compressionDetectDepth,                             Old,  hmmPerMm},
        {&V::compressionDepthMin,                                &G::compressionDepthMin,                                Old,  hmmPerMm},
        {&V::compressionDepthMax,                                &G::compressionDepthMax,                                Old,  hmmPerMm},
        {&V::compressionTooDeepSetting,                          &G::compressionTooDeepSetting,                          New,  1},
        {&V::compressionAcceptableReleaseDepth,                  &G::compressionAcceptableReleaseDepth,                  Old,  hmmPerMm},
        {&V::compressionDetectForce,                             {},                                                     Old,  1},
        {&V::compressionAcceptableReleaseForce,                  &G::compressionAcceptableReleaseForce,                  Old,  1},
        {&V::compressionRateMin,                                 &G::compressionRateMin,                                 Old,  1},
        {&V::compressionRateMax,                                 &G::compressionRateMax,                                 Old,  1},
        {&V::compressionRateTarget,                              &G::compressionRateTarget,                              Old,  1},
        {&V::compressionInactivityLevel0TimeoutVentilationsOnly, &G::compressionInactivityLevel0TimeoutVentilationsOnly, Old,  1},
        {&V::compressionInactivityLevel0TimeoutCPR,              &G::compressionInactivityLevel0TimeoutCPR,              Old,  1},
        {&V::compressionInactivityLevel1Timeout,                 &G::compressionInactivityLevel1Timeout,                 Old,  1},
        {&V::compressionInactivityLevel2Timeout,                 &G::compressionInactivityLevel2Timeout,                 Old,  1},
        {&V::compressionInactivityLevel3Timeout,                 &G::compressionInactivityLevel3Timeout,                 Old,  1},
        {&V::compressionsBetweenVentilations,                    &G::compressionsBetweenVentilations,                    Old,  1},
        {&V::compressionsBetweenVentilationsTwoRescuer,          &G::compressionsBetweenVentilationsTwoRescuer,          Old,  1},
        {&V::minimumAcceptedFlowtimePercentageCompressionsOnly,  &G::minimumAcceptedFlowtimePercentageCompressionsOnly,  Old,  1},
        {&V::minimumAcceptedFlowtimePercentageSingleRescuerCPR,  &G::minimumAcceptedFlowtimePercentageSingleRescuerCPR,  Old,  1},
        {&V::minimumAcceptedFlowtimePercentageTwoRescuerCPR,     &G::minimumAcceptedFlowtimePercentageTwoRescuerCPR,     Old,  1},
        {&V::ventilationDetectVolume,                            &G::ventilationDetectVolume,                            Old,  1},
        {&V::ventilationVolumeMin,                               &G::ventilationVolumeMin,                               Old,  1},
        {&V::ventilationVolumeMax,                               &G::ventilationVolumeMax,                               Old,  1},
        {&V::ventilationRateMinDuringCPR,                        &G::ventilationRateMinDuringCPR,                        Old,  1},
        {&V::ventilationRateMaxDuringCPR,                        &G::ventilationRateMaxDuringCPR,                        Old,  1},
        {&V::ventilationRateTargetDuringCPR,                     {},                                                     Old,  1},
        {&V::ventilationRateMinDuringTwoRescuerCPR,              &G::ventilationRateMinDuringTwoRescuerCPR,              Old,  1},
        {&V::ventilationRateMaxDuringTwoRescuerCPR,              &G::ventilationRateMaxDuringTwoRescuerCPR,              Old,  1},
        {&V::ventilationRateTargetDuringTwoRescuerCPR,           {},                                                     Old,  1},
        {&V::ventilationRateMinForVentilationsOnly,              &G::ventilationRateMinForVentilationsOnly,              Old,  1},
        {&V::ventilationRateMaxForVentilationsOnly,              &G::ventilationRateMaxForVentilationsOnly,              Old,  1},
        {&V::ventilationRateTargetForVentilationsOnly,           {},                                                     Old,  1},
        {&V::ventilationInflationTimeMin,                        &G::ventilationInflationTimeMin,                        Old,  1},
        {&V::ventilationInflationTimeMax,                        &G::ventilationInflationTimeMax,                        Old,  1},
        {&V::ventilationInactivityTimeout,                       &G::ventilationInactivityTimeout,                       Old,  1},
        {&V::ventilationsBetweenCompressions,                    &G::ventilationsBetweenCompressions,                    Old,  1},
        {&V::preVentilationsUsage,                               &G::preVentilationsUsage,                               New,  1},
        {&V::preVentilationsMax,                                 &G::preVentilationsMax,                                 New,  1},
        {&V::preVentilationsMin,                                 &G::preVentilationsMin,                                 New,  1},
        {&V::usingHandPosForScore,                               {},                                                     None, 1},
        {&V::ventilationRateMinHPCPR,                            &G::ventilationRateMinHPCPR,                            New,  1},
        {&V::ventilationRateMaxHPCPR,                            &G::ventilationRateMaxHPCPR,                            New,  1},
        {&V::hpGuidelinesAvailable,                              {},                                                     New,  1},
        {&V::manikinGuidelineFlag,                               &G::manikinGuidelineFlag,                               Old,  1},
    };
    // clang-format on

    static int valueOf(const V &values, const Row &row)
    {
        return std::visit([&](auto field) { return static_cast<int>(values.*field); }, row.value);
    }

    static void readStructure(const G &from, V &values)
    {
        for (const Row &row : rows) {
            const auto store = [&](auto field, auto carried) {
                if constexpr (!std::is_same_v<decltype(carried), std::monostate>) {
                    using T = std::decay_t<decltype(values.*field)>;
                    values.*field = static_cast<T>(static_cast<int>(from.*carried) * row.scale);
                }
            };
            std::visit(store, row.value, row.carried);
        }
        values.useAbsoluteDepth = from.useRelativeDepth == 0;
        values.guidelinesID = QString::fromStdString(from.guidelinesID);
    }

    static void fillStructure(const V &values, G &to)
    {
        for (const Row &row : rows) {
            const auto store = [&, value = valueOf(values, row)](auto carried) {
                if constexpr (!std::is_same_v<decltype(carried), std::monostate>)
                    to.*carried =
                        static_cast<std::decay_t<decltype(to.*carried)>>(value / row.scale);
            };
            std::visit(store, row.carried);
        }
        to.useRelativeDepth = values.useAbsoluteDepth ? 0 : 1;
        to.guidelinesID = values.guidelinesID.toStdString();
    }

    // Whether all values are equal that manikins up to this generation know.
    static bool areEqual(const V &a, const V &b, Compared newest)
    {
        return std::all_of(std::begin(rows), std::end(rows), [&](const Row &row) {
            return row.compared > newest || valueOf(a, row) == valueOf(b, row);
        });
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
    const bool usingDefaultValues = m_values.usingDefaultValues;
    Layouts::readStructure(values, m_values);
    m_values.usingDefaultValues = usingDefaultValues;
    // Intended: this reader lets the default-values flag decide over the depth kind.
    m_values.useAbsoluteDepth = values.usingDefaultValues != 0;
    m_values.ventilationRateTargetForVentilationsOnly = midway(
        values.ventilationRateMinForVentilationsOnly, values.ventilationRateMaxForVentilationsOnly);
    sendSignal();
}

void CPRGuidelines::fillManikinStruct(bls_2010::GuidelineValues_t &values) const
{
    Layouts::fillStructure(m_values, values);
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
    MessageLayouts::storeIn(sent, *msg, MessageLayouts::guidelines);
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
    return m_values.guidelinesID == other.m_values.guidelinesID
        && Layouts::areEqual(m_values, other.m_values, Layouts::New);
}

bool CPRGuidelines::oldManikinEquals(const CPRGuidelines &other) const
{
    return Layouts::areEqual(m_values, other.m_values, Layouts::Old);
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
