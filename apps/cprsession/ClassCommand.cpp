// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Language.h"
#include "Paper.h"
#include "Progress.h"
#include "private/AtomicFile.h"
#include "private/PrintableText.h"
#include "sessionfiles/SessionFile.h"
#include "sessionfiles/TableWriter.h"

#include <CPRData.h>
#include <sessionplot/ClassReport.h>
#include <sessionreview/ClassFigures.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace {

using sessionfiles::TableWriter;
using sessionreview::classFigures;
using sessionreview::ClassFigures;
using sessionreview::ClassRow;
using sessionreview::RecordedFigure;
using sessionreview::SessionResult;

struct ClassOptions {
    std::vector<std::string> sessions;
    std::string format;
    std::string output;
    std::string language = "en";
    std::string paper = "A4";
    bool force = false;
};

bool isPdf(const ClassOptions &options)
{
    return options.format == "pdf";
}

// The archives of a folder, in the order of their names; any other name stands for itself.
QStringList sessionsOf(const QString &name)
{
    const QDir folder(name);
    if (!QFileInfo(name).isDir())
        return {name};
    QStringList names;
    for (const QString &entry :
         folder.entryList({QStringLiteral("*.zip")}, QDir::Files, QDir::Name))
        names.append(folder.filePath(entry));
    return names;
}

QJsonValue valueOf(const std::optional<double> &value)
{
    return value ? QJsonValue(*value) : QJsonValue();
}

void insertFigures(QJsonObject &object, const std::vector<std::optional<double>> &values)
{
    for (std::size_t i = 0; i < classFigures().size(); ++i)
        object.insert(QLatin1String(classFigures()[i]->key), valueOf(values[i]));
}

QString startText(const SessionResult &result)
{
    return result.start.isValid() ? result.start.toString(Qt::ISODate) : QString();
}

QStringList faultKeys(const SessionResult &result)
{
    QStringList keys;
    for (const sessionreview::Prompt fault : result.toWorkOn)
        keys.append(QLatin1String(sessionreview::keyOf(fault)));
    return keys;
}

QByteArray jsonOf(const ClassFigures &figures)
{
    const auto orNull = [](const QString &text) {
        return text.isEmpty() ? QJsonValue() : QJsonValue(text);
    };
    QJsonArray learners;
    for (const ClassRow &row : figures.rows) {
        const std::optional<bool> isPassed = row.last.isPassed();
        QJsonObject learner{
            {QStringLiteral("learner"), orNull(row.learner)},
            {QStringLiteral("sessions"), row.sessions},
            {QStringLiteral("last_start"), orNull(startText(row.last))},
            {QStringLiteral("overall_score"),
             row.last.score ? QJsonValue(*row.last.score) : QJsonValue()},
            {QStringLiteral("passed"), isPassed ? QJsonValue(*isPassed) : QJsonValue()},
            {QStringLiteral("to_work_on"), QJsonArray::fromStringList(faultKeys(row.last))},
        };
        insertFigures(learner, row.last.figures);
        learners.append(learner);
    }
    QJsonArray faults;
    for (const sessionreview::SharedFault &fault : figures.faults) {
        faults.append(QJsonObject{
            {QStringLiteral("fault"), QLatin1String(sessionreview::keyOf(fault.fault))},
            {QStringLiteral("text"), sessionreview::faultText(fault.fault)},
            {QStringLiteral("learners"), fault.learners},
            {QStringLiteral("of"), fault.judged},
        });
    }
    QJsonObject means{{QStringLiteral("overall_score"), valueOf(figures.meanScore)}};
    insertFigures(means, figures.means);
    const QJsonObject object{
        {QStringLiteral("sessions"), figures.sessions},
        {QStringLiteral("learners"), learners},
        {QStringLiteral("means"), means},
        {QStringLiteral("passed"), figures.passed},
        {QStringLiteral("passed_of"), figures.withThreshold},
        {QStringLiteral("shared_faults"), faults},
    };
    return PrintableText::escapedLines(QString::fromUtf8(QJsonDocument(object).toJson())).toUtf8();
}

