// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "WindowPlace.h"

#include "Settings.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace {

const QLatin1String placeKey("/place"); // after the name of the window
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

QRect WindowPlace::stored(const Settings &settings, const QString &name, const QRect &usual)
{
    QVector<QRect> screens{QGuiApplication::primaryScreen()->availableGeometry()};
    const auto all = QGuiApplication::screens();
    for (const QScreen *screen : all)
        screens.append(screen->availableGeometry());
    const QRect place = rectOf(settings.value(name + placeKey).toList());
    return onScreens(place.isValid() ? place : usual, screens);
}

bool WindowPlace::isStoredMaximized(const Settings &settings)
{
    return settings.value(maximizedKey).toBool();
}

void WindowPlace::store(const QWindow *window, Settings &settings, const QString &name)
{
    if (name == QLatin1String(mainWindow))
        settings.setValue(maximizedKey, bool(window->windowStates() & Qt::WindowMaximized));
    if (window->windowStates() != Qt::WindowNoState)
        return;
    const QRect place = window->geometry();
    settings.setValue(name + placeKey,
                      QVariantList{place.x(), place.y(), place.width(), place.height()});
}

int WindowPlace::secondScreen(const QStringList &screens, const QString &first,
                              const QString &wanted)
{
    const auto isOther = [&first](const QString &name) { return name != first; };
    if (isOther(wanted) && screens.contains(wanted))
        return screens.indexOf(wanted);
    const auto found = std::find_if(screens.begin(), screens.end(), isOther);
    return found == screens.end() ? -1 : int(found - screens.begin());
}
