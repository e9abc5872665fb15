// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "Progress.h"

#include <manikinlink/LinkAddress.h>
#include <manikinlink/LinkSender.h>
#include <manikinlog/ManikinLogReader.h>
#include <manikinsim/Scenario.h>
#include <manikinsim/Simulator.h>
#include <private/Units.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSysInfo>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <memory>
#include <vector>

namespace {

using manikinlink::LinkAddress;
using manikinlink::LinkSender;
using manikinlog::ManikinLogReader;
using manikinlog::Record;
using manikinsim::Scenario;
using manikinsim::Simulator;

constexpr int maxCount = 512; // as many as a receiver accepts
constexpr int tickMs = 10;
constexpr int recordsPerTurn = 500; // of a manikin, so that each gets its turn
constexpr int wantedToStartMs = 2000; // a receiver that starts sessions at once does so sooner
constexpr int farewellMs = 5000; // for what the receiver does not have yet, after Ctrl-C

struct SendOptions {
    std::vector<std::string> logs;
    std::vector<std::string> scenarios;
    std::optional<int> count;
    std::string seed = "1";
    std::optional<int> duration;
    std::vector<std::string> learners;
    std::string manikinName = "Manikin";
    std::string speed = "1";
    std::string to;
};

volatile std::sig_atomic_t interrupted = 0;

// Where a manikin's records come from, in order of time.
class Source {
public:
    Source() = default;
    virtual ~Source() = default;
    Source(const Source &) = delete;
    Source &operator=(const Source &) = delete;

    // The next record; false when there is none left.
    virtual bool next(Record &record) = 0;
    // The session is to end. True when next() gives what the manikin tells at its end, and then
    // nothing; false when there is nothing like that.
    virtual bool stop() = 0;
    // Why the records end too early; none when that was their end.
    virtual std::optional<QString> error() const { return std::nullopt; }
    // From 0 to 1, when the records up to msecs are sent.
    virtual double done(qint64 msecs) const = 0;
};

class SimulatedSource final : public Source {
public:
    SimulatedSource(const Scenario &scenario, quint64 seed) : m_simulator(scenario, seed) { }
    bool next(Record &record) override { return m_simulator.next(record); }
    bool stop() override
    {
        m_simulator.stop();
        return true;
    }
    double done(qint64 msecs) const override
    {
        const double length = m_simulator.scenario().seconds * double(Units::msecsPerSecond);
        return qMin(1.0, double(msecs) / (Simulator::sessionStart + length));
    }

private:
    Simulator m_simulator;
};

class LogSource final : public Source {
public:
    explicit LogSource(const QString &name) : m_file(name), m_reader(&m_file, name) { }
    bool open() { return QFileInfo(m_file).isFile() && m_file.open(QIODevice::ReadOnly); }
    bool next(Record &record) override
    {
        return m_reader.read(record) == ManikinLogReader::Result::Record;
    }
    // What the log has of its own end would not fit to an early one.
    bool stop() override { return false; }
    std::optional<QString> error() const override
    {
        return m_reader.errorString().isEmpty() ? std::nullopt
                                                : std::make_optional(m_reader.errorString());
    }
    double done(qint64 /*msecs*/) const override
    {
        return m_file.size() > 0 ? double(m_file.pos()) / double(m_file.size()) : 1;
    }

private:
    QFile m_file;
    ManikinLogReader m_reader;
};

struct Pace {
    double speed = 1; // 0 for as fast as it goes
    QElapsedTimer clock; // of all manikins

    bool isPaced() const { return speed > 0; }
    // In ms of the sessions.
    qint64 now() const { return static_cast<qint64>(double(clock.elapsed()) * speed); }
};

// A manikin on its way to the receiver.
class SentManikin {
public:
    SentManikin(const QString &name, std::unique_ptr<Source> source, const Pace &pace,
                const LinkAddress &address, const manikinlog::Stream &stream)
        : m_name(name), m_source(std::move(source)), m_pace(pace), m_sender(address, stream)
    {
        // Beats show how late the link is.
        if (pace.isPaced())
            m_sender.setClock([&pace] { return pace.now(); });
        QObject::connect(&m_sender, &LinkSender::started, &m_sender, [this] { m_mayStart = true; });
        QObject::connect(&m_sender, &LinkSender::stopWanted, &m_sender, [this] { stop(); });
        QObject::connect(&m_sender, &LinkSender::refused, &m_sender, [this](const QString &reason) {
            fail(QStringLiteral("refused: ") + reason);
            m_sender.abandon();
        });
        QObject::connect(&m_sender, &LinkSender::finished, &m_sender, [this](bool isWhole) {
            if (!isWhole && !m_hasFailed)
                fail(QStringLiteral("not all of it was delivered: ") + m_sender.errorString());
            m_isOver = true;
        });
        m_hasNext = m_source->next(m_next);
    }

