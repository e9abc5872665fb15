// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include <CPRData.h>
#include <CPREventSessionScore.h>

#include <chestboard/RMessage.h>

#include <cstdio>

// What a message does not hold counts as 0, whatever the link library gives for it.
int main()
{
    CPRData session;
    const auto send = [&session](quint32 identifier, int size) {
        bls_2010::RMessage message(identifier, QByteArray(size, '\1'));
        return session.incomingMsg(&message);
    };
    bool isRight = send(108, 21) && send(87, 0) && send(88, 1) && send(101, 0) && !send(50, 0);
    const CPREvents &events = *session.cprEvents();
    for (int type :
         {CPREventBase::preVentsTooFewScoreReduction, CPREventBase::preVentsTooManyScoreReduction,
          CPREventBase::inflationTimeFastScoreReduction,
          CPREventBase::inflationTimeSlowScoreReduction,
          CPREventBase::ventsPerMinuteSlowScoreReduction,
          CPREventBase::ventsPerMinuteFastScoreReduction}) {
        const auto parameter = static_cast<CPREventBase::ParameterType>(type);
        isRight &= events.sessionScore()->parameterValue(parameter, -1).toInt() == 0;
    }
    isRight &= session.compressionData()->compressionRate() == 0;
    isRight &= session.ventilationData()->rate() == 0 && events.mode() == 0;
    std::puts(isRight ? "0 is 0" : "something else");
    return isRight ? 0 : 1;
}
