// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_MANIKINLOGRECORD_H
#define MANIKINLOG_MANIKINLOGRECORD_H

#include "CPRData.h"

#include <chestboard/RMessage.h>

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <variant>

namespace manikinlog {

/// A message with its content, index 0 first.
struct Message {
    quint32 identifier = 0; ///< CommunicationIDs::ResponseID, or one of a newer manikin
    qint32 sequence = 0; ///< of the header that the message came with
    QByteArray content; ///< index 0 first
};

/// The message as it is recorded.
inline Message messageOf(const bls_2010::RMessage &message)
{
    bool ok = false;
    // The length does not count the byte at index 0.
    return {message.getIdentifier(), message.getHeader().getSequenceNumber(),
            message.getString(ok, 0, message.getDataLength() + 1)};
}

/// The header of a wave packet.
struct WaveHeader {
    qint32 sequence = 0; ///< running number of the wave period
};

/// One wave sample.
struct WaveSample {
    quint8 waveType = 0; ///< bls_2010::CommonDefs::WaveType, or a type of a newer manikin
    qint32 value = 0; ///< hundredths of a millimetre or ml
    qint32 sequence = 0; ///< running number of the wave period
};

/// The host put the session into this state.
struct State {
    CPRData::CprState state = CPRData::CPR_UNINITIALIZED; ///< the new state
};

/// The host assigned this learner to the session.
struct Learner {
    QString name; ///< neither empty nor with a line break
};

/// When the session was recorded. It stands before the first message; a journal says it again where
/// the session starts. The last one counts.
struct Start {
    QDateTime time; ///< valid; a log has it in UTC
};

/// The manikin has this name.
struct ManikinName {
    QString name; ///< neither empty nor with a line break
};

/// The instructor remarked on something: a user event at a time of the session, which may be over.
struct Remark {
    qint32 msecs = 0; ///< session time of the event
    QString text; ///< neither empty nor with a line break
};

/// The instructor took the first remark with this time and text back.
struct RemarkRemoval {
    qint32 msecs = 0; ///< as in the remark
    QString text; ///< the same
};

/// What follows came over a link from this manikin, by this sender, as its session of that id. The
/// receiver's journal says it; the player passes over it.
struct Stream {
    QString manikin; ///< an id, see RecordText::isToken()
    QString sender; ///< likewise: the program on a machine that sends
    QString session; ///< likewise, new for each session of the sender
};

inline bool operator==(const Stream &a, const Stream &b)
{
    return a.manikin == b.manikin && a.sender == b.sender && a.session == b.session;
}

/// What follows, up to the next one, is this batch of the stream. It tells a receiver that goes on
/// behind a break what it has; the player passes over it.
struct Batch {
    quint32 number = 0; ///< counted from 1; 0 for what the receiver itself adds
};

/// One line of a recorded log.
struct Record {
    /// What can be recorded.
    using Entry = std::variant<Message, WaveHeader, WaveSample, State, Learner, Start, ManikinName,
                               Remark, RemarkRemoval, Stream, Batch>;

    qint64 msecs = 0; ///< ms since the start of the recording; never decreases in a log
    Entry entry; ///< what happened
};

} // namespace manikinlog

#endif
