// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef HISTOGRAMBINS_H
#define HISTOGRAMBINS_H

#include <array>

/// Where the bars of the manikin's histograms begin, but for the first, which has no beginning. The
/// last one has no end. The messages hold the bars alone.
namespace HistogramBins {

using Beginnings = std::array<int, 5>;

// clang-format off
constexpr Beginnings depths          {4500, 5000, 5500, 6000, 6500}; // hundredths of a mm
constexpr Beginnings releases        { 250,  500,  750, 1000, 1500}; // hundredths of a mm
constexpr Beginnings rates           {  80,  100,  110,  121,  141}; // per minute
constexpr Beginnings pauses          {   5,   10,   15,   20,   30}; // s
constexpr Beginnings volumes         { 300,  400,  550,  700,  800}; // ml
constexpr Beginnings ventilationRates{   4,    6,    9,   11,   13}; // per minute
// clang-format on

} // namespace HistogramBins

#endif
