// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_CLASSLIST_H
#define CPRVIEWER_CLASSLIST_H

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantList>
#include <QVector>
#include <QtQml/qqml.h>

/// Who trains in a class, on which manikin and in which protocol, and who is next. It is kept in a
/// file that only the user can read.
class ClassList final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The viewer has it.")

    // clang-format off
    /// Maps with name, manikin, protocol (-1 for any), protocolText and sessions, how many the
    /// learner has done since the day.
    Q_PROPERTY(QVariantList entries  READ entries                    NOTIFY changed)
    Q_PROPERTY(QStringList  names    READ names                      NOTIFY changed)
    Q_PROPERTY(int          count    READ count                      NOTIFY changed)
    /// The number of the learner who trains next; -1 when the list is empty.
    Q_PROPERTY(int          next     READ next     WRITE setNext     NOTIFY changed)
    /// That learner, with manikin, protocol and length, for people; empty when the list is.
    Q_PROPERTY(QString      nextText READ nextText                   NOTIFY changed)
    /// How long a session lasts, 0 to 120 min; 0 for as long as it does by itself.
    Q_PROPERTY(int          minutes  READ minutes  WRITE setMinutes  NOTIFY changed)
    /// The day on which the class began, ISO 8601; empty when the list is.
    Q_PROPERTY(QString      day      READ day                        NOTIFY changed)
    // clang-format on

public:
    struct Entry {
        QString name;
        QString manikin;
        int protocol = -1; ///< 0 to 5; -1 for any
        int sessions = 0; ///< done since the day
        int id = 0; ///< which the entry keeps while the program runs, whatever is moved or removed
    };
    static constexpr int maxEntries = 500;

    /// Reads \a file, which need not exist; without a name nothing is stored.
    explicit ClassList(const QString &file, QObject *parent = nullptr);
    ~ClassList() override;

    QVariantList entries() const;
    QStringList names() const;
    int count() const { return m_entries.size(); }
    int next() const { return m_next; }
    void setNext(int number);
    QString nextText() const;
    int minutes() const { return m_minutes; }
    void setMinutes(int minutes);
    QString day() const { return m_day; }
    const Entry &entry(int number) const { return m_entries.at(number); }

    /// Learners, one a line: what somebody types, copies from a spreadsheet or has in a CSV file.
    /// A first line that names the columns may be there; else they are name, manikin and protocol.
    static QVector<Entry> parse(const QString &text);
    /// Adds what parse() finds; how many that are.
    Q_INVOKABLE int add(const QString &text);
    /// The same for a file, of which the first MiB counts; -1 when it cannot be read.
    Q_INVOKABLE int addFile(const QUrl &url);
    /// Changes an entry; without a name nothing.
    Q_INVOKABLE void correct(int number, const QString &name, const QString &manikin, int protocol);
    Q_INVOKABLE void remove(int number);
    /// Moves an entry by \a step places.
    Q_INVOKABLE void move(int number, int step);
    Q_INVOKABLE void clear();
    /// The class begins today: nobody has done a session, and the first learner is next.
    Q_INVOKABLE void restart();
    /// The learner with \a id, an entry's, has done a session; the one behind is next. Nothing when
    /// the learner is not in the list any more.
    void endSession(int id);
    /// That session was thrown away: it does not count.
    void takeSessionBack(int id);
    /// The learner \a name is \a newName from now on, in each entry.
    void rename(const QString &name, const QString &newName);

    /// The learner who trains next on \a manikin, and is not in \a busy: one who is meant for it,
    /// else one who is meant for none, else anybody. Empty for nobody. Who is next stays so; when
    /// that is the one who was called, or somebody busy, the first one behind is who is neither.
    QString callNext(const QString &manikin, const QStringList &busy);
    /// The protocol of the learner \a name; -1 for any.
    int protocolFor(const QString &name) const;
    /// The learner \a name, if it is one of the list, has done a session; of several entries of
    /// that name the first one counts it.
    void countSession(const QString &name);

    /// \a name as a session can hold it; may be empty.
    static QString storable(const QString &name);

Q_SIGNALS:
    void changed();
    /// The list is not on the disk; it lasts as long as the program.
    void failed(const QString &reason);

private:
    void store();
    void append(Entry entry);
    int numberOf(int id) const;

    QString m_file;
    QVector<Entry> m_entries;
    int m_next = -1;
    int m_minutes = 0;
    int m_lastId = 0;
    QString m_day;
};

#endif
