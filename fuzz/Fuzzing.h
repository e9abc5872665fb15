// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef FUZZING_H
#define FUZZING_H

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <functional>

class CPRData;
class CPREvents;
class QXmlStreamReader;
class QXmlStreamWriter;

/// One input; defined by each fuzz target. Always gives 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// What the fuzz targets have in common.
namespace fuzzing {

/// Makes what the library needs of Qt, once. Log lines are not even built unless the environment
/// variable CPRDATA_FUZZ_LOG is set; they are shown when it is "show".
void prepare();

/// What one input may cost, from here to the end of the scope: memory and processor time bounded by
/// the bytes that are read. Memory under AddressSanitizer only, as others do not count it; the
/// bounds are far above what is needed, and far below what grows with the square.
class Cost {
public:
    /// \a bytes is the input's size.
    explicit Cost(std::size_t bytes);
    ~Cost();
    Cost(const Cost &) = delete;
    Cost &operator=(const Cost &) = delete;

    /// So many more bytes were inflated.
    void add(qint64 bytes) { m_bytes += bytes; }

private:
    qint64 m_bytes;
    [[maybe_unused]] qint64 m_memory; // in use at the beginning, bytes
    qint64 m_microseconds; // of this thread at the beginning
};

/// Ends the program, which is how a fault is reported, unless \a holds.
void require(bool holds, const char *rule);

/// An input that is taken from the front, piece by piece. Behind its end there are zeros.
class Bytes {
public:
    /// The bytes are not copied.
    Bytes(const std::uint8_t *data, std::size_t size)
        : m_data(QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(size)))
    {
    }
    explicit Bytes(const QByteArray &bytes) : m_data(bytes) { }

    bool isEmpty() const { return m_position >= m_data.size(); }
    /// A number of \a width bytes, little-endian.
    quint32 number(int width)
    {
        quint32 value = 0;
        for (int i = 0; i < width && !isEmpty(); ++i)
            value |= quint32(quint8(m_data.at(m_position++))) << (8 * i);
        return value;
    }
    /// A number from 0 to \a limit - 1; at most 256 numbers.
    quint32 below(quint32 limit) { return number(1) % limit; }
    /// A signed number of four bytes.
    qint32 signedNumber() { return static_cast<qint32>(number(4)); }
    /// At most \a size bytes.
    QByteArray take(int size)
    {
        const QByteArray bytes = m_data.mid(m_position, size);
        m_position += bytes.size();
        return bytes;
    }
    QByteArray rest() { return take(m_data.size()); }

private:
    QByteArray m_data;
    int m_position = 0;
};

/// Requires that the list is whole: every event listed once and owned by the list, every tag's list
/// the part of the main list that carries the tag.
void requireWhole(const CPREvents &events);

/// Requires of every event that \a events announces from now on that it stands where the rule of
/// insertion puts it.
void requireOrder(CPREvents &events);

/// Requires that \a loaded, read from what \a stored has written, holds the same session.
void requireSame(const CPRData &stored, const CPRData &loaded);

/// Lets the due notifications of \a session come, without waiting for the clock.
void fireTimers(CPRData &session);

/// The document that \a write makes, as the archive holds it.
QString document(const std::function<void(QXmlStreamWriter &)> &write);

} // namespace fuzzing

#endif
