// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Sessions.h"

#include "Measure.h"
#include "manikinlog/ManikinLogPlayer.h"
#include "manikinsim/Scenario.h"
#include "manikinsim/Simulator.h"

#include <CPRFileHandlerZip.h>

#include <chestboard/CommunicationIDs.h>

#include <QDir>
#include <QFileInfo>

namespace bench {

namespace {

constexpr quint64 seed = 1;

QString directoryTemplate()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    const QString parent =
        memory.isDir() && memory.isWritable() ? memory.filePath() : QDir::tempPath();
    return parent + QStringLiteral("/cprbench-XXXXXX");
}

} // namespace

manikinsim::Scenario training(int seconds)
{
    manikinsim::Scenario scenario = *manikinsim::Scenario::find(QStringLiteral("good"));
    scenario.seconds = seconds;
    scenario.skill.pauses = 5;
    return scenario;
}

std::unique_ptr<CPRData> startedSession()
{
    auto session = std::make_unique<CPRData>();
    for (const auto state : {CPRData::CPR_MANIKIN_INIT, CPRData::CPR_INIT, CPRData::CPR_START})
        session->setCprState(state);
    return session;
}

bool load(const QString &file, CPRData &session)
{
    CPRFileHandlerZip archive;
    return archive.open(file, CPRFileHandlerZip::Read) && session.readData(&archive)
        && archive.close();
}

std::unique_ptr<CPRData> loadedSession(const QString &file)
{
    auto session = std::make_unique<CPRData>();
    return load(file, *session) ? std::move(session) : nullptr;
}

bool save(const QString &file, CPRData &session)
{
    CPRFileHandlerZip archive;
    return archive.open(file, CPRFileHandlerZip::Create) && session.writeData(&archive)
        && archive.close();
}

Sessions::Sessions() : m_directory(directoryTemplate())
{
}

CPRData &Sessions::session(int seconds)
{
    std::unique_ptr<CPRData> &session = m_sessions[seconds];
    if (!session) {
        showProgress(QStringLiteral("simulating %1 s").arg(seconds));
        session = std::make_unique<CPRData>();
        manikinlog::ManikinLogPlayer player(session.get());
        manikinsim::Simulator simulator(training(seconds), seed);
        manikinlog::Record record;
        while (simulator.next(record))
            player.play(record);
    }
    return *session;
}

QString Sessions::archive(int seconds)
{
    const QString name = file(QStringLiteral("%1.zip").arg(seconds));
    if (!QFileInfo::exists(name) && !save(name, session(seconds)))
        qFatal("%s cannot be written", qPrintable(name));
    return name;
}

const std::vector<manikinlog::Record> &Sessions::hour()
{
    if (m_hour.empty()) {
        manikinsim::Simulator simulator(training(secondsPerHour), seed);
        manikinlog::Record record;
        while (simulator.next(record))
            m_hour.push_back(record);
    }
    return m_hour;
}

std::vector<bls_2010::RMessage> Sessions::compressions(int count)
{
    std::vector<QByteArray> contents;
    for (const manikinlog::Record &record : hour()) {
        const auto *message = std::get_if<manikinlog::Message>(&record.entry);
        if (message && message->identifier == CommunicationIDs::RPL_COMP_EVENT)
            contents.push_back(message->content);
    }
    constexpr int packetsPerCompression = 27; // 540 ms
    std::vector<bls_2010::RMessage> messages;
    for (int i = 0; i < count; ++i) {
        messages.emplace_back(CommunicationIDs::RPL_COMP_EVENT,
                              contents[static_cast<std::size_t>(i) % contents.size()],
                              bls_2010::HeaderElement((i + 1) * packetsPerCompression));
    }
    return messages;
}

} // namespace bench
