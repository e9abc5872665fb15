// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Viewer.h"

#include "Remarks.h"
#include "ReportPrinting.h"
#include "ScenarioNames.h"
#include "SessionExport.h"
#include "WindowDialogs.h"
#include "sessionreview/Figures.h"
#include "sessionreview/Words.h"

#include <manikinsim/Scenario.h>
#include <private/PrintableText.h>

#include <CPREventSessionInfo.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <sessionplot/ClassReport.h>
#include <sessionplot/SessionReport.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QPrinter>
#include <QStandardPaths>

#include <utility>

using cprquick::SessionLoader;
using manikinlog::SessionJournal;
using SessionExport::Written;

namespace {

const QLatin1String archiveSuffix("zip");
const QLatin1String libraryKey("library");

QUrl proposed(const QDateTime &start, const QString &ending)
{
    const QString stem = (start.isValid() ? start.toLocalTime() : QDateTime::currentDateTime())
                             .toString(QStringLiteral("yyyy-MM-dd-HHmm"));
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const QDir folder = documents.exists() ? documents : QDir::home();
    return QUrl::fromLocalFile(folder.filePath(stem + ending));
}

// Keeps a journal that was not read whole beside the archive. The name that it has then; empty when
// it need not be kept.
QString keepLeft(LeftSession *left, const QString &archive, bool isDamaged)
{
    if (!left || !isDamaged)
        return QString();
    const QFileInfo file(archive);
    const QString kept = SessionExport::nameToKeep(
        file.dir().filePath(file.completeBaseName() + QStringLiteral(".journal")));
    left->moveTo(kept);
    return kept;
}

// The name of the file that is meant; empty for none of this machine.
QString nameOf(const QUrl &url, const QString &suffix)
{
    const QString name = url.toLocalFile();
    const QFileInfo file(name);
    if (file.fileName().isEmpty())
        return QString();
    return file.suffix().isEmpty() ? name + QLatin1Char('.') + suffix : name;
}

// What a file is called in front of people.
QString shownName(const QString &name)
{
    return PrintableText::shown(QFileInfo(name).fileName());
}

} // namespace

