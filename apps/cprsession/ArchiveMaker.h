// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_ARCHIVEMAKER_H
#define CPRSESSION_ARCHIVEMAKER_H

#include "sessionfiles/SessionFile.h"

#include <QObject>
#include <QString>

#include <deque>

class QThread;

/// Makes archives of journals, one after the other on a thread of its own: a session of an hour is
/// played and written while the manikins go on. An archive that is there is replaced: a run that
/// was killed made it of the same journal. The journals stay, but for those that a killed run has
/// left: once all of such a one is in its archive it is removed.
class ArchiveMaker : public QObject {
    Q_OBJECT

public:
    /// What became of a journal.
    struct Made {
        QString target; // of the archive; the journal lies beside it
        bool wasLeft = false; // by a run that was killed
        qint64 records = 0; // that the manikin sent; with 0 no archive is made
        qint64 msecs = 0; // length of the session
        sessionfiles::SaveResult saved; // with the reason, too, when the journal cannot be opened
        QString problem; // of the journal; empty when all of it was read but half a last line
    };

    explicit ArchiveMaker(QObject *parent = nullptr);
    /// Waits for the archive that is being made; those that wait behind it are not made.
    ~ArchiveMaker() override;

    /// Makes the archive \a target of its journal, which nobody writes any more. One that \a
    /// wasLeft is claimed first: it may belong to another program by now.
    void add(const QString &target, bool wasLeft = false);
    bool isBusy() const { return m_thread || !m_waiting.empty(); }

Q_SIGNALS:
    /// What became of a journal. Comes for each, in the order of add().
    void made(const ArchiveMaker::Made &made);

private:
    void startNext();

    std::deque<Made> m_waiting; // the first is made next
    QThread *m_thread = nullptr; // a child of this object while it runs
    Made m_made; // the thread's, while it runs
};

#endif
