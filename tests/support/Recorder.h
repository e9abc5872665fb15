// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_RECORDER_H
#define TESTSUPPORT_RECORDER_H

#include <QEventLoop>
#include <QStringList>
#include <QTimer>

namespace testsupport {

/// Writes down in one list which signals come, so that their order across objects shows.
class Recorder {
public:
    template <typename Sender, typename Signal>
    void watch(const Sender *sender, Signal signal, const QString &name)
    {
        QObject::connect(sender, signal, &m_context, [this, name] { m_heard.append(name); });
    }
    /// What was heard since the last call, separated by blanks.
    QString take()
    {
        const QString text = m_heard.join(QLatin1Char(' '));
        m_heard.clear();
        return text;
    }

private:
    QStringList m_heard;
    QObject m_context; // dies first, and the connections with it
};

/// Lets the timers run out by which the objects announce their changes. They come before the loop's
/// end however long the machine does something else.
inline void settle()
{
    QEventLoop loop;
    QTimer::singleShot(20, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace testsupport

#endif
