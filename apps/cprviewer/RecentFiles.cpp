// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "RecentFiles.h"

#include "Settings.h"

#include <QFileInfo>

#include <algorithm>

namespace {

const QLatin1String recentKey("recentFiles");

} // namespace

RecentFiles::RecentFiles(Settings *settings, QObject *parent)
    : QObject(parent), m_settings(settings)
{
}

RecentFiles::~RecentFiles() = default;

QStringList RecentFiles::names() const
{
    QStringList names = m_settings->value(recentKey).toStringList();
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const QString &name) { return !QFileInfo(name).isFile(); }),
                names.end());
    return names;
}

void RecentFiles::add(const QString &name)
{
    const QString full = QFileInfo(name).absoluteFilePath();
    QStringList all = names();
    all.removeAll(full);
    all.prepend(full);
    m_settings->setValue(recentKey, QStringList(all.mid(0, maxCount)));
    Q_EMIT namesChanged();
}
