// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Viewer.h"

#include "ScenarioNames.h"
#include "SessionExport.h"
#include "sessionfiles/SessionFile.h"

#include "sessionreview/Figures.h"

#include <manikinsim/Scenario.h>
#include <private/PrintableText.h>

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using cprquick::SessionLoader;
using manikinlog::SessionJournal;

namespace {

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
            data.filePath(QStringLiteral("unsaved"))};
}

Viewer::Viewer(const Paths &paths, QObject *parent)
    : QObject(parent), m_settings(paths.settings), m_appearance(&m_settings),
      m_recentFiles(&m_settings), m_unsavedSessions(paths.journals)
{
    connect(&m_appearance, &Appearance::languageChanged, this, &Viewer::scenariosChanged);
    connect(&m_loader, &SessionLoader::progressed, this, [this](double share) {
        m_loadedShare = share;
        Q_EMIT loadedShareChanged();
    });
    connect(&m_loader, &SessionLoader::finished, this, &Viewer::showLoaded);
    findLeft();
}

Viewer::~Viewer() = default;

QVariantList Viewer::scenarios() const
{
    return scenarioNames();
}

QDateTime Viewer::leftSessionTime() const
{
    return hasLeftSession() ? QFileInfo(SessionJournal::nameFor(m_left)).lastModified()
                            : QDateTime();
}

void Viewer::findLeft()
{
    const QString left = m_unsavedSessions.left().value(0);
    if (left == m_left)
        return;
    m_left = left;
    Q_EMIT leftSessionChanged();
}

void Viewer::open(const QString &name)
{
    m_loadedLeft.reset();
    load(name, SessionLoader::Kind::File);
}

void Viewer::load(const QString &name, SessionLoader::Kind kind)
{
    setProblem(QString());
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
        opened.isFromArchive = !result.isLog;
        opened.isUnsaved = left != nullptr;
        if (!left)
            m_recentFiles.add(result.fileName);
        opened.left = std::move(m_loadedLeft);
        opened.session = std::move(result.session);
        show(std::move(opened));
    }
    m_loadedLeft.reset();
    setProblem(result.problem);
    findLeft();
    Q_EMIT isLoadingChanged();
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
                       bool isReplay)
{
    m_loader.abandon();
    m_loadedLeft.reset();
    setProblem(QString());
    Q_EMIT isLoadingChanged();

    Opened opened;
    opened.session = std::make_unique<CPRData>();
    opened.journal = newJournal();
    opened.feed =
        std::make_unique<LiveFeed>(opened.session.get(), std::move(source), opened.journal.get());
    opened.name = name;
    opened.isReplay = isReplay;
    opened.isUnsaved = true;
    connect(opened.feed.get(), &LiveFeed::finished, this, [this](const QString &error) {
        if (!error.isEmpty())
            setProblem(error);
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
    connect(journal.get(), &SessionJournal::failed, this, &Viewer::setProblem);
    connect(journal.get(), &SessionJournal::resumed, this, [this] {
        setProblem(tr("The session's journal is written again; nothing is missing."));
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

template <typename Write>
Viewer::SaveResult Viewer::writeFile(const QUrl &url, const QString &suffix, bool replaces,
                                     Write write)
{
    QString name = url.toLocalFile();
    if (!session() || QFileInfo(name).fileName().isEmpty())
        return Failed;
    if (QFileInfo(name).suffix().isEmpty())
        name += QLatin1Char('.') + suffix;
    if (!replaces && QFileInfo::exists(name))
        return Exists;
    QString error;
    const bool isWritten = write(name, &error);
    setProblem(error);
    return isWritten ? Saved : Failed;
}

Viewer::SaveResult Viewer::save(const QUrl &url, bool replaces)
{
    return writeFile(url, QStringLiteral("zip"), replaces,
                     [this](const QString &name, QString *reason) {
                         sessionfiles::SaveResult saved;
                         if (m_opened.isFromArchive) {
                             // What is read from an archive lacks statistics and scores in its
                             // list; a copy has them.
                             CPRData copy(*session());
                             saved = sessionfiles::save(name, copy);
                         } else {
                             saved = sessionfiles::save(name, *session());
                         }
                         if (saved.isSaved && !isLive()) {
                             m_recentFiles.add(name);
                             m_opened.name = shownName(name);
                             Q_EMIT nameChanged();
                             if (saved.isComplete)
                                 setSaved();
                         }
                         *reason = saved.reason;
                         return saved.isComplete;
                     });
}

Viewer::SaveResult Viewer::exportTable(const QUrl &url, const QString &what, bool replaces)
{
    return writeFile(url, QStringLiteral("csv"), replaces,
                     [&](const QString &name, QString *error) {
                         return SessionExport::writeTable(name, what, *session(), error);
                     });
}

Viewer::SaveResult Viewer::exportPicture(const QUrl &url, bool replaces)
{
    return writeFile(url, QStringLiteral("png"), replaces,
                     [this](const QString &name, QString *error) {
                         return SessionExport::writePicture(name, *session(), error);
                     });
}

QString Viewer::fileName(const QUrl &url) const
{
    return PrintableText::shown(url.fileName());
}

QUrl Viewer::proposedFile(const QString &ending) const
{
    const QDateTime start = session() ? sessionreview::figuresOf(*session()).start() : QDateTime();
    const QString stem = (start.isValid() ? start.toLocalTime() : QDateTime::currentDateTime())
                             .toString(QStringLiteral("yyyy-MM-dd-HHmm"));
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const QDir folder = documents.exists() ? documents : QDir::home();
    return QUrl::fromLocalFile(folder.filePath(stem + ending));
}

void Viewer::discard()
{
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

void Viewer::bringBack()
{
    m_loadedLeft = LeftSession::claim(m_left);
    if (m_loadedLeft)
        load(m_loadedLeft->journal(), SessionLoader::Kind::LeftJournal);
    findLeft();
}

void Viewer::discardLeft()
{
    if (const auto left = LeftSession::claim(m_left))
        left->remove();
    findLeft();
}

void Viewer::setProblem(const QString &problem)
{
    const QString text = PrintableText::shown(problem);
    if (text == m_problem)
        return;
    m_problem = text;
    Q_EMIT problemChanged();
}
