// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Progress.h"
#include "private/AtomicFile.h"
#include "sessionfiles/SessionFile.h"

#include <CPRData.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/ManikinLogWriter.h>
#include <manikinsim/Scenario.h>
#include <manikinsim/Simulator.h>
#include <private/Units.h>

#include <QDateTime>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using manikinsim::Scenario;
using manikinsim::Simulator;

struct SimulateOptions {
    bool list = false;
    std::string scenario = "beginner";
    std::string seed = "1";
    std::optional<int> duration;
    std::string protocol;
    std::string start;
    std::vector<std::string> learners;
    std::string manikinName;
    std::string log;
    std::string session;
    bool force = false;
};

ExitStatus listScenarios()
{
    constexpr int nameWidth = 14;
    QString text;
    for (const Scenario &scenario : Scenario::all()) {
        text += scenario.name.leftJustified(nameWidth) + scenario.description + QLatin1Char('\n');
    }
    print(text);
    return ExitStatus::Done;
}

// What the options ask for; none, and the reason in error, when that does not exist.
std::optional<Scenario> requestedScenario(const SimulateOptions &options, QString *error)
{
    const Scenario *known = Scenario::find(QString::fromStdString(options.scenario));
    if (!known) {
        *error = QStringLiteral("there is no scenario \"%1\"; --list shows them")
                     .arg(QString::fromStdString(options.scenario));
        return std::nullopt;
    }
    Scenario scenario = *known;
    if (!options.protocol.empty()) {
        const auto protocol = Scenario::protocolFromName(QString::fromStdString(options.protocol));
        if (!protocol) {
            *error = QStringLiteral("there is no protocol \"%1\"; there are %2")
                         .arg(QString::fromStdString(options.protocol),
                              Scenario::protocolNames().join(QLatin1String(", ")));
            return std::nullopt;
        }
        scenario.protocol = *protocol;
    }
    if (!options.start.empty()) {
        scenario.start =
            QDateTime::fromString(QString::fromStdString(options.start), Qt::ISODateWithMs);
        if (!scenario.start.isValid()) {
            *error = QStringLiteral("--start takes a time such as 2026-01-31T09:00:00Z");
            return std::nullopt;
        }
    }
    if (!options.learners.empty()) {
        scenario.learners.clear();
        for (const std::string &name : options.learners)
            scenario.learners += QString::fromStdString(name);
    }
    scenario.manikinName = QString::fromStdString(options.manikinName);
    scenario.seconds = options.duration.value_or(scenario.seconds);
    *error = scenario.problem();
    return error->isEmpty() ? std::optional<Scenario>(scenario) : std::nullopt;
}

// Calls use() with each record until that returns false. False when it did.
template <typename Use> bool simulate(Simulator &simulator, Use use)
{
    Progress progress(QStringLiteral("Simulating"));
    manikinlog::Record record;
    while (simulator.next(record)) {
        if (!use(record))
            return false;
        progress.report(record.msecs, qint64(simulator.scenario().seconds) * Units::msecsPerSecond);
    }
    return true;
}

// Why the log cannot be written; none when it is.
std::optional<QString> writeLog(Simulator &simulator, const QString &name)
{
    const auto cannotBeWritten = [&name](const QString &reason) {
        return QStringLiteral("%1 cannot be written: %2").arg(name, reason);
    };
    AtomicFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return cannotBeWritten(file.errorString());
    manikinlog::ManikinLogWriter writer(&file);
    const bool written = simulate(
        simulator, [&writer](const manikinlog::Record &record) { return writer.write(record); });
    if (!written)
        return cannotBeWritten(writer.errorString());
    if (!file.finish())
        return cannotBeWritten(file.errorString());
    return std::nullopt;
}

// The same for the session.
std::optional<QString> writeSession(Simulator &simulator, const QString &name)
{
    CPRData session;
    manikinlog::ManikinLogPlayer player(&session);
    simulate(simulator, [&player](const manikinlog::Record &record) {
        player.play(record);
        return true;
    });
    player.finish();
    const sessionfiles::SaveResult saved = sessionfiles::save(name, session);
    return saved.isComplete ? std::nullopt : std::make_optional(saved.reason);
}

ExitStatus runSimulate(const SimulateOptions &options)
{
    if (options.list)
        return listScenarios();
    if (options.log.empty() == options.session.empty())
        return refuse(QStringLiteral("either -o LOG or --to SESSION.zip has to be given"));
    QString error;
    const std::optional<Scenario> scenario = requestedScenario(options, &error);
    if (!scenario)
        return refuse(error);
    const std::optional<quint64> seed = parseSeed(options.seed, &error);
    if (!seed)
        return refuse(error);
    const bool isLog = !options.log.empty();
    const QString target = fileName(isLog ? options.log : options.session);
    if (!mayWrite(target, {}, options.force))
        return ExitStatus::WrongUsage;

    Simulator simulator(*scenario, *seed);
    const std::optional<QString> reason =
        isLog ? writeLog(simulator, target) : writeSession(simulator, target);
    return reason ? fail(*reason) : ExitStatus::Done;
}

} // namespace

void addSimulateCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<SimulateOptions>();
    CLI::App *command =
        app.add_subcommand("simulate", "Let a simulated rescuer train on a simulated manikin");
    command->add_flag("--list", options->list, "Show the scenarios with a line each");
    command->add_option("--scenario", options->scenario, "What is simulated, one of --list")
        ->type_name("NAME")
        ->capture_default_str();
    command
        ->add_option("--seed", options->seed,
                     "The same scenario and seed give the same session every time")
        ->type_name("NUMBER")
        ->capture_default_str();
    command
        ->add_option("--duration", options->duration,
                     "Length of the session in s, instead of the scenario's")
        ->type_name("SECONDS");
    command
        ->add_option("--protocol", options->protocol,
                     "CPR protocol instead of the scenario's: single-rescuer, two-rescuers, "
                     "compression-only, ventilation-only, automatic, high-performance")
        ->type_name("NAME");
    command
        ->add_option("--start", options->start,
                     "When it is recorded, such as 2026-01-31T09:00:00Z (without Z in local time); "
                     "else whenever it is played")
        ->type_name("TIME");
    command
        ->add_option("--learner", options->learners,
                     "Who learns, instead of the scenario's learners; may be given several times")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command->add_option("--manikin-name", options->manikinName, "The manikin's name")
        ->type_name("NAME");
    command->add_option("-o,--output", options->log, "Recorded log to write")->type_name("LOG");
    command->add_option("--to", options->session, "Session archive to write")
        ->type_name("SESSION.zip");
    command->add_flag("--force", options->force, "Replace a file that exists");
    command->footer("Writes either a recorded log (-o) or a session archive (--to).\n"
                    "Examples:\n"
                    "  cprsession simulate --list\n"
                    "  cprsession simulate --scenario shallow --seed 7 --to shallow.zip");
    command->callback([options, &run] { run.verb = [options] { return runSimulate(*options); }; });
}
