// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_CLASSMODEL_H
#define CPRQUICK_CLASSMODEL_H

#include "cprquick/LibraryFolder.h"

#include <sessionreview/ClassFigures.h>

#include <QAbstractListModel>
#include <QPointer>
#include <QVariantList>

#include <memory>

namespace cprquick {

class SessionResults;

/// A class: its learners by figures, and the faults that they share. The archives are read on a
/// thread.
class CPRQUICK_EXPORT ClassModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(ClassModel)

    // clang-format off
    /// Whose sessions are shown; not owned. Null when it is destroyed.
    Q_PROPERTY(cprquick::LibraryFolder *library READ library WRITE setLibrary NOTIFY libraryChanged)
    /// @{
    /// From the first to the last day, ISO 8601. Without a first day nothing is shown; without a
    /// last day the first one alone is.
    Q_PROPERTY(QString      firstDay READ firstDay WRITE setFirstDay NOTIFY daysChanged)
    Q_PROPERTY(QString      lastDay  READ lastDay  WRITE setLastDay  NOTIFY daysChanged)
    /// @}
    /// Only sessions of these learners; empty, as it is from the start, for all.
    Q_PROPERTY(QStringList  learners READ learners WRITE setLearners NOTIFY learnersChanged)
    /// Archives are being read; what was shown before stays until they are.
    Q_PROPERTY(bool         isLoading READ isLoading                 NOTIFY isLoadingChanged)
    /// Number of rows.
    Q_PROPERTY(int          count    READ count                      NOTIFY changed)
    /// The days in words.
    Q_PROPERTY(QString      dayText  READ dayText                    NOTIFY daysChanged)
    /// Learners, sessions and how many have passed, in words.
    Q_PROPERTY(QString      summary  READ summary                    NOTIFY changed)
    /// What is not in the figures, in words; empty when all is.
    Q_PROPERTY(QString      problem  READ problem                    NOTIFY changed)
    /// The heads of the figures: maps with title and unit.
    Q_PROPERTY(QVariantList heads    READ heads                      CONSTANT)
    /// The means of the class: its score first, then a text for each of heads.
    Q_PROPERTY(QStringList  means    READ means                      NOTIFY changed)
    /// The faults that learners share, the most shared first: maps with text, countText ("3 of 5")
    /// and share, from 0 to 1.
    Q_PROPERTY(QVariantList faults   READ faults                     NOTIFY changed)
    // clang-format on

public:
    /// What a delegate reads, by the names in lower case.
    enum Role {
        NameRole = Qt::UserRole + 1, ///< name: as archives have it; may be empty
        NameTextRole, ///< nameText: what people call the learner
        SessionsRole, ///< sessions: how many
        ScoreTextRole, ///< scoreText: of the last one; a dash without scores
        PassedRole, ///< isPassed: undefined when nothing is asked for
        FiguresRole, ///< figures: a text for each of heads
        FaultTextRole ///< faultText: what to work on first; empty for nothing
    };
    Q_ENUM(Role)

    /// Shows nothing until it has a library and a day.
    explicit ClassModel(QObject *parent = nullptr);
    ~ClassModel() override;

    /// @{
    /// Getters and setters of the properties.
    LibraryFolder *library() const { return m_library; }
    void setLibrary(LibraryFolder *library);
    QString firstDay() const { return m_firstDay; }
    void setFirstDay(const QString &day);
    QString lastDay() const { return m_lastDay; }
    void setLastDay(const QString &day);
    QStringList learners() const { return m_learners; }
    void setLearners(const QStringList &learners);
    bool isLoading() const;
    int count() const { return rowCount(); }
    QString dayText() const;
    QString summary() const;
    QString problem() const;
    QVariantList heads() const;
    QStringList means() const;
    QVariantList faults() const;
    /// @}

    /// The figures as they are shown.
    const sessionreview::ClassFigures &figures() const { return m_figures; }
    /// The absolute names of the archives, in order of time.
    QStringList files() const { return m_files; }
    /// The day with sessions before the first day, or behind it with a \a step of 1; empty when
    /// there is none.
    Q_INVOKABLE QString otherDay(int step) const;
    /// The name in \a row, as archives have it.
    Q_INVOKABLE QString nameAt(int row) const;
    /// @{
    /// See QAbstractItemModel.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    /// @}

Q_SIGNALS:
    /// @{
    /// The properties of that name, or those that notify by it, have changed.
    void libraryChanged();
    void daysChanged();
    void learnersChanged();
    void isLoadingChanged();
    void changed();
    /// @}

private:
    void refresh();
    void show();
    void announceLoading();

    QPointer<LibraryFolder> m_library;
    QString m_firstDay;
    QString m_lastDay;
    QStringList m_learners;
    QStringList m_files;
    QVector<sessionlibrary::FileStamp> m_stamps; // of m_files
    bool m_hasMore = false; // than are read
    std::unique_ptr<SessionResults> m_results;
    sessionreview::ClassFigures m_figures;
};

} // namespace cprquick

#endif
