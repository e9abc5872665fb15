// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "NotingFileHandler.h"

NotingFileHandler::NotingFileHandler(CPRFileHandler *handler) : m_handler(handler)
{
}

QIODevice *NotingFileHandler::openFileForReading(const QString &name)
{
    return noted(m_handler->openFileForReading(name), name);
}

QIODevice *NotingFileHandler::openFileForWriting(const QString &name)
{
    return noted(m_handler->openFileForWriting(name), name);
}

void NotingFileHandler::releaseFile(QIODevice *device)
{
    m_handler->releaseFile(device);
}

QString NotingFileHandler::filename() const
{
    return m_handler->filename();
}

QIODevice *NotingFileHandler::noted(QIODevice *device, const QString &name)
{
    if (!device)
        m_missing.append(name);
    return device;
}
