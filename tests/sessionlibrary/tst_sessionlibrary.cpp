// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogPlayer.h"
#include "manikinsim/Simulator.h"
#include "sessionfiles/SessionDiff.h"
#include "sessionfiles/SessionFile.h"
#include "sessionlibrary/LearnerChange.h"
#include "sessionlibrary/LibraryWatcher.h"
#include "sessionreview/RecordedFigures.h"
#include "support/Damage.h"
#include "support/Program.h"
#include "support/Rows.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include <unistd.h>

using namespace sessionlibrary;
using namespace testsupport;
using Rebuilt = OpenResult::Rebuilt;

Q_DECLARE_METATYPE(Rebuilt)

namespace {

const QString program = QStringLiteral(CPRSESSION_PROGRAM);
const QString mira = QStringLiteral("Mira Holm");

std::unique_ptr<CPRData> simulated(const manikinsim::Scenario &scenario)
{
    auto session = std::make_unique<CPRData>();
    manikinlog::ManikinLogPlayer player(session.get());
    manikinsim::Simulator simulator(scenario, 1);
    manikinlog::Record record;
    while (simulator.next(record))
        player.play(record);
    player.finish();
    return session;
}

// What an index says, without what another file or another index has of its own.
QVector<QVariantList> contentOf(SessionLibrary &library)
{
    QVector<QVariantList> content;
    const auto sessions = library.page({}, {SortBy::File, Qt::AscendingOrder}, 0, -1);
    for (const SessionEntry &entry : *sessions) {
        QVariantList row{entry.file, int(entry.state), entry.figures.learners,
                         entry.figures.startTime, entry.figures.overallScore};
        for (const std::optional<double> &value : entry.recorded)
            row.append(value ? QVariant(*value) : QVariant());
        content.append(row);
    }
    return content;
}

} // namespace

/// The index of a folder is what its archives are, whatever happens to either.
class TestSessionLibrary : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        manikinsim::Scenario scenario = *manikinsim::Scenario::find(QStringLiteral("good"));
        scenario.seconds = 20;
        scenario.start = QDateTime(QDate(2026, 1, 31), QTime(9, 0), Qt::UTC);
        scenario.script = {
            {5000, manikinsim::ScriptStep::Kind::User, 0, {}, QStringLiteral("elbows bent")}};
        QVERIFY(m_place.isValid());
        const QString model = m_place.filePath(QStringLiteral("model.zip"));
        QVERIFY(sessionfiles::save(model, *simulated(scenario)).isComplete);
        m_model = membersOf(model);
    }

    void init()
    {
        static int number = 0;
        m_folder = m_place.filePath(QStringLiteral("folder%1").arg(++number));
        m_data = m_folder + QStringLiteral(".data");
        QVERIFY(QDir().mkpath(m_folder));
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_data));
    }

    void indexAgainstArchives();
    void names_data();
    void names();
    void filters();
    void files();
    void brokenIndex_data();
    void brokenIndex();
    void migration();
    void privateFiles();
    void replacedWhileRead();
    void cancelled();
    void together();
    void follow();
    void rename();
    void renameOne();
    void forget_data();
    void forget();

private:
    QString path(const QString &file) const { return m_folder + QLatin1Char('/') + file; }

    // Stores the model's session with other learners, as they stand in an archive.
    bool make(const QString &file, const QString &learners = mira) const
    {
        Members members = m_model;
        return QDir().mkpath(QFileInfo(path(file)).path())
            && change(members, "CPREvents.xml", "\"Mira Holm\"",
                      '"' + learners.toHtmlEscaped().toUtf8() + '"')
            && saveMembers(path(file), members);
    }

    QString indexFile() const
    {
        QDirIterator found(m_data, {QStringLiteral("index.sqlite")}, QDir::Files,
                           QDirIterator::Subdirectories);
        return found.hasNext() ? found.next() : QString();
    }

    // Runs SQL on the index as another program does.
    void onIndex(const QStringList &statements) const
    {
        {
            QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "other");
            other.setDatabaseName(indexFile());
            QVERIFY(other.open());
            QSqlQuery query(other);
            for (const QString &statement : statements)
                QVERIFY2(query.exec(statement), qPrintable(statement));
        }
        QSqlDatabase::removeDatabase("other");
    }

    QJsonDocument json(const QStringList &arguments) const
    {
        return QJsonDocument::fromJson(run(program, arguments, m_folder).output);
    }

    QTemporaryDir m_place;
    Members m_model;
    QString m_folder;
    QString m_data;
};

