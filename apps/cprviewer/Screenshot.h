// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SCREENSHOT_H
#define CPRVIEWER_SCREENSHOT_H

#include <QObject>
#include <QQuickItemGrabResult>
#include <QSharedPointer>
#include <QTimer>

class QQuickWindow;
class Viewer;

/// Writes a picture of the window once it shows all that it is going to show, and ends the program:
/// with status 1, and a line on stderr, when that cannot be.
class Screenshot final : public QObject {
    Q_OBJECT

public:
    /// \a viewer and \a window are not owned.
    Screenshot(QString file, Viewer *viewer, QQuickWindow *window);
    ~Screenshot() override;

private:
    void grab();
    void finish();

    QString m_file;
    Viewer *m_viewer;
    QQuickWindow *m_window;
    QTimer m_quiet; // since the last frame
    QSharedPointer<QQuickItemGrabResult> m_grab;
};

#endif
