// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ClassRoom.h"

#include "ClassList.h"
#include "UnsavedSessions.h"
#include "cprquick/LibraryFolder.h"

#include <manikinlink/LinkHub.h>
#include <manikinlink/LinkStream.h>
#include <manikinsim/Scenario.h>
#include <private/Units.h>

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QQmlEngine>

#include <algorithm>

using manikinlink::LinkAddress;
using manikinlink::LinkHub;

namespace {

constexpr int tickMs = 250;
// How long an end can be taken back, if nothing else happens on that manikin.
constexpr int resumableSecs = 15;
// For a stream to open its journal. A class that comes at once is waited for as one.
constexpr int takenOverMs = 500;
constexpr int secsPerMinute = 60;

// A name in the library that no file has, by the time at which the session began.
QString newName(const QString &folder, const CPRData &session)
{
    const QDateTime begun = sessionreview::figuresOf(session).start();
    const QString stem = (begun.isValid() ? begun.toLocalTime() : QDateTime::currentDateTime())
                             .toString(QStringLiteral("yyyy-MM-dd-HHmmss"));
    QString name;
    for (int number = 1; name.isEmpty() || QFileInfo::exists(name); ++number)
        name = QDir(folder).filePath(stem
                                     + (number > 1 ? QStringLiteral("-%1").arg(number) : QString())
                                     + QStringLiteral(".zip"));
    return name;
}

} // namespace

ClassRoom::ClassRoom(ClassList *list, const UnsavedSessions *unsaved,
                     const cprquick::LibraryFolder *library, QObject *parent)
    : QAbstractListModel(parent), m_list(list), m_unsaved(unsaved), m_library(library)
{
    m_clock.start();
    m_ticks.setInterval(tickMs);
    connect(&m_ticks, &QTimer::timeout, this, &ClassRoom::tick);
    m_takenOver.setSingleShot(true);
    m_takenOver.setInterval(takenOverMs);
    connect(&m_takenOver, &QTimer::timeout, this, &ClassRoom::left);
    connect(m_list, &ClassList::changed, this, &ClassRoom::planAnew);
    connect(&m_writer, &SessionWriter::finished, this, &ClassRoom::finishSaving);
}

ClassRoom::~ClassRoom() = default;

int ClassRoom::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ClassRoom::data(const QModelIndex &index, int role) const
{
    return role == Qt::UserRole ? QVariant::fromValue(at(index.row())) : QVariant();
}

QHash<int, QByteArray> ClassRoom::roleNames() const
{
    return {{Qt::UserRole, "manikin"}};
}

ClassManikin *ClassRoom::at(int row) const
{
    return row >= 0 && row < count() ? m_places[static_cast<std::size_t>(row)].manikin.get()
                                     : nullptr;
}

int ClassRoom::running() const
{
    return static_cast<int>(std::count_if(m_places.begin(), m_places.end(), [](const Place &place) {
        return place.manikin->isRunning();
    }));
}

bool ClassRoom::canStart(const Place &place) const
{
    return (place.manikin->state() == ClassManikin::Ready && !place.manikin->isStarting())
        || place.manikin->isReusable();
}

int ClassRoom::startable() const
{
    return static_cast<int>(std::count_if(m_places.begin(), m_places.end(),
                                          [this](const Place &place) { return canStart(place); }));
}

bool ClassRoom::isIdle() const
{
    return m_waiting.empty()
        && std::none_of(m_places.begin(), m_places.end(), [](const Place &place) {
               const ClassManikin &manikin = *place.manikin;
               return manikin.isRunning()
                   || (manikin.state() == ClassManikin::Ended
                       && manikin.storage() == ClassManikin::InJournal);
           });
}

void ClassRoom::setWatched(bool isWatched)
{
    if (isWatched == m_isWatched)
        return;
    m_isWatched = isWatched;
    for (const Place &place : m_places)
        place.manikin->figures()->setActive(isWatched);
    Q_EMIT isWatchedChanged();
}

