// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_RECENTFILES_H
#define CPRVIEWER_RECENTFILES_H

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>

class Settings;

/// The files that were opened or saved last, the newest first.
class RecentFiles final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The viewer has it.")

    /// Full names; those that are gone are left out.
    Q_PROPERTY(QStringList names READ names NOTIFY namesChanged)

public:
    static constexpr int maxCount = 8;

    /// \a settings is not owned.
    explicit RecentFiles(Settings *settings, QObject *parent = nullptr);
    ~RecentFiles() override;

    QStringList names() const;
    void add(const QString &name);

Q_SIGNALS:
    void namesChanged();

private:
    Settings *m_settings;
};

#endif
