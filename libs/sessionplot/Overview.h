// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_OVERVIEW_H
#define SESSIONPLOT_OVERVIEW_H

#include "sessionplot/Lanes.h"

namespace sessionplot {

/// Paints all of the session in a low strip, without texts: the wave of what is trained, pauses
/// behind it, ticks for faults below and for what the picture has flags for above.
void paintOverview(const LaneContext &context, const QRectF &area, WavePainter &wave);

} // namespace sessionplot

#endif
