// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Screenshot.h"

#include "CommandLine.h"
#include "Viewer.h"
#include "private/AtomicFile.h"

#include <QCoreApplication>
#include <QQmlEngine>
#include <QQmlIncubationController>
#include <QQuickItem>
#include <QQuickWindow>

namespace {

// Models follow a session within 250 ms; a page without a new frame for longer shows everything.
constexpr int quietMs = 400;

} // namespace

Screenshot::Screenshot(QString file, Viewer *viewer, QQuickWindow *window)
    : m_file(std::move(file)), m_viewer(viewer), m_window(window)
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietMs);
    const auto restart = [this] { m_quiet.start(); };
    connect(window, &QQuickWindow::frameSwapped, this, restart);
    connect(viewer, &Viewer::isLoadingChanged, this, restart);
    connect(viewer->other(), &cprquick::SessionSource::isLoadingChanged, this, restart);
    connect(viewer->library(), &cprquick::LibraryFolder::isBusyChanged, this, restart);
    connect(&m_quiet, &QTimer::timeout, this, &Screenshot::grab);
    m_quiet.start();
}

Screenshot::~Screenshot() = default;

void Screenshot::grab()
{
    if (m_viewer->isLoading() || m_viewer->other()->isLoading() || m_viewer->library()->isBusy())
        return; // a signal comes at its end
    // A busy machine may not have shown the window yet, nor made what lists make piece by piece.
    const QQmlIncubationController *pieces = qmlEngine(m_window)->incubationController();
    if (m_window->contentItem()->size().isEmpty()
        || (pieces && pieces->incubatingObjectCount() > 0)) {
        m_quiet.start();
        return;
    }
    // QQuickWindow::grabWindow() gives nothing where there is no display.
    m_grab = m_window->contentItem()->grabToImage();
    if (m_grab)
        connect(m_grab.data(), &QQuickItemGrabResult::ready, this, &Screenshot::finish);
    else
        finish();
}

void Screenshot::finish()
{
    bool isWritten = false;
    if (!m_viewer->problem().isEmpty()) {
        complain(m_viewer->problem());
    } else if (!m_viewer->other()->session() && !m_viewer->other()->file().isEmpty()) {
        complain(m_viewer->other()->problem());
    } else if (!m_grab) {
        complain(QStringLiteral("%1 cannot be written: the page cannot be drawn").arg(m_file));
    } else {
        AtomicFile file(m_file);
        isWritten =
            file.open(QIODevice::WriteOnly) && m_grab->image().save(&file, "PNG") && file.finish();
        if (!isWritten)
            complain(QStringLiteral("%1 cannot be written: %2").arg(m_file, file.errorString()));
    }
    QCoreApplication::exit(static_cast<int>(isWritten ? ExitStatus::Done : ExitStatus::Failed));
}
