// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef ENUMKEY_H
#define ENUMKEY_H

#include <QDebug>
#include <QMetaEnum>

/// An enumerator in a log line: its bare key, or its number when it has none.
template <typename Enum> struct EnumKey {
    explicit EnumKey(Enum shown) : value(static_cast<int>(shown)) { }
    int value;
};

template <typename Enum> QDebug operator<<(QDebug debug, EnumKey<Enum> shown)
{
    const char *key = QMetaEnum::fromType<Enum>().valueToKey(shown.value);
    return key ? debug << key : debug << shown.value;
}

#endif
