// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventBase.h"

#include "CPRDataBase.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "Vocabulary.h"
#include "private/EventParameters.h"
#include "private/NumberText.h"
#include "private/PrintableText.h"
#include "private/XmlReading.h"

#include <QHash>
#include <QIODevice>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

using Parameter = CPREventBase::ParameterType;

constexpr float notMeasured = -1.0F;

// Key texts of an enumeration with consecutive values from 0, both ways, without a walk of the
// meta-object.
class KeyTable {
public:
    explicit KeyTable(const QMetaEnum &metaEnum)
    {
        m_keys.reserve(metaEnum.keyCount());
        for (int i = 0; i < metaEnum.keyCount(); ++i) {
            Q_ASSERT(metaEnum.value(i) == i);
            m_keys.append(QString::fromLatin1(metaEnum.key(i)));
        }
        for (int i = 0; i < m_keys.size(); ++i)
            m_values.insert(m_keys.at(i), i);
    }

    QString key(int value) const { return m_keys.value(value); }
    int value(QStringView key) const { return m_values.value(key, -1); }

private:
    QVector<QString> m_keys;
    QHash<QStringView, int> m_values; // views of m_keys
};

const KeyTable &parameterKeys()
{
    static const KeyTable table(QMetaEnum::fromType<Parameter>());
    return table;
}

const KeyTable &eventTypeKeys()
{
    static const KeyTable table(QMetaEnum::fromType<CPREventBase::EventType>());
    return table;
}

CPREventBase::ParameterUnit unitOf(Parameter type)
{
    const Vocabulary::Parameter *row = Vocabulary::parameter(type);
    return row ? row->unit.value_or(CPREventBase::none) : CPREventBase::none;
}

// The kind of an event that keeps measurements in properties; null for others.
const Vocabulary::EventKind *measuringKindOf(const CPREventBase &event)
{
    const Vocabulary::EventKind *kind = Vocabulary::eventKind(event.type());
    return kind && kind->measuring && event.metaObject()->inherits(kind->measuring) ? kind
                                                                                    : nullptr;
}

// The property that keeps the parameter in events of the kind, which may be null. An invalid one,
// which reads as nothing and cannot be written, when none does.
QMetaProperty propertyOf(const Vocabulary::EventKind *kind, Parameter type)
{
    if (!kind)
        return {};
    const auto *const begin = kind->measurements.begin();
    const auto *const found = std::find(begin, kind->measurements.end(), type);
    if (found == kind->measurements.end())
        return {};
    return kind->measuring->property(kind->measuring->propertyOffset()
                                     + static_cast<int>(found - begin));
}

void writeParamElement(QXmlStreamWriter &writer, const QString &name, const QVariant &value,
                       Parameter type)
{
    writer.writeStartElement(QStringLiteral("param"));
    writer.writeAttribute(QStringLiteral("type"), name);
    writer.writeAttribute(QStringLiteral("value"), CPRDataBase::variantToString(value));
    if (const QString units = CPREventBase::unitText(type); !units.isEmpty())
        writer.writeAttribute(QStringLiteral("units"), units);
    writer.writeEndElement();
}

// Calls store(type, text) when the attributes name a known parameter and have a value.
template <typename Store> void storeParam(const QXmlStreamAttributes &attributes, Store &store)
{
    const QXmlStreamAttribute *key = nullptr;
    const QXmlStreamAttribute *value = nullptr;
    for (const QXmlStreamAttribute &attribute : attributes) {
        const auto name = attribute.qualifiedName();
        if (name == QLatin1String("type"))
            key = &attribute;
        else if (name == QLatin1String("value"))
            value = &attribute;
    }
    Parameter type{};
    if (key && value && CPREventBase::parameterFromKey(key->value(), type))
        store(type, QStringView(value->value()));
}

// Calls store(type, text) for each known parameter among the "param" elements that follow.
template <typename Store> void readParamElements(QXmlStreamReader &reader, Store store)
{
    while (readNextChild(reader) && reader.name() == QLatin1String("param")) {
        // The reader fills its list of attributes anew; it would have to copy it if one were kept.
        storeParam(reader.attributes(), store);
        reader.skipCurrentElement();
    }
}

} // namespace

const QMap<CPREventBase::ParameterType, CPREventBase::ParameterUnit> CPREventBase::parameterUnit =
    CPREventBase::initParameterUnit();

QMap<CPREventBase::ParameterType, CPREventBase::ParameterUnit> CPREventBase::initParameterUnit()
{
    QMap<ParameterType, ParameterUnit> units;
    for (int i = 0; i < Vocabulary::parameterCount(); ++i) {
        const Vocabulary::Parameter &row = *Vocabulary::parameter(static_cast<ParameterType>(i));
        if (row.unit)
            units.insert(row.type, *row.unit);
    }
    return units;
}