ClassRoom::Place &ClassRoom::addPlace(int row)
{
    beginInsertRows({}, row, row);
    Place &place =
        *m_places.insert(m_places.begin() + row,
                         {std::make_unique<ClassManikin>(nullptr), m_numbers++, {}, {}, 0, 1});
    ClassManikin *manikin = place.manikin.get();
    QQmlEngine::setObjectOwnership(manikin, QQmlEngine::CppOwnership);
    manikin->figures()->setActive(m_isWatched);
    connect(manikin, &ClassManikin::stateChanged, this, &ClassRoom::readStates);
    connect(manikin, &ClassManikin::learnerChanged, this, &ClassRoom::readStates);
    connect(manikin, &ClassManikin::ended, this, [this, manikin] { end(manikin); });
    connect(manikin, &ClassManikin::givenBack, this, &ClassRoom::giveBack);
    connect(manikin, &ClassManikin::problem, this, &ClassRoom::problem);
    endInsertRows();
    Q_EMIT countChanged();
    return place;
}

// By the ids as people count, 2 before 10, so that manikins lie in the room as on the screen.
int ClassRoom::rowFor(const QString &id) const
{
    QCollator collator;
    collator.setNumericMode(true);
    const auto behind = std::find_if(m_places.begin(), m_places.end(), [&](const Place &place) {
        return !place.id.isEmpty() && collator.compare(place.id, id) > 0;
    });
    return static_cast<int>(behind - m_places.begin());
}

QStringList ClassRoom::busyLearners() const
{
    QStringList names;
    for (const Place &place : m_places) {
        if (place.manikin->state() != ClassManikin::Ended)
            names += place.manikin->learners();
    }
    return names;
}

void ClassRoom::callLearner(ClassManikin &manikin)
{
    if (manikin.learners().isEmpty())
        manikin.assign(m_list->callNext(manikin.feed()->name(), busyLearners()));
}

// The first of "Manikin 1", "Manikin 2" and so on that none has.
QString ClassRoom::freeName() const
{
    const auto isTaken = [this](const QString &name) {
        return std::any_of(m_places.begin(), m_places.end(), [&name](const Place &place) {
            return place.manikin->feed() && place.manikin->feed()->name() == name;
        });
    };
    QString name;
    for (int number = 1; name.isEmpty() || isTaken(name); ++number)
        name = tr("Manikin %1").arg(number);
    return name;
}

// Readies a simulated manikin, for the learner who is assigned or else the next one of the list.
bool ClassRoom::begin(Place &place, const QString &assigned)
{
    manikinsim::Scenario scenario = *manikinsim::Scenario::find(place.scenario);
    scenario.learners.clear();
    scenario.manikinName = place.manikin->feed() ? place.manikin->feed()->name() : freeName();
    const QString learner =
        assigned.isEmpty() ? m_list->callNext(scenario.manikinName, busyLearners()) : assigned;
    const int protocol = m_list->protocolFor(learner);
    if (protocol >= 0)
        scenario.protocol = static_cast<manikinsim::Scenario::Protocol>(protocol);
    if (m_list->minutes() > 0)
        scenario.seconds = m_list->minutes() * secsPerMinute;
    const QString wrong = scenario.problem();
    if (!wrong.isEmpty()) {
        Q_EMIT problem(wrong);
        return false;
    }
    place.manikin->setFeed(
        ManikinFeed::simulated(scenario, static_cast<quint64>(place.seed), place.speed, m_unsaved));
    place.manikin->assign(learner);
    place.manikin->setPlanned(m_list->minutes() * Units::msecsPerMinute);
    return true;
}

bool ClassRoom::simulate(const QStringList &scenarios, int seed, double speed)
{
    for (const QString &name : scenarios) {
        if (!manikinsim::Scenario::find(name)) {
            Q_EMIT problem(tr("There is no scenario \"%1\".").arg(name));
            return false;
        }
    }
    if (count() + scenarios.size() > maxCount) {
        Q_EMIT problem(tr("There is room for %n manikin(s) at a time.", "", maxCount));
        return false;
    }
    for (const QString &name : scenarios) {
        Place &place = addPlace(count());
        place.scenario = name;
        place.seed = seed++;
        place.speed = speed;
        if (!begin(place, {})) {
            remove(count() - 1);
            return false;
        }
    }
    readStates();
    return true;
}

