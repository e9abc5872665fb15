// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Documents.h"
#include "Row.h"

#include <QXmlStreamWriter>

namespace bench {

namespace {

std::vector<Figure> measureLoad(Bench &bench)
{
    const QString file = bench.sessions.archive(secondsPerHour);
    std::vector<Member> members = membersOf(file);
    const auto subject = [&file](Clock &clock) {
        CPRData session;
        clock.start();
        if (!load(file, session))
            qFatal("An archive cannot be loaded");
        clock.stop();
    };
    const auto reference = [&members](Clock &clock) {
        clock.start();
        for (Member &member : members) {
            inflate(member.packed, member.bytes);
            if (member.isDocument())
                keep(walkTokens(member.bytes));
        }
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference), 1.3)};
}

std::vector<Figure> measureSave(Bench &bench)
{
    const std::vector<Member> members = membersOf(bench.sessions.archive(secondsPerHour));
    std::vector<ReadyDocument> documents;
    std::vector<QByteArray> waves;
    for (const Member &member : members) {
        if (member.isDocument())
            documents.emplace_back(member.bytes);
        else
            waves.push_back(member.bytes);
    }
    CPRData &session = bench.sessions.session(secondsPerHour);
    const QString file = bench.sessions.file(QStringLiteral("saved.zip"));
    const auto subject = [&](Clock &clock) {
        clock.start();
        if (!save(file, session))
            qFatal("An archive cannot be saved");
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        clock.start();
        for (const ReadyDocument &document : documents)
            keep(document.writeDeflated());
        for (const QByteArray &wave : waves)
            keep(deflate(wave));
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference), 1.1)};
}

std::vector<Figure> measureEventList(Bench &bench)
{
    const std::vector<Member> members = membersOf(bench.sessions.archive(secondsPerHour));
    const ReadyDocument document(memberNamed(members, "CPREvents.xml").bytes);
    CPREvents &events = *bench.sessions.session(secondsPerHour).cprEvents();
    const auto side = [](Clock &clock, auto write) {
        Sink sink;
        QXmlStreamWriter writer(&sink);
        writer.setAutoFormatting(true);
        clock.start();
        write(writer);
        clock.stop();
    };
    const auto subject = [&](Clock &clock) {
        side(clock, [&events](QXmlStreamWriter &writer) { events.write(&writer); });
    };
    const auto reference = [&](Clock &clock) {
        side(clock, [&document](QXmlStreamWriter &writer) { document.write(writer); });
    };
    return {withGoal(compare(bench.pairs, subject, reference), 1.15)};
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
        {3, "write the event list", "the bare writer with ready strings", measureEventList},
    };
}

} // namespace bench
