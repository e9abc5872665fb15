// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CommandLine.h"

#include "ClassRoom.h"
#include "private/Terminal.h"

#include <manikinlink/LinkAddress.h>
#include <manikinsim/Scenario.h>
#include <private/Units.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr char version[] = "cprviewer " CPRVIEWER_VERSION;
constexpr int minWidth = 960;
constexpr int minHeight = 600;
constexpr int maxSide = 16384;
constexpr double minSpeed = 0.001;
constexpr double maxSpeed = 1000;
constexpr int maxSecs = std::numeric_limits<int>::max() / Units::msecsPerSecond; // of session time

QString fromShell(const std::string &argument)
{
    return QFile::decodeName(argument.c_str());
}

// "1280x800"; an empty size when the text is none that the pages can be shown in.
QSize parseSize(const QString &text)
{
    const QStringList sides = text.split(QLatin1Char('x'));
    const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
    const bool isUsable = sides.size() == 2 && size.width() >= minWidth
        && size.height() >= minHeight && size.width() <= maxSide && size.height() <= maxSide;
    return isUsable ? size : QSize();
}

ExitStatus refuse(const QString &text)
{
    complain(text);
    return ExitStatus::WrongUsage;
}

} // namespace

void complain(const QString &text)
{
    Terminal::writeLine(stderr, QStringLiteral("cprviewer: ") + text);
}

