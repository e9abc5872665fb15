// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/Damage.h"
#include "support/Program.h"
#include "support/Rows.h"

#include <QDir>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>

#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace testsupport;
Q_DECLARE_METATYPE(Zip::Mode)

namespace {

// The calls by which a file gets to the disk are counted; at one of them the process is killed, or
// the call is not done.
enum Fault { None, Killed, NotDone };
Fault fault = None;
int faultyCall = 0; // from 1 on
int calls = 0;
bool isFolderLost = false; // the faulty call was to sync a folder
QByteArray synced; // a letter for each file and folder

template <typename Result, typename... Arguments>
Result callUnlessFaulty(const char *name, Arguments... arguments)
{
    const bool isFaulty = ++calls == faultyCall && fault != None;
    if (isFaulty && fault == Killed)
        raise(SIGKILL);
    errno = EIO;
    using Function = Result(Arguments...);
    return isFaulty ? -1 : reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name))(arguments...);
}

} // namespace

// These take the place of the C library's in everything that this program loads.
#pragma GCC visibility push(default)
extern "C" {

ssize_t pwrite(int file, const void *data, size_t size, off_t offset)
{
    return callUnlessFaulty<ssize_t>("pwrite", file, data, size, offset);
}

int fsync(int file)
{
    struct stat info { };
    const int result = callUnlessFaulty<int>("fsync", file);
    const bool isFolder = fstat(file, &info) == 0 && S_ISDIR(info.st_mode);
    isFolderLost = result != 0 && isFolder;
    synced.append(isFolder ? 'D' : 'F');
    return result;
}

int rename(const char *from, const char *to) noexcept
{
    return callUnlessFaulty<int>("rename", from, to);
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    return callUnlessFaulty<int>("linkat", fromFolder, from, toFolder, to, flags);
}

// The zip library forgets the memory for a member whose header cannot be written.
const char *__lsan_default_suppressions()
{
    return "leak:zipOpenNewFileInZip4_64";
}
}
#pragma GCC visibility pop

namespace {

bool writeMember(Zip &zip, const QString &name)
{
    QIODevice *device = zip.openFileForWriting(name);
    const bool isWritten = device && device->write("noted") == 5;
    zip.releaseFile(device);
    return isWritten;
}

} // namespace

/// Whatever happens while an archive is saved, the old one stays until the new one is complete.
class TestSaving : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    const QString m_path = m_dir.filePath("session.zip");
    QByteArray m_old; // another session, and a member of somebody else
    std::unique_ptr<CPRData> m_session; // what is saved over it
    Members m_whole; // what that session holds

