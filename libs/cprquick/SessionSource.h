// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_SESSIONSOURCE_H
#define CPRQUICK_SESSIONSOURCE_H

#include "cprquick/SessionLoader.h"

#include <QUrl>
#include <QtQml/qqml.h>

namespace cprquick {

/// A stored session for a page without a host: a session archive or a recorded log, which is read
/// on a thread of its own.
///
///     SessionSource { id: source; file: "monday.zip" }
///     TimelineItem { anchors.fill: parent; session: source.session }
class CPRQUICK_EXPORT SessionSource : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(SessionSource)

    // clang-format off
    /// The archive or log, a local file. Setting it begins to read, again for the same file, too;
    /// what was being read is given up. An empty one gives no session.
    Q_PROPERTY(QUrl     file      READ file     WRITE setFile NOTIFY fileChanged)
    /// What was read, of a damaged file what is whole; null before that, and when nothing could be
    /// read. Owned by this object; it goes when another file is set.
    Q_PROPERTY(CPRData *session   READ session  NOTIFY sessionChanged)
    /// The file is being read.
    Q_PROPERTY(bool     isLoading READ isLoading NOTIFY isLoadingChanged)
    /// How much of it was read, 0 to 1.
    Q_PROPERTY(double   progress  READ progress NOTIFY progressChanged)
    /// Not all that belongs into the file is in the session, or nothing of it could be read.
    Q_PROPERTY(bool     isDamaged READ isDamaged NOTIFY sessionChanged)
    /// What is wrong with the file, in words; empty for nothing.
    Q_PROPERTY(QString  problem   READ problem  NOTIFY sessionChanged)
    // clang-format on

public:
    /// Has no file and no session.
    explicit SessionSource(QObject *parent = nullptr);
    /// The session goes with it.
    ~SessionSource() override;

    /// @{
    /// The property file.
    QUrl file() const { return m_file; }
    void setFile(const QUrl &file);
    /// @}
    /// @{
    /// The property of this name.
    CPRData *session() const { return m_result.session.get(); }
    bool isLoading() const { return m_loader.isLoading(); }
    double progress() const { return m_progress; }
    bool isDamaged() const { return m_result.isDamaged; }
    QString problem() const { return m_result.problem; }
    /// @}

Q_SIGNALS:
    /// @{
    /// The property of this name has changed; with session comes problem.
    void fileChanged();
    void sessionChanged();
    void isLoadingChanged();
    void progressChanged();
    /// @}

private:
    void show(SessionLoader::Result result);
    void setProgress(double progress);

    QUrl m_file;
    SessionLoader::Result m_result;
    double m_progress = 0;
    SessionLoader m_loader; // the last: it uses the others until it is gone
};

} // namespace cprquick

#endif