std::optional<ExitStatus> CommandLine::parse(int argc, char *argv[])
{
    struct {
        std::string file;
        std::string scenario;
        std::string log;
        std::vector<std::string> addresses;
        std::string compared;
        std::string page;
        std::string library;
        std::string learner;
        std::string classList;
        std::string screenshot;
        std::string size;
        std::string language;
        std::optional<double> at;
    } given;

    CLI::App app("Watches CPR training sessions and looks them over.", "cprviewer");
    app.set_version_flag("--version", version);
    app.failure_message([](const CLI::App *, const CLI::Error &error) {
        return "cprviewer: "
            + PrintableText::escaped(QString::fromLocal8Bit(error.what())).toStdString()
            + "; --help shows what can be asked for\n";
    });
    app.add_option("session", given.file, "Session archive or recorded log to look over")
        ->type_name("SESSION.zip|LOG");
    CLI::Option *live =
        app.add_option("--live", given.scenario, "Start the simulated manikin; several are a class")
            ->type_name("SCENARIO[,SCENARIO...]");
    app.add_option("--seed", seed, "The same scenario and seed give the same session every time")
        ->capture_default_str()
        ->check(CLI::Range(0, std::numeric_limits<int>::max()));
    app.add_option("--replay", given.log, "Play a recorded log as if it came from the manikin")
        ->type_name("LOG")
        ->excludes(live);
    app.add_option("--from", given.addresses,
                   "Listen for manikins: tcp:PORT, local:NAME, mqtt:HOST:PORT/SITE, or - for one "
                   "on standard input")
        ->type_name("ADDRESS")
        ->allow_extra_args(false);
    app.add_option("--speed", speed, "1 lets a live session run in real time, 2 twice as fast")
        ->capture_default_str();
    app.add_option("--at", given.at, "Begin a live session at this session time, s");
    app.add_option("--compare", given.compared, "Show the session beside this one")
        ->type_name("SESSION.zip|LOG");
    app.add_option(
           "--page", given.page,
           "The page to begin with: live, review, manikins, or of the library sessions, learners, "
           "learner, class or class-list")
        ->check(CLI::IsMember({"live", "review", "manikins", "sessions", "learners", "learner",
                               "class", "class-list"}));
    app.add_option("--library", given.library,
                   "Folder of session archives, instead of the one that was chosen")
        ->type_name("FOLDER");
    app.add_option("--learner", given.learner, "Whose page is shown with --page learner")
        ->type_name("NAME");
    app.add_option("--class", given.classList, "Learners that are added to the class list")
        ->type_name("FILE.csv");
    app.add_flag("--learner-view", hasLearnerView,
                 "Open the learner's window, for another display; a picture is of it");
    app.add_option("--screenshot", given.screenshot, "Write a picture of the page, and exit")
        ->type_name("FILE.png");
    app.add_option("--size", given.size,
                   "WIDTHxHEIGHT of the window, instead of the last one; of a picture, 1280x800");
    app.add_option("--language", given.language, "en or de, instead of the system's")
        ->check(CLI::IsMember({"en", "de"}));
    CLI::Option *dark = app.add_flag("--dark", isDark, "Light on dark, whatever the system has");
    app.add_flag("--light", isLight, "Dark on light, whatever the system has")->excludes(dark);
    app.footer("Examples:\n"
               "  cprviewer monday.zip\n"
               "  cprviewer monday.zip --compare spring.zip\n"
               "  cprviewer --live beginner --seed 7\n"
               "  cprviewer --live good,shallow,aed --class monday.csv\n"
               "  cprviewer --from local:cpr\n"
               "  cprviewer --replay monday.cprlog --speed 4\n"
               "  cprviewer --live aed --at 60 --screenshot live.png --dark\n"
               "Exit status: 0 done; 1 the input cannot be read, the output cannot be written, or "
               "there\nis no display; 2 wrong usage.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? ExitStatus::Done : ExitStatus::WrongUsage;
    }

    file = fromShell(given.file);
    scenarios = fromShell(given.scenario).split(QLatin1Char(','));
    if (given.scenario.empty())
        scenarios.clear();
    log = fromShell(given.log);
    for (const std::string &address : given.addresses)
        addresses.append(fromShell(address));
    compared = fromShell(given.compared);
    page = fromShell(given.page);
    library = fromShell(given.library);
    learner = QString::fromLocal8Bit(given.learner.c_str());
    classList = fromShell(given.classList);
    screenshot = fromShell(given.screenshot);
    language = fromShell(given.language);
    if (!given.size.empty())
        size = parseSize(fromShell(given.size));
    else if (!screenshot.isEmpty())
        size = QSize(1280, 800);
    atSecs = given.at;
    for (const CLI::Option *option : app.get_options()) {
        const std::vector<std::string> &texts = option->results();
        if (std::find(texts.begin(), texts.end(), std::string()) != texts.end())
            return refuse(QStringLiteral("%1 needs a text that is not empty")
                              .arg(QString::fromStdString(option->get_name())));
    }
    // Not a number is neither.
    if (!(speed >= minSpeed && speed <= maxSpeed))
        return refuse(
            QStringLiteral("--speed takes a number from %1 to %2").arg(minSpeed).arg(maxSpeed));
    if (!(atSecs.value_or(0) >= 0 && atSecs.value_or(0) <= maxSecs))
        return refuse(QStringLiteral("--at takes seconds of the session, from 0 on"));
    if (size.isEmpty() && !given.size.empty())
        return refuse(QStringLiteral("--size takes WIDTHxHEIGHT from %1x%2 to %3x%3, not \"%4\"")
                          .arg(QString::number(minWidth), QString::number(minHeight),
                               QString::number(maxSide), fromShell(given.size)));
    if (!file.isEmpty() && isLive())
        return refuse(
            QStringLiteral("%1 is opened, or a live session is started, not both").arg(file));
    if (!compared.isEmpty() && file.isEmpty() && !isLive())
        return refuse(
            QStringLiteral("--compare needs a session that is compared with %1").arg(compared));
    if (scenarios.size() > ClassRoom::maxCount)
        return refuse(
            QStringLiteral("--live takes up to %1 scenarios").arg(int(ClassRoom::maxCount)));
    for (const QString &scenario : std::as_const(scenarios)) {
        if (manikinsim::Scenario::find(scenario))
            continue;
        QStringList names;
        for (const manikinsim::Scenario &known : manikinsim::Scenario::all())
            names.append(known.name);
        return refuse(QStringLiteral("there is no scenario \"%1\"; there are %2")
                          .arg(scenario, names.join(QLatin1String(", "))));
    }
    for (const QString &address : std::as_const(addresses)) {
        QString error;
        if (!manikinlink::LinkAddress::parse(address, &error))
            return refuse(error);
    }
    if (!addresses.isEmpty() && !screenshot.isEmpty())
        return refuse(QStringLiteral("--from waits for manikins, which no picture does"));
    if (!library.isEmpty() && !QFileInfo(library).isDir()) {
        complain(QStringLiteral("there is no folder %1").arg(library));
        return ExitStatus::Failed;
    }
    for (const QString &input : {file, log, compared, classList}) {
        if (input.isEmpty())
            continue;
        const QFileInfo info(input);
        if (!info.isFile() || !info.isReadable()) {
            complain(QStringLiteral("%1 cannot be read; is it there and a file?").arg(input));
            return ExitStatus::Failed;
        }
        if (info == QFileInfo(screenshot))
            return refuse(QStringLiteral("the picture would replace %1").arg(input));
    }
    return std::nullopt;
}
