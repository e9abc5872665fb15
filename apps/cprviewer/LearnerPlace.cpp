// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "LearnerPlace.h"

#include "Settings.h"
#include "WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace {

const QLatin1String windowName("learner");
const QLatin1String openKey("learner/isOpen");
const QLatin1String fullScreenKey("learner/isFullScreen");
const QLatin1String screenKey("learner/screen");
constexpr int focusMs = 1000; // a window that takes the focus by itself does it sooner
constexpr QSize usualSize(960, 540);
constexpr QPoint usualOffset(80, 80); // from the main window

bool isFullScreen(const QWindow *window)
{
    return window->windowStates() & Qt::WindowFullScreen;
}

} // namespace

LearnerPlace::LearnerPlace(Settings *settings, QObject *parent)
    : QObject(parent), m_settings(settings), m_isOpen(settings->value(openKey).toBool())
{
    // Later: Qt moves the windows of a screen that goes after it has said so.
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &LearnerPlace::arrange,
            Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &LearnerPlace::arrange,
            Qt::QueuedConnection);
}

LearnerPlace::~LearnerPlace() = default;

void LearnerPlace::setOpen(bool isOpen)
{
    if (isOpen == m_isOpen)
        return;
    storePlace();
    m_settings->setValue(openKey, isOpen);
    m_isOpen = isOpen;
    Q_EMIT isOpenChanged();
}

void LearnerPlace::open()
{
    if (std::exchange(m_isOpen, true))
        return;
    Q_EMIT isOpenChanged();
}

void LearnerPlace::show(QWindow *window, QWindow *main)
{
    m_window = window;
    m_main = main;
    window->setTransientParent(nullptr); // else it would lie on the main window, on its screen
    // A window that is shown takes the keyboard, which belongs to the instructor.
    connect(window, &QWindow::activeChanged, this, [this] {
        if (m_window && m_main && m_window->isActive() && m_sinceArranged.isValid()
            && !m_sinceArranged.hasExpired(focusMs))
            m_main->requestActivate();
    });
    arrange();
}

void LearnerPlace::hide()
{
    storePlace();
    if (m_window)
        m_window->hide();
    m_window = nullptr;
}

void LearnerPlace::arrange()
{
    if (!m_window || !m_main)
        return;
    const QList<QScreen *> screens = QGuiApplication::screens();
    QStringList names;
    for (const QScreen *screen : screens)
        names.append(screen->name());
    const int second = WindowPlace::secondScreen(names, m_main->screen()->name(),
                                                 m_settings->value(screenKey).toString());
    if (second >= 0 && m_settings->value(fullScreenKey, true).toBool()) {
        m_sinceArranged.start();
        showFullScreen(screens.at(second));
    } else if (!m_window->isVisible() || isFullScreen(m_window)) {
        showNormal();
    }
}

void LearnerPlace::showFullScreen(QScreen *screen)
{
    if (m_window->isVisible() && isFullScreen(m_window) && m_window->screen() == screen)
        return;
    storePlace();
    if (isFullScreen(m_window))
        m_window->showNormal(); // a full window does not move to another screen
    m_window->setScreen(screen);
    m_window->setGeometry(screen->geometry());
    m_window->showFullScreen();
}

void LearnerPlace::showNormal()
{
    const QRect usual(m_main->position() + usualOffset, usualSize);
    m_window->showNormal();
    m_window->setGeometry(WindowPlace::stored(*m_settings, windowName, usual));
}

void LearnerPlace::toggleFullScreen()
{
    if (!m_window || !m_main)
        return;
    QScreen *screen = m_window->screen();
    const bool becomesFull = !isFullScreen(m_window);
    if (screen != m_main->screen()) {
        m_settings->setValue(fullScreenKey, becomesFull);
        m_settings->setValue(screenKey, screen->name());
    }
    if (becomesFull)
        showFullScreen(screen);
    else
        showNormal();
}

void LearnerPlace::storePlace()
{
    if (m_window && m_window->isVisible())
        WindowPlace::store(m_window, *m_settings, windowName);
}
