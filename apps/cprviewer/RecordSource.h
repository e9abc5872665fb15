// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_RECORDSOURCE_H
#define CPRVIEWER_RECORDSOURCE_H

#include <manikinlog/ManikinLogRecord.h>

#include <QString>

#include <memory>

namespace manikinsim {
struct Scenario;
}

/// Where the records of a session come from, one after the other in order of time.
class RecordSource {
public:
    virtual ~RecordSource();
    RecordSource(const RecordSource &) = delete;
    RecordSource &operator=(const RecordSource &) = delete;

    /// A rescuer on a simulated manikin.
    static std::unique_ptr<RecordSource> simulated(const manikinsim::Scenario &scenario,
                                                   quint64 seed);
    /// A recorded log, which somebody may still write. Null, and the reason in \a error, when \a
    /// name cannot be opened.
    static std::unique_ptr<RecordSource> log(const QString &name, QString *error);

    /// The next record; false, and \a record unchanged, when there is none.
    virtual bool next(manikinlog::Record &record) = 0;
    /// There may be more records later.
    virtual bool canGrow() const { return false; }
    /// Why there are no more records; empty when that was the end.
    virtual QString errorString() const { return QString(); }

protected:
    RecordSource() = default;
};

#endif
