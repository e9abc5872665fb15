// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/SessionTable.h"

#include "sessionfiles/ShownValues.h"
#include "sessionreview/RecordedFigures.h"
#include "sessionreview/Words.h"

#include <CPRData.h>
#include <CPREventSessionInfo.h>
#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>
#include <Vocabulary.h>

#include <QMetaProperty>

#include <algorithm>
#include <initializer_list>

namespace sessionfiles {

namespace {

using E = CPREventBase;
using Column = TableWriter::Column;
using Row = TableWriter::Row;

Column columnOf(E::ParameterType parameter)
{
    return {E::parameterKey(parameter), unitText(Vocabulary::shownUnit(parameter))};
}

QVariant orNull(const QString &text)
{
    return text.isEmpty() ? QVariant::fromValue(nullptr) : QVariant(text);
}

// The parameter of that name; false, and the reason in error, when there is none.
bool parameterOf(const QString &name, E::ParameterType &parameter, QString *error)
{
    if (E::parameterFromKey(name, parameter))
        return true;
    *error = QStringLiteral("there is no column \"%1\"").arg(name);
    return false;
}

// One row per session: each parameter from the earliest event that holds it, as the library's own
// CSV export has it, and enumerations in words, too. What was worked out from the recorded events
// stands behind.
class SummaryTable final : public SessionTable {
public:
    static std::unique_ptr<SummaryTable> create(const QStringList &names, QString *error)
    {
        auto table = std::make_unique<SummaryTable>();
        for (const QString &name : names) {
            const auto &figures = sessionreview::recordedFigures();
            const auto figure =
                std::find_if(figures.begin(), figures.end(),
                             [&name](const auto &each) { return nameOf(each) == name; });
            const auto *const said =
                std::find_if(std::begin(words), std::end(words), [&name](const Words &each) {
                    return name == QLatin1String(each.name);
                });
            Cell cell{figure == figures.end() ? nullptr : &*figure,
                      said == std::end(words) ? nullptr : said,
                      {}};
            if (!cell.figure && !cell.words && !parameterOf(name, cell.parameter, error))
                return nullptr;
            table->m_cells.append(cell);
        }
        return table;
    }

    static QStringList usualColumns()
    {
        QStringList names;
        for (E::ParameterType parameter : usualParameters()) {
            const QString key = E::parameterKey(parameter);
            names.append(key);
            for (const Words &each : words) {
                if (QLatin1String(each.name) == key + QLatin1String("_text"))
                    names.append(QLatin1String(each.name));
            }
        }
        for (const RecordedFigure &figure : sessionreview::recordedFigures())
            names.append(nameOf(figure));
        return names;
    }

    QVector<Column> columns() const override
    {
        QVector<Column> columns;
        for (const Cell &cell : m_cells) {
            // The name of a figure says its unit.
            columns.append(cell.figure      ? Column{nameOf(*cell.figure), QString()}
                               : cell.words ? Column{QLatin1String(cell.words->name), QString()}
                                            : columnOf(cell.parameter));
        }
        return columns;
    }

    bool writeRows(const CPRData &session, const WriteRow &write) const override
    {
        // A copy lists all three standing events; in a session from a file only one is listed.
        const auto copy = std::make_unique<CPRData>(session);
        const bool needsReview = std::any_of(m_cells.begin(), m_cells.end(),
                                             [](const Cell &cell) { return cell.figure; });
        const auto review =
            needsReview ? sessionreview::reviewOf(session) : sessionreview::SessionReview();
        const sessionreview::Figures figures = sessionreview::figuresOf(session);
        Row row;
        for (const Cell &cell : m_cells) {
            if (cell.figure) {
                const std::optional<double> value = cell.figure->value(review);
                row.append(value ? QVariant(*value) : QVariant::fromValue(nullptr));
                continue;
            }
            row.append(cell.words ? orNull(cell.words->text(figures))
                                  : received(*copy->cprEvents(), cell.parameter));
        }
        return write(row);
    }

private:
    using Figures = sessionreview::Figures;
    using RecordedFigure = sessionreview::RecordedFigure;
    // The words for a parameter stand behind it.
    struct Words {
        const char *name;
        QString (*text)(const Figures &figures);
    };
    static constexpr Words words[] = {
        {"manikinType_text",
         [](const Figures &f) { return sessionreview::manikinText(f.manikinType, f.ageLetter); }},
        {"cprProtocol_text",
         [](const Figures &f) { return sessionreview::protocolText(f.protocol); }},
        {"primaryAdvice_text",
         [](const Figures &f) {
             return sessionreview::adviceText(f.primaryAdvice, f.primarySide);
         }},
        {"secondaryAdvice_text",
         [](const Figures &f) {
             return sessionreview::adviceText(f.secondaryAdvice, f.secondarySide);
         }},
    };
    // Without figure and words it is of a parameter.
    struct Cell {
        const RecordedFigure *figure;
        const Words *words;
        E::ParameterType parameter;
    };

