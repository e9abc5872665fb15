// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkSession.h"

#include "private/Limits.h"

#include <QCoreApplication>
#include <QDateTime>

#include <utility>

namespace manikinlink {

using manikinlog::Batch;
using manikinlog::ManikinLogReader;
using manikinlog::Record;
using manikinlog::SessionJournal;
using manikinlog::Start;

namespace {

// Of one turn of the event loop: hundreds of journals may be read again at the same time.
constexpr qint64 maxTurnMs = 8;

} // namespace

LinkSession::LinkSession(LinkStream *stream, const QString &target, Keeps keeps, QObject *parent)
    : QObject(parent), m_stream(stream), m_target(target), m_keeps(keeps),
      m_session(keeps == Keeps::Session ? std::make_unique<CPRData>() : nullptr),
      m_player(m_session.get())
{
    connect(&m_journal, &SessionJournal::failed, this, &LinkSession::journalHasFailed);
    connect(&m_journal, &SessionJournal::resumed, this, [this] {
        if (m_stream)
            m_stream->setPaused(false);
        Q_EMIT journalResumed();
    });
    connect(&m_journal, &SessionJournal::synced, this, &LinkSession::acknowledge);
    connect(stream, &LinkStream::batchCompleted, this, [this] {
        m_complete.emplace_back(m_journal.addedRecords(), m_stream->completeBatch());
        if (!m_journal.isOpen())
            acknowledge();
    });
    connect(stream, &LinkStream::ended, this, &LinkSession::close);
    connect(&m_turn, &QTimer::timeout, this, &LinkSession::readTurn);
    m_journal.setSync(stream->journalSync());
    m_turn.start(0);
}

LinkSession::~LinkSession()
{
    if (!m_stream)
        return;
    m_stream->setPaused(true); // its sink is this session
    m_stream->deleteLater();
}

// Opens the journal, and reads what a killed program has left in it, for some ms.
void LinkSession::readTurn()
{
    if (!std::exchange(m_isOpened, true))
        openJournal();
    QElapsedTimer turn;
    turn.start();
    Record record;
    while (m_isReading && !turn.hasExpired(maxTurnMs)) {
        const auto result = m_journal.readLeft(record);
        m_isReading = result == ManikinLogReader::Result::Record;
        if (m_isReading) {
            count(record);
            m_player.play(record);
        }
    }
    if (m_isReading)
        return;
    m_turn.stop();
    begin();
}

void LinkSession::openJournal()
{
    if (m_target.isEmpty())
        return;
    const bool isLeft = SessionJournal::isRecoverable(m_target);
    m_isReading = isLeft && m_journal.resume(m_target);
    if (!m_isReading && (isLeft || !m_journal.open(m_target)))
        journalHasFailed(m_journal.errorString());
}

// A record of what was left: where the stream goes on. A damaged line counts as a record.
void LinkSession::count(const Record &record)
{
    const qint64 lines = m_journal.skippedLines();
    const qint64 damaged = lines - std::exchange(m_skippedLines, lines);
    m_position.msecs = record.msecs;
    if (const auto *batch = std::get_if<Batch>(&record.entry)) {
        m_isOwn = batch->number == 0;
        if (!m_isOwn && batch->number != m_position.batch) {
            m_position.batch = batch->number;
            m_position.records = 0;
        }
        return;
    }
    if (!m_isOwn)
        m_position.records += 1 + damaged;
    if (const auto *stream = std::get_if<manikinlog::Stream>(&record.entry))
        m_isContinued = m_stream && *stream == m_stream->ids();
    else if (const auto *name = std::get_if<manikinlog::ManikinName>(&record.entry))
        m_position.name = name->name;
    else if (const auto *state = std::get_if<manikinlog::State>(&record.entry))
        m_position.setState(state->state);
    else if (std::holds_alternative<Start>(record.entry))
        m_hasStart |= !m_isOwn;
}

void LinkSession::begin()
{
    if (!m_stream)
        return;
    m_isBegun = true;
    const bool hasLeft = m_position.msecs > 0 || m_position.batch > 0 || m_skippedLines > 0;
    if (hasLeft && !m_isContinued) {
        m_stream->refuse(QCoreApplication::translate("manikinlink", "%1 holds another session")
                             .arg(m_journal.fileName()));
        return;
    }
    m_player.setJournal(&m_journal);
    if (!m_isContinued) {
        m_player.play({0, Start{QDateTime::currentDateTimeUtc()}});
        m_player.play({0, m_stream->ids()});
    } else if (m_isOwn && m_position.batch > 0) {
        // The kill came before the batch that goes on behind the receiver's own records.
        m_player.play({m_position.msecs, Batch{m_position.batch}});
        m_isOwn = false;
    }
    if (!m_hasStreamEnded)
        m_stream->setSink([this](const Record &record) { return take(record); }, m_position);
    for (const Record::Entry &entry : std::exchange(m_early, {}))
        insert(entry);
    if (m_hasStreamEnded)
        close();
}

bool LinkSession::take(const Record &record)
{
    if (m_journal.size() > Limits::maxJournalBytes) {
        m_stream->refuse(
            QCoreApplication::translate("manikinlink", "the session has become too long"));
        return false;
    }
    const auto *const state = std::get_if<manikinlog::State>(&record.entry);
    const CPRData::CprState last = m_stream->position().state;
    m_hasStart = m_hasStart || (!m_isOwn && std::holds_alternative<Start>(record.entry));
    // Where the session starts, the journal says when, unless the sender has said it.
    if (state && state->state == CPRData::CPR_START && last == CPRData::CPR_INIT && !m_hasStart
        && !m_isOwn) {
        m_player.play({record.msecs, Batch{0}});
        m_player.play({record.msecs, Start{QDateTime::currentDateTimeUtc()}});
        m_player.play({record.msecs, Batch{m_stream->position().batch}});
    }
    if (const auto *batch = std::get_if<Batch>(&record.entry))
        m_isOwn = batch->number == 0;
    m_player.play(record);
    return m_session || m_journal.isOpen();
}

void LinkSession::insert(const Record::Entry &entry)
{
    if (!m_isBegun) {
        m_early.push_back(entry);
    } else if (!m_stream || m_hasStreamEnded) {
        // A sender that comes back after a kill goes on in the last batch, whose record it is not.
        const qint64 msecs = m_stream ? m_stream->position().msecs : m_position.msecs;
        m_player.play({msecs, Batch{0}});
        m_player.play({msecs, entry});
    } else {
        m_stream->insert(entry);
    }
}

void LinkSession::end()
{
    m_isToEnd = true;
    if (m_stream)
        m_stream->end();
    if (m_hasStreamEnded && m_journal.isWaiting())
        finish();
}

// The session is in its journal alone: it is not done before the disk has that.
bool LinkSession::needsDisk() const
{
    return m_keeps == Keeps::JournalAlone && m_journal.isOpen() && !m_isToEnd;
}

// The disk has some more, or there is no journal: the sender may forget what is complete.
void LinkSession::acknowledge()
{
    const bool isAll = !m_journal.isOpen() || m_journal.syncedRecords() == m_journal.addedRecords();
    std::optional<quint32> safe;
    while (!m_complete.empty()
           && (isAll || m_complete.front().first <= m_journal.syncedRecords())) {
        safe = m_complete.front().second;
        m_complete.pop_front();
    }
    if (m_stream && isAll && m_hasStreamEnded && m_stream->isWhole())
        safe = m_stream->completeBatch();
    if (m_stream && safe)
        m_stream->acknowledge(*safe);
    if (isAll && m_hasStreamEnded)
        finish();
}

void LinkSession::journalHasFailed(const QString &reason)
{
    Q_EMIT journalFailed(reason);
    if (m_hasStreamEnded) {
        if (!needsDisk())
            finish();
    } else if (m_stream && m_keeps == Keeps::JournalAlone) {
        // A disk that is full or fails is tried again; the sender keeps the rest meanwhile.
        if (m_journal.isWaiting())
            m_stream->setPaused(true);
        else if (!m_journal.isOpen())
            m_stream->refuse(reason);
    }
}

// The stream has ended. Before begin(), which then comes back to this, what was left is read.
void LinkSession::close()
{
    m_hasStreamEnded = true;
    if (!m_isBegun)
        return;
    m_player.finish();
    m_journal.requestSync();
    if (m_journal.isWaiting() && !needsDisk())
        finish();
    else
        acknowledge();
}

void LinkSession::finish()
{
    if (!std::exchange(m_hasEnded, true))
        Q_EMIT ended();
}

bool LinkSession::removeJournal()
{
    return m_journal.fileName().isEmpty() || m_journal.remove();
}

} // namespace manikinlink
