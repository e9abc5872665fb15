// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Progress.h"
#include "SessionFile.h"
#include "SessionTable.h"
#include "TableWriter.h"

#include <CPRData.h>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <memory>
#include <vector>

namespace {

struct ExportOptions {
    std::vector<std::string> sessions;
    std::string what;
    std::string format;
    std::vector<std::string> columns;
    std::string separator = ",";
    std::string output;
};

// Where an export goes: stdout, or a file that appears under its name only when it is complete.
class Output {
public:
    bool open(const QString &name)
    {
        if (name.isEmpty())
            return m_stdout.open(stdout, QIODevice::WriteOnly);
        m_file = std::make_unique<QSaveFile>(name);
        if (QFileInfo::exists(name) && !QFileInfo(name).isFile())
            return false;
        return m_file->open(QIODevice::WriteOnly);
    }
    QIODevice *device() { return m_file ? static_cast<QIODevice *>(m_file.get()) : &m_stdout; }
    bool commit() { return m_file ? m_file->commit() : m_stdout.flush(); }

private:
    QFile m_stdout;
    std::unique_ptr<QSaveFile> m_file;
};

void complainOfFullDisk()
{
    complain(QStringLiteral("the output cannot be written; is the disk full?"));
}

// What became of the archives. A damaged one is exported as far as it could be read.
struct Outcome {
    bool isWritten = true; // everything was read that can be, and written
    bool isDamaged = false;
};

// Calls take(name, session) for each archive, until one cannot be opened or take() fails.
template <typename Take> Outcome forEachSession(const ExportOptions &options, Take take)
{
    Outcome outcome;
    Progress progress(QStringLiteral("Exporting"));
    qint64 done = 0;
    for (const std::string &argument : options.sessions) {
        const QString name = fileName(argument);
        CPRData session;
        const SessionFile::LoadResult loaded = SessionFile::load(name, session);
        if (!loaded.isArchive) {
            complain(QStringLiteral("%1 cannot be read as a session archive").arg(name));
            outcome.isWritten = false;
            return outcome;
        }
        if (!loaded.isComplete) {
            complain(QStringLiteral("%1 is damaged; what could be read is exported").arg(name));
            outcome.isDamaged = true;
        }
        if (!take(name, session)) {
            complainOfFullDisk();
            outcome.isWritten = false;
            return outcome;
        }
        progress.report(++done, static_cast<qint64>(options.sessions.size()));
    }
    return outcome;
}

Outcome exportTelemetry(const ExportOptions &options, QIODevice *device)
{
    QJsonArray sessions;
    Outcome outcome =
        forEachSession(options, [&sessions](const QString &name, const CPRData &session) {
            QVariantMap maps{{QStringLiteral("file"), name}};
            session.cprEvents()->telemetryTrainingSessionScoreData(maps);
            session.cprEvents()->telemetryTrainingSessionGuidelineData(maps);
            sessions.append(QJsonObject::fromVariantMap(maps));
            return true;
        });
    const QJsonDocument document =
        sessions.size() == 1 ? QJsonDocument(sessions.first().toObject()) : QJsonDocument(sessions);
    const QByteArray bytes = document.toJson();
    outcome.isWritten = outcome.isWritten && device->write(bytes) == bytes.size();
    return outcome;
}

Outcome exportTable(const ExportOptions &options, const SessionTable &table, QIODevice *device)
{
    const std::unique_ptr<TableWriter> writer = options.format == "json"
        ? TableWriter::json(device)
        : TableWriter::csv(device, QString::fromStdString(options.separator));
    const bool hasFileColumn = options.sessions.size() > 1;
    QVector<TableWriter::Column> columns = table.columns();
    if (hasFileColumn)
        columns.prepend({QStringLiteral("file"), QString()});
    writer->begin(columns);
    Outcome outcome = forEachSession(options, [&](const QString &name, const CPRData &session) {
        return table.writeRows(session, [&](TableWriter::Row row) {
            if (hasFileColumn)
                row.prepend(name);
            return writer->write(row);
        });
    });
    outcome.isWritten = writer->end() && outcome.isWritten;
    return outcome;
}

ExitStatus runExport(ExportOptions options)
{
    if (options.separator == "\\t")
        options.separator = "\t";
    if (options.separator.size() != 1) {
        complain(QStringLiteral("--separator takes one character, or \\t for a tab"));
        return ExitStatus::WrongUsage;
    }
    const bool isTelemetry = options.what == "telemetry";
    if (isTelemetry && options.format == "csv") {
        complain(QStringLiteral("telemetry is exported as JSON only; use --format json"));
        return ExitStatus::WrongUsage;
    }
    std::unique_ptr<SessionTable> table;
    if (!isTelemetry) {
        QStringList columns;
        for (const std::string &column : options.columns)
            columns.append(QString::fromStdString(column));
        QString error;
        table = SessionTable::create(QString::fromStdString(options.what), columns, &error);
        if (!table) {
            complain(error);
            return ExitStatus::WrongUsage;
        }
    }

    Output output;
    const QString name = fileName(options.output);
    if (!output.open(name)) {
        complain(
            QStringLiteral("%1 cannot be written; is the directory there and writable?").arg(name));
        return ExitStatus::Failed;
    }
    const Outcome outcome = isTelemetry ? exportTelemetry(options, output.device())
                                        : exportTable(options, *table, output.device());
    if (!outcome.isWritten)
        return ExitStatus::Failed;
    if (!output.commit()) {
        complainOfFullDisk();
        return ExitStatus::Failed;
    }
    return outcome.isDamaged ? ExitStatus::Failed : ExitStatus::Done;
}

} // namespace

void addExportCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<ExportOptions>();
    CLI::App *command = app.add_subcommand("export", "Put sessions into a table or JSON");
    command->add_option("sessions", options->sessions, "Session archives; several make one table")
        ->required()
        ->type_name("SESSION.zip");
    command->add_option("--what", options->what, "What to export")
        ->required()
        ->check(CLI::IsMember({"summary", "events", "waves", "telemetry", "guidelines"}));
    command->add_option("--format", options->format, "csv (the default), or json")
        ->check(CLI::IsMember({"csv", "json"}));
    command
        ->add_option("--columns", options->columns,
                     "Columns of summary and events, separated by commas: parameter keys, and for "
                     "events type, start, end")
        ->delimiter(',');
    command
        ->add_option("--separator", options->separator,
                     "Separator of CSV cells; ';' makes the decimal sign a comma")
        ->capture_default_str();
    command->add_option("-o,--output", options->output, "File to write instead of stdout")
        ->type_name("FILE");
    command->footer("Examples:\n"
                    "  cprsession export *.zip --what summary -o course.csv\n"
                    "  cprsession export a.zip --what events --columns type,start,compDepth\n"
                    "  cprsession export a.zip --what waves --separator ';'");
    command->callback([options, &run] { run.verb = [options] { return runExport(*options); }; });
}
