// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/ClassModel.h"

#include "cprquick/SessionResults.h"

#include <sessionplot/Head.h>

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <utility>

namespace cprquick {

using namespace sessionreview;
using sessionlibrary::SessionEntry;

namespace {

// No class has as many sessions; somebody has chosen a year, then.
constexpr int maxSessions = 500;

QDate dayOf(const QString &text)
{
    return QDate::fromString(text, Qt::ISODate);
}

QString dash()
{
    return QStringLiteral("\u2013");
}

QStringList figureTexts(const std::vector<std::optional<double>> &values)
{
    const QLocale locale;
    QStringList texts;
    for (std::size_t i = 0; i < classFigures().size(); ++i) {
        const std::optional<double> value = i < values.size() ? values[i] : std::nullopt;
        texts.append(value ? classFigures()[i]->number(*value, locale) : dash());
    }
    return texts;
}

QString scoreText(const std::optional<int> &score)
{
    return score ? sessionplot::percentText(*score) : dash();
}

} // namespace

ClassModel::ClassModel(QObject *parent)
    : QAbstractListModel(parent), m_results(std::make_unique<SessionResults>())
{
    connect(m_results.get(), &SessionResults::finished, this, [this] {
        show();
        announceLoading();
    });
}

ClassModel::~ClassModel()
{
    if (m_library)
        m_library->setWorking(this, false);
}

bool ClassModel::isLoading() const
{
    return m_results->isReading();
}

void ClassModel::announceLoading()
{
    if (m_library)
        m_library->setWorking(this, isLoading());
    Q_EMIT isLoadingChanged();
}

void ClassModel::setLibrary(LibraryFolder *library)
{
    if (showLibrary(m_library, library, this, &ClassModel::refresh))
        Q_EMIT libraryChanged();
}

void ClassModel::setFirstDay(const QString &day)
{
    if (std::exchange(m_firstDay, day) == day)
        return;
    refresh();
    Q_EMIT daysChanged();
}

void ClassModel::setLastDay(const QString &day)
{
    if (std::exchange(m_lastDay, day) == day)
        return;
    refresh();
    Q_EMIT daysChanged();
}

void ClassModel::setLearners(const QStringList &learners)
{
    if (std::exchange(m_learners, learners) == learners)
        return;
    refresh();
    Q_EMIT learnersChanged();
}

void ClassModel::refresh()
{
    if (!m_library)
        return; // what was shown stays
    sessionlibrary::Filter filter;
    filter.from = dayOf(m_firstDay);
    filter.to = m_lastDay.isEmpty() ? filter.from : dayOf(m_lastDay);
    QStringList files;
    QVector<sessionlibrary::FileStamp> stamps;
    m_hasMore = false;
    if (filter.from.isValid() && m_library->index()) {
        const auto entries = m_library->index()->page(
            filter, {sessionlibrary::SortBy::Start, Qt::AscendingOrder}, 0, -1);
        for (const SessionEntry &entry : entries.value_or(std::vector<SessionEntry>())) {
            const QStringList &names = entry.figures.learners;
            const auto isOfClass = [this](const QString &name) {
                return m_learners.contains(name);
            };
            if (!m_learners.isEmpty() && std::none_of(names.begin(), names.end(), isOfClass))
                continue;
            m_hasMore = files.size() == maxSessions;
            if (m_hasMore)
                break;
            files.append(m_library->pathOf(entry.file));
            stamps.append(entry.stamp);
        }
    }
    if (files == m_files && stamps == m_stamps)
        return;
    m_files = files;
    m_stamps = stamps;
    m_results->read(m_files);
    announceLoading();
}

void ClassModel::show()
{
    beginResetModel();
    m_figures = classFiguresOf(m_results->results());
    endResetModel();
    Q_EMIT changed();
}

QString ClassModel::dayText() const
{
    const QLocale locale;
    const auto text = [&locale](const QString &day) {
        return locale.toString(dayOf(day), QLocale::LongFormat);
    };
    if (m_firstDay.isEmpty())
        return QString();
    return m_lastDay.isEmpty() || m_lastDay == m_firstDay
        ? text(m_firstDay)
        : QStringLiteral("%1 \u2013 %2").arg(text(m_firstDay), text(m_lastDay));
}

QString ClassModel::summary() const
{
    QStringList texts{
        QCoreApplication::translate("sessionplot", "Learners: %1").arg(m_figures.rows.size()),
        QCoreApplication::translate("sessionplot", "Sessions: %1").arg(m_figures.sessions)};
    if (m_figures.withThreshold > 0)
        texts.append(QCoreApplication::translate("sessionplot", "Passed: %1")
                         .arg(countText(m_figures.passed, m_figures.withThreshold)));
    return texts.join(QStringLiteral(" \u00b7 "));
}

QString ClassModel::problem() const
{
    if (m_hasMore)
        return QCoreApplication::translate("cprquick", "Only the first %1 sessions are counted.")
            .arg(maxSessions);
    return m_results->unreadCount() == 0
        ? QString()
        : QCoreApplication::translate("cprquick", "Sessions that cannot be read: %1")
              .arg(m_results->unreadCount());
}

QVariantList ClassModel::heads() const
{
    QVariantList heads;
    for (const RecordedFigure *figure : classFigures())
        heads.append(QVariantMap{{QStringLiteral("title"), figure->titleText()},
                                 {QStringLiteral("unit"), figure->unitText()}});
    return heads;
}

QStringList ClassModel::means() const
{
    const std::optional<double> &score = m_figures.meanScore;
    return QStringList(scoreText(score ? std::optional(static_cast<int>(std::lround(*score)))
                                       : std::nullopt))
        + figureTexts(m_figures.means);
}

QVariantList ClassModel::faults() const
{
    QVariantList faults;
    for (const SharedFault &fault : m_figures.faults)
        faults.append(QVariantMap{
            {QStringLiteral("text"), faultText(fault.fault)},
            {QStringLiteral("countText"), countText(fault.learners, fault.judged)},
            {QStringLiteral("share"), double(fault.learners) / std::max(fault.judged, 1)}});
    return faults;
}

QString ClassModel::otherDay(int step) const
{
    const QDate day = dayOf(m_firstDay);
    if (!m_library || !m_library->index() || !day.isValid())
        return QString();
    sessionlibrary::Filter filter;
    if (step < 0)
        filter.to = day.addDays(-1);
    else
        filter.from = day.addDays(1);
    const auto found = m_library->index()->page(
        filter,
        {sessionlibrary::SortBy::Start, step < 0 ? Qt::DescendingOrder : Qt::AscendingOrder}, 0, 1);
    // Sessions without a start are not asked for in either direction.
    if (!found || found->empty())
        return QString();
    return found->front().figures.start().toLocalTime().date().toString(Qt::ISODate);
}

QString ClassModel::nameAt(int row) const
{
    return row >= 0 && row < count() ? m_figures.rows[std::size_t(row)].learner : QString();
}

int ClassModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_figures.rows.size());
}

QVariant ClassModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return QVariant();
    const ClassRow &row = m_figures.rows[std::size_t(index.row())];
    const std::optional<bool> isPassed = row.last.isPassed();
    switch (role) {
    case NameRole:
        return row.learner;
    case NameTextRole:
        return learnerText(row.learner);
    case SessionsRole:
        return row.sessions;
    case ScoreTextRole:
        return scoreText(row.last.score);
    case PassedRole:
        return isPassed ? QVariant(*isPassed) : QVariant();
    case FiguresRole:
        return figureTexts(row.last.figures);
    case FaultTextRole:
        return row.last.toWorkOn.empty() ? QString() : faultText(row.last.toWorkOn.front());
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> ClassModel::roleNames() const
{
    return {{NameRole, "name"},           {NameTextRole, "nameText"}, {SessionsRole, "sessions"},
            {ScoreTextRole, "scoreText"}, {PassedRole, "isPassed"},   {FiguresRole, "figures"},
            {FaultTextRole, "faultText"}};
}

} // namespace cprquick
