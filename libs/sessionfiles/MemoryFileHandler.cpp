// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/MemoryFileHandler.h"

#include <CPRData.h>

#include <QBuffer>

namespace sessionfiles {

namespace {

QIODevice *open(QByteArray &content, QIODevice::OpenMode mode)
{
    auto *device = new QBuffer(&content);
    device->open(mode);
    return device;
}

} // namespace

MemoryFileHandler::MemoryFileHandler(const Members &content) : members(content)
{
}

MemoryFileHandler::~MemoryFileHandler() = default;

QIODevice *MemoryFileHandler::openFileForReading(const QString &name)
{
    const auto member = members.find(name);
    return member == members.end() ? nullptr : open(*member, QIODevice::ReadOnly);
}

QIODevice *MemoryFileHandler::openFileForWriting(const QString &name)
{
    return open(members[name], QIODevice::WriteOnly);
}

void MemoryFileHandler::releaseFile(QIODevice *device)
{
    delete device;
}

QString MemoryFileHandler::filename() const
{
    return QStringLiteral("memory");
}

MemoryFileHandler::Members emptySession()
{
    MemoryFileHandler files;
    CPRData().writeData(&files);
    return files.members;
}

} // namespace sessionfiles
