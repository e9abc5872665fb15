// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CommandLine.h"
#include "Screenshot.h"
#include "Viewer.h"
#include "ViewerTypes.h"
#include "WindowPlace.h"
#include "private/ProgramStart.h"
#include "private/Terminal.h"

#include <private/Units.h>

#include <QApplication>
#include <QOpenGLContext>
#include <QQmlApplicationEngine>
#include <QQmlIncubationController>
#include <QQuickWindow>
#include <QWidget>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

constexpr int maxPiecesMs = 1000; // for what lists have begun to make, at the end

// Without one Qt would abort, with advice that does not help.
bool hasDisplay()
{
#ifdef Q_OS_LINUX
    const char *const names[] = {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"};
    return std::any_of(std::begin(names), std::end(names),
                       [](const char *name) { return !qEnvironmentVariableIsEmpty(name); });
#else
    return true;
#endif
}

// The list of names that a file dialog proposes may outlive it, and would hold the keyboard.
void closePopupsWith(const QApplication &application, QQuickWindow *window)
{
    QObject::connect(&application, &QGuiApplication::focusWindowChanged, window,
                     [window](const QWindow *focused) {
                         QWidget *popup = QApplication::activePopupWidget();
                         if (popup && focused == window)
                             popup->close();
                     });
}

// Opens or starts what the command line asks for. False when something of it cannot be begun; then
// the viewer's problem says why.
bool begin(Viewer &viewer, const CommandLine &line)
{
    if (!line.file.isEmpty())
        viewer.open(line.file);
    if (!line.compared.isEmpty())
        viewer.compareWith(line.compared);
    for (const QString &address : line.addresses) {
        if (!viewer.room()->listen(address))
            return false;
    }
    if (!line.isLive())
        return true;
    const bool isPicture = !line.screenshot.isEmpty();
    const double speed = isPicture ? 0 : line.speed;
    if (line.scenarios.size() > 1) {
        if (!viewer.room()->simulate(line.scenarios, line.seed, speed))
            return false;
        if (line.atSecs)
            viewer.room()->advance(*line.atSecs);
        else if (!isPicture)
            viewer.room()->startAll();
        return true;
    }
    const bool isStarted = line.log.isEmpty()
        ? viewer.startScenario(line.scenarios.first(), line.seed, speed)
        : viewer.startReplay(line.log, speed);
    if (line.atSecs)
        viewer.advanceTo(qint64(*line.atSecs * Units::msecsPerSecond));
    else if (isPicture)
        viewer.advanceTo(std::numeric_limits<qint64>::max());
    return isStarted;
}

} // namespace

int main(int argc, char *argv[])
{
    ProgramStart::occupyStandardStreams();
    Terminal::showLog();
    CommandLine line;
    if (std::optional<ExitStatus> status = line.parse(argc, argv)) {
        if (!Terminal::isOutputWritten()) {
            complain(QStringLiteral("the output cannot be written; is the disk full?"));
            status = ExitStatus::Failed;
        }
        return static_cast<int>(*status);
    }
    const bool isPicture = !line.screenshot.isEmpty();
    if (!isPicture && !hasDisplay()) {
        complain(QStringLiteral("there is no display, neither DISPLAY nor WAYLAND_DISPLAY is set; "
                                "--screenshot FILE.png needs none"));
        return static_cast<int>(ExitStatus::Failed);
    }

    QCoreApplication::setOrganizationName(QStringLiteral("libCPRData"));
    QCoreApplication::setApplicationName(QStringLiteral("cprviewer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CPRVIEWER_VERSION));
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) // it always is since then
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    // Rounded up, 150 % would leave too little of a screen. A picture has one size.
    if (!isPicture) {
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
            Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    }
#endif
    if (isPicture) // needs no graphics card
        qputenv("QT_QUICK_BACKEND", "software");
    // The file dialogs are widgets where the system has none of its own.
    const auto application = isPicture ? ProgramStart::drawing<QApplication>(argc, argv)
                                       : std::make_unique<QApplication>(argc, argv);
    // Without OpenGL, as on many virtual machines, Qt would abort instead of painting by itself.
    if (!QOpenGLContext().create())
        QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
    useViewerTypes();

    // A picture depends on nothing that was chosen before, and leaves nothing behind.
    Viewer viewer(isPicture ? Viewer::Paths() : Viewer::Paths::ofUser());
    if (!line.language.isEmpty())
        viewer.appearance()->useLanguage(line.language);
    if (line.isDark || line.isLight)
        viewer.appearance()->useMode(line.isDark ? Appearance::Dark : Appearance::Light);

    if (!line.library.isEmpty())
        viewer.library()->setFolder(line.library);
    if (!line.classList.isEmpty())
        viewer.classList()->addFile(QUrl::fromLocalFile(line.classList));

    if (line.hasLearnerView)
        viewer.learnerPlace()->open();

    QQmlApplicationEngine engine;
    QObject::connect(viewer.appearance(), &Appearance::languageChanged, &engine,
                     &QQmlEngine::retranslate);
    const bool isCompared = line.page.isEmpty() && !line.compared.isEmpty();
    const bool isClass =
        line.page.isEmpty() && (line.scenarios.size() > 1 || !line.addresses.isEmpty());
    QVariantMap properties{{QStringLiteral("viewer"), QVariant::fromValue(&viewer)},
                           {QStringLiteral("visible"), false}, // until it has its place
                           {QStringLiteral("firstPage"),
                            isCompared    ? QStringLiteral("compare")
                                : isClass ? QStringLiteral("manikins")
                                          : line.page},
                           {QStringLiteral("firstLearner"), line.learner}};
    const bool hasPlace = line.size.isEmpty();
    const QRect place = hasPlace ? WindowPlace::stored(*viewer.settings()) : QRect({}, line.size);
    properties.insert(QStringLiteral("width"), place.width());
    properties.insert(QStringLiteral("height"), place.height());
    if (hasPlace) {
        properties.insert(QStringLiteral("x"), place.x());
        properties.insert(QStringLiteral("y"), place.y());
    }
    engine.setInitialProperties(properties);
    engine.load(QUrl(QStringLiteral("qrc:/cprviewer/qml/Main.qml")));
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window) {
        complain(QStringLiteral("the window cannot be made; are the QML modules "
                                "QtQuick.Controls, QtQuick.Layouts and Qt.labs.platform there?"));
        return static_cast<int>(ExitStatus::Failed);
    }
    if (hasPlace && WindowPlace::isStoredMaximized(*viewer.settings()))
        window->showMaximized();
    else
        window->show();
    closePopupsWith(*application, window);
    if (!begin(viewer, line)) {
        complain(viewer.problem());
        return static_cast<int>(ExitStatus::Failed);
    }
    std::unique_ptr<Screenshot> screenshot;
    if (isPicture) {
        auto *learners = window->property("learnerWindow").value<QQuickWindow *>();
        if (learners)
            learners->resize(line.size);
        screenshot =
            std::make_unique<Screenshot>(line.screenshot, &viewer, learners ? learners : window);
    }
    const int status = QApplication::exec();
    WindowPlace::store(window, *viewer.settings());
    // Lists make what is outside their view piece by piece. Qt complains of what stays half made.
    if (QQmlIncubationController *pieces = engine.incubationController())
        pieces->incubateFor(maxPiecesMs);
    return status;
}
