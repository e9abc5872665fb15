// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "OrderedParts.h"
#include "Progress.h"
#include "private/AtomicFile.h"
#include "private/PrintableText.h"
#include "sessionfiles/SessionFile.h"
#include "sessionfiles/SessionTable.h"
#include "sessionfiles/TableWriter.h"

#include <CPRData.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>
#include <vector>

namespace {

using sessionfiles::SessionTable;
using sessionfiles::TableWriter;

struct ExportOptions {
    std::vector<std::string> sessions;
    std::string what;
    std::string format;
    std::vector<std::string> columns;
    std::string separator = ",";
    bool raw = false;
    std::string output;
    bool force = false;
    int jobs = 1;
};

// Where an export goes: stdout, or a file that gets its name only when it is complete.
class Output {
public:
    bool open(const QString &name)
    {
        m_name = name.isEmpty() ? QStringLiteral("stdout") : name;
        if (name.isEmpty())
            return m_stdout.open(stdout, QIODevice::WriteOnly);
        m_file = std::make_unique<AtomicFile>(name);
        return m_file->open(QIODevice::WriteOnly);
    }
    QIODevice *device() { return m_file ? static_cast<QIODevice *>(m_file.get()) : &m_stdout; }
    bool commit() { return m_file ? m_file->finish() : m_stdout.flush(); }
    QString whyNotWritten()
    {
        return QStringLiteral("%1 cannot be written: %2").arg(m_name, device()->errorString());
    }

private:
    QString m_name;
    QFile m_stdout;
    std::unique_ptr<AtomicFile> m_file;
};

// The form of an export: a begin, a part per session, an end, and a separator between parts that
// are not empty. Parts are independent, so each can be made by a thread of its own.
class Document {
public:
    virtual ~Document() = default;
    virtual QByteArray begin() const = 0;
    virtual QByteArray separator() const = 0;
    virtual QByteArray end() const = 0;
    virtual bool writePart(const QString &name, const CPRData &session, QIODevice *part) const = 0;

protected:
    Document() = default;
    Q_DISABLE_COPY(Document)
};

// One session is an object; several are an array of them.
class TelemetryDocument final : public Document {
public:
    explicit TelemetryDocument(bool hasManySessions) : m_isArray(hasManySessions) { }

    QByteArray begin() const override { return m_isArray ? "[" : ""; }
    QByteArray separator() const override { return ","; }
    QByteArray end() const override { return m_isArray ? arrayEnd : ""; }
    bool writePart(const QString &name, const CPRData &session, QIODevice *part) const override
    {
        QVariantMap maps{{QStringLiteral("file"), name}};
        session.cprEvents()->telemetryTrainingSessionScoreData(maps);
        session.cprEvents()->telemetryTrainingSessionGuidelineData(maps);
        const QJsonObject object = QJsonObject::fromVariantMap(maps);
        QByteArray bytes =
            m_isArray ? QJsonDocument(QJsonArray{object}).toJson() : QJsonDocument(object).toJson();
        if (m_isArray)
            bytes = bytes.mid(1, bytes.size() - 1 - int(qstrlen(arrayEnd)));
        bytes = PrintableText::escapedLines(QString::fromUtf8(bytes)).toUtf8();
        return part->write(bytes) == bytes.size();
    }

private:
    static constexpr char arrayEnd[] = "\n]\n";
    bool m_isArray;
};

// The rows of several sessions begin with the name of the file that they come from.
class TableDocument final : public Document {
public:
    TableDocument(std::unique_ptr<SessionTable> table, const ExportOptions &options)
        : m_table(std::move(table)), m_isJson(options.format == "json"),
          m_csvSeparator(QString::fromStdString(options.separator)),
          m_csvTexts(options.raw ? TableWriter::Texts::Raw : TableWriter::Texts::Harmless),
          m_hasFileColumn(options.sessions.size() > 1), m_columns(m_table->columns())
    {
        if (m_hasFileColumn)
            m_columns.prepend({QStringLiteral("file"), QString()});
    }

