// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_EVENTLISTCHECK_H
#define SESSIONFILES_EVENTLISTCHECK_H

#include "sessionfiles/ArchiveMember.h"
#include "sessionfiles/TextKind.h"

#include <CPREventCompression.h>
#include <CPREventVentilation.h>

#include <QMetaEnum>

#include <bitset>
#include <limits>

namespace sessionfiles {

using E = CPREventBase;

constexpr std::size_t parameterCount = E::manikinBatteryDisconnectCounter + 1;
using Parameters = std::bitset<parameterCount>;

struct ParameterKind {
    E::ParameterType parameter;
    Kind kind;
};

// The parameters that are no integers, of every event but compressions and ventilations, which
// have properties. One that no manikin sends gets the widest kind that makes sense.
// clang-format off
constexpr std::array<ParameterKind, 35> parameterKinds = {{
    {E::compForceUnits,          Kind::Text},
    {E::compDepthUnits,          Kind::Text},
    {E::ventVolumeUnits,         Kind::Text},
    {E::instructor,              Kind::Text},
    {E::students,                Kind::Text},
    {E::manikinFirmwareVersion,  Kind::Text},
    {E::manikinName,             Kind::Text},
    {E::manikinRfidVersion,      Kind::Text},
    {E::manikinFeedpodVersion,   Kind::Text},
    {E::remoteControl,           Kind::Text},
    {E::remoteControlVersion,    Kind::Text},
    {E::cprCardId,               Kind::Text},
    {E::eventId,                 Kind::Text},
    {E::startTime,               Kind::Time},
    {E::endTime,                 Kind::Time},
    {E::compRate,                Kind::Number},
    {E::compDepth,               Kind::Number},
    {E::compUndershootDepth,     Kind::Number},
    {E::compPeakForce,           Kind::Number},
    {E::compReleaseForce,        Kind::Number},
    {E::compDutyCycle,           Kind::Number},
    {E::compLeaning,             Kind::Number},
    {E::compReleaseDepth,        Kind::Number},
    {E::compAbsolutePeakDepth,   Kind::Number},
    {E::compLeaningDepth,        Kind::Number},
    {E::compLeaningForce,        Kind::Number},
    {E::ventRawVolumeZ,          Kind::Number},
    {E::ventVolumeZ,             Kind::Number},
    {E::manikinCompressionCount, Kind::Unsigned},
    {E::cprCardTimestamp,        Kind::Unsigned},
    {E::manikinVentilationCount, Kind::Unsigned},
    {E::compIncompleteRelease,   Kind::Flag},
    {E::compHandposXiphoid,      Kind::Flag},
    {E::compHandposError,        Kind::Flag},
    {E::ventDuringCompression,   Kind::Flag},
}};
// clang-format on

template <typename Enumeration> bool isKey(int value)
{
    return QMetaEnum::fromType<Enumeration>().valueToKey(value) != nullptr;
}

inline bool isProtocol(int value)
{
    return value >= 0 && value <= bls_2010::CommonDefs::CPR_HIGH_PERFORMANCE;
}

struct EnumerationRow {
    E::ParameterType parameter;
    bool (*has)(int);
    // The manikin's own value is stored as it came, and a newer manikin may know more.
    bool isManikins;
};

// clang-format off
constexpr std::array<EnumerationRow, 12> enumerations = {{
    {E::cprProtocol,            isProtocol,                          true},
    {E::manikinType,            isKey<E::ManikinType>,               true},
    {E::manikinStiffness,       isKey<E::ManikinStiffness>,          true},
    {E::primaryAdvice,          isKey<E::Advice>,                    false},
    {E::secondaryAdvice,        isKey<E::Advice>,                    false},
    {E::aedEventType,           isKey<E::AEDEventType>,              false},
    {E::aedRemoteOtherButtonId, isKey<E::AEDRemoteOtherButtons>,     true},
    {E::aedRemoteApplyToAll,    isKey<E::AEDRemoteApplyToAllStatus>, true},
    {E::aedECGRhythm,           isKey<E::AEDEcgRhythms>,             true},
    {E::aedECGPulseStatus,      isKey<E::AEDEcgPulseStatus>,         true},
    {E::aedECGShockableStatus,  isKey<E::AEDEcgShockableStatus>,     true},
    {E::aedType,                isKey<E::AEDTypes>,                  false},
}};

// What is always written of a compression and of a ventilation. Forces are not when they were not
// measured.
constexpr std::array compressionMeasurements {
    E::endTime, E::compDepth, E::compPeakTime, E::compInstantaneousPeriod, E::compAbsolutePeakDepth,
    E::compLeaningDepth, E::compReleaseDepth, E::compHandposXiphoid, E::compHandposError,
    E::compIncompleteRelease, E::compMeanRate
};
constexpr std::array ventilationMeasurements {
    E::ventVolume, E::ventRate, E::ventInstantaneousPeriod, E::ventPeakTime, E::ventDuringCompression
};
// clang-format on

// The kinds of one sort of event.
struct EventSchema {
    // Of an event that keeps its parameters by name.
    EventSchema()
    {
        kinds.fill(Kind::Integer);
        for (const ParameterKind &row : parameterKinds)
            kinds[static_cast<std::size_t>(row.parameter)] = row.kind;
        for (const EnumerationRow &row : enumerations)
            kinds[static_cast<std::size_t>(row.parameter)] = Kind::Enumeration;
    }
    // Of an event that keeps them as properties.
    template <std::size_t N>
    EventSchema(const QMetaObject &object, const std::array<E::ParameterType, N> &written)
    {
        kinds.fill(Kind::Unknown);
        for (int i = 0; i < object.propertyCount(); ++i) {
            E::ParameterType parameter{};
            if (E::parameterFromKey(QString::fromLatin1(object.property(i).name()), parameter))
                kinds[static_cast<std::size_t>(parameter)] = kindOf(object.property(i));
        }
        for (const E::ParameterType parameter : written)
            expected.set(static_cast<std::size_t>(parameter));
    }

