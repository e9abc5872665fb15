// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_REVIEWPICTURE_H
#define SESSIONPLOT_REVIEWPICTURE_H

#include "sessionplot/Flags.h"
#include "sessionplot/Head.h"
#include "sessionplot/PlotModel.h"
#include "sessionplot/Scales.h"
#include "sessionplot/Style.h"
#include "sessionplot/WavePainter.h"

#include <QFlags>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <utility>
#include <vector>

class QPainter;

namespace sessionplot {

/// The picture in which an instructor looks a session over: a head with the results, and below it,
/// over one time axis, everything that happened.
///
/// What does not fit into a small picture is left out, the less important parts first.
class ReviewPicture {
public:
    // clang-format off
    enum Part {
        HeadPart         = 0x001,
        FlagsPart        = 0x002,
        PausesPart       = 0x004,
        CyclesPart       = 0x008,
        DepthPart        = 0x010,
        FaultsPart       = 0x020,
        RatePart         = 0x040,
        VolumePart       = 0x080,
        TimeAxisPart     = 0x100,
        LegendPart       = 0x200,
        TimelineParts    = 0x1fe, ///< all that stand over the time axis, and the axis
        AllParts         = 0x3ff
    };
    // clang-format on
    Q_DECLARE_FLAGS(Parts, Part)

    /// \a model is not owned and may be null.
    explicit ReviewPicture(const PlotModel *model = nullptr) : m_model(model) { }

    void setModel(const PlotModel *model) { m_model = model; }
    void setTheme(const Theme &theme) { m_theme = theme; }
    /// What is drawn where there is room and something to draw. All parts unless changed.
    void setParts(Parts parts) { m_parts = parts; }
    /// The time to show, ms. A negative \a to stands for the end of the session; limits in the
    /// wrong order are exchanged.
    void setRange(qint64 from, qint64 to);
    /// Shows exactly \a range instead, also where it lies outside the session. The time axis calls
    /// the session time \a zero 0:00. \a range must not be empty.
    void setWindow(const TimeRange &range, qint64 zero);
    /// The size of the text, pixels, at most 1,000; 0, as it is from the start, and all else below
    /// 1 for one that suits the picture.
    void setTextSize(qreal size);
    /// Rows of labels over the lanes; 0, as it is from the start, for as many as the labels need. A
    /// host that moves the picture along the session wants lanes that stay where they are.
    void setFlagRows(int rows) { m_flagRows = rows; }
    /// For devices without pixels; see WavePainter. At most 10; 0 stands for what is no number,
    /// too.
    void setColumnsPerUnit(qreal columns);

    /// Draws nothing with a \a painter that is null or has nothing to draw on, nor in an \a area
    /// that is empty, or reaches farther than 100,000 units from the origin.
    void paint(QPainter *painter, const QRectF &area);

    /// Where the last paint() put the time axis and all lanes over it. A host that zooms or shows a
    /// cursor asks here.
    const TimeScale &timeScale() const { return m_time; }
    const QRectF &stack() const { return m_stack; }

    /// Something that a picture shows at one place.
    struct Mark {
        enum class Kind { Compression, Ventilation, Pause, Flag };
        Kind kind;
        int msecs; ///< session time of its begin
        sessionreview::Flag::Kind flag; ///< what flag it is, if it is one
    };
    /// What the last paint() has drawn of \a model at \a point; none where there is nothing. A
    /// cycle gives the event with which it begins.
    std::optional<Mark> markAt(const PlotModel &model, const QPointF &point) const;

    /// The text size that suits a picture of \a size.
    static qreal suitableTextSize(const QSizeF &size);

private:
    struct Layout {
        Parts parts;
        HeadForm head = HeadForm::Full;
        FlagLabels flags;
        int flagRows = 0;
        qreal gap = 0;
        qreal left = 0; // margins of the lanes
        qreal right = 0;
        qreal legendHeight = 0;
        qreal weight = 0; // of all lanes together
        qreal spare = 0; // height for the lanes together
    };

    Parts usefulParts() const;
    /// Sets m_time too.
    Layout layOut(const Style &style, const QRectF &area);
    qreal fixedHeight(const Layout &layout, const Style &style, qreal width) const;
    void paintParts(QPainter *painter, const Style &style, const Layout &layout,
                    const QRectF &area);

    const PlotModel *m_model;
    Theme m_theme = Theme::light();
    Parts m_parts = AllParts;
    qint64 m_from = 0;
    qint64 m_to = -1;
    std::optional<TimeRange> m_window; // goes before both
    qint64 m_zero = 0;
    qreal m_textSize = 0;
    int m_flagRows = 0;
    WavePainter m_depthPainter;
    WavePainter m_volumePainter;
    TimeScale m_time;
    QRectF m_stack;
    // Where the last paint() put what can be pointed at.
    std::vector<std::pair<Part, QRectF>> m_areas;
    std::vector<FlagLabels::Place> m_flags;
    qreal m_reach = 0; // how far beside a mark it is still meant
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ReviewPicture::Parts)

} // namespace sessionplot

#endif