    LinkSender &sender() { return m_sender; }
    bool isOver() const { return m_isOver; }
    bool hasFailed() const { return m_hasFailed; }
    bool waitsForStart() const { return m_waitsForStart; }
    // From 0 to 1.
    double done() const { return m_isOver ? 1 : m_source->done(m_sentMsecs); }

    // Sends what is due, but not too much at a time. True when more is due.
    bool sendDue()
    {
        m_waitsForStart = false;
        for (int i = 0; i < recordsPerTurn && !m_isFinished && !m_isOver; ++i) {
            if (!m_hasNext) {
                if (const std::optional<QString> error = m_source->error())
                    fail(*error + QStringLiteral("; the session ends there"));
                finish();
                return false;
            }
            const auto *state = std::get_if<manikinlog::State>(&m_next.entry);
            const bool isStart = state && state->state == CPRData::CPR_START;
            if (isStart && !m_mayStart) {
                // What comes behind the start is later by the time that the receiver takes.
                if (m_pace.isPaced())
                    m_waited = qMax(m_waited, m_pace.now() - m_next.msecs);
                m_waitsForStart = true;
                return false;
            }
            if (m_pace.isPaced() && m_next.msecs + m_waited > m_pace.now())
                return false;
            if (!send({m_next.msecs + m_waited, m_next.entry}))
                return false; // until there is room
            m_hasStarted = m_hasStarted || isStart;
            m_hasEnded = m_hasEnded || (state && state->state == CPRData::CPR_ENDED);
            m_hasNext = m_source->next(m_next);
        }
        return !m_isFinished && !m_isOver;
    }

    // Ends the session: early, and with all that the manikin tells behind it, if it can.
    void stop()
    {
        if (m_isFinished || m_isOver || m_hasEnded)
            return;
        if (m_hasStarted && m_source->stop())
            return;
        if (m_hasStarted)
            send({m_sentMsecs, manikinlog::State{CPRData::CPR_ENDED}});
        finish();
    }

private:
    // False when there is no room for the record. One that can never be sent is left out.
    bool send(const Record &record)
    {
        switch (m_sender.send(record)) {
        case LinkSender::Result::Full:
            return false;
        case LinkSender::Result::Refused:
            fail(QStringLiteral("a record is left out: ") + m_sender.errorString());
            break;
        case LinkSender::Result::Accepted:
            m_sentMsecs = record.msecs;
            break;
        }
        return true;
    }

    void finish()
    {
        m_isFinished = true;
        m_sender.finish();
    }

    void fail(const QString &reason)
    {
        m_hasFailed = true;
        complain(m_name + QStringLiteral(": ") + reason);
    }