    std::array<Kind, parameterCount> kinds{};
    Parameters expected;
};

inline const EventSchema &schemaOf(E::EventType type)
{
    static const EventSchema named;
    static const EventSchema compression(CPREventCompression::staticMetaObject,
                                         compressionMeasurements);
    static const EventSchema ventilation(CPREventVentilation::staticMetaObject,
                                         ventilationMeasurements);
    switch (type) {
    case E::CprCompEvent:
        return compression;
    case E::CprVentEvent:
        return ventilation;
    default:
        return named;
    }
}

// What one event says of time; ms of session time.
struct EventTimes {
    qint64 start = 0;
    std::optional<int> end; // where one is stored
    std::optional<int> peak;
    int pauseSecs = 0;
};

class EventListCheck {
public:
    // The compression wave covers coveredMs, when that is known.
    EventListCheck(XmlMember &xml, MemberReport &report, std::optional<qint64> coveredMs)
        : m_xml(xml), m_report(report),
          m_coveredMs(coveredMs.value_or(std::numeric_limits<qint64>::max()))
    {
    }

    void run()
    {
        if (!m_xml.nextChild())
            return;
        if (m_xml.name() != QLatin1String("eventList")) {
            m_xml.add(Finding::Error, {}, QStringLiteral("the root element eventList"),
                      quoted(m_xml.name().toString()));
            m_xml.finish();
            return;
        }
        m_xml.checkAttributes([] { return QStringLiteral("eventList"); }, noAttributes);
        while (m_xml.nextChild())
            checkEvent();
        if (!m_xml.isOver())
            checkStanding();
        m_xml.finish();
    }

    // Of the session, in s; 0 when it is not known.
    int totalTime() const { return m_totalTime; }

private:
    static constexpr std::array<const char *, 0> noAttributes{};
    static constexpr std::array eventAttributes{"type", "msecs"};
    static constexpr std::array parameterAttributes{"type", "value", "units"};

    // An event that stands in the order, as far as the next ones need it.
    struct Listed {
        E::EventType type;
        qint64 start;
        qint64 end;
    };

