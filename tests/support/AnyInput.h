// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_ANYINPUT_H
#define TESTSUPPORT_ANYINPUT_H

#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "support/Messages.h"

#include <limits>
#include <random>

namespace testsupport {

/// Messages, headers, samples and host calls in any order, with any content; the same for the same
/// seed.
class AnyInput {
public:
    explicit AnyInput(quint32 seed) : m_random(seed) { }

    void act(CPRData &session)
    {
        CPREvents &events = *session.cprEvents();
        switch (below(20)) {
        case 0:
            session.setCprState(CPRData::CprState(int(below(6)) - 1));
            break;
        case 1:
            session.waveHeaderReceived(oddSequence());
            break;
        case 2:
            session.addUserEvent(below(3) == 0 ? QStringLiteral("Morvane.Event.Deliver shock")
                                               : QString(QChar(below(0xFFFF))));
            break;
        case 3:
            session.assignLearner(QString(QChar(below(0xFFFF))));
            break;
        case 4:
            events.incomingInactivityTime(number(), qint32(below(100)) - 10);
            break;
        case 5: {
            bls_2010::CommonDefs::CompressionEvent_t compression;
            compression.startToPeak = quint16(number());
            compression.peakToEnd = quint16(number());
            compression.peakDepth = qint16(number());
            events.incomingCompressionEvent(below(4) == 0 ? number() : below(100000),
                                            qint32(number()), compression);
            break;
        }
        case 6: {
            bls_2010::CommonDefs::VentilationEvent_t ventilation;
            ventilation.startToPeak = quint16(number());
            ventilation.volume = quint16(number());
            events.incomingVentilationEvent(below(100000), qint32(number()), ventilation);
            break;
        }
        case 7:
            events.removeInactivityEventAfter(int(number()));
            break;
        case 8:
            session.compressionData()->cutOffWavedataAtTime(int(below(200000)) - 1000);
            break;
        case 9:
            if (!events.events().isEmpty() && below(4) == 0)
                deleteOne(events);
            break;
        case 10:
            events.cprdEvent(CPREventBase::AEDEcgRhythms(below(12)),
                             CPREventBase::AEDEcgRhythms(below(12)));
            break;
        case 11:
            events.aedDetected(CPREventBase::AEDTypes(below(8)));
            break;
        case 12:
        case 13:
            session.waveHeaderReceived(++m_sequence);
            session.waveDataReceived(bls_2010::CommonDefs::WaveType(below(16)), int(number()),
                                     m_sequence);
            break;
        default:
            send(session, identifier(), content(), below(20) == 0 ? oddSequence() : m_sequence);
        }
    }

private:
    quint32 number() { return quint32(m_random()); }
    quint32 below(quint32 limit) { return number() % limit; }

    qint32 oddSequence()
    {
        const qint32 sequences[] = {0,
                                    -1,
                                    1,
                                    m_sequence - 3,
                                    m_sequence + 7,
                                    std::numeric_limits<qint32>::min(),
                                    std::numeric_limits<qint32>::max()};
        return sequences[below(7)];
    }

    quint32 identifier()
    {
        constexpr quint32 known[] = {38, 47, 48, 50,  52,  64,  68,  70,  75,  77,  79, 80,
                                     81, 87, 88, 101, 104, 106, 107, 108, 109, 110, 111};
        return below(20) == 0 ? number() : known[below(23)];
    }

    QByteArray content()
    {
        QByteArray bytes;
        for (quint32 left = below(90); left > 0; --left)
            bytes.append(static_cast<char>(number()));
        return bytes;
    }

    // A host deletes what it should not have.
    void deleteOne(CPREvents &events)
    {
        CPREventBase *event = events.at(int(below(quint32(events.events().size()))));
        if (event != events.sessionInfo() && event != events.cprSessionScore()
            && event != events.cprSessionStatistics())
            delete event;
    }

    std::mt19937 m_random;
    qint32 m_sequence = 0;
};

} // namespace testsupport

#endif
