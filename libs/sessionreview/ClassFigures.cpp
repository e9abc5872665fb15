// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/ClassFigures.h"

#include "sessionreview/Scores.h"

#include <QCollator>
#include <QCoreApplication>
#include <QHash>

#include <algorithm>
#include <iterator>

namespace sessionreview {

namespace {

/// A mean in the making.
struct Sum {
    double sum = 0;
    int count = 0;

    void add(const std::optional<double> &value)
    {
        sum += value.value_or(0);
        count += value.has_value();
    }
    std::optional<double> mean() const
    {
        return count > 0 ? std::optional(sum / count) : std::nullopt;
    }
};

std::vector<SharedFault> sharedFaults(const std::vector<ClassRow> &rows)
{
    std::vector<SharedFault> shared;
    for (int i = static_cast<int>(Prompt::EndPause); i < static_cast<int>(Prompt::Right); ++i) {
        SharedFault fault{static_cast<Prompt>(i), 0, 0};
        for (const ClassRow &row : rows) {
            const auto &judged = row.last.judged;
            const auto &faults = row.last.toWorkOn;
            fault.judged +=
                static_cast<int>(std::count(judged.begin(), judged.end(), skillOf(fault.fault)));
            fault.learners +=
                static_cast<int>(std::count(faults.begin(), faults.end(), fault.fault));
        }
        if (fault.learners > 0)
            shared.push_back(fault);
    }
    std::stable_sort(shared.begin(), shared.end(), [](const SharedFault &a, const SharedFault &b) {
        return a.learners > b.learners;
    });
    return shared;
}

} // namespace

const std::vector<const RecordedFigure *> &classFigures()
{
    static const std::vector<const RecordedFigure *> figures = {
        recordedFigure("mean_depth_mm"),
        recordedFigure("correct_depth_percent"),
        recordedFigure("mean_rate_per_min"),
        recordedFigure("correct_rate_percent"),
        recordedFigure("complete_release_percent"),
        recordedFigure("compression_fraction"),
        recordedFigure("longest_pause_s"),
        recordedFigure("mean_volume_ml"),
        recordedFigure("correct_volume_percent"),
    };
    return figures;
}

std::optional<double> SessionResult::figure(const char *key) const
{
    const auto &all = classFigures();
    for (std::size_t i = 0; i < all.size() && i < figures.size(); ++i) {
        if (qstrcmp(all[i]->key, key) == 0)
            return figures[i];
    }
    return std::nullopt;
}

std::optional<bool> SessionResult::isPassed() const
{
    if (!score || basicThreshold <= 0)
        return std::nullopt;
    return verdictOn(*score, basicThreshold, advancedThreshold).isPassed;
}

SessionResult resultOf(const SessionReview &review)
{
    SessionResult result;
    result.learners = review.figures.learners;
    result.start = review.figures.start();
    result.targets = review.targets;
    if (review.figures.hasScores) {
        result.score = review.figures.overallScore;
        result.basicThreshold = review.figures.basicThreshold;
        result.advancedThreshold = review.figures.advancedThreshold;
    }
    for (const RecordedFigure *figure : classFigures())
        result.figures.push_back(figure->value(review));
    const Feedback feedback = feedbackOn(review);
    for (const Finding &finding : feedback.toWorkOn) {
        result.toWorkOn.push_back(finding.prompt);
        result.judged.push_back(finding.skill);
    }
    for (const Finding &finding : feedback.good)
        result.judged.push_back(finding.skill);
    return result;
}

bool isEarlier(const SessionResult &a, const SessionResult &b)
{
    return b.start.isValid() && (!a.start.isValid() || a.start < b.start);
}

std::vector<SessionResult> earlierOf(const SessionResult &result,
                                     const std::vector<SessionResult> &results)
{
    const auto namesOf = [](const SessionResult &each) {
        QStringList names = each.learners;
        names.sort();
        return names;
    };
    std::vector<SessionResult> earlier;
    if (result.learners.isEmpty())
        return earlier;
    const QStringList names = namesOf(result);
    std::copy_if(results.begin(), results.end(), std::back_inserter(earlier),
                 [&](const SessionResult &each) {
                     return each.start.isValid() && isEarlier(each, result)
                         && namesOf(each) == names;
                 });
    std::stable_sort(earlier.begin(), earlier.end(), isEarlier);
    return earlier;
}

ClassFigures classFiguresOf(const std::vector<SessionResult> &results)
{
    ClassFigures figures;
    figures.sessions = static_cast<int>(results.size());
    QHash<QString, std::size_t> places;
    for (const SessionResult &result : results) {
        QStringList names = result.learners.isEmpty() ? QStringList(QString()) : result.learners;
        names.removeDuplicates();
        for (const QString &name : names) {
            if (!places.contains(name)) {
                places.insert(name, figures.rows.size());
                figures.rows.push_back({name, 0, result});
            }
            ClassRow &row = figures.rows[places.value(name)];
            if (!isEarlier(result, row.last))
                row.last = result;
            ++row.sessions;
        }
    }
    QCollator collator;
    collator.setNumericMode(true);
    std::stable_sort(figures.rows.begin(), figures.rows.end(),
                     [&collator](const ClassRow &a, const ClassRow &b) {
                         if (a.learner.isEmpty() || b.learner.isEmpty())
                             return !a.learner.isEmpty() && b.learner.isEmpty();
                         return collator.compare(a.learner, b.learner) < 0;
                     });

    Sum scores;
    std::vector<Sum> sums(classFigures().size());
    for (const ClassRow &row : figures.rows) {
        const SessionResult &last = row.last;
        scores.add(last.score ? std::optional<double>(*last.score) : std::nullopt);
        figures.withThreshold += last.isPassed().has_value();
        figures.passed += last.isPassed().value_or(false);
        for (std::size_t i = 0; i < sums.size() && i < last.figures.size(); ++i)
            sums[i].add(last.figures[i]);
    }
    figures.meanScore = scores.mean();
    for (std::size_t i = 0; i < sums.size(); ++i) {
        const std::optional<double> mean = sums[i].mean();
        figures.means.push_back(mean ? std::optional(classFigures()[i]->rounded(*mean)) : mean);
    }
    figures.faults = sharedFaults(figures.rows);
    return figures;
}

QString learnerText(const QString &name)
{
    return name.trimmed().isEmpty() ? QCoreApplication::translate("sessionreview", "(no name)")
                                    : name;
}

QString countText(int count, int all)
{
    return QCoreApplication::translate("sessionreview", "%1 of %2").arg(count).arg(all);
}

} // namespace sessionreview
