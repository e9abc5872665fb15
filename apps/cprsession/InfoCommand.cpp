// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Command.h"
#include "FiguresObject.h"
#include "private/PrintableText.h"
#include "sessionfiles/SessionFile.h"
#include "sessionreview/RecordedFigures.h"
#include "sessionreview/Words.h"

#include <CPRData.h>
#include <CPREventSessionInfo.h>
#include <private/Units.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QMetaEnum>

#include <memory>
#include <utility>
#include <vector>

namespace {

using E = CPREventBase;
using sessionreview::Figures;
using sessionreview::SessionReview;

struct InfoOptions {
    std::vector<std::string> sessions;
    bool asJson = false;
};

QString duration(int secs)
{
    constexpr int secsPerMinute = 60;
    return QStringLiteral("%1 min %2 s").arg(secs / secsPerMinute).arg(secs % secsPerMinute);
}

QString orUnknown(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("not known") : text;
}

QString recordedText(const SessionReview &review)
{
    constexpr int titleWidth = 36;
    QString text;
    const auto line = [&text](const QString &title, const QString &value) {
        text += QStringLiteral("  ") + title.leftJustified(titleWidth) + value + QLatin1Char('\n');
    };
    for (const sessionreview::RecordedFigure &figure : sessionreview::recordedFigures()) {
        if (const std::optional<double> value = figure.value(review))
            line(figure.titleText(), figure.text(*value, QLocale::c()));
    }
    int number = 0;
    for (const sessionreview::ShockPauses &shock : sessionreview::shockPausesOf(review)) {
        ++number;
        line(sessionreview::shockTitle(shock, number),
             sessionreview::shockText(shock, QLocale::c()));
    }
    return text;
}

QJsonObject recordedObject(const SessionReview &review)
{
    QJsonObject object;
    for (const sessionreview::RecordedFigure &figure : sessionreview::recordedFigures()) {
        object.insert(QLatin1String(figure.key), orNull(figure.value(review)));
    }
    QJsonArray shocks;
    for (const sessionreview::ShockPauses &shock : sessionreview::shockPausesOf(review)) {
        shocks.append(QJsonObject{
            {QStringLiteral("time_s"), double(shock.msecs) / Units::msecsPerSecond},
            {QStringLiteral("pre_shock_pause_s"), orNull(shock.before)},
            {QStringLiteral("post_shock_pause_s"), orNull(shock.after)},
            {QStringLiteral("peri_shock_pause_s"), orNull(shock.around)},
        });
    }
    object.insert(QStringLiteral("shock_pauses"), shocks);
    return object;
}

// What people call it, with the key behind.
QString withKey(const QString &words, const QString &key)
{
    return words.isEmpty() ? key : QStringLiteral("%1 (%2)").arg(words, key);
}

QString adviceWithKey(int advice, sessionreview::Side side)
{
    return withKey(sessionreview::adviceText(advice, side), keyOf<E::Advice>(advice));
}

QString infoText(const QString &name, const CPRData &session, const SessionReview &review,
                 const sessionfiles::LoadResult &loaded)
{
    const Figures &figures = review.figures;
    QString text;
    const auto line = [&text](const char *label, const QString &value) {
        text += QString::fromLatin1(label).leftJustified(14) + PrintableText::escaped(value)
            + QLatin1Char('\n');
    };

    QString compressions = QString::number(figures.compressions);
    QString ventilations = QString::number(figures.ventilations);
    if (figures.hasStatistics) {
        compressions += QStringLiteral(", mean depth %1 mm, mean rate %2 per minute")
                            .arg(figures.meanDepth, 0, 'f', 1)
                            .arg(figures.meanRate);
        ventilations += QStringLiteral(", mean volume %1 ml").arg(figures.meanVolume);
    }

    line("Session", name);
    line("Learners", orUnknown(figures.learners.join(QLatin1String(", "))));
    line("Manikin",
         (figures.manikinName.isEmpty() ? QString() : figures.manikinName + QStringLiteral(", "))
             + withKey(sessionreview::manikinText(figures.manikinType, figures.ageLetter),
                       keyOf<E::ManikinType>(figures.manikinType))
             + QStringLiteral(", firmware ") + orUnknown(figures.firmware));
    line("Protocol",
         withKey(sessionreview::protocolText(figures.protocol),
                 session.cprEvents()->sessionInfo()->cprProtocolToString()));
    line("Start", orUnknown(figures.startTime));
    line("Length", figures.secs > 0 ? duration(figures.secs) : orUnknown(QString()));
    line("Compressions", compressions);
    line("Ventilations", ventilations);
    line("Pauses", QString::number(figures.pauses));
    if (figures.hasScores) {
        line("Scores",
             QStringLiteral("overall %1 %, compressions %2 %, ventilations %3 %")
                 .arg(figures.overallScore)
                 .arg(figures.compressionScore)
                 .arg(figures.ventilationScore));
        line("Flow time",
             figures.flowTime < 0 ? QStringLiteral("not received")
                                  : QStringLiteral("%1 %").arg(figures.flowTime));
        line("Advice",
             adviceWithKey(figures.primaryAdvice, figures.primarySide) + QStringLiteral(", then ")
                 + adviceWithKey(figures.secondaryAdvice, figures.secondarySide));
    } else {
        line("Scores", QStringLiteral("not received"));
    }
    line("Guidelines", orUnknown(figures.guidelines));
    const char *label = "Remarks";
    for (const sessionreview::Flag &remark : sessionreview::remarksOf(review))
        line(std::exchange(label, ""),
             QStringLiteral("%1  %2").arg(duration(remark.msecs / Units::msecsPerSecond),
                                          PrintableText::shown(remark.name)));
    if (loaded.isRecording)
        line("Recording", loaded.isComplete ? QStringLiteral("all read") : loaded.problem);
    else if (loaded.isComplete)
        line("Members", QStringLiteral("all read"));
    else if (loaded.missing().isEmpty())
        line("Members", QStringLiteral("read in part"));
    else
        line("Members", QStringLiteral("NOT READ: ") + loaded.missing().join(QLatin1String(", ")));
    text += QStringLiteral("Worked out from the recorded events\n") + recordedText(review);
    return text;
}

QJsonObject infoObject(const QString &name, const SessionReview &review,
                       const sessionfiles::LoadResult &loaded)
{
    QJsonObject object = figuresObject(review.figures);
    object.insert(QStringLiteral("file"), name);
    object.insert(QStringLiteral("complete"), loaded.isComplete);
    object.insert(QStringLiteral("missing_members"), QJsonArray::fromStringList(loaded.missing()));
    object.insert(QStringLiteral("recorded"), recordedObject(review));
    QJsonArray remarks;
    for (const sessionreview::Flag &remark : sessionreview::remarksOf(review))
        remarks.append(
            QJsonObject{{QStringLiteral("time_s"), double(remark.msecs) / Units::msecsPerSecond},
                        {QStringLiteral("text"), remark.name}});
    object.insert(QStringLiteral("remarks"), remarks);
    return object;
}

ExitStatus runInfo(const InfoOptions &options)
{
    bool isComplete = true;
    QStringList texts;
    QJsonArray objects;
    for (const std::string &argument : options.sessions) {
        CPRData session;
        const QString name = fileName(argument);
        const sessionfiles::LoadResult loaded = loadSession(name, session);
        isComplete = isComplete && loaded.isComplete;
        if (!loaded.hasSession())
            continue;
        const SessionReview review = sessionreview::reviewOf(session);
        if (options.asJson)
            objects.append(infoObject(name, review, loaded));
        else
            texts.append(infoText(name, session, review, loaded));
    }
    if (!options.asJson)
        print(texts.join(QLatin1Char('\n')));
    else if (options.sessions.size() > 1)
        print(QString::fromUtf8(QJsonDocument(objects).toJson()));
    else if (!objects.isEmpty())
        print(QString::fromUtf8(QJsonDocument(objects.first().toObject()).toJson()));
    return isComplete ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

void addInfoCommand(CLI::App &app, Run &run)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App *command = app.add_subcommand("info", "Show what sessions hold");
    command->add_option("sessions", options->sessions, "Session archives or recorded logs")
        ->required()
        ->type_name("SESSION");
    command->add_flag("--json", options->asJson,
                      "Print a JSON object, of several sessions an array of them");
    command->footer(
        "Depths are in mm, rates per minute, volumes in ml. What the manikin has not sent is\n"
        "\"not received\", in JSON null; the figures below it come from the recorded events.\n"
        "Examples:\n"
        "  cprsession info monday.zip\n"
        "  cprsession info *.zip --json");
    command->callback([options, &run] { run.verb = [options] { return runInfo(*options); }; });
}
