// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_WINDOWPLACE_H
#define CPRVIEWER_WINDOWPLACE_H

#include <QRect>
#include <QVector>

class Settings;
class QWindow;

/// Where the window is and how large, from one run to the next.
namespace WindowPlace {

/// The place next to \a wanted that lies on one of \a screens, with room for the window's title.
/// Without \a wanted it is the usual size in the middle of the first one.
QRect onScreens(const QRect &wanted, const QVector<QRect> &screens);

/// The place that \a settings have, on the screens that are there.
QRect stored(const Settings &settings);
bool isStoredMaximized(const Settings &settings);
void store(const QWindow *window, Settings &settings);

} // namespace WindowPlace

#endif
