// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Progress.h"

#include <cstdio>
#include <unistd.h>

namespace {

// Work that is done sooner shows nothing.
constexpr qint64 intervalMs = 200;

bool isWanted = true;

} // namespace

Progress::Progress(const QString &what)
    : m_what(what), m_isTerminal(isWanted && isatty(STDERR_FILENO) != 0)
{
    m_sinceShown.start();
}

Progress::~Progress()
{
    hide();
}

void Progress::setShown(bool shown)
{
    isWanted = shown;
}

void Progress::report(qint64 done, qint64 total)
{
    if (!m_isTerminal || total <= 0 || m_sinceShown.elapsed() < intervalMs)
        return;
    std::fprintf(stderr, "\r\033[K%s %3d %%", m_what.toLocal8Bit().constData(),
                 static_cast<int>(100 * done / total));
    m_sinceShown.restart();
    m_isShown = true;
}

void Progress::hide()
{
    if (m_isShown)
        std::fputs("\r\033[K", stderr);
    m_isShown = false;
}
