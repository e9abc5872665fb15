// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "WindowPlace.h"

#include "Settings.h"
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace {

const QLatin1String placeKey("window/place");
const QLatin1String maximizedKey("window/isMaximized");
constexpr QSize usualSize(1280, 800);
constexpr int titleHeight = 40; // of the largest ones that systems put over a window

// Any kind of settings holds numbers.
QRect rectOf(const QVariantList &sides)
{
    return sides.size() == 4
        ? QRect(sides[0].toInt(), sides[1].toInt(), sides[2].toInt(), sides[3].toInt())
        : QRect();
}

int areaOf(const QRect &rect)
{
    return rect.width() * rect.height();
}

} // namespace

QRect WindowPlace::onScreens(const QRect &wanted, const QVector<QRect> &screens)
{
    QRect screen = screens.value(0);
    for (const QRect &other : screens) {
        if (areaOf(other & wanted) > areaOf(screen & wanted))
            screen = other;
    }
    const QRect room = screen.adjusted(0, titleHeight, 0, 0);
    QRect place(QPoint(), (wanted.isValid() ? wanted.size() : usualSize).boundedTo(room.size()));
    if (wanted.isValid() && screen.intersects(wanted)) {
        place.moveTo(qBound(room.left(), wanted.left(), room.right() + 1 - place.width()),
                     qBound(room.top(), wanted.top(), room.bottom() + 1 - place.height()));
    } else {
        place.moveCenter(room.center());
    }
    return place;
}

QRect WindowPlace::stored(const Settings &settings)
{
    QVector<QRect> screens{QGuiApplication::primaryScreen()->availableGeometry()};
    const auto all = QGuiApplication::screens();
    for (const QScreen *screen : all)
        screens.append(screen->availableGeometry());
    return onScreens(rectOf(settings.value(placeKey).toList()), screens);
}

bool WindowPlace::isStoredMaximized(const Settings &settings)
{
    return settings.value(maximizedKey).toBool();
}

void WindowPlace::store(const QWindow *window, Settings &settings)
{
    const bool isMaximized = window->windowStates() & Qt::WindowMaximized;
    settings.setValue(maximizedKey, isMaximized);
    if (window->windowStates() != Qt::WindowNoState)
        return;
    const QRect place = window->geometry();
    settings.setValue(placeKey, QVariantList{place.x(), place.y(), place.width(), place.height()});
}
