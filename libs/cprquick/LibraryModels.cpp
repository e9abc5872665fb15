// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/LibraryModels.h"

#include "sessionreview/Scores.h"
#include "sessionreview/Words.h"

#include <sessionplot/Head.h>
#include <sessionplot/Scales.h>

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace cprquick {

using namespace sessionlibrary;

namespace {

constexpr int rowsPerPage = 100;
constexpr int pagesKept = 20;

/// From the first to the last day that a text means; not valid for one that means none.
std::pair<QDate, QDate> daysOf(const QString &text)
{
    const QLocale locale;
    for (const QString &format :
         {QStringLiteral("yyyy-MM-dd"), locale.dateFormat(QLocale::ShortFormat),
          QStringLiteral("d.M.yyyy"), QStringLiteral("d/M/yyyy")}) {
        QDate day = QDate::fromString(text, format);
        constexpr int century = 100;
        if (day.isValid() && day.year() < QDate::currentDate().year() - century + 1)
            day = day.addYears(century); // two digits stand for years of the last century
        if (day.isValid())
            return {day, day};
    }
    const QDate month = QDate::fromString(text, QStringLiteral("yyyy-MM"));
    if (month.isValid())
        return {month, month.addMonths(1).addDays(-1)};
    const QDate year = QDate::fromString(text, QStringLiteral("yyyy"));
    return year.isValid() ? std::pair(year, year.addYears(1).addDays(-1))
                          : std::pair<QDate, QDate>();
}

QString stateText(State state)
{
    switch (state) {
    case State::Whole:
        break;
    case State::Salvaged:
        return QCoreApplication::translate("cprquick", "Damaged, in part");
    case State::Damaged:
        return QCoreApplication::translate("cprquick", "Damaged");
    }
    return QString();
}

SessionLibrary *indexOf(LibraryFolder *library)
{
    return library ? library->index() : nullptr;
}

std::optional<int> percentOf(int percent)
{
    return percent < 0 ? std::nullopt : std::optional(percent);
}

QVariant isPassed(const sessionreview::Figures &figures)
{
    const sessionreview::Verdict verdict = sessionreview::verdictOn(
        figures.overallScore, figures.basicThreshold, figures.advancedThreshold);
    return figures.hasScores && !verdict.text.isEmpty() ? QVariant(verdict.isPassed) : QVariant();
}

} // namespace

LibraryModel::LibraryModel(QObject *parent) : QAbstractListModel(parent), m_pages(pagesKept)
{
    static_assert(SortBy(sessionlibrary::SortBy::File) == File);
}

LibraryModel::~LibraryModel() = default;

void LibraryModel::setLibrary(LibraryFolder *library)
{
    if (showLibrary(m_library, library, this, &LibraryModel::refresh))
        Q_EMIT libraryChanged();
}

template <typename Value> void LibraryModel::change(Value &member, const Value &value)
{
    if (member == value)
        return;
    member = value;
    refresh();
    Q_EMIT filterChanged();
}

void LibraryModel::setText(const QString &text)
{
    change(m_filter.text, text);
}

void LibraryModel::setLearner(const QString &learner)
{
    change(m_filter.learner, learner.isEmpty() ? std::nullopt : std::optional(learner));
}

void LibraryModel::setDay(const QString &day)
{
    const auto [from, to] = daysOf(day.trimmed());
    m_filter.from = from;
    m_filter.to = to;
    change(m_day, day.trimmed());
}

void LibraryModel::setProtocol(int protocol)
{
    change(m_filter.protocol, percentOf(protocol));
}

void LibraryModel::setMinScore(int percent)
{
    change(m_filter.minScore, percentOf(percent));
}

void LibraryModel::setMaxScore(int percent)
{
    change(m_filter.maxScore, percentOf(percent));
}

void LibraryModel::setSortBy(SortBy by)
{
    change(m_order.by, static_cast<sessionlibrary::SortBy>(by));
}

void LibraryModel::setDescending(bool isDescending)
{
    change(m_order.direction, isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void LibraryModel::refresh()
{
    SessionLibrary *index = indexOf(m_library);
    const auto found = index ? index->count(m_filter) : std::nullopt;
    const int count = found.value_or(0);
    m_pages.clear();
    if (count != m_count) {
        beginResetModel();
        m_count = count;
        endResetModel();
        Q_EMIT countChanged();
    } else if (m_count > 0) {
        Q_EMIT dataChanged(this->index(0), this->index(m_count - 1));
    }
}

const SessionEntry *LibraryModel::entryAt(int row) const
{
    SessionLibrary *index = indexOf(m_library);
    if (row < 0 || row >= m_count || !index)
        return nullptr;
    const int number = row / rowsPerPage;
    if (!m_pages.contains(number)) {
        auto asked = index->page(m_filter, m_order, number * rowsPerPage, rowsPerPage);
        m_pages.insert(number, new Page(asked ? std::move(*asked) : Page()));
    }
    const Page *page = m_pages.object(number);
    const auto inPage = std::size_t(row % rowsPerPage);
    return page && inPage < page->size() ? &(*page)[inPage] : nullptr;
}

QString LibraryModel::fileAt(int row) const
{
    const SessionEntry *entry = entryAt(row);
    return entry ? entry->file : QString();
}

int LibraryModel::rowOf(const QString &file, int row) const
{
    // Sessions that come or go move it by a few rows.
    constexpr int reach = 3 * rowsPerPage;
    for (int distance = 0; distance <= reach && !file.isEmpty(); ++distance) {
        for (const int at : {row - distance, row + distance}) {
            if (fileAt(at) == file)
                return at;
        }
    }
    return -1;
}

int LibraryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

QVariant LibraryModel::data(const QModelIndex &index, int role) const
{
    const SessionEntry *entry = index.isValid() ? entryAt(index.row()) : nullptr;
    if (!entry)
        return QVariant();
    const sessionreview::Figures &figures = entry->figures;
    const bool isRead = entry->state != State::Damaged;
    const QDateTime start = figures.start().toLocalTime();
    switch (role) {
    case FileRole:
        return entry->file;
    case LearnersRole:
        return figures.learners;
    case StartTextRole:
        return start.isValid() ? QLocale().toString(start, QLocale::ShortFormat) : QString();
    case DayRole:
        return start.date().toString(Qt::ISODate);
    case LengthTextRole:
        return figures.secsSoFar > 0
            ? sessionplot::timeText(qint64(figures.secsSoFar) * 1000, 1000, false)
            : QString();
    case ProtocolTextRole:
        return isRead ? sessionreview::protocolText(figures.protocol) : QString();
    case ScoreTextRole:
        return figures.hasScores ? sessionplot::percentText(figures.overallScore) : QString();
    case PassedRole:
        return isPassed(figures);
    case StateTextRole:
        return stateText(entry->state);
    case ReasonRole:
        return entry->reason;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> LibraryModel::roleNames() const
{
    return {{FileRole, "file"},
            {LearnersRole, "learners"},
            {StartTextRole, "startText"},
            {DayRole, "day"},
            {LengthTextRole, "lengthText"},
            {ProtocolTextRole, "protocolText"},
            {ScoreTextRole, "scoreText"},
            {PassedRole, "isPassed"},
            {StateTextRole, "stateText"},
            {ReasonRole, "reason"}};
}

LearnerModel::LearnerModel(QObject *parent) : QAbstractListModel(parent)
{
}

LearnerModel::~LearnerModel() = default;

void LearnerModel::setLibrary(LibraryFolder *library)
{
    if (showLibrary(m_library, library, this, &LearnerModel::refresh))
        Q_EMIT libraryChanged();
}

void LearnerModel::setText(const QString &text)
{
    if (std::exchange(m_text, text) == text)
        return;
    refresh();
    Q_EMIT textChanged();
}

void LearnerModel::refresh()
{
    SessionLibrary *index = indexOf(m_library);
    auto all = index ? index->learners() : std::nullopt;
    auto rows = all ? std::move(*all) : std::vector<sessionlibrary::Learner>();
    rows.erase(std::remove_if(rows.begin(), rows.end(),
                              [this](const sessionlibrary::Learner &learner) {
                                  return !learner.name.contains(m_text, Qt::CaseInsensitive);
                              }),
               rows.end());
    // A view stays where it is while learners are counted anew.
    if (rows.size() == m_rows.size()) {
        m_rows = std::move(rows);
        if (!m_rows.empty())
            Q_EMIT dataChanged(this->index(0), this->index(count() - 1));
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
    Q_EMIT countChanged();
}

QString LearnerModel::nameAt(int row) const
{
    return row >= 0 && row < count() ? m_rows[std::size_t(row)].name : QString();
}

int LearnerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant LearnerModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return QVariant();
    const sessionlibrary::Learner &learner = m_rows[std::size_t(index.row())];
    switch (role) {
    case NameRole:
        return learner.name;
    case SessionsRole:
        return learner.sessions;
    case LastTextRole:
        return learner.last.isValid()
            ? QLocale().toString(learner.last.toLocalTime().date(), QLocale::ShortFormat)
            : QString();
    case ScoreTextRole:
        return learner.lastScore ? sessionplot::percentText(*learner.lastScore) : QString();
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> LearnerModel::roleNames() const
{
    return {{NameRole, "name"},
            {SessionsRole, "sessions"},
            {LastTextRole, "lastText"},
            {ScoreTextRole, "scoreText"}};
}

} // namespace cprquick