void TestSessionLibrary::indexAgainstArchives()
{
    QStringList files;
    for (manikinsim::Scenario scenario : manikinsim::Scenario::all()) {
        for (const QString &protocol : manikinsim::Scenario::protocolNames()) {
            scenario.protocol = *manikinsim::Scenario::protocolFromName(protocol);
            scenario.seconds = 30;
            files.append(scenario.name + '-' + protocol + ".zip");
            QVERIFY(sessionfiles::save(path(files.last()), *simulated(scenario)).isComplete);
        }
    }
    QCOMPARE(files.size(), 9 * 6);
    SessionLibrary library;
    QCOMPARE(library.open(m_folder).rebuilt, Rebuilt::Missing);
    const ScanResult result = scan(library, {2, {}, {}, {}});
    QVERIFY(result.isComplete && result.problems.isEmpty());
    QCOMPARE(result.added, files.size());
    QHash<QString, QJsonObject> listed;
    const QJsonArray rows = json({"library", "list", "--folder", ".", "--json"}).array();
    for (const QJsonValue &row : rows)
        listed.insert(row["file"].toString(), row.toObject());
    const QJsonArray infos = json(QStringList{"info", "--json"} + files).array();
    QCOMPARE(infos.size(), files.size());
    for (int i = 0; i < files.size(); ++i) {
        CPRData session;
        QVERIFY(sessionfiles::load(path(files.at(i)), session).isComplete);
        const sessionreview::SessionReview review = sessionreview::reviewOf(session);
        const SessionEntry entry = *library.session(files.at(i));
        QVERIFY2(entry.figures == review.figures && entry.state == State::Whole,
                 qPrintable(files.at(i)));
        const QJsonObject row = listed.value(files.at(i));
        QJsonObject info = infos.at(i).toObject();
        QJsonObject recorded = info["recorded"].toObject();
        for (const char *key : {"complete", "missing_members", "recorded", "remarks"})
            info.remove(QLatin1String(key));
        recorded.remove("shock_pauses");
        for (auto member = info.begin(); member != info.end(); ++member)
            QCOMPARE(row.value(member.key()), member.value());
        for (const auto &figure : sessionreview::recordedFigures()) {
            QCOMPARE(entry.recordedValue(figure.key), figure.value(review));
            const QJsonValue value = row["recorded"][QLatin1String(figure.key)];
            QCOMPARE(value.isNull(), recorded[QLatin1String(figure.key)].isNull());
            QCOMPARE(value.toDouble(), recorded[QLatin1String(figure.key)].toDouble());
        }
    }
}

void TestSessionLibrary::names_data()
{
    const auto row = columns<QString, QString>("name", "typed");
    row("comma goes", "Berg, Eva", "berg ev");
    row("accents", "Łukasz Öztürk", "ozt");
    row("composed otherwise", "Zoe\u0308", "zoe");
    row("right to left", "דוד כהן", "כה");
    row("no letters between", "小龍", "小");
    row("markup", "<b>Tom</b> & \"Co\"", "<b>Tom</b> \"Co\"");
    row("SQL", "Robert'); DROP TABLE sessions;--", "Robert');");
    row("search language", "NOT AND OR* NEAR(", "not OR* near(");
    row("signs only", "?!* %", "?!*");
    row("300 characters", QString(300, 'x'), QString(290, 'x'));
    row("emoji", "🚑", "🚑");
    row("a line break", "Ann\nBob", "bob");
}

void TestSessionLibrary::names()
{
    QFETCH(QString, name);
    QFETCH(QString, typed);
    const QString stored = storedName(name);
    // Twice on one day, once beside somebody else, and sessions that are not meant.
    QVERIFY(make("a.zip") && make("b.zip", "") && make("c.zip"));
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen && scan(library).isComplete);
    QVERIFY(setLearners(library, "b.zip", {name, "", "Other"}).isComplete());
    QVERIFY(setLearners(library, "c.zip", {name}).isComplete());
    Filter filter;
    filter.text = typed;
    QCOMPARE(library.count(filter), std::optional(2));
    QCOMPARE(library.sessionsOf(stored)->size(), std::size_t(2));
    QCOMPARE(library.session("b.zip")->figures.learners, QStringList({stored, "Other"}));
    QStringList all;
    const auto learners = library.learners();
    for (const Learner &learner : *learners)
        all.append(learner.name + QString::number(learner.sessions));
    all.sort();
    QStringList expected{mira + '1', "Other1", stored + '2'};
    expected.sort();
    QCOMPARE(all, expected);
}

