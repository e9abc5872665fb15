// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_OVERVIEWITEM_H
#define CPRQUICK_OVERVIEWITEM_H

#include "cprquick/PlotItem.h"

#include <sessionplot/WavePainter.h>

namespace cprquick {

/// All of a session in a low strip: its wave, pauses, and ticks for faults and flags. A page lays
/// over it what is shown elsewhere.
// qmltyperegistrar finds the base by its full name alone.
class CPRQUICK_EXPORT OverviewItem : public cprquick::PlotItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(OverviewItem)

public:
    /// Shows nothing until it has a session.
    explicit OverviewItem(QQuickItem *parent = nullptr);
    ~OverviewItem() override;

    /// See QQuickPaintedItem.
    void paint(QPainter *painter) override;

private:
    sessionplot::WavePainter m_wavePainter;
};

} // namespace cprquick

#endif
