// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_LIBRARYMODELS_H
#define CPRQUICK_LIBRARYMODELS_H

#include "cprquick/LibraryFolder.h"

#include <QAbstractListModel>
#include <QCache>
#include <QPointer>

#include <vector>

namespace cprquick {

/// The sessions of a library as rows. It asks the index for a hundred at a time, so that it costs
/// the same for ten and for ten thousand.
class CPRQUICK_EXPORT LibraryModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(LibraryModel)

    // clang-format off
    /// What is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(cprquick::LibraryFolder *library READ library WRITE setLibrary NOTIFY libraryChanged)
    /// As somebody types it: words begin with its words.
    Q_PROPERTY(QString text       READ text       WRITE setText       NOTIFY filterChanged)
    /// Exactly this learner; empty, as it is from the start, for all.
    Q_PROPERTY(QString learner    READ learner    WRITE setLearner    NOTIFY filterChanged)
    /// A day, a month or a year, as ISO 8601 ("2026-03") or as the language has it; empty for all.
    Q_PROPERTY(QString day        READ day        WRITE setDay        NOTIFY filterChanged)
    /// The day is none that could be understood; then it leaves nothing out.
    Q_PROPERTY(bool    isDayUnknown READ isDayUnknown                 NOTIFY filterChanged)
    /// 0 to 5; -1, as it is from the start, for all.
    Q_PROPERTY(int     protocol   READ protocol   WRITE setProtocol   NOTIFY filterChanged)
    /// @{
    /// Percent; -1, as they are from the start, for all.
    Q_PROPERTY(int     minScore   READ minScore   WRITE setMinScore   NOTIFY filterChanged)
    Q_PROPERTY(int     maxScore   READ maxScore   WRITE setMaxScore   NOTIFY filterChanged)
    /// @}
    /// By what rows are in order. The newest session is first from the start.
    Q_PROPERTY(SortBy  sortBy     READ sortBy     WRITE setSortBy     NOTIFY filterChanged)
    /// The greatest first.
    Q_PROPERTY(bool    isDescending READ isDescending WRITE setDescending NOTIFY filterChanged)
    /// Number of rows.
    Q_PROPERTY(int     count      READ count                          NOTIFY countChanged)
    // clang-format on

public:
    /// By what rows are in order.
    enum SortBy { Start, Learner, Length, Protocol, Score, File };
    Q_ENUM(SortBy)

    /// What a delegate reads, by the names in lower case.
    enum Role {
        FileRole = Qt::UserRole + 1, ///< file: relative to the folder
        LearnersRole, ///< learners: their names, as they are stored
        StartTextRole, ///< startText: day and time; empty when not known
        DayRole, ///< day: ISO 8601; empty when not known
        LengthTextRole, ///< lengthText: "2:00"
        ProtocolTextRole, ///< protocolText
        ScoreTextRole, ///< scoreText: "68 %"; empty without scores
        PassedRole, ///< isPassed: undefined when nothing is asked for
        StateTextRole, ///< stateText: what is wrong with the archive; empty for a whole one
        ReasonRole ///< reason: why, in a sentence
    };
    Q_ENUM(Role)

    /// Shows nothing until it has a library.
    explicit LibraryModel(QObject *parent = nullptr);
    ~LibraryModel() override;

    // clang-format off
    /// @{
    /// Getters and setters of the properties.
    LibraryFolder *library() const { return m_library; }
    void setLibrary(LibraryFolder *library);
    QString text() const           { return m_filter.text; }
    QString learner() const        { return m_filter.learner.value_or(QString()); }
    QString day() const            { return m_day; }
    bool isDayUnknown() const      { return !m_day.isEmpty() && !m_filter.from.isValid(); }
    int protocol() const           { return m_filter.protocol.value_or(-1); }
    int minScore() const           { return m_filter.minScore.value_or(-1); }
    int maxScore() const           { return m_filter.maxScore.value_or(-1); }
    SortBy sortBy() const          { return static_cast<SortBy>(m_order.by); }
    bool isDescending() const      { return m_order.direction == Qt::DescendingOrder; }
    int count() const              { return m_count; }
    // clang-format on
    void setText(const QString &text);
    void setLearner(const QString &learner);
    void setDay(const QString &day);
    void setProtocol(int protocol);
    void setMinScore(int percent);
    void setMaxScore(int percent);
    void setSortBy(SortBy by);
    void setDescending(bool isDescending);
    /// @}

    /// The file in \a row, relative to the folder; empty outside.
    Q_INVOKABLE QString fileAt(int row) const;
    /// The row of \a file, which is looked for near \a row; -1 when it is not there.
    Q_INVOKABLE int rowOf(const QString &file, int row) const;
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
    void filterChanged();
    void countChanged();
    /// @}

private:
    using Page = std::vector<sessionlibrary::SessionEntry>;

    template <typename Value> void change(Value &member, const Value &value);
    void refresh();
    const sessionlibrary::SessionEntry *entryAt(int row) const;

    QPointer<LibraryFolder> m_library;
    sessionlibrary::Filter m_filter;
    sessionlibrary::Order m_order;
    QString m_day;
    int m_count = 0;
    mutable QCache<int, Page> m_pages; // of a hundred rows each, by number
};

/// The learners of a library by their names.
class CPRQUICK_EXPORT LearnerModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(LearnerModel)

    // clang-format off
    /// Whose learners are shown; not owned. Null when it is destroyed.
    Q_PROPERTY(cprquick::LibraryFolder *library READ library WRITE setLibrary NOTIFY libraryChanged)
    /// A part of the names, in any case; empty for all.
    Q_PROPERTY(QString text  READ text  WRITE setText NOTIFY textChanged)
    /// Number of rows.
    Q_PROPERTY(int     count READ count               NOTIFY countChanged)
    // clang-format on

public:
    /// What a delegate reads, by the names in lower case.
    enum Role {
        NameRole = Qt::UserRole + 1, ///< name: as it is stored
        SessionsRole, ///< sessions: how many
        LastTextRole, ///< lastText: day of the last one; empty when not known
        ScoreTextRole ///< scoreText: of the last one; empty without scores
    };
    Q_ENUM(Role)

    /// Shows nothing until it has a library.
    explicit LearnerModel(QObject *parent = nullptr);
    ~LearnerModel() override;

    /// @{
    /// Getters and setters of the properties.
    LibraryFolder *library() const { return m_library; }
    void setLibrary(LibraryFolder *library);
    QString text() const { return m_text; }
    void setText(const QString &text);
    int count() const { return rowCount(); }
    /// @}

    /// The name in \a row; empty outside.
    Q_INVOKABLE QString nameAt(int row) const;
    /// @{
    /// See QAbstractItemModel.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    /// @}

Q_SIGNALS:
    /// @{
    /// The property of that name has changed.
    void libraryChanged();
    void textChanged();
    void countChanged();
    /// @}

private:
    void refresh();

    QPointer<LibraryFolder> m_library;
    QString m_text;
    std::vector<sessionlibrary::Learner> m_rows;
};

} // namespace cprquick

#endif