    static QString nameOf(const RecordedFigure &figure)
    {
        return QLatin1String("recorded_") + QLatin1String(figure.key);
    }

    static QVector<E::ParameterType> usualParameters()
    {
        return {E::students,
                E::startTime,
                E::totalTime,
                E::manikinType,
                E::cprProtocol,
                E::overallScore,
                E::compOverallScore,
                E::ventOverallScore,
                E::flowTimePercentage,
                E::primaryAdvice,
                E::secondaryAdvice,
                E::compCount,
                E::compMeanDepth,
                E::compMeanRate,
                E::compCorrectDepthPercentage,
                E::compCorrectReleasePercentage,
                E::compCorrectRatePercentage,
                E::compHandPosCorrectPercentage,
                E::ventCount,
                E::ventMeanVolume,
                E::ventMeanRate,
                E::ventCorrectVolumePercentage,
                E::inactivityTime};
    }

    // Null for what the manikin has not sent.
    static QVariant received(const CPREvents &events, E::ParameterType parameter)
    {
        const auto &listed = events.events();
        QString key;
        const auto earliest = std::find_if(listed.begin(), listed.end(), [&](const E *event) {
            return event->hasParameters() && event->hasParameterType(parameter, key);
        });
        return earliest != listed.end() && sessionreview::hasArrived(*earliest, parameter)
            ? shownValue(parameter, (*earliest)->value(parameter))
            : QVariant::fromValue(nullptr);
    }

    QVector<Cell> m_cells;
};

// One row per event.
class EventTable final : public SessionTable {
public:
    // An empty list of columns stands for every parameter that an event in a list can carry.
    static std::unique_ptr<EventTable> create(const QStringList &names, QString *error)
    {
        auto table = std::make_unique<EventTable>();
        for (const QString &name : names) {
            const auto *const end = fixedColumns + std::size(fixedColumns);
            const auto *const fixed = std::find_if(fixedColumns, end, [&name](const Fixed &column) {
                return name == QLatin1String(column.name);
            });
            if (fixed != end) {
                table->m_cells.append(Cell{fixed, {}});
            } else {
                Cell cell{};
                if (!parameterOf(name, cell.parameter, error))
                    return nullptr;
                table->m_cells.append(cell);
            }
        }
        return table;
    }

    static QStringList usualColumns()
    {
        QStringList names;
        for (const Fixed &column : fixedColumns)
            names.append(QLatin1String(column.name));
        const std::initializer_list<E::ParameterType> parameters{E::compDepth,
                                                                 E::compReleaseDepth,
                                                                 E::compMeanRate,
                                                                 E::compPeakTime,
                                                                 E::compInstantaneousPeriod,
                                                                 E::compPeakForce,
                                                                 E::compReleaseForce,
                                                                 E::compLeaningDepth,
                                                                 E::compIncompleteRelease,
                                                                 E::compHandposError,
                                                                 E::compHandposXiphoid,
                                                                 E::ventVolume,
                                                                 E::ventRate,
                                                                 E::ventPeakTime,
                                                                 E::ventInstantaneousPeriod,
                                                                 E::ventDuringCompression,
                                                                 E::compInactivity,
                                                                 E::shockEnergy,
                                                                 E::aedEventType,
                                                                 E::aedType,
                                                                 E::aedECGRhythm,
                                                                 E::aedRemoteOtherButtonId,
                                                                 E::eventId};
        for (E::ParameterType parameter : parameters)
            names.append(E::parameterKey(parameter));
        return names;
    }