QString CPREventBase::unitText(ParameterType type)
{
    static const KeyTable units(QMetaEnum::fromType<ParameterUnit>());
    const ParameterUnit unit = unitOf(type);
    return unit == none ? QString() : units.key(unit);
}

QString CPREventBase::parameterKey(ParameterType type)
{
    return parameterKeys().key(type);
}

bool CPREventBase::parameterFromKey(QStringView key, ParameterType &type)
{
    const int value = parameterKeys().value(key);
    if (value >= 0)
        type = static_cast<ParameterType>(value);
    return value >= 0;
}

bool CPREventBase::eventTypeFromKey(QStringView key, EventType &type)
{
    const int value = eventTypeKeys().value(key);
    if (value >= 0)
        type = static_cast<EventType>(value);
    return value >= 0;
}

CPREventBase::CPREventBase(EventType type, int msecs, CPREvents *owner)
    : QObject(owner && owner->m_isMaking ? nullptr : owner), m_owner(owner), m_type(type),
      m_msecs(msecs), m_endTime(msecs)
{
}

CPREventBase::CPREventBase(const CPREventBase &other, CPREvents *owner)
    : QObject(owner), m_owner(owner), m_type(other.m_type), m_msecs(other.m_msecs),
      m_endTime(other.m_endTime)
{
    copyParametersFrom(other);
}

CPREventBase::~CPREventBase()
{
    if (m_listed || m_standing)
        m_owner->forgetEvent(this);
}

const char *CPREventBase::typeAsString() const
{
    return QMetaEnum::fromType<EventType>().valueToKey(m_type);
}

void CPREventBase::setMSecs(int msecs)
{
    const bool isOther = msecs != m_msecs;
    m_msecs = msecs;
    setEventEndTime(msecs);
    if (isOther)
        reportChange();
}

void CPREventBase::setEventEndTime(int msecs)
{
    if (msecs == m_endTime)
        return;
    const bool isEarlier = msecs < m_endTime;
    m_endTime = msecs;
    if (isEarlier && m_listed)
        m_owner->storeEarlierEnd(this);
    reportChange();
}

void CPREventBase::reportChange()
{
    if (m_listed || m_standing)
        m_owner->reportChange(this);
}

QQmlPropertyMap *CPREventBase::params() const
{
    return m_parameters ? m_parameters->map(const_cast<CPREventBase *>(this)) : nullptr;
}

int CPREventBase::storedParameterCount() const
{
    return m_parameters ? m_parameters->count() : 0;
}

EventParameters &CPREventBase::madeParameters()
{
    if (!m_parameters)
        m_parameters = std::make_unique<EventParameters>();
    return *m_parameters;
}

void CPREventBase::setParameter(ParameterType type, const QVariant &value)
{
    if (!Vocabulary::parameter(type))
        return;
    madeParameters().insert(type, value);
    reportChange();
}

QVariant CPREventBase::parameterValue(ParameterType type, const QVariant &defaultValue) const
{
    if (!m_parameters)
        return QVariant();
    return m_parameters->contains(type) ? m_parameters->value(type) : defaultValue;
}

bool CPREventBase::hasParameterType(ParameterType type, QString &key) const
{
    key = parameterKey(type);
    return m_parameters && m_parameters->contains(type);
}

QVariant CPREventBase::value(ParameterType type) const
{
    if (m_parameters && m_parameters->contains(type))
        return m_parameters->value(type);
    return propertyOf(measuringKindOf(*this), type).read(this);
}

void CPREventBase::visitValues(
    const std::function<void(ParameterType, const QVariant &)> &visit) const
{
    if (const Vocabulary::EventKind *kind = measuringKindOf(*this)) {
        for (const ParameterType type : kind->measurements) {
            if (!(m_parameters && m_parameters->contains(type)))
                visit(type, propertyOf(kind, type).read(this));
        }
    }
    if (!m_parameters)
        return;
    m_parameters->visit([&visit](const QString &key, const QVariant &value) {
        ParameterType type{};
        if (parameterFromKey(key, type))
            visit(type, value);
    });
}

CPREventBase::ParameterUnit CPREventBase::unit(ParameterType type) const
{
    return unitOf(type);
}

void CPREventBase::copyParametersFrom(const CPREventBase &other)
{
    if (!other.m_parameters)
        return;
    other.m_parameters->visit([this](const QString &key, const QVariant &value) {
        ParameterType type{};
        if (parameterFromKey(key, type))
            setParameter(type, value);
        else // a key of the host's own, which only the map can hold
            madeParameters().map(this)->insert(key, value);
    });
}

int CPREventBase::sessionTime() const
{
    return m_owner ? m_owner->sessionTime() : 0;
}

bls_2010::CommonDefs::CprProtocolType CPREventBase::mode() const
{
    return m_owner ? m_owner->mode() : bls_2010::CommonDefs::CPR_SINGLE_RESCUER;
}

