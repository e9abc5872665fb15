// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CHESTBOARD_COMMUNICATIONIDS_H
#define CHESTBOARD_COMMUNICATIONIDS_H

#include "chestboard/chestboard_export.h"

#include <QObject>

/// The identifiers of the messages that a manikin sends.
class CHESTBOARD_EXPORT CommunicationIDs {
    Q_GADGET

public:
    // clang-format off
    /// What RMessage::getIdentifier() gives; docs/message-flow.md says what becomes of each.
    enum ResponseID {
        RPL_DEFIB_SHOCK_EVENT        =  47,
        RPL_GENERIC_EVENT            =  48,
        RPL_AED_REMOTE_CTRL          =  50,
        RPL_ECG_STATUS               =  52,
        RPL_VERSIONINFO              =  64,
        RPL_USER_EVENT               =  68,
        RPL_LIFETIMEINFO             =  70,
        RPL_GUIDELINES               =  75,
        RPL_WAVEINFO                 =  77,
        RPL_COMP_EVENT               =  79,
        RPL_VENT_EVENT               =  80,
        RPL_COMP_INACTIVITY_TIME     =  81,
        RPL_COMP_RATE_UPDATE         =  87,
        RPL_VENT_RATE_UPDATE         =  88,
        RPL_CPR_PROTOCOL_CTRL        = 101,
        RPL_COMP_PEAK_EV             = 104,
        RPL_CPRCARD_STATUS_EV        = 106,
        RPL_MANIKIN_STIFFNESS_EV     = 107,
        RPL_CPR_SCORES               = 108,
        RPL_GL_INDEPENDENT_STATS     = 109,
        RPL_GL_INDEPENDENT_BIN_STATS = 110,
        RPL_GL_DEPENDENT_STATS       = 111
    };
    // clang-format on
    Q_ENUM(ResponseID)
};

#endif
