// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_VIEWER_H
#define CPRVIEWER_VIEWER_H

#include "Appearance.h"
#include "LiveFeed.h"
#include "RecentFiles.h"
#include "Settings.h"
#include "UnsavedSessions.h"
#include "cprquick/SessionLoader.h"

#include <CPRData.h>
#include <manikinlog/SessionJournal.h>

#include <QDateTime>
#include <QUrl>
#include <QVariantList>

/// What the window shows and does: the session that is open, where it comes from, and what becomes
/// of it.
///
/// A live session is journalled until it is saved or discarded. A journal that a killed viewer has
/// left is offered in leftSession. Only discard() throws an unsaved session away: when another one
/// is opened, it stays in its journal.
class Viewer final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program has one.")

    // clang-format off
    /// Null when none is open.
    Q_PROPERTY(CPRData     *session      READ session      NOTIFY sessionChanged)
    /// What the session is called in front of people.
    Q_PROPERTY(QString      name         READ name         NOTIFY nameChanged)
    /// Records still come.
    Q_PROPERTY(bool         isLive       READ isLive       NOTIFY isLiveChanged)
    /// It is live, or was until it ended.
    Q_PROPERTY(bool         wasLive      READ wasLive      NOTIFY sessionChanged)
    /// The records were recorded before.
    Q_PROPERTY(bool         isReplay     READ isReplay     NOTIFY sessionChanged)
    /// stop() can be taken back.
    Q_PROPERTY(bool         canResume    READ canResume    NOTIFY isLiveChanged)
    /// It would be lost without its journal.
    Q_PROPERTY(bool         isUnsaved    READ isUnsaved    NOTIFY isUnsavedChanged)
    /// A file is being loaded; the session that is open stays until it is there.
    Q_PROPERTY(bool         isLoading    READ isLoading    NOTIFY isLoadingChanged)
    /// Of the file that is being loaded; the share goes from 0 to 1.
    Q_PROPERTY(QString      loadedName   READ loadedName   NOTIFY isLoadingChanged)
    Q_PROPERTY(double       loadedShare  READ loadedShare  NOTIFY loadedShareChanged)
    /// What went wrong last, for people; empty when they have seen it.
    Q_PROPERTY(QString      problem      READ problem      NOTIFY problemChanged)
    /// A session that a killed viewer has left, and when its last record came.
    Q_PROPERTY(bool         hasLeftSession  READ hasLeftSession  NOTIFY leftSessionChanged)
    Q_PROPERTY(QDateTime    leftSessionTime READ leftSessionTime NOTIFY leftSessionChanged)
    Q_PROPERTY(Appearance  *appearance   READ appearance   CONSTANT)
    Q_PROPERTY(RecentFiles *recentFiles  READ recentFiles  CONSTANT)
    /// Scenarios of the simulated manikin: maps with name, title and description.
    Q_PROPERTY(QVariantList scenarios    READ scenarios    NOTIFY scenariosChanged)
    // clang-format on

