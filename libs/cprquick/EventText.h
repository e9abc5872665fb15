// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_EVENTTEXT_H
#define CPRQUICK_EVENTTEXT_H

#include "sessionreview/JudgedEvents.h"

#include <CPREventBase.h>

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace cprquick {

/// What is told of one event in a list, judged by the session's targets. Values that the event does
/// not have are invalid.
class EventText {
public:
    EventText(const CPREventBase &event, const sessionreview::Targets &targets);

    QString typeName() const;
    /// "1:23.4"
    QString start() const;
    /// The measurements or the matter in words; empty when the kind tells all.
    QString detail() const;
    QVariant depth() const; ///< mm
    QVariant releaseDepth() const; ///< mm
    QVariant rate() const; ///< per minute
    QVariant volume() const; ///< ml
    QVariant numberInCycle() const;
    QVariant correct() const; ///< whether nothing is wrong with it
    QStringList faults() const;

private:
    QString valueText(CPREventBase::ParameterType type) const;
    QString standingDetail() const;
    bool isAskedForByAed() const;

    const CPREventBase &m_event;
    const sessionreview::Targets &m_targets; // those of who asks
    std::optional<sessionreview::Compression> m_compression;
    std::optional<sessionreview::Ventilation> m_ventilation;
};

} // namespace cprquick

#endif
