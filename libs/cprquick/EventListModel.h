// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_EVENTLISTMODEL_H
#define CPRQUICK_EVENTLISTMODEL_H

#include "cprquick/SessionWatcher.h"

#include "sessionreview/Targets.h"

#include <QAbstractListModel>
#include <QSet>
#include <QVector>
#include <QtQml/qqml.h>

namespace cprquick {

/// The events of a session as rows, in the order in which they start. The event list has them in
/// another one: a ventilation that begins during a compression stands before it.
///
/// It follows the list row by row: only the rows of events that were added, removed or changed are
/// announced. Texts are made when a delegate asks for them.
class CPRQUICK_EXPORT EventListModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(EventListModel)

    // clang-format off
    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *session READ session WRITE setSession NOTIFY sessionChanged)
    /// The tags of which an event has to carry at least one (CPREventBase.TagComp, ...); 0, as it
    /// is from the start, for all events.
    Q_PROPERTY(int      tags    READ tags    WRITE setTags    NOTIFY tagsChanged)
    /// Only events with which something is wrong, by the session's guidelines. False unless changed.
    Q_PROPERTY(bool     faultsOnly READ hasFaultsOnly WRITE setFaultsOnly NOTIFY tagsChanged)
    /// Number of rows.
    Q_PROPERTY(int      count   READ count                    NOTIFY countChanged)
    // clang-format on

public:
    /// What a delegate reads, by the names in lower case. Measurements that an event does not have
    /// are undefined.
    enum Role {
        EventRole = Qt::UserRole + 1, ///< event: the object; it goes with its row
        TypeRole, ///< type: CPREventBase.EventType
        TagsRole, ///< tags: CPREventBase.EventTag values combined
        TypeNameRole, ///< typeName: in words
        StartRole, ///< start: ms of session time
        StartTextRole, ///< startText: "1:23.4"
        EndRole, ///< end: ms of session time
        DurationRole, ///< duration: ms
        DetailRole, ///< detail: the measurements or the matter in words, with units
        DepthRole, ///< depth: mm
        ReleaseDepthRole, ///< releaseDepth: mm
        RateRole, ///< rate: per minute; not of the first compression of a cycle
        VolumeRole, ///< volume: ml
        NumberRole, ///< numberInCycle
        FaultsRole, ///< faults: a list of words, judged by the session's guidelines
        FaultTextRole, ///< faultText: the same as one text
        CorrectRole ///< correct: nothing is wrong; undefined where nothing is judged
    };
    Q_ENUM(Role)

    /// Shows nothing until it has a session.
    explicit EventListModel(QObject *parent = nullptr);
    ~EventListModel() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *session() const { return m_watcher.session(); }
    void setSession(CPRData *session) { m_watcher.setSession(session); }
    int tags() const { return m_tags; }
    void setTags(int tags);
    bool hasFaultsOnly() const { return m_hasFaultsOnly; }
    void setFaultsOnly(bool faultsOnly);
    int count() const { return m_rows.size(); }
    /// @}

    /// The event in \a row; null outside.
    Q_INVOKABLE CPREventBase *eventAt(int row) const;
    /// The row of \a event; -1 when it has none.
    Q_INVOKABLE int rowOf(CPREventBase *event) const;
    /// The last row that starts at or before \a msecs of session time; -1 when all start later.
    Q_INVOKABLE int rowAt(int msecs) const;
    /// The first row at or behind \a row, or with a \a step of -1 at or before it, with whose event
    /// something is wrong; -1 when there is none.
    Q_INVOKABLE int faultFrom(int row, int step) const;

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
    void tagsChanged();
    void countChanged();
    /// @}

private:
    bool isFault(const CPREventBase &event) const;
    bool isShown(const CPREventBase *event) const;
    QVector<CPREventBase *> shownEvents() const;
    void reload();
    void follow();
    void addAnnounced(CPREventBase *event);
    bool insertAnnounced(CPREventBase *event);
    void insertInOrder(CPREventBase *event);
    void announceChanged(CPREventBase *event);
    void forget(CPREventBase *gone);
    void remove(int first, int count);
    void insert(int row, const QVector<CPREventBase *> &events);
    void announce(int first, int last);

    SessionWatcher m_watcher;
    sessionreview::Targets m_targets;
    QVector<CPREventBase *> m_rows; // not owned; null while the row of a removed one goes
    QSet<const QObject *> m_shown; // the same, for a quick answer whether an object has a row
    int m_listed = 0; // events in the session's list when m_rows was brought up to date
    int m_tags = 0;
    bool m_hasFaultsOnly = false;
};

} // namespace cprquick

#endif
