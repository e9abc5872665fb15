// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_GUIDELINEMODEL_H
#define CPRQUICK_GUIDELINEMODEL_H

#include "cprquick/SessionWatcher.h"

#include <QAbstractListModel>
#include <QVector>
#include <QtQml/qqml.h>

namespace cprquick {

/// What the guideline set of a session asks for as rows, in the units that people read. What the
/// set says nothing about has no row.
class CPRQUICK_EXPORT GuidelineModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(GuidelineModel)

    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *session READ session WRITE setSession NOTIFY sessionChanged)

public:
    /// What a delegate reads.
    enum Role {
        NameRole = Qt::UserRole + 1, ///< name: in words
        ValueTextRole ///< valueText: the limit or the limits, with their unit
    };
    Q_ENUM(Role)

    /// Shows nothing until it has a session.
    explicit GuidelineModel(QObject *parent = nullptr);
    ~GuidelineModel() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *session() const { return m_watcher.session(); }
    void setSession(CPRData *session) { m_watcher.setSession(session); }
    /// @}

    /// @{
    /// See QAbstractItemModel.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    /// @}

Q_SIGNALS:
    /// @{
    /// The properties of that name, or those that notify by it, have changed.
    void sessionChanged();
    /// @}

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

} // namespace cprquick

#endif