    const QString m_name;
    const std::unique_ptr<Source> m_source;
    const Pace &m_pace;
    LinkSender m_sender;
    Record m_next;
    bool m_hasNext = false;
    qint64 m_sentMsecs = 0; // of the last record
    qint64 m_waited = 0; // for the receiver to start the session, in ms
    bool m_mayStart = false;
    bool m_waitsForStart = false;
    bool m_hasStarted = false;
    bool m_hasEnded = false;
    bool m_isFinished = false; // no record is sent any more
    bool m_isOver = false; // the receiver has everything, or nothing more reaches it
    bool m_hasFailed = false;
};

using Manikins = std::vector<std::unique_ptr<SentManikin>>;

// None, and the reason in error, when one of them does not exist.
std::vector<Scenario> requestedScenarios(const SendOptions &options, QString *error)
{
    std::vector<Scenario> scenarios;
    for (const std::string &name : options.scenarios) {
        const Scenario *known = Scenario::find(QString::fromStdString(name));
        if (!known) {
            *error = QStringLiteral("there is no scenario \"%1\"; \"cprsession simulate --list\" "
                                    "shows them")
                         .arg(QString::fromStdString(name));
            return {};
        }
        Scenario scenario = *known;
        scenario.seconds = options.duration.value_or(scenario.seconds);
        *error = scenario.problem();
        if (!error->isEmpty())
            return {};
        scenarios.push_back(scenario);
    }
    return scenarios;
}

// What an id of the link may hold: short enough for a number behind it, and without blanks.
QString token(QString text)
{
    static const QRegularExpression other(QStringLiteral("[^A-Za-z0-9._-]+"));
    constexpr int length = 40;
    return text.replace(other, QStringLiteral("-")).left(length);
}

// Fills manikins with those that are asked for. A status when they cannot be made.
std::optional<ExitStatus> makeManikins(const SendOptions &options, quint64 seed,
                                       const LinkAddress &address, const Pace &pace,
                                       Manikins &manikins)
{
    QString error;
    const std::vector<Scenario> scenarios = requestedScenarios(options, &error);
    if (!error.isEmpty())
        return refuse(error);
    const std::size_t kinds = scenarios.empty() ? options.logs.size() : scenarios.size();
    const auto count = options.count ? std::size_t(*options.count) : kinds;
    const QString name = QString::fromStdString(options.manikinName);
    const QString sender = QStringLiteral("cprsession.%1.%2")
                               .arg(token(QSysInfo::machineHostName()))
                               .arg(QCoreApplication::applicationPid());
    const QString begin =
        QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'HHmmss"));
    for (std::size_t i = 0; i < count; ++i) {
        const QString numbered = QStringLiteral("%1 %2").arg(name).arg(i + 1);
        std::unique_ptr<Source> source;
        if (scenarios.empty()) {
            auto log = std::make_unique<LogSource>(fileName(options.logs[i % kinds]));
            if (!log->open())
                return fail(QStringLiteral("%1 cannot be read; is it there and a file?")
                                .arg(fileName(options.logs[i % kinds])));
            source = std::move(log);
        } else {
            Scenario scenario = scenarios[i % kinds];
            scenario.manikinName = numbered;
            if (!options.learners.empty())
                scenario.learners = QStringList(
                    QString::fromStdString(options.learners[i % options.learners.size()]));
            error = scenario.problem();
            if (!error.isEmpty())
                return refuse(error);
            source = std::make_unique<SimulatedSource>(scenario, seed + i);
        }
        const manikinlog::Stream stream{
            QStringLiteral("%1-%2").arg(token(name.toLower())).arg(i + 1), sender,
            QStringLiteral("%1-%2").arg(begin).arg(QRandomGenerator::system()->generate(), 8, 16,
                                                   QLatin1Char('0'))};
        manikins.push_back(
            std::make_unique<SentManikin>(numbered, std::move(source), pace, address, stream));
    }
    return std::nullopt;
}

// Sends all manikins until they are over.
class Sending final : public QObject {
public:
    Sending(Manikins &manikins, Pace &pace, const QString &receiver)
        : m_manikins(manikins), m_pace(pace), m_receiver(receiver),
          m_progress(QStringLiteral("Sending"))
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] { turn(); });
    }

    void run()
    {
        m_pace.clock.start();
        for (const auto &manikin : m_manikins)
            manikin->sender().open();
        m_timer.start(0);
        m_loop.exec();
    }

private:
    void turn()
    {
        bool hasMore = false;
        bool isOver = true;
        int waiting = 0;
        double done = 0;
        for (const auto &manikin : m_manikins) {
            hasMore = manikin->sendDue() || hasMore;
            isOver = isOver && manikin->isOver();
            waiting += manikin->waitsForStart() ? 1 : 0;
            done += manikin->done();
        }
        constexpr int steps = 1000;
        m_progress.report(static_cast<qint64>(done * steps),
                          static_cast<qint64>(m_manikins.size()) * steps);
        reportWaiting(waiting);
        if (interrupted)
            sayGoodbye();
        if (isOver)
            m_loop.quit();
        m_timer.setInterval(hasMore ? 0 : tickMs);
    }

    // Says what is waited for, once, until something else is. A receiver that starts sessions at
    // once needs no word.
    void reportWaiting(int waitingForStart)
    {
        QString reason;
        for (const auto &manikin : m_manikins) {
            LinkSender &sender = manikin->sender();
            if (!manikin->isOver() && !sender.isConnected() && !sender.errorString().isEmpty())
                reason =
                    QStringLiteral("%1: %2; trying again").arg(m_receiver, sender.errorString());
        }
        if (reason.isEmpty() && waitingForStart > 0 && m_waiting.isValid()
            && m_waiting.hasExpired(wantedToStartMs))
            reason = QStringLiteral("waiting for the receiver to start the session");
        if (waitingForStart == 0)
            m_waiting.invalidate();
        else if (!m_waiting.isValid())
            m_waiting.start();
        if (!reason.isEmpty() && reason != m_reported) {
            m_progress.hide();
            complain(reason);
        }
        m_reported = reason;
    }

    // After Ctrl-C: ends the sessions, and gives what is on its way some time.
    void sayGoodbye()
    {
        if (!m_farewell.isValid()) {
            m_farewell.start();
            for (const auto &manikin : m_manikins)
                manikin->stop();
        }
        if (!m_farewell.hasExpired(farewellMs))
            return;
        for (const auto &manikin : m_manikins)
            manikin->sender().abandon();
    }

    Manikins &m_manikins;
    Pace &m_pace;
    const QString m_receiver;
    QTimer m_timer;
    QEventLoop m_loop;
    Progress m_progress;
    QString m_reported; // what is waited for
    QElapsedTimer m_waiting; // for a start
    QElapsedTimer m_farewell; // since Ctrl-C
};

