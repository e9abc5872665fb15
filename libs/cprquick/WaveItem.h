// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_WAVEITEM_H
#define CPRQUICK_WAVEITEM_H

#include "cprquick/PlotItem.h"

#include <sessionplot/WavePainter.h>

namespace cprquick {

/// One lane over time: the depth curve, the ventilations with their volume curve, or the
/// compression rate, each with the target band of the session's guidelines.
///
/// No peak is lost at any zoom, and while a session grows only what is new is computed.
// qmltyperegistrar finds the base by its full name alone.
class CPRQUICK_EXPORT WaveItem : public cprquick::PlotItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(WaveItem)

    // clang-format off
    /// Which lane is drawn; the depth unless changed.
    Q_PROPERTY(Kind kind    READ kind    WRITE setKind    NOTIFY kindChanged)
    /// Whether titles, values and times are drawn beside the lane. True unless changed.
    Q_PROPERTY(bool hasAxes READ hasAxes WRITE setHasAxes NOTIFY hasAxesChanged)
    // clang-format on

public:
    /// The lanes.
    enum Kind { Depth, Volume, Rate };
    Q_ENUM(Kind)

    /// Shows nothing until it has a session.
    explicit WaveItem(QQuickItem *parent = nullptr);
    ~WaveItem() override;

    /// @{
    /// Getters and setters of the properties.
    Kind kind() const { return m_kind; }
    void setKind(Kind kind);
    bool hasAxes() const { return m_hasAxes; }
    void setHasAxes(bool axes);
    /// @}

    /// See QQuickPaintedItem.
    void paint(QPainter *painter) override;

Q_SIGNALS:
    /// @{
    /// The properties of that name, or those that notify by it, have changed.
    void kindChanged();
    void hasAxesChanged();
    /// @}

private:
    Kind m_kind = Depth;
    bool m_hasAxes = true;
    sessionplot::WavePainter m_painter;
};

} // namespace cprquick

#endif
