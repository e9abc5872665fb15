// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Measure.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <unistd.h>

namespace bench {

qint64 cpuTime()
{
    constexpr qint64 nanosecondsPerSecond = 1000000000;
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * nanosecondsPerSecond + time.tv_nsec;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Figure compare(int pairs, const Side &subject, const Side &reference, int items)
{
    std::vector<double> subjects;
    std::vector<double> references;
    std::vector<double> ratios;
    for (int pair = -1; pair < pairs; ++pair) {
        Clock of[2];
        const int first = pair & 1;
        for (const int side : {first, 1 - first})
            (side == 0 ? subject : reference)(of[side]);
        if (pair < 0)
            continue;
        subjects.push_back(of[0].elapsed() / items);
        references.push_back(of[1].elapsed() / items);
        ratios.push_back(of[0].elapsed() / std::max(of[1].elapsed(), 1.0));
    }
    Figure figure;
    figure.ratio = median(ratios);
    figure.subject = median(subjects);
    figure.reference = median(references);
    return figure;
}

Figure compareBytes(double subject, double reference)
{
    Figure figure;
    figure.ratio = subject / reference;
    figure.subject = subject;
    figure.reference = reference;
    figure.unit = Unit::Bytes;
    return figure;
}

Figure withGoal(Figure figure, double goal, const QString &label)
{
    figure.goal = goal;
    figure.label = label;
    return figure;
}

QString amount(double value, Unit unit)
{
    static const char *const names[][4] = {{"ns", "µs", "ms", "s"}, {"B", "kB", "MB", "GB"}};
    const auto &steps = names[static_cast<int>(unit)];
    const auto *name = std::begin(steps);
    while (value >= 1000 && std::next(name) != std::end(steps)) {
        value /= 1000;
        ++name;
    }
    constexpr int digits = 3;
    // Three digits without the exponent that four would need.
    const QString number =
        value >= 999.5 ? QString::number(value, 'f', 0) : QString::number(value, 'g', digits);
    return QStringLiteral("%1 %2").arg(number, QString::fromUtf8(*name)).trimmed();
}

QString tableLine(const QStringList &cells)
{
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

void showProgress(const QString &text)
{
    static const bool isTerminal = isatty(STDERR_FILENO) != 0;
    if (isTerminal)
        std::fprintf(stderr, "\r\033[K%s", qPrintable(text));
}

} // namespace bench
