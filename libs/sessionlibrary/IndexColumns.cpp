// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/IndexColumns.h"

#include "sessionreview/RecordedFigures.h"

#include <QDateTime>

#include <type_traits>

namespace sessionlibrary {

namespace {

using sessionreview::Figures;

// Something that every session has. access(entry) is a reference to it.
template <typename Access> IndexColumn always(const char *name, Access access)
{
    using Type = std::decay_t<decltype(access(std::declval<SessionEntry &>()))>;
    using Stored = std::conditional_t<std::is_enum_v<Type>, int, Type>;
    return {QLatin1String(name),
            std::is_same_v<Type, QString>      ? "TEXT NOT NULL DEFAULT ''"
                : std::is_same_v<Type, double> ? "REAL NOT NULL DEFAULT 0"
                                               : "INTEGER NOT NULL DEFAULT 0",
            [access](const SessionEntry &entry) {
                return notNull(QVariant::fromValue(Stored(access(entry))));
            },
            [access](SessionEntry &entry, const QVariant &value) {
                access(entry) = Type(value.value<Stored>());
            }};
}

// Something that the manikin sends together with others; has is whether it has.
template <typename Access> IndexColumn sent(const char *name, bool Figures::*has, Access access)
{
    IndexColumn column = always(name, access);
    column.type = column.type[0] == 'R' ? "REAL" : "INTEGER";
    column.get = [has, get = column.get](const SessionEntry &entry) {
        return entry.figures.*has ? get(entry) : QVariant();
    };
    column.set = [has, set = column.set](SessionEntry &entry, const QVariant &value) {
        entry.figures.*has = true;
        set(entry, value);
    };
    return column;
}

// For sorting and for days; the text of the archive is in another column.
IndexColumn startColumn()
{
    return {QStringLiteral("start_ms"), "INTEGER",
            [](const SessionEntry &entry) {
                const QDateTime start = entry.figures.start();
                return start.isValid() ? QVariant(start.toMSecsSinceEpoch()) : QVariant();
            },
            [](SessionEntry & /*entry*/, const QVariant & /*value*/) {}};
}

IndexColumn recordedColumn(std::size_t index)
{
    return {QLatin1String("recorded_") + QLatin1String(sessionreview::recordedFigures()[index].key),
            "REAL",
            [index](const SessionEntry &entry) {
                const std::optional<double> value = entry.recorded.at(index);
                return value ? QVariant(*value) : QVariant();
            },
            [index](SessionEntry &entry, const QVariant &value) {
                entry.recorded.at(index) = value.toDouble();
            }};
}

std::vector<IndexColumn> allColumns()
{
    constexpr bool Figures::*statistics = &Figures::hasStatistics;
    constexpr bool Figures::*scores = &Figures::hasScores;
    // clang-format off
    std::vector<IndexColumn> columns = {
        always("file",                              [](auto &e) -> auto & { return e.file; }),
        always("size",                              [](auto &e) -> auto & { return e.stamp.size; }),
        always("modified_ns",                       [](auto &e) -> auto & { return e.stamp.modifiedNs; }),
        always("inode",                             [](auto &e) -> auto & { return e.stamp.inode; }),
        always("state",                             [](auto &e) -> auto & { return e.state; }),
        always("reason",                            [](auto &e) -> auto & { return e.reason; }),
        always("start",                             [](auto &e) -> auto & { return e.figures.startTime; }),
        startColumn(),
        always("length_s",                          [](auto &e) -> auto & { return e.figures.secs; }),
        always("time_s",                            [](auto &e) -> auto & { return e.figures.secsSoFar; }),
        always("protocol",                          [](auto &e) -> auto & { return e.figures.protocol; }),
        always("manikin_name",                      [](auto &e) -> auto & { return e.figures.manikinName; }),
        always("manikin",                           [](auto &e) -> auto & { return e.figures.manikinType; }),
        always("age_letter",                        [](auto &e) -> auto & { return e.figures.ageLetter; }),
        always("firmware",                          [](auto &e) -> auto & { return e.figures.firmware; }),
        always("guidelines",                        [](auto &e) -> auto & { return e.figures.guidelines; }),
        always("compressions",                      [](auto &e) -> auto & { return e.figures.compressions; }),
        always("ventilations",                      [](auto &e) -> auto & { return e.figures.ventilations; }),
        always("pauses",                            [](auto &e) -> auto & { return e.figures.pauses; }),
        sent("mean_depth_mm",           statistics, [](auto &e) -> auto & { return e.figures.meanDepth; }),
        sent("mean_rate_per_min",       statistics, [](auto &e) -> auto & { return e.figures.meanRate; }),
        sent("mean_volume_ml",          statistics, [](auto &e) -> auto & { return e.figures.meanVolume; }),
        sent("overall_score",           scores,     [](auto &e) -> auto & { return e.figures.overallScore; }),
        sent("compression_score",       scores,     [](auto &e) -> auto & { return e.figures.compressionScore; }),
        sent("ventilation_score",       scores,     [](auto &e) -> auto & { return e.figures.ventilationScore; }),
        sent("flow_time_percent",       scores,     [](auto &e) -> auto & { return e.figures.flowTime; }),
        sent("primary_advice",          scores,     [](auto &e) -> auto & { return e.figures.primaryAdvice; }),
        sent("primary_side",            scores,     [](auto &e) -> auto & { return e.figures.primarySide; }),
        sent("secondary_advice",        scores,     [](auto &e) -> auto & { return e.figures.secondaryAdvice; }),
        sent("secondary_side",          scores,     [](auto &e) -> auto & { return e.figures.secondarySide; }),
        sent("basic_threshold",         scores,     [](auto &e) -> auto & { return e.figures.basicThreshold; }),
        sent("advanced_threshold",      scores,     [](auto &e) -> auto & { return e.figures.advancedThreshold; }),
    };
    // clang-format on
    for (std::size_t i = 0; i < sessionreview::recordedFigures().size(); ++i)
        columns.push_back(recordedColumn(i));
    return columns;
}

} // namespace

QVariant notNull(const QVariant &value)
{
    const bool isNullText = value.userType() == QMetaType::QString && value.toString().isNull();
    return isNullText ? QVariant(QStringLiteral("")) : value;
}

const std::vector<IndexColumn> &indexColumns()
{
    static const std::vector<IndexColumn> columns = allColumns();
    return columns;
}

QString columnNames()
{
    QStringList names;
    for (const IndexColumn &column : indexColumns())
        names.append(column.name);
    return names.join(QLatin1Char(','));
}

} // namespace sessionlibrary
