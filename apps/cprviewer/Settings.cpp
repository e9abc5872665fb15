// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Settings.h"

#include "private/AtomicFile.h"

#include <QDir>
#include <QJsonDocument>
#include <QSettings>

#include <optional>

namespace {

// The object that the file holds; an empty one when it holds none. None when it cannot be read.
std::optional<QJsonObject> stored(const QString &name)
{
    constexpr qint64 maxBytes = 1 << 20; // a file that nobody could have chosen
    QFile file(name);
    if (!QFile::exists(name))
        return QJsonObject();
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.read(maxBytes) : QByteArray();
    if (file.error() != QFile::NoError || text.size() < qMin(maxBytes, file.size()))
        return std::nullopt;
    return QJsonDocument::fromJson(text).object();
}

} // namespace

Settings::Settings(const QString &file) : m_file(file)
{
    const std::optional<QJsonObject> values = stored(file);
    if (!values)
        m_file.clear(); // what cannot be read is not replaced
    m_values = values.value_or(QJsonObject());
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