    // Once the whole list has been read.
    void checkStanding()
    {
        if (m_infos != 1)
            m_report.error(QStringLiteral("one CprSessionInfo"), QString::number(m_infos));
        if (m_statistics > 1) {
            m_report.error(QStringLiteral("at most one CprSessionStatistics"),
                           QString::number(m_statistics));
        }
        if (m_scores > 1) {
            m_report.error(QStringLiteral("at most one CprSessionScore"),
                           QString::number(m_scores));
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
            ++m_infos;
        else if (m_type == E::CprSessionStatistics)
            ++m_statistics;
        else if (m_type == E::CprSessionScore)
            ++m_scores;
    }

    void checkParameters()
    {
        const EventSchema &schema = schemaOf(m_type);
        Parameters held;
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String("param")) {
                checkParameter(schema, held);
                m_xml.skipEmpty();
            } else {
                add(Finding::Error, QStringLiteral("the element param; readers end the list here"),
                    quoted(m_xml.name().toString()));
                m_xml.skip();
            }
        }
        const Parameters missing = schema.expected & ~held;
        if (missing.none() || m_xml.isOver())
            return;
        QStringList keys;
        for (std::size_t i = 0; i < parameterCount; ++i) {
            if (missing.test(i))
                keys.append(E::parameterKey(static_cast<E::ParameterType>(i)));
        }
        add(Finding::Warning, QStringLiteral("every measurement"),
            QStringLiteral("no ") + keys.join(QLatin1String(", ")));
    }

    void checkParameter(const EventSchema &schema, Parameters &held)
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
        const auto index = static_cast<std::size_t>(parameter);
        if (held.test(index)) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("the parameter once"),
                        QStringLiteral("another; the last one counts"));
        }
        held.set(index);

        const Kind kind = schema.kinds[index];
        if (kind == Kind::Unknown) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("a measurement of this event"),
                        QStringLiteral("one that the event does not have"));
            return;
        }
        checkUnits(here, parameter);
        if (!fits(*value, kind)) {
            m_xml.addIn(Finding::Error, here, kindText(kind), quoted(*value));
            return;
        }
        if (kind == Kind::Enumeration)
            checkEnumeration(here, parameter, value->toInt());
        noteTime(parameter, value->toInt());
    }

    template <typename Element> void checkUnits(Element here, E::ParameterType parameter)
    {
        static const QMetaEnum units = QMetaEnum::fromType<E::ParameterUnit>();
        const E::ParameterUnit unit = E::parameterUnit.value(parameter, E::none);
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
        const auto *row =
            std::find_if(enumerations.begin(), enumerations.end(),
                         [&](const EnumerationRow &each) { return each.parameter == parameter; });
        if (row != enumerations.end() && !row->has(value)) {
            m_xml.addIn(row->isManikins ? Finding::Warning : Finding::Error, here,
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
        if (m_type == E::CprSessionInfo || m_type == E::CprSessionStatistics
            || m_type == E::CprSessionScore) {
            return;
        }

        // Readers drop it, so it is no neighbour of the next event either.
        if (isPause && m_previous && m_previous->type == E::CprInactivityCPR
            && m_previous->end > start) {
            add(Finding::Warning,
                QStringLiteral("a pause that begins after the pause before it; readers drop it"),
                QStringLiteral("the pause before it ends at %1 ms").arg(m_previous->end));
            return;
        }
        checkOrder(latestEnd(isVentilation, isPause, end));
        m_previous = {m_type, start, end};
    }

    // How long the event can have lasted when the next one was listed.
    qint64 latestEnd(bool isVentilation, bool isPause, qint64 end) const
    {
        constexpr qint64 longestPeakToEnd = 65535; // 16 bits in the manikin's message
        if (isVentilation && !m_times.end)
            return m_times.peak.value_or(end) + longestPeakToEnd;
        // A pause that was cut keeps its whole seconds only.
        return isPause ? end + msecsPerSecond : end;
    }

    void checkOrder(qint64 latest)
    {
        // A session that was cut to its total time has cut the last pause, but keeps the events
        // behind it.
        if (!m_previous || m_previous->start >= m_coveredMs)
            return;
        if (m_times.start < m_previous->start && latest <= m_previous->start) {
            add(Finding::Error, QStringLiteral("events in the order of time"),
                QStringLiteral("an event that has ended when the one before it starts, at %1 ms")
                    .arg(m_previous->start));
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
    std::optional<Listed> m_previous;
    qint64 m_infos = 0;
    qint64 m_statistics = 0;
    qint64 m_scores = 0;
    int m_totalTime = 0;
};

} // namespace sessionfiles

#endif
