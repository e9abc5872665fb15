// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkStream.h"

#include "manikinlink/LinkChannel.h"
#include "manikinlink/LinkHub.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace manikinlink {

namespace {

using manikinlog::Batch;
using Kind = LinkText::Answer::Kind;

constexpr qint64 silentMs = 10'000;
constexpr qint64 halfOpenMs = 30'000;
constexpr qint64 delaySlotMs = 10'000; // six of them are the last minute
// A sender that says so much nonsense on one channel is no sender.
constexpr qint64 maxBadLines = 1000;

bool operator==(const LinkStream::Quality &a, const LinkStream::Quality &b)
{
    return a.batches == b.batches && a.lostBatches == b.lostBatches
        && a.repeatedBatches == b.repeatedBatches && a.badLines == b.badLines
        && a.delayMs == b.delayMs;
}

} // namespace

LinkStream::LinkStream(const manikinlog::Stream &ids, LinkHub *hub)
    : QObject(hub), m_ids(ids), m_hub(hub)
{
    m_clock.start();
    m_delaySlot.start();
}

LinkStream::~LinkStream() = default;

manikinlog::JournalSync *LinkStream::journalSync() const
{
    return m_hub ? m_hub->journalSync() : nullptr;
}

quint32 LinkStream::completeBatch() const
{
    // More of the last batch may come until the next one begins, or all has come.
    return m_isWhole ? m_position.batch : std::max<quint32>(m_position.batch, 1) - 1;
}

void LinkStream::setSink(Sink sink, const Position &position)
{
    const QString oldName = name();
    m_sink = std::move(sink);
    m_position = position;
    if (m_channel)
        welcome();
    if (name() != oldName)
        Q_EMIT nameChanged();
    updateState();
}

// From now on the lines of the channel are those of this stream. It has one channel at a time.
void LinkStream::attach(LinkChannel *channel)
{
    if (m_channel) {
        m_channel->close();
        m_channel->deleteLater();
    }
    m_channel = channel;
    m_channel->setParent(this);
    m_channel->setPaused(m_isPaused);
    m_channel->setReader(nullptr);
    connect(m_channel, &LinkChannel::closed, this, &LinkStream::channelClosed);
    m_lineBatch = 0;
    m_toSkip = 0;
    m_badLinesOfChannel = 0;
    if (m_sink)
        welcome();
    updateState();
}

void LinkStream::welcome()
{
    answer(Kind::Welcome, completeBatch());
    if (m_wantsStart && !m_position.hasStarted)
        answer(Kind::Start);
    if (m_wantsStop)
        answer(Kind::Stop);
    m_channel->setReader([this](const QByteArray &line) { return parse(line); });
}

void LinkStream::answer(Kind kind, quint32 batch)
{
    if (m_channel)
        m_channel->answer({kind, batch, {}});
}

void LinkStream::channelClosed()
{
    const bool canReturn = m_channel->canReturn();
    m_channel->close();
    m_channel->deleteLater();
    m_channel = nullptr;
    m_gone.start();
    if (canReturn)
        updateState();
    else
        finish(false);
}

void LinkStream::setPaused(bool isPaused)
{
    m_isPaused = isPaused;
    if (m_channel)
        m_channel->setPaused(isPaused);
}

void LinkStream::acknowledge(quint32 batch)
{
    answer(Kind::Ack, batch);
    if (m_isWhole && batch >= m_position.batch && m_hub)
        m_hub->setSafe(m_ids);
}

void LinkStream::start()
{
    if (!std::exchange(m_wantsStart, true) && m_sink)
        answer(Kind::Start);
}

void LinkStream::stop()
{
    if (!std::exchange(m_wantsStop, true) && m_sink)
        answer(Kind::Stop);
}

void LinkStream::end()
{
    finish(false);
}

void LinkStream::refuse(const QString &reason)
{
    if (m_channel)
        m_channel->answer({Kind::Refused, 0, reason});
    if (m_hub)
        Q_EMIT m_hub->refused(m_ids.manikin, reason);
    finish(false);
}

// The channel of a session that is whole stays: its last batches are acknowledged later.
void LinkStream::finish(bool isWhole)
{
    if (m_state == Ended)
        return;
    m_isWhole = isWhole;
    m_state = Ended;
    if (m_channel && !isWhole) {
        m_channel->close();
        m_channel->deleteLater();
        m_channel = nullptr;
    }
    if (m_channel)
        m_channel->setReader([](const QByteArray &) { return true; });
    Q_EMIT stateChanged();
    Q_EMIT ended();
}

bool LinkStream::isAlive() const
{
    return m_channel && m_channel->silentMs() < silentMs;
}

void LinkStream::updateState()
{
    if (m_state == Ended)
        return;
    State state;
    if (!m_channel)
        state = Gone;
    else if (!isAlive())
        state = Silent;
    else if (m_isManikinLost)
        state = ManikinLost;
    else
        state = m_position.hasStarted ? Running : Ready;
    if (std::exchange(m_state, state) != state)
        Q_EMIT stateChanged();
}

