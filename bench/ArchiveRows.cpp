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

std::vector<Figure> measureLoad(Bench &bench)
{
    const QString file = bench.sessions.archive(secondsPerHour);
    std::vector<QByteArray> packedDocuments;
    std::vector<QByteArray> packedWaves;
    for (const QString &name : documents)
        packedDocuments.push_back(qCompress(memberOf(file, name)));
    for (const QString &name : waves)
        packedWaves.push_back(qCompress(memberOf(file, name)));
    const auto subject = [&file](Clock &clock) {
        CPRData session;
        clock.start();
        if (!load(file, session))
            qFatal("An archive cannot be loaded");
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        clock.start();
        for (const QByteArray &packed : packedDocuments)
            keep(walkTokens(qUncompress(packed)));
        for (const QByteArray &packed : packedWaves)
            keep(qUncompress(packed));
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference), 1.3)};
}

std::vector<Figure> measureSave(Bench &bench)
{
    const QString file = bench.sessions.archive(secondsPerHour);
    std::vector<ReadyDocument> readyDocuments;
    std::vector<QByteArray> waveBytes;
    for (const QString &name : documents)
        readyDocuments.emplace_back(memberOf(file, name));
    for (const QString &name : waves)
        waveBytes.push_back(memberOf(file, name));
    CPRData &session = bench.sessions.session(secondsPerHour);
    const QString saved = bench.sessions.file(QStringLiteral("saved.zip"));
    const auto subject = [&](Clock &clock) {
        clock.start();
        if (!save(saved, session))
            qFatal("An archive cannot be saved");
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        clock.start();
        for (const ReadyDocument &document : readyDocuments)
            keep(qCompress(document.write()));
        for (const QByteArray &bytes : waveBytes)
            keep(qCompress(bytes));
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference), 1.1)};
}

std::vector<Figure> measureSavePeak(Bench &bench)
{
    constexpr int seconds = 10 * secondsPerHour;
    const int size = memberOf(bench.sessions.archive(seconds), eventsDocument).size();
    CPRData &session = bench.sessions.session(seconds);
    const HeapCount heap;
    if (!save(bench.sessions.file(QStringLiteral("saved.zip")), session))
        qFatal("An archive cannot be saved");
    return {withGoal(compareBytes(static_cast<double>(heap.peak()), size), 0.1)};
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
    const QByteArray document = memberOf(bench.sessions.archive(secondsPerHour), eventsDocument);
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

std::vector<Row> archiveRows()
{
    return {
        {1, "load a session archive",
         "bare QXmlStreamReader token loop over the same documents + zlib inflate of all members",
         measureLoad},
        {2, "save a session archive",
         "bare QXmlStreamWriter with ready strings + zlib deflate of all members", measureSave},
        {5, "ten-hour save, extra peak memory", "size of the events document", measureSavePeak},
        {6, "memory of a loaded compression", "a bare QObject with the same fields in a list",
         measureCompression},
    };
}

} // namespace bench
