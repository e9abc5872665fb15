// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/Flag.h"

#include <CPREventBase.h>

namespace sessionreview {

std::optional<Flag> flagOf(const CPREventBase &event)
{
    using E = CPREventBase;
    const auto intOf = [&event](E::ParameterType parameter) {
        return event.parameterValue(parameter, 0).toInt();
    };
    Flag flag;
    flag.msecs = event.msecs();
    switch (event.type()) {
    case E::ShockDelivered:
        flag.kind = Flag::Kind::Shock;
        flag.code = intOf(E::shockEnergy);
        return flag;
    case E::CprAedEvent:
        flag.kind = Flag::Kind::Aed;
        flag.code = intOf(E::aedEventType);
        flag.detail = intOf(E::aedRemoteOtherButtonId);
        if (flag.code != E::AEDECGRhythmStatus)
            return flag;
        break;
    case E::CprCprdEvent:
        break;
    case E::Event:
        flag.kind = Flag::Kind::User;
        flag.name = event.parameterValue(E::eventId, QVariant()).toString();
        return flag;
    default:
        return std::nullopt;
    }
    flag.kind = Flag::Kind::Rhythm;
    flag.code = intOf(E::aedECGRhythm);
    return flag;
}

} // namespace sessionreview