void TestSessionLibrary::filters()
{
    QVERIFY(make("day/one.zip") && make("two.zip", "Tom,Mira Holm") && make("three.zip", ""));
    QVERIFY(store(path("bad.zip"), "PK"));
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen && !scan(library).isCancelled);
    const int score = library.session("two.zip")->figures.overallScore;
    const auto found = [&library](auto set) {
        Filter filter;
        set(filter);
        return library.count(filter).value_or(-1);
    };
    QCOMPARE(found([](Filter &) {}), 4);
    QCOMPARE(found([](Filter &f) { f.text = "one resc"; }), 3); // words of the protocol
    QCOMPARE(found([](Filter &f) { f.text = "day"; }), 1); // a folder
    QCOMPARE(found([](Filter &f) { f.text = "elbow 2026-01-31"; }), 3); // a note and the start
    QCOMPARE(found([](Filter &f) { f.text = "ira"; }), 0); // not the begin of a word
    QCOMPARE(found([](Filter &f) { f.learner = "Tom"; }), 1);
    QCOMPARE(found([](Filter &f) { f.learner = "Mira"; }), 0);
    QCOMPARE(found([](Filter &f) { f.protocol = 0; }), 3);
    QCOMPARE(found([](Filter &f) { f.protocol = 1; }), 0);
    QCOMPARE(found([](Filter &f) { f.from = f.to = QDate(2026, 1, 31); }), 3);
    QCOMPARE(found([](Filter &f) { f.from = QDate(2026, 2, 1); }), 0);
    QCOMPARE(found([](Filter &f) { f.to = QDate(2026, 1, 30); }), 0);
    QCOMPARE(found([&](Filter &f) { f.minScore = f.maxScore = score; }), 3);
    QCOMPARE(found([&](Filter &f) { f.minScore = score + 1; }), 0);
    for (const SortBy by : {SortBy::Start, SortBy::Learner, SortBy::Length, SortBy::Protocol,
                            SortBy::Score, SortBy::File}) {
        const auto up = library.page({}, {by, Qt::AscendingOrder}, 0, 4);
        const auto down = library.page({}, {by, Qt::DescendingOrder}, 1, 1);
        QCOMPARE(up->size(), std::size_t(4));
        QCOMPARE(down->at(0).file, up->at(2).file);
    }
    QCOMPARE(library.page({}, {SortBy::Learner, Qt::AscendingOrder}, 3, 1)->at(0).file,
             QString("two.zip"));
}

// What becomes of files of all kinds, and when they come, change and go.
void TestSessionLibrary::files()
{
    QVERIFY(make("whole.zip") && make("deep/er/whole.ZIP") && make(".hidden.zip"));
    QVERIFY(make(".hidden/in.zip") && make("gone.zip") && make("changed.zip"));
    const QByteArray whole = bytesOf(path("whole.zip"));
    QVERIFY(store(path("cut.zip"), whole.left(whole.size() - 40)));
    QVERIFY(store(path("junk.zip"), "no archive") && store(path("empty.zip"), ""));
    QVERIFY(saveMembers(path("foreign.zip"), {{"photo.jpg", "bytes"}}));
    QVERIFY(QDir(m_folder).mkdir("folder.zip"));
    QCOMPARE(::symlink("whole.zip", qPrintable(path("link.zip"))), 0);
    QCOMPARE(::symlink(".", qPrintable(path("circle"))), 0);
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen);
    const ScanResult first = scan(library);
    QVERIFY(first.isComplete);
    QCOMPARE(first.added, 9);
    QStringList states;
    const auto entries = library.page({}, {SortBy::File, Qt::AscendingOrder}, 0, -1);
    for (const SessionEntry &entry : *entries) {
        states.append(entry.file + ' ' + QString::number(int(entry.state)));
        QCOMPARE(entry.state == State::Whole, entry.reason.isEmpty());
        QCOMPARE(entry.figures.learners.isEmpty(), entry.state == State::Damaged);
    }
    QCOMPARE(
        states,
        QStringList({"changed.zip 0", "cut.zip 1", "deep/er/whole.ZIP 0", "empty.zip 2",
                     "foreign.zip 2", "gone.zip 0", "junk.zip 2", "link.zip 0", "whole.zip 0"}));
    const QVector<QVariantList> content = contentOf(library);

    const ScanResult again = scan(library);
    QCOMPARE(again.unchanged, 9);
    QCOMPARE(again.added + again.changed + again.removed, 0);
    QCOMPARE(again.problems.size(), 4);
    QVERIFY(QFile::remove(path("gone.zip")) && make("changed.zip", "Ann,Bob") && make("new.zip"));
    const ScanResult changed = scan(library, {2, {}, {}, {}});
    const std::vector<int> counts{changed.added, changed.changed, changed.removed,
                                  changed.unchanged};
    QVERIFY((counts == std::vector<int>{1, 1, 1, 7}));
    QCOMPARE(library.session("changed.zip")->figures.learners, QStringList({"Ann", "Bob"}));
    QCOMPARE(library.session("gone.zip")->id, qint64(0));

    QVERIFY(QDir(m_data).removeRecursively()); // nothing stands in the index alone
    SessionLibrary anew;
    QCOMPARE(anew.open(m_folder).rebuilt, Rebuilt::Missing);
    QVERIFY(scan(anew).isComplete && contentOf(anew) == contentOf(library));
    QVERIFY(contentOf(anew) != content);
    QVERIFY(QDir(m_folder).removeRecursively());
    QVERIFY(!scan(anew).isComplete); // a folder that is away for a while costs no entry
    QCOMPARE(anew.count(), std::optional(9));
    QVERIFY(!SessionLibrary().open(m_folder).isOpen);
}