    QVector<Column> columns() const override
    {
        QVector<Column> columns;
        for (const Cell &cell : m_cells) {
            columns.append(cell.fixed ? Column{QLatin1String(cell.fixed->name),
                                               QLatin1String(cell.fixed->unit)}
                                      : columnOf(cell.parameter));
        }
        return columns;
    }

    bool writeRows(const CPRData &session, const WriteRow &write) const override
    {
        const auto &events = session.cprEvents()->events();
        return std::all_of(events.cbegin(), events.cend(), [&](const E *event) {
            Row row;
            for (const Cell &cell : m_cells)
                row.append(cell.fixed ? cell.fixed->value(*event)
                                      : shownValue(cell.parameter, event->value(cell.parameter)));
            return write(row);
        });
    }

private:
    struct Fixed {
        const char *name;
        const char *unit;
        QVariant (*value)(const E &event);
    };
    static constexpr Fixed fixedColumns[] = {
        {"type", "", [](const E &event) { return QVariant(QLatin1String(event.typeAsString())); }},
        {"start", "ms", [](const E &event) { return QVariant(event.msecs()); }},
        {"end", "ms", [](const E &event) { return QVariant(event.eventEndTime()); }},
    };
    struct Cell {
        const Fixed *fixed; // null for a parameter
        E::ParameterType parameter;
    };

    QVector<Cell> m_cells;
};

// One row per sample period.
class WaveTable final : public SessionTable {
public:
    QVector<Column> columns() const override
    {
        return {{QStringLiteral("time"), QStringLiteral("ms")},
                {QStringLiteral("depth"), QStringLiteral("mm")},
                {QStringLiteral("volume"), QStringLiteral("ml")}};
    }

    bool writeRows(const CPRData &session, const WriteRow &write) const override
    {
        const CPRCompressionData &depth = *session.compressionData();
        const CPRVentilationData &volume = *session.ventilationData();
        const qint64 period = depth.waveformInfo()->samplePeriod();
        const float mmPerUnit = depth.waveformInfo()->lsbValue();
        const float mlPerUnit = volume.waveformInfo()->lsbValue();
        const int rows = qMax(depth.count(), volume.count());
        for (int i = 0; i < rows; ++i) {
            // The sample of a header stands at the end of its period.
            const Row row{period * (i + 1),
                          i < depth.count() ? QVariant(float(depth.at(i)) * mmPerUnit) : QVariant(),
                          i < volume.count() ? QVariant(float(volume.at(i)) * mlPerUnit)
                                             : QVariant()};
            if (!write(row))
                return false;
        }
        return true;
    }
};

// One row per value of the active guideline set.
class GuidelineTable final : public SessionTable {
public:
    QVector<Column> columns() const override
    {
        return {{QStringLiteral("name"), QString()},
                {QStringLiteral("value"), QString()},
                {QStringLiteral("unit"), QString()}};
    }

    bool writeRows(const CPRData &session, const WriteRow &write) const override
    {
        const CPRGuidelines *guidelines = session.cprGuidelines();
        const QMetaObject *meta = guidelines->metaObject();
        for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
            const QString name = QString::fromLatin1(meta->property(i).name());
            const ShownGuideline shown = shownGuideline(name, meta->property(i).read(guidelines));
            if (!write({name, shown.value, shown.unit.isEmpty() ? QVariant() : shown.unit}))
                return false;
        }
        return true;
    }
};

} // namespace

SessionTable::~SessionTable() = default;

std::unique_ptr<SessionTable> SessionTable::create(const QString &what, const QStringList &columns,
                                                   QString *error)
{
    QString unwanted;
    if (!error)
        error = &unwanted;
    if (what == QLatin1String("summary"))
        return SummaryTable::create(columns.isEmpty() ? SummaryTable::usualColumns() : columns,
                                    error);
    if (what == QLatin1String("events"))
        return EventTable::create(columns.isEmpty() ? EventTable::usualColumns() : columns, error);
    if (!columns.isEmpty()) {
        *error = QStringLiteral("%1 has fixed columns").arg(what);
        return nullptr;
    }
    if (what == QLatin1String("waves"))
        return std::make_unique<WaveTable>();
    if (what == QLatin1String("guidelines"))
        return std::make_unique<GuidelineTable>();
    *error = QStringLiteral("there is no table \"%1\"").arg(what);
    return nullptr;
}

} // namespace sessionfiles
