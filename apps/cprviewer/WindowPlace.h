// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_WINDOWPLACE_H
#define CPRVIEWER_WINDOWPLACE_H

#include <QRect>
#include <QStringList>
#include <QVector>

class Settings;
class QWindow;

/// Where the windows are and how large, from one run to the next.
namespace WindowPlace {

constexpr char mainWindow[] = "window"; ///< the name of the viewer's own

/// The place next to \a wanted that lies on one of \a screens, with room for the window's title.
/// Without \a wanted it is the usual size in the middle of the first one.
QRect onScreens(const QRect &wanted, const QVector<QRect> &screens);

/// The place that \a settings have for the window of that \a name, on the screens that are there;
/// \a usual when they have none.
QRect stored(const Settings &settings, const QString &name = QLatin1String(mainWindow),
             const QRect &usual = QRect());
/// The viewer's own window filled its screen.
bool isStoredMaximized(const Settings &settings);
/// Stores the place of \a window, unless it fills its screen: then the place before stays.
void store(const QWindow *window, Settings &settings,
           const QString &name = QLatin1String(mainWindow));

/// The number of the screen for a second window, in \a screens, which are the names of all. It is
/// the \a wanted one where that is there and not \a first, the screen of the main window; else the
/// first of the others; -1 when there is no other.
int secondScreen(const QStringList &screens, const QString &first, const QString &wanted);

} // namespace WindowPlace

#endif
