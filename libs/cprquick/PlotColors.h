// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_PLOTCOLORS_H
#define CPRQUICK_PLOTCOLORS_H

#include "cprquick_export.h"

#include <sessionplot/Style.h>

#include <QObject>
#include <QtQml/qqml.h>

namespace cprquick {

/// The colours of the pictures, for what a page draws beside them. They stay apart for every kind
/// of colour vision; what matters has to be shown by shape or text as well.
class CPRQUICK_EXPORT PlotColors : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(PlotColors)

    // clang-format off
    /// The colours of a dark page; false unless changed.
    Q_PROPERTY(bool   dark       READ isDark WRITE setDark NOTIFY darkChanged)
    /// @{
    /// The colour of what the name says.
    Q_PROPERTY(QColor background READ background           NOTIFY darkChanged)
    Q_PROPERTY(QColor lane       READ lane                 NOTIFY darkChanged) ///< behind curves
    Q_PROPERTY(QColor frame      READ frame                NOTIFY darkChanged)
    Q_PROPERTY(QColor grid       READ grid                 NOTIFY darkChanged)
    Q_PROPERTY(QColor text       READ text                 NOTIFY darkChanged)
    Q_PROPERTY(QColor mutedText  READ mutedText            NOTIFY darkChanged)
    Q_PROPERTY(QColor band       READ band                 NOTIFY darkChanged) ///< translucent
    Q_PROPERTY(QColor bandEdge   READ bandEdge             NOTIFY darkChanged)
    Q_PROPERTY(QColor curve      READ curve                NOTIFY darkChanged)
    Q_PROPERTY(QColor otherCurve READ otherCurve           NOTIFY darkChanged) ///< of another session
    Q_PROPERTY(QColor bars       READ bars                 NOTIFY darkChanged)
    Q_PROPERTY(QColor pause      READ pause                NOTIFY darkChanged)
    Q_PROPERTY(QColor pauseLines READ pauseLines           NOTIFY darkChanged) ///< hatching
    Q_PROPERTY(QColor loss       READ loss                 NOTIFY darkChanged) ///< hatching
    Q_PROPERTY(QColor fault      READ fault                NOTIFY darkChanged)
    Q_PROPERTY(QColor flag       READ flag                 NOTIFY darkChanged)
    Q_PROPERTY(QColor cursor     READ cursor               NOTIFY darkChanged)
    /// @}
    // clang-format on

public:
    /// The colours of a light page.
    explicit PlotColors(QObject *parent = nullptr) : QObject(parent) { }

    /// @{
    /// Getters and setters of the properties.
    bool isDark() const { return m_isDark; }
    void setDark(bool dark)
    {
        if (dark == m_isDark)
            return;
        m_isDark = dark;
        m_theme = dark ? sessionplot::Theme::dark() : sessionplot::Theme::light();
        Q_EMIT darkChanged();
    }
    QColor background() const { return m_theme.background; }
    QColor lane() const { return m_theme.lane; }
    QColor frame() const { return m_theme.frame; }
    QColor grid() const { return m_theme.grid; }
    QColor text() const { return m_theme.text; }
    QColor mutedText() const { return m_theme.mutedText; }
    QColor band() const { return m_theme.band; }
    QColor bandEdge() const { return m_theme.bandEdge; }
    QColor curve() const { return m_theme.curve; }
    QColor otherCurve() const { return m_theme.otherCurve; }
    QColor bars() const { return m_theme.bars; }
    QColor pause() const { return m_theme.pause; }
    QColor pauseLines() const { return m_theme.pauseLines; }
    QColor loss() const { return m_theme.loss; }
    QColor fault() const { return m_theme.fault; }
    QColor flag() const { return m_theme.flag; }
    QColor cursor() const { return m_theme.cursor; }
    /// @}

Q_SIGNALS:
    /// All colours have changed.
    void darkChanged();

private:
    bool m_isDark = false;
    sessionplot::Theme m_theme = sessionplot::Theme::light();
};

} // namespace cprquick

#endif
