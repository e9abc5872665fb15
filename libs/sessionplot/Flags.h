// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_FLAGS_H
#define SESSIONPLOT_FLAGS_H

#include "sessionplot/Lanes.h"
#include "sessionplot/PlotModel.h"
#include "sessionplot/Symbols.h"

#include <QString>

#include <vector>

namespace sessionplot {

Symbol symbolOf(sessionreview::Flag::Kind kind);

/// The flags in the time that is shown, and where their labels stand.
///
/// A pole rises from the flag's symbol, and the label stands to the right of its top, in a row
/// above all poles that the label would cross. So events that follow one another closely form
/// stairs. Labels that find no row are left out, those of less weight first; their symbols stay.
class FlagLabels {
public:
    FlagLabels() = default;
    /// Labels may reach to \a right.
    FlagLabels(const PlotModel &model, const Style &style, const TimeScale &time, qreal right,
               int maxRows);

    /// Rows in use.
    int rows() const { return m_rows; }
    /// Height of a lane with \a rows rows.
    static qreal height(const Style &style, int rows);
    /// Where a flag's symbol or its label was painted.
    struct Place {
        QRectF area;
        int msecs; ///< of the flag
        sessionreview::Flag::Kind kind;
    };

    /// Paints the flags, and for each a line through the lanes from \a top to \a bottom.
    std::vector<Place> paint(const LaneContext &context, const LaneArea &area, qreal top,
                             qreal bottom) const;

private:
    struct Label {
        const sessionreview::Flag *flag = nullptr; // not owned
        int weight = 0;
        QString text; // empty when there is no room for it
        qreal pole = 0;
        qreal left = 0;
        qreal right = 0;
        int row = 0; // 0 is the lowest
    };

    static bool findRows(std::vector<Label *> &labels, int maxRows, int rowAtEdge, qreal gap);
    static bool findRows(std::vector<Label *> &labels, int maxRows, qreal gap);

    std::vector<Label> m_labels; // by weight, the greatest first
    int m_rows = 0;
};

} // namespace sessionplot

#endif