void TestSessionLibrary::brokenIndex_data()
{
    const auto row = columns<int, QString, Rebuilt>("length", "statement", "rebuilt");
    row("empty", 0, QString(), Rebuilt::Missing);
    row("junk", -1, QString(), Rebuilt::Damaged);
    row("cut after its first page", 4096, QString(), Rebuilt::Damaged);
    row("cut near its end", 40000, QString(), Rebuilt::Damaged);
    row("another program's", -2, "PRAGMA application_id = 1", Rebuilt::OtherVersion);
    row("a later version's", -2, "PRAGMA user_version = 1000", Rebuilt::OtherVersion);
}

void TestSessionLibrary::brokenIndex()
{
    QFETCH(int, length);
    QFETCH(QString, statement);
    QVERIFY(make("a.zip") && make("b.zip", "Tom"));
    QVector<QVariantList> content;
    SessionLibrary stale; // has it open meanwhile
    {
        SessionLibrary library;
        QVERIFY(library.open(m_folder).isOpen && scan(library).isComplete);
        content = contentOf(library);
    }
    const QByteArray index = bytesOf(indexFile());
    QVERIFY(index.size() > 40000);
    if (statement.isEmpty())
        QVERIFY(store(indexFile(), length < 0 ? QByteArray(9000, 'j') : index.left(length)));
    else
        onIndex({statement});
    SessionLibrary library;
    const OpenResult opened = library.open(m_folder, Check::Thorough);
    QVERIFY2(opened.isOpen, qPrintable(opened.reason));
    QTEST(opened.rebuilt, "rebuilt");
    QVERIFY(scan(library).isComplete);
    QCOMPARE(contentOf(library), content);

    // It is broken, or replaced, while it is open.
    QVERIFY(stale.open(m_folder).isOpen);
    const qint64 version = stale.version();
    QVERIFY(QFile::remove(indexFile()));
    QVERIFY(stale.version() != version && stale.version() >= 0);
    QVERIFY(scan(stale).isComplete);
    QCOMPARE(contentOf(stale), content);
}

// An index from before a figure, with one that nobody works out any more.
void TestSessionLibrary::migration()
{
    QVERIFY(make("a.zip"));
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen && scan(library).isComplete);
    const QVector<QVariantList> content = contentOf(library);
    onIndex({"ALTER TABLE sessions DROP COLUMN recorded_mean_depth_mm",
             "ALTER TABLE sessions ADD COLUMN recorded_mean_mood REAL"});
    const OpenResult opened = library.open(m_folder);
    QVERIFY(opened.isOpen && opened.isMigrated && opened.rebuilt == Rebuilt::No);
    QCOMPARE(library.session("a.zip")->figures.learners, QStringList(mira)); // until then
    QVERIFY(contentOf(library) != content);
    QCOMPARE(scan(library).changed, 1);
    QCOMPARE(contentOf(library), content);
    onIndex({"UPDATE about SET content_version = 0"});
    QVERIFY(library.open(m_folder).isMigrated);
    QCOMPARE(scan(library).changed, 1);
    QVERIFY(!library.open(m_folder).isMigrated);
}

