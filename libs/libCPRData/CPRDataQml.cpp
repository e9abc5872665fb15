// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRDataQml.h"

#include "CPRData.h"
#include "CPREventAED.h"
#include "CPREventCPRD.h"
#include "CPREventCompression.h"
#include "CPREventInactivityCPR.h"
#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREventShock.h"
#include "CPREventUser.h"
#include "CPREventVentilation.h"
#include "CPRWaveformInfo.h"

#include <QtQml>

namespace {

template <typename T> void registerType(const char *uri, int major, int minor)
{
    qmlRegisterUncreatableType<T>(uri, major, minor, T::staticMetaObject.className(),
                                  QStringLiteral("Objects of this kind come from the session."));
}

} // namespace

void registerCPRDataTypes(const char *uri, int major, int minor)
{
    registerType<CPRData>(uri, major, minor);
    registerType<CPRDataBase>(uri, major, minor);
    registerType<CPRCompressionData>(uri, major, minor);
    registerType<CPRVentilationData>(uri, major, minor);
    registerType<CPRWaveformInfo>(uri, major, minor);
    registerType<CPRGuidelines>(uri, major, minor);
    registerType<CPREvents>(uri, major, minor);
    registerType<CPREventBase>(uri, major, minor);
    registerType<CPREventCompression>(uri, major, minor);
    registerType<CPREventVentilation>(uri, major, minor);
    registerType<CPREventInactivityCPR>(uri, major, minor);
    registerType<CPREventAED>(uri, major, minor);
    registerType<CPREventShock>(uri, major, minor);
    registerType<CPREventCPRD>(uri, major, minor);
    registerType<CPREventUser>(uri, major, minor);
    registerType<CPREventSessionInfo>(uri, major, minor);
    registerType<CPREventSessionStatistics>(uri, major, minor);
    registerType<CPREventSessionScore>(uri, major, minor);
}
