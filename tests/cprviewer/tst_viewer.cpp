// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Viewer.h"
#include "ViewerTypes.h"
#include "WindowPlace.h"
#include "support/Damage.h"
#include "support/Messages.h"
#include "support/Program.h"
#include "support/StoredSession.h"

#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/RecordText.h>
#include <manikinsim/Simulator.h>
#include <sessionfiles/SessionDiff.h>
#include <sessionfiles/SessionFile.h>

#include <QAccessible>
#include <QApplication>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QWidget>
#include <QtQuickTest>
#include <QtTest>

#if __has_include(<qpa/qplatformaccessibility.h>)
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>
#endif

/// What the pages' tests need from outside of QML.
class Desk : public QObject {
    Q_OBJECT

public:
    /// A viewer that shares nothing with those before it, but their journals if \a keepsJournals,
    /// and what was chosen if \a keepsSettings.
    Q_INVOKABLE QObject *newViewer(bool keepsJournals, bool keepsSettings)
    {
        m_viewer.reset();
        if (!keepsJournals)
            m_home = std::make_unique<QTemporaryDir>();
        if (!keepsSettings)
            QFile::remove(m_home->filePath("settings"));
        m_viewer = std::make_unique<Viewer>(Viewer::Paths{m_home->filePath("settings"),
                                                          m_home->filePath(m_folder),
                                                          m_home->filePath("class/list.json")});
        m_viewer->appearance()->useLanguage("en");
        QQmlEngine::setObjectOwnership(m_viewer.get(), QQmlEngine::CppOwnership);
        connect(m_viewer->appearance(), &Appearance::languageChanged, m_engine,
                &QQmlEngine::retranslate);
        return m_viewer.get();
    }
    Q_INVOKABLE void advance(double secs) { m_viewer->advanceTo(qint64(secs * 1000)); }
    Q_INVOKABLE void resetSession() { m_viewer->session()->reset(); }
    Q_INVOKABLE void setProtocol(int protocol)
    {
        testsupport::send(*m_viewer->session(), 101, QByteArray(2, char(protocol)));
    }
    Q_INVOKABLE QString data(const QString &name) const { return TEST_DATA_DIR "/" + name; }
    Q_INVOKABLE QString newFile(const QString &name) const { return m_home->filePath(name); }
    Q_INVOKABLE QString textOf(const QString &name) const
    {
        return QString::fromUtf8(testsupport::bytesOf(name));
    }
    Q_INVOKABLE bool append(const QString &name, const QString &text) const
    {
        QFile file(newFile(name));
        return QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::Append)
            && file.write(text.toUtf8()) >= 0;
    }
    /// golden.zip with another checksum of its events, or without its directory.
    Q_INVOKABLE QString damaged(const QString &what) const
    {
        QByteArray zip = testsupport::bytesOf(data("golden.zip"));
        const testsupport::ZipEntry events = testsupport::directoryOf(zip).first();
        if (what == "cut")
            zip.truncate(events.entry);
        testsupport::patch(zip, events.header + testsupport::checksumField, 4, 1);
        if (what == "checksum")
            testsupport::patch(zip, events.entry + testsupport::checksumField + 2, 4, 1);
        const QString name = newFile(what + ".zip");
        QFile file(name);
        return file.open(QIODevice::WriteOnly) && file.write(zip) == zip.size() ? name : QString();
    }
    /// A folder with so many sessions of golden.zip, named 000.zip and on.
    Q_INVOKABLE QString copies(int count) const
    {
        const QString folder = newFile("library");
        QDir().mkpath(folder);
        for (int i = 0; i < count; ++i)
            QFile::copy(data("golden.zip"),
                        QStringLiteral("%1/%2.zip").arg(folder).arg(i, 3, 10, QLatin1Char('0')));
        return folder;
    }
    /// The title of the print preview that is open; it is closed. Empty when there is none.
    Q_INVOKABLE QString closePreview() const
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (!window->inherits("QPrintPreviewDialog") || !window->isVisible())
                continue;
            const QString picture = qEnvironmentVariable("CPRVIEWER_PREVIEW"); // to look at
            if (!picture.isEmpty())
                window->grab().save(picture);
            window->close();
            return window->windowTitle();
        }
        return QString();
    }
    /// Prints what is to be printed into a PDF. False when no dialog asks for a printer.
    Q_INVOKABLE bool printTo(const QString &name) const
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            auto *dialog = qobject_cast<QPrintDialog *>(window);
            if (!dialog || !dialog->isVisible())
                continue;
            dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
            dialog->printer()->setOutputFileName(name);
            dialog->done(QDialog::Accepted);
            return true;
        }
        return false;
    }
    /// Chooses a folder. False when no dialog asks for one.
    Q_INVOKABLE bool chooseFolder(const QString &name) const
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            auto *dialog = qobject_cast<QFileDialog *>(window);
            if (!dialog || !dialog->isVisible())
                continue;
            dialog->setDirectory(QFileInfo(name).path());
            dialog->selectFile(name);
            return QMetaObject::invokeMethod(dialog, "accept");
        }
        return false;
    }
    Q_INVOKABLE int pagesOf(const QString &pdf) const
    {
        return testsupport::bytesOf(pdf).count("/Type /Page\n");
    }
    /// Screen readers can be tested here.
    Q_INVOKABLE bool isHeard() const { return QAccessible::isActive(); }
    /// What screen readers were to say at once, since the last call.
    Q_INVOKABLE QStringList takeAlerts() { return std::exchange(alerts, QStringList()); }
    Q_INVOKABLE bool isPrivate(const QString &name) const
    {
        const QFile::Permissions others = QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther;
        return QFile::exists(newFile(name)) && !(QFile::permissions(newFile(name)) & others);
    }
    Q_INVOKABLE QStringList filesIn(const QString &name) const
    {
        return QDir(newFile(name)).entryList(QDir::Files);
    }
    Q_INVOKABLE bool isSame(const QString &name, const QString &other) const
    {
        return testsupport::bytesOf(name) == testsupport::bytesOf(other);
    }
    /// How a session of that learner in the library differs from what the simulator sends; "not
    /// there" when the learner has none.
    Q_INVOKABLE QString differenceFrom(const QString &scenario, int seed, const QString &learner,
                                       const QString &manikin) const
    {
        manikinsim::Scenario sent = *manikinsim::Scenario::find(scenario);
        sent.learners = QStringList(learner);
        sent.manikinName = manikin;
        manikinsim::Simulator simulator(sent, quint64(seed));
        CPRData truth;
        manikinlog::ManikinLogPlayer player(&truth);
        for (manikinlog::Record record; simulator.next(record);)
            player.play(record);
        player.finish();
        CPRData copy(truth); // what is saved is a copy, too
        const QString file = newFile("truth.zip");
        CPRData stored;
        if (!sessionfiles::save(file, copy).isComplete
            || !sessionfiles::load(file, stored).isComplete)
            return "no truth";
        for (const QString &name : filesIn("library")) {
            CPRData saved;
            if (sessionfiles::load(newFile("library/" + name), saved).isComplete
                && saved.learners() == sent.learners)
                return sessionfiles::SessionDiff({name, "sent"}, saved, stored, true).toText();
        }
        return "not there";
    }
    /// A sender that connects to a port of this machine.
    Q_INVOKABLE bool openLink(int port)
    {
        m_link.abort();
        m_link.connectToHost(QHostAddress::LocalHost, quint16(port));
        return m_link.waitForConnected();
    }
    Q_INVOKABLE void closeLink() { m_link.abort(); }
    Q_INVOKABLE void sendLink(const QString &text) { m_link.write(text.toUtf8()); }
    Q_INVOKABLE QString takeAnswers() { return QString::fromUtf8(m_link.readAll()); }
    /// What the simulator sends before \a msecs, as lines.
    Q_INVOKABLE QString linesOf(const QString &scenario, int seed, const QString &learner,
                                const QString &manikin, int msecs) const
    {
        manikinsim::Scenario sent = *manikinsim::Scenario::find(scenario);
        sent.learners = QStringList(learner);
        sent.manikinName = manikin;
        manikinsim::Simulator simulator(sent, quint64(seed));
        QString lines;
        for (manikinlog::Record record; simulator.next(record) && record.msecs < msecs;)
            lines += QString::fromUtf8(*manikinlog::RecordText::text(record)) + '\n';
        return lines;
    }
    /// Leaves a journal as a viewer does that is killed when it has saved its session as \a
    /// archive.
    Q_INVOKABLE void leaveJournal(const QString &text, const QString &archive) const
    {
        const QString target = m_home->filePath(m_folder + "/killed.zip");
        QFile journal(target + ".journal");
        if (journal.open(QIODevice::WriteOnly))
            journal.write(text.toUtf8());
        UnsavedSessions::noteSaving(target, archive);
    }
    Q_INVOKABLE QString textOfJournals() const
    {
        QString text;
        for (const QFileInfo &journal : journalFiles())
            text += textOf(journal.filePath());
        return text;
    }
    Q_INVOKABLE bool remove(const QString &name) const { return QFile::remove(newFile(name)); }
    Q_INVOKABLE QRectF placed(const QRectF &wanted, const QVariantList &screens) const
    {
        QVector<QRect> rects;
        for (const QVariant &screen : screens)
            rects.append(screen.toRectF().toRect());
        return WindowPlace::onScreens(wanted.toRect(), rects);
    }
    Q_INVOKABLE int secondScreen(const QStringList &screens, const QString &first,
                                 const QString &wanted) const
    {
        return WindowPlace::secondScreen(screens, first, wanted);
    }
    Q_INVOKABLE int journals() const { return journalFiles().size(); }
    /// The pages' warnings since the last call.
    Q_INVOKABLE QString takeWarnings()
    {
        return std::exchange(m_warnings, QStringList()).join('\n');
    }
    /// The program's exit status, width and height of its picture, which stands for PICTURE, and
    /// the number of its lines on stderr, where there is no display.
    Q_INVOKABLE QVariantList run(QStringList arguments)
    {
        const QString picture = newFile("picture.png");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
            environment.remove(name);
        // It ends while threads of Qt may be on their way; what they hold is no leak. This program
        // looks for leaks of the same parts.
        environment.insert("ASAN_OPTIONS", "detect_leaks=0");
        const testsupport::Answer answer = testsupport::run(
            CPRVIEWER_PROGRAM, arguments.replaceInStrings("PICTURE", picture), {}, environment);
        const QSize size = QImage(picture).size();
        m_errors = QString::fromUtf8(answer.errors);
        return {answer.status, size.width(), size.height(), m_errors.count('\n')};
    }
    /// What it has printed on stderr.
    Q_INVOKABLE QString errors() const { return m_errors; }
    /// What the other program prints.
    Q_INVOKABLE QString cprsession(const QStringList &arguments) const
    {
        return testsupport::run(CPRSESSION_PROGRAM, arguments, m_home->path()).output;
    }
    /// Lets the program record a session and kills it as soon as nine seconds are on the disk.
    Q_INVOKABLE bool killRecording()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", m_home->path());
        environment.insert("XDG_CONFIG_HOME", m_home->path());
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(CPRVIEWER_PROGRAM, {"--live", "perfect", "--at", "10"});
        constexpr int bytesPerSecond = 3200;
        const auto isRecording = [this] {
            return journals() > 0 && journalFiles().first().size() > 9 * bytesPerSecond;
        };
        const bool isRecorded = QTest::qWaitFor(isRecording, 60000);
        program.kill();
        return program.waitForFinished() && isRecorded;
    }

    static void hear(QAccessibleEvent *event)
    {
        QAccessibleInterface *item = event->accessibleInterface();
        if (event->type() == QAccessible::Alert && item)
            alerts.append(item->text(QAccessible::Name));
    }

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        m_engine = engine;
        connect(engine, &QQmlEngine::warnings, this, [this](const QList<QQmlError> &errors) {
            for (const QQmlError &error : errors) {
                if (error.url().scheme() == "qrc")
                    m_warnings.append(error.toString());
            }
        });
        engine->rootContext()->setContextProperty("desk", this);
    }

