// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_COMPARISONMODEL_H
#define CPRQUICK_COMPARISONMODEL_H

#include "cprquick/SessionWatcher.h"

#include "sessionreview/SessionComparison.h"

#include <QAbstractListModel>
#include <QVariantList>
#include <QVector>
#include <QtQml/qqml.h>

#include <memory>

namespace sessionplot {
class PlotModel;
}

namespace cprquick {

class PlotSource;

/// A session compared with another one: figures side by side as rows, the faults of each, and what
/// puts both on one time axis. Figures that neither has are no rows.
class CPRQUICK_EXPORT ComparisonModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(ComparisonModel)

    // clang-format off
    /// @{
    /// The session that is compared, and the one that it is compared with; not owned. Null when it
    /// is destroyed. There are rows when both are there.
    Q_PROPERTY(CPRData     *session   READ session   WRITE setSession   NOTIFY sessionChanged)
    Q_PROPERTY(CPRData     *other     READ other     WRITE setOther     NOTIFY sessionChanged)
    /// @}
    /// Which moments of both lie at 0 of the common time axis; the starts unless changed.
    Q_PROPERTY(Alignment    alignment READ alignment WRITE setAlignment NOTIFY changed)
    /// Both have compressions, without which they cannot be aligned by the first one.
    Q_PROPERTY(bool         canAlignCompressions READ canAlignCompressions NOTIFY changed)
    /// @{
    /// The session times, ms, that lie at 0 of the common axis.
    Q_PROPERTY(int          zero      READ zero                         NOTIFY changed)
    Q_PROPERTY(int          otherZero READ otherZero                    NOTIFY changed)
    /// @}
    /// @{
    /// Lengths of both sessions, ms.
    Q_PROPERTY(int          length      READ length                     NOTIFY changed)
    Q_PROPERTY(int          otherLength READ otherLength                NOTIFY changed)
    /// @}
    /// @{
    /// Where the first of them begins and the last of them ends on the common axis, ms.
    Q_PROPERTY(int          begin     READ begin                        NOTIFY changed)
    Q_PROPERTY(int          end       READ end                          NOTIFY changed)
    /// @}
    /// Number of rows.
    Q_PROPERTY(int          count     READ count                        NOTIFY changed)
    /// Kinds of faults: maps with name, count and other, the same of the other session.
    Q_PROPERTY(QVariantList faults    READ faults                       NOTIFY changed)
    /// Some figures went by different targets, or the protocols ask for different things.
    Q_PROPERTY(bool         hasOtherStandard READ hasOtherStandard      NOTIFY changed)
    // clang-format on

public:
    /// See sessionreview::Alignment.
    enum Alignment { Start, FirstCompression };
    Q_ENUM(Alignment)
    /// See sessionreview::Outcome.
    enum Outcome { NotJudged, AsGood, Better, Worse, OtherStandard };
    Q_ENUM(Outcome)
    /// What a delegate reads.
    enum Role {
        KeyRole = Qt::UserRole + 1, ///< key: as in docs/figures.md
        NameRole, ///< name: in words
        ValueTextRole, ///< valueText: of the session, with its unit; empty when it has none
        OtherTextRole, ///< otherText: the same of the other one
        DifferenceTextRole, ///< differenceText: with sign and unit; empty when one has none
        OutcomeRole, ///< outcome: an Outcome
        OutcomeTextRole ///< outcomeText: in words; empty when it is not judged
    };
    Q_ENUM(Role)

    /// Shows nothing until it has both sessions.
    explicit ComparisonModel(QObject *parent = nullptr);
    ~ComparisonModel() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *session() const { return m_sides[0].watcher.session(); }
    void setSession(CPRData *session) { m_sides[0].watcher.setSession(session); }
    CPRData *other() const { return m_sides[1].watcher.session(); }
    void setOther(CPRData *session) { m_sides[1].watcher.setSession(session); }
    Alignment alignment() const { return m_alignment; }
    void setAlignment(Alignment alignment);
    bool canAlignCompressions() const { return m_canAlign; }
    int zero() const { return m_sides[0].zero; }
    int otherZero() const { return m_sides[1].zero; }
    int length() const { return m_sides[0].length; }
    int otherLength() const { return m_sides[1].length; }
    int begin() const;
    int end() const;
    int count() const { return m_rows.size(); }
    QVariantList faults() const { return m_faults; }
    bool hasOtherStandard() const;
    /// @}
    /// A copy of what is drawn of the session, or of the other one, which another thread may use.
    /// Null while one of the two sessions is not there.
    std::shared_ptr<const sessionplot::PlotModel> plot(bool isOther) const;

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
    struct Side {
        SessionWatcher watcher;
        std::shared_ptr<PlotSource> source; // shared with the items that draw the session
        int zero = 0;
        int length = 0;
    };

    void follow(Side &side);
    void refresh();
    void align();

    Side m_sides[2];
    Alignment m_alignment = Start;
    bool m_canAlign = false;
    QVector<sessionreview::ComparedFigure> m_rows;
    QVariantList m_faults;
};

} // namespace cprquick

#endif
