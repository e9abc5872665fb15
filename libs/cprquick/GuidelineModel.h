// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_GUIDELINEMODEL_H
#define CPRQUICK_GUIDELINEMODEL_H

#include "SessionWatcher.h"

#include <QAbstractListModel>
#include <QVector>
#include <QtQml/qqml.h>

/// What the guideline set of a session asks for as rows, in the units that people read. What the
/// set says nothing about has no row.
class CPRQUICK_EXPORT GuidelineModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(CPRData *session READ session WRITE setSession NOTIFY sessionChanged)

public:
    enum Role {
        NameRole = Qt::UserRole + 1, ///< name: in words
        ValueTextRole ///< valueText: the limit or the limits, with their unit
    };
    Q_ENUM(Role)

    explicit GuidelineModel(QObject *parent = nullptr);
    ~GuidelineModel() override;

    CPRData *session() const { return m_watcher.session(); }
    void setSession(CPRData *session) { m_watcher.setSession(session); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void sessionChanged();

private:
    struct Row {
        QString name;
        QString valueText;

        bool operator==(const Row &other) const
        {
            return name == other.name && valueText == other.valueText;
        }
    };

    void refresh();

    SessionWatcher m_watcher;
    QVector<Row> m_rows;
};

#endif
