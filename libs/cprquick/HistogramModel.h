// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_HISTOGRAMMODEL_H
#define CPRQUICK_HISTOGRAMMODEL_H

#include "cprquick/SessionWatcher.h"

#include "sessionreview/Scores.h"

#include <QAbstractListModel>
#include <QtQml/qqml.h>

#include <array>

namespace cprquick {

/// The six histograms of the manikin's statistics as rows: depth, release, compression rate,
/// pauses, ventilation volume, ventilation rate. The rows are there always; before the statistics
/// have arrived their bars are 0 and isReceived is false.
class CPRQUICK_EXPORT HistogramModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(HistogramModel)

    // clang-format off
    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *session    READ session WRITE setSession NOTIFY sessionChanged)
    /// The statistics have arrived.
    Q_PROPERTY(bool     isReceived READ isReceived               NOTIFY isReceivedChanged)
    // clang-format on

public:
    /// What a delegate reads.
    enum Role {
        NameRole = Qt::UserRole + 1, ///< name: in words
        UnitRole, ///< unit: of the values that are counted
        RangesRole, ///< ranges: what each bar counts, with the unit
        EdgesRole, ///< edges: five numbers, between the bars
        TargetsRole, ///< targets: whether a bar counts values inside the target alone
        ValuesRole, ///< values: six numbers, as the manikin sent them
        HighestRole, ///< highest: the greatest of them
        TotalRole ///< total: compressions or ventilations in all bars; 0 when that is not known
    };
    Q_ENUM(Role)

    /// @{
    /// Rows, and numbers in each.
    static constexpr int histogramCount = 6;
    static constexpr int barCount = 6;
    /// @}

    /// Shows nothing until it has a session.
    explicit HistogramModel(QObject *parent = nullptr);
    ~HistogramModel() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *session() const { return m_watcher.session(); }
    void setSession(CPRData *session) { m_watcher.setSession(session); }
    bool isReceived() const { return m_isReceived; }
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
    void isReceivedChanged();
    /// @}

private:
    void refresh();

    SessionWatcher m_watcher;
    std::array<int, histogramCount * barCount> m_bars{};
    std::array<int, histogramCount> m_totals{};
    sessionreview::Targets m_targets;
    bool m_isReceived = false;
};

} // namespace cprquick

#endif
