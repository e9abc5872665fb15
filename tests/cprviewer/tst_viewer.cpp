// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Viewer.h"
#include "ViewerTypes.h"
#include "WindowPlace.h"
#include "support/Damage.h"
#include "support/Messages.h"
#include "support/Program.h"
#include "support/StoredSession.h"

#include <QApplication>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QWidget>
#include <QtQuickTest>
#include <QtTest>

/// What the pages' tests need from outside of QML.
class Desk : public QObject {
    Q_OBJECT

public:
    /// A viewer that shares nothing with those before it, but their journals if \a keepsJournals.
    Q_INVOKABLE QObject *newViewer(bool keepsJournals)
    {
        m_viewer.reset();
        if (!keepsJournals)
            m_home = std::make_unique<QTemporaryDir>();
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
    Q_INVOKABLE bool remove(const QString &name) const { return QFile::remove(newFile(name)); }
    Q_INVOKABLE QRectF placed(const QRectF &wanted, const QVariantList &screens) const
    {
        QVector<QRect> rects;
        for (const QVariant &screen : screens)
            rects.append(screen.toRectF().toRect());
        return WindowPlace::onScreens(wanted.toRect(), rects);
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
        const testsupport::Answer answer = testsupport::run(
            CPRVIEWER_PROGRAM, arguments.replaceInStrings("PICTURE", picture), {}, environment);
        const QSize size = QImage(picture).size();
        return {answer.status, size.width(), size.height(), int(answer.errors.count('\n'))};
    }
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

    const QString m_folder = "libCPRData/cprviewer/unsaved";
    QStringList m_warnings;
    std::unique_ptr<QTemporaryDir> m_home = std::make_unique<QTemporaryDir>();
    std::unique_ptr<Viewer> m_viewer;
    QQmlEngine *m_engine = nullptr;
};

int main(int argc, char *argv[])
{
    const QTemporaryDir dataHome; // for the indexes of libraries
    qputenv("XDG_DATA_HOME", QFile::encodeName(dataHome.path()));
    qputenv("TZ", "UTC"); // days are those of the place
    const QApplication application(argc, argv);
    useViewerTypes();
    Desk desk;
    return quick_test_main_with_setup(argc, argv, "viewer", VIEWER_TESTS_DIR, &desk);
}

#include "tst_viewer.moc"
