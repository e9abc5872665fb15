// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "chestboard/CommonDefs.h"
#include "chestboard/RMessage.h"
#include "manikinlog/ManikinLogReader.h"

#include <QElapsedTimer>
#include <QFile>

// Stands for a manikin with its link library, which gives a host its messages: what is in a
// recorded log comes at the times at which it was recorded, or 'speed' times as fast. The host has
// a method per callback; report() gets what a link library gives in other ways. Put your own link
// library in its place.
template <typename Host> class RecordedLink {
public:
    RecordedLink(const QString &name, double speed, Host *host)
        : m_log(name), m_reader(&m_log, name), m_speed(speed), m_host(host)
    {
        m_log.open(QIODevice::ReadOnly);
        m_hasNext = m_reader.read(m_next) == manikinlog::ManikinLogReader::Result::Record;
    }

    // The manikin is there: gives what it says before a session starts.
    void introduce()
    {
        const auto *state = std::get_if<manikinlog::State>(&m_next.entry);
        while (m_hasNext && (!state || state->state != CPRData::CPR_START)) {
            reportNext();
            state = std::get_if<manikinlog::State>(&m_next.entry);
        }
    }
    // The session starts: from now on goOn() has something to give.
    void start()
    {
        m_begin = m_next.msecs;
        m_clock.start();
    }
    // Gives what is due. False at the end of the log.
    bool goOn()
    {
        const double now = m_clock.isValid() ? double(m_clock.elapsed()) * m_speed : -1;
        while (m_hasNext && double(m_next.msecs - m_begin) <= now)
            reportNext();
        return m_hasNext;
    }
    // The instructor ends the session, which has not started perhaps. A manikin would still send
    // its statistics and scores.
    void stop()
    {
        if (m_clock.isValid() && m_hasNext)
            m_host->report({m_next.msecs, manikinlog::State{CPRData::CPR_ENDED}});
    }

private:
    void reportNext()
    {
        const qint64 msecs = m_next.msecs;
        if (const auto *m = std::get_if<manikinlog::Message>(&m_next.entry))
            m_host->messageReceived(
                msecs, {m->identifier, m->content, bls_2010::HeaderElement(m->sequence)});
        else if (const auto *h = std::get_if<manikinlog::WaveHeader>(&m_next.entry))
            m_host->waveHeaderReceived(msecs, bls_2010::HeaderElement(h->sequence));
        else if (const auto *w = std::get_if<manikinlog::WaveSample>(&m_next.entry))
            m_host->waveDataReceived(msecs, bls_2010::CommonDefs::WaveType(w->waveType), w->value,
                                     w->sequence);
        else
            // States, names and the start: a host has them from elsewhere in its link library.
            m_host->report(m_next);
        m_hasNext = m_reader.read(m_next) == manikinlog::ManikinLogReader::Result::Record;
    }

    QFile m_log;
    manikinlog::ManikinLogReader m_reader;
    double m_speed;
    Host *m_host; // not owned
    manikinlog::Record m_next;
    bool m_hasNext = false;
    qint64 m_begin = 0; // of the session, ms in the log
    QElapsedTimer m_clock; // since it began here
};
