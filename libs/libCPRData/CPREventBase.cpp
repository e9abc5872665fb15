// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventBase.h"

#include "CPRDataBase.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "Vocabulary.h"
#include "private/EventParameters.h"
#include "private/NumberText.h"
#include "private/XmlReading.h"

#include <QHash>
#include <QIODevice>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <map>

namespace {

using Parameter = CPREventBase::ParameterType;

// Key texts of an enumeration with consecutive values from 0, both ways, without a walk of the
// meta-object.
class KeyTable {
public:
    explicit KeyTable(const QMetaEnum &metaEnum) : m_metaEnum(metaEnum)
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
    const char *latin1(int value) const { return m_metaEnum.key(value); }
    int value(QStringView key) const { return m_values.value(key, -1); }

private:
    QMetaEnum m_metaEnum;
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

// Of such an event; nothing for kinds that keep no measurements.
std::initializer_list<Parameter> measurementsOf(CPREventBase::EventType type)
{
    const Vocabulary::EventKind *kind = Vocabulary::eventKind(type);
    return kind ? kind->measurements : std::initializer_list<Parameter>();
}

// Calls store(type, text) when the attributes name a known parameter and have a value.
template <typename Store> void takeParam(const QXmlStreamAttributes &attributes, Store &store)
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
        takeParam(reader.attributes(), store);
        reader.skipCurrentElement();
    }
}

// The declared properties of a class of events that are named after parameters.
class PropertyTable {
public:
    explicit PropertyTable(const QMetaObject &metaObject)
    {
        for (int i = 0; i < Vocabulary::parameterCount(); ++i) {
            const QString key = CPREventBase::parameterKey(static_cast<Parameter>(i));
            Entry &entry = m_entries[static_cast<std::size_t>(i)];
            entry.index = metaObject.indexOfProperty(key.toLatin1().constData());
            if (entry.index >= 0)
                entry.type = metaObject.property(entry.index).userType();
        }
    }

    // Sets the property from a number as it stands in files; false leaves it to Qt to convert.
    bool write(QObject *object, Parameter type, QStringView text) const
    {
        const Entry &entry = m_entries[static_cast<std::size_t>(type)];
        int integer = 0;
        float number = 0;
        switch (entry.type) {
        case QMetaType::Int:
            return NumberText::toInt(text, integer) && set(object, entry.index, integer);
        case QMetaType::Bool:
            return NumberText::toInt(text, integer) && set(object, entry.index, integer != 0);
        case QMetaType::Float:
            return NumberText::toFloat(text, number) && set(object, entry.index, number);
        default:
            return false;
        }
    }

private:
    struct Entry {
        int index = -1;
        int type = QMetaType::UnknownType;
    };

    // What QMetaProperty::write() does when nothing is to be converted.
    template <typename Value> static bool set(QObject *object, int index, Value value)
    {
        int status = -1;
        int flags = 0;
        void *arguments[] = {&value, nullptr, &status, &flags};
        QMetaObject::metacall(object, QMetaObject::WriteProperty, index, arguments);
        return true;
    }

    std::vector<Entry> m_entries = std::vector<Entry>(std::size_t(Vocabulary::parameterCount()));
};

// Of the thread, so that sessions can be loaded in several.
const PropertyTable &propertiesOf(const QMetaObject *metaObject)
{
    thread_local std::map<const QMetaObject *, PropertyTable> tables;
    return tables.try_emplace(metaObject, *metaObject).first->second;
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
    : QObject(owner), m_owner(owner), m_type(type), m_msecs(msecs), m_endTime(msecs)
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
        noteChange();
}

void CPREventBase::setEventEndTime(int msecs)
{
    if (msecs == m_endTime)
        return;
    m_endTime = msecs;
    noteChange();
}

void CPREventBase::noteChange()
{
    if (m_listed || m_standing)
        m_owner->noteChange(this);
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
    noteChange();
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
    const auto measurements = measurementsOf(m_type);
    const bool isMeasured =
        std::find(measurements.begin(), measurements.end(), type) != measurements.end();
    return isMeasured ? property(parameterKeys().latin1(type)) : QVariant();
}

void CPREventBase::visitValues(
    const std::function<void(ParameterType, const QVariant &)> &visit) const
{
    for (const ParameterType type : measurementsOf(m_type)) {
        const QVariant measured = property(parameterKeys().latin1(type));
        if (measured.isValid() && !(m_parameters && m_parameters->contains(type)))
            visit(type, measured);
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
    if (!writer || !m_parameters)
        return;
    m_parameters->visit([writer](const QString &key, const QVariant &value) {
        ParameterType type{};
        if (parameterFromKey(key, type) && Vocabulary::parameter(type)->isStored)
            writeParamElement(*writer, key, CPRDataBase::variantToString(value), type);
    });
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, const char *name, const QVariant &value,
                              ParameterType type) const
{
    writeParamElement(writer, QString::fromLatin1(name), CPRDataBase::variantToString(value), type);
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, ParameterType type, int value) const
{
    writeParamElement(writer, parameterKey(type), QString::number(value), type);
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, ParameterType type, float value) const
{
    writeParamElement(writer, parameterKey(type), NumberText::fromReal(value), type);
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, ParameterType type, bool value) const
{
    writeParamElement(writer, parameterKey(type), value ? QStringLiteral("1") : QStringLiteral("0"),
                      type);
}

void CPREventBase::writeParamElement(QXmlStreamWriter &writer, const QString &name,
                                     const QString &text, ParameterType type)
{
    writer.writeStartElement(QStringLiteral("param"));
    writer.writeAttribute(QStringLiteral("type"), name);
    writer.writeAttribute(QStringLiteral("value"), text);
    if (const QString units = unitText(type); !units.isEmpty())
        writer.writeAttribute(QStringLiteral("units"), units);
    writer.writeEndElement();
}

void CPREventBase::read(QXmlStreamReader *reader)
{
    readParameters(reader);
}

void CPREventBase::readParameters(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    readParamElements(*reader, [this](ParameterType type, QStringView text) {
        setParameter(type, CPRDataBase::variantFromString(text.toString()));
    });
}

void CPREventBase::readParametersToProperties(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    const PropertyTable &properties = propertiesOf(metaObject());
    readParamElements(*reader, [this, &properties](ParameterType type, QStringView text) {
        if (!properties.write(this, type, text)) {
            setProperty(parameterKey(type).toLatin1().constData(),
                        CPRDataBase::variantFromString(text.toString()));
        }
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
                + NumberText::fromVariant(value);
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
