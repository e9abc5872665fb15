// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Peers.h"

#include <QCborArray>
#include <QCborMap>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace bench {

namespace {

using Type = CPREventBase::ParameterType;

// The keys of a session and of an event.
const QString eventsKey = QStringLiteral("events");
const QString blobsKey = QStringLiteral("blobs");
const QString typeKey = QStringLiteral("type");
const QString msecsKey = QStringLiteral("msecs");
const QString valuesKey = QStringLiteral("values");

// JSON: everything under names, samples as numbers, so that anybody can read it.
struct Json {
    using Value = QJsonValue;
    using Array = QJsonArray;
    using Object = QJsonObject;

    static QString key(Type type) { return CPREventBase::parameterKey(type); }
    static Type type(const QString &key) { return parameterOf(key); }
    static QString kind(CPREventBase::EventType type) { return kindKey(type); }
    static CPREventBase::EventType kind(const Value &value) { return kindOf(value.toString()); }
    static int integer(const Value &value) { return value.toInt(); }
    static Object object(const Value &value) { return value.toObject(); }
    static QByteArray encoded(const Object &object)
    {
        return QJsonDocument(object).toJson(QJsonDocument::Compact);
    }
    static Object decoded(const QByteArray &bytes)
    {
        return QJsonDocument::fromJson(bytes).object();
    }
    static Value wave(const QByteArray &bytes)
    {
        Array array;
        for (const qint16 sample : samplesOf(bytes))
            array.append(sample);
        return array;
    }
    static QByteArray wave(const Value &value)
    {
        const Array array = value.toArray();
        std::vector<qint16> samples;
        samples.reserve(static_cast<std::size_t>(array.size()));
        for (const Value &item : array)
            samples.push_back(static_cast<qint16>(item.toInt()));
        return bytesOf(samples);
    }
};

// JSON with the samples as a text that only programs for it understand.
struct JsonWithBase64 : Json {
    static Value wave(const QByteArray &bytes) { return QString::fromLatin1(bytes.toBase64()); }
    static QByteArray wave(const Value &value)
    {
        return QByteArray::fromBase64(value.toString().toLatin1());
    }
};

// CBOR: keys and kinds as numbers, samples as bytes.
struct Cbor {
    using Value = QCborValue;
    using Array = QCborArray;
    using Object = QCborMap;

    static qint64 key(Type type) { return type; }
    static Type type(const Value &key) { return static_cast<Type>(key.toInteger()); }
    static qint64 kind(CPREventBase::EventType type) { return type; }
    static CPREventBase::EventType kind(const Value &value)
    {
        return static_cast<CPREventBase::EventType>(value.toInteger());
    }
    static int integer(const Value &value) { return static_cast<int>(value.toInteger()); }
    static Object object(const Value &value) { return value.toMap(); }
    static QByteArray encoded(const Object &object) { return object.toCborValue().toCbor(); }
    static Object decoded(const QByteArray &bytes) { return QCborValue::fromCbor(bytes).toMap(); }
    static Value wave(const QByteArray &bytes) { return bytes; }
    static QByteArray wave(const Value &value) { return value.toByteArray(); }
};

template <typename Form> bool write(const PlainSession &session, const QString &name)
{
    typename Form::Array events;
    for (const PlainEvent &event : session.events) {
        typename Form::Object values;
        for (const PlainEvent::Value &item : event.values)
            values.insert(Form::key(item.type), Form::Value::fromVariant(item.value));
        typename Form::Object object;
        object.insert(typeKey, Form::kind(event.type));
        object.insert(msecsKey, event.msecs);
        object.insert(valuesKey, values);
        events.append(object);
    }
    typename Form::Object blobs;
    for (const Member &blob : session.blobs) {
        blobs.insert(blob.name,
                     blob.isDocument() ? typename Form::Value(QString::fromUtf8(blob.bytes))
                                       : Form::wave(blob.bytes));
    }
    typename Form::Object root;
    root.insert(eventsKey, events);
    root.insert(blobsKey, blobs);

    const QByteArray packed = qCompress(Form::encoded(root));
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(packed) == packed.size() && file.flush();
}

template <typename Form> bool read(const QString &name, PlainSession &session)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const typename Form::Object root = Form::decoded(qUncompress(file.readAll()));
    const typename Form::Array events = root.value(eventsKey).toArray();
    session.events.reserve(static_cast<std::size_t>(events.size()));
    for (const typename Form::Value &item : events) {
        const typename Form::Object object = Form::object(item);
        PlainEvent event{
            Form::kind(object.value(typeKey)), Form::integer(object.value(msecsKey)), {}};
        const typename Form::Object values = Form::object(object.value(valuesKey));
        event.values.reserve(static_cast<std::size_t>(values.size()));
        for (auto it = values.constBegin(); it != values.constEnd(); ++it)
            event.values.push_back({Form::type(it.key()), it.value().toVariant()});
        session.events.push_back(std::move(event));
    }
    const typename Form::Object blobs = Form::object(root.value(blobsKey));
    for (auto it = blobs.constBegin(); it != blobs.constEnd(); ++it) {
        const typename Form::Value blobName(it.key());
        const typename Form::Value value = it.value();
        Member blob{blobName.toString(), {}, {}};
        blob.bytes = blob.isDocument() ? value.toString().toUtf8() : Form::wave(value);
        session.blobs.push_back(blob);
    }
    return !session.events.empty();
}

} // namespace

Peer jsonPeer()
{
    return {"JSON, deflated", write<Json>, read<Json>};
}

Peer jsonWithBase64Peer()
{
    return {"JSON, waves in Base64, deflated", write<JsonWithBase64>, read<JsonWithBase64>};
}

Peer cborPeer()
{
    return {"CBOR, deflated", write<Cbor>, read<Cbor>};
}

} // namespace bench
