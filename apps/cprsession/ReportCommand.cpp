// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Language.h"
#include "OrderedParts.h"
#include "Paper.h"
#include "Progress.h"
#include "sessionfiles/SessionFile.h"

#include <CPRData.h>
#include <sessionplot/SessionReport.h>
#include <sessionreview/ClassFigures.h>

#include <QDir>
#include <QFileDevice>
#include <QFileInfo>
#include <QHash>

#include <memory>
#include <vector>

namespace {

using sessionreview::SessionResult;

struct ReportOptions {
    std::vector<std::string> sessions;
    std::string output;
    std::string language = "en";
    std::string paper = "A4";
    bool force = false;
    int jobs = 1;
};

// A session and the page that is made of it.
struct Page {
    QString session;
    QString target;
};

enum PageResult { Complete, Damaged, NoSession, NotWritten };

// Makes the pages, and one line on stderr for each session of which something is missing.
class Reports {
public:
    Reports(std::vector<Page> pages, const ReportOptions &options)
        : m_pages(std::move(pages)), m_results(m_pages.size()), m_options(options)
    {
    }

    // False when a page could not be made, or not of a whole session.
    bool run()
    {
        // All sessions first: each may be in the trend of any other.
        const bool areRead =
            m_pages.size() < 2
            || OrderedParts::run(
                count(), m_options.jobs,
                [this](int index, QFileDevice *) { return readResult(std::size_t(index)); },
                [this](int, int result, QFileDevice *) { return use(result); });
        return areRead
            && OrderedParts::run(
                   count(), m_options.jobs,
                   [this](int index, QFileDevice *part) {
                       return writePage(std::size_t(index), part);
                   },
                   [this](int index, int result, QFileDevice *part) {
                       report(std::size_t(index), result, part);
                       return use(result);
                   })
            && m_isComplete;
    }

private:
    int count() const { return static_cast<int>(m_pages.size()); }

    int readResult(std::size_t index)
    {
        CPRData session;
        if (sessionfiles::load(m_pages[index].session, session).hasSession())
            m_results[index] = sessionreview::resultOf(sessionreview::reviewOf(session));
        return Complete;
    }

    int writePage(std::size_t index, QFileDevice *part)
    {
        const Page &page = m_pages[index];
        CPRData session;
        const sessionfiles::LoadResult loaded = sessionfiles::load(page.session, session);
        if (!loaded.hasSession())
            return NoSession;
        const sessionplot::PlotModel model(session);
        sessionplot::SessionReport report(model);
        report.setDamaged(!loaded.isComplete);
        report.setEarlier(
            sessionreview::earlierOf(sessionreview::resultOf(model.review()), m_results));
        QString error;
        if (!sessionplot::writeReport(page.target, report, paperNamed(m_options.paper), &error)) {
            part->write(error.toUtf8());
            return NotWritten;
        }
        return loaded.isComplete ? Complete : Damaged;
    }

    bool use(int result)
    {
        m_progress.report(++m_done, (m_pages.size() < 2 ? 1 : 2) * qint64(m_pages.size()));
        if (result != OrderedParts::noTemporaryFile)
            return true;
        complain(QStringLiteral("a temporary file in %1 cannot be written; is there room?")
                     .arg(QDir::tempPath()));
        return false;
    }

    void report(std::size_t index, int result, QFileDevice *part)
    {
        m_isComplete = m_isComplete && result == Complete;
        if (result == Complete || result == OrderedParts::noTemporaryFile)
            return;
        m_progress.hide();
        const QString &name = m_pages[index].session;
        if (result == Damaged)
            complain(QStringLiteral("%1 is damaged; the page says so").arg(name));
        else if (result == NoSession)
            complain(
                QStringLiteral("%1 cannot be read as a session archive or recorded log").arg(name));
        else
            complain(QString::fromUtf8(part->readAll()));
    }

    std::vector<Page> m_pages;
    std::vector<SessionResult> m_results; // each is written by one thread
    const ReportOptions &m_options;
    Progress m_progress{QStringLiteral("Writing reports")};
    qint64 m_done = 0;
    bool m_isComplete = true;
};

ExitStatus runReport(const ReportOptions &options)
{
    const QDir folder(fileName(options.output));
    std::vector<Page> pages;
    QHash<QString, QString> sessions; // by page
    for (const std::string &argument : options.sessions) {
        const QString session = fileName(argument);
        const QString target =
            folder.filePath(QFileInfo(session).completeBaseName() + QLatin1String(".pdf"));
        if (sessions.contains(target))
            return refuse(QStringLiteral("%1 and %2 would both become %3")
                              .arg(sessions.value(target), session, target));
        if (!mayWrite(target, {session}, options.force))
            return ExitStatus::WrongUsage;
        sessions.insert(target, session);
        pages.push_back({session, target});
    }
    if (!folder.mkpath(QStringLiteral(".")))
        return fail(QStringLiteral("the folder %1 cannot be made").arg(folder.path()));
    Language::use(options.language);
    return Reports(std::move(pages), options).run() ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

void addReportCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<ReportOptions>();
    CLI::App *command =
        app.add_subcommand("report", "Write a page to take home for each session, as PDF");
    command
        ->add_option("sessions", options->sessions,
                     "Session archives or recorded logs; earlier sessions of the same learners "
                     "make the trend of the later ones")
        ->required()
        ->type_name("SESSION");
    command
        ->add_option("-o,--output", options->output,
                     "Folder for the pages, NAME.pdf for NAME.zip; made when it is not there")
        ->required()
        ->type_name("DIR");
    command->add_option("--language", options->language, "Language of the pages")
        ->check(CLI::IsMember(Language::all()))
        ->capture_default_str();
    command->add_option("--paper", options->paper, "Size of the pages")
        ->check(CLI::IsMember(paperNames()))
        ->capture_default_str();
    command->add_flag("--force", options->force, "Replace pages that exist");
    command
        ->add_option("-j,--jobs", options->jobs,
                     "Pages that are made at once, each in a thread of its own")
        ->check(CLI::Range(1, OrderedParts::maxJobs))
        ->capture_default_str();
    command->footer("Examples:\n"
                    "  cprsession report session.zip -o reports\n"
                    "  cprsession report monday/*.zip -o reports --language de -j 4");
    command->callback([options, &run] {
        run.needsFonts = true;
        run.verb = [options] { return runReport(*options); };
    });
}
