// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_PARAMETERMODEL_H
#define CPRQUICK_PARAMETERMODEL_H

#include "cprquick/SessionWatcher.h"

#include <QAbstractListModel>
#include <QVector>
#include <QtQml/qqml.h>

namespace cprquick {

/// The parameters of one event as rows, in the order of CPREventBase.ParameterType, measurements of
/// compressions and ventilations included. Of statistics and scores, what the manikin has sent.
///
/// A parameter that arrives later becomes a row, which a binding to the event's params does not
/// notice. An event that is destroyed leaves no rows.
class CPRQUICK_EXPORT ParameterModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(ParameterModel)

    // clang-format off
    /// The session; for ChosenEvent that of the event.
    Q_PROPERTY(CPRData      *session READ session    WRITE setSession NOTIFY sessionChanged)
    /// Whose parameters are shown; ChosenEvent unless changed.
    Q_PROPERTY(Subject       subject READ subject    WRITE setSubject NOTIFY subjectChanged)
    /// The event that is shown: for ChosenEvent what was set, else the session's standing event.
    Q_PROPERTY(CPREventBase *event   READ shownEvent WRITE setEvent   NOTIFY eventChanged)
    /// Whether the bars of the histograms, which HistogramModel has too, are rows. True unless
    /// changed.
    Q_PROPERTY(bool          hasBars READ hasBars    WRITE setHasBars NOTIFY hasBarsChanged)
    /// Number of rows.
    Q_PROPERTY(int           count   READ count                       NOTIFY countChanged)
    // clang-format on

public:
    /// Whose parameters are shown: those of an event, or of a standing event of the session.
    enum Subject { ChosenEvent, SessionInfo, Statistics, Score };
    Q_ENUM(Subject)

    /// What a delegate reads.
    enum Role {
        KeyRole = Qt::UserRole + 1, ///< key: the key text, as in params
        TypeRole, ///< type: CPREventBase.ParameterType
        NameRole, ///< name: in words
        ValueRole, ///< value: as it is stored
        ValueTextRole, ///< valueText: with its unit, in words where it stands for something
        UnitRole ///< unit: in which valueText shows it
    };
    Q_ENUM(Role)

    /// Shows nothing until it has an event or a session.
    explicit ParameterModel(QObject *parent = nullptr);
    ~ParameterModel() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *session() const { return m_watcher.session(); }
    void setSession(CPRData *session) { m_watcher.setSession(session); }
    Subject subject() const { return m_subject; }
    void setSubject(Subject subject);
    CPREventBase *shownEvent() const { return m_event; } // event() is QObject's
    void setEvent(CPREventBase *event);
    bool hasBars() const { return m_hasBars; }
    void setHasBars(bool bars);
    int count() const { return m_rows.size(); }
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
    void subjectChanged();
    void eventChanged();
    void hasBarsChanged();
    void countChanged();
    /// @}

private:
    struct Row {
        CPREventBase::ParameterType type;
        QVariant value;
    };

    QVector<Row> rowsOf(const CPREventBase *event) const;
    void show(CPREventBase *event);
    void refresh();

    SessionWatcher m_watcher;
    QPointer<CPREventBase> m_event;
    QVector<Row> m_rows; // by type
    Subject m_subject = ChosenEvent;
    bool m_hasBars = true;
};

} // namespace cprquick

#endif
