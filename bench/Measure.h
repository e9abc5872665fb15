// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_MEASURE_H
#define BENCH_MEASURE_H

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <functional>
#include <vector>

namespace bench {

/// CPU time of the calling thread, ns.
qint64 cpuTime();

/// Makes the compiler believe that \a value is used, so that what gave it is not left out.
template <typename T> void keep(const T &value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// Runs while the work goes on that counts; preparations and cleaning up lie outside.
class Clock {
public:
    void start() { m_started = cpuTime(); }
    void stop() { m_elapsed += cpuTime() - m_started; }
    double elapsed() const { return static_cast<double>(m_elapsed); }

private:
    qint64 m_started = 0;
    qint64 m_elapsed = 0;
};

enum class Unit { Nanoseconds, Bytes };

/// One comparison of a row of the table.
struct Figure {
    QString label; ///< empty where the row has one comparison only
    double goal = 0; ///< the largest ratio that is good
    double ratio = 0; ///< subject to reference
    double subject = 0;
    double reference = 0;
    Unit unit = Unit::Nanoseconds;

    bool isMissed() const { return ratio > goal; }
};

/// One of the two things that are compared. Starts and stops the clock around its work.
using Side = std::function<void(Clock &)>;

double median(std::vector<double> values);

/// Runs both sides in turn, \a pairs times after a round that does not count, and in each pair the
/// other one first. The ratio is the median of the pairs' ratios. The times are given for one of
/// \a items.
Figure compare(int pairs, const Side &subject, const Side &reference, int items = 1);

/// A comparison of two amounts of memory or storage.
Figure compareBytes(double subject, double reference);

Figure withGoal(Figure figure, double goal, const QString &label = QString());

/// "12.3 ms", "4.56 MB"
QString amount(double value, Unit unit);

/// A line of a table that a page and a terminal can both show.
QString tableLine(const QStringList &cells);

/// A line about what is going on, when stderr is a terminal; the next line replaces it and an empty
/// text removes it.
void showProgress(const QString &text);

} // namespace bench

#endif