Viewer::Paths Viewer::Paths::ofUser()
{
    const QDir config(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
    const QDir data(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    return {config.filePath(QStringLiteral("cprviewer.json")),
            data.filePath(QStringLiteral("unsaved")), data.filePath(QStringLiteral("class.json"))};
}

Viewer::Viewer(const Paths &paths, QObject *parent)
    : QObject(parent), m_settings(paths.settings), m_appearance(&m_settings),
      m_recentFiles(&m_settings), m_classList(paths.classList),
      m_sound(&m_settings, SoundDevices::ofMachine()), m_learnerPlace(&m_settings),
      m_unsavedSessions(paths.journals), m_room(&m_classList, &m_unsavedSessions, &m_library)
{
    connect(&m_sound, &Sound::missed, this, &Viewer::setNotice);
    m_sound.setLanguage(m_appearance.language());
    connect(&m_appearance, &Appearance::languageChanged, &m_sound,
            [this] { m_sound.setLanguage(m_appearance.language()); });
    m_library.setFolder(m_settings.value(libraryKey).toString());
    connect(&m_classList, &ClassList::failed, this, [this](const QString &reason) {
        setProblem(tr("The class list cannot be stored: %1").arg(reason));
    });
    connect(&m_room, &ClassRoom::problem, this, [this](const QString &text) { setProblem(text); });
    connect(&m_room, &ClassRoom::left, this, &Viewer::findLeft);
    connect(&m_library, &cprquick::LibraryFolder::corrected, this,
            [this](bool isDone, const QString &text) {
                setProblem(isDone ? QString() : text);
                setNotice(isDone ? text : QString());
            });
    connect(&m_library, &cprquick::LibraryFolder::renamed, &m_classList, &ClassList::rename);
    connect(&m_appearance, &Appearance::languageChanged, this, &Viewer::scenariosChanged);
    connect(&m_loader, &SessionLoader::progressed, this, [this](double share) {
        m_loadedShare = share;
        Q_EMIT loadedShareChanged();
    });
    connect(&m_loader, &SessionLoader::finished, this, &Viewer::showLoaded);
    connect(&m_other, &cprquick::SessionSource::sessionChanged, this, [this] {
        if (m_other.session())
            m_recentFiles.add(m_other.file().toLocalFile());
    });
    connect(&m_writer, &SessionWriter::finished, this, &Viewer::finishWriting);
    connect(&m_writer, &SessionWriter::progressed, this, &Viewer::setWrittenParts);
    m_unsavedSessions.removeSaved();
    findLeft();
}

Viewer::~Viewer() = default;

QVariantList Viewer::scenarios() const
{
    return scenarioNames();
}

void Viewer::findLeft()
{
    QStringList known;
    for (const QVariant &left : qAsConst(m_left))
        known.append(left.toMap().value(QStringLiteral("target")).toString());
    const QStringList targets = m_unsavedSessions.left();
    if (targets == known)
        return;
    m_left.clear();
    for (const QString &target : targets) {
        const LeftSummary summary = UnsavedSessions::summaryOf(target);
        m_left.append(QVariantMap{{QStringLiteral("target"), target},
                                  {QStringLiteral("learners"), summary.learners},
                                  {QStringLiteral("start"), summary.start},
                                  {QStringLiteral("msecs"), summary.msecs}});
    }
    Q_EMIT leftSessionsChanged();
}

void Viewer::open(const QString &name)
{
    m_loadedLeft.reset();
    load(name, SessionLoader::Kind::File);
}

void Viewer::salvage(const QString &name)
{
    m_loadedLeft.reset();
    load(name, SessionLoader::Kind::Salvaged);
}

void Viewer::load(const QString &name, SessionLoader::Kind kind)
{
    setProblem(QString());
    setNotice(QString());
    m_loadedKind = kind;
    m_loadedName = shownName(name);
    m_loadedShare = 0;
    m_loader.load(name, kind);
    Q_EMIT loadedShareChanged();
    Q_EMIT isLoadingChanged();
}

void Viewer::cancelLoading()
{
    m_loader.cancel();
}

void Viewer::showLoaded()
{
    SessionLoader::Result result = m_loader.handOver();
    const std::unique_ptr<LeftSession> &left = m_loadedLeft;
    if (result.session) {
        Opened opened;
        opened.name = left ? tr("Recovered session") : m_loadedName;
        opened.source = QFileInfo(result.fileName).absoluteFilePath();
        opened.report = result.report;
        opened.isFromArchive = !result.isLog;
        opened.isUnsaved = left != nullptr;
        opened.isDamaged = result.isDamaged;
        if (opened.isFromArchive && !opened.isDamaged && !left)
            opened.archive = opened.source;
        opened.isSalvaged = m_loadedKind == SessionLoader::Kind::Salvaged;
        if (!left)
            m_recentFiles.add(result.fileName);
        opened.left = std::move(m_loadedLeft);
        opened.session = std::move(result.session);
        show(std::move(opened));
    }
    m_loadedLeft.reset();
    const bool canSalvage = result.isDamaged && m_loadedKind == SessionLoader::Kind::File;
    setProblem(result.problem, canSalvage ? result.fileName : QString());
    findLeft();
    Q_EMIT isLoadingChanged();
}

void Viewer::compareWith(const QString &name)
{
    m_other.setFile(name.isEmpty() ? QUrl()
                                   : QUrl::fromLocalFile(QFileInfo(name).absoluteFilePath()));
}

bool Viewer::startScenario(const QString &name, int seed, double speed)
{
    const manikinsim::Scenario *scenario = manikinsim::Scenario::find(name);
    if (!scenario) {
        setProblem(tr("There is no scenario \"%1\".").arg(name));
        return false;
    }
    startLive(RecordSource::simulated(*scenario, static_cast<quint64>(seed)),
              tr("Simulated: %1").arg(scenarioTitle(name)), speed, false);
    return true;
}

bool Viewer::startNext(const QString &name, int seed, double speed)
{
    const manikinsim::Scenario *named = manikinsim::Scenario::find(name);
    const int number = m_classList.next();
    if (!named || number < 0)
        return startScenario(name, seed, speed);
    const ClassList::Entry &entry = m_classList.entry(number);
    manikinsim::Scenario scenario = *named;
    scenario.learners = QStringList(entry.name);
    scenario.manikinName = entry.manikin;
    if (entry.protocol >= 0)
        scenario.protocol = static_cast<manikinsim::Scenario::Protocol>(entry.protocol);
    if (m_classList.minutes() > 0)
        scenario.seconds = m_classList.minutes() * 60;
    const QString problem = scenario.problem();
    if (!problem.isEmpty()) {
        setProblem(problem);
        return false;
    }
    QStringList names{entry.name, entry.manikin, tr("Simulated: %1").arg(scenarioTitle(name))};
    names.removeAll(QString());
    startLive(RecordSource::simulated(scenario, static_cast<quint64>(seed)),
              PrintableText::shown(names.join(QStringLiteral(" \u00b7 "))), speed, false, entry.id);
    return true;
}

bool Viewer::startReplay(const QString &name, double speed)
{
    QString error;
    auto source = RecordSource::log(name, &error);
    if (!source) {
        setProblem(error);
        return false;
    }
    startLive(std::move(source), shownName(name), speed, true);
    return true;
}

void Viewer::startLive(std::unique_ptr<RecordSource> source, const QString &name, double speed,
                       bool isReplay, int classId)
{
    m_loader.abandon();
    m_loadedLeft.reset();
    setProblem(QString());
    setNotice(QString());
    Q_EMIT isLoadingChanged();

    Opened opened;
    opened.session = std::make_unique<CPRData>();
    opened.journal = newJournal();
    opened.feed =
        std::make_unique<LiveFeed>(opened.session.get(), std::move(source), opened.journal.get());
    opened.name = name;
    opened.isReplay = isReplay;
    opened.isUnsaved = true;
    opened.classId = classId;
    connect(opened.feed.get(), &LiveFeed::finished, this, [this](const QString &error) {
        if (!error.isEmpty())
            setProblem(error);
        if (!std::exchange(m_opened.isCounted, true)) // it may be resumed, and end again
            m_classList.endSession(m_opened.classId);
        Q_EMIT isLiveChanged();
    });
    opened.feed->start(speed);
    show(std::move(opened));
}

std::unique_ptr<SessionJournal> Viewer::newJournal()
{
    auto journal = std::make_unique<SessionJournal>();
    const QString target = m_unsavedSessions.newTarget();
    if (!target.isEmpty() && !journal->open(target))
        setProblem(journal->errorString());
    connect(journal.get(), &SessionJournal::failed, this,
            [this](const QString &reason) { setProblem(reason); });
    connect(journal.get(), &SessionJournal::resumed, this, [this] {
        setProblem(QString());
        setNotice(tr("The session's journal is written again; nothing is missing."));
    });
    return journal;
}

void Viewer::show(Opened opened)
{
    // The old session goes at the end, when the pages have let go of it. The file of its journal
    // stays.
    std::swap(m_opened, opened);
    Q_EMIT sessionChanged();
    Q_EMIT nameChanged();
    Q_EMIT isLiveChanged();
    Q_EMIT isUnsavedChanged();
}

void Viewer::advanceTo(qint64 msecs)
{
    if (m_opened.feed)
        m_opened.feed->advanceTo(msecs);
}

void Viewer::stop()
{
    if (m_opened.feed)
        m_opened.feed->stop();
}

void Viewer::resume()
{
    if (!canResume())
        return;
    m_opened.feed->resume();
    Q_EMIT isLiveChanged();
}

// A live session's journal and every other session get it in one way.
void Viewer::insert(const manikinlog::Record::Entry &entry)
{
    if (m_opened.feed)
        m_opened.feed->insert(entry);
    else
        manikinlog::ManikinLogPlayer(session()).play({0, entry});
    ++m_changes;
    m_opened.isUnsaved = true;
    Q_EMIT isUnsavedChanged();
}

CPREventBase *Viewer::addRemark(const QString &text, int msecs)
{
    if (!session())
        return nullptr;
    return Remarks::add(*session(), text, msecs,
                        [this](const manikinlog::Remark &remark) { insert(remark); });
}

CPREventBase *Viewer::correctRemark(CPREventBase *remark, const QString &text)
{
    const QString stored = sessionreview::remarkOf(text);
    if (!isOfSession(remark) || remarkText(remark).isEmpty() || stored.isEmpty())
        return nullptr;
    if (stored == remarkText(remark))
        return remark;
    const int msecs = remark->msecs();
    removeRemark(remark);
    return addRemark(stored, msecs);
}

void Viewer::removeRemark(CPREventBase *remark)
{
    const QString text = remarkText(remark);
    if (isOfSession(remark) && !text.isEmpty())
        insert(manikinlog::RemarkRemoval{remark->msecs(), text});
}

bool Viewer::isOfSession(const CPREventBase *event) const
{
    return event && session() && event->events() == session()->cprEvents();
}

QString Viewer::remarkText(CPREventBase *event) const
{
    return Remarks::textOf(event);
}

bool Viewer::isDamagedSource(const QString &name) const
{
    return m_opened.isDamaged && QFileInfo(name) == QFileInfo(m_opened.source);
}

// Nothing when the file can be begun.
std::optional<Viewer::SaveResult> Viewer::whyNotWritten(const QString &name, bool replaces)
{
    if (name.isEmpty())
        return Failed;
    if (isWriting()) {
        setProblem(tr("Another file is still being written."));
        return Failed;
    }
    if (replaces || !QFileInfo::exists(name))
        return std::nullopt;
    return isDamagedSource(name) ? LosesSource : Exists;
}

// For the thread that writes. What is read from an archive lacks statistics and scores in its list,
// and would be saved without them; all else is written as it is listed.
std::unique_ptr<CPRData> Viewer::copyForWriting(bool isAsListed) const
{
    return isAsListed ? SessionExport::copyAsListed(*session())
                      : std::make_unique<CPRData>(*session());
}

void Viewer::write(Writing writing, std::unique_ptr<CPRData> session, const SessionWriter::Job &job)
{
    setProblem(QString());
    setNotice(QString());
    m_writing = std::move(writing);
    m_writer.start(std::move(session), job);
    Q_EMIT isWritingChanged();
}

void Viewer::finishWriting(const Written &result)
{
    Written written = result;
    const Writing writing = std::exchange(m_writing, {});
    setProblem(written.problem);
    if (written.isThere && writing.isSession)
        m_recentFiles.add(written.name);
    if (written.isThere && writing.saved && writing.saved == session() && !isLive()) {
        m_opened.name = shownName(written.name);
        if (!written.kept.isEmpty())
            m_opened.source = written.kept;
        Q_EMIT nameChanged();
        if (written.isComplete)
            written.kept += keepLeft(m_opened.left.get(), written.name, m_opened.isDamaged);
        if (written.isComplete)
            m_opened.archive = written.name;
        if (written.isComplete && writing.changes == m_changes)
            setSaved();
    }
    if (written.isComplete)
        written.kept += keepLeft(writing.left.get(), written.name, written.isSalvaged);
    if (written.isComplete && writing.left)
        writing.left->remove();
    setWrittenParts(0, 0);
    if (written.isComplete && !written.done.isEmpty()) {
        setNotice(written.done);
    } else if (written.isComplete) {
        const QString name = QDir::toNativeSeparators(QFileInfo(written.name).absoluteFilePath());
        setNotice((writing.isSession ? tr("Saved as %1.") : tr("Exported to %1.")).arg(name)
                  + (written.kept.isEmpty() ? QString()
                                            : QLatin1Char(' ')
                             + tr("The damaged file is kept as %1.")
                                   .arg(QFileInfo(written.kept).fileName())));
    }
    findLeft();
    Q_EMIT isWritingChanged();
    Q_EMIT this->written(written.isComplete);
}

Viewer::SaveResult Viewer::save(const QUrl &url, bool replaces)
{
    const QString name = nameOf(url, archiveSuffix);
    if (!session() || isLive())
        return Failed;
    if (const auto reason = whyNotWritten(name, replaces))
        return *reason;
    const auto writeIt =
        isDamagedSource(name) ? SessionExport::replaceDamaged : SessionExport::writeArchive;
    write({session(), nullptr, true, m_changes}, copyForWriting(!m_opened.isFromArchive),
          [name, writeIt](CPRData *copy) { return writeIt(name, *copy); });
    return Started;
}

Viewer::SaveResult Viewer::saveInLibrary()
{
    const QDir folder(m_library.folder());
    if (!session() || isLive() || m_library.folder().isEmpty())
        return Failed;
    if (!m_opened.archive.isEmpty())
        return save(QUrl::fromLocalFile(m_opened.archive), true);
    const QString stem = proposedFile(QString()).fileName();
    QString name;
    for (int number = 1; name.isEmpty() || QFileInfo::exists(name); ++number)
        name = folder.filePath(stem + (number > 1 ? QStringLiteral("-%1").arg(number) : QString())
                               + QLatin1Char('.') + archiveSuffix);
    return save(QUrl::fromLocalFile(name), false);
}

Viewer::SaveResult Viewer::exportReport(const QUrl &url, const QString &remark, bool isA4,
                                        bool replaces)
{
    const QString name = nameOf(url, QStringLiteral("pdf"));
    if (!session())
        return Failed;
    if (const auto reason = whyNotWritten(name, replaces))
        return *reason;
    const SessionExport::ReportNotes notes{remark, isDamaged(),
                                           m_library.resultsOf(session()->learners()),
                                           isA4 ? QPageSize::A4 : QPageSize::Letter};
    write({}, copyForWriting(false),
          [name, notes](CPRData *copy) { return SessionExport::writeReport(name, *copy, notes); });
    return Started;
}

Viewer::SaveResult Viewer::exportClass(cprquick::ClassModel *model, const QUrl &url, bool isA4,
                                       bool replaces)
{
    const QString name = nameOf(url, QStringLiteral("pdf"));
    if (const auto reason = whyNotWritten(name, replaces))
        return *reason;
    write({}, nullptr,
          [name, figures = model->figures(), paper = isA4 ? QPageSize::A4 : QPageSize::Letter](
              CPRData * /*none*/) { return SessionExport::writeClass(name, figures, paper); });
    return Started;
}

Viewer::SaveResult Viewer::exportReports(cprquick::ClassModel *model, const QUrl &folder, bool isA4,
                                         bool replaces)
{
    const QString name = folder.toLocalFile();
    const QStringList files = model->files();
    if (name.isEmpty() || files.isEmpty())
        return Failed;
    const QStringList reports = SessionExport::reportNames(name, files);
    for (const QString &report : reports) {
        if (const auto reason = whyNotWritten(report, replaces))
            return *reason;
    }
    SessionExport::ReportNotes notes = notesFor(*model);
    notes.paper = isA4 ? QPageSize::A4 : QPageSize::Letter;
    write({}, nullptr, [this, name, files, notes](CPRData * /*none*/) {
        return SessionExport::writeReports(name, files, notes, [this](int done, int total) {
            return m_writer.advance(done, total);
        });
    });
    return Started;
}

SessionExport::ReportNotes Viewer::notesFor(const cprquick::ClassModel &model)
{
    QStringList learners;
    for (const sessionreview::ClassRow &row : model.figures().rows)
        learners.append(row.learner);
    return {{}, false, m_library.resultsOf(learners), QPageSize::A4};
}

void Viewer::printReports(cprquick::ClassModel *model)
{
    const QStringList files = model->files();
    if (files.isEmpty())
        return;
    choosePrinter(
        tr("Print reports"),
        [this, files, notes = notesFor(*model)](const std::shared_ptr<QPrinter> &printer) {
            if (isWriting()) {
                setProblem(tr("Another file is still being written."));
                return;
            }
            write({}, nullptr, [this, printer, files, notes](CPRData * /*none*/) {
                return SessionExport::printReports(
                    printer.get(), files, notes,
                    [this](int done, int total) { return m_writer.advance(done, total); });
            });
        });
}

void Viewer::setWrittenParts(int parts, int of)
{
    m_writtenParts = parts;
    m_partsToWrite = of;
    Q_EMIT writtenPartsChanged();
}

void Viewer::printReport(const QString &remark)
{
    if (!session())
        return;
    // The preview may outlive what is shown.
    const std::shared_ptr<CPRData> copy = copyForWriting(false);
    const auto model = std::make_shared<sessionplot::PlotModel>(*copy);
    sessionplot::SessionReport report(*model);
    report.setRemark(remark);
    report.setDamaged(isDamaged());
    report.setEarlier(sessionreview::earlierOf(sessionreview::resultOf(model->review()),
                                               m_library.resultsOf(session()->learners())));
    previewReport(
        report.title(), QPageLayout::Portrait,
        [copy, model, report](QPagedPaintDevice *device) { return report.print(device); });
}

void Viewer::printClass(cprquick::ClassModel *model)
{
    const sessionplot::ClassReport report(model->figures());
    previewReport(report.title(), QPageLayout::Landscape,
                  [report](QPagedPaintDevice *device) { return report.print(device); });
}

void Viewer::chooseFolder(const QString &title, const QJSValue &action)
{
    const QString start = m_folder.isEmpty() ? QDir::homePath() : m_folder;
    ::chooseFolder(title, start, [this, action](const QString &folder) {
        m_folder = folder;
        QJSValue(action).call({QUrl::fromLocalFile(folder).toString()});
    });
}

void Viewer::chooseLibrary(const QUrl &folder)
{
    const QString name = folder.toLocalFile();
    if (name.isEmpty())
        return;
    m_settings.setValue(libraryKey, name);
    m_library.setFolder(name);
}

void Viewer::readClassList(const QUrl &url)
{
    const int added = m_classList.addFile(url);
    setProblem(added >= 0 ? QString() : tr("%1 cannot be read.").arg(fileName(url)));
    setNotice(added >= 0 ? tr("%n learner(s) added.", "", added) : QString());
}

Viewer::SaveResult Viewer::exportTable(const QUrl &url, const QString &what, bool replaces)
{
    const QString name = nameOf(url, QStringLiteral("csv"));
    if (!session())
        return Failed;
    if (const auto reason = whyNotWritten(name, replaces))
        return *reason;
    write({}, copyForWriting(what == QLatin1String("events")),
          [name, what](CPRData *copy) { return SessionExport::writeTable(name, what, *copy); });
    return Started;
}

Viewer::SaveResult Viewer::exportPicture(const QUrl &url, bool replaces)
{
    const QString name = nameOf(url, QStringLiteral("png"));
    if (!session())
        return Failed;
    if (const auto reason = whyNotWritten(name, replaces))
        return *reason;
    write({}, copyForWriting(false),
          [name](CPRData *copy) { return SessionExport::writePicture(name, *copy); });
    return Started;
}

namespace {

SessionExport::Compared comparedOf(const cprquick::ComparisonModel &model)
{
    return {model.plot(false), model.plot(true), model.zero(), model.otherZero()};
}

} // namespace

Viewer::SaveResult Viewer::exportComparison(cprquick::ComparisonModel *model, const QUrl &url,
                                            bool replaces)
{
    const QString name = nameOf(url, QStringLiteral("csv"));
    if (const auto reason = whyNotWritten(name, replaces))
        return *reason;
    const SessionExport::Compared compared = comparedOf(*model);
    if (!compared.model)
        return Failed;
    write({}, nullptr, [name, compared](CPRData * /*none*/) {
        return SessionExport::writeComparison(name, compared);
    });
    return Started;
}

Viewer::SaveResult Viewer::exportComparisonPicture(cprquick::ComparisonModel *model,
                                                   bool isOverlaid, const QUrl &url, bool replaces)
{
    const QString name = nameOf(url, QStringLiteral("png"));
    if (const auto reason = whyNotWritten(name, replaces))
        return *reason;
    const SessionExport::Compared compared = comparedOf(*model);
    if (!compared.model)
        return Failed;
    write({}, nullptr, [name, compared, isOverlaid](CPRData * /*none*/) {
        return SessionExport::writeComparisonPicture(name, compared, isOverlaid);
    });
    return Started;
}

QString Viewer::fileName(const QUrl &url) const
{
    return PrintableText::shown(url.fileName());
}

QUrl Viewer::proposedFile(const QString &ending) const
{
    if (!session())
        return proposed({}, ending);
    if (!m_opened.archive.isEmpty() && ending == QLatin1Char('.') + archiveSuffix)
        return QUrl::fromLocalFile(m_opened.archive);
    const QDateTime start = sessionreview::figuresOf(*session()).start();
    // A part of a session is not taken for all of it, and does not go over that.
    return proposed(start, isDamaged() ? QLatin1Char('-') + tr("salvaged") + ending : ending);
}

void Viewer::discard()
{
    // One that is in an archive was done; what is thrown away of it is remarks. One that ends here
    // does not begin to count.
    if (std::exchange(m_opened.isCounted, true) && m_opened.archive.isEmpty())
        m_classList.takeSessionBack(std::exchange(m_opened.classId, 0));
    stop();
    setSaved();
}

void Viewer::setSaved()
{
    if (m_opened.journal)
        m_opened.journal->remove();
    if (m_opened.left)
        m_opened.left->remove();
    m_opened.left.reset();
    m_opened.isUnsaved = false;
    Q_EMIT isUnsavedChanged();
}

void Viewer::bringBack(const QString &target)
{
    m_loadedLeft = LeftSession::claim(target);
    if (m_loadedLeft)
        load(m_loadedLeft->journal(), SessionLoader::Kind::Salvaged);
    findLeft();
}

Viewer::SaveResult Viewer::saveLeft(const QString &target, const QUrl &url, bool replaces)
{
    const QString name = nameOf(url, archiveSuffix);
    if (const auto reason = whyNotWritten(name, replaces))
        return *reason;
    auto left = LeftSession::claim(target);
    findLeft();
    if (!left)
        return Failed;
    const QString journal = left->journal();
    write({nullptr, std::move(left), true, 0}, nullptr, [name, journal](CPRData * /*none*/) {
        const SessionLoader::Result loaded =
            SessionLoader::loadHere(journal, SessionLoader::Kind::Salvaged);
        Written written = loaded.session
            ? SessionExport::writeArchive(name, *loaded.session)
            : Written{false, false, name, {}, loaded.problem, false, {}};
        written.isSalvaged = loaded.isDamaged;
        return written;
    });
    return Started;
}

void Viewer::discardLeft(const QString &target)
{
    if (const auto left = LeftSession::claim(target))
        left->remove();
    findLeft();
}

QUrl Viewer::proposedFileForLeft(const QString &target) const
{
    return proposed(UnsavedSessions::summaryOf(target).start, QLatin1Char('.') + archiveSuffix);
}

void Viewer::setProblem(const QString &problem, const QString &damagedFile)
{
    const QString text = PrintableText::shown(problem);
    if (text == m_problem && damagedFile == m_damagedFile)
        return;
    m_problem = text;
    m_damagedFile = damagedFile;
    Q_EMIT problemChanged();
}

void Viewer::setNotice(const QString &notice)
{
    const QString text = PrintableText::shown(notice);
    if (std::exchange(m_notice, text) != text)
        Q_EMIT noticeChanged();
}
