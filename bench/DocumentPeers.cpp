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

// JSON: everything under names, samples as numbers, so that anybody can read it.
struct Json {
    using Value = QJsonValue;
    using Array = QJsonArray;
    using Object = QJsonObject;

    static QString key(Type type) { return CPREventBase::parameterKey(type); }
    static Type type(const QString &key) { return parameterOf(key); }
    static QString kind(CPREventBase::EventType kind) { return kindKey(kind); }
    static CPREventBase::EventType kind(const Value &value) { return kindOf(value.toString()); }
    static Object object(const Value &value) { return value.toObject(); }
    static int integer(const Value &value) { return value.toInt(); }
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
        const auto *samples = reinterpret_cast<const qint16 *>(bytes.constData());
        for (int i = 0; i < bytes.size() / int(sizeof(qint16)); ++i)
            array.append(samples[i]);
        return array;
    }
    static QByteArray wave(const Value &value)
    {
        const Array array = value.toArray();
        QByteArray bytes(int(array.size()) * int(sizeof(qint16)), Qt::Uninitialized);
        auto *sample = reinterpret_cast<qint16 *>(bytes.data());
        for (const Value &item : array)
            *sample++ = static_cast<qint16>(item.toInt());
        return bytes;
    }
};

// CBOR: keys and kinds as numbers, samples as bytes.
struct Cbor {
    using Value = QCborValue;
    using Array = QCborArray;
    using Object = QCborMap;

    static qint64 key(Type type) { return type; }
    static Type type(const Value &key) { return static_cast<Type>(key.toInteger()); }
    static qint64 kind(CPREventBase::EventType kind) { return kind; }
    static CPREventBase::EventType kind(const Value &value)
    {
        return static_cast<CPREventBase::EventType>(value.toInteger());
    }
    static Object object(const Value &value) { return value.toMap(); }
    static int integer(const Value &value) { return static_cast<int>(value.toInteger()); }
    static QByteArray encoded(const Object &object) { return object.toCborValue().toCbor(); }
    static Object decoded(const QByteArray &bytes) { return QCborValue::fromCbor(bytes).toMap(); }
    static Value wave(const QByteArray &bytes) { return bytes; }
    static QByteArray wave(const Value &value) { return value.toByteArray(); }
};

const QString eventsKey = QStringLiteral("events");
const QString blobsKey = QStringLiteral("blobs");
const QString typeKey = QStringLiteral("type");
const QString msecsKey = QStringLiteral("msecs");
const QString valuesKey = QStringLiteral("values");

bool isDocument(const QString &name)
{
    return name.endsWith(QLatin1String(".xml"));
}

template <typename Form> bool write(const PlainSession &session, const QString &name)
{
    typename Form::Array events;
    for (const PlainEvent &event : session.events) {
        typename Form::Object values;
        for (const auto &[type, value] : event.values)
            values.insert(Form::key(type), Form::Value::fromVariant(value));
        typename Form::Object object;
        object.insert(typeKey, Form::kind(event.kind));
        object.insert(msecsKey, event.msecs);
        object.insert(valuesKey, values);
        events.append(object);
    }
    typename Form::Object blobs;
    for (auto blob = session.blobs.begin(); blob != session.blobs.end(); ++blob) {
        blobs.insert(blob.key(),
                     isDocument(blob.key()) ? typename Form::Value(QString::fromUtf8(*blob))
                                            : Form::wave(*blob));
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
    session.events.reserve(int(events.size()));
    for (const typename Form::Value item : events) {
        const typename Form::Object object = Form::object(item);
        PlainEvent event{
            Form::kind(object.value(typeKey)), Form::integer(object.value(msecsKey)), {}};
        const typename Form::Object values = Form::object(object.value(valuesKey));
        event.values.reserve(int(values.size()));
        for (auto it = values.constBegin(); it != values.constEnd(); ++it)
            event.values.append({Form::type(it.key()), it.value().toVariant()});
        session.events.append(event);
    }
    const typename Form::Object blobs = Form::object(root.value(blobsKey));
    for (auto it = blobs.constBegin(); it != blobs.constEnd(); ++it) {
        const QString blob = typename Form::Value(it.key()).toString();
        const typename Form::Value value = it.value();
        session.blobs[blob] = isDocument(blob) ? value.toString().toUtf8() : Form::wave(value);
    }
    return !session.events.isEmpty();
}

} // namespace

Peer jsonPeer()
{
    return {"JSON, deflated", write<Json>, read<Json>};
}

Peer cborPeer()
{
    return {"CBOR, deflated", write<Cbor>, read<Cbor>};
}

} // namespace bench
