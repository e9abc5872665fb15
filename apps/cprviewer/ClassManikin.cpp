// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ClassManikin.h"

#include "ClassList.h"
#include "Remarks.h"
#include "private/PrintableText.h"
#include "private/Units.h"

#include <algorithm>
#include <utility>

namespace {

// Twelve tiles are drawn on one processor; nobody reads figures that change faster while walking
// past.
constexpr int paceMs = 250;

} // namespace

ClassManikin::ClassManikin(QObject *parent) : QObject(parent), m_figures(this)
{
    m_figures.setPace(paceMs);
    m_stateClock.start();
}

ClassManikin::~ClassManikin()
{
    m_figures.setSession(nullptr); // before the feed takes it along
}

void ClassManikin::setFeed(std::shared_ptr<ManikinFeed> feed)
{
    if (m_feed) {
        m_feed->disconnect(this);
        m_feed->session()->disconnect(this);
        m_feed->session()->cprEvents()->disconnect(this);
    }
    // The session goes when nobody shows it any more.
    const std::shared_ptr<ManikinFeed> old = std::exchange(m_feed, std::move(feed));
    m_assigned.clear();
    m_storage = InJournal;
    m_remaining = -1;
    m_figures.setSession(session());
    Q_EMIT sessionChanged();
    if (!m_feed)
        return;
    connect(m_feed.get(), &ManikinFeed::changed, this, &ClassManikin::readState);
    connect(m_feed.get(), &ManikinFeed::ended, this, [this] {
        readState();
        nameLearner();
        Q_EMIT ended();
    });
    connect(m_feed.get(), &ManikinFeed::problem, this, &ClassManikin::problem);
    // Not from within the event: what is inserted there would come before what made the time go on.
    connect(
        m_feed->session()->cprEvents(), &CPREvents::sessionTimeChanged, this, [this](int msecs) {
            if (msecs > 0 && !m_assigned.isEmpty() && !std::exchange(m_isNaming, true))
                QMetaObject::invokeMethod(this, &ClassManikin::nameLearner, Qt::QueuedConnection);
        });
    connect(m_feed->session(), &CPRData::learnersChanged, this, [this] {
        const QString name = std::exchange(m_assigned, QString());
        Q_EMIT learnerChanged();
        if (!name.isEmpty())
            Q_EMIT givenBack(name);
    });
    Q_EMIT learnerChanged();
    readState();
}

QString ClassManikin::name() const
{
    return m_feed ? PrintableText::shown(m_feed->name()) : QString();
}

bool ClassManikin::hasBegun() const
{
    return m_feed && m_feed->session()->cprEvents()->sessionTime() > 0;
}

QStringList ClassManikin::learners() const
{
    QStringList names = m_feed ? m_feed->session()->learners() : QStringList();
    names.removeAll(QString());
    if (names.isEmpty() && !m_assigned.isEmpty())
        names.append(m_assigned);
    return names;
}

QString ClassManikin::releaseLearner()
{
    const QString name = std::exchange(m_assigned, QString());
    if (!name.isEmpty())
        Q_EMIT learnerChanged();
    return name;
}

QString ClassManikin::learner() const
{
    return PrintableText::shown(learners().join(QStringLiteral(", ")));
}

int ClassManikin::stateSecs() const
{
    return m_stateSecs;
}

void ClassManikin::assign(const QString &name)
{
    const QString stored = ClassList::storable(name);
    if (!m_feed || stored.isEmpty() || m_state == Ended)
        return;
    if (m_feed->session()->learners().isEmpty())
        m_assigned = stored; // the manikin may still name another one
    else
        m_feed->insert(manikinlog::Learner{stored});
    Q_EMIT learnerChanged();
}

CPREventBase *ClassManikin::addRemark(const QString &text, int msecs)
{
    return m_feed && isRunning()
        ? Remarks::add(*m_feed->session(), text, msecs,
                       [this](const manikinlog::Remark &remark) { m_feed->insert(remark); })
        : nullptr;
}

void ClassManikin::setPlanned(int msecs)
{
    m_plannedMs = msecs;
    tick();
}

void ClassManikin::setFirst(bool isFirst)
{
    if (std::exchange(m_isFirst, isFirst) != isFirst)
        Q_EMIT isFirstChanged();
}

void ClassManikin::setStorage(Storage storage)
{
    m_storage = storage;
    Q_EMIT stateChanged();
}

void ClassManikin::readState()
{
    const auto state = static_cast<State>(m_feed->state());
    if (std::exchange(m_state, state) != state) {
        m_stateClock.start();
        m_stateSecs = 0;
    }
    Q_EMIT stateChanged();
    tick();
}

// A manikin that knows its learner names it before session time goes on. Else the learner whom the
// instructor has chosen trains; at the latest when the session ends. Nobody trains in a session
// that has not begun.
void ClassManikin::nameLearner()
{
    m_isNaming = false;
    if (m_assigned.isEmpty() || !hasBegun())
        return;
    const QString name = std::exchange(m_assigned, QString());
    if (m_feed->session()->learners().isEmpty())
        m_feed->insert(manikinlog::Learner{name});
    Q_EMIT learnerChanged();
}

void ClassManikin::tick()
{
    if (!m_feed)
        return;
    const int time = m_feed->session()->cprEvents()->sessionTime();
    const int left = m_plannedMs - time;
    const int remaining =
        m_plannedMs > 0 && m_state != Ended ? std::max(0, Units::secsBegun(left)) : -1;
    const int secs = static_cast<int>(m_stateClock.elapsed() / Units::msecsPerSecond);
    if (remaining != m_remaining || secs != m_stateSecs) {
        m_remaining = remaining;
        m_stateSecs = secs;
        Q_EMIT tickChanged();
    }
    // While the link is bad, the end is under way already, or the manikin hears of it when it is
    // back.
    if (m_state == Running && m_plannedMs > 0 && left <= 0 && !m_feed->endsByItself())
        m_feed->stop();
}
