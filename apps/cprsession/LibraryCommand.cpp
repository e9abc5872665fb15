// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "FiguresObject.h"
#include "OrderedParts.h"
#include "Progress.h"
#include "private/PrintableText.h"
#include "sessionlibrary/LearnerChange.h"
#include "sessionlibrary/LibraryScan.h"
#include "sessionlibrary/SessionLibrary.h"
#include "sessionreview/RecordedFigures.h"
#include "sessionreview/Words.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>

#include <array>
#include <memory>
#include <vector>

namespace {

using sessionlibrary::FileProblem;
using sessionlibrary::Filter;
using sessionlibrary::LearnerChange;
using sessionlibrary::ScanResult;
using sessionlibrary::SessionEntry;
using sessionlibrary::SessionLibrary;
using sessionlibrary::State;

struct LibraryOptions {
    std::string folder;
    std::string text; // to be found; a learner's name
    std::string newName;
    std::vector<std::string> files;
    int jobs = qBound(1, QThread::idealThreadCount(), OrderedParts::maxJobs);
    bool asJson = false;
    bool inArchives = false;
};

QString textOf(const std::string &argument)
{
    return QString::fromLocal8Bit(argument.c_str());
}

void printJson(const QJsonDocument &document)
{
    print(QString::fromUtf8(document.toJson()));
}

QJsonArray problemsArray(const QVector<FileProblem> &problems)
{
    QJsonArray array;
    for (const FileProblem &problem : problems)
        array.append(QJsonObject{{QStringLiteral("file"), problem.file},
                                 {QStringLiteral("reason"), problem.reason}});
    return array;
}

void complainOf(const QString &folder, const QVector<FileProblem> &problems)
{
    for (const FileProblem &problem : problems)
        complain(QStringLiteral("%1: %2").arg(QDir(folder).filePath(problem.file), problem.reason));
}

// The library, brought up to date; null when that cannot be, which is complained of.
std::unique_ptr<SessionLibrary> scanned(const LibraryOptions &options, ScanResult &result)
{
    auto library = std::make_unique<SessionLibrary>();
    const sessionlibrary::OpenResult opened =
        library->open(fileName(options.folder), sessionlibrary::Check::Thorough);
    if (!opened.reason.isEmpty())
        complain(opened.reason);
    if (!opened.isOpen)
        return nullptr;
    if (opened.isTemporary)
        complain(QStringLiteral("the index is kept only until this command ends"));
    Progress progress(QStringLiteral("Scanning"));
    sessionlibrary::ScanOptions how;
    how.jobs = options.jobs;
    how.advance = [&progress](int done, int total, const QString & /*file*/) {
        progress.report(done, total);
    };
    showLibraryLog(false); // the entries say what is wrong
    result = sessionlibrary::scan(*library, how);
    showLibraryLog(true);
    progress.hide();
    if (!result.error.isEmpty()) {
        complain(result.error);
        return nullptr;
    }
    if (!result.isComplete)
        complainOf(library->folder(), result.problems);
    return library;
}

QString stateText(State state)
{
    constexpr std::array texts{"whole", "salvaged", "damaged"};
    return QString::fromLatin1(texts.at(std::size_t(state)));
}

QJsonObject sessionObject(const SessionEntry &entry)
{
    QJsonObject object = figuresObject(entry.figures);
    QJsonObject recorded;
    const auto &figures = sessionreview::recordedFigures();
    for (std::size_t i = 0; i < figures.size(); ++i)
        recorded.insert(QLatin1String(figures[i].key), orNull(entry.recorded[i]));
    if (entry.state == State::Damaged) { // zeros and names that nobody has read
        for (auto member = object.begin(); member != object.end(); ++member)
            member.value() = QJsonValue();
        object.insert(QStringLiteral("learners"), QJsonArray());
    }
    object.insert(QStringLiteral("recorded"), recorded);
    object.insert(QStringLiteral("file"), entry.file);
    object.insert(QStringLiteral("state"), stateText(entry.state));
    object.insert(QStringLiteral("reason"), orNull(entry.reason));
    object.insert(QStringLiteral("size"), entry.stamp.size);
    constexpr qint64 nsPerMs = 1'000'000;
    object.insert(QStringLiteral("modified"),
                  QDateTime::fromMSecsSinceEpoch(entry.stamp.modifiedNs / nsPerMs, Qt::UTC)
                      .toString(Qt::ISODateWithMs));
    return object;
}

// A table of columns that are as wide as they have to be.
class TextTable {
public:
    explicit TextTable(const QStringList &titles) { add(titles); }

