// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_REPORT_H
#define BENCH_REPORT_H

#include "Peers.h"
#include "Row.h"
#include "Scale.h"

#include <QByteArray>

namespace bench {

struct Result {
    Row row;
    std::vector<Figure> figures;
};

/// All that was measured. Peers and scale are empty when they were not asked for.
struct Report {
    std::vector<Result> results;
    std::vector<PeerFigures> peers;
    std::vector<ScalePoint> scale;
    QString plot; ///< the picture of the scale, relative to the page; empty when there is none
};

// Tables in the form that a page and a terminal can both show.
QString tableHead();
QString tableRows(const Result &result);
QString peerTable(const std::vector<PeerFigures> &peers);

QByteArray toJson(const Report &report);
/// A page with the table, the picture, the peers and the machine.
QByteArray toPage(const Report &report);

} // namespace bench

#endif
