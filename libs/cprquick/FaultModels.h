// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_FAULTMODELS_H
#define CPRQUICK_FAULTMODELS_H

#include "cprquick/SessionWatcher.h"

#include "sessionreview/FaultFinding.h"

#include <QAbstractListModel>
#include <QtQml/qqml.h>

#include <vector>

namespace cprquick {

/// What the models of faults have in common: rows that are found anew when something has happened
/// in the session.
class CPRQUICK_EXPORT FaultModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS

    // clang-format off
    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *session READ session WRITE setSession NOTIFY sessionChanged)
    /// Number of rows.
    Q_PROPERTY(int      count   READ count                    NOTIFY countChanged)
    // clang-format on

public:
    ~FaultModel() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *session() const { return m_watcher.session(); }
    void setSession(CPRData *session) { m_watcher.setSession(session); }
    int count() const { return rowCount(); }
    /// @}

Q_SIGNALS:
    /// @{
    /// The property of that name has changed.
    void sessionChanged();
    void countChanged();
    /// @}

protected:
    /// Shows nothing until it has a session.
    explicit FaultModel(QObject *parent);
    /// Finds the rows in \a review, which are shown from then on.
    virtual void find(const sessionreview::SessionReview &review) = 0;

private:
    void refresh();

    SessionWatcher m_watcher;
};

/// The cycles of a session, or in a protocol without cycles its runs of compressions, with the
/// faults in each.
class CPRQUICK_EXPORT CycleModel : public cprquick::FaultModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(CycleModel)

    // clang-format off
    /// The protocol has cycles; the rows are runs of compressions if not.
    Q_PROPERTY(bool hasCycles READ hasCycles NOTIFY countChanged)
    // clang-format on

public:
    /// What a delegate reads.
    enum Role {
        StartRole = Qt::UserRole + 1, ///< start: ms of session time
        EndRole, ///< end: ms of session time
        CompressionsRole, ///< compressions: their number
        RightRole, ///< rightCompressions: those without a fault
        VentilationsRole, ///< ventilations: their number
        MiscountedRole, ///< isMiscounted: other numbers than the guidelines ask for
        FaultTextRole ///< faultText: the kinds of faults with their numbers; empty for none
    };
    Q_ENUM(Role)

    /// Shows nothing until it has a session.
    explicit CycleModel(QObject *parent = nullptr);
    ~CycleModel() override;

    /// The property of the same name.
    bool hasCycles() const { return m_hasCycles; }

    /// @{
    /// See QAbstractItemModel.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    /// @}

protected:
    /// See FaultModel.
    void find(const sessionreview::SessionReview &review) override;

private:
    std::vector<sessionreview::CycleFaults> m_rows;
    bool m_hasCycles = false;
};

/// The worst stretches of a session, the most harmful first.
class CPRQUICK_EXPORT MomentModel : public cprquick::FaultModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(MomentModel)

public:
    /// What a delegate reads.
    enum Role {
        StartRole = Qt::UserRole + 1, ///< start: ms of session time
        EndRole, ///< end: ms of session time
        TextRole, ///< title: what was wrong, and how long or how often
        OfVentilationsRole ///< isOfVentilations: not of compressions
    };
    Q_ENUM(Role)

    /// So many are found at most.
    static constexpr int maxCount = 5;

    /// Shows nothing until it has a session.
    explicit MomentModel(QObject *parent = nullptr);
    ~MomentModel() override;

    /// @{
    /// See QAbstractItemModel.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    /// @}

protected:
    /// See FaultModel.
    void find(const sessionreview::SessionReview &review) override;

private:
    std::vector<sessionreview::Moment> m_rows;
};

} // namespace cprquick

#endif
