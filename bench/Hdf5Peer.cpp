// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Peers.h"

#include <QFile>

#include <H5Cpp.h>
#include <algorithm>
#include <cmath>
#include <limits>

namespace bench {

namespace {

constexpr char positionsName[] = "place";
constexpr char msecsName[] = "msecs";
const std::string textMark = "text ";
constexpr char textSeparator = '\x1e';

template <typename Number> const H5::PredType &typeOf();
template <> const H5::PredType &typeOf<char>()
{
    return H5::PredType::NATIVE_CHAR;
}
template <> const H5::PredType &typeOf<qint16>()
{
    return H5::PredType::NATIVE_INT16;
}
template <> const H5::PredType &typeOf<int>()
{
    return H5::PredType::NATIVE_INT;
}
template <> const H5::PredType &typeOf<float>()
{
    return H5::PredType::NATIVE_FLOAT;
}

template <typename Number>
void writeNumbers(H5::Group &where, const std::string &name, const std::vector<Number> &numbers)
{
    constexpr hsize_t chunk = 16384;
    constexpr hsize_t few = 64; // the bookkeeping of chunks is larger
    constexpr int level = 6;
    const hsize_t size = numbers.size();
    H5::DSetCreatPropList properties;
    if (size > few) {
        const hsize_t piece = std::min(size, chunk);
        properties.setChunk(1, &piece);
        properties.setShuffle();
        properties.setDeflate(level);
    }
    where.createDataSet(name, typeOf<Number>(), H5::DataSpace(1, &size), properties)
        .write(numbers.data(), typeOf<Number>());
}

template <typename Number>
std::vector<Number> readNumbers(const H5::Group &where, const std::string &name)
{
    const H5::DataSet set = where.openDataSet(name);
    std::vector<Number> numbers(static_cast<std::size_t>(set.getSpace().getSimpleExtentNpoints()));
    set.read(numbers.data(), typeOf<Number>());
    return numbers;
}

std::vector<char> charsOf(const QByteArray &bytes)
{
    return std::vector<char>(bytes.begin(), bytes.end());
}

std::vector<std::string> namesIn(const H5::Group &group)
{
    std::vector<std::string> names;
    for (hsize_t i = 0; i < group.getNumObjs(); ++i)
        names.push_back(group.getObjnameByIdx(i));
    return names;
}

bool areAll(const std::vector<QVariant> &values, int type)
{
    return std::all_of(values.begin(), values.end(),
                       [type](const QVariant &value) { return value.userType() == type; });
}

template <typename Number> std::vector<Number> numbersOf(const std::vector<QVariant> &values)
{
    std::vector<Number> numbers;
    for (const QVariant &value : values) {
        numbers.push_back(value.isValid() ? value.value<Number>()
                                          : std::numeric_limits<Number>::quiet_NaN());
    }
    return numbers;
}

// Texts lie one behind the other; an event without a number has NaN. Times do not fit into floats.
void writeColumn(H5::Group &kind, const std::string &name, const std::vector<QVariant> &values)
{
    if (areAll(values, QMetaType::QString)) {
        QByteArray texts;
        for (const QVariant &value : values)
            texts += value.toString().toUtf8() + textSeparator;
        writeNumbers(kind, textMark + name, charsOf(texts));
    } else if (areAll(values, QMetaType::Int)) {
        writeNumbers(kind, name, numbersOf<int>(values));
    } else {
        writeNumbers(kind, name, numbersOf<float>(values));
    }
}

void writeKind(H5::Group &kinds, const KindTable &table, const std::vector<PlainEvent> &events)
{
    H5::Group kind = kinds.createGroup(kindKey(table.type).toStdString());
    std::vector<int> msecs;
    for (const int position : table.positions)
        msecs.push_back(events[static_cast<std::size_t>(position)].msecs);
    writeNumbers(kind, positionsName, table.positions);
    writeNumbers(kind, msecsName, msecs);
    for (const CPREventBase::ParameterType type : table.columns) {
        std::vector<QVariant> values;
        for (const int position : table.positions)
            values.push_back(valueOf(events[static_cast<std::size_t>(position)], type));
        writeColumn(kind, CPREventBase::parameterKey(type).toStdString(), values);
    }
}

std::vector<QVariant> readColumn(const H5::Group &kind, const std::string &name)
{
    std::vector<QVariant> values;
    if (name.rfind(textMark, 0) == 0) {
        const QList<QByteArray> texts = bytesOf(readNumbers<char>(kind, name)).split(textSeparator);
        for (const QByteArray &text : texts)
            values.emplace_back(QString::fromUtf8(text));
    } else if (kind.openDataSet(name).getTypeClass() == H5T_INTEGER) {
        const std::vector<int> integers = readNumbers<int>(kind, name);
        values.assign(integers.begin(), integers.end());
    } else {
        for (const float number : readNumbers<float>(kind, name))
            values.push_back(std::isnan(number) ? QVariant() : QVariant(number));
    }
    return values;
}

void readKind(const H5::Group &kind, CPREventBase::EventType type, std::vector<PlainEvent> &events)
{
    const std::vector<int> positions = readNumbers<int>(kind, positionsName);
    const std::vector<int> msecs = readNumbers<int>(kind, msecsName);
    for (std::size_t i = 0; i < positions.size(); ++i)
        place({type, msecs[i], {}}, positions[i], events);
    for (const std::string &name : namesIn(kind)) {
        if (name == positionsName || name == msecsName)
            continue;
        const bool isText = name.rfind(textMark, 0) == 0;
        const auto parameter =
            parameterOf(QString::fromStdString(isText ? name.substr(textMark.size()) : name));
        const std::vector<QVariant> values = readColumn(kind, name);
        for (std::size_t i = 0; i < positions.size(); ++i) {
            if (values[i].isValid())
                events[static_cast<std::size_t>(positions[i])].values.push_back(
                    {parameter, values[i]});
        }
    }
}

// The library's own way to fail is an exception.
template <typename Work> bool attempt(Work work)
{
    try {
        work();
        return true;
    } catch (const H5::Exception &) {
        return false;
    }
}

bool write(const PlainSession &session, const QString &name)
{
    return attempt([&] {
        H5::FileAccPropList access;
        access.setLibverBounds(H5F_LIBVER_LATEST, H5F_LIBVER_LATEST); // its files are smaller
        H5::H5File file(QFile::encodeName(name).constData(), H5F_ACC_TRUNC,
                        H5::FileCreatPropList::DEFAULT, access);
        H5::Group kinds = file.createGroup("events");
        for (const KindTable &table : kindTables(session.events))
            writeKind(kinds, table, session.events);
        H5::Group blobs = file.createGroup("blobs");
        for (const Member &blob : session.blobs) {
            if (blob.isDocument())
                writeNumbers(blobs, blob.name.toStdString(), charsOf(blob.bytes));
            else
                writeNumbers(blobs, blob.name.toStdString(), samplesOf(blob.bytes));
        }
    });
}

bool read(const QString &name, PlainSession &session)
{
    return attempt([&] {
        const H5::H5File file(QFile::encodeName(name).constData(), H5F_ACC_RDONLY);
        const H5::Group kinds = file.openGroup("events");
        for (const std::string &kind : namesIn(kinds)) {
            readKind(kinds.openGroup(kind), kindOf(QString::fromStdString(kind)), session.events);
        }
        const H5::Group blobs = file.openGroup("blobs");
        for (const std::string &blobName : namesIn(blobs)) {
            Member blob{QString::fromStdString(blobName), {}, {}};
            blob.bytes = blob.isDocument() ? bytesOf(readNumbers<char>(blobs, blobName))
                                           : bytesOf(readNumbers<qint16>(blobs, blobName));
            session.blobs.push_back(blob);
        }
    });
}

} // namespace

Peer hdf5Peer()
{
    return {"HDF5, deflated", write, read};
}

} // namespace bench
