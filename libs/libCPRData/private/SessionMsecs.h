// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONMSECS_H
#define SESSIONMSECS_H

#include <QtGlobal>

#include <algorithm>
#include <limits>

/// Times are computed in 64 bits and brought back to the int range here: a corrupt sequence
/// number must give a wrong time, not undefined behaviour.
inline int sessionMsecs(qint64 msecs)
{
    return static_cast<int>(std::clamp<qint64>(msecs, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

#endif
