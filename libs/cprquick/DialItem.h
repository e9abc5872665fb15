// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_DIALITEM_H
#define CPRQUICK_DIALITEM_H

#include "cprquick_export.h"

#include <QQuickPaintedItem>
#include <QtQml/qqml.h>

namespace cprquick {

/// A dial with a hand and a target band, open below, where a page can put the figure itself.
class CPRQUICK_EXPORT DialItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(DialItem)

    // clang-format off
    /// @{
    /// Where the hand points; it stops at the ends of the dial. Without a value there is no hand.
    Q_PROPERTY(qreal value    MEMBER m_value    NOTIFY changed)
    Q_PROPERTY(bool  hasValue MEMBER m_hasValue NOTIFY changed)
    /// @}
    /// @{
    /// The ends of the dial.
    Q_PROPERTY(qreal from     MEMBER m_from     NOTIFY changed)
    Q_PROPERTY(qreal to       MEMBER m_to       NOTIFY changed)
    /// @}
    /// @{
    /// The target band; none when bandTo is not above bandFrom.
    Q_PROPERTY(qreal bandFrom MEMBER m_bandFrom NOTIFY changed)
    Q_PROPERTY(qreal bandTo   MEMBER m_bandTo   NOTIFY changed)
    /// @}
    /// Drawn for a dark page.
    Q_PROPERTY(bool  dark     MEMBER m_isDark   NOTIFY changed)
    /// Whether the value lies in the band.
    Q_PROPERTY(bool  isInBand READ isInBand     NOTIFY changed)
    // clang-format on

public:
    /// A dial from 0 to 100 without a band.
    explicit DialItem(QQuickItem *parent = nullptr);
    ~DialItem() override;

    /// The property of the same name.
    bool isInBand() const;
    /// See QQuickPaintedItem.
    void paint(QPainter *painter) override;

Q_SIGNALS:
    /// Some of the properties have changed.
    void changed();

private:
    /// Degrees from 3 o'clock, anticlockwise, as QPainter counts.
    qreal angleAt(qreal value) const;

    qreal m_value = 0;
    bool m_hasValue = true;
    qreal m_from = 0;
    qreal m_to = 100;
    qreal m_bandFrom = 0;
    qreal m_bandTo = 0;
    bool m_isDark = false;
};

} // namespace cprquick

#endif
