// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_PROGRESS_H
#define CPRSESSION_PROGRESS_H

#include <QElapsedTimer>
#include <QString>

/// How far a long piece of work is: one line on stderr, and only when that is a terminal.
class Progress {
public:
    explicit Progress(const QString &what);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// Progress that starts after this is shown only when \a shown.
    static void setShown(bool shown);

    /// \a done of \a total, in any unit. Cheap enough to be called for every record.
    void report(qint64 done, qint64 total);
    /// The same for work that has no end to count to: \a state says in words how far it is.
    void report(const QString &state);
    /// Clears the line, for another one to be written; the next report shows it again.
    void hide();

private:
    bool isDue() const;
    void show(const QString &state);

    QString m_what;
    bool m_isTerminal;
    bool m_isShown = false;
    QElapsedTimer m_sinceShown;
};

#endif
