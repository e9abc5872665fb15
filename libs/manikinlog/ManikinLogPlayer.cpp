// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogPlayer.h"

#include "CPREventSessionInfo.h"
#include "CPREventUser.h"
#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/SessionJournal.h"
#include "private/Units.h"

#include <chestboard/CommonDefs.h>
#include <chestboard/RMessage.h>

namespace manikinlog {

ManikinLogPlayer::ManikinLogPlayer(CPRData *session) : m_session(session)
{
}

bool ManikinLogPlayer::play(const Record &record)
{
    if (m_journal)
        m_journal->add(record);
    m_msecs = record.msecs;
    if (!m_session)
        return false;
    return std::visit([this](const auto &entry) { return feed(entry); }, record.entry);
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
    finish();
    return result == ManikinLogReader::Result::End;
}

void ManikinLogPlayer::finish()
{
    if (m_session)
        storeTime(CPREventBase::endTime, m_msecs - m_startMsecs);
}

bool ManikinLogPlayer::feed(const Message &entry)
{
    bls_2010::RMessage message(entry.identifier, entry.content,
                               bls_2010::HeaderElement(entry.sequence));
    return m_session->incomingMsg(&message);
}

bool ManikinLogPlayer::feed(const WaveHeader &header)
{
    m_session->waveHeaderReceived(header.sequence);
    return true;
}

bool ManikinLogPlayer::feed(const WaveSample &sample)
{
    m_session->waveDataReceived(static_cast<bls_2010::CommonDefs::WaveType>(sample.waveType),
                                sample.value, sample.sequence);
    return true;
}

bool ManikinLogPlayer::feed(const State &state)
{
    m_session->setCprState(state.state);
    // The session has taken the present for its start, or has a new session info.
    storeTime(CPREventBase::startTime, 0);
    return true;
}

bool ManikinLogPlayer::feed(const Learner &learner)
{
    m_session->assignLearner(learner.name);
    return true;
}

bool ManikinLogPlayer::feed(const Start &start)
{
    m_start = start.time;
    m_startMsecs = m_msecs;
    storeTime(CPREventBase::startTime, 0);
    return true;
}

bool ManikinLogPlayer::feed(const ManikinName &manikin)
{
    if (CPREventSessionInfo *info = m_session->cprEvents()->sessionInfo())
        info->setParameter(CPREventBase::manikinName, manikin.name);
    return true;
}

bool ManikinLogPlayer::feed(const Remark &remark)
{
    CPREvents *events = m_session->cprEvents();
    events->addEvent(new CPREventUser(remark.msecs, events, remark.text), true);
    return true;
}

bool ManikinLogPlayer::feed(const RemarkRemoval &removal)
{
    for (CPREventBase *event : m_session->cprEvents()->events()) {
        if (event->type() != CPREventBase::Event || event->msecs() != removal.msecs
            || event->parameterValue(CPREventBase::eventId, QVariant()).toString() != removal.text)
            continue;
        delete event;
        return true;
    }
    return false;
}

bool ManikinLogPlayer::feed(const Stream &)
{
    // What a receiver has of a stream is no part of the session; likewise a batch.
    return true;
}

bool ManikinLogPlayer::feed(const Batch &)
{
    return true;
}

// The time \a msecs after the start.
void ManikinLogPlayer::storeTime(CPREventBase::ParameterType type, qint64 msecs)
{
    // Times of a damaged log can lie anywhere.
    constexpr qint64 maxMsecs = 366 * qint64(24) * 60 * Units::msecsPerMinute;
    CPREventSessionInfo *info = m_session->cprEvents()->sessionInfo();
    if (!m_start.isValid() || !info || msecs < 0 || msecs > maxMsecs)
        return;
    info->setParameter(type, m_start.addMSecs(msecs).toUTC().toString(Qt::ISODate));
}

} // namespace manikinlog