ExitStatus runSend(const SendOptions &options)
{
    if (options.logs.empty() == options.scenarios.empty())
        return refuse(QStringLiteral("either --scenario or recorded logs have to be given"));
    if (!options.logs.empty() && (options.duration || !options.learners.empty()))
        return refuse(QStringLiteral("--duration and --learner are for scenarios"));
    QString error;
    const std::optional<LinkAddress> address =
        LinkAddress::parse(QString::fromStdString(options.to), &error);
    if (!address)
        return refuse(QStringLiteral("--to: ") + error);
    if (!LinkSender::canReach(*address, &error)) {
        complain(error);
        return ExitStatus::Failed;
    }
    Pace pace;
    if (!parseSpeed(options.speed, &pace.speed, &error))
        return refuse(error);
    const std::optional<quint64> seed = parseSeed(options.seed, &error);
    if (!seed)
        return refuse(error);
    if (options.count && (*options.count < 1 || *options.count > maxCount))
        return refuse(QStringLiteral("--count takes a number from 1 to %1").arg(maxCount));

    Manikins manikins;
    if (const auto status = makeManikins(options, *seed, *address, pace, manikins))
        return *status;
    if (manikins.size() > 1 && address->way() == LinkAddress::Way::StandardStream)
        return refuse(QStringLiteral("standard output takes one manikin; %1 were asked for")
                          .arg(manikins.size()));
    for (const int signal : {SIGINT, SIGTERM}) {
        std::signal(signal, [](int number) {
            interrupted = 1;
            std::signal(number, SIG_DFL); // the next one ends the program at once
        });
    }
    Sending(manikins, pace, address->text()).run();
    const bool hasFailed = std::any_of(manikins.begin(), manikins.end(),
                                       [](const auto &manikin) { return manikin->hasFailed(); });
    return hasFailed ? ExitStatus::Failed : ExitStatus::Done;
}

} // namespace

void addSendCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<SendOptions>();
    CLI::App *command = app.add_subcommand(
        "send", "Send simulated or recorded manikins live to a receiver, such as \"record\"");
    command->add_option("logs", options->logs, "Recorded logs, a manikin each")->type_name("LOG");
    command
        ->add_option("--scenario", options->scenarios,
                     "What is simulated, of \"simulate --list\"; several with commas between them")
        ->type_name("NAME[,NAME...]")
        ->delimiter(',')
        ->allow_extra_args(false);
    command
        ->add_option("--count", options->count,
                     "So many manikins, which have the scenarios or logs in turn")
        ->type_name("NUMBER");
    command
        ->add_option("--seed", options->seed,
                     "Of the first manikin; each further one has the next number")
        ->type_name("NUMBER")
        ->capture_default_str();
    command
        ->add_option("--duration", options->duration,
                     "Length of the sessions in s, instead of the scenarios'")
        ->type_name("SECONDS");
    command
        ->add_option("--learner", options->learners,
                     "Who learns, instead of the scenarios' learners; of several each manikin has "
                     "the next one")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command
        ->add_option("--manikin-name", options->manikinName,
                     "The manikins are called NAME 1, NAME 2 and so on")
        ->type_name("NAME")
        ->capture_default_str();
    command
        ->add_option("--speed", options->speed,
                     "1 sends in real time, 2 twice as fast; max as fast as it goes")
        ->type_name("FACTOR")
        ->capture_default_str();
    command
        ->add_option("--to", options->to,
                     "The receiver: tcp:PORT or local:NAME on this machine, "
                     "mqtt:HOST:PORT/SITE through a broker, or - for standard output")
        ->required()
        ->type_name("ADDRESS");
    command->footer(
        "A session starts when the receiver says so. It ends early when the receiver says so, or "
        "by\n"
        "Ctrl-C: a simulated manikin then sends its statistics and scores, a log ends.\n"
        "When the receiver is not there, or goes away, it is tried again until it comes back; no\n"
        "record is lost or comes twice. Exit status 1 when something was not delivered.\n"
        "Examples:\n"
        "  cprsession send --scenario beginner --to tcp:7070\n"
        "  cprsession send --scenario good,shallow,too-fast --count 6 --to local:lesson\n"
        "  cprsession send --scenario good --to mqtt:broker.example:8883/room1\n"
        "  cprsession send monday.cprlog --speed max --to -");
    command->callback([options, &run] { run.verb = [options] { return runSend(*options); }; });
}
