// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_LIBRARYTYPES_H
#define CPRQUICK_LIBRARYTYPES_H

#include <CPRData.h>
#include <CPREventAED.h>
#include <CPREventCPRD.h>
#include <CPREventSessionInfo.h>
#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>
#include <CPREventShock.h>
#include <CPREventUser.h>

#include <QtQml/qqml.h>

namespace cprquick {

// The classes of the library as types of the module. A page can name them and their enumerations,
// but only a session of its own can it create; everything else comes from a session.

#define CPRQUICK_TYPE_OF_LIBRARY(Class)                                                            \
    struct Class##Type {                                                                           \
        Q_GADGET                                                                                   \
        QML_FOREIGN(Class)                                                                         \
        QML_NAMED_ELEMENT(Class)                                                                   \
        QML_UNCREATABLE("Objects of this kind come from the session.")                             \
    };

CPRQUICK_TYPE_OF_LIBRARY(CPRDataBase)
CPRQUICK_TYPE_OF_LIBRARY(CPRCompressionData)
CPRQUICK_TYPE_OF_LIBRARY(CPRVentilationData)
CPRQUICK_TYPE_OF_LIBRARY(CPRWaveformInfo)
CPRQUICK_TYPE_OF_LIBRARY(CPRGuidelines)
CPRQUICK_TYPE_OF_LIBRARY(CPREvents)
CPRQUICK_TYPE_OF_LIBRARY(CPREventBase)
CPRQUICK_TYPE_OF_LIBRARY(CPREventCompression)
CPRQUICK_TYPE_OF_LIBRARY(CPREventVentilation)
CPRQUICK_TYPE_OF_LIBRARY(CPREventInactivityCPR)
CPRQUICK_TYPE_OF_LIBRARY(CPREventAED)
CPRQUICK_TYPE_OF_LIBRARY(CPREventShock)
CPRQUICK_TYPE_OF_LIBRARY(CPREventCPRD)
CPRQUICK_TYPE_OF_LIBRARY(CPREventUser)
CPRQUICK_TYPE_OF_LIBRARY(CPREventSessionInfo)
CPRQUICK_TYPE_OF_LIBRARY(CPREventSessionStatistics)
CPRQUICK_TYPE_OF_LIBRARY(CPREventSessionScore)

#undef CPRQUICK_TYPE_OF_LIBRARY

struct CPRDataType {
    Q_GADGET
    QML_FOREIGN(CPRData)
    QML_NAMED_ELEMENT(CPRData)
};

} // namespace cprquick

#endif
