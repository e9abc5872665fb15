// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_HISTOGRAMITEM_H
#define CPRQUICK_HISTOGRAMITEM_H

#include "cprquick_export.h"

#include <QQuickPaintedItem>
#include <QVariantList>
#include <QtQml/qqml.h>

namespace cprquick {

/// Bars with their numbers above them, as high as the item allows, and what stands between them
/// below.
class CPRQUICK_EXPORT HistogramItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(HistogramItem)

    // clang-format off
    /// One number for each bar; below 0 counts as 0.
    Q_PROPERTY(QVariantList values   MEMBER m_values   NOTIFY changed)
    /// Texts between the bars, one less than there are bars; none, as it is from the start, for no
    /// line of them.
    Q_PROPERTY(QVariantList edges    MEMBER m_edges    NOTIFY changed)
    /// Whether a bar is inside the target.
    Q_PROPERTY(QVariantList targets  MEMBER m_targets  NOTIFY changed)
    /// The bar that is marked; -1, as it is from the start, for none.
    Q_PROPERTY(int          chosen   MEMBER m_chosen   NOTIFY changed)
    /// Drawn for a dark page.
    Q_PROPERTY(bool         dark     MEMBER m_isDark   NOTIFY changed)
    /// Pixels; 0, as it is from the start, for the size of the application's font.
    Q_PROPERTY(qreal        textSize MEMBER m_textSize NOTIFY changed)
    // clang-format on

public:
    /// No bars until there are values.
    explicit HistogramItem(QQuickItem *parent = nullptr);
    ~HistogramItem() override;

    /// The bar at \a x in the item; -1 beside the bars.
    Q_INVOKABLE int barAt(qreal x) const;

    /// See QQuickPaintedItem.
    void paint(QPainter *painter) override;

Q_SIGNALS:
    /// Some of the properties have changed.
    void changed();

private:
    QVariantList m_values;
    QVariantList m_edges;
    QVariantList m_targets;
    int m_chosen = -1;
    bool m_isDark = false;
    qreal m_textSize = 0;
};

} // namespace cprquick

#endif
