// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_SCALE_H
#define BENCH_SCALE_H

#include <QString>

#include <vector>

namespace bench {

struct Bench;

/// What a session of some length costs. Times in ns, sizes in bytes.
struct ScalePoint {
    double hours = 0;
    int events = 0;
    int samples = 0; ///< of both waves
    double live = 0; ///< all that a host hands over
    double messages = 0; ///< only the messages
    double waves = 0; ///< only the headers and the samples
    double save = 0;
    double load = 0;
    double memory = 0; ///< of the loaded session
    double file = 0;
};

/// From a hundredth of an hour to a day.
std::vector<ScalePoint> measureScale(Bench &bench);

/// The suffixes that drawScale() knows.
bool canDraw(const QString &file);
/// Draws the costs over the length to an SVG or PNG file; false when it cannot be written.
bool drawScale(const QString &file, const std::vector<ScalePoint> &points);

} // namespace bench

#endif