    QByteArray begin() const override
    {
        return written([this](TableWriter &writer) { writer.begin(m_columns); });
    }
    QByteArray separator() const override { return m_isJson ? "," : ""; }
    QByteArray end() const override
    {
        return written([](TableWriter &writer) { writer.end(); });
    }
    bool writePart(const QString &name, const CPRData &session, QIODevice *part) const override
    {
        const std::unique_ptr<TableWriter> writer = writerTo(part);
        writer->beginPart(m_columns);
        return m_table->writeRows(session, [&](TableWriter::Row row) {
            if (m_hasFileColumn)
                row.prepend(name);
            return writer->write(row);
        });
    }

private:
    std::unique_ptr<TableWriter> writerTo(QIODevice *device) const
    {
        return m_isJson ? TableWriter::json(device)
                        : TableWriter::csv(device, m_csvSeparator, m_csvTexts);
    }
    template <typename Write> QByteArray written(Write write) const
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        write(*writerTo(&buffer));
        return buffer.data();
    }

    std::unique_ptr<SessionTable> m_table;
    bool m_isJson;
    QString m_csvSeparator;
    TableWriter::Texts m_csvTexts;
    bool m_hasFileColumn;
    QVector<TableWriter::Column> m_columns;
};

// What became of a file.
enum PartResult { Complete, Damaged, NoSession, NotWritten };

int writePart(const QString &name, const Document &document, QIODevice *part)
{
    CPRData session;
    const sessionfiles::LoadResult loaded = sessionfiles::load(name, session);
    if (!loaded.hasSession())
        return NoSession;
    if (!document.writePart(name, session, part))
        return NotWritten;
    return loaded.isComplete ? Complete : Damaged;
}

// Puts the parts together. Reports archives that are missing or damaged.
class Export {
public:
    Export(const ExportOptions &options, const Document &document, QIODevice *device)
        : m_options(options), m_document(document), m_device(device)
    {
    }

    // False when the output cannot be written.
    bool run()
    {
        return write(m_document.begin())
            && OrderedParts::run(
                   static_cast<int>(m_options.sessions.size()), m_options.jobs,
                   [this](int index, QIODevice *part) {
                       return writePart(nameAt(index), m_document, part);
                   },
                   [this](int index, int result, QFileDevice *part) {
                       return addPart(nameAt(index), result, part);
                   })
            && write(m_document.end());
    }
    bool isComplete() const { return m_isComplete; }
    // A part could not be stored until its turn came.
    bool lacksTemporaryFile() const { return m_lacksTemporaryFile; }
    // At least one archive could be read, if only in part.
    bool hasSession() const { return m_hasSession; }

private:
    QString nameAt(int index) const { return fileName(m_options.sessions.at(std::size_t(index))); }

    bool addPart(const QString &name, int result, QFileDevice *part)
    {
        m_lacksTemporaryFile = result == NotWritten || result == OrderedParts::noTemporaryFile;
        if (m_lacksTemporaryFile)
            return false;
        m_progress.report(++m_done, static_cast<qint64>(m_options.sessions.size()));
        if (result != Complete)
            complainOf(name, result);
        if (result != Complete && result != Damaged)
            return true;
        m_hasSession = true;
        return append(part);
    }

    void complainOf(const QString &name, int result)
    {
        m_isComplete = false;
        m_progress.hide();
        complain(result == Damaged
                     ? QStringLiteral("%1 is damaged; what could be read is exported").arg(name)
                     : whyNoSession(name));
    }

    bool append(QFileDevice *part)
    {
        constexpr qint64 blockSize = 1 << 16;
        QByteArray block = part->read(blockSize);
        if (!block.isEmpty() && m_hasPart && !write(m_document.separator()))
            return false;
        m_hasPart = m_hasPart || !block.isEmpty();
        for (; !block.isEmpty(); block = part->read(blockSize)) {
            if (!write(block))
                return false;
        }
        m_lacksTemporaryFile = part->error() != QFileDevice::NoError;
        return !m_lacksTemporaryFile;
    }

    bool write(const QByteArray &bytes) { return m_device->write(bytes) == bytes.size(); }

    const ExportOptions &m_options;
    const Document &m_document;
    QIODevice *m_device;
    Progress m_progress{QStringLiteral("Exporting")};
    qint64 m_done = 0;
    bool m_isComplete = true;
    bool m_hasSession = false;
    bool m_lacksTemporaryFile = false;
    bool m_hasPart = false;
};

