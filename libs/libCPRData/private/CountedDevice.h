// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef COUNTEDDEVICE_H
#define COUNTEDDEVICE_H

#include "private/DeviceReading.h"

#include <QIODevice>

#include <functional>
#include <limits>
#include <utility>

/// Hands on what it reads from another device, counts that, and ends after \a most bytes.
class CountedDevice final : public QIODevice {
public:
    /// Is called with the bytes of each read; false makes this and all further reads fail.
    using Advance = std::function<bool(qint64 bytes)>;

    /// \a device is open for reading and not owned. \a advance may be null.
    CountedDevice(QIODevice *device, Advance advance,
                  qint64 most = std::numeric_limits<qint64>::max())
        : m_device(device), m_advance(std::move(advance)), m_most(most)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    QIODevice *device() const { return m_device; }
    qint64 count() const { return m_count; }
    /// A read has given an error instead of bytes.
    bool hasFailed() const { return m_hasFailed; }

    bool isSequential() const override { return true; }
    bool atEnd() const override { return m_count >= m_most || m_device->atEnd(); }
    qint64 bytesAvailable() const override { return m_device->bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        bool hasFailed = false;
        const qint64 count = readFully(*m_device, data, qMin(maxSize, m_most - m_count), hasFailed);
        if (hasFailed) {
            m_hasFailed = true;
            setErrorString(m_device->errorString());
        }
        if (count == 0)
            return hasFailed ? -1 : 0;
        m_count += count;
        if (m_advance && !m_advance(count)) {
            setErrorString(QStringLiteral("reading was given up"));
            return -1;
        }
        return count;
    }
    qint64 writeData(const char * /*data*/, qint64 /*maxSize*/) override { return -1; }

private:
    QIODevice *m_device; // not owned
    Advance m_advance;
    qint64 m_most;
    qint64 m_count = 0;
    bool m_hasFailed = false;
};

#endif
