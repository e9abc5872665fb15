// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_VIEWER_H
#define CPRVIEWER_VIEWER_H

#include "Appearance.h"
#include "ClassList.h"
#include "ClassRoom.h"
#include "LearnerPlace.h"
#include "LiveFeed.h"
#include "RecentFiles.h"
#include "SessionWriter.h"
#include "Settings.h"
#include "Sound.h"
#include "UnsavedSessions.h"
#include "cprquick/ClassModel.h"
#include "cprquick/ComparisonModel.h"
#include "cprquick/SessionLoader.h"
#include "cprquick/SessionSource.h"

#include <CPRData.h>
#include <manikinlog/SessionJournal.h>

#include <QDateTime>
#include <QJSValue>
#include <QPointer>
#include <QUrl>
#include <QVariantList>

#include <optional>

/// What the window shows and does: the session that is open, where it comes from, and what becomes
/// of it.
///
/// A live session is journalled until it is saved or discarded. Journals that killed viewers have
/// left are offered in leftSessions. Only discard() and discardLeft() throw an unsaved session
/// away: when another one is opened, it stays in its journal.
///
/// Of a damaged file what can be read is shown, and salvage() looks for more. Saving over such a
/// file keeps it under another name.
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
    /// It would be lost without its journal, or holds remarks that its file does not have.
    Q_PROPERTY(bool         isUnsaved    READ isUnsaved    NOTIFY isUnsavedChanged)
    /// A file is being loaded; the session that is open stays until it is there.
    Q_PROPERTY(bool         isLoading    READ isLoading    NOTIFY isLoadingChanged)
    /// Of the file that is being loaded; the share goes from 0 to 1.
    Q_PROPERTY(QString      loadedName   READ loadedName   NOTIFY isLoadingChanged)
    Q_PROPERTY(double       loadedShare  READ loadedShare  NOTIFY loadedShareChanged)
    /// Not all that its file should hold is in the session. It stays so when what is there is saved.
    Q_PROPERTY(bool         isDamaged    READ isDamaged    NOTIFY sessionChanged)
    /// It is what salvage() or bringBack() has found.
    Q_PROPERTY(bool         isSalvaged   READ isSalvaged   NOTIFY sessionChanged)
    /// Its file, and what became of the parts of that, a line for each.
    Q_PROPERTY(QString      source       READ source       NOTIFY sessionChanged)
    Q_PROPERTY(QStringList  report       READ report       NOTIFY sessionChanged)
    /// A file is being saved or exported; written() comes at the end.
    Q_PROPERTY(bool         isWriting    READ isWriting    NOTIFY isWritingChanged)
    /// Of a file with several parts: how many are written, and how many there are; else 0 of 0.
    Q_PROPERTY(int          writtenParts READ writtenParts NOTIFY writtenPartsChanged)
    Q_PROPERTY(int          partsToWrite READ partsToWrite NOTIFY writtenPartsChanged)
    /// What went wrong last, for people; empty when they have seen it.
    Q_PROPERTY(QString      problem      READ problem      NOTIFY problemChanged)
    /// The damaged file of which the problem tells; empty when nothing is to be salvaged.
    Q_PROPERTY(QString      damagedFile  READ damagedFile  NOTIFY problemChanged)
    /// What was done last, for people; empty when they have seen it.
    Q_PROPERTY(QString      notice       READ notice       NOTIFY noticeChanged)
    /// The sessions that killed viewers have left, the newest first: maps with target, which stands
    /// for the session, learners, start and msecs, its length.
    Q_PROPERTY(QVariantList leftSessions READ leftSessions NOTIFY leftSessionsChanged)
    /// The session that the open one is compared with; see compareWith().
    Q_PROPERTY(cprquick::SessionSource *other READ other   CONSTANT)
    Q_PROPERTY(Appearance  *appearance   READ appearance   CONSTANT)
    Q_PROPERTY(RecentFiles *recentFiles  READ recentFiles  CONSTANT)
    /// The stored sessions, in the folder that the instructor has chosen.
    Q_PROPERTY(cprquick::LibraryFolder *library READ library CONSTANT)
    Q_PROPERTY(ClassList   *classList    READ classList    CONSTANT)
    Q_PROPERTY(Sound       *sound        READ sound        CONSTANT)
    /// Where the learner's view is.
    Q_PROPERTY(LearnerPlace *learnerPlace READ learnerPlace CONSTANT)
    /// The class that trains at the same time.
    Q_PROPERTY(ClassRoom   *room         READ room         CONSTANT)
    /// Scenarios of the simulated manikin: maps with name, title and description.
    Q_PROPERTY(QVariantList scenarios    READ scenarios    NOTIFY scenariosChanged)
    // clang-format on