ExitStatus runExport(ExportOptions options)
{
    if (options.separator == "\\t")
        options.separator = "\t";
    const char separator = options.separator.size() == 1 ? options.separator.front() : '"';
    const bool isSeparator = separator == '\t' || (separator >= ' ' && separator <= '~');
    if (!isSeparator || separator == '"')
        return refuse(QStringLiteral("--separator takes one character of ASCII but no quotation "
                                     "mark, or \\t for a tab"));
    const bool isTelemetry = options.what == "telemetry";
    if (isTelemetry && options.format == "csv")
        return refuse(QStringLiteral("telemetry is exported as JSON only; use --format json"));
    std::unique_ptr<Document> document;
    if (isTelemetry) {
        document = std::make_unique<TelemetryDocument>(options.sessions.size() > 1);
    } else {
        QStringList columns;
        for (const std::string &column : options.columns)
            columns.append(QString::fromStdString(column));
        QString error;
        auto table = SessionTable::create(QString::fromStdString(options.what), columns, &error);
        if (!table)
            return refuse(error);
        document = std::make_unique<TableDocument>(std::move(table), options);
    }

    Output output;
    const QString name = fileName(options.output);
    QStringList inputs;
    for (const std::string &session : options.sessions)
        inputs.append(fileName(session));
    if (!name.isEmpty() && !mayWrite(name, inputs, options.force))
        return ExitStatus::WrongUsage;
    if (!output.open(name))
        return fail(output.whyNotWritten());
    Export job(options, *document, output.device());
    const bool isWritten = job.run();
    if (isWritten && !job.hasSession())
        return ExitStatus::Failed;
    if (!isWritten && job.lacksTemporaryFile())
        return fail(QStringLiteral("a temporary file in %1 cannot be written; is there room?")
                        .arg(QDir::tempPath()));
    if (!isWritten || !output.commit())
        return fail(output.whyNotWritten());
    return job.isComplete() ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

void addExportCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<ExportOptions>();
    CLI::App *command = app.add_subcommand("export", "Put sessions into a table or JSON");
    command
        ->add_option("sessions", options->sessions,
                     "Session archives or recorded logs; several make one table")
        ->required()
        ->type_name("SESSION");
    command->add_option("--what", options->what, "What to export")
        ->required()
        ->check(CLI::IsMember({"summary", "events", "waves", "telemetry", "guidelines"}));
    command
        ->add_option("--format", options->format,
                     "csv (the default), or json; telemetry is JSON only")
        ->check(CLI::IsMember({"csv", "json"}));
    command
        ->add_option("--columns", options->columns,
                     "Columns of summary and events instead of the usual ones, separated by "
                     "commas: parameter keys, for summary recorded figures too, and for events "
                     "type, start, end")
        ->type_name("NAMES")
        ->delimiter(',');
    command
        ->add_option("--separator", options->separator,
                     "Separator of CSV cells; ';' makes the decimal sign a comma")
        ->type_name("CHARACTER")
        ->capture_default_str();
    command->add_flag("--raw", options->raw,
                      "Texts in CSV as the session has them, even if a spreadsheet would compute "
                      "them; for programs");
    command->add_option("-o,--output", options->output, "File to write instead of stdout")
        ->type_name("FILE");
    command->add_flag("--force", options->force, "Replace a file that exists");
    command
        ->add_option("-j,--jobs", options->jobs,
                     "Archives that are read at once, each in a thread of its own")
        ->check(CLI::Range(1, OrderedParts::maxJobs))
        ->capture_default_str();
    command->footer(
        "A row of summary is a session, of events an event, of waves a sample, of guidelines\n"
        "a value. A column's unit stands in brackets behind its name; depths are in mm.\n"
        "A cell is empty, in JSON null, for what the manikin has not sent.\n"
        "Examples:\n"
        "  cprsession export *.zip --what summary -j 4 -o course.csv\n"
        "  cprsession export a.zip --what events --columns type,start,compDepth\n"
        "  cprsession export a.zip --what telemetry --format json\n"
        "  cprsession export a.zip --what waves --separator ';'");
    command->callback([options, &run] { run.verb = [options] { return runExport(*options); }; });
}
