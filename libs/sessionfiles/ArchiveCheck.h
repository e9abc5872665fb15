// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_ARCHIVECHECK_H
#define SESSIONFILES_ARCHIVECHECK_H

#include <QJsonObject>
#include <QString>
#include <QVector>

#include <functional>
#include <optional>

namespace sessionfiles {

/// One thing in an archive that is not as it should be.
struct Finding {
    /// Whether a session is loaded whole in spite of it.
    enum Severity {
        Error, ///< a member that a session cannot be loaded from whole
        Warning ///< a session loads whole all the same, but something in it may be unexpected
    };

    /// One line, without its end.
    QString toText() const;
    /// What is known of the finding; the place, too, where there is one.
    QJsonObject toJson() const;

    Severity severity = Error; ///< whether a session is loaded whole in spite of it
    QString member; ///< with its folder; empty for the archive itself
    qint64 line = 0; ///< from 1; 0 when the place is no text
    qint64 column = 0; ///< where the parser stood, behind the element that it speaks of
    qint64 byte = -1; ///< from 0; -1 when the place is no byte of a member
    QString element; ///< "evt 12 CprCompEvent 18080 ms, param compDepth"
    QString expected; ///< what should stand there
    QString found; ///< what stands there
};

/// What a check has found. Counts everything, keeps the first maxFindings.
class FindingList {
public:
    /// So many findings are kept.
    static constexpr int maxFindings = 1000;

    /// \a file is the archive's name.
    explicit FindingList(const QString &file) : m_file(file) { }

    /// Adds what \a make returns; make() is called only when the finding is kept.
    template <typename Make> void add(Finding::Severity severity, Make make)
    {
        ++(severity == Finding::Error ? m_errors : m_warnings);
        if (m_findings.size() < maxFindings)
            m_findings.append(make());
    }

    /// The first findings, in the order in which they were found.
    const QVector<Finding> &findings() const { return m_findings; }
    /// @{ How many there are, kept or not.
    qint64 errors() const { return m_errors; }
    qint64 warnings() const { return m_warnings; }
    /// @}

    /// One line per finding, then the counts.
    QString toText() const;
    /// The file, the findings and the counts.
    QJsonObject toJson() const;

private:
    qint64 leftOut() const { return m_errors + m_warnings - m_findings.size(); }

    QString m_file;
    QVector<Finding> m_findings;
    qint64 m_errors = 0;
    qint64 m_warnings = 0;
};

/// Why the file \a name is no archive of a session that can be opened; nothing when it is one.
[[nodiscard]] std::optional<QString> whyNoArchive(const QString &name);

/// Checks the archive \a name. \a advance is told how many bytes of how many have been read, and
/// may be null.
///
/// The verdict is the session's own: there is an error if, and only if, load() does not load the
/// archive whole. Each error stands in a member that a session does not read to its end, or tells
/// of one that is not there. What else is not as it should be is a warning. Looked at are
/// - the archive: each of the five members once, and none else, under one name in the directory
///   and before its content;
/// - each XML member: known elements and attributes, no text;
/// - the events: known kinds and parameters, texts that fit their kind, units, each parameter
///   once, an end not before the start and a peak between them, one session info, at most one
///   statistics and one score, no pause that begins inside the pause before it, and the order;
/// - the waves: both descriptions, sample rate 1 to 1000, as many whole samples as described, at
///   most 24 hours, both waves of one length, the length of the session;
/// - the guidelines: known names, each once, values that fit their type, units.
///
/// Order: the list puts a new event behind the last one that has ended when it starts, so no event
/// stands directly behind one that started only after it had ended. More cannot be told from a
/// file: pauses are stretched after they have been listed, and the ends of ventilations are not
/// stored. Session info, statistics and score have no place in the order.
FindingList check(const QString &name,
                  const std::function<void(qint64 done, qint64 total)> &advance = {});

} // namespace sessionfiles

#endif
