// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_STANDARDINPUT_H
#define MANIKINLINK_STANDARDINPUT_H

#include <QIODevice>
#include <QSocketNotifier>

namespace manikinlink {

/// The standard input as a device that says when there is something to read. It reads no more than
/// it is asked for, so that the rest waits in the pipe; nothing can be written.
class StandardInput final : public QIODevice {
    Q_OBJECT

public:
    StandardInput();

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    QSocketNotifier m_notifier; // off from readyRead() to the next read
    bool m_isReadable = false; // a read does not block
};

} // namespace manikinlink

#endif
