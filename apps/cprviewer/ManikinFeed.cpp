// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ManikinFeed.h"

#include "LiveFeed.h"
#include "UnsavedSessions.h"

#include <manikinlink/LinkSession.h>
#include <manikinlog/SessionJournal.h>
#include <manikinsim/Scenario.h>

#include <QTimer>

#include <algorithm>
#include <utility>

using manikinlink::LinkSession;
using manikinlink::LinkStream;
using manikinlog::SessionJournal;

namespace {

// What a manikin may need to send its end, statistics and scores. One that does not answer is not
// waited for any longer.
constexpr int endingMs = 10000;

static_assert(int(ManikinFeed::Ready) == int(LinkStream::Ready)
              && int(ManikinFeed::Running) == int(LinkStream::Running)
              && int(ManikinFeed::ManikinLost) == int(LinkStream::ManikinLost)
              && int(ManikinFeed::Silent) == int(LinkStream::Silent)
              && int(ManikinFeed::Gone) == int(LinkStream::Gone));

class SimulatedFeed final : public ManikinFeed {
public:
    SimulatedFeed(const manikinsim::Scenario &scenario, quint64 seed, double speed,
                  const UnsavedSessions *unsaved)
        : m_name(scenario.manikinName), m_unsaved(unsaved), m_speed(speed),
          m_journal(std::make_unique<SessionJournal>()),
          m_feed(&m_session, RecordSource::simulated(scenario, seed), m_journal.get())
    {
        connect(m_journal.get(), &SessionJournal::failed, this, &ManikinFeed::problem);
        connect(m_journal.get(), &SessionJournal::resumed, this,
                [this] { Q_EMIT problem(QString()); });
        connect(&m_feed, &LiveFeed::finished, this, [this](const QString &error) {
            if (!error.isEmpty())
                Q_EMIT problem(error);
            Q_EMIT changed();
            Q_EMIT ended();
        });
    }
    CPRData *session() const override { return &m_session; }
    State state() const override
    {
        return m_isBegun ? m_feed.isRunning() ? Running : Ended : Ready;
    }
    QString target() const override { return m_target; }
    QString name() const override { return m_name; }
    bool endsByItself() const override { return true; }
    void start() override
    {
        if (std::exchange(m_isBegun, true))
            return;
        m_target = m_unsaved->newTarget();
        if (!m_target.isEmpty() && !m_journal->open(m_target))
            Q_EMIT problem(m_journal->errorString());
        m_feed.start(m_speed);
        Q_EMIT changed();
    }
    void stop() override { m_feed.stop(); }
    bool canResume() const override { return m_journal && m_isBegun && m_feed.canResume(); }
    void resume() override
    {
        m_feed.resume();
        Q_EMIT changed();
    }
    void advanceTo(qint64 msecs) override { m_feed.advanceTo(msecs); }
    void insert(const manikinlog::Record::Entry &entry) override
    {
        if (m_journal)
            m_feed.insert(entry);
    }
    void closeJournal(bool isSaved) override
    {
        if (!m_journal)
            return;
        m_feed.setJournal(nullptr);
        if (isSaved)
            m_journal->remove();
        m_journal.reset();
        Q_EMIT changed();
    }

private:
    QString m_name;
    const UnsavedSessions *m_unsaved; // not owned
    QString m_target; // since start()
    double m_speed;
    mutable CPRData m_session;
    std::unique_ptr<SessionJournal> m_journal; // null when it is closed for good
    LiveFeed m_feed;
    bool m_isBegun = false;
};

class LinkFeed final : public ManikinFeed {
public:
    LinkFeed(LinkStream *stream, const UnsavedSessions &unsaved)
        : m_stream(stream), m_target(unsaved.targetOf(idOf(*stream))),
          m_link(std::make_unique<LinkSession>(stream, m_target)), m_name(stream->name())
    {
        for (const auto change :
             {&LinkStream::stateChanged, &LinkStream::nameChanged, &LinkStream::qualityChanged})
            connect(stream, change, this, &LinkFeed::read);
        connect(m_link.get(), &LinkSession::ended, this, [this] {
            m_state = Ended;
            Q_EMIT changed();
            Q_EMIT ended();
        });
        connect(m_link.get(), &LinkSession::journalFailed, this, &ManikinFeed::problem);
        connect(m_link.get(), &LinkSession::journalResumed, this,
                [this] { Q_EMIT problem(QString()); });
        m_ending.setSingleShot(true);
        m_ending.setInterval(endingMs);
        connect(&m_ending, &QTimer::timeout, m_link.get(), &LinkSession::end);
        read();
    }
    CPRData *session() const override { return m_session ? m_session.get() : m_link->session(); }
    State state() const override { return m_state; }
    QString target() const override { return m_target; }
    QString name() const override { return m_name; }
    Quality quality() const override { return m_quality; }
    bool isStarting() const override { return m_isStarting && m_state == Ready; }
    void start() override
    {
        if (!m_stream)
            return;
        m_isStarting = true;
        m_stream->start();
        Q_EMIT changed();
    }
    void stop() override
    {
        if (!m_link)
            return;
        if (m_stream)
            m_stream->stop();
        if (m_state == Gone) // nobody is there to answer
            m_link->end();
        else if (!m_ending.isActive())
            m_ending.start();
    }
    void insert(const manikinlog::Record::Entry &entry) override
    {
        if (m_link)
            m_link->insert(entry);
    }
    void closeJournal(bool isSaved) override
    {
        if (!m_link)
            return;
        if (isSaved)
            m_link->removeJournal();
        m_session = m_link->takeSession();
        m_link.release()->deleteLater(); // it may be what has called
        Q_EMIT changed();
    }

private:
    // The name of a file. Ids hold no "+", so that no two streams have the same.
    static QString idOf(const LinkStream &stream)
    {
        return QStringLiteral("link+%1+%2+%3")
            .arg(stream.manikin(), stream.sender(), stream.sessionId());
    }

    void read()
    {
        if (m_stream && m_state != Ended) {
            // A stream that has ended waits for the disk; m_link says when that has the journal.
            if (m_stream->state() != LinkStream::Ended)
                m_state = static_cast<State>(m_stream->state());
            m_name = m_stream->name();
            const LinkStream::Quality quality = m_stream->quality();
            m_quality = {static_cast<int>(std::min<qint64>(quality.lostBatches, maxShown)),
                         static_cast<int>(std::min<qint64>(quality.delayMs, maxShown))};
        }
        Q_EMIT changed();
    }

    static constexpr qint64 maxShown = 1000000; // nobody reads more

    const QPointer<LinkStream> m_stream; // goes with m_link or with its hub
    const QString m_target;
    std::unique_ptr<CPRData> m_session; // null while m_link has it
    std::unique_ptr<LinkSession> m_link; // null when the journal is closed for good
    QString m_name;
    State m_state = Ready;
    Quality m_quality;
    bool m_isStarting = false;
    QTimer m_ending; // since stop(), until the end is not waited for any longer
};

} // namespace

ManikinFeed::~ManikinFeed() = default;

std::unique_ptr<ManikinFeed> ManikinFeed::simulated(const manikinsim::Scenario &scenario,
                                                    quint64 seed, double speed,
                                                    const UnsavedSessions *unsaved)
{
    return std::make_unique<SimulatedFeed>(scenario, seed, speed, unsaved);
}

std::unique_ptr<ManikinFeed> ManikinFeed::linked(LinkStream *stream, const UnsavedSessions *unsaved)
{
    return std::make_unique<LinkFeed>(stream, *unsaved);
}