private:
    QFileInfoList journalFiles() const
    {
        return QDir(m_home->filePath(m_folder)).entryInfoList({"*.journal"}, QDir::Files);
    }

    static QStringList alerts;

    const QString m_folder = "libCPRData/cprviewer/unsaved";
    QStringList m_warnings;
    QString m_errors;
    QTcpSocket m_link;
    std::unique_ptr<QTemporaryDir> m_home = std::make_unique<QTemporaryDir>();
    std::unique_ptr<Viewer> m_viewer;
    QQmlEngine *m_engine = nullptr;
};

QStringList Desk::alerts;

int main(int argc, char *argv[])
{
    const QTemporaryDir dataHome; // for the indexes of libraries
    qputenv("XDG_DATA_HOME", QFile::encodeName(dataHome.path()));
    qputenv("TZ", "UTC"); // days are those of the place
    for (const char *name : {"ALSA_CONFIG_PATH", "PULSE_SERVER"}) // no machine that tests is heard
        qputenv(name, "/nowhere");
    const QApplication application(argc, argv);
    useViewerTypes();
#if __has_include(<qpa/qplatformaccessibility.h>)
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
#endif
    QAccessible::installUpdateHandler(Desk::hear);
    Desk desk;
    return quick_test_main_with_setup(argc, argv, "viewer", VIEWER_TESTS_DIR, &desk);
}

#include "tst_viewer.moc"
