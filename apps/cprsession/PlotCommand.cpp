// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "sessionfiles/SessionFile.h"

#include <CPRData.h>
#include <private/Units.h>
#include <sessionplot/PictureFile.h>

#include <QFileInfo>
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
    const QString name = fileName(options.session);
    if (wouldReplace(target, name))
        return ExitStatus::WrongUsage;
    CPRData session;
    const sessionfiles::LoadResult loaded = loadSession(name, session);
    if (!loaded.hasSession())
        return ExitStatus::Failed;
    QString error;
    const qint64 to = options.to ? msecs(*options.to) : -1;
    if (!sessionplot::writePicture(target, size, msecs(options.from), to, session, &error))
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
    command->add_option("--from", options->from, "Begin of what is shown, s")
        ->capture_default_str();
    command->add_option("--to", options->to, "End of what is shown, s; the session's unless given");
    command->add_option("--size", options->size, "WIDTHxHEIGHT in pixels")->capture_default_str();
    command->footer("Examples:\n"
                    "  cprsession plot session.zip -o session.png\n"
                    "  cprsession plot session.zip -o start.pdf --to 60 --size 1200x800");
    command->callback([options, &run] {
        run.needsFonts = true;
        run.verb = [options] { return runPlot(*options); };
    });
}
