// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRGuidelines.h"

#include "CPRData.h"
#include "private/Limits.h"
#include "private/MessageFields.h"
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
#include <tuple>
#include <variant>

namespace {

// Both the message and the structure hold depths in whole mm, the set in hundredths.
using Units::hmmPerMm;

template <typename Owner, typename T> struct NumberInMessage {
    unsigned int byte;
    unsigned int width; // in bytes
    T Owner::*field;
    int scale;
};

template <typename Owner> struct FlagInMessage {
    unsigned int byte;
    bool Owner::*field;
    quint8 trueWhen;
    static constexpr unsigned int width = 1;
};

template <typename Owner, typename T>
constexpr NumberInMessage<Owner, T> u8(unsigned int byte, T Owner::*field, int scale = 1)
{
    return {byte, 1, field, scale};
}

template <typename Owner, typename T>
constexpr NumberInMessage<Owner, T> u16(unsigned int byte, T Owner::*field)
{
    return {byte, 2, field, 1};
}

template <typename Owner>
constexpr FlagInMessage<Owner> flag(unsigned int byte, bool Owner::*field, quint8 trueWhen)
{
    return {byte, field, trueWhen};
}

template <typename... Rows> constexpr bool standInOrder(const std::tuple<Rows...> &table)
{
    unsigned int end = 0;
    bool inOrder = true;
    std::apply(
        [&](const auto &...row) {
            ((inOrder = inOrder && row.byte >= end, end = row.byte + row.width), ...);
        },
        table);
    return inOrder;
}

int midway(int min, int max)
{
    return min + (max - min) / 2;
}

int byteAt(const bls_2010::RMessage &msg, unsigned int index)
{
    return MessageFields::valueAt<quint8>(msg, index);
}

} // namespace

struct CPRGuidelines::Layouts {
    using V = Values;
    using G = bls_2010::GuidelineValues_t;

    // clang-format off

    // RPL_GUIDELINES (75); the identifier follows from byte 52 on.
    static constexpr std::tuple message {
        u8  ( 2, &V::compressionDepthMin,                                hmmPerMm),
        u8  ( 3, &V::compressionDepthMax,                                hmmPerMm),
        u8  ( 4, &V::compressionRateTarget),
        u16 ( 5, &V::compressionAcceptableReleaseForce),
        u8  ( 7, &V::compressionAcceptableReleaseDepth,                  hmmPerMm),
        u8  ( 8, &V::ventilationRateMinHPCPR),
        u8  ( 9, &V::ventilationRateMaxHPCPR),
        u8  (12, &V::compressionInactivityLevel3Timeout),
        u8  (14, &V::ventilationRateMaxDuringCPR),
        u8  (15, &V::ventilationRateMaxForVentilationsOnly),
        u8  (16, &V::ventilationInactivityTimeout),
        u8  (17, &V::compressionInactivityLevel2Timeout),
        u8  (18, &V::compressionInactivityLevel1Timeout),
        u8  (19, &V::compressionInactivityLevel0TimeoutCPR),
        u8  (20, &V::compressionInactivityLevel0TimeoutVentilationsOnly),
        u8  (21, &V::compressionRateMin),
        u8  (22, &V::compressionRateMax),
        u8  (23, &V::compressionDetectDepth,                             hmmPerMm),
        u16 (24, &V::ventilationDetectVolume),
        u16 (26, &V::ventilationVolumeMin),
        u16 (28, &V::ventilationVolumeMax),
        u16 (30, &V::ventilationInflationTimeMin),
        u16 (32, &V::ventilationInflationTimeMax),
        u8  (34, &V::ventilationRateMinDuringCPR),
        u8  (35, &V::ventilationRateMinForVentilationsOnly),
        flag(36, &V::useAbsoluteDepth,                                   0),
        u8  (37, &V::compressionsBetweenVentilations),
        u8  (38, &V::ventilationsBetweenCompressions),
        u8  (39, &V::compressionsBetweenVentilationsTwoRescuer),
        u8  (40, &V::minimumAcceptedFlowtimePercentageCompressionsOnly),
        u8  (41, &V::minimumAcceptedFlowtimePercentageSingleRescuerCPR),
        u8  (42, &V::minimumAcceptedFlowtimePercentageTwoRescuerCPR),
        u8  (43, &V::ventilationRateMinDuringTwoRescuerCPR),
        u8  (44, &V::ventilationRateMaxDuringTwoRescuerCPR),
        flag(45, &V::isOfficial,                                         1),
        u8  (46, &V::compressionTooDeepSetting),
        u8  (47, &V::preVentilationsUsage),
        u8  (48, &V::preVentilationsMin),
        u8  (49, &V::preVentilationsMax),
        flag(50, &V::manikinGuidelineFlag,                               1),
        flag(51, &V::usingDefaultValues,                                 1)
    };
    static_assert(standInOrder(message));
    static constexpr unsigned int shortestMessage = 51; // its data length
    static constexpr unsigned int identifierByte  = 52;

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

    template <typename T>
    static void read(const bls_2010::RMessage &msg, const NumberInMessage<V, T> &row, V &values)
    {
        const int raw =
            row.width == 1 ? byteAt(msg, row.byte) : MessageFields::assembledU16(msg, row.byte);
        values.*row.field = static_cast<T>(raw * row.scale);
    }

    static void read(const bls_2010::RMessage &msg, const FlagInMessage<V> &row, V &values)
    {
        values.*row.field = byteAt(msg, row.byte) == row.trueWhen;
    }

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
    if (MessageFields::identifierOf(msg) != CommunicationIDs::RPL_GUIDELINES)
        return false;
    const unsigned int length = msg->getDataLength();
    if (length < Layouts::shortestMessage) {
        qWarning("Invalid guideline received");
        return false;
    }

    std::apply([&](const auto &...row) { (Layouts::read(*msg, row, m_values), ...); },
               Layouts::message);
    Values &v = m_values;
    v.ventilationRateTargetForVentilationsOnly =
        midway(v.ventilationRateMinForVentilationsOnly, v.ventilationRateMaxForVentilationsOnly);
    v.ventilationRateTargetDuringCPR =
        midway(v.ventilationRateMinDuringCPR, v.ventilationRateMaxDuringCPR);
    v.ventilationRateTargetDuringTwoRescuerCPR =
        midway(v.ventilationRateMinDuringTwoRescuerCPR, v.ventilationRateMaxDuringTwoRescuerCPR);

    QString identifier;
    bool ok = true;
    for (unsigned int i = Layouts::identifierByte; ok && i <= length; ++i) {
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