public:
    /// Where the viewer stores what outlives it.
    struct Paths {
        QString settings; ///< a file; empty when nothing is to be stored
        QString journals; ///< a folder; empty when nothing is to be journalled
        /// The user's own.
        static Paths ofUser();
    };

    enum SaveResult { Saved, Exists, Failed };
    Q_ENUM(SaveResult)

    explicit Viewer(const Paths &paths, QObject *parent = nullptr);
    ~Viewer() override;

    // clang-format off
    CPRData     *session() const         { return m_opened.session.get(); }
    QString      name() const            { return m_opened.name; }
    bool         isLive() const          { return m_opened.feed && m_opened.feed->isRunning(); }
    bool         wasLive() const         { return m_opened.feed != nullptr; }
    bool         isReplay() const        { return m_opened.isReplay; }
    bool         canResume() const       { return m_opened.feed && m_opened.feed->canResume(); }
    bool         isUnsaved() const       { return m_opened.isUnsaved; }
    bool         isLoading() const       { return m_loader.isLoading(); }
    QString      loadedName() const      { return m_loadedName; }
    double       loadedShare() const     { return m_loadedShare; }
    QString      problem() const         { return m_problem; }
    bool         hasLeftSession() const  { return !m_left.isEmpty(); }
    QDateTime    leftSessionTime() const;
    Appearance  *appearance()            { return &m_appearance; }
    RecentFiles *recentFiles()           { return &m_recentFiles; }
    QVariantList scenarios() const;
    // clang-format on

    /// Loads an archive or a recorded log.
    Q_INVOKABLE void open(const QString &name);
    /// The same; a problem when it is not a file of this machine.
    Q_INVOKABLE void openUrl(const QUrl &url) { open(url.toString(QUrl::PreferLocalFile)); }
    Q_INVOKABLE void cancelLoading();
    /// Starts the simulated manikin. False, with a problem, when there is no such scenario. With
    /// speed 0 time stands still; see advanceTo().
    Q_INVOKABLE bool startScenario(const QString &name, int seed, double speed = 1);
    /// Plays a recorded log as if it came from the manikin. False when it cannot be opened.
    Q_INVOKABLE bool startReplay(const QString &name, double speed);
    /// Plays what a live session has before the session time \a msecs at once.
    void advanceTo(qint64 msecs);
    /// Ends a live session.
    Q_INVOKABLE void stop();
    /// Takes it back.
    Q_INVOKABLE void resume();

    /// Saves the session under \a url, to which the suffix is added if it has none. A file that is
    /// there is replaced only when \a replaces says so.
    Q_INVOKABLE Viewer::SaveResult save(const QUrl &url, bool replaces);
    /// The same for a table (events, summary, waves, guidelines) and the review picture.
    Q_INVOKABLE Viewer::SaveResult exportTable(const QUrl &url, const QString &what, bool replaces);
    Q_INVOKABLE Viewer::SaveResult exportPicture(const QUrl &url, bool replaces);
    /// The name of a file without its folder, in front of people.
    Q_INVOKABLE QString fileName(const QUrl &url) const;
    /// A file to propose for the session; its name ends as \a ending, "-events.csv", say.
    Q_INVOKABLE QUrl proposedFile(const QString &ending) const;
    /// The session need not be saved.
    Q_INVOKABLE void discard();

    /// Loads the session that was left, or throws it away, and looks for another.
    Q_INVOKABLE void bringBack();
    Q_INVOKABLE void discardLeft();

    Q_INVOKABLE void dismissProblem() { setProblem(QString()); }

Q_SIGNALS:
    void sessionChanged();
    void nameChanged();
    void isLiveChanged();
    void isUnsavedChanged();
    void isLoadingChanged();
    void loadedShareChanged();
    void problemChanged();
    void leftSessionChanged();
    void scenariosChanged();

private:
    /// What goes when its session goes; the feed before the journal, and both before the session.
    struct Opened {
        std::unique_ptr<CPRData> session;
        std::unique_ptr<manikinlog::SessionJournal> journal; // of a live session
        std::unique_ptr<LiveFeed> feed; // of a live session
        std::unique_ptr<LeftSession> left; // where it was brought back from
        QString name;
        bool isFromArchive = false;
        bool isReplay = false;
        bool isUnsaved = false;
    };

    void load(const QString &name, cprquick::SessionLoader::Kind kind);
    void showLoaded();
    void startLive(std::unique_ptr<RecordSource> source, const QString &name, double speed,
                   bool isReplay);
    std::unique_ptr<manikinlog::SessionJournal> newJournal();
    void show(Opened opened);
    template <typename Write>
    SaveResult writeFile(const QUrl &url, const QString &suffix, bool replaces, Write write);
    void setSaved();
    void setProblem(const QString &problem);
    void findLeft();

    Settings m_settings;
    Appearance m_appearance;
    RecentFiles m_recentFiles;
    UnsavedSessions m_unsavedSessions;
    Opened m_opened;
    cprquick::SessionLoader m_loader;
    std::unique_ptr<LeftSession> m_loadedLeft; // that is being loaded; null for a file
    QString m_loadedName;
    double m_loadedShare = 0;
    QString m_problem;
    QString m_left; // name of the session that is offered; empty for none
};

#endif
