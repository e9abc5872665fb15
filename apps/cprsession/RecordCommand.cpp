// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ArchiveMaker.h"
#include "Command.h"
#include "Progress.h"

#include <manikinlink/LinkHub.h>
#include <manikinlink/LinkSession.h>
#include <manikinlog/ManikinLogReader.h>
#include <manikinlog/SessionJournal.h>
#include <private/Units.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <sys/resource.h>
#include <utility>
#include <vector>

namespace {

using manikinlink::LinkAddress;
using manikinlink::LinkSession;
using manikinlink::LinkStream;
using manikinlog::ManikinLogReader;
using manikinlog::SessionJournal;

struct RecordOptions {
    std::string address;
    std::string folder;
    int sessions = 0; // that come whole until it ends; 0 for any number
    int patience = 300; // in s
};

volatile std::sig_atomic_t interrupted = 0;

extern "C" void onRecordInterrupt(int signal)
{
    interrupted = 1;
    std::signal(signal, SIG_DFL); // the next one ends the program at once
}

// Each manikin takes a connection and a journal; many systems allow 1024 files.
void allowFiles()
{
    constexpr rlim_t wanted = 4096;
    struct rlimit files = {};
    if (::getrlimit(RLIMIT_NOFILE, &files) != 0 || files.rlim_cur >= wanted)
        return;
    files.rlim_cur = std::min(wanted, files.rlim_max);
    ::setrlimit(RLIMIT_NOFILE, &files);
}

// A line of the output, at once: who has started the program may wait for it at the end of a pipe.
void tell(const QString &text)
{
    printLine(text);
    std::fflush(stdout);
}

// Whose session the journal of target holds; none where it is of no link, or somebody writes it. A
// journal that a killed run has left without a record of anybody is removed.
std::optional<manikinlog::Stream> leftStream(const QString &target)
{
    const QString name = SessionJournal::nameFor(target);
    const std::unique_ptr<QFile> file = SessionJournal::claim(name);
    if (!file)
        return std::nullopt;
    ManikinLogReader reader(file.get(), name, ManikinLogReader::Damage::IsSkipped);
    manikinlog::Record record;
    auto result = reader.read(record);
    while (result == ManikinLogReader::Result::Record
           && std::holds_alternative<manikinlog::Start>(record.entry))
        result = reader.read(record);
    // The kill may have cut its first line.
    const bool isNothing = result == ManikinLogReader::Result::End && reader.skippedLines() <= 1;
    if (isNothing && (file->size() == 0 || ManikinLogReader::isLog(name)))
        QFile::remove(name);
    const auto *const stream = std::get_if<manikinlog::Stream>(&record.entry);
    return stream ? std::optional(*stream) : std::nullopt;
}

// Receives the manikins of a hub, and has an archive made of each session that has ended.
class Recorder final : public QObject {
public:
    Recorder(const QString &folder, const RecordOptions &options);
    bool listen(const LinkAddress &address, QString *error);
    ExitStatus run();

private:
    // A session of a run that was killed: its sender may come back.
    struct Left {
        QString target;
        manikinlog::Stream ids;
    };

    void findLeft();
    void receive(LinkStream *stream);
    QString targetFor(const LinkStream &stream);
    void saveEnded(LinkSession *session);
    void report(const ArchiveMaker::Made &made);
    void giveUpLeft();
    void stop();
    void tick();

