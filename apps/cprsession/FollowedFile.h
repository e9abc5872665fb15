// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_FOLLOWEDFILE_H
#define CPRSESSION_FOLLOWEDFILE_H

#include <QFile>
#include <QIODevice>

#include <functional>

/// A file that somebody else still writes: a read at its end waits for more, until \a isOver says
/// that no more is wanted. A file that is cut, replaced or deleted meanwhile gives an error: nobody
/// will write more of it.
///
/// "-" is standard input: a read waits for what comes, until the writer closes its end or \a isOver
/// says that no more is wanted.
class FollowedFile final : public QIODevice {
public:
    FollowedFile(const QString &name, std::function<bool()> isOver);

    bool open(OpenMode mode) override;
    bool isSequential() const override { return true; }

    /// The name is still that of the open file, which has all that was read of it.
    bool isUnchanged() const { return change() == nullptr; }
    /// Bytes that were read, and those that are there.
    qint64 done() const { return m_file.pos(); }
    qint64 total() const { return m_file.size(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 maxSize) override;

private:
    bool waitForInput() const;
    // What happened to the file; null for nothing.
    const char *change() const;

    QFile m_file;
    const bool m_isStandardInput;
    std::function<bool()> m_isOver;
};

#endif
