// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_LEARNERPLACE_H
#define CPRVIEWER_LEARNERPLACE_H

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <QtQml/qqml.h>

class QScreen;
class Settings;

/// Where the learner's view is: on a second screen, and there on all of it, if there is one. Both
/// are remembered, as the instructor has left them.
class LearnerPlace final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The viewer has it.")

    /// The view is wanted. Stored.
    Q_PROPERTY(bool isOpen READ isOpen WRITE setOpen NOTIFY isOpenChanged)

public:
    /// \a settings is not owned.
    explicit LearnerPlace(Settings *settings, QObject *parent = nullptr);
    ~LearnerPlace() override;

    bool isOpen() const { return m_isOpen; }
    void setOpen(bool isOpen);
    /// For this run alone: nothing is stored.
    void open();
    /// Shows \a window, the view, where it belongs; the keyboard stays with \a main. Neither is
    /// owned.
    Q_INVOKABLE void show(QWindow *window, QWindow *main);
    /// On all of the screen where it is, or not. Stored with the screen, unless that is the one of
    /// the main window.
    Q_INVOKABLE void toggleFullScreen();
    /// Hides the view; it is still wanted.
    Q_INVOKABLE void hide();

Q_SIGNALS:
    void isOpenChanged();

private:
    void arrange();
    void showFullScreen(QScreen *screen);
    void showNormal();
    void storePlace();

    Settings *m_settings; // not owned
    bool m_isOpen;
    QPointer<QWindow> m_window; // the view, while it is shown; not owned
    QPointer<QWindow> m_main; // not owned
    QElapsedTimer m_sinceArranged; // since the view was put onto another screen
};

#endif
