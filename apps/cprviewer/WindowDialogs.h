// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_WINDOWDIALOGS_H
#define CPRVIEWER_WINDOWDIALOGS_H

#include <functional>

class QDialog;
class QString;

/// Opens \a dialog over the window that has the keyboard, and returns at once. The dialog owns
/// itself: it is deleted when it is closed.
void openDialog(QDialog *dialog, const QString &title);

/// Lets a folder be chosen, beginning in \a start, and calls \a chosen with it; not when nothing
/// was chosen. Needs a QApplication.
void chooseFolder(const QString &title, const QString &start,
                  const std::function<void(const QString &folder)> &chosen);

#endif
