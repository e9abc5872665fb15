// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SCENARIONAMES_H
#define CPRVIEWER_SCENARIONAMES_H

#include <QVariantList>

/// What the simulated manikin offers, in front of people: a map for each scenario with "name",
/// "title" and "description".
QVariantList scenarioNames();
/// The title of the scenario \a name; the name itself for one that has none.
QString scenarioTitle(const QString &name);

#endif
