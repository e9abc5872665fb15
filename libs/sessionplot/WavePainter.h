// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_WAVEPAINTER_H
#define SESSIONPLOT_WAVEPAINTER_H

#include "sessionplot/Scales.h"
#include "sessionplot/Wave.h"

#include "sessionreview/SessionReview.h"

#include <QColor>

#include <vector>

class QPainter;

namespace sessionplot {

/// Draws a wave over time: every sample where there is room for them, else the lowest and the
/// highest of each pixel column, so that no peak is lost. Where the link lost samples there is no
/// wave.
///
/// A painter remembers its columns. While the wave grows, and while the picture moves along it at
/// the same scale, only new columns are computed. Use one painter for each picture of a wave.
class WavePainter {
public:
    struct Look {
        QColor line;
        QColor area; ///< between the curve and the smallest value
        qreal lineWidth = 1;
        bool isDashed = false;
    };

    /// Columns in a unit of the painter; 0, as it is from the start, for one in a device pixel.
    /// Devices without pixels deserve more than one.
    void setColumnsPerUnit(qreal columns) { m_columnsPerUnit = columns; }

    /// \a losses are in order of time. False when only the area was drawn: a column holds so many
    /// samples that single peaks do not show.
    bool paint(QPainter *painter, const Wave &wave, const TimeScale &time, const ValueScale &values,
               const std::vector<sessionreview::Span> &losses, const Look &look);

private:
    using Losses = std::vector<sessionreview::Span>;

    void prepare(const Wave &wave, qint64 first, qint64 last);
    Extremes columnOf(const Wave &wave, qint64 column) const;
    void paintSamples(QPainter *painter, const Wave &wave, const TimeScale &time,
                      const ValueScale &values, const Losses &losses, const Look &look) const;
    void paintLine(QPainter *painter, const Wave &wave, const TimeScale &time,
                   const ValueScale &values, const Losses &losses, const Look &look) const;
    void paintEnvelope(QPainter *painter, const Wave &wave, const TimeScale &time,
                       const ValueScale &values, const Losses &losses, const Look &look) const;

    qreal m_columnsPerUnit = 0;
    // Column n holds the samples from n to n + 1 times m_msecsPerColumn, and one beyond, so that
    // the curve is continuous.
    double m_msecsPerColumn = 0;
    qint64 m_first = 0;
    std::vector<Extremes> m_columns;
    const Wave *m_wave = nullptr; // not owned, only compared
    quint64 m_generation = 0;
    int m_count = 0; // samples that the columns know of
};

} // namespace sessionplot

#endif
