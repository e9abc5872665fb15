// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// What README.md and the guides show, a function for each place.

#include <CPRData.h>
#include <CPREventSessionScore.h>
#include <CPRFileHandlerZip.h>
#include <chestboard/RMessage.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/SessionJournal.h>
#include <sessionfiles/SessionFile.h>
#include <sessionreview/SessionReview.h>
#include <sessionreview/Words.h>

#include <QDebug>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QThread>

#include <memory>

using manikinlog::messageOf;
using manikinlog::SessionJournal;

struct Page : QObject {
    void show(const std::shared_ptr<CPRData> &session, bool isWhole);
};

void warn(const QString &text);

// README.md
// clang-format off
void useIt(bls_2010::RMessage &message, bls_2010::CommonDefs::WaveType waveType, int value, int sequence)
{
    CPRData session;
    QObject::connect(session.cprEvents(), &CPREvents::compressionEvent,
                     [](CPREventCompression *c) { qInfo() << c->msecs() << c->compDepth() << "mm"; });

    session.setCprState(CPRData::CPR_MANIKIN_INIT);
    session.setCprState(CPRData::CPR_INIT);
    session.setCprState(CPRData::CPR_START);
    session.incomingMsg(&message);                       // each bls_2010::RMessage from the link
    session.waveHeaderReceived(sequence);                // each wave packet
    session.waveDataReceived(waveType, value, sequence); // each sample

    CPRFileHandlerZip archive;
    if (archive.open("session.zip", CPRFileHandlerZip::Create)) {
        const bool stored = session.writeData(&archive);
        const bool closed = archive.close();             // both true: it is on the disk
    }
}
// clang-format on

// docs/getting-started.md
bool save(CPRData &session, const QString &name)
{
    CPRFileHandlerZip archive;
    const bool isStored = archive.open(name, CPRFileHandlerZip::Create)
        && session.writeData(&archive) && archive.close();
    if (!isStored)
        warn(QStringLiteral("%1 cannot be written: %2").arg(name, archive.errorString()));
    session.setIsSaved(isStored);
    return isStored;
}

void load(const QString &name)
{
    CPRData session;
    CPRFileHandlerZip archive;
    if (!archive.open(name, CPRFileHandlerZip::Read))
        return warn(QStringLiteral("%1 is no archive: %2").arg(name, archive.errorString()));
    if (!session.readData(&archive))
        warn(QStringLiteral("%1 is damaged; what could be read is shown").arg(name));

    for (const CPREventBase *event : session.cprEvents()->events())
        qInfo() << event->msecs() << event->typeAsString();
    const CPREventSessionScore *score = session.cprEvents()->sessionScore();
    qInfo() << "score" << score->parameterValue(CPREventBase::overallScore, 0).toInt();

    CPRData copy(session);
}

void sayWhatItMeans(const CPRData &session)
{
    const sessionreview::SessionReview review = sessionreview::reviewOf(session);
    for (const sessionreview::Compression &compression : review.compressions)
        qInfo() << compression.begin << sessionreview::faultTexts(compression.faults);
    const sessionreview::Figures &figures = review.figures;
    if (figures.hasScores) // the manikin may not have sent any
        qInfo() << figures.overallScore << sessionreview::adviceText(figures.primaryAdvice);
}

void loadWithReport(const QString &name, CPRData &session)
{
    const sessionfiles::LoadResult loaded = sessionfiles::load(name, session);
    for (const sessionfiles::LoadedMember &member : loaded.members) {
        if (member.state == sessionfiles::LoadedMember::Damaged)
            warn(member.name + QStringLiteral(": ") + member.reason);
    }
}

void journal(const QString &target, const bls_2010::RMessage &message, QElapsedTimer &clock)
{
    SessionJournal journal;
    if (!journal.open(target)) // "monday.zip", which need not exist yet
        warn(journal.errorString()); // the session can run without a journal
    CPRData session;
    manikinlog::ManikinLogPlayer player(&session);
    player.setJournal(&journal);

    player.play({clock.elapsed(), manikinlog::State{CPRData::CPR_START}});
    player.play({clock.elapsed(), messageOf(message)}); // instead of session.incomingMsg()

    if (save(session, target))
        journal.remove();
}

// docs/logging.md
void switchLoggingOn()
{
    QLoggingCategory::setFilterRules(QStringLiteral("Kelmar.CPRData.*.info=true\n"
                                                    "Kelmar.CPRData.CPREvents.debug=true"));

    qSetMessagePattern(QStringLiteral("%{time hh:mm:ss.zzz} %{type} %{category}: %{message}"));
}

// docs/telemetry.md
QByteArray telemetryOf(const CPRData &session)
{
    QMap<QString, QVariant> telemetry;
    session.cprEvents()->telemetryTrainingSessionScoreData(telemetry);
    session.cprEvents()->telemetryTrainingSessionGuidelineData(telemetry);
    const QByteArray body = QJsonDocument(QJsonObject::fromVariantMap(telemetry)).toJson();
    return body;
}

// docs/threads-and-ownership.md
void loadInWorker(Page *page, const QString &name)
{
    auto *worker = QThread::create([page, name] {
        const auto session = std::make_shared<CPRData>();
        CPRFileHandlerZip archive;
        const bool isWhole = archive.open(name, CPRFileHandlerZip::Read)
            && session->readData(&archive) && archive.close();
        session->moveToThread(page->thread()); // its events and timers go with it
        QMetaObject::invokeMethod(page, [page, session, isWhole] { page->show(session, isWhole); });
    });
    QObject::connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
}
