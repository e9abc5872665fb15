// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "WindowDialogs.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QWindow>

void openDialog(QDialog *dialog, const QString &title)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->winId(); // makes the window that belongs to the viewer's
    dialog->windowHandle()->setTransientParent(QGuiApplication::focusWindow());
    dialog->open();
}

// A widget: where the system has no dialog of its own, the one that QML offers may report the
// folder that it shows, the parent of the chosen one.
void chooseFolder(const QString &title, const QString &start,
                  const std::function<void(const QString &folder)> &chosen)
{
    auto *dialog = new QFileDialog;
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setDirectory(start);
    QObject::connect(dialog, &QDialog::accepted, dialog, [dialog, chosen] {
        const QStringList folders = dialog->selectedFiles();
        if (!folders.isEmpty())
            chosen(folders.first());
    });
    openDialog(dialog, title);
}
