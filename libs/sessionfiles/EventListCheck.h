// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_EVENTLISTCHECK_H
#define SESSIONFILES_EVENTLISTCHECK_H

#include "sessionfiles/ArchiveMember.h"
#include "sessionfiles/TextKind.h"

#include <Vocabulary.h>

#include <QMetaEnum>

#include <algorithm>
#include <limits>
#include <vector>

namespace sessionfiles {

using E = CPREventBase;

// What the text of a parameter in such an event has to be; nothing when the event cannot hold it.
inline std::optional<Kind> kindOf(const Vocabulary::EventKind &event, E::ParameterType parameter)
{
    if (!event.measuring)
        return Vocabulary::parameter(parameter)->kind;
    const int index =
        event.measuring->indexOfProperty(E::parameterKey(parameter).toLatin1().constData());
    return index < 0 ? std::nullopt : std::optional(kindOf(event.measuring->property(index)));
}

// What one event says of time; ms of session time.
struct EventTimes {
    qint64 start = 0;
    std::optional<int> end; // where one is stored
    std::optional<int> peak;
    int pauseSecs = 0;
};

// An event that stands in the order, as far as the next ones need it.
struct ListedEvent {
    E::EventType type;
    qint64 start;
    qint64 end;
};
// The events so far, as far as the next ones have to go with them.
struct EventsBefore {
    std::optional<ListedEvent> previous;
    qint64 infos = 0;
    qint64 statistics = 0;
    qint64 scores = 0;
    qint64 listed = 0; // all others
    qint64 parameters = 0; // that those keep which have no measurements
};

class EventListCheck {
public:
    // The compression wave covers coveredMs, when that is known.
    EventListCheck(XmlMember &xml, MemberReport &report, std::optional<qint64> coveredMs,
                   const EventsBefore &before = {})
        : m_xml(xml), m_report(report),
          m_coveredMs(coveredMs.value_or(std::numeric_limits<qint64>::max())), m_before(before)
    {
    }

    void run()
    {
        if (checkEvents() && !m_xml.isOver())
            checkStanding();
        m_xml.finish();
    }

    // All but how often each standing event is there. False when the document is no list.
    bool checkEvents()
    {
        if (!m_xml.nextChild())
            return false;
        if (m_xml.name() != QLatin1String("eventList")) {
            m_xml.add(Finding::Error, {}, QStringLiteral("the root element eventList"),
                      quoted(m_xml.name().toString()));
            return false;
        }
        m_xml.checkAttributes([] { return QStringLiteral("eventList"); }, noAttributes);
        while (m_xml.nextChild())
            checkEvent();
        return true;
    }

    // The events up to the end of the document.
    const EventsBefore &before() const { return m_before; }
    // Of the session, in s; 0 when it is not known.
    int totalTime() const { return m_totalTime; }

private:
    static constexpr std::array<const char *, 0> noAttributes{};
    static constexpr std::array eventAttributes{"type", "msecs"};
    static constexpr std::array parameterAttributes{"type", "value", "units"};

    // Once the whole list has been read.
    void checkStanding()
    {
        if (m_before.infos != 1)
            m_report.error(QStringLiteral("one CprSessionInfo"), QString::number(m_before.infos));
        if (m_before.statistics > 1) {
            m_report.error(QStringLiteral("at most one CprSessionStatistics"),
                           QString::number(m_before.statistics));
        }
        if (m_before.scores > 1) {
            m_report.error(QStringLiteral("at most one CprSessionScore"),
                           QString::number(m_before.scores));
        }
    }

    QString where() const
    {
        QString text = QStringLiteral("evt %1").arg(m_number);
        if (!m_typeText.isEmpty())
            text += QLatin1Char(' ') + m_typeText;
        if (m_hasTime)
            text += QStringLiteral(" %1 ms").arg(m_times.start);
        return text;
    }
    QString whereParameter(const QString &key) const
    {
        return where() + QStringLiteral(", param ") + key;
    }
    void add(Finding::Severity severity, const QString &expected, const QString &found)
    {
        m_xml.addIn(
            severity, [this] { return where(); }, expected, found);
    }

