// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONARCHIVE_H
#define SESSIONARCHIVE_H

#include <QString>

#include <array>
#include <cstddef>

class CPRData;
class CPRFileHandler;
struct CPRReadReport;

/// What a session is stored as.
namespace SessionArchive {

/// The members, in the order in which they are written.
enum MemberIndex : std::size_t { Events, Waves, Compressions, Ventilations, Guidelines };
inline constexpr std::array writingOrder{Events, Waves, Compressions, Ventilations, Guidelines};

/// In the order in which they are read: the list of waves names the members of the two waves.
inline constexpr std::array readingOrder{Waves, Compressions, Ventilations, Events, Guidelines};

/// As file handlers know it. Another one is read for a wave whose description names it.
inline QString nameInFolder(MemberIndex index)
{
    constexpr std::array names{"CPREvents.xml", "CPRWaves.xml", "COMP.WV", "VENT.WV",
                               "CPRGuidelines.xml"};
    return QString::fromLatin1(names[index]);
}

/// As it stands in a zip archive.
inline QString nameInZip(const QString &nameInFolder)
{
    return QStringLiteral("CPR/") + nameInFolder;
}

// The list of waves. Attributes stand in this order; each is the property of the same name of
// CPRWaveformInfo.
inline constexpr const char *waveList = "waveFormList";
inline constexpr const char *waveForm = "waveForm";
inline constexpr std::array waveFormAttributes{"msecs", "type", "bitsPerSample", "sampleRate",
                                               "length"};
inline constexpr const char *waveScale = "scale";
inline constexpr std::array waveScaleAttributes{"lsbValue", "scaleUnits", "scaleUnitsPerMM",
                                                "scaleMax", "scaleMin",   "offset"};
inline constexpr const char *waveFile = "externalFile";
inline constexpr std::array waveFileAttributes{"fileName"};

/// Bytes of a stored sample: a signed 16-bit little-endian number.
inline constexpr int bytesPerSample = 2;

constexpr bool isWave(MemberIndex index)
{
    return index == Compressions || index == Ventilations;
}

/// The name under which the member is read; empty for a wave whose description names none.
QString nameToRead(const CPRData &session, MemberIndex index);
/// False when the member could not be stored.
bool writeMember(CPRData &session, MemberIndex index, CPRFileHandler &handler);
/// Reads the member, whose name is not empty, into \a session, and adds it to \a report. Returns
/// what is wrong with it, and where; empty when it was read to its end or is missing.
QString readMember(CPRData &session, MemberIndex index, CPRFileHandler &handler,
                   CPRReadReport &report);

} // namespace SessionArchive

#endif