public:
    /// Where the viewer stores what outlives it.
    struct Paths {
        QString settings; ///< a file; empty when nothing is to be stored
        QString journals; ///< a folder; empty when nothing is to be journalled
        QString classList = {}; ///< a file; empty when none is to be stored
        /// The user's own.
        static Paths ofUser();
    };

    enum SaveResult {
        Started, ///< written() comes
        Exists,
        LosesSource, ///< the file is the damaged one of which only a part is in the session
        Failed
    };
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
    bool         isDamaged() const       { return m_opened.isDamaged; }
    bool         isSalvaged() const      { return m_opened.isSalvaged; }
    QString      source() const          { return m_opened.source; }
    QStringList  report() const          { return m_opened.report; }
    bool         isWriting() const       { return m_writer.isWriting(); }
    int          writtenParts() const    { return m_writtenParts; }
    int          partsToWrite() const    { return m_partsToWrite; }
    QString      problem() const         { return m_problem; }
    QString      damagedFile() const     { return m_damagedFile; }
    QString      notice() const          { return m_notice; }
    QVariantList leftSessions() const    { return m_left; }
    Appearance  *appearance()            { return &m_appearance; }
    cprquick::SessionSource *other()     { return &m_other; }
    RecentFiles *recentFiles()           { return &m_recentFiles; }
    cprquick::LibraryFolder *library()   { return &m_library; }
    ClassList   *classList()             { return &m_classList; }
    Sound       *sound()                 { return &m_sound; }
    LearnerPlace *learnerPlace()         { return &m_learnerPlace; }
    ClassRoom   *room()                  { return &m_room; }
    QVariantList scenarios() const;
    // clang-format on

    /// Loads an archive or a recorded log.
    Q_INVOKABLE void open(const QString &name);
    /// The same; a problem when it is not a file of this machine.
    Q_INVOKABLE void openUrl(const QUrl &url) { open(url.toString(QUrl::PreferLocalFile)); }
    /// Loads what is left of a damaged archive or log.
    Q_INVOKABLE void salvage(const QString &name);
    Q_INVOKABLE void cancelLoading();
    /// Loads an archive or a recorded log beside the session that is open; an empty name closes it.
    Q_INVOKABLE void compareWith(const QString &name);
    /// Starts the simulated manikin. False, with a problem, when there is no such scenario. With
    /// speed 0 time stands still; see advanceTo().
    Q_INVOKABLE bool startScenario(const QString &name, int seed, double speed = 1);
    /// The same for the learner of the class list who is next: with that name and manikin, in that
    /// protocol, and as long as the list says. When the session ends the one behind is next.
    Q_INVOKABLE bool startNext(const QString &name, int seed, double speed = 1);
    /// Plays a recorded log as if it came from the manikin. False when it cannot be opened.
    Q_INVOKABLE bool startReplay(const QString &name, double speed);
    /// Plays what a live session has before the session time \a msecs at once.
    void advanceTo(qint64 msecs);
    /// Ends a live session.
    Q_INVOKABLE void stop();
    /// Takes it back.
    Q_INVOKABLE void resume();

    /// Remarks on what happens at \a msecs of session time: a user event. Of a live session it is
    /// journalled. Null when there is no session, or nothing in \a text that can be stored.
    Q_INVOKABLE CPREventBase *addRemark(const QString &text, int msecs);
    /// Words \a remark, a user event of the session, anew. The event that stands for it from then
    /// on; null, and the old one stays, as for addRemark().
    Q_INVOKABLE CPREventBase *correctRemark(CPREventBase *remark, const QString &text);
    /// Takes \a remark, a user event of the session, back.
    Q_INVOKABLE void removeRemark(CPREventBase *remark);
    /// What \a event remarks, as it is stored; empty for an event that is no remark.
    Q_INVOKABLE QString remarkText(CPREventBase *event) const;

    /// Saves the session under \a url, to which the suffix is added if it has none. A file that is
    /// there is replaced only when \a replaces says so; a damaged one is kept beside it.
    Q_INVOKABLE Viewer::SaveResult save(const QUrl &url, bool replaces);
    /// Saves it in the library's folder, under a name of its own, or again where it was saved.
    Q_INVOKABLE Viewer::SaveResult saveInLibrary();
    /// The same as save() for a table (events, summary, waves, guidelines) and the review picture.
    Q_INVOKABLE Viewer::SaveResult exportTable(const QUrl &url, const QString &what, bool replaces);
    Q_INVOKABLE Viewer::SaveResult exportPicture(const QUrl &url, bool replaces);
    /// The same for what \a model compares: a table, and a picture, one over the other or below.
    Q_INVOKABLE Viewer::SaveResult exportComparison(cprquick::ComparisonModel *model,
                                                    const QUrl &url, bool replaces);
    Q_INVOKABLE Viewer::SaveResult exportComparisonPicture(cprquick::ComparisonModel *model,
                                                           bool isOverlaid, const QUrl &url,
                                                           bool replaces);
    /// The page to take home as a PDF, with the instructor's \a remark, on A4 or else on Letter.
    Q_INVOKABLE Viewer::SaveResult exportReport(const QUrl &url, const QString &remark, bool isA4,
                                                bool replaces);
    /// The class as a PDF, and a page to take home of each of its sessions into a folder.
    Q_INVOKABLE Viewer::SaveResult exportClass(cprquick::ClassModel *model, const QUrl &url,
                                               bool isA4, bool replaces);
    Q_INVOKABLE Viewer::SaveResult exportReports(cprquick::ClassModel *model, const QUrl &folder,
                                                 bool isA4, bool replaces);
    /// Prints the same pages in one job, to a printer that is asked for.
    Q_INVOKABLE void printReports(cprquick::ClassModel *model);
    /// What is being written ends after the part that is being written.
    Q_INVOKABLE void cancelWriting() { m_writer.cancel(); }
    /// Shows what would be printed, and prints it from there.
    Q_INVOKABLE void printReport(const QString &remark);
    Q_INVOKABLE void printClass(cprquick::ClassModel *model);
    /// Asks for a folder, and calls \a action with its URL, as text, if one was chosen.
    Q_INVOKABLE void chooseFolder(const QString &title, const QJSValue &action);
    /// Chooses the library's folder.
    Q_INVOKABLE void chooseLibrary(const QUrl &folder);
    /// Adds the learners of a file to the class list, and says how many they are.
    Q_INVOKABLE void readClassList(const QUrl &url);
    /// The name of a file without its folder, in front of people.
    Q_INVOKABLE QString fileName(const QUrl &url) const;
    /// A file to propose for the session; its name ends as \a ending, "-events.csv", say.
    Q_INVOKABLE QUrl proposedFile(const QString &ending) const;
    /// The session need not be saved.
    Q_INVOKABLE void discard();

    /// Loads, saves or throws away a session of leftSessions.
    Q_INVOKABLE void bringBack(const QString &target);
    Q_INVOKABLE Viewer::SaveResult saveLeft(const QString &target, const QUrl &url, bool replaces);
    Q_INVOKABLE void discardLeft(const QString &target);
    /// A file to propose for one.
    Q_INVOKABLE QUrl proposedFileForLeft(const QString &target) const;

    Q_INVOKABLE void dismissProblem() { setProblem(QString()); }
    Q_INVOKABLE void dismissNotice() { setNotice(QString()); }

    /// What is kept from one run to the next.
    Settings *settings() { return &m_settings; }

