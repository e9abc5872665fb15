// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Documents.h"
#include "Heap.h"
#include "Row.h"

#include <QBuffer>
#include <QXmlStreamReader>

#include <array>

namespace bench {

namespace {

std::vector<Figure> measureSavePeak(Bench &bench)
{
    constexpr int seconds = 10 * secondsPerHour;
    const QString file = bench.sessions.archive(seconds);
    const std::vector<Member> members = membersOf(file);
    CPRData &session = bench.sessions.session(seconds);
    const HeapCount heap;
    if (!save(file, session))
        qFatal("An archive cannot be saved");
    return {withGoal(compareBytes(static_cast<double>(heap.peak()),
                                  memberNamed(members, "CPREvents.xml").bytes.size()),
                     0.1)};
}

// What a compression holds, without anything that makes it an event.
class BareCompression final : public QObject {
public:
    using QObject::QObject;

    std::array<int, 9> numbers{}; // kind, start, end, force, two times, rate, number, status
    std::array<float, 6> depthsAndForces{};
    std::array<bool, 3> faults{};
};

// The first \a count compressions of the document in a document of their own.
QByteArray compressionsOf(const QByteArray &document, int count)
{
    static const QByteArray begin = QByteArrayLiteral("<evt type=\"CprCompEvent\"");
    static const QByteArray end = QByteArrayLiteral("</evt>");
    QByteArray result = QByteArrayLiteral("<eventList>");
    int position = 0;
    for (int i = 0; i < count; ++i) {
        position = document.indexOf(begin, position);
        const int next = document.indexOf(end, position) + end.size();
        result += document.mid(position, next - position);
        position = next;
    }
    return result + QByteArrayLiteral("</eventList>");
}

// What a session's heap holds after it has read the document, and the reader has gone.
double heapOfRead(QByteArray document)
{
    CPRData session;
    const HeapCount heap;
    {
        QBuffer device(&document);
        device.open(QIODevice::ReadOnly);
        QXmlStreamReader reader(&device);
        session.cprEvents()->read(&reader);
    }
    return static_cast<double>(heap.live());
}

std::vector<Figure> measureCompression(Bench &bench)
{
    constexpr int count = 4096;
    const std::vector<Member> members = membersOf(bench.sessions.archive(secondsPerHour));
    const QByteArray &document = memberNamed(members, "CPREvents.xml").bytes;
    const QByteArray none = compressionsOf(document, 0);
    const QByteArray some = compressionsOf(document, count);
    heapOfRead(some); // makes what is made once
    const double loaded = heapOfRead(some) - heapOfRead(none);

    QObject parent;
    const HeapCount heap;
    QList<QObject *> list;
    for (int i = 0; i < count; ++i)
        list.append(new BareCompression(&parent));
    const auto bare = static_cast<double>(heap.live());
    return {withGoal(compareBytes(loaded / count, bare / count), 1.3)};
}

} // namespace

std::vector<Row> memoryRows()
{
    return {
        {5, "ten-hour save, extra peak memory", "size of the events document", measureSavePeak},
        {6, "memory of a loaded compression", "a bare QObject with the same fields in a list",
         measureCompression},
    };
}

} // namespace bench
