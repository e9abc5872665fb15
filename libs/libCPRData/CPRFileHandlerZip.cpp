// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRFileHandlerZip.h"

#include <QLoggingCategory>

#include <quazip.h>
#include <quazipfile.h>
#include <quazipnewinfo.h>

Q_LOGGING_CATEGORY(lcFileHandlerZip, "Kelmar.CPRData.CPRFileHandlerZip", QtWarningMsg)

namespace {

// Unix permissions 0777 in the upper half.
constexpr quint32 externalAttributes = 0x01FF0000;

QString memberName(const QString &name)
{
    return QStringLiteral("CPR/") + name;
}

void warnOf(const QuaZipFile &file)
{
    qCWarning(lcFileHandlerZip) << "Failed to open file:" << file.errorString();
}

} // namespace

CPRFileHandlerZip::CPRFileHandlerZip() : m_zip(std::make_unique<QuaZip>())
{
}

CPRFileHandlerZip::~CPRFileHandlerZip() = default;

bool CPRFileHandlerZip::open(const QString &name, Mode mode)
{
    m_zip->setZipName(name);
    switch (mode) {
    case Create:
        return m_zip->open(QuaZip::mdCreate);
    case Add:
        return m_zip->open(QuaZip::mdAdd);
    case Read:
        return m_zip->open(QuaZip::mdUnzip);
    }
    return false;
}

bool CPRFileHandlerZip::close()
{
    if (!m_zip->isOpen())
        return true;
    m_zip->close();
    return m_zip->getZipError() == UNZ_OK;
}

QIODevice *CPRFileHandlerZip::openFileForReading(const QString &name)
{
    m_zip->setCurrentFile(memberName(name));
    auto file = std::make_unique<QuaZipFile>(m_zip.get());
    if (file->getZip() && m_zip->hasCurrentFile() && file->open(QIODevice::ReadOnly))
        return file.release();
    warnOf(*file);
    return nullptr;
}

QIODevice *CPRFileHandlerZip::openFileForWriting(const QString &name)
{
    auto file = std::make_unique<QuaZipFile>(m_zip.get());
    QuaZipNewInfo info(memberName(name));
    info.externalAttr = externalAttributes;
    // No password; deflate at the default level, not raw.
    if (file->open(QIODevice::WriteOnly, info, nullptr, 0, Z_DEFLATED, Z_DEFAULT_COMPRESSION, false,
                   -MAX_WBITS, MAX_MEM_LEVEL - 1, Z_DEFAULT_STRATEGY)) {
        return file.release();
    }
    warnOf(*file);
    return nullptr;
}

void CPRFileHandlerZip::releaseFile(QIODevice *device)
{
    if (!device)
        return;
    device->close();
    delete device;
}

QString CPRFileHandlerZip::filename() const
{
    return m_zip->getZipName();
}
