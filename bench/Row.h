// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_ROW_H
#define BENCH_ROW_H

#include "Measure.h"
#include "Sessions.h"

#include <vector>

namespace bench {

/// What the rows share.
struct Bench {
    int pairs = 9;
    Sessions sessions;
};

/// A row of the table.
struct Row {
    int number;
    const char *what; ///< UTF-8, as is the next
    const char *yardstick;
    std::vector<Figure> (*measure)(Bench &);
};

// The rows by what they are about. Each yardstick stands where its row is measured.
std::vector<Row> archiveRows();
std::vector<Row> classRows();
std::vector<Row> libraryRows();
std::vector<Row> linkRows();
std::vector<Row> liveRows();
std::vector<Row> pageRows();
std::vector<Row> peerRows();
std::vector<Row> pictureRows();

/// A table of what sessions from half a minute to a day cost, for the page and its picture.
QString lengthTable(Bench &bench);
/// A table of what other forms of an hour's session cost.
QString peerTable(Bench &bench);

} // namespace bench

#endif
