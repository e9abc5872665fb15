// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogPlayer.h"

#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/SessionJournal.h"

#include <chestboard/CommonDefs.h>
#include <chestboard/RMessage.h>

namespace manikinlog {

namespace {

bool feed(CPRData &session, const Message &entry)
{
    bls_2010::RMessage message(entry.identifier, entry.content,
                               bls_2010::HeaderElement(entry.sequence));
    return session.incomingMsg(&message);
}

bool feed(CPRData &session, const WaveHeader &header)
{
    session.waveHeaderReceived(header.sequence);
    return true;
}

bool feed(CPRData &session, const WaveSample &sample)
{
    session.waveDataReceived(static_cast<bls_2010::CommonDefs::WaveType>(sample.waveType),
                             sample.value, sample.sequence);
    return true;
}

bool feed(CPRData &session, const State &state)
{
    session.setCprState(state.state);
    return true;
}

bool feed(CPRData &session, const Learner &learner)
{
    session.assignLearner(learner.name);
    return true;
}

} // namespace

ManikinLogPlayer::ManikinLogPlayer(CPRData *session) : m_session(session)
{
}

bool ManikinLogPlayer::play(const Record &record)
{
    if (m_journal)
        m_journal->add(record);
    return std::visit([this](const auto &entry) { return feed(*m_session, entry); }, record.entry);
}

bool ManikinLogPlayer::play(ManikinLogReader &reader, const Progress &progress)
{
    Record record;
    auto result = reader.read(record);
    while (result == ManikinLogReader::Result::Record) {
        play(record);
        if (progress)
            progress(record.msecs);
        result = reader.read(record);
    }
    return result == ManikinLogReader::Result::End;
}

} // namespace manikinlog
