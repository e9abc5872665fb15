// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Peers.h"

#include <QMetaEnum>
#include <QXmlStreamReader>

#include <algorithm>

namespace bench {

namespace {

using Type = CPREventBase::ParameterType;

template <typename Text> QVariant variantOf(const Text &text)
{
    bool isNumber = false;
    if (const int integer = text.toInt(&isNumber); isNumber)
        return integer;
    if (const double number = text.toDouble(&isNumber); isNumber)
        return number;
    return text.toString();
}

bool isText(const QVariant &value)
{
    return value.userType() == QMetaType::QString;
}

bool same(const PlainEvent &a, const PlainEvent &b)
{
    return a.type == b.type && a.msecs == b.msecs && a.values.size() == b.values.size()
        && std::all_of(a.values.begin(), a.values.end(), [&b](const PlainEvent::Value &value) {
               const QVariant other = valueOf(b, value.type);
               return isText(value.value)
                   ? value.value == other
                   : !isText(other) && other.isValid() && value.value.toFloat() == other.toFloat();
           });
}

} // namespace

bool PlainSession::sameAs(const PlainSession &other) const
{
    return std::equal(events.begin(), events.end(), other.events.begin(), other.events.end(), same)
        && std::is_permutation(blobs.begin(), blobs.end(), other.blobs.begin(), other.blobs.end(),
                               [](const Member &a, const Member &b) {
                                   return a.name == b.name && a.bytes == b.bytes;
                               });
}

std::vector<qint16> samplesOf(const QByteArray &bytes)
{
    std::vector<qint16> samples(static_cast<std::size_t>(bytes.size()) / sizeof(qint16));
    std::copy_n(bytes.constData(), bytes.size(), reinterpret_cast<char *>(samples.data()));
    return samples;
}

void place(PlainEvent &&event, int position, std::vector<PlainEvent> &events)
{
    const auto index = static_cast<std::size_t>(position);
    events.resize(std::max(events.size(), index + 1));
    events[index] = std::move(event);
}

QString kindKey(CPREventBase::EventType type)
{
    return QString::fromLatin1(QMetaEnum::fromType<CPREventBase::EventType>().valueToKey(type));
}

CPREventBase::EventType kindOf(const QString &key)
{
    CPREventBase::EventType type{};
    CPREventBase::eventTypeFromKey(key, type);
    return type;
}

Type parameterOf(const QString &key)
{
    Type type{};
    CPREventBase::parameterFromKey(key, type);
    return type;
}

PlainSession plainSession(const std::vector<Member> &members)
{
    PlainSession session;
    for (const char *name : {"COMP.WV", "VENT.WV", "CPRWaves.xml", "CPRGuidelines.xml"})
        session.blobs.push_back({QLatin1String(name), memberNamed(members, name).bytes, {}});

    QXmlStreamReader reader(memberNamed(members, "CPREvents.xml").bytes);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        const QString type = attributes.value(QLatin1String("type")).toString();
        if (reader.name() == QLatin1String("evt")) {
            session.events.push_back(
                {kindOf(type), attributes.value(QLatin1String("msecs")).toInt(), {}});
        } else if (reader.name() == QLatin1String("param")) {
            session.events.back().values.push_back(
                {parameterOf(type), variantOf(attributes.value(QLatin1String("value")))});
        }
    }
    return session;
}

QVariant valueOf(const PlainEvent &event, Type type)
{
    const auto found =
        std::find_if(event.values.begin(), event.values.end(),
                     [type](const PlainEvent::Value &value) { return value.type == type; });
    return found == event.values.end() ? QVariant() : found->value;
}

std::vector<KindTable> kindTables(const std::vector<PlainEvent> &events)
{
    std::vector<KindTable> tables;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const PlainEvent &event = events[i];
        auto table = std::find_if(tables.begin(), tables.end(), [&event](const KindTable &known) {
            return known.type == event.type;
        });
        if (table == tables.end())
            table = tables.insert(tables.end(), {event.type, {}, {}});
        table->positions.push_back(static_cast<int>(i));
        for (const PlainEvent::Value &value : event.values) {
            if (std::find(table->columns.begin(), table->columns.end(), value.type)
                == table->columns.end()) {
                table->columns.push_back(value.type);
            }
        }
    }
    return tables;
}

} // namespace bench
