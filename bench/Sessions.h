// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_SESSIONS_H
#define BENCH_SESSIONS_H

#include "manikinlog/ManikinLogRecord.h"

#include <CPRData.h>

#include <chestboard/RMessage.h>

#include <QTemporaryDir>

#include <map>
#include <memory>
#include <vector>

namespace manikinsim {
struct Scenario;
}

namespace bench {

constexpr int secondsPerHour = 3600;
constexpr int msecsPerSecond = 1000;

/// A trained rescuer who does compressions and breaths, with pauses, for \a seconds.
manikinsim::Scenario training(int seconds);

/// A session in CPR_START.
std::unique_ptr<CPRData> startedSession();

/// Loads the archive \a file; null when some of it cannot be loaded.
std::unique_ptr<CPRData> loadedSession(const QString &file);
bool load(const QString &file, CPRData &session);
bool save(const QString &file, CPRData &session);

/// The sessions that are measured. Each is simulated once, when it is first asked for.
class Sessions {
public:
    Sessions();

    /// A session of that length, as it stands after the scores have come.
    CPRData &session(int seconds);
    /// The same as an archive.
    QString archive(int seconds);
    /// What a host records in an hour.
    const std::vector<manikinlog::Record> &hour();
    /// \a count compressions, one behind the other, as an hour's recording has them.
    std::vector<bls_2010::RMessage> compressions(int count);

    /// A file in memory, where the system has that, so that no disk is measured.
    QString file(const QString &name) const { return m_directory.filePath(name); }

private:
    QTemporaryDir m_directory;
    std::map<int, std::unique_ptr<CPRData>> m_sessions;
    std::vector<manikinlog::Record> m_hour;
};

} // namespace bench

#endif
