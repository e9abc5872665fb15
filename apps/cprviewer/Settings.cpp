// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Settings.h"

#include "private/AtomicFile.h"

#include <QDir>
#include <QJsonDocument>
#include <QSettings>

namespace {

// The object that the file holds; an empty one when it holds none.
QJsonObject stored(const QString &name)
{
    constexpr qint64 maxBytes = 1 << 20; // a file that nobody could have chosen
    QFile file(name);
    return QFile::exists(name) && file.open(QIODevice::ReadOnly)
        ? QJsonDocument::fromJson(file.read(maxBytes)).object()
        : QJsonObject();
}

} // namespace

Settings::Settings(const QString &file) : m_file(file), m_values(stored(file))
{
    if (m_file.isEmpty() || QFile::exists(m_file))
        return;
    const QFileInfo info(m_file);
    const QSettings earlier(info.dir().filePath(info.completeBaseName() + QStringLiteral(".conf")),
                            QSettings::IniFormat);
    const QStringList keys = earlier.allKeys();
    for (const QString &key : keys)
        m_values.insert(key, QJsonValue::fromVariant(earlier.value(key)));
}

QVariant Settings::value(const QString &key, const QVariant &standard) const
{
    const QJsonValue value = m_values.value(key);
    return value.isUndefined() ? standard : value.toVariant();
}

void Settings::setValue(const QString &key, const QVariant &value)
{
    m_values.insert(key, QJsonValue::fromVariant(value));
    if (m_file.isEmpty())
        return;
    QDir().mkpath(QFileInfo(m_file).path());
    AtomicFile file(m_file);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(QJsonDocument(m_values).toJson());
    file.finish();
}
