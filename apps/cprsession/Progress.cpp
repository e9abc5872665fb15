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

bool Progress::isDue() const
{
    return m_isTerminal && m_sinceShown.elapsed() >= intervalMs;
}

void Progress::show(const QString &state)
{
    std::fprintf(stderr, "\r\033[K%s %s", m_what.toLocal8Bit().constData(),
                 state.toLocal8Bit().constData());
    m_sinceShown.restart();
    m_isShown = true;
}

void Progress::report(qint64 done, qint64 total)
{
    constexpr int percent = 100;
    constexpr int width = 3;
    if (total > 0 && isDue())
        show(QStringLiteral("%1 %").arg(static_cast<int>(percent * done / total), width));
}

void Progress::report(const QString &state)
{
    if (isDue())
        show(state);
}

void Progress::hide()
{
    if (m_isShown)
        std::fputs("\r\033[K", stderr);
    m_isShown = false;
}
