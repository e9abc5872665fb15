// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "LiveFeed.h"

namespace {

constexpr int tickMs = 10; // a manikin sends a wave packet every 20 ms
// The rest of the frame belongs to the window.
constexpr int maxTickMs = 8;

} // namespace

LiveFeed::LiveFeed(CPRData *session, std::unique_ptr<RecordSource> source,
                   manikinlog::SessionJournal *journal, QObject *parent)
    : QObject(parent), m_session(session), m_source(std::move(source)), m_player(session)
{
    m_player.setJournal(journal);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(tickMs);
    connect(&m_timer, &QTimer::timeout, this, &LiveFeed::playDue);
    fetch();
}

LiveFeed::~LiveFeed() = default;

// A log that somebody writes is over when the manikin has sent everything.
bool LiveFeed::isOver() const
{
    const bool isComplete =
        m_session->cprState() == CPRData::CPR_ENDED && m_session->cprEvents()->isScoresReady();
    return !m_hasNext && (isComplete || !m_source->canGrow());
}

void LiveFeed::fetch()
{
    m_hasNext = m_source->next(m_next);
}

void LiveFeed::start(double speed)
{
    m_speed = speed;
    setClock();
    m_timer.start();
}

// Time goes on from the record that was played last.
void LiveFeed::setClock()
{
    m_begin = m_played;
    m_clock.start();
}

qint64 LiveFeed::now() const
{
    return m_begin + static_cast<qint64>(static_cast<double>(m_clock.elapsed()) * m_speed);
}

bool LiveFeed::playNext()
{
    if (!m_hasNext)
        return false;
    m_played = m_next.msecs;
    m_player.play(m_next);
    fetch();
    return true;
}

void LiveFeed::playDue()
{
    const qint64 due = now();
    QElapsedTimer tick;
    tick.start();
    if (!m_hasNext)
        fetch();
    while (m_hasNext && m_next.msecs <= due && tick.elapsed() < maxTickMs)
        playNext();
    if (isOver())
        finish();
}

void LiveFeed::advanceTo(qint64 msecs)
{
    // Before the first packet session time stands still.
    while (m_isRunning && m_session->cprEvents()->sessionTime() < msecs && playNext()) { }
    // Where time stands still nobody waits for more.
    if (isOver() || (!m_hasNext && m_speed <= 0))
        finish();
    setClock();
}

// Time has gone on since the record that was played last. A log that waits for more has ended with
// that. In another one nothing comes behind its next record, which comes still, or if the session
// is resumed.
void LiveFeed::catchUp()
{
    if (m_isRunning && m_clock.isValid() && m_hasNext)
        m_played = qBound(m_played, now(), m_next.msecs);
}

void LiveFeed::insert(const manikinlog::Record::Entry &entry)
{
    catchUp();
    m_player.play({m_played, entry});
}

void LiveFeed::stop()
{
    if (!m_isRunning)
        return;
    catchUp();
    m_player.play({m_played, manikinlog::State{CPRData::CPR_ENDED}});
    finish();
}

void LiveFeed::resume()
{
    if (!canResume())
        return;
    m_isRunning = true;
    m_player.play({m_played, manikinlog::State{CPRData::CPR_START}});
    setClock();
    m_timer.start();
}

void LiveFeed::finish()
{
    if (!m_isRunning)
        return;
    m_isRunning = false;
    m_timer.stop();
    m_player.finish();
    Q_EMIT finished(m_source->errorString());
}
