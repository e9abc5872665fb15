// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Language.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace Language {

std::vector<std::string> all()
{
    return {"en", "de"};
}

void use(const std::string &language)
{
    const QString name = QString::fromStdString(language);
    // Numbers and dates are written as the language does, whatever the country.
    QLocale::setDefault(QLocale::system().name().startsWith(name) ? QLocale::system()
                                                                  : QLocale(name));
    auto *texts = new QTranslator(QCoreApplication::instance());
    // English has a translation for its plurals only.
    if (texts->load(QStringLiteral(":/cprsession/translations/cprviewer_%1.qm").arg(name)))
        QCoreApplication::installTranslator(texts);
}

} // namespace Language