bool ClassRoom::listen(const QString &address)
{
    QString error;
    const auto parsed = LinkAddress::parse(address.trimmed(), &error);
    if (parsed && !m_hub) {
        m_hub = std::make_unique<LinkHub>();
        m_hub->setFolder(m_unsaved->folder());
        connect(m_hub.get(), &LinkHub::streamAdded, this, &ClassRoom::addStream);
        connect(m_hub.get(), &LinkHub::refused, this,
                [this](const QString &who, const QString &reason) {
                    Q_EMIT problem(tr("%1 was not let in: %2").arg(who, reason));
                });
        connect(m_hub.get(), &LinkHub::brokerLost, this,
                [this](const QString &broker, const QString &reason) {
                    Q_EMIT problem(tr("%1: %2; it is tried again").arg(broker, reason));
                });
    }
    const bool isListening = parsed && m_hub->listen(*parsed, &error);
    if (!isListening)
        Q_EMIT problem(error);
    Q_EMIT addressesChanged();
    return isListening;
}

QString ClassRoom::addresses() const
{
    QStringList texts;
    const QList<LinkAddress> addresses = m_hub ? m_hub->addresses() : QList<LinkAddress>();
    for (const LinkAddress &address : addresses)
        texts.append(address.text());
    return texts.join(QStringLiteral(", "));
}

// A manikin that comes again, with another session, gets the place that it had.
void ClassRoom::addStream(manikinlink::LinkStream *stream)
{
    const auto found = std::find_if(m_places.begin(), m_places.end(), [stream](const Place &place) {
        return place.id == stream->manikin();
    });
    if (found == m_places.end() && count() >= maxCount) {
        stream->refuse(tr("There is room for %n manikin(s) at a time.", "", maxCount));
        stream->deleteLater();
        return;
    }
    Place &place = found != m_places.end() ? *found : addPlace(rowFor(stream->manikin()));
    place.id = stream->manikin();
    if (place.manikin->feed())
        store(place.manikin.get());
    place.manikin->setFeed(ManikinFeed::linked(stream, m_unsaved));
    place.manikin->setPlanned(m_list->minutes() * Units::msecsPerMinute);
    callLearner(*place.manikin);
    m_ticks.start();
    // A session that goes on after a kill is no longer one of those that were left. Its journal is
    // taken over in a moment.
    m_takenOver.start();
}

// Is next again; nothing for an empty name.
void ClassRoom::giveBack(const QString &learner)
{
    if (!learner.isEmpty() && !busyLearners().contains(learner))
        m_list->setNext(m_list->names().indexOf(learner));
}

void ClassRoom::planAnew()
{
    for (const Place &place : m_places) {
        if (place.manikin->state() == ClassManikin::Ready)
            place.manikin->setPlanned(m_list->minutes() * Units::msecsPerMinute);
    }
}

void ClassRoom::start(int row)
{
    if (!at(row) || !canStart(m_places[static_cast<std::size_t>(row)]))
        return;
    Place &place = m_places[static_cast<std::size_t>(row)];
    const bool isAgain = place.manikin->state() == ClassManikin::Ended;
    if (isAgain) {
        store(place.manikin.get());
        place.seed += maxCount; // another rescuer, who is like none beside
    }
    // It is readied anew, also for its first session: the class list may have changed since.
    if (!place.scenario.isEmpty()
        && !begin(place, isAgain ? QString() : place.manikin->learners().value(0)))
        return;
    callLearner(*place.manikin);
    place.manikin->feed()->start();
    m_ticks.start();
}

void ClassRoom::startAll()
{
    for (int row = 0; row < count(); ++row)
        start(row);
}

void ClassRoom::stop(int row)
{
    if (at(row) && at(row)->isRunning())
        at(row)->feed()->stop();
}

void ClassRoom::stopAll()
{
    for (int row = 0; row < count(); ++row)
        stop(row);
}

void ClassRoom::resume(int row)
{
    ClassManikin *manikin = at(row);
    if (!manikin || !manikin->canResume())
        return;
    manikin->feed()->resume();
    m_ticks.start();
}

void ClassRoom::assign(int row, const QString &name)
{
    ClassManikin *manikin = at(row);
    if (!manikin)
        return;
    const QString before = manikin->learners().value(0);
    manikin->assign(name);
    giveBack(before);
}

void ClassRoom::remove(int row)
{
    ClassManikin *manikin = at(row);
    if (!manikin || manikin->isRunning())
        return;
    const QString called = manikin->releaseLearner();
    if (manikin->state() == ClassManikin::Ended)
        store(manikin);
    beginRemoveRows({}, row, row);
    m_gone.push_back(std::move(m_places[static_cast<std::size_t>(row)].manikin));
    m_places.erase(m_places.begin() + row);
    endRemoveRows();
    m_gone.back()->setFeed(nullptr);
    giveBack(called);
    Q_EMIT countChanged();
    readStates();
}

