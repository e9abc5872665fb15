// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_TRENDITEM_H
#define CPRQUICK_TRENDITEM_H

#include "cprquick/LibraryFolder.h"

#include <QPointer>
#include <QQuickPaintedItem>

#include <memory>

namespace cprquick {

class SessionResults;

/// How a learner's sessions followed each other: score, depth, rate and fraction, each with the
/// target of the last session.
class CPRQUICK_EXPORT TrendItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(TrendItem)

    // clang-format off
    /// Whose sessions are shown; not owned. Null when it is destroyed.
    Q_PROPERTY(cprquick::LibraryFolder *library READ library WRITE setLibrary NOTIFY changed)
    /// As archives have the name.
    Q_PROPERTY(QString learner  READ learner  WRITE setLearner NOTIFY changed)
    /// Drawn for a dark page.
    Q_PROPERTY(bool    dark     READ isDark   WRITE setDark     NOTIFY lookChanged)
    /// Pixels; 0, as it is from the start, for the size of the application's font.
    Q_PROPERTY(qreal   textSize READ textSize WRITE setTextSize NOTIFY lookChanged)
    /// The figures of the last session with their targets, a line each.
    Q_PROPERTY(QStringList texts READ texts                    NOTIFY textsChanged)
    // clang-format on

public:
    /// So many sessions are drawn at most: the last ones.
    static constexpr int maxSessions = 40;

    /// Shows nothing until it has a library and a learner.
    explicit TrendItem(QQuickItem *parent = nullptr);
    ~TrendItem() override;

    /// @{
    /// Getters and setters of the properties.
    LibraryFolder *library() const { return m_library; }
    void setLibrary(LibraryFolder *library);
    QString learner() const { return m_learner; }
    void setLearner(const QString &learner);
    bool isDark() const { return m_isDark; }
    void setDark(bool dark);
    qreal textSize() const { return m_textSize; }
    void setTextSize(qreal size);
    QStringList texts() const;
    /// @}

    /// See QQuickPaintedItem.
    void paint(QPainter *painter) override;

Q_SIGNALS:
    /// @{
    /// The properties that notify by it have changed.
    void changed();
    void lookChanged();
    void textsChanged();
    /// @}

private:
    void refresh();

    QPointer<LibraryFolder> m_library;
    QString m_learner;
    bool m_isDark = false;
    qreal m_textSize = 0;
    std::vector<sessionreview::SessionResult> m_results; // in order of time
    std::unique_ptr<SessionResults> m_lastResult; // which has the targets
};

} // namespace cprquick

#endif
