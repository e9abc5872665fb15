// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_SESSIONLOADER_H
#define CPRQUICK_SESSIONLOADER_H

#include "cprquick_export.h"

#include <CPRData.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>

class QThread;

namespace cprquick {

/// Loads a session on a thread of its own, so that the window stays alive. A session that is being
/// loaded belongs to that thread alone; it is handed over when it is complete.
class CPRQUICK_EXPORT SessionLoader final : public QObject {
    Q_OBJECT

public:
    /// How a file is read.
    enum class Kind {
        File, ///< an archive, or a recorded log, in which a damaged line is an error
        /// What is left of a damaged archive or log, or of a killed program's journal. Damaged
        /// lines are skipped.
        Salvaged
    };

    /// What became of a file.
    struct Result {
        std::unique_ptr<CPRData> session; ///< null when nothing could be read
        QString fileName; ///< as it was given
        bool isLog = false; ///< it is a recorded log or a journal
        bool isCancelled = false; ///< given up; there is no session
        QString problem; ///< what is wrong with the file; there may be a session nevertheless
        bool isDamaged = false; ///< not all that belongs into the file is in the session
        QStringList report; ///< of a damaged file: what became of its parts, a line for each
    };

    /// Loads nothing yet.
    explicit SessionLoader(QObject *parent = nullptr);
    /// Gives up what is being loaded.
    ~SessionLoader() override;

    /// Loads \a name; what was being loaded is given up.
    void load(const QString &name, Kind kind);
    /// A session is being loaded.
    bool isLoading() const { return m_thread != nullptr; }
    /// finished() comes soon, without a session.
    void cancel();
    /// The same, but waits for it, and finished() does not come.
    void abandon();

    /// Hands over what was loaded last; once.
    Result handOver();

    /// Is called with how many bytes of how many were read. False when loading is to end.
    using Report = std::function<bool(qint64 done, qint64 total)>;
    /// Loads \a name on the calling thread; \a report may be null.
    static Result loadHere(const QString &name, Kind kind, const Report &report = {});

Q_SIGNALS:
    /// How much was read, 0 to 1.
    void progressed(double share);
    /// handOver() has the result.
    void finished();

private:
    static Result loadArchive(const QString &name, const Report &report);
    static Result salvageArchive(const QString &name, const Report &report);
    static Result loadLog(const QString &name, Kind kind, const Report &report);
    void run(const QString &name, Kind kind);

    QThread *m_thread = nullptr; // a child of this object while it runs
    std::atomic<bool> m_isCancelled{false};
    Result m_result; // belongs to m_thread while that runs
};

} // namespace cprquick

#endif
