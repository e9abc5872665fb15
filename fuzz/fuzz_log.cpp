// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// A recorded log: read, played into a session, written and read again.

#include "CPRData.h"
#include "Fuzzing.h"
#include "manikinlog/ManikinLogPlayer.h"
#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/ManikinLogWriter.h"

#include <QBuffer>

#include <functional>
#include <optional>

using namespace fuzzing;
using namespace manikinlog;

namespace {

// Writes again what can be read of the log, and lets \a play have it.
QByteArray rewrite(QByteArray log, const std::function<void(const Record &)> &play)
{
    QBuffer from(&log);
    from.open(QIODevice::ReadOnly);
    QBuffer to;
    to.open(QIODevice::WriteOnly);
    ManikinLogReader reader(&from, QStringLiteral("log"));
    ManikinLogWriter writer(&to);
    Record record;
    while (reader.read(record) == ManikinLogReader::Result::Record) {
        require(writer.write(record), "what was read can be written");
        play(record);
    }
    require((reader.read(record) == ManikinLogReader::Result::End)
                == reader.errorString().isEmpty(),
            "an error has a text");
    return to.data();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepare();
    const Cost cost(size);
    std::optional<CPRData> session; // made for the first record: most logs have none
    std::optional<ManikinLogPlayer> player;
    const QByteArray once = rewrite(Bytes(data, size).rest(), [&](const Record &record) {
        if (!session) {
            requireOrder(*session.emplace().cprEvents());
            player.emplace(&*session);
        }
        player->play(record);
    });
    if (session) {
        player->finish();
        requireWhole(*session->cprEvents());
        fireTimers(*session);
    }
    require(rewrite(once, [](const Record &) {}) == once, "a log that is read again is the same");
    return 0;
}
