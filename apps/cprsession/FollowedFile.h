// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_FOLLOWEDFILE_H
#define CPRSESSION_FOLLOWEDFILE_H

#include <QFile>
#include <QIODevice>

#include <functional>

/// A file that somebody else still writes: a read at its end waits for more, until \a isOver says
/// that no more is wanted.
class FollowedFile final : public QIODevice {
public:
    FollowedFile(const QString &name, std::function<bool()> isOver);

    bool open(OpenMode mode) override;
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 maxSize) override;

private:
    QFile m_file;
    std::function<bool()> m_isOver;
};

#endif