void TestSessionLibrary::privateFiles()
{
    QVERIFY(make("a.zip"));
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen && scan(library).isComplete);
    const auto onlyOwner = [](const QString &name) {
        return (QFileInfo(name).permissions()
                & (QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
                   | QFile::WriteOther | QFile::ExeOther))
            == 0;
    };
    const QDir folder = QFileInfo(indexFile()).dir();
    QVERIFY(onlyOwner(folder.path()));
    for (const QString &name : folder.entryList(QDir::Files))
        QVERIFY2(onlyOwner(folder.filePath(name)), qPrintable(name));
    QCOMPARE(QDir(m_folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList("a.zip"));

    // Where the user's folder cannot be written the index is this process's own.
    QVERIFY(store(m_data + ".file", "") && qputenv("XDG_DATA_HOME", (m_data + ".file").toUtf8()));
    const OpenResult opened = library.open(m_folder);
    QVERIFY(opened.isOpen && opened.isTemporary && !opened.reason.isEmpty());
    QCOMPARE(scan(library).added, 1);
    SessionLibrary other;
    QVERIFY(other.open(m_folder).isOpen && other.count() == 1);
}

void TestSessionLibrary::replacedWhileRead()
{
    QVERIFY(make("a.zip") && make("other/b.zip", "Tom"));
    SessionLibrary library;
    QVERIFY(library.open(path("other")).isOpen && library.open(m_folder).isOpen);
    int asked = 0;
    ScanOptions options;
    options.isCancelled = [&] { // is asked while an archive is loaded
        if (++asked == 5)
            static_cast<void>(::rename(qPrintable(path("other/b.zip")), qPrintable(path("a.zip"))));
        return false;
    };
    static_cast<void>(scan(library, options));
    QVERIFY(asked > 5);
    QCOMPARE(library.session("a.zip")->figures.learners, QStringList("Tom"));
    static_cast<void>(scan(library));
    QCOMPARE(library.count(), std::optional(1));
}

void TestSessionLibrary::cancelled()
{
    for (int i = 0; i < 20; ++i)
        QVERIFY(make(QString::number(i) + ".zip"));
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen);
    std::atomic<int> done{0};
    ScanOptions options{
        2, [&done] { return done >= 7; }, [&done](int n, int, auto) { done = n; }, {}};
    const ScanResult result = scan(library, options);
    QVERIFY(result.isCancelled && !result.isComplete && result.error.isEmpty());
    QCOMPARE(library.count(), std::optional(result.added));
    QVERIFY(result.added >= 6 && result.added < 20);
    QCOMPARE(scan(library).added, 20 - result.added);
}

void TestSessionLibrary::together()
{
    for (int i = 0; i < 30; ++i)
        QVERIFY(make(QString::number(i) + ".zip"));
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen);
    SessionLibrary viewer;
    QVERIFY(viewer.open(m_folder).isOpen);
    const qint64 version = viewer.version();
    QProcess one;
    QProcess two;
    for (QProcess *each : {&one, &two})
        each->start(program, {"library", "scan", "--folder", m_folder, "-j2"});
    const ScanResult result = scan(library);
    QVERIFY2(result.isComplete, qPrintable(result.error));
    for (QProcess *each : {&one, &two}) {
        QVERIFY(each->waitForFinished());
        QCOMPARE(each->exitCode(), 0);
    }
    QCOMPARE(library.count(), std::optional(30));
    QCOMPARE(library.learners()->at(0).sessions, 30);
    QVERIFY(viewer.version() != version && viewer.count() == 30);
}

void TestSessionLibrary::follow()
{
    QVERIFY(make("a.zip"));
    LibraryWatcher watcher;
    QSignalSpy changed(&watcher, &LibraryWatcher::changed);
    QSignalSpy finished(&watcher, &LibraryWatcher::finished);
    watcher.follow(m_folder);
    QVERIFY(finished.wait() && !changed.isEmpty());
    QCOMPARE(watcher.result().added, 1);
    QVERIFY(make("day/b.zip")); // in a folder that was not there
    QVERIFY(finished.wait());
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen);
    QTRY_COMPARE(library.count(), std::optional(2));
    QVERIFY(QFile::remove(path("a.zip")));
    QTRY_COMPARE(library.count(), std::optional(1));
    QTRY_VERIFY(!watcher.isScanning());
    changed.clear();
    onIndex({"UPDATE sessions SET reason = 'x'"}); // another program's doing
    QVERIFY(changed.wait());
    watcher.follow(QString());
    QVERIFY(!watcher.isScanning());
}

