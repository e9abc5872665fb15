// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ArchiveMaker.h"

#include <CPRData.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <manikinlog/ManikinLogReader.h>
#include <manikinlog/SessionJournal.h>

#include <QFile>
#include <QThread>

#include <memory>
#include <sys/resource.h>
#include <utility>
#include <variant>

namespace {

using manikinlog::ManikinLogReader;
using manikinlog::SessionJournal;

// Of a link's journal some records say only when and of which stream it is.
bool isOfManikin(const manikinlog::Record &record)
{
    return !std::holds_alternative<manikinlog::Start>(record.entry)
        && !std::holds_alternative<manikinlog::Stream>(record.entry)
        && !std::holds_alternative<manikinlog::Batch>(record.entry);
}

// Of a log that a kill has cut.
bool endsInLine(QFile &log)
{
    char last = '\n';
    return log.size() > 0 && log.seek(log.size() - 1) && log.getChar(&last) && last != '\n';
}

void make(ArchiveMaker::Made &made)
{
    const QString journal = SessionJournal::nameFor(made.target);
    const std::unique_ptr<QFile> file = made.wasLeft ? SessionJournal::claim(journal, &made.problem)
                                                     : std::make_unique<QFile>(journal);
    if (!file || !(file->isOpen() || file->open(QIODevice::ReadOnly))) {
        made.saved.reason = file ? file->errorString() : made.problem;
        return;
    }
    CPRData session;
    manikinlog::ManikinLogPlayer player(&session);
    ManikinLogReader reader(file.get(), journal, ManikinLogReader::Damage::IsSkipped);
    manikinlog::Record record;
    while (reader.read(record) == ManikinLogReader::Result::Record) {
        made.records += isOfManikin(record);
        player.play(record);
    }
    player.finish();
    made.problem = reader.errorString();
    if (made.problem.isEmpty() && reader.skippedLines() > (endsInLine(*file) ? 1 : 0))
        made.problem = reader.skippedError();
    made.msecs = session.compressionData()->sessionTime();
    if (made.records > 0)
        made.saved = sessionfiles::save(made.target, session);
    if (made.wasLeft && made.problem.isEmpty() && (made.saved.isComplete || made.records == 0))
        QFile::remove(journal);
}

} // namespace

ArchiveMaker::ArchiveMaker(QObject *parent) : QObject(parent)
{
}

ArchiveMaker::~ArchiveMaker()
{
    if (m_thread)
        m_thread->wait();
}

void ArchiveMaker::add(const QString &target, bool wasLeft)
{
    Made made;
    made.target = target;
    made.wasLeft = wasLeft;
    m_waiting.push_back(made);
    if (!m_thread)
        startNext();
}

void ArchiveMaker::startNext()
{
    if (m_waiting.empty())
        return;
    m_made = m_waiting.front();
    m_waiting.pop_front();
    m_thread = QThread::create([this] {
        // The manikins come first. For Linux that is of this thread alone.
        constexpr int niceness = 10;
        ::setpriority(PRIO_PROCESS, 0, niceness);
        make(m_made);
    });
    m_thread->setParent(this);
    connect(m_thread, &QThread::finished, this, [this] {
        std::exchange(m_thread, nullptr)->deleteLater();
        const Made made = std::exchange(m_made, {});
        startNext();
        Q_EMIT this->made(made);
    });
    m_thread->start(QThread::InheritPriority);
}
