// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "WatchedFileHandler.h"

#include <quazip.h>

#include <QCoreApplication>
#include <QIODevice>

namespace {

/// What it reads comes from another device.
class WatchedDevice final : public QIODevice {
public:
    WatchedDevice(QIODevice *device, WatchedFileHandler *handler)
        : m_device(device), m_handler(handler)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    QIODevice *device() const { return m_device; }
    bool isSequential() const override { return true; }
    bool atEnd() const override { return m_device->atEnd(); }
    qint64 bytesAvailable() const override { return m_device->bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const qint64 count = m_device->read(data, size);
        if (count < 0)
            setErrorString(m_device->errorString());
        else if (!m_handler->note(count)) {
            setErrorString(QCoreApplication::translate("cprviewer", "loading was cancelled"));
            return -1;
        }
        return count;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    QIODevice *m_device; // not owned
    WatchedFileHandler *m_handler; // not owned
};

} // namespace

WatchedFileHandler::WatchedFileHandler(CPRFileHandler *handler, qint64 bytes, Report report)
    : m_handler(handler), m_bytes(qMax<qint64>(bytes, 1)), m_report(std::move(report))
{
}

qint64 WatchedFileHandler::bytesIn(const QString &name)
{
    QuaZip zip(name);
    qint64 bytes = 0;
    if (zip.open(QuaZip::mdUnzip)) {
        const QList<QuaZipFileInfo64> members = zip.getFileInfoList64();
        for (const QuaZipFileInfo64 &member : members)
            bytes += static_cast<qint64>(member.uncompressedSize);
    }
    return bytes;
}

bool WatchedFileHandler::note(qint64 bytes)
{
    m_read += bytes;
    return m_report(qMin(1.0, double(m_read) / double(m_bytes)));
}

QIODevice *WatchedFileHandler::openFileForReading(const QString &name)
{
    QIODevice *device = m_handler->openFileForReading(name);
    if (!device) {
        m_missing.append(name);
        return nullptr;
    }
    m_hasOpened = true;
    return new WatchedDevice(device, this);
}

QIODevice *WatchedFileHandler::openFileForWriting(const QString & /*name*/)
{
    return nullptr;
}

void WatchedFileHandler::releaseFile(QIODevice *device)
{
    const auto *watched = static_cast<WatchedDevice *>(device);
    if (watched)
        m_handler->releaseFile(watched->device());
    delete watched;
}