    void checkEvent()
    {
        ++m_number;
        m_typeText.clear();
        m_hasTime = false;
        m_times = {};
        if (m_xml.name() != QLatin1String("evt")) {
            add(Finding::Error, QStringLiteral("the element evt; readers end the list here"),
                quoted(m_xml.name().toString()));
            m_xml.skip();
            return;
        }
        const std::optional<QString> typeText = m_xml.attribute("type");
        const std::optional<QString> msecsText = m_xml.attribute("msecs");
        if (!typeText || !msecsText) {
            add(Finding::Error, QStringLiteral("the attributes type and msecs"),
                typeText ? QStringLiteral("no msecs") : QStringLiteral("no type"));
            m_xml.skip();
            return;
        }
        m_xml.checkAttributes([this] { return where(); }, eventAttributes);
        if (!E::eventTypeFromKey(*typeText, m_type)) {
            add(Finding::Warning, QStringLiteral("a known kind of event"), quoted(*typeText));
            m_xml.skip();
            return;
        }
        m_typeText = *typeText;
        m_times.start = msecsText->toInt(&m_hasTime);
        if (!m_hasTime)
            add(Finding::Error, QStringLiteral("msecs, ") + kindText(Kind::Integer),
                quoted(*msecsText));
        countStanding();
        checkParameters();
        if (m_hasTime && !m_xml.isOver())
            checkTimes();
    }

    void countStanding()
    {
        if (m_type == E::CprSessionInfo)
            ++m_before.infos;
        else if (m_type == E::CprSessionStatistics)
            ++m_before.statistics;
        else if (m_type == E::CprSessionScore)
            ++m_before.scores;
    }

