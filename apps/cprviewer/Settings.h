// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SETTINGS_H
#define CPRVIEWER_SETTINGS_H

#include <QJsonObject>
#include <QString>
#include <QVariant>

/// What was chosen, in a JSON file. QSettings would lose all of it on a full disk.
class Settings {
public:
    /// Reads \a file, which need not exist; without a name nothing is stored. Where it is not there
    /// yet, a file of the same name that ends with .conf has the settings of an earlier version.
    explicit Settings(const QString &file);

    /// The value, or \a standard when there is none.
    QVariant value(const QString &key, const QVariant &standard = {}) const;
    /// Stores the value at once. One that the disk does not take lasts as long as the program.
    void setValue(const QString &key, const QVariant &value);

private:
    QString m_file;
    QJsonObject m_values;
};

#endif
