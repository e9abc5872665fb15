// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_SESSIONDIFF_H
#define SESSIONFILES_SESSIONDIFF_H

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

class CPRData;
class CPREventBase;
class QVariant;

namespace sessionfiles {

/// What differs between two sessions: learners, session info, statistics, scores, events, waves
/// and guidelines.
///
/// Events are the same event when kind and start agree; what is left over in between is the same
/// when the kinds agree and the starts are at most sameEventMs apart. So an event that only one
/// session has is one difference, and the events behind it are compared as if it were not there.
class SessionDiff {
public:
    /// So far apart, in ms, may the starts of one event be.
    static constexpr int sameEventMs = 200;
    static constexpr int maxDifferences = 10'000; ///< more differences are counted only

    /// What the two sessions are called.
    struct Names {
        QString a; ///< of the first
        QString b; ///< of the second
    };

    /// With \a ignoresTimes the start and end times in the session info, which the recording host
    /// takes from its clock, are not compared.
    SessionDiff(const Names &names, const CPRData &a, const CPRData &b, bool ignoresTimes);

    /// Whether there is no difference.
    bool isSame() const { return m_count == 0; }
    /// One line per difference; nothing when there is none.
    QString toText() const;
    /// The differences, their number and the names.
    QJsonObject toJson() const;
    /// @{
    /// How much differs: for each part of the sessions that differs a line, or an object in
    /// "sections", with its numbers. Events count once each, whatever differs in them; everything
    /// is counted, also behind maxDifferences.
    QString toSummary() const;
    QJsonObject summaryToJson() const;
    /// @}

private:
    struct Pair {
        const CPREventBase *a; // null when only b has the event
        const CPREventBase *b;
        int indexA; // in the list, from 1
        int indexB;
    };
    // A place in both sessions and how lines and JSON objects about it begin.
    struct Place {
        QString text;
        QJsonObject json;
    };

    // How much differs in a part.
    struct Section {
        QString name;
        qint64 changed = 0;
        qint64 onlyInA = 0;
        qint64 onlyInB = 0;
        qint64 moved = 0;
        double greatest = 0; // difference of samples
        QString unit; // of that; empty for none
    };
    // The one of that name, which is added when there is none.
    Section &section(const QString &name);
    QJsonObject head() const;

    void compareLearners(const CPRData &a, const CPRData &b);
    void compareStanding(const QString &part, const CPREventBase &a, const CPREventBase &b,
                         const QStringList &passedOver);
    void compareEvents(const CPRData &a, const CPRData &b);
    void compareEvent(const Pair &pair);
    void compareOrder(const QVector<Pair> &pairs);
    void compareParameters(const Place &place, const CPREventBase &a, const CPREventBase &b,
                           const QStringList &passedOver);
    template <typename Wave> void compareWave(const QString &part, const Wave &a, const Wave &b);
    void compareGuidelines(const CPRData &a, const CPRData &b);

    static Place positionOf(const Pair &pair);
    // A value that differs; one that only the other session has is invalid.
    void addValue(const Place &place, const QString &field, const QVariant &a, const QVariant &b,
                  const QString &unit);
    void addOnlyIn(const Place &place, bool isInA);
    void add(const QString &text, const QJsonObject &json);

    Names m_names;
    QStringList m_lines;
    QJsonArray m_json;
    QVector<Section> m_sections;
    qint64 m_count = 0;
};

} // namespace sessionfiles

#endif