    void checkParameters()
    {
        m_held.assign(static_cast<std::size_t>(Vocabulary::parameterCount()), false);
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String("param")) {
                checkParameter();
                m_xml.skipEmpty();
            } else {
                add(Finding::Error, QStringLiteral("the element param; readers end the list here"),
                    quoted(m_xml.name().toString()));
                m_xml.skip();
            }
        }
        if (!Vocabulary::eventKind(m_type)->measuring && !isStanding())
            m_before.parameters += std::count(m_held.begin(), m_held.end(), true);
        if (!m_xml.isOver())
            checkMeasurements();
    }

    bool isStanding() const
    {
        return m_type == E::CprSessionInfo || m_type == E::CprSessionStatistics
            || m_type == E::CprSessionScore;
    }

    // All are always written, but forces only when they were measured.
    void checkMeasurements()
    {
        const Vocabulary::EventKind &kind = *Vocabulary::eventKind(m_type);
        std::vector<E::ParameterType> missing;
        for (const E::ParameterType each : kind.measurements) {
            if (Vocabulary::parameter(each)->form != Vocabulary::Form::Force && !isHeld(each))
                missing.push_back(each);
        }
        if (kind.storesEnd && !isHeld(E::endTime))
            missing.push_back(E::endTime);
        if (missing.empty())
            return;
        std::sort(missing.begin(), missing.end());
        QStringList keys;
        for (const E::ParameterType each : missing)
            keys.append(E::parameterKey(each));
        add(Finding::Warning, QStringLiteral("every measurement"),
            QStringLiteral("no ") + keys.join(QLatin1String(", ")));
    }
    bool isHeld(E::ParameterType parameter) const
    {
        return m_held[static_cast<std::size_t>(parameter)];
    }

    void checkParameter()
    {
        const std::optional<QString> key = m_xml.attribute("type");
        const std::optional<QString> value = m_xml.attribute("value");
        if (!key || !value) {
            add(Finding::Error, QStringLiteral("a param with type and value"),
                key ? quoted(*key) + QStringLiteral(" without a value")
                    : QStringLiteral("one without a type"));
            return;
        }
        const auto here = [&] { return whereParameter(*key); };
        E::ParameterType parameter{};
        if (!E::parameterFromKey(*key, parameter)) {
            add(Finding::Warning, QStringLiteral("a known parameter"), quoted(*key));
            return;
        }
        m_xml.checkAttributes(here, parameterAttributes);
        if (isHeld(parameter)) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("the parameter once"),
                        QStringLiteral("another; the last one counts"));
        }
        m_held[static_cast<std::size_t>(parameter)] = true;

        const std::optional<Kind> kind = kindOf(*Vocabulary::eventKind(m_type), parameter);
        if (!kind) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("a measurement of this event"),
                        QStringLiteral("one that the event does not have"));
            return;
        }
        checkUnits(here, parameter);
        if (!fits(*value, *kind)) {
            m_xml.addIn(Finding::Error, here, kindText(*kind), quoted(*value));
            return;
        }
        checkEnumeration(here, parameter, value->toInt());
        noteTime(parameter, value->toInt());
    }

    template <typename Element> void checkUnits(Element here, E::ParameterType parameter)
    {
        static const QMetaEnum units = QMetaEnum::fromType<E::ParameterUnit>();
        const E::ParameterUnit unit = Vocabulary::parameter(parameter)->unit.value_or(E::none);
        const auto expected = QLatin1String(units.valueToKey(unit));
        const std::optional<QString> found = m_xml.attribute("units");
        if (found && *found != expected) {
            m_xml.addIn(Finding::Error, here, QStringLiteral("the units ") + expected,
                        quoted(*found));
        } else if (!found && unit != E::none) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("the units ") + expected,
                        QStringLiteral("none"));
        }
    }

    template <typename Element>
    void checkEnumeration(Element here, E::ParameterType parameter, int value)
    {
        const Vocabulary::Enumeration *enumeration = Vocabulary::parameter(parameter)->enumeration;
        if (enumeration && !enumeration->has(value)) {
            m_xml.addIn(enumeration->isManikins ? Finding::Warning : Finding::Error, here,
                        QStringLiteral("a value of the enumeration"), QString::number(value));
        }
    }

    void noteTime(E::ParameterType parameter, int value)
    {
        switch (parameter) {
        case E::endTime:
            m_times.end = value;
            break;
        case E::compPeakTime:
        case E::ventPeakTime:
            m_times.peak = value;
            break;
        case E::compInactivity:
            m_times.pauseSecs = value;
            break;
        case E::totalTime:
            if (m_type == E::CprSessionInfo)
                m_totalTime = value;
            break;
        default:
            break;
        }
    }

    void checkTimes()
    {
        const bool isCompression = m_type == E::CprCompEvent;
        const bool isVentilation = m_type == E::CprVentEvent;
        const bool isPause = m_type == E::CprInactivityCPR;
        const qint64 start = m_times.start;
        qint64 end = start;
        if (isPause)
            end = start + qint64(m_times.pauseSecs) * msecsPerSecond;
        else if ((isCompression || isVentilation) && m_times.end)
            end = *m_times.end;
        if (end < start) {
            add(Finding::Error, QStringLiteral("an end not before the start"),
                QStringLiteral("%1 ms").arg(end));
            end = start;
        } else if ((isCompression || isVentilation) && m_times.peak) {
            const bool hasEnd = m_times.end.has_value();
            if (*m_times.peak < start || (hasEnd && *m_times.peak > end)) {
                add(Finding::Error, QStringLiteral("a peak between start and end"),
                    QStringLiteral("%1 ms").arg(*m_times.peak));
            }
        }
        if (isStanding())
            return;

        // Readers drop it, so it is no neighbour of the next event either.
        if (isPause && m_before.previous && m_before.previous->type == E::CprInactivityCPR
            && m_before.previous->end > start) {
            add(Finding::Warning,
                QStringLiteral("a pause that begins after the pause before it; readers drop it"),
                QStringLiteral("the pause before it ends at %1 ms").arg(m_before.previous->end));
            return;
        }
        checkOrder(latestEnd(isVentilation, isPause, end));
        m_before.previous = {m_type, start, end};
        ++m_before.listed;
    }

    // How long the event can have lasted when the next one was listed.
    qint64 latestEnd(bool isVentilation, bool isPause, qint64 end) const
    {
        constexpr qint64 maxPeakToEnd = 65535; // 16 bits in the manikin's message
        if (isVentilation && !m_times.end)
            return m_times.peak.value_or(end) + maxPeakToEnd;
        // A pause that was cut keeps its whole seconds only.
        return isPause ? end + msecsPerSecond : end;
    }

    void checkOrder(qint64 latest)
    {
        // A session that was cut to its total time has cut the last pause, but keeps the events
        // behind it.
        if (!m_before.previous || m_before.previous->start >= m_coveredMs)
            return;
        if (m_times.start < m_before.previous->start && latest <= m_before.previous->start) {
            add(Finding::Error, QStringLiteral("events in the order of time"),
                QStringLiteral("an event that has ended when the one before it starts, at %1 ms")
                    .arg(m_before.previous->start));
        }
    }

    XmlMember &m_xml;
    MemberReport &m_report;
    qint64 m_coveredMs;
    int m_number = 0; // of the current event, from 1
    E::EventType m_type{};
    QString m_typeText;
    bool m_hasTime = false;
    EventTimes m_times;
    std::vector<bool> m_held; // by parameter, of the current event
    EventsBefore m_before;
    int m_totalTime = 0;
};

} // namespace sessionfiles

#endif