CPRCompressionData *CPREventBase::compressionData() const
{
    return m_owner ? m_owner->compressionData() : nullptr;
}

CPRVentilationData *CPREventBase::ventilationData() const
{
    return m_owner ? m_owner->ventilationData() : nullptr;
}

CPRGuidelines *CPREventBase::cprGuidelines() const
{
    return m_owner ? m_owner->cprGuidelines() : nullptr;
}

bool CPREventBase::hasParameters() const
{
    return m_parameters != nullptr;
}

void CPREventBase::write(QXmlStreamWriter *writer)
{
    if (!writer)
        return;
    writer->writeStartElement(QStringLiteral("evt"));
    writer->writeAttribute(QStringLiteral("type"), QString::fromLatin1(typeAsString()));
    writer->writeAttribute(QStringLiteral("msecs"), QString::number(m_msecs));
    writeParameters(writer);
    writer->writeEndElement();
}

void CPREventBase::writeParameters(QXmlStreamWriter *writer)
{
    if (!writer)
        return;
    if (const Vocabulary::EventKind *kind = measuringKindOf(*this)) {
        if (kind->storesEnd)
            writeParamElement(*writer, QStringLiteral("endTime"), m_endTime, CPREventBase::endTime);
        for (const ParameterType type : kind->measurements) {
            const QVariant value = propertyOf(kind, type).read(this);
            const bool isForce = Vocabulary::parameter(type)->form == Vocabulary::Form::Force;
            if (!isForce || value.toFloat() != notMeasured)
                writeParamElement(*writer, parameterKey(type), value, type);
        }
    } else if (m_parameters) {
        m_parameters->visit([writer](const QString &key, const QVariant &value) {
            ParameterType type{};
            if (parameterFromKey(key, type) && Vocabulary::parameter(type)->isStored)
                writeParamElement(*writer, key, value, type);
        });
    }
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, const char *name, const QVariant &value,
                              ParameterType type) const
{
    writeParamElement(writer, QString::fromLatin1(name), value, type);
}

void CPREventBase::read(QXmlStreamReader *reader)
{
    readParameters(reader);
}

void CPREventBase::readParameters(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    if (measuringKindOf(*this)) {
        readParametersToProperties(reader);
        return;
    }
    readParamElements(*reader, [this](ParameterType type, QStringView text) {
        setParameter(type, NumberText::toVariant(text));
    });
}

void CPREventBase::readParametersToProperties(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    const Vocabulary::EventKind *kind = measuringKindOf(*this);
    readParamElements(*reader, [this, kind](ParameterType type, QStringView text) {
        const QVariant value = NumberText::toVariant(text);
        if (!propertyOf(kind, type).write(this, value))
            setProperty(parameterKey(type).toLatin1().constData(), value);
    });
}

void CPREventBase::writeHeader(QIODevice *device, const QPair<ParameterType, QString> &column,
                               const QString &separator)
{
    if (!device)
        return;
    device->write(column.second.toUtf8());
    if (const QString units = unitText(column.first); !units.isEmpty())
        device->write(QStringLiteral(" (%1) ").arg(units).toUtf8());
    if (!separator.isEmpty())
        device->write(separator.toUtf8());
}

bool CPREventBase::write(QIODevice *device, const QPair<ParameterType, QString> &column,
                         const QString &separator)
{
    QString key;
    if (!device || !hasParameters() || !hasParameterType(column.first, key))
        return false;
    device->write(NumberText::fromVariant(parameterValue(column.first, QVariant())).toUtf8());
    if (!separator.isEmpty())
        device->write(separator.toUtf8());
    return true;
}

bool CPREventBase::incomingMsg(bls_2010::RMessage * /*msg*/)
{
    return false;
}

void CPREventBase::reset()
{
}

void CPREventBase::initialize()
{
    reset();
}

CPREventBase *CPREventBase::clone(CPREvents *owner)
{
    return new CPREventBase(*this, owner);
}

bool CPREventBase::filterEvent(CPREventBase * /*previous*/)
{
    return false;
}

CPREventBase::operator QString() const
{
    int count = 0;
    QString parameters;
    if (m_parameters) {
        m_parameters->visit([&](const QString &key, const QVariant &value) {
            ++count;
            parameters += QStringLiteral("\n\t") + key + QStringLiteral(" = ")
                + PrintableText::escaped(NumberText::fromVariant(value));
        });
    }
    return QString::asprintf(
               "%p, type: %s, msecs: %d, endTime: %d, paramCount: %d, propertyCount: %d",
               static_cast<const void *>(this), typeAsString(), m_msecs, m_endTime, count,
               metaObject()->propertyCount())
        + parameters;
}

int CPREventBase::tag() const
{
    return TagOther;
}