    const QDir m_folder;
    const RecordOptions m_options;
    manikinlink::LinkHub m_hub;
    ArchiveMaker m_maker;
    // Children of this object, by the archive, until that is made.
    std::map<QString, LinkSession *> m_sessions;
    std::vector<Left> m_left; // whose senders have not come back yet
    QElapsedTimer m_clock; // since it listens
    QTimer m_timer;
    Progress m_progress{QStringLiteral("Recording")};
    ExitStatus m_status = ExitStatus::Done;
    int m_wholeSessions = 0;
    int m_savedSessions = 0;
    bool m_hasReceived = false;
    bool m_isExhausted = false; // nobody can come any more
    bool m_isStopping = false;
};

Recorder::Recorder(const QString &folder, const RecordOptions &options)
    : m_folder(folder), m_options(options)
{
    m_hub.setStartsAtOnce(true);
    m_hub.setFolder(folder);
    m_hub.setPatience(options.patience * Units::msecsPerSecond);
    connect(&m_hub, &manikinlink::LinkHub::streamAdded, this, &Recorder::receive);
    connect(&m_hub, &manikinlink::LinkHub::refused, this,
            [](const QString &who, const QString &reason) {
                complain(QStringLiteral("%1 is refused: %2").arg(who, reason));
            });
    connect(&m_hub, &manikinlink::LinkHub::brokerLost, this,
            [](const QString &address, const QString &reason) {
                complain(QStringLiteral("%1: %2; trying again").arg(address, reason));
            });
    connect(&m_hub, &manikinlink::LinkHub::exhausted, this, [this] {
        m_isExhausted = true;
        if (!m_hasReceived)
            m_status = fail(QStringLiteral("standard input has ended before a session began"));
    });
    connect(&m_maker, &ArchiveMaker::made, this, &Recorder::report);
    connect(&m_timer, &QTimer::timeout, this, &Recorder::tick);
}

bool Recorder::listen(const LinkAddress &address, QString *error)
{
    findLeft();
    return m_hub.listen(address, error);
}

ExitStatus Recorder::run()
{
    constexpr int tickMs = 100;
    for (const LinkAddress &address : m_hub.addresses())
        tell(QStringLiteral("listening at %1").arg(address.text()));
    m_clock.start();
    m_timer.start(tickMs);
    QCoreApplication::exec();
    return m_status;
}

void Recorder::findLeft()
{
    const QString suffix = SessionJournal::nameFor(QString());
    const QStringList journals = m_folder.entryList({QStringLiteral("*.zip") + suffix},
                                                    QDir::Files | QDir::NoSymLinks, QDir::Name);
    for (const QString &journal : journals) {
        const QString target = m_folder.filePath(journal.chopped(suffix.size()));
        if (const std::optional<manikinlog::Stream> ids = leftStream(target))
            m_left.push_back({target, *ids});
    }
}

void Recorder::receive(LinkStream *stream)
{
    if (m_isStopping) {
        stream->end();
        stream->deleteLater();
        return;
    }
    m_hasReceived = true;
    const QString target = targetFor(*stream);
    auto *const session = new LinkSession(stream, target, LinkSession::Keeps::JournalAlone, this);
    m_sessions[target] = session;
    connect(session, &LinkSession::ended, this, [this, session] { saveEnded(session); });
    connect(session, &LinkSession::journalFailed, this, [this, session](const QString &reason) {
        complain(reason);
        // One that cannot be made does not come back, and without it there is nothing to save.
        if (!session->isJournalled() && !session->hasEnded())
            m_status = ExitStatus::Failed;
    });
    connect(session, &LinkSession::journalResumed, this, [session] {
        complain(session->journalFile() + QStringLiteral(" is written again; nothing is missing"));
    });
}

// Where the session is saved: where a killed run began it, or a name that nobody has.
QString Recorder::targetFor(const LinkStream &stream)
{
    const auto left = std::find_if(m_left.begin(), m_left.end(),
                                   [&](const Left &each) { return each.ids == stream.ids(); });
    if (left != m_left.end()) {
        const QString target = left->target;
        m_left.erase(left);
        return target;
    }
    const QString name = QStringLiteral("%1_%2").arg(
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd_HHmmss")),
        stream.manikin());
    QString target = m_folder.filePath(name + QStringLiteral(".zip"));
    const auto isTaken = [this, &target] {
        return m_sessions.count(target) > 0 || QFileInfo::exists(target)
            || QFileInfo::exists(SessionJournal::nameFor(target));
    };
    for (int i = 2; isTaken(); ++i)
        target = m_folder.filePath(QStringLiteral("%1_%2.zip").arg(name, QString::number(i)));
    return target;
}

void Recorder::saveEnded(LinkSession *session)
{
    const LinkStream *const stream = session->stream();
    if (stream && !stream->isWhole() && !m_isStopping && stream->position().batch > 0) {
        complain(QStringLiteral("%1 has not come to its end; it is saved as far as it goes")
                     .arg(session->target()));
        m_status = ExitStatus::Failed;
    }
    if (stream && stream->quality().lostBatches > 0) {
        complain(QStringLiteral("%1: %2 batches of records were lost on the way")
                     .arg(session->target(), QString::number(stream->quality().lostBatches)));
        m_status = ExitStatus::Failed;
    }
    if (!session->isOnDisk()) {
        complain(QStringLiteral("%1: the disk has not taken all of its records; it is saved as far "
                                "as they go")
                     .arg(session->target()));
        m_status = ExitStatus::Failed;
    }
    m_maker.add(session->target());
}

void Recorder::report(const ArchiveMaker::Made &made)
{
    const auto found = m_sessions.find(made.target);
    LinkSession *const session = found == m_sessions.end() ? nullptr : found->second;
    const bool isNothing = made.records == 0 && made.saved.reason.isEmpty();
    const bool isAll = made.problem.isEmpty() && (isNothing || made.saved.isComplete);
    const QString journal = SessionJournal::nameFor(made.target);
    if (!isAll) {
        complain(QStringLiteral("%1; the session is kept: \"cprsession recover %2 -o OTHER.zip\" "
                                "saves it")
                     .arg(made.saved.reason.isEmpty() ? made.problem : made.saved.reason, journal));
        m_status = ExitStatus::Failed;
    }
    if (session && isAll)
        session->removeJournal();
    if (made.saved.isSaved) {
        ++m_savedSessions;
        printLine(QStringLiteral("%1: %2 s")
                      .arg(made.target,
                           QString::number(double(made.msecs) / Units::msecsPerSecond, 'f', 1)));
        if (session && session->stream() && session->stream()->isWhole())
            ++m_wholeSessions;
    }
    if (session) {
        m_sessions.erase(found);
        session->deleteLater();
    }
    if (m_options.sessions > 0 && m_wholeSessions >= m_options.sessions)
        stop();
}

// The senders of what was left have not come back in time: it is saved as far as it goes.
void Recorder::giveUpLeft()
{
    for (const Left &left : m_left)
        m_maker.add(left.target, true);
    m_left.clear();
}

void Recorder::stop()
{
    if (std::exchange(m_isStopping, true))
        return;
    giveUpLeft();
    const std::map<QString, LinkSession *> sessions = m_sessions;
    for (const auto &[target, session] : sessions)
        session->end();
}

void Recorder::tick()
{
    if (interrupted)
        stop();
    if (m_clock.hasExpired(qint64(m_options.patience) * Units::msecsPerSecond))
        giveUpLeft();
    m_progress.report(
        QStringLiteral("%1 manikins, %2 sessions saved")
            .arg(QString::number(m_hub.streams().size()), QString::number(m_savedSessions)));
    if (m_isExhausted)
        giveUpLeft();
    if ((m_isStopping || m_isExhausted) && m_sessions.empty() && !m_maker.isBusy())
        QCoreApplication::quit();
}

ExitStatus runRecord(const RecordOptions &options)
{
    QString error;
    const std::optional<LinkAddress> address =
        LinkAddress::parse(QString::fromStdString(options.address), &error);
    if (!address)
        return refuse(
            QStringLiteral("--from %1: %2").arg(QString::fromStdString(options.address), error));
    const QString folder = fileName(options.folder);
    const QFileInfo info(folder);
    if (!info.isDir() || !info.isWritable())
        return fail(QStringLiteral("%1 cannot be written; is the directory there and writable?")
                        .arg(folder));
    allowFiles();
    Recorder recorder(folder, options);
    if (!recorder.listen(*address, &error))
        return fail(error);
    std::signal(SIGINT, onRecordInterrupt);
    std::signal(SIGTERM, onRecordInterrupt);
    return recorder.run();
}

} // namespace