    void add(QStringList cells)
    {
        for (QString &cell : cells)
            cell = PrintableText::shown(cell);
        m_rows.push_back(cells);
    }

    QString text() const
    {
        constexpr int maxWidth = 40;
        QVector<int> widths(m_rows.front().size());
        for (const QStringList &row : m_rows) {
            for (int i = 0; i < row.size(); ++i)
                widths[i] = qMin(maxWidth, qMax(widths[i], int(row.at(i).size())));
        }
        QString text;
        for (const QStringList &row : m_rows) {
            for (int i = 0; i + 1 < row.size(); ++i) {
                const QString &cell = row.at(i);
                text += (cell.size() > maxWidth ? cell.left(maxWidth - 1) + QChar(0x2026)
                                                : cell.leftJustified(widths[i]))
                    + QStringLiteral("  ");
            }
            text += row.last() + QLatin1Char('\n');
        }
        return text;
    }

private:
    std::vector<QStringList> m_rows;
};

// In local time, as people know the day.
QString startText(const SessionEntry &entry)
{
    const QDateTime start = entry.figures.start();
    return start.isValid() ? start.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm"))
                           : QStringLiteral("-");
}

QString lengthText(const SessionEntry &entry)
{
    constexpr int secsPerMinute = 60;
    constexpr int decimal = 10;
    const int secs = entry.figures.secs;
    return secs == 0 ? QStringLiteral("-")
                     : QStringLiteral("%1:%2")
                           .arg(secs / secsPerMinute)
                           .arg(secs % secsPerMinute, 2, decimal, QLatin1Char('0'));
}

QString scoreText(const SessionEntry &entry)
{
    return entry.figures.hasScores ? QStringLiteral("%1 %").arg(entry.figures.overallScore)
                                   : QStringLiteral("-");
}

QString figureText(const SessionEntry &entry, const char *key)
{
    for (const sessionreview::RecordedFigure &figure : sessionreview::recordedFigures()) {
        const std::optional<double> value = entry.recordedValue(key);
        if (value && qstrcmp(figure.key, key) == 0)
            return figure.text(*value, QLocale::c());
    }
    return QStringLiteral("-");
}

QString listText(const std::vector<SessionEntry> &entries)
{
    TextTable table({QStringLiteral("Start"), QStringLiteral("Length"), QStringLiteral("Score"),
                     QStringLiteral("Learners"), QStringLiteral("Protocol"),
                     QStringLiteral("File")});
    for (const SessionEntry &entry : entries)
        table.add({startText(entry), lengthText(entry), scoreText(entry),
                   entry.figures.learners.join(QStringLiteral(", ")),
                   entry.state == State::Damaged
                       ? stateText(entry.state)
                       : sessionreview::protocolText(entry.figures.protocol),
                   entry.state == State::Salvaged ? QStringLiteral("%1 (salvaged)").arg(entry.file)
                                                  : entry.file});
    return table.text();
}

// How a learner has done over time.
QString trendText(const std::vector<SessionEntry> &entries)
{
    TextTable table({QStringLiteral("Start"), QStringLiteral("Score"), QStringLiteral("Depth"),
                     QStringLiteral("Rate"), QStringLiteral("Compression fraction"),
                     QStringLiteral("File")});
    for (const SessionEntry &entry : entries)
        table.add({startText(entry), scoreText(entry), figureText(entry, "mean_depth_mm"),
                   figureText(entry, "mean_rate_per_min"),
                   figureText(entry, "compression_fraction"), entry.file});
    return table.text();
}

ExitStatus show(SessionLibrary &library, const std::optional<std::vector<SessionEntry>> &entries,
                bool asJson, QString (*textOfEntries)(const std::vector<SessionEntry> &))
{
    if (!entries)
        return fail(library.errorString());
    if (asJson) {
        QJsonArray array;
        for (const SessionEntry &entry : *entries)
            array.append(sessionObject(entry));
        printJson(QJsonDocument(array));
    } else {
        print(textOfEntries(*entries));
    }
    return ExitStatus::Done;
}

ExitStatus runScan(const LibraryOptions &options)
{
    ScanResult result;
    const auto library = scanned(options, result);
    if (!library)
        return ExitStatus::Failed;
    if (options.asJson)
        printJson(QJsonDocument(QJsonObject{
            {QStringLiteral("added"), result.added},
            {QStringLiteral("changed"), result.changed},
            {QStringLiteral("removed"), result.removed},
            {QStringLiteral("unchanged"), result.unchanged},
            {QStringLiteral("complete"), result.isComplete},
            {QStringLiteral("problems"), problemsArray(result.problems)},
        }));
    else
        printLine(QStringLiteral("%1 added, %2 changed, %3 removed, %4 unchanged")
                      .arg(result.added)
                      .arg(result.changed)
                      .arg(result.removed)
                      .arg(result.unchanged));
    if (!options.asJson && result.isComplete)
        complainOf(library->folder(), result.problems);
    return result.problems.isEmpty() ? ExitStatus::Done : ExitStatus::Failed;
}

ExitStatus runList(const LibraryOptions &options)
{
    constexpr int all = -1;
    ScanResult result;
    const auto library = scanned(options, result);
    if (!library)
        return ExitStatus::Failed;
    Filter filter;
    filter.text = textOf(options.text);
    const ExitStatus status =
        show(*library, library->page(filter, {}, 0, all), options.asJson, listText);
    return result.isComplete ? status : ExitStatus::Failed;
}

ExitStatus runLearner(const LibraryOptions &options)
{
    ScanResult result;
    const auto library = scanned(options, result);
    if (!library)
        return ExitStatus::Failed;
    const QString name = textOf(options.text);
    const auto entries = library->sessionsOf(sessionlibrary::storedName(name));
    const ExitStatus status = show(*library, entries, options.asJson, trendText);
    if (status == ExitStatus::Done && entries->empty())
        return fail(QStringLiteral("no session has a learner %1").arg(name));
    return status;
}

QJsonObject changeObject(const LearnerChange &change)
{
    return {{QStringLiteral("changed"), QJsonArray::fromStringList(change.changed)},
            {QStringLiteral("left"), problemsArray(change.left)}};
}

sessionlibrary::ChangeProgress reporting(Progress &progress)
{
    return [&progress](int done, int total) {
        progress.report(done, total);
        return true;
    };
}

ExitStatus statusOf(const SessionLibrary &library, const LearnerChange &change)
{
    complainOf(library.folder(), change.left);
    if (!change.error.isEmpty())
        complain(change.error);
    return change.isComplete() ? ExitStatus::Done : ExitStatus::Failed;
}

ExitStatus runRename(const LibraryOptions &options)
{
    const QString newName = textOf(options.newName);
    if (sessionlibrary::storedName(newName).isEmpty())
        return refuse(QStringLiteral("the new name is empty; `library forget` removes a name"));
    ScanResult result;
    const auto library = scanned(options, result);
    if (!library)
        return ExitStatus::Failed;
    if (sessionlibrary::storedName(newName) != newName)
        complain(QStringLiteral("archives separate names by commas; this one is stored as %1")
                     .arg(sessionlibrary::storedName(newName)));
    QStringList files;
    for (const std::string &file : options.files)
        files.append(QDir::cleanPath(fileName(file)));
    LearnerChange change;
    {
        Progress progress(QStringLiteral("Saving"));
        change = sessionlibrary::renameLearner(*library, textOf(options.text), newName, files,
                                               reporting(progress));
    }
    if (options.asJson)
        printJson(QJsonDocument(changeObject(change)));
    else
        printLine(QStringLiteral("%1 archives changed").arg(change.changed.size()));
    const ExitStatus status = statusOf(*library, change);
    if (status == ExitStatus::Done && change.changed.isEmpty())
        return fail(QStringLiteral("no session has a learner %1").arg(textOf(options.text)));
    return status;
}

ExitStatus runForget(const LibraryOptions &options)
{
    ScanResult result;
    const auto library = scanned(options, result);
    if (!library)
        return ExitStatus::Failed;
    sessionlibrary::ForgottenLearner forgotten;
    {
        Progress progress(QStringLiteral("Saving"));
        forgotten = sessionlibrary::forgetLearner(*library, textOf(options.text),
                                                  options.inArchives, reporting(progress));
    }
    if (options.asJson) {
        QJsonObject object = changeObject(forgotten.change);
        object.insert(QStringLiteral("forgotten"), forgotten.isForgotten);
        object.insert(QStringLiteral("entries"), forgotten.entries);
        object.insert(QStringLiteral("archives"), QJsonArray::fromStringList(forgotten.archives));
        object.insert(QStringLiteral("named"), QJsonArray::fromStringList(forgotten.named));
        printJson(QJsonDocument(object));
    } else if (forgotten.isForgotten) {
        printLine(QStringLiteral("%1 entries removed from the index, %2 archives changed")
                      .arg(forgotten.entries)
                      .arg(forgotten.change.changed.size()));
        if (!forgotten.archives.isEmpty())
            printLine(QStringLiteral("%1 archives still hold the name%2, and the next scan will "
                                     "find it there")
                          .arg(forgotten.archives.size())
                          .arg(options.inArchives
                                   ? QString()
                                   : QStringLiteral("; --archives removes it from them")));
        if (!forgotten.named.isEmpty())
            printLine(QStringLiteral("%1 files have the name in their own; rename them: %2")
                          .arg(forgotten.named.size())
                          .arg(forgotten.named.join(QStringLiteral(", "))));
    }
    const ExitStatus status = statusOf(*library, forgotten.change);
    return forgotten.isForgotten ? status : ExitStatus::Failed;
}

} // namespace

void addLibraryCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<LibraryOptions>();
    CLI::App *command =
        app.add_subcommand("library", "Find sessions and learners in a folder of archives");
    command->add_option("--folder", options->folder, "The folder; those below it belong to it")
        ->required()
        ->type_name("DIR");
    command->add_flag("--json", options->asJson, "Print JSON");
    command->add_option("-j,--jobs", options->jobs, "Archives that are read at once")
        ->check(CLI::Range(1, OrderedParts::maxJobs));
    command->require_subcommand(1);
    const auto add = [&](const char *name, const char *description,
                         ExitStatus (*verb)(const LibraryOptions &)) {
        CLI::App *part = command->add_subcommand(name, description);
        part->callback(
            [options, &run, verb] { run.verb = [options, verb] { return verb(*options); }; });
        return part;
    };
    add("scan", "Bring the index up to date, and say what has changed", runScan);
    add("list", "List the sessions, the newest first", runList);
    add("search", "List the sessions in which each word begins a word", runList)
        ->add_option("text", options->text,
                     "Words of learners, file names, manikins, notes, protocols")
        ->required()
        ->type_name("TEXT");
    add("learner", "List the sessions of a learner in order of time", runLearner)
        ->add_option("name", options->text, "The name")
        ->required()
        ->type_name("NAME");
    CLI::App *rename = add("rename", "Correct a learner's name in the archives", runRename);
    rename->add_option("name", options->text, "The name that archives have")
        ->required()
        ->type_name("NAME");
    rename->add_option("new", options->newName, "The right one")->required()->type_name("NEW");
    rename
        ->add_option("--file", options->files,
                     "Only in this archive, as the list names it; may be given several times")
        ->type_name("FILE");
    CLI::App *forget = add("forget", "Remove a learner's name from the index", runForget);
    forget->add_option("name", options->text, "The name")->required()->type_name("NAME");
    forget->add_flag("--archives", options->inArchives,
                     "Remove it from the archives too: they are saved again without it");
    command->footer(
        "The index of a folder lies in your own data folder, readable by you alone; it can\n"
        "be deleted and comes back with the next command. Each command first reads what is\n"
        "new or has changed. The members of a session in JSON are those of `info --json`;\n"
        "what is not known is null.\n"
        "rename saves archives that load whole; a learner is a name, so of two people with\n"
        "one name give the archives of one with --file. forget leaves archives alone, and\n"
        "the next command finds the name in them again, unless --archives is given: then\n"
        "sessions stay, without the name. Damaged archives are never changed.\n"
        "Exit status: 0 done; 1 an archive is damaged, cannot be read or was not changed.\n"
        "Examples:\n"
        "  cprsession library scan --folder sessions\n"
        "  cprsession library search \"mira 2026\" --folder sessions --json\n"
        "  cprsession library rename \"Mira Holn\" \"Mira Holm\" --folder sessions\n"
        "  cprsession library forget \"Mira Holm\" --archives --folder sessions");
}
