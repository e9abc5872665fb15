// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CountedDevice.h"

#include <utility>

namespace sessionfiles {

CountedDevice::CountedDevice(QIODevice *device, Advance advance, qint64 most)
    : m_device(device), m_advance(std::move(advance)), m_most(most)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 CountedDevice::readData(char *data, qint64 maxSize)
{
    const qint64 size = qMin(maxSize, m_most - m_count);
    qint64 count = 0;
    qint64 latest = 0;
    bool wasAtEnd = m_device->atEnd(); // where some devices give -1 as well
    // The XML reader takes a document to end where it gets only a few bytes at first.
    while (count < size && (latest = m_device->read(data + count, size - count)) > 0) {
        count += latest;
        wasAtEnd = m_device->atEnd();
    }
    if (latest < 0 && !wasAtEnd) {
        m_hasFailed = true;
        setErrorString(m_device->errorString());
    }
    if (count == 0)
        return latest;
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