QByteArray csvOf(const ClassFigures &figures)
{
    QVector<TableWriter::Column> columns{{QStringLiteral("learner"), {}},
                                         {QStringLiteral("sessions"), {}},
                                         {QStringLiteral("last_start"), {}},
                                         {QStringLiteral("overall_score"), {}},
                                         {QStringLiteral("passed"), {}}};
    for (const RecordedFigure *figure : classFigures())
        columns.append({QLatin1String(figure->key), {}});
    columns.append({QStringLiteral("to_work_on"), {}});

    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const auto writer = TableWriter::csv(&buffer, QStringLiteral(","));
    writer->begin(columns);
    for (const ClassRow &row : figures.rows) {
        const std::optional<bool> isPassed = row.last.isPassed();
        TableWriter::Row cells{sessionreview::learnerText(row.learner), row.sessions,
                               startText(row.last),
                               row.last.score ? QVariant(*row.last.score) : QVariant(),
                               isPassed ? QVariant(*isPassed) : QVariant()};
        for (const std::optional<double> &value : row.last.figures)
            cells.append(value ? QVariant(*value) : QVariant());
        cells.append(faultKeys(row.last).join(QLatin1Char(' ')));
        writer->write(cells);
    }
    writer->end();
    return buffer.data();
}

// Columns of words for people, each as wide as what stands in it.
QString aligned(const std::vector<QStringList> &rows)
{
    std::vector<int> widths;
    for (const QStringList &row : rows) {
        widths.resize(std::max(widths.size(), std::size_t(row.size())));
        for (int i = 0; i < row.size(); ++i)
            widths[std::size_t(i)] = std::max(widths[std::size_t(i)], int(row.at(i).size()));
    }
    QString text;
    for (const QStringList &row : rows) {
        QString line;
        for (int i = 0; i < row.size(); ++i) {
            const int width = widths[std::size_t(i)];
            line += i == 0 ? row.at(i).leftJustified(width)
                           : QStringLiteral("  ") + row.at(i).rightJustified(width);
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

// In the words of the page.
QString pageWord(const char *text)
{
    return QCoreApplication::translate("sessionplot", text);
}

QString textOf(const ClassFigures &figures)
{
    constexpr int maxNameLength = 30;
    const QLocale locale;
    const QString dash(QStringLiteral("-"));
    std::vector<QStringList> rows;
    // Heads of several words take as many lines, so that the table stays narrow.
    std::vector<QStringList> heads{{pageWord("Learner")},
                                   {pageWord("Sessions")},
                                   pageWord("Last session").split(QLatin1Char(' ')),
                                   {pageWord("Score"), QStringLiteral("%")}};
    for (const RecordedFigure *figure : classFigures())
        heads.push_back(figure->titleText().split(QLatin1Char(' ')) << figure->unitText());
    const int lines =
        std::max_element(heads.begin(), heads.end(), [](const auto &a, const auto &b) {
            return a.size() < b.size();
        })->size();
    for (int line = 0; line < lines; ++line) {
        QStringList row;
        for (const QStringList &head : heads)
            row.append(head.value(line - (lines - static_cast<int>(head.size()))));
        rows.push_back(row);
    }
    const auto add = [&](QStringList row, const std::vector<std::optional<double>> &values) {
        for (std::size_t i = 0; i < values.size(); ++i)
            row.append(values[i] ? classFigures()[i]->number(*values[i], locale) : dash);
        rows.push_back(row);
    };
    for (const ClassRow &row : figures.rows) {
        QString name = PrintableText::escaped(sessionreview::learnerText(row.learner));
        if (name.size() > maxNameLength)
            name = name.left(maxNameLength - 3) + QStringLiteral("...");
        add({name, QString::number(row.sessions),
             row.last.start.isValid() ? row.last.start.date().toString(Qt::ISODate) : dash,
             row.last.score ? QString::number(*row.last.score) : dash},
            row.last.figures);
    }
    add({pageWord("Mean of the class"), QString::number(figures.sessions), QString(),
         figures.meanScore ? QString::number(std::lround(*figures.meanScore)) : dash},
        figures.means);
    QString text = aligned(rows);
    if (figures.withThreshold > 0)
        text += QLatin1Char('\n')
            + pageWord("Passed: %1")
                  .arg(sessionreview::countText(figures.passed, figures.withThreshold))
            + QLatin1Char('\n');
    if (!figures.faults.empty())
        text += QLatin1Char('\n') + pageWord("What the class has to work on") + QLatin1Char('\n');
    for (const sessionreview::SharedFault &fault : figures.faults)
        text += QStringLiteral("  %1  %2\n")
                    .arg(sessionreview::countText(fault.learners, fault.judged),
                         sessionreview::faultText(fault.fault));
    return text;
}

ExitStatus write(const ClassOptions &options, const ClassFigures &figures)
{
    const QString name = fileName(options.output);
    QString error;
    if (isPdf(options)) {
        const sessionplot::ClassReport report(figures);
        return sessionplot::writeClassReport(name, report, paperNamed(options.paper), &error)
            ? ExitStatus::Done
            : fail(error);
    }
    const QByteArray bytes = options.format == "json" ? jsonOf(figures)
        : options.format == "csv"                     ? csvOf(figures)
                                                      : textOf(figures).toUtf8();
    if (name.isEmpty()) {
        QFile out;
        return out.open(stdout, QIODevice::WriteOnly) && out.write(bytes) == bytes.size()
                && out.flush()
            ? ExitStatus::Done
            : fail(QStringLiteral("stdout cannot be written: %1").arg(out.errorString()));
    }
    AtomicFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.finish()
        ? ExitStatus::Done
        : fail(QStringLiteral("%1 cannot be written: %2").arg(name, file.errorString()));
}

ExitStatus runClass(const ClassOptions &options)
{
    const QString target = fileName(options.output);
    if (isPdf(options) && target.isEmpty())
        return refuse(QStringLiteral("a PDF needs -o FILE"));
    QStringList names;
    for (const std::string &argument : options.sessions) {
        const QStringList found = sessionsOf(fileName(argument));
        if (found.isEmpty())
            return fail(
                QStringLiteral("there is no session archive in %1").arg(fileName(argument)));
        names += found;
    }
    if (!target.isEmpty() && !mayWrite(target, names, options.force))
        return ExitStatus::WrongUsage;

    Language::use(options.language);
    Progress progress(QStringLiteral("Reading sessions"));
    std::vector<SessionResult> results;
    bool isComplete = true;
    qint64 done = 0;
    for (const QString &name : std::as_const(names)) {
        CPRData session;
        const sessionfiles::LoadResult loaded = loadSession(name, session);
        if (loaded.hasSession())
            results.push_back(sessionreview::resultOf(sessionreview::reviewOf(session)));
        if (loaded.hasSession() && !loaded.isComplete)
            complain(QStringLiteral("%1 is damaged; what could be read counts").arg(name));
        isComplete = isComplete && loaded.isComplete;
        progress.report(++done, names.size());
    }
    progress.hide();
    if (results.empty())
        return ExitStatus::Failed;
    const ExitStatus written = write(options, sessionreview::classFiguresOf(results));
    return isComplete ? written : std::max(written, ExitStatus::Failed);
}

} // namespace

void addClassCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<ClassOptions>();
    CLI::App *command =
        app.add_subcommand("class", "Show the learners of a class by figures, and what they share");
    command
        ->add_option("sessions", options->sessions,
                     "Session archives or recorded logs, or folders of archives")
        ->required()
        ->type_name("SESSION");
    command
        ->add_option("--format", options->format,
                     "csv, json or pdf; unless given a table for people, or what the suffix of the "
                     "file says")
        ->check(CLI::IsMember({"csv", "json", "pdf"}));
    command->add_option("-o,--output", options->output, "File to write instead of stdout")
        ->type_name("FILE");
    command->add_option("--language", options->language, "Language of titles and advice")
        ->check(CLI::IsMember(Language::all()))
        ->capture_default_str();
    command->add_option("--paper", options->paper, "Size of the pages of a PDF")
        ->check(CLI::IsMember(paperNames()))
        ->capture_default_str();
    command->add_flag("--force", options->force, "Replace a file that exists");
    command->footer("Examples:\n"
                    "  cprsession class monday/\n"
                    "  cprsession class monday/*.zip --format csv -o monday.csv\n"
                    "  cprsession class monday/ -o monday.pdf --language de");
    command->callback([options, &run] {
        if (options->format.empty()) {
            const QString suffix = QFileInfo(fileName(options->output)).suffix().toLower();
            for (const char *format : {"csv", "json", "pdf"}) {
                if (suffix == QLatin1String(format))
                    options->format = format;
            }
        }
        run.needsFonts = isPdf(*options);
        run.verb = [options] { return runClass(*options); };
    });
}