private Q_SLOTS:
    void initTestCase()
    {
        QLoggingCategory::setFilterRules("Kelmar.*=false");
        signal(SIGXFSZ, SIG_IGN);
        CPRData session;
        session.addUserEvent("old");
        QVERIFY(saveTo(m_path, session));
        Zip zip;
        QVERIFY(zip.open(m_path, Zip::Add) && writeMember(zip, "notes.txt") && zip.close());
        m_old = bytesOf(m_path);
        QVERIFY(loadFrom(goldenArchive, session));
        m_whole = contentOf(session);
        m_session = std::make_unique<CPRData>(session); // lists the statistics and the score
    }

    void init() { resetFolder(); }

    // A save is repeated, each time with the fault at the next call, until it meets none.
    void faultyCalls()
    {
        bool isLeft = false; // by a killed process
        for (int test = 0; test < 4; ++test) {
            const bool isKilled = test < 2;
            const int mode = test % 2; // Create or Add
            bool isOver = false;
            for (faultyCall = 1; !isOver; ++faultyCall) {
                resetFolder();
                const auto saveWithFault = [&] {
                    calls = 0;
                    isFolderLost = false;
                    synced.clear();
                    fault = isKilled ? Killed : NotDone;
                    const bool isSaved = saveTo(m_path, *m_session, mode);
                    fault = None;
                    return isSaved ? 0 : 1;
                };
                const int result = isKilled ? runInChild(saveWithFault).exitCode : saveWithFault();
                isOver = isKilled ? result >= 0 : calls < faultyCall;
                QVERIFY(!isOver || result == 0);
                QVERIFY(!isOver || isKilled || synced == "FD"); // or a power cut loses it
                // The new archive is in place when its folder is synced.
                QVERIFY(!isFolderLost || result != 0);
                const bool isHarmless = result < 0
                    ? isOld() || isNew(mode)
                    : isAsReported(result == 0 || isFolderLost, mode);
                QVERIFY2(isHarmless,
                         qPrintable(QString("call %1 of test %2").arg(faultyCall).arg(test)));
                isLeft = isLeft || !isAlone();
                QVERIFY(isAlone() || (saveTo(m_path, *m_session, mode) && isAlone()));
            }
            QVERIFY(faultyCall > 100);
        }
        QVERIFY(isLeft); // between the two steps by which the file gets its name
    }

    void fullDisk()
    {
        rlimit limit{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
        for (int mode : {Zip::Create, Zip::Add}) {
            int size = 0; // that a file may have
            for (int successes = 0; successes < 10; size += slowdown) {
                resetFolder();
                const rlimit full{rlim_t(size), limit.rlim_max};
                setrlimit(RLIMIT_FSIZE, &full);
                const bool isSaved = saveTo(m_path, *m_session, mode);
                setrlimit(RLIMIT_FSIZE, &limit);
                QVERIFY2(isAsReported(isSaved, mode), qPrintable(QString::number(size)));
                QVERIFY(isSaved || successes == 0);
                successes += isSaved;
            }
            QVERIFY(size - 11 * slowdown <= QFileInfo(m_path).size());
        }
    }

    void keepsOwnerAndPermissions()
    {
        constexpr uid_t somebody = 1;
        const bool isOwned = chown(qPrintable(m_path), somebody, somebody) == 0; // by root alone
        QCOMPARE(chmod(qPrintable(m_path), 0604), 0);
        QVERIFY(saveTo(m_path, *m_session));
        struct stat info { };
        QCOMPARE(stat(qPrintable(m_path), &info), 0);
        QCOMPARE(info.st_mode & 0777, 0604U);
        QCOMPARE(info.st_uid, isOwned ? somebody : geteuid());
    }

    void refusedPlaces_data()
    {
        const auto row = columns<QString, Zip::Mode>("place", "mode");
        row("folder", ".", Zip::Create);
        row("pipe", "pipe", Zip::Create);
        row("folder not there", "none/a.zip", Zip::Create);
        row("no permission", "locked/a.zip", Zip::Create);
        row("add to nothing", "none.zip", Zip::Add);
        row("add to an empty file", "empty.zip", Zip::Add);
        row("add to a cut archive", "cut.zip", Zip::Add);
        row("add to an encrypted one", "encrypted.zip", Zip::Add);
        row("add to a pipe", "pipe", Zip::Add);
        row("read a pipe", "pipe", Zip::Read);
        row("read a folder", ".", Zip::Read);
        row("read nothing", "none.zip", Zip::Read);
    }

    void refusedPlaces()
    {
        QFETCH(QString, place);
        QFETCH(Zip::Mode, mode);
        if (place.startsWith("locked") && geteuid() == 0)
            QSKIP("the superuser may write everywhere");
        const QDir dir(m_dir.path());
        QCOMPARE(mkfifo(qPrintable(dir.filePath("pipe")), 0600), 0);
        QCOMPARE(mkdir(qPrintable(dir.filePath("locked")), 0500), 0);
        QByteArray encrypted = m_old;
        for (const ZipEntry &each : directoryOf(m_old))
            patch(encrypted, each.entry + flagsField + 2, 1, 1);
        QVERIFY(store(dir.filePath("empty.zip"), "")
                && store(dir.filePath("cut.zip"), m_old.left(99))
                && store(dir.filePath("encrypted.zip"), encrypted));
        const auto picture = [&dir] {
            QByteArrayList files;
            for (const QFileInfo &info : dir.entryInfoList(QDir::AllEntries | QDir::System))
                files << info.fileName().toUtf8() + (info.isFile() ? bytesOf(info.filePath()) : "");
            return files;
        };
        const QByteArrayList before = picture();
        Zip zip;
        const bool isOpen = zip.open(dir.absoluteFilePath(place), mode);
        QVERIFY(!isOpen || (writeMember(zip, "a") && !zip.close()));
        QVERIFY(!zip.errorString().isEmpty());
        QCOMPARE(picture(), before);
    }

    void misusedHandler()
    {
        // What is refused is told and costs nothing else: the session and the member a are stored.
        std::unique_ptr<QIODevice> left;
        const auto isStored = [&](int mode, const std::function<bool(Zip &)> &misuse) {
            resetFolder();
            Zip zip;
            const bool isMisused = zip.open(m_path, Zip::Mode(mode)) && m_session->writeData(&zip)
                && misuse(zip) && zip.close() && isNew(mode) && zip.open(m_path, Zip::Read);
            QIODevice *device = isMisused ? zip.openFileForReading("a") : nullptr;
            const QByteArray a = device ? device->readAll() : QByteArray();
            zip.releaseFile(device);
            zip.close(); // its result may be passed over
            return a == "noted";
        };
        for (int mode : {Zip::Create, Zip::Add}) {
            QVERIFY(isStored(mode, [](Zip &zip) { // a second member while one is open
                QIODevice *device = zip.openFileForWriting("a");
                const bool isAlone = !zip.openFileForWriting("b") && !zip.openFileForReading("a");
                const bool isWritten = device->write("noted") == 5;
                zip.releaseFile(device);
                return isAlone && isWritten && !zip.errorString().isEmpty();
            }));
            QVERIFY(isStored(mode, [](Zip &zip) { // asked for twice, and by a name for no archive
                return writeMember(zip, "a") && !writeMember(zip, "a")
                    && !zip.openFileForWriting(QString(70000, 'x'));
            }));
            QVERIFY(isStored(mode, [this](Zip &zip) { // saved twice, opened twice
                return writeMember(zip, "a") && !m_session->writeData(&zip)
                    && !zip.open(m_path, Zip::Read);
            }));
            QVERIFY(isStored(mode, [&left](Zip &zip) { // never released
                left.reset(zip.openFileForWriting("a"));
                return left->write("noted") == 5;
            }));
            QVERIFY(left->write("late") <= 0);
            left.reset();
        }
        resetFolder();
        {
            Zip zip; // never closed
            QVERIFY(zip.open(m_path, Zip::Create) && m_session->writeData(&zip));
        }
        QVERIFY(isNew(Zip::Create));
    }

private:
    // Only the old archive is there.
    void resetFolder()
    {
        const QDir dir(m_dir.path());
        for (const QFileInfo &info :
             dir.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
            if (info.filePath() != m_path)
                ::remove(qPrintable(info.filePath()));
        }
        if (!isOld() && !store(m_path, m_old))
            qFatal("no place for an archive");
    }

    bool isOld() const { return bytesOf(m_path) == m_old; }

    // The archive has all of the session, and, when it was added to, what others put there.
    bool isNew(int mode) const
    {
        CPRData session;
        if (!loadFrom(m_path, session) || contentOf(session) != m_whole)
            return false;
        Zip zip;
        const bool isOpen = zip.open(m_path, Zip::Read);
        QIODevice *notes = isOpen ? zip.openFileForReading("notes.txt") : nullptr;
        const QByteArray text = notes ? notes->readAll() : QByteArray();
        zip.releaseFile(notes);
        return zip.close() && text == (mode == Zip::Add ? "noted" : "");
    }

    bool isAsReported(bool isSaved, int mode) const
    {
        return (isSaved ? isNew(mode) : isOld()) && isAlone();
    }

    bool isAlone() const
    {
        return QDir(m_dir.path()).entryList(QDir::Files) == QStringList("session.zip");
    }
};

QTEST_GUILESS_MAIN(TestSaving)

#include "tst_saving.moc"
