// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_RECORDEDFIGUREMODEL_H
#define CPRQUICK_RECORDEDFIGUREMODEL_H

#include "cprquick/SessionWatcher.h"

#include <QAbstractListModel>
#include <QVariant>
#include <QVector>
#include <QtQml/qqml.h>

namespace cprquick {

/// The figures that are worked out from the recorded events, as rows, and beside each the manikin's
/// own where it has sent one. The two can differ: each goes by rules of its own, and the manikin
/// has seen what was lost on the link.
///
/// A figure without a value on either side is no row.
class CPRQUICK_EXPORT RecordedFigureModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(RecordedFigureModel)

    // clang-format off
    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *session    READ session WRITE setSession NOTIFY sessionChanged)
    /// Number of rows.
    Q_PROPERTY(int      count      READ count                    NOTIFY changed)
    /// The manikin has sent at least one of its own figures.
    Q_PROPERTY(bool     hasManikin READ hasManikin               NOTIFY changed)
    // clang-format on

public:
    /// What a delegate reads.
    enum Role {
        KeyRole = Qt::UserRole + 1, ///< key: as in docs/figures.md
        NameRole, ///< name: in words
        ValueRole, ///< value: the number; undefined when there is none
        ValueTextRole, ///< valueText: with its unit; empty when there is none
        ManikinTextRole ///< manikinText: the manikin's own; empty when it has sent none
    };
    Q_ENUM(Role)

    /// Shows nothing until it has a session.
    explicit RecordedFigureModel(QObject *parent = nullptr);
    ~RecordedFigureModel() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *session() const { return m_watcher.session(); }
    void setSession(CPRData *session) { m_watcher.setSession(session); }
    int count() const { return m_rows.size(); }
    bool hasManikin() const;
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
    void changed();
    /// @}

private:
    struct Row {
        QString key;
        QString name;
        QVariant value;
        QString valueText;
        QString manikinText;
    };

    static QVector<Row> rowsOf(const CPRData &session);
    void refresh();

    SessionWatcher m_watcher;
    QVector<Row> m_rows;
};

} // namespace cprquick

#endif
