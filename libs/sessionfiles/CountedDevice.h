// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_COUNTEDDEVICE_H
#define SESSIONFILES_COUNTEDDEVICE_H

#include <QIODevice>

#include <functional>
#include <limits>

namespace sessionfiles {

/// Hands on what it reads from another device, counts that, and ends after \a most bytes.
class CountedDevice final : public QIODevice {
public:
    /// Is called with the bytes of each read; false makes this and all further reads fail.
    using Advance = std::function<bool(qint64 bytes)>;

    /// \a device is open for reading and not owned.
    CountedDevice(QIODevice *device, Advance advance,
                  qint64 most = std::numeric_limits<qint64>::max());

    QIODevice *device() const { return m_device; }
    qint64 count() const { return m_count; }
    /// A read has given an error instead of bytes.
    bool hasFailed() const { return m_hasFailed; }

    bool isSequential() const override { return true; }
    bool atEnd() const override { return m_count >= m_most || m_device->atEnd(); }
    qint64 bytesAvailable() const override { return m_device->bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 maxSize) override;

private:
    QIODevice *m_device; // not owned
    Advance m_advance;
    qint64 m_most;
    qint64 m_count = 0;
    bool m_hasFailed = false;
};

} // namespace sessionfiles

#endif
