// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "private/ResponseId.h"

#include <chestboard/CommunicationIDs.h>

#include <QMetaEnum>

QDebug operator<<(QDebug debug, ResponseId id)
{
    const auto ids = QMetaEnum::fromType<CommunicationIDs::ResponseID>();
    if (const char *key = ids.valueToKey(static_cast<int>(id.identifier)))
        return debug << key;
    return debug << id.identifier;
}