// Comes each second.
void LinkStream::tick()
{
    if (m_channel && m_channel->silentMs() >= halfOpenMs)
        channelClosed();
    updateState();
    if (m_delaySlot.hasExpired(delaySlotMs)) {
        m_delaySlot.start();
        std::rotate(m_leastDelays.begin(), m_leastDelays.end() - 1, m_leastDelays.end());
        m_leastDelays.front().reset();
    }
    if (!(m_quality == m_announced)) {
        m_announced = m_quality;
        Q_EMIT qualityChanged();
    }
    if (m_state == Gone && m_gone.hasExpired(m_hub->m_patienceMs))
        finish(false);
}

// The clocks of both ends differ by an unknown time, which is in the smallest delay as well.
void LinkStream::measureDelay(qint64 msecs)
{
    constexpr qint64 maxMsecs = qint64(1) << 62; // a sender can say any time
    const qint64 delay = m_clock.elapsed() - std::min(msecs, maxMsecs);
    std::optional<qint64> &newest = m_leastDelays.front();
    newest = std::min(newest.value_or(delay), delay);
    qint64 least = *newest;
    for (const std::optional<qint64> &slot : m_leastDelays)
        least = std::min(least, slot.value_or(least));
    m_quality.delayMs = delay - least;
}

bool LinkStream::parse(const QByteArray &line)
{
    if (LinkText::isComment(line))
        return true;
    QString error;
    const std::optional<LinkText::Line> parsed = LinkText::parseLine(line, &error);
    if (parsed)
        return std::visit([this](const auto &what) { return handle(what); }, *parsed);
    // Each message of a broker has the first line again.
    return line == LinkText::firstLine(m_ids) || countBadLine(error);
}

bool LinkStream::countBadLine(const QString &error)
{
    ++m_quality.badLines;
    if (++m_badLinesOfChannel < maxBadLines)
        return true;
    refuse(
        QCoreApplication::translate("manikinlink", "too many lines that mean nothing, such as: %1")
            .arg(error));
    return false;
}

bool LinkStream::handle(const LinkText::Control &control)
{
    measureDelay(control.msecs);
    switch (control.kind) {
    case LinkText::Control::Kind::Beat:
        break;
    case LinkText::Control::Kind::Lost:
        m_isManikinLost = true;
        break;
    case LinkText::Control::Kind::Found:
        manikinFound();
        break;
    case LinkText::Control::Kind::Bye:
        finish(true);
        return false;
    }
    updateState();
    return true;
}

// The session goes on as it does on a host whose own link to the manikin came back.
void LinkStream::manikinFound()
{
    const CPRData::CprState state = m_position.state;
    if (!std::exchange(m_isManikinLost, false))
        return;
    if (state == CPRData::CPR_ENDED || state == CPRData::CPR_STOP)
        return;
    insert(manikinlog::State{CPRData::CPR_RECONNECTED});
    if (state == CPRData::CPR_START)
        insert(manikinlog::State{CPRData::CPR_START});
}

bool LinkStream::handle(const manikinlog::Record &record)
{
    if (const auto *batch = std::get_if<Batch>(&record.entry))
        return handleBatch(*batch) || give(record);
    if (m_lineBatch == 0)
        return countBadLine(
            QCoreApplication::translate("manikinlink", "a record before the first batch"));
    if (m_toSkip != 0) {
        m_toSkip -= m_toSkip > 0 ? 1 : 0;
        return true;
    }
    measureDelay(record.msecs);
    if (m_isManikinLost)
        manikinFound();
    return give(record);
}

// True for a batch that was begun before. Of the last one only the end may be missing.
bool LinkStream::handleBatch(const Batch &batch)
{
    const qint64 next = qint64(m_position.batch) + 1;
    m_lineBatch = batch.number;
    const bool isRepeated = batch.number < next;
    if (isRepeated) {
        m_toSkip = batch.number == m_position.batch ? m_position.records : -1;
        ++m_quality.repeatedBatches;
    } else {
        m_toSkip = 0;
        m_quality.lostBatches += batch.number - next;
        ++m_quality.batches;
    }
    return isRepeated;
}

// False when no more lines are wanted in this turn.
bool LinkStream::give(const manikinlog::Record &record)
{
    manikinlog::Record timed = record;
    timed.msecs = std::max(record.msecs, m_position.msecs);
    const auto *const batch = std::get_if<Batch>(&record.entry);
    if (batch) {
        m_position.batch = batch->number;
        m_position.records = 0;
    } else {
        ++m_position.records;
    }
    m_position.msecs = timed.msecs;
    m_sink(timed);
    lookAt(timed);
    if (batch && batch->number > 1)
        Q_EMIT batchCompleted();
    // All of these may have ended or paused the stream.
    return m_channel && m_state != Ended && !m_isPaused;
}

bool LinkStream::insert(const manikinlog::Record::Entry &entry)
{
    if (!m_sink)
        return false;
    const qint64 msecs = m_position.msecs;
    const bool isTaken = m_sink({msecs, Batch{0}}) && m_sink({msecs, entry});
    if (m_position.batch > 0)
        m_sink({msecs, Batch{m_position.batch}});
    lookAt({msecs, entry});
    return isTaken;
}

void LinkStream::lookAt(const manikinlog::Record &record)
{
    if (const auto *name = std::get_if<manikinlog::ManikinName>(&record.entry)) {
        if (std::exchange(m_position.name, name->name) != name->name)
            Q_EMIT nameChanged();
    } else if (const auto *state = std::get_if<manikinlog::State>(&record.entry)) {
        m_position.setState(state->state);
        updateState();
    }
}

} // namespace manikinlink
