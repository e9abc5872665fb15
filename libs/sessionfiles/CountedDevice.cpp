// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/CountedDevice.h"

#include <private/DeviceReading.h>

#include <utility>

namespace sessionfiles {

CountedDevice::CountedDevice(QIODevice *device, Advance advance, qint64 most)
    : m_device(device), m_advance(std::move(advance)), m_most(most)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 CountedDevice::readData(char *data, qint64 maxSize)
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
    if (!m_advance(count)) {
        setErrorString(QStringLiteral("reading was given up"));
        return -1;
    }
    return count;
}

qint64 CountedDevice::writeData(const char * /*data*/, qint64 /*maxSize*/)
{
    return -1;
}

} // namespace sessionfiles
