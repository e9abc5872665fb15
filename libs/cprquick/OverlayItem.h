// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_OVERLAYITEM_H
#define CPRQUICK_OVERLAYITEM_H

#include "cprquick/PlotItem.h"

#include <sessionplot/WavePainter.h>

namespace cprquick {

/// The depths of two sessions in one lane over one time axis; the other's is lighter and dashed.
/// Where there is no room for curves, the mean depths.
// qmltyperegistrar finds the base by its full name alone.
class CPRQUICK_EXPORT OverlayItem : public cprquick::PlotItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(OverlayItem)

    // clang-format off
    /// The session that is drawn over the first one; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *other     READ other     WRITE setOther     NOTIFY otherChanged)
    /// The time of the other session that lies where zero of the first one does, ms.
    Q_PROPERTY(int      otherZero READ otherZero WRITE setOtherZero NOTIFY otherChanged)
    // clang-format on

public:
    /// Shows nothing until it has a session.
    explicit OverlayItem(QQuickItem *parent = nullptr);
    ~OverlayItem() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *other() const;
    void setOther(CPRData *session);
    int otherZero() const { return m_otherZero; }
    void setOtherZero(int msecs);
    /// @}

    /// See QQuickPaintedItem.
    void paint(QPainter *painter) override;

Q_SIGNALS:
    /// other or otherZero has changed.
    void otherChanged();

protected:
    /// See QQuickItem.
    void updatePolish() override;

private:
    std::shared_ptr<PlotSource> m_other;
    int m_otherZero = 0;
    sessionplot::WavePainter m_painter;
    sessionplot::WavePainter m_otherPainter;
};

} // namespace cprquick

#endif