void TestSessionLibrary::rename()
{
    QVERIFY(make("a.zip", "Tom,Mira Holn") && make("b.zip", "Mira Holn,Mira Holm"));
    QVERIFY(make("c.zip", "Tom") && make("cut.zip", "Mira Holn"));
    const QByteArray cut = bytesOf(path("cut.zip")).chopped(40);
    QVERIFY(store(path("cut.zip"), cut));
    const QByteArray other = bytesOf(path("c.zip"));
    CPRData before;
    QVERIFY(loadFrom(path("a.zip"), before));
    const Answer answer =
        run(program, {"library", "rename", "Mira Holn", mira, "--folder", m_folder});
    QCOMPARE(answer.status, 1); // of a damaged one nothing is lost that recover may find
    QVERIFY(answer.errors.contains("cut.zip: it is damaged"));
    QCOMPARE(answer.output, QByteArray("2 archives changed\n"));
    CPRData after;
    QVERIFY(loadFrom(path("a.zip"), after));
    QCOMPARE(after.learners(), QStringList({"Tom", mira}));
    const QString differences =
        sessionfiles::SessionDiff({"a", "b"}, before, after, false).toText();
    QCOMPARE(differences.count('\n'), 1);
    QVERIFY(differences.contains("Mira Holn"));
    QVERIFY(bytesOf(path("cut.zip")) == cut && bytesOf(path("c.zip")) == other);
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen);
    QCOMPARE(scan(library).unchanged, 4);
    QCOMPARE(library.session("b.zip")->figures.learners, QStringList(mira));
}

// Two people of one name.
void TestSessionLibrary::renameOne()
{
    QVERIFY(make("a.zip", "Tom") && make("day/b.zip", "Tom"));
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen && scan(library).isComplete);
    const LearnerChange change = renameLearner(library, "Tom", "Tom 2", {"day/b.zip", "x.zip"});
    QCOMPARE(change.changed, QStringList("day/b.zip"));
    QCOMPARE(change.left.size(), 1);
    QCOMPARE(library.session("a.zip")->figures.learners, QStringList("Tom"));
    QCOMPARE(library.session("day/b.zip")->figures.learners, QStringList("Tom 2"));
}

void TestSessionLibrary::forget_data()
{
    const auto row = columns<bool, int>("inArchives", "left");
    row("in the index", false, 2);
    row("in archives", true, 0);
}

void TestSessionLibrary::forget()
{
    QFETCH(bool, inArchives);
    const QString name = QStringLiteral("Xaverius Quint");
    SessionLibrary library;
    QVERIFY(library.open(m_folder).isOpen);
    for (int i = 0; i < 12; ++i) { // so that words lie in several parts of the index
        QVERIFY(make(QString::number(i) + ".zip", i % 4 == 3 && i > 4 ? "Tom," + name : mira));
        QVERIFY(scan(library).isComplete);
    }
    SessionLibrary reader; // a viewer
    QVERIFY(reader.open(m_folder).isOpen && reader.count() == 12);
    const QByteArray archive = bytesOf(path("7.zip"));
    const ForgottenLearner forgotten = forgetLearner(library, name, inArchives);
    QVERIFY2(forgotten.isForgotten, qPrintable(forgotten.change.error));
    QTEST(int(forgotten.archives.size()), "left");
    QCOMPARE(bytesOf(path("7.zip")) == archive, !inArchives);
    const QDir folder = QFileInfo(indexFile()).dir();
    for (const QString &file : folder.entryList(QDir::Files)) {
        const QByteArray bytes = bytesOf(folder.filePath(file)).toLower();
        QVERIFY2(!bytes.contains("xaver") && !bytes.contains("quint"), qPrintable(file));
    }
    QVERIFY(scan(library).isComplete);
    QTEST(int(library.sessionsOf(name)->size()), "left"); // what archives hold comes back
    QCOMPARE(library.count(), std::optional(12));
    QCOMPARE(library.sessionsOf("Tom")->size(), std::size_t(2));
}

QTEST_GUILESS_MAIN(TestSessionLibrary)

#include "tst_sessionlibrary.moc"
