// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Appearance.h"

#include "Settings.h"

#include <QCoreApplication>
#include <QFile>
#include <QFontInfo>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>

namespace {

const QLatin1String modeKey("appearance");
const QLatin1String languageKey("language");
const QLatin1String english("en");

QString systemLanguage()
{
    const QStringList wanted = QLocale::system().uiLanguages();
    return wanted.value(0, english).section(QLatin1Char('-'), 0, 0);
}

} // namespace

Appearance::Appearance(Settings *settings, QObject *parent) : QObject(parent), m_settings(settings)
{
    const int mode = settings->value(modeKey).toInt();
    m_mode = mode == Light || mode == Dark ? static_cast<Mode>(mode) : System;
    findDark();
    useLanguage(settings->value(languageKey, systemLanguage()).toString());
    connect(qGuiApp, &QGuiApplication::paletteChanged, this, &Appearance::findDark);
}

Appearance::~Appearance() = default;

double Appearance::textScale()
{
    constexpr double usualPixels = 11 * 96.0 / 72; // 11 points, the largest of the usual sizes
    constexpr double maxScale = 1.2; // what the pages have room for
    return qBound(1.0, QFontInfo(QGuiApplication::font()).pixelSize() / usualPixels, maxScale);
}

void Appearance::setMode(Mode mode)
{
    m_settings->setValue(modeKey, int(mode));
    useMode(mode);
}

void Appearance::useMode(Mode mode)
{
    if (mode == m_mode)
        return;
    m_mode = mode;
    Q_EMIT modeChanged();
    findDark();
}

void Appearance::findDark()
{
    const QPalette palette = QGuiApplication::palette();
    const bool isSystemDark = palette.color(QPalette::Window).lightness()
        < palette.color(QPalette::WindowText).lightness();
    const bool isDark = m_mode == System ? isSystemDark : m_mode == Dark;
    if (isDark == m_isDark)
        return;
    m_isDark = isDark;
    Q_EMIT isDarkChanged();
}

void Appearance::setLanguage(const QString &language)
{
    m_settings->setValue(languageKey, language);
    useLanguage(language);
}

void Appearance::useLanguage(const QString &wanted)
{
    const QString file = QStringLiteral(":/cprviewer/translations/cprviewer_%1.qm");
    const QString language = QFile::exists(file.arg(wanted)) ? wanted : QString(english);
    if (language == m_language)
        return;
    m_language = language;
    QCoreApplication::removeTranslator(&m_texts);
    QCoreApplication::removeTranslator(&m_qtTexts);
    // Numbers and dates are written as the language does, whatever the country.
    QLocale::setDefault(QLocale::system().name().startsWith(language) ? QLocale::system()
                                                                      : QLocale(language));
    if (m_qtTexts.load(QStringLiteral("qtbase_%1").arg(language),
                       QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_qtTexts);
    if (m_texts.load(file.arg(language)))
        QCoreApplication::installTranslator(&m_texts);
    Q_EMIT languageChanged();
}
