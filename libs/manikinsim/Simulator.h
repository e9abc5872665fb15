// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_SIMULATOR_H
#define MANIKINSIM_SIMULATOR_H

#include "manikinlog/ManikinLogRecord.h"
#include "manikinsim/Scenario.h"

#include <memory>

namespace manikinlog {
class ManikinLogWriter;
}

namespace manikinsim {

class Listener;

/// A rescuer at work on a manikin, without either: gives the records of a session one after the
/// other, as a host would have recorded them.
///
/// The same scenario and seed give the same records on every platform, in every locale and time
/// zone. Only what lies directly ahead is held in memory, however long the session is.
///
/// A log begins with the manikin's introduction and the preparations. The session starts 3000 ms
/// after the log. Then each wave period of 20 ms gives a header, a sample of each wave and what the
/// manikin has to tell. At the end come the statistics and the scores; Judge.h says how they are
/// made.
class Simulator {
public:
    /// Of a \a scenario that has a problem() nothing is simulated. The \a listener, not owned,
    /// hears what each record means while the record is made.
    Simulator(const Scenario &scenario, quint64 seed, Listener *listener = nullptr);
    ~Simulator();
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    /// The next record, in order of time; false, and \a record unchanged, when there is none left.
    /// A host that is to be fed live waits until the record's time has come.
    bool next(manikinlog::Record &record);

    /// The session ends with the second that has begun, as when the instructor ends it; what the
    /// scenario has behind it does not happen. The end, the statistics and the scores still come.
    /// Changes nothing where the session ends by then anyway.
    void stop();

    /// Writes all records that are left. False when the log does not take one; its errorString()
    /// says why.
    bool write(manikinlog::ManikinLogWriter &writer);

    const Scenario &scenario() const;

    /// ms of the log at which the session time is 0.
    static constexpr int sessionStart = 3000;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace manikinsim

#endif