void ClassRoom::finish()
{
    stopAll();
    for (const Place &place : m_places) {
        if (place.manikin->state() == ClassManikin::Ended)
            store(place.manikin.get());
    }
}

void ClassRoom::advance(double secs)
{
    const auto msecs = static_cast<qint64>(secs * Units::msecsPerSecond);
    startAll();
    for (const Place &place : m_places)
        place.manikin->feed()->advanceTo(msecs);
    tick();
}

void ClassRoom::end(ClassManikin *manikin)
{
    if (!manikin->canResume()) // else when it cannot be resumed any more, see tick()
        store(manikin);
    readStates();
}

// The session is over for good. It counts for its learners, and is saved; one that has not begun is
// nobody's. Nothing for a session that was stored before.
void ClassRoom::store(ClassManikin *manikin)
{
    if (manikin->storage() != ClassManikin::InJournal)
        return;
    const Waiting waiting{manikin, manikin->feed()};
    if (!manikin->hasBegun()) {
        waiting.feed->closeJournal(true);
        manikin->setStorage(ClassManikin::Nowhere);
        giveBack(manikin->releaseLearner());
        return;
    }
    const QStringList learners = manikin->learners();
    for (const QString &name : learners)
        m_list->countSession(name);
    if (m_library->folder().isEmpty()) {
        leave(waiting);
        return;
    }
    manikin->setStorage(ClassManikin::BeingSaved);
    m_waiting.push_back(waiting);
    saveNext();
}

void ClassRoom::saveNext()
{
    if (m_writer.isWriting() || m_waiting.empty())
        return;
    const ManikinFeed &feed = *m_waiting.front().feed;
    const CPRData &session = *feed.session();
    const QString name = newName(m_library->folder(), session);
    m_writer.start(SessionExport::copyAsListed(session),
                   [name, target = feed.target()](CPRData *copy) {
                       // The viewer may be killed when the archive is there, and the journal too.
                       UnsavedSessions::noteSaving(target, name);
                       return SessionExport::writeArchive(name, *copy);
                   });
}

void ClassRoom::finishSaving(const SessionExport::Written &written)
{
    const Waiting saved = m_waiting.front();
    m_waiting.erase(m_waiting.begin());
    if (written.isComplete) {
        saved.feed->closeJournal(true);
        if (saved.manikin && saved.manikin->feed() == saved.feed)
            saved.manikin->setStorage(ClassManikin::InLibrary);
    } else {
        leave(saved);
        Q_EMIT problem(written.problem);
    }
    UnsavedSessions::forgetSaving(saved.feed->target());
    saveNext();
    readStates();
}

void ClassRoom::leave(const Waiting &waiting)
{
    waiting.feed->closeJournal(false);
    if (waiting.manikin && waiting.manikin->feed() == waiting.feed)
        waiting.manikin->setStorage(ClassManikin::Left);
    // The lock of a journal over a link goes with its session, which is deleted later.
    QMetaObject::invokeMethod(this, &ClassRoom::left, Qt::QueuedConnection);
}

void ClassRoom::tick()
{
    std::vector<sessionreview::LearnerNeed> needs;
    for (const Place &place : m_places) {
        ClassManikin &manikin = *place.manikin;
        manikin.tick();
        if (manikin.state() == ClassManikin::Ended && manikin.stateSecs() >= resumableSecs)
            store(&manikin);
        const cprquick::LiveFigures &figures = *manikin.figures();
        if (manikin.state() == ClassManikin::Running)
            needs.push_back({place.number, figures.prompt(),
                             figures.scoreSoFar() >= 0 ? std::optional<double>(figures.scoreSoFar())
                                                       : std::nullopt});
    }
    const int first = m_firstToHelp.follow(needs, m_clock.elapsed());
    for (const Place &place : m_places)
        place.manikin->setFirst(place.number == first);
    const bool hasLinks = std::any_of(m_places.begin(), m_places.end(),
                                      [](const Place &place) { return place.scenario.isEmpty(); });
    if (isIdle() && !hasLinks)
        m_ticks.stop();
}

void ClassRoom::readStates()
{
    Q_EMIT statesChanged();
}
