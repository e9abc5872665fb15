// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef LIMITS_H
#define LIMITS_H

#include <QtGlobal>

/// What bounds a session, whatever a file, a message or a radio link asks for. A row each with its
/// reason. SECURITY.md promises the same numbers.
namespace Limits {

// clang-format off

// --- a member of an archive

/// Bytes, inflated: room for as many events as a list may hold, 765 bytes each when all of them are
/// compressions. A small archive can pretend to hold any number.
constexpr qint64 maxMemberBytes       = qint64(512) * 1024 * 1024;
/// Bytes that stay in memory after the check of a member. A longer one is inflated a second time
/// while it is read.
constexpr qint64 maxBytesInMemory     = qint64(32) * 1024 * 1024;
/// Bytes of a name, whose number a zip archive holds in 16 bits.
constexpr int    maxMemberNameBytes   = 0xFFFF;

// --- a document; a session's own have 47 attributes, 4 elements in each other, texts of 200 bytes

/// The time for an element grows with the square of its attributes.
constexpr int    maxAttributes        = 128;
constexpr int    maxDepth             = 64;
/// The events of a day with all their parameters are 8 million.
constexpr int    maxElements          = 10'000'000;
/// Bytes of a text, a tag or a comment, which the XML reader holds in memory.
constexpr qint64 maxTextBytes         = 1024 * 1024;

/// Bytes of an event or value that salvage takes out of a damaged document. It holds one in memory.
constexpr int    maxSalvagedBytes     = 4 * 1024 * 1024;

// --- an event list that is read

/// Six events a second for a day.
constexpr int    maxEvents            = 24 * 60 * 60 * 6;
/// Of all events but compressions, ventilations and the standing ones; a day has some thousand.
constexpr int    maxParameters        = 100'000;

// --- the guideline set

/// Values that nobody knows. The time for each further one grows with their number.
constexpr int    maxUnknownValues     = 1000;

// --- the waves

/// 24 hours at the manikin's 100 samples a second, and a quarter of an hour for what losses may add.
constexpr int    maxSamples           = (24 * 60 + 15) * 60 * 100;
/// A longer gap in the sequence numbers is a corrupt header: no training lasts as long.
constexpr qint64 maxGapMs             = qint64(24) * 60 * 60 * 1000;

// --- the journal of a running session

/// Bytes of records that wait while the disk takes none: five hours of a manikin's packets.
constexpr int    maxWaitingBytes      = 64 * 1024 * 1024;
/// Bytes of the journal of one session that comes over a link: three days of a manikin's packets. A
/// sender that never ends must not fill the disk.
constexpr qint64 maxJournalBytes      = qint64(1024) * 1024 * 1024;

// --- the log

/// Warnings of one kind from one document or session, which can repeat them millions of times.
constexpr int    maxWarnings          = 10;

// clang-format on

} // namespace Limits

#endif
