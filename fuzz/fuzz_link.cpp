// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// A link: what senders say to a receiver, one connection behind the other.

#include "Fuzzing.h"
#include "manikinlink/LinkHub.h"
#include "manikinlink/LinkStream.h"
#include "manikinlink/LinkText.h"
#include "manikinlog/RecordText.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QPointer>

#include <algorithm>
#include <memory>

using namespace fuzzing;
using namespace manikinlink;

namespace {

// Has all of its bytes at once, like a socket that nobody has read for a while.
class Way final : public QIODevice {
public:
    explicit Way(const QByteArray &bytes) : m_bytes(bytes)
    {
        setOpenMode(QIODevice::ReadWrite | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override
    {
        return QIODevice::bytesAvailable() + m_bytes.size() - m_position;
    }

private:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 count = qMin<qint64>(maxSize, m_bytes.size() - m_position);
        std::copy_n(m_bytes.constData() + m_position, count, data);
        m_position += int(count);
        return count;
    }
    qint64 writeData(const char *data, qint64 size) override
    {
        require(bool(LinkText::parseAnswer(QByteArray(data, int(size) - 1))),
                "what is answered is an answer");
        return size;
    }

    QByteArray m_bytes;
    int m_position = 0;
};

// What a stream has given.
struct Followed {
    quint32 batch = 0;
    qint64 msecs = 0;

    void look(const manikinlog::Record &record)
    {
        require(record.msecs >= msecs, "times do not decrease");
        msecs = record.msecs;
        require(bool(manikinlog::RecordText::text(record)), "what is given can be written");
        if (const auto *next = std::get_if<manikinlog::Batch>(&record.entry)) {
            require(next->number == 0 || next->number >= batch, "no batch comes twice");
            batch = qMax(batch, next->number);
        }
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepare();
    const Cost cost(size);
    LinkHub hub;
    QObject::connect(&hub, &LinkHub::streamAdded, &hub, [](LinkStream *stream) {
        const auto followed = std::make_shared<Followed>();
        stream->setSink(
            [followed](const manikinlog::Record &record) {
                followed->look(record);
                return true;
            },
            {});
    });
    for (const QByteArray &bytes : Bytes(data, size).rest().split('\0')) {
        auto way = std::make_unique<Way>(bytes);
        const QPointer<Way> watched(way.get());
        hub.addChannel(std::move(way));
        // A turn reads up to so much; one more for the first line, and one for the end.
        for (int turn = 0; turn <= bytes.size() / 16384 + 2; ++turn)
            QCoreApplication::processEvents();
        // Half of the senders close; the others stay, and are there when the next one comes.
        if (watched && watched->isOpen() && bytes.size() % 2 == 1)
            Q_EMIT watched->readChannelFinished();
    }
    QSet<QString> manikins;
    for (const LinkStream *stream : hub.streams()) {
        require(!manikins.contains(stream->manikin()), "a manikin has one holder");
        manikins.insert(stream->manikin());
        require(stream->state() != LinkStream::Ended, "a stream that has ended holds nothing");
        require(LinkText::parseFirstLine(LinkText::firstLine(stream->ids())) == stream->ids(),
                "a first line is read back");
    }
    return 0;
}
