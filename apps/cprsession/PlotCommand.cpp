// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Language.h"
#include "sessionfiles/SessionFile.h"

#include <CPRData.h>
#include <private/Units.h>
#include <sessionplot/PictureFile.h>
#include <sessionplot/PlotModel.h>

#include <QFileInfo>
#include <QPageLayout>
#include <QSize>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>

namespace {

struct PlotOptions {
    std::string session;
    std::string output;
    double from = 0;
    std::optional<double> to; // the end of the session
    std::string size = "1600x900";
    std::string paper;
    bool isPortrait = false;
    bool isDark = false;
    std::string language = "en";
    bool force = false;
};

constexpr int maxSide = 16384;

// The size that a text like "1600x900" stands for; an empty one when nothing can be drawn in it.
QSize parseSize(const std::string &text)
{
    const QStringList sides = QString::fromStdString(text).split(QLatin1Char('x'));
    const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
    const bool isDrawable = sides.size() == 2 && size.width() > 0 && size.height() > 0
        && size.width() <= maxSide && size.height() <= maxSide;
    return isDrawable ? size : QSize();
}

// The page that a name such as "A4" stands for; an invalid one when there is no such paper.
QPageLayout parsePaper(const std::string &text, bool isPortrait)
{
    constexpr qreal marginMm = 10;
    const QString name = QString::fromStdString(text);
    for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
        const auto size = static_cast<QPageSize::PageSizeId>(id);
        if (size != QPageSize::Custom
            && name.compare(QPageSize::key(size), Qt::CaseInsensitive) == 0)
            return QPageLayout(
                QPageSize(size), isPortrait ? QPageLayout::Portrait : QPageLayout::Landscape,
                QMarginsF(marginMm, marginMm, marginMm, marginMm), QPageLayout::Millimeter);
    }
    return QPageLayout();
}

// Session time is an int of ms. False for what is no number, too.
bool isSessionTime(double secs)
{
    constexpr int maxSecs = std::numeric_limits<int>::max() / Units::msecsPerSecond;
    return secs >= 0 && secs <= maxSecs;
}

qint64 msecs(double secs)
{
    return std::llround(secs * Units::msecsPerSecond);
}

ExitStatus runPlot(const PlotOptions &options)
{
    const QSize size = parseSize(options.size);
    if (size.isEmpty())
        return refuse(QStringLiteral("--size takes WIDTHxHEIGHT with sides of 1 to %1, not \"%2\"")
                          .arg(QString::number(maxSide), QString::fromStdString(options.size)));
    if (!isSessionTime(options.from) || !isSessionTime(options.to.value_or(0)))
        return refuse(QStringLiteral("--from and --to take seconds of the session, from 0 on"));
    const QString target = fileName(options.output);
    if (!sessionplot::pictureSuffixes().contains(QFileInfo(target).suffix().toLower()))
        return refuse(QStringLiteral("%1 is no picture that can be drawn; there are %2")
                          .arg(target, sessionplot::pictureSuffixes().join(QLatin1String(", "))));
    const QPageLayout paper = parsePaper(options.paper, options.isPortrait);
    if (!options.paper.empty() && !paper.isValid())
        return refuse(QStringLiteral("--paper takes a size such as A4 or Letter, not \"%1\"")
                          .arg(QString::fromStdString(options.paper)));
    if (paper.isValid() && QFileInfo(target).suffix().toLower() != QLatin1String("pdf"))
        return refuse(QStringLiteral("--paper is for PDF; %1 has to end with .pdf").arg(target));
    const QString name = fileName(options.session);
    if (!mayWrite(target, {name}, options.force))
        return ExitStatus::WrongUsage;
    CPRData session;
    const sessionfiles::LoadResult loaded = loadSession(name, session);
    if (!loaded.hasSession())
        return ExitStatus::Failed;
    Language::use(options.language);
    QString error;
    const qint64 to = options.to ? msecs(*options.to) : -1;
    const sessionplot::PlotModel model(session);
    const auto write = [&](const auto &area) {
        const auto theme =
            options.isDark ? sessionplot::Theme::dark() : sessionplot::Theme::light();
        return sessionplot::writePicture(target, area, msecs(options.from), to, model, theme,
                                         &error);
    };
    if (!(paper.isValid() ? write(paper) : write(size)))
        return fail(error);
    if (!loaded.isComplete)
        return fail(QStringLiteral("%1 is damaged; what could be read is drawn").arg(name));
    return ExitStatus::Done;
}

} // namespace

void addPlotCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<PlotOptions>();
    CLI::App *command = app.add_subcommand("plot", "Draw the review picture of a session");
    command->add_option("session", options->session, "The session archive, or a recorded log")
        ->required()
        ->type_name("SESSION");
    command
        ->add_option("-o,--output", options->output,
                     "The picture to write; the suffix decides on the form: .png, .svg or .pdf")
        ->required()
        ->type_name("FILE");
    command->add_flag("--force", options->force, "Replace a file that exists");
    command->add_option("--from", options->from, "Begin of what is shown, s")
        ->type_name("SECONDS")
        ->capture_default_str();
    command->add_option("--to", options->to, "End of what is shown, s; the session's unless given")
        ->type_name("SECONDS");
    CLI::Option *size =
        command->add_option("--size", options->size, "WIDTHxHEIGHT in pixels, 96 an inch in a PDF")
            ->type_name("SIZE")
            ->capture_default_str();
    CLI::Option *paper =
        command
            ->add_option("--paper", options->paper,
                         "Paper of a PDF, such as A4 or Letter, landscape; the page is otherwise "
                         "as large as the picture")
            ->type_name("PAPER")
            ->excludes(size);
    command->add_flag("--portrait", options->isPortrait, "The paper stands upright")->needs(paper);
    command->add_flag("--dark", options->isDark, "Light on dark");
    command->add_option("--language", options->language, "Language of the picture")
        ->check(CLI::IsMember(Language::all()))
        ->capture_default_str();
    command->footer(
        "Examples:\n"
        "  cprsession plot session.zip -o session.png\n"
        "  cprsession plot session.zip -o minute.svg --from 30 --to 90 --size 1200x800\n"
        "  cprsession plot session.zip -o session.pdf --paper A4 --language de");
    command->callback([options, &run] {
        run.needsFonts = true;
        run.verb = [options] { return runPlot(*options); };
    });
}
