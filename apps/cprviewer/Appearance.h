// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_APPEARANCE_H
#define CPRVIEWER_APPEARANCE_H

#include <QObject>
#include <QString>
#include <QTranslator>
#include <QtQml/qqml.h>

class Settings;

/// How the window looks and which language it speaks. Needs a QGuiApplication.
class Appearance final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The viewer has it.")

    // clang-format off
    Q_PROPERTY(Mode    mode     READ mode     WRITE setMode     NOTIFY modeChanged)
    /// What the mode comes to.
    Q_PROPERTY(bool    isDark   READ isDark                     NOTIFY isDarkChanged)
    /// How much larger than usual the system wants texts, from 1 on.
    Q_PROPERTY(double  textScale READ textScale                 CONSTANT)
    /// "en" or "de".
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
    // clang-format on

public:
    enum Mode {
        System, ///< dark when the system's windows are
        Light,
        Dark
    };
    Q_ENUM(Mode)

    /// Choices are stored in \a settings, which is not owned. It begins with the language chosen
    /// before, else with the system's.
    explicit Appearance(Settings *settings, QObject *parent = nullptr);
    ~Appearance() override;

    Mode mode() const { return m_mode; }
    bool isDark() const { return m_isDark; }
    static double textScale();
    QString language() const { return m_language; }
    void setMode(Mode mode);
    /// A language that there is no translation for becomes English.
    void setLanguage(const QString &language);
    /// The same, for this run only.
    void useMode(Mode mode);
    void useLanguage(const QString &language);

Q_SIGNALS:
    void modeChanged();
    void isDarkChanged();
    /// The new texts are there already.
    void languageChanged();

private:
    void findDark();

    Settings *m_settings;
    Mode m_mode = System;
    bool m_isDark = false;
    QString m_language;
    QTranslator m_texts;
    QTranslator m_qtTexts; // of Qt's own dialogs
};

#endif