void addRecordCommand(CLI::App &app, Run &run)
{
    constexpr int maxSessions = 1000000;
    constexpr int maxPatience = 86400;
    const auto options = std::make_shared<RecordOptions>();
    CLI::App *command =
        app.add_subcommand("record", "Receive live manikins and save a session of each");
    command
        ->add_option("--from", options->address,
                     "Where to listen: tcp:PORT or local:NAME on this machine, "
                     "mqtt:HOST:PORT/SITE at a broker, - for standard input")
        ->required()
        ->type_name("ADDRESS");
    command->add_option("-o,--output", options->folder, "The folder of the archives")
        ->required()
        ->type_name("DIR");
    command
        ->add_option("--sessions", options->sessions, "End once so many sessions have come whole")
        ->type_name("N")
        ->check(CLI::Range(1, maxSessions));
    command
        ->add_option("--patience", options->patience,
                     "Seconds for which a sender that was lost may come back into its session")
        ->type_name("S")
        ->check(CLI::Range(0, maxPatience))
        ->capture_default_str();
    command->footer(
        "Prints a line for each archive. Ctrl-C ends all sessions and saves them as far as they\n"
        "go. While a session runs its journal lies beside the archive; what a killed run has\n"
        "left goes on when its sender comes back, and is saved when it does not.\n"
        "Exit status: 0 what came was saved, and came whole unless Ctrl-C ended it; 1 a session\n"
        "broke off, or could not be saved, which is told on stderr; 2 wrong usage.\n"
        "Examples:\n"
        "  cprsession record --from local:cpr -o lessons\n"
        "  cprsession record --from tcp:4711 -o lessons --sessions 6\n"
        "  gateway | cprsession record --from - -o lessons");
    command->callback([options, &run] { run.verb = [options] { return runRecord(*options); }; });
}
