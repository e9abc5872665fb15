// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_TIMELINEITEM_H
#define CPRQUICK_TIMELINEITEM_H

#include "cprquick/PlotItem.h"

#include <sessionplot/ReviewPicture.h>

namespace cprquick {

/// The review picture of a session, or some of its parts: everything that happened, in lanes over
/// one time axis.
// qmltyperegistrar finds the base by its full name alone.
class CPRQUICK_EXPORT TimelineItem : public cprquick::PlotItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(TimelineItem)

    // clang-format off
    /// What is drawn where there is room and something to draw; AllLanes unless changed.
    Q_PROPERTY(Parts parts    READ parts    WRITE setParts    NOTIFY partsChanged)
    /// Rows of labels over the lanes; 0, as it is from the start, for as many as the labels need. A
    /// fixed number lets the lanes stay where they are while the picture moves along the session.
    Q_PROPERTY(int   flagRows READ flagRows WRITE setFlagRows NOTIFY partsChanged)
    // clang-format on

public:
    // clang-format off
    /// Parts of the picture, from top to bottom.
    enum Part {
        Head     = sessionplot::ReviewPicture::HeadPart,
        Flags    = sessionplot::ReviewPicture::FlagsPart,
        Pauses   = sessionplot::ReviewPicture::PausesPart,
        Cycles   = sessionplot::ReviewPicture::CyclesPart,
        Depth    = sessionplot::ReviewPicture::DepthPart,
        Faults   = sessionplot::ReviewPicture::FaultsPart,
        Rate     = sessionplot::ReviewPicture::RatePart,
        Volume   = sessionplot::ReviewPicture::VolumePart,
        TimeAxis = sessionplot::ReviewPicture::TimeAxisPart,
        Legend   = sessionplot::ReviewPicture::LegendPart,
        AllLanes = sessionplot::ReviewPicture::TimelineParts, ///< and the time axis
        All      = sessionplot::ReviewPicture::AllParts
    };
    // clang-format on
    /// Parts, combined.
    Q_DECLARE_FLAGS(Parts, Part)
    Q_FLAG(Parts)

    /// Shows nothing until it has a session.
    explicit TimelineItem(QQuickItem *parent = nullptr);
    ~TimelineItem() override;

    /// @{
    /// Getters and setters of the properties.
    Parts parts() const { return m_parts; }
    void setParts(Parts parts);
    int flagRows() const { return m_flagRows; }
    void setFlagRows(int rows);
    /// @}

    /// The event of which something was drawn at that point of the item; null when there is none.
    /// The event list owns it.
    Q_INVOKABLE CPREventBase *eventAt(qreal x, qreal y) const;

    /// See QQuickPaintedItem.
    void paint(QPainter *painter) override;

Q_SIGNALS:
    /// parts or flagRows has changed.
    void partsChanged();

private:
    Parts m_parts = AllLanes;
    int m_flagRows = 0;
    sessionplot::ReviewPicture m_picture;
};

} // namespace cprquick

#endif
