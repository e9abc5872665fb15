// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Remarks.h"

#include <CPRData.h>
#include <CPREventUser.h>
#include <manikinlog/ManikinLogRecord.h>
#include <sessionreview/Words.h>

#include <QQmlEngine>

#include <algorithm>

CPREventBase *Remarks::add(const CPRData &session, const QString &text, int msecs,
                           const std::function<void(const manikinlog::Remark &)> &insert)
{
    const QString stored = sessionreview::remarkOf(text);
    if (stored.isEmpty())
        return nullptr;
    const int time = std::max(msecs, 0);
    insert({time, stored});
    const QList<CPREventBase *> &events = session.cprEvents()->events();
    const auto added = std::find_if(events.begin(), events.end(), [&](CPREventBase *event) {
        return event->msecs() == time && textOf(event) == stored;
    });
    if (added == events.end())
        return nullptr;
    QQmlEngine::setObjectOwnership(*added, QQmlEngine::CppOwnership);
    return *added;
}

QString Remarks::textOf(const CPREventBase *event)
{
    const auto *remark = qobject_cast<const CPREventUser *>(event);
    return remark ? remark->parameterValue(CPREventBase::eventId, QVariant()).toString()
                  : QString();
}
