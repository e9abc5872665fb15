// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Progress.h"
#include "private/FileCalls.h"
#include "sessionfiles/ArchiveSalvage.h"
#include "sessionfiles/SessionFile.h"

#include <CPRData.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/ManikinLogReader.h>
#include <manikinlog/SessionJournal.h>

#include <QFile>
#include <QFileInfo>

#include <memory>

namespace {

using manikinlog::ManikinLogReader;
using manikinlog::SessionJournal;

struct RecoverOptions {
    std::string input;
    std::string session;
    bool force = false;
};

bool isJournal(const QString &name)
{
    return name.endsWith(SessionJournal::nameFor(QString()));
}

ExitStatus nothingIn(const QString &input)
{
    return fail(QStringLiteral("%1 holds nothing that could be saved: no member of a session "
                               "archive and no whole record of a log")
                    .arg(input));
}

// Plays what can be read of the log, saves that and reports how far it goes.
ExitStatus recoverLog(const QString &input, const QString &target)
{
    QString reason;
    // Nobody else takes a journal that is being recovered.
    const std::unique_ptr<QFile> file = isJournal(input)
        ? SessionJournal::claim(FileCalls::resolved(input), &reason)
        : std::make_unique<QFile>(input);
    if (!file)
        return fail(reason);
    if (!file->isOpen() && !file->open(QIODevice::ReadOnly))
        return fail(QStringLiteral("%1 cannot be read: %2").arg(input, file->errorString()));
    CPRData session;
    ManikinLogReader reader(file.get(), input, ManikinLogReader::Damage::IsSkipped);
    qint64 records = 0;
    {
        Progress progress(QStringLiteral("Recovering"));
        manikinlog::ManikinLogPlayer(&session).play(reader, [&](qint64 /*msecs*/) {
            ++records;
            progress.report(file->pos(), file->size());
        });
    }
    if (records == 0)
        return reader.errorString().isEmpty() ? nothingIn(input) : fail(reader.errorString());
    const sessionfiles::SaveResult saved = sessionfiles::save(target, session);
    if (!saved.isSaved)
        return fail(saved.reason);
    if (!saved.isComplete)
        complain(saved.reason);

    printLine(QStringLiteral("%1: %2 records give a session of %3 s with %4 events")
                  .arg(input, QString::number(records),
                       QString::number(session.compressionData()->sessionTime() / 1000.0, 'f', 1),
                       QString::number(session.cprEvents()->events().size())));
    if (const qint64 lines = reader.skippedLines(); lines == 1)
        printLine(QStringLiteral("a line is left out: %1").arg(reader.skippedError()));
    else if (lines > 1)
        printLine(QStringLiteral("%1 lines are left out, the first: %2")
                      .arg(QString::number(lines), reader.skippedError()));
    if (!reader.errorString().isEmpty())
        printLine(QStringLiteral("the rest is left out: %1").arg(reader.errorString()));
    const bool isAll = reader.skippedLines() == 0 && reader.errorString().isEmpty();
    return isAll && saved.isComplete ? ExitStatus::Done : ExitStatus::Failed;
}

ExitStatus recoverArchive(const QString &input, const QString &target)
{
    sessionfiles::SalvagedSession session;
    {
        Progress progress(QStringLiteral("Recovering"));
        showLibraryLog(false); // of each attempt
        session = sessionfiles::salvage(
            input, [&progress](qint64 done, qint64 total) { progress.report(done, total); });
    }
    showLibraryLog(true);
    if (!session.holdsAnything && session.failure)
        return fail(QStringLiteral("%1 cannot be read: %2").arg(input, *session.failure));
    // A log whose first line is damaged looks like anything.
    if (!session.holdsAnything)
        return recoverLog(input, target);
    const sessionfiles::SaveResult saved = sessionfiles::save(target, session);
    if (!saved.isSaved)
        return fail(saved.reason);
    for (const QString &line : session.report)
        printLine(line);
    return session.isAll ? ExitStatus::Done : ExitStatus::Failed;
}

ExitStatus runRecover(const RecoverOptions &options)
{
    QString input = fileName(options.input);
    const QString target = fileName(options.session);
    const QString suffix = SessionJournal::nameFor(QString());
    const QString owner = isJournal(input) ? input.chopped(suffix.size()) : input;
    if (SessionJournal::isBeingWritten(owner))
        return fail(QStringLiteral("%1 is still being written; wait until its program ends")
                        .arg(SessionJournal::nameFor(owner)));
    if (SessionJournal::isRecoverable(input)) {
        const QString journal = SessionJournal::nameFor(input);
        if (QFileInfo::exists(input))
            complain(QStringLiteral("%1 is not read, but a later session: recover that, too")
                         .arg(journal));
        else
            input = journal;
    }
    const QFileInfo file(input);
    if (!file.isFile() || !file.isReadable())
        return fail(QStringLiteral("%1 cannot be read; is it there and a file?").arg(input));
    if (!mayWrite(target, {input}, options.force))
        return ExitStatus::WrongUsage;
    if (sessionfiles::isForeignArchive(input))
        return fail(whyNoSession(input));
    return ManikinLogReader::isLog(input) ? recoverLog(input, target)
                                          : recoverArchive(input, target);
}

} // namespace

void addRecoverCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<RecoverOptions>();
    CLI::App *command = app.add_subcommand(
        "recover", "Save what can be saved of a killed run's journal, a log or a damaged archive");
    command
        ->add_option("input", options->input,
                     "The journal, log or archive, or the archive that the killed run would have "
                     "written; it is not changed")
        ->required()
        ->type_name("LOG|SESSION.zip");
    command->add_option("-o,--output", options->session, "The session archive to write")
        ->required()
        ->type_name("OUT.zip");
    command->add_flag("--force", options->force, "Replace an archive that exists");
    command->footer(
        "Prints how far a log goes, and of an archive a line for each member: whole,\n"
        "what is kept of it, or gone. \"not certain\" is what only looks sound.\n"
        "Exit status: 0 everything was saved; 1 something is gone, which is told on\n"
        "stdout, or nothing was saved and no archive written, which is told on stderr.\n"
        "Examples:\n"
        "  cprsession recover live.zip.journal -o live.zip\n"
        "  cprsession recover damaged.zip -o saved.zip");
    command->callback([options, &run] { run.verb = [options] { return runRecover(*options); }; });
}