Q_SIGNALS:
    void sessionChanged();
    void nameChanged();
    void isLiveChanged();
    void isUnsavedChanged();
    void isLoadingChanged();
    void loadedShareChanged();
    void problemChanged();
    void isWritingChanged();
    void writtenPartsChanged();
    void noticeChanged();
    void leftSessionsChanged();
    /// The file that was begun last is written; false when it is not, or not with all of the
    /// session.
    void written(bool isComplete);
    void scenariosChanged();

private:
    /// What goes when its session goes; the feed before the journal, and both before the session.
    struct Opened {
        std::unique_ptr<CPRData> session;
        std::unique_ptr<manikinlog::SessionJournal> journal; // of a live session
        std::unique_ptr<LiveFeed> feed; // of a live session
        std::unique_ptr<LeftSession> left; // where it was brought back from
        QString name;
        QString source; // its file
        QString archive; // that holds it as it was saved last; empty when none does
        QStringList report;
        bool isFromArchive = false;
        bool isReplay = false;
        bool isUnsaved = false;
        bool isDamaged = false;
        bool isSalvaged = false;
        int classId = 0; // of its learner in the class list; 0 for none
        bool isCounted = false; // in the class list
    };
    // What is to be done when a file is written.
    struct Writing {
        QPointer<CPRData> saved; // the session, if it is one
        std::unique_ptr<LeftSession> left; // that is being saved
        bool isSession = false;
        int changes = 0; // of the session, when it was copied
    };

    void insert(const manikinlog::Record::Entry &entry);
    void load(const QString &name, cprquick::SessionLoader::Kind kind);
    void showLoaded();
    void startLive(std::unique_ptr<RecordSource> source, const QString &name, double speed,
                   bool isReplay, int classId = 0);

    std::unique_ptr<manikinlog::SessionJournal> newJournal();
    void show(Opened opened);
    std::unique_ptr<CPRData> copyForWriting(bool isAsListed) const;
    bool isOfSession(const CPREventBase *event) const;
    bool isDamagedSource(const QString &name) const;
    std::optional<SaveResult> whyNotWritten(const QString &name, bool replaces);
    void write(Writing writing, std::unique_ptr<CPRData> session, const SessionWriter::Job &job);
    void finishWriting(const SessionExport::Written &written);
    void setWrittenParts(int parts, int of);
    SessionExport::ReportNotes notesFor(const cprquick::ClassModel &model);
    void setSaved();
    void setProblem(const QString &problem, const QString &damagedFile = {});
    void setNotice(const QString &notice);
    void findLeft();

    Settings m_settings;
    Appearance m_appearance;
    RecentFiles m_recentFiles;
    cprquick::LibraryFolder m_library;
    ClassList m_classList;
    Sound m_sound;
    LearnerPlace m_learnerPlace;
    UnsavedSessions m_unsavedSessions;
    ClassRoom m_room;
    Opened m_opened;
    cprquick::SessionLoader m_loader;
    cprquick::SessionSource m_other;
    std::unique_ptr<LeftSession> m_loadedLeft; // that is being loaded; null for a file
    cprquick::SessionLoader::Kind m_loadedKind = cprquick::SessionLoader::Kind::File;
    QString m_loadedName;
    double m_loadedShare = 0;
    QString m_problem;
    QString m_damagedFile;
    QString m_notice;
    QVariantList m_left;
    Writing m_writing;
    QString m_folder; // that was chosen last
    int m_writtenParts = 0;
    int m_partsToWrite = 0;
    int m_changes = 0; // of sessions, by remarks
    SessionWriter m_writer;
};

#endif
