// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ScenarioNames.h"

#include <manikinsim/Scenario.h>

#include <QCoreApplication>

namespace {

struct Words {
    const char *name;
    const char *title;
    const char *description;
};

// clang-format off

constexpr Words words[] = {
    {"perfect",     QT_TRANSLATE_NOOP("cprviewer", "Perfect"),         QT_TRANSLATE_NOOP("cprviewer", "Everything as the guidelines want it")},
    {"good",        QT_TRANSLATE_NOOP("cprviewer", "Trained"),         QT_TRANSLATE_NOOP("cprviewer", "A trained rescuer who slips now and then")},
    {"beginner",    QT_TRANSLATE_NOOP("cprviewer", "Beginner"),        QT_TRANSLATE_NOOP("cprviewer", "Uneven depth and rate, leaning, miscounting, short pauses; tires")},
    {"shallow",     QT_TRANSLATE_NOOP("cprviewer", "Too shallow"),     QT_TRANSLATE_NOOP("cprviewer", "Nearly all compressions are too shallow")},
    {"too-fast",    QT_TRANSLATE_NOOP("cprviewer", "Too fast"),        QT_TRANSLATE_NOOP("cprviewer", "Nearly all compressions come too fast")},
    {"leaning",     QT_TRANSLATE_NOOP("cprviewer", "Leaning"),         QT_TRANSLATE_NOOP("cprviewer", "The chest is often not released completely")},
    {"long-pauses", QT_TRANSLATE_NOOP("cprviewer", "Long pauses"),     QT_TRANSLATE_NOOP("cprviewer", "Long pauses after every cycle")},
    {"aed",         QT_TRANSLATE_NOOP("cprviewer", "Two with an AED"), QT_TRANSLATE_NOOP("cprviewer", "Two rescuers with an AED: shock, rhythms, remote control")},
    {"lossy-link",  QT_TRANSLATE_NOOP("cprviewer", "Bad link"),        QT_TRANSLATE_NOOP("cprviewer", "Lost, late and repeated packets, cut messages")},
};

// clang-format on

const Words *wordsOf(const QString &name)
{
    for (const Words &row : words) {
        if (name == QLatin1String(row.name))
            return &row;
    }
    return nullptr;
}

} // namespace

QString scenarioTitle(const QString &name)
{
    const Words *row = wordsOf(name);
    return row ? QCoreApplication::translate("cprviewer", row->title) : name;
}

QVariantList scenarioNames()
{
    QVariantList list;
    for (const manikinsim::Scenario &scenario : manikinsim::Scenario::all()) {
        const Words *row = wordsOf(scenario.name);
        const QString description =
            row ? QCoreApplication::translate("cprviewer", row->description) : scenario.description;
        list.append(QVariantMap{{QStringLiteral("name"), scenario.name},
                                {QStringLiteral("title"), scenarioTitle(scenario.name)},
                                {QStringLiteral("description"), description}});
    }
    return list;
}
