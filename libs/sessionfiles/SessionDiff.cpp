// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/SessionDiff.h"

#include "private/PrintableText.h"
#include "sessionfiles/ShownValues.h"

#include <CPRData.h>
#include <CPREventCompression.h>
#include <CPREventSessionInfo.h>
#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>
#include <CPREventVentilation.h>
#include <CPRWaveformInfo.h>
#include <Vocabulary.h>

#include <QBitArray>
#include <QMetaEnum>
#include <QMetaProperty>

#include <algorithm>
#include <map>

namespace sessionfiles {

namespace {

using E = CPREventBase;

// Floats in as few digits as tell them apart.
QString textOf(const QVariant &value)
{
    constexpr int fewestDigits = 6;
    constexpr int enoughDigits = 9;
    if (value.userType() != QMetaType::Float)
        return CPRDataBase::variantToString(value);
    const float number = value.toFloat();
    QString text;
    for (int digits = fewestDigits; digits <= enoughDigits; ++digits) {
        text = QString::number(double(number), 'g', digits);
        if (text.toFloat() == number)
            break;
    }
    return text;
}

QString withUnit(const QVariant &value, const QString &unit)
{
    if (!value.isValid())
        return QStringLiteral("none");
    const bool isNumber = value.userType() != QMetaType::QString;
    const QString text =
        isNumber ? textOf(value) : QLatin1Char('"') + value.toString() + QLatin1Char('"');
    return text + (unit.isEmpty() ? QString() : QLatin1Char(' ') + unit);
}

// Without the digits that come from a scale that is a float.
double rounded(double value)
{
    constexpr int significantDigits = 6;
    return QString::number(value, 'g', significantDigits).toDouble();
}

// A float has its own digits in JSON, not those of a double.
QJsonValue jsonOf(const QVariant &value)
{
    return value.userType() == QMetaType::Float ? QJsonValue(textOf(value).toDouble())
                                                : QJsonValue::fromVariant(value);
}

QString eventsSection(const E &event)
{
    return QStringLiteral("events ") + QString::fromLatin1(event.typeAsString());
}

// By type.
std::map<E::ParameterType, QVariant> valuesOf(const E &event)
{
    std::map<E::ParameterType, QVariant> values;
    event.visitValues(
        [&values](E::ParameterType type, const QVariant &value) { values[type] = value; });
    return values;
}

struct Listed {
    const E *event;
    int index; // in the session's list, from 1
};

bool comesBefore(const Listed &left, const Listed &right)
{
    const auto key = [](const Listed &listed) {
        return std::make_pair(listed.event->msecs(), listed.event->type());
    };
    return key(left) < key(right);
}

// The session's events by start and kind, without those that stand beside the list.
QVector<Listed> listedEvents(const CPREvents &events)
{
    QVector<Listed> result;
    int index = 0;
    for (const E *event : events.events()) {
        ++index;
        if (event != events.sessionInfo() && event != events.sessionStatistics()
            && event != events.sessionScore()) {
            result.append({event, index});
        }
    }
    std::stable_sort(result.begin(), result.end(), comesBefore);
    return result;
}

QString msText(qint64 msecs)
{
    return QStringLiteral("%1 ms").arg(msecs);
}

} // namespace

SessionDiff::SessionDiff(const Names &names, const CPRData &a, const CPRData &b, bool ignoresTimes)
    : m_names(names)
{
    compareLearners(a, b);
    // The learners are compared as names, not as the one text that holds them.
    QStringList passedOver{E::parameterKey(E::students)};
    if (ignoresTimes)
        passedOver << E::parameterKey(E::startTime) << E::parameterKey(E::endTime);
    const CPREvents &eventsA = *a.cprEvents();
    const CPREvents &eventsB = *b.cprEvents();
    compareStanding(QStringLiteral("session info"), *eventsA.sessionInfo(), *eventsB.sessionInfo(),
                    passedOver);
    compareStanding(QStringLiteral("statistics"), *eventsA.sessionStatistics(),
                    *eventsB.sessionStatistics(), {});
    compareStanding(QStringLiteral("score"), *eventsA.sessionScore(), *eventsB.sessionScore(), {});
    compareEvents(a, b);
    compareWave(QStringLiteral("compression wave"), *a.compressionData(), *b.compressionData());
    compareWave(QStringLiteral("ventilation wave"), *a.ventilationData(), *b.ventilationData());
    compareGuidelines(a, b);
}

void SessionDiff::compareLearners(const CPRData &a, const CPRData &b)
{
    if (a.learners() == b.learners())
        return;
    const auto names = [](const CPRData &session) {
        return session.learners().join(QLatin1String(", "));
    };
    addValue({QStringLiteral("learners"), {{QStringLiteral("part"), QStringLiteral("learners")}}},
             QString(), names(a), names(b), QString());
}

void SessionDiff::compareStanding(const QString &part, const CPREventBase &a, const CPREventBase &b,
                                  const QStringList &passedOver)
{
    const Place place{part, {{QStringLiteral("part"), part}}};
    if (a.msecs() != b.msecs())
        addValue(place, QStringLiteral("start"), a.msecs(), b.msecs(), QStringLiteral("ms"));
    compareParameters(place, a, b, passedOver);
}

void SessionDiff::compareParameters(const Place &place, const CPREventBase &a,
                                    const CPREventBase &b, const QStringList &passedOver)
{
    const auto parametersA = valuesOf(a);
    const auto parametersB = valuesOf(b);
    auto itA = parametersA.cbegin();
    auto itB = parametersB.cbegin();
    while (itA != parametersA.cend() || itB != parametersB.cend()) {
        const bool takesA =
            itB == parametersB.cend() || (itA != parametersA.cend() && itA->first <= itB->first);
        const E::ParameterType parameter = takesA ? itA->first : itB->first;
        QVariant valueA;
        QVariant valueB;
        if (itA != parametersA.cend() && itA->first == parameter)
            valueA = (itA++)->second;
        if (itB != parametersB.cend() && itB->first == parameter)
            valueB = (itB++)->second;
        const QString key = E::parameterKey(parameter);
        if (!passedOver.contains(key)
            && (valueA.isValid() != valueB.isValid() || textOf(valueA) != textOf(valueB))) {
            addValue(place, key, inShownUnit(parameter, valueA), inShownUnit(parameter, valueB),
                     unitText(Vocabulary::shownUnit(parameter)));
        }
    }
}

void SessionDiff::compareEvents(const CPRData &a, const CPRData &b)
{
    const QVector<Listed> listA = listedEvents(*a.cprEvents());
    const QVector<Listed> listB = listedEvents(*b.cprEvents());
    // First those that agree in start and kind.
    QVector<Pair> pairs;
    std::map<E::EventType, QVector<Listed>> restA;
    std::map<E::EventType, QVector<Listed>> restB;
    auto itA = listA.cbegin();
    auto itB = listB.cbegin();
    while (itA != listA.cend() || itB != listB.cend()) {
        if (itB == listB.cend() || (itA != listA.cend() && comesBefore(*itA, *itB))) {
            restA[itA->event->type()].append(*itA);
            ++itA;
        } else if (itA == listA.cend() || comesBefore(*itB, *itA)) {
            restB[itB->event->type()].append(*itB);
            ++itB;
        } else {
            pairs.append({itA->event, itB->event, itA->index, itB->index});
            ++itA;
            ++itB;
        }
    }
    compareOrder(pairs);

    // Then, kind by kind, those of nearly the same start.
    for (const auto &entry : restB)
        restA[entry.first];
    for (const auto &entry : restA) {
        const QVector<Listed> &ofB = restB[entry.first];
        auto left = entry.second.cbegin();
        auto right = ofB.cbegin();
        while (left != entry.second.cend() || right != ofB.cend()) {
            const bool hasBoth = left != entry.second.cend() && right != ofB.cend();
            const qint64 later = hasBoth ? qint64(right->event->msecs()) - left->event->msecs() : 0;
            if (hasBoth && qAbs(later) <= sameEventMs) {
                pairs.append({left->event, right->event, left->index, right->index});
                ++left;
                ++right;
            } else if (right == ofB.cend() || later > 0) {
                pairs.append({left->event, nullptr, left->index, 0});
                ++left;
            } else {
                pairs.append({nullptr, right->event, 0, right->index});
                ++right;
            }
        }
    }
    std::stable_sort(pairs.begin(), pairs.end(), [](const Pair &first, const Pair &second) {
        const auto start = [](const Pair &pair) { return (pair.a ? pair.a : pair.b)->msecs(); };
        return start(first) < start(second);
    });
    for (const Pair &pair : qAsConst(pairs))
        compareEvent(pair);
}

// Tells the fewest events that would have to change their places in the list.
void SessionDiff::compareOrder(const QVector<Pair> &pairs)
{
    QVector<Pair> byA = pairs;
    std::sort(byA.begin(), byA.end(),
              [](const Pair &first, const Pair &second) { return first.indexA < second.indexA; });
    // The longest run of events that stand in the order of b, too: for each length the run whose
    // last event stands first, and for each event the one before it.
    QVector<int> lastOfLength;
    QVector<int> before(byA.size(), -1);
    for (int i = 0; i < byA.size(); ++i) {
        const auto place =
            std::lower_bound(lastOfLength.begin(), lastOfLength.end(), byA.at(i).indexB,
                             [&byA](int last, int indexB) { return byA.at(last).indexB < indexB; });
        if (place != lastOfLength.begin())
            before[i] = *(place - 1);
        if (place == lastOfLength.end())
            lastOfLength.append(i);
        else
            *place = i;
    }
    QBitArray stays(byA.size());
    for (int i = lastOfLength.isEmpty() ? -1 : lastOfLength.last(); i >= 0; i = before.at(i))
        stays.setBit(i);
    for (int i = 0; i < byA.size(); ++i) {
        if (stays.testBit(i))
            continue;
        ++section(eventsSection(*byA.at(i).a)).moved;
        Place place = positionOf(byA.at(i));
        place.json.insert(QStringLiteral("field"), QStringLiteral("place"));
        add(place.text + QStringLiteral(": stands in another place of the list"), place.json);
    }
}

SessionDiff::Place SessionDiff::positionOf(const Pair &pair)
{
    const E *event = pair.a ? pair.a : pair.b;
    const auto type = QString::fromLatin1(event->typeAsString());
    QString index = QString::number(pair.a ? pair.indexA : pair.indexB);
    if (pair.a && pair.b && pair.indexA != pair.indexB)
        index += QStringLiteral("/%1").arg(pair.indexB);
    QJsonObject json{
        {QStringLiteral("part"), QStringLiteral("event")},
        {QStringLiteral("type"), type},
    };
    if (pair.a) {
        json.insert(QStringLiteral("event_a"), pair.indexA);
        json.insert(QStringLiteral("ms_a"), pair.a->msecs());
    }
    if (pair.b) {
        json.insert(QStringLiteral("event_b"), pair.indexB);
        json.insert(QStringLiteral("ms_b"), pair.b->msecs());
    }
    return {QStringLiteral("event %1 %2 %3").arg(index, type, msText(event->msecs())), json};
}

void SessionDiff::compareEvent(const Pair &pair)
{
    if (!pair.a || !pair.b) {
        Section &events = section(eventsSection(pair.a ? *pair.a : *pair.b));
        ++(pair.a ? events.onlyInA : events.onlyInB);
        addOnlyIn(positionOf(pair), pair.a != nullptr);
        return;
    }
    const qint64 before = m_count;
    const Place place = positionOf(pair);
    const QString ms = QStringLiteral("ms");
    if (pair.a->msecs() != pair.b->msecs())
        addValue(place, QStringLiteral("start"), pair.a->msecs(), pair.b->msecs(), ms);
    if (pair.a->eventEndTime() != pair.b->eventEndTime())
        addValue(place, QStringLiteral("end"), pair.a->eventEndTime(), pair.b->eventEndTime(), ms);
    compareParameters(place, *pair.a, *pair.b, {});
    if (m_count > before)
        ++section(eventsSection(*pair.a)).changed;
}

template <typename Wave>
void SessionDiff::compareWave(const QString &part, const Wave &a, const Wave &b)
{
    const Place place{part, {{QStringLiteral("part"), part}}};
    const CPRWaveformInfo &infoA = *a.waveformInfo();
    const CPRWaveformInfo &infoB = *b.waveformInfo();
    const QMetaObject &object = CPRWaveformInfo::staticMetaObject;
    for (int i = object.propertyOffset(); i < object.propertyCount(); ++i) {
        const QMetaProperty property = object.property(i);
        QVariant valueA = property.read(&infoA);
        QVariant valueB = property.read(&infoB);
        const auto name = QString::fromLatin1(property.name());
        // The length is told by the samples themselves.
        if (name == QLatin1String("length") || textOf(valueA) == textOf(valueB))
            continue;
        if (property.isEnumType()) {
            const auto key = [&](const QVariant &value) {
                return QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
            };
            valueA = key(valueA);
            valueB = key(valueB);
        }
        addValue(place, name, valueA, valueB, name == QLatin1String("msecs") ? name : QString());
    }

    const auto addSamples = [&](int first, int last, const QString &what, QJsonObject json) {
        const qint64 period = infoA.samplePeriod();
        const qint64 firstMs = first * period;
        const qint64 lastMs = last * period;
        json.insert(QStringLiteral("part"), part);
        json.insert(QStringLiteral("first"), first);
        json.insert(QStringLiteral("last"), last);
        json.insert(QStringLiteral("first_ms"), firstMs);
        json.insert(QStringLiteral("last_ms"), lastMs);
        json.insert(QStringLiteral("samples"), last - first + 1);
        const QString where = first == last
            ? QStringLiteral("sample %1 (%2)").arg(first).arg(msText(firstMs))
            : QStringLiteral("samples %1 to %2 (%3 to %4), %5 in all")
                  .arg(first)
                  .arg(last)
                  .arg(firstMs)
                  .arg(msText(lastMs))
                  .arg(last - first + 1);
        add(part + QStringLiteral(", ") + where + QStringLiteral(": ") + what, json);
    };
    const auto scaleUnit = QString::fromLatin1(
        QMetaEnum::fromType<CPRWaveformInfo::ScaleUnit>().valueToKey(infoA.scaleUnits()));
    const int common = qMin(a.count(), b.count());
    for (int first = 0; first < common; ++first) {
        int greatest = 0;
        int end = first;
        for (; end < common && a.at(end) != b.at(end); ++end)
            greatest = qMax(greatest, qAbs(a.at(end) - b.at(end)));
        if (end == first)
            continue;
        const double difference = rounded(greatest * double(infoA.lsbValue()));
        Section &samples = section(part + QStringLiteral(" samples"));
        samples.changed += end - first;
        samples.greatest = qMax(samples.greatest, difference);
        samples.unit = scaleUnit;
        addSamples(first, end - 1,
                   QStringLiteral("up to %1 apart").arg(withUnit(difference, scaleUnit)),
                   {{QStringLiteral("greatest_difference"), difference},
                    {QStringLiteral("unit"), scaleUnit}});
        first = end;
    }
    if (a.count() != b.count()) {
        const bool isInA = a.count() > b.count();
        Section &samples = section(part + QStringLiteral(" samples"));
        (isInA ? samples.onlyInA : samples.onlyInB) += qAbs(a.count() - b.count());
        addSamples(
            common, qMax(a.count(), b.count()) - 1,
            QStringLiteral("only in ") + (isInA ? m_names.a : m_names.b),
            {{QStringLiteral("only_in"), isInA ? QStringLiteral("a") : QStringLiteral("b")}});
    }
}

void SessionDiff::compareGuidelines(const CPRData &a, const CPRData &b)
{
    const Place place{QStringLiteral("guidelines"),
                      {{QStringLiteral("part"), QStringLiteral("guidelines")}}};
    const QMetaObject &object = CPRGuidelines::staticMetaObject;
    for (int i = object.propertyOffset(); i < object.propertyCount(); ++i) {
        const QVariant valueA = object.property(i).read(a.cprGuidelines());
        const QVariant valueB = object.property(i).read(b.cprGuidelines());
        const auto name = QString::fromLatin1(object.property(i).name());
        if (valueA != valueB) {
            const ShownGuideline shown = shownGuideline(name, valueA);
            addValue(place, name, shown.value, shownGuideline(name, valueB).value, shown.unit);
        }
    }
}

void SessionDiff::addValue(const Place &place, const QString &field, const QVariant &a,
                           const QVariant &b, const QString &unit)
{
    // Events are counted by themselves.
    const QString part = place.json.value(QStringLiteral("part")).toString();
    if (part != QLatin1String("event"))
        ++section(part).changed;
    QJsonObject json = place.json;
    if (!field.isEmpty())
        json.insert(QStringLiteral("field"), field);
    json.insert(QStringLiteral("a"), jsonOf(a));
    json.insert(QStringLiteral("b"), jsonOf(b));
    if (!unit.isEmpty())
        json.insert(QStringLiteral("unit"), unit);
    add(place.text + QStringLiteral(": ") + (field.isEmpty() ? QString() : field + QLatin1Char(' '))
            + withUnit(a, unit) + QStringLiteral(" / ") + withUnit(b, unit),
        json);
}

void SessionDiff::addOnlyIn(const Place &place, bool isInA)
{
    QJsonObject json = place.json;
    json.insert(QStringLiteral("only_in"), isInA ? QStringLiteral("a") : QStringLiteral("b"));
    add(place.text + QStringLiteral(": only in ") + (isInA ? m_names.a : m_names.b), json);
}

void SessionDiff::add(const QString &text, const QJsonObject &json)
{
    if (++m_count > maxDifferences)
        return;
    m_lines.append(PrintableText::escaped(text));
    m_json.append(json);
}

QString SessionDiff::toText() const
{
    QString text;
    for (const QString &line : m_lines)
        text += line + QLatin1Char('\n');
    if (const qint64 leftOut = m_count - m_lines.size(); leftOut > 0)
        text += QStringLiteral("and %1 more differences\n").arg(leftOut);
    return text;
}

QJsonObject SessionDiff::head() const
{
    return {
        {QStringLiteral("a"), m_names.a},
        {QStringLiteral("b"), m_names.b},
        {QStringLiteral("same"), isSame()},
    };
}

QJsonObject SessionDiff::toJson() const
{
    QJsonObject json = head();
    json.insert(QStringLiteral("differences"), m_json);
    json.insert(QStringLiteral("left_out"), m_count - m_lines.size());
    return json;
}

SessionDiff::Section &SessionDiff::section(const QString &name)
{
    const auto known =
        std::find_if(m_sections.begin(), m_sections.end(),
                     [&name](const Section &section) { return section.name == name; });
    if (known != m_sections.end())
        return *known;
    Section added;
    added.name = name;
    m_sections.append(added);
    return m_sections.last();
}

QString SessionDiff::toSummary() const
{
    QString text;
    for (const Section &section : m_sections) {
        QStringList parts;
        const auto addPart = [&parts](qint64 number, const QString &what) {
            if (number > 0)
                parts.append(QString::number(number) + QLatin1Char(' ') + what);
        };
        QString changed = QStringLiteral("changed");
        if (!section.unit.isEmpty())
            changed += QStringLiteral(" by up to ") + withUnit(section.greatest, section.unit);
        addPart(section.changed, changed);
        addPart(section.moved, QStringLiteral("in another place of the list"));
        addPart(section.onlyInA, QStringLiteral("only in ") + m_names.a);
        addPart(section.onlyInB, QStringLiteral("only in ") + m_names.b);
        text += PrintableText::escaped(section.name + QStringLiteral(": ")
                                       + parts.join(QLatin1String(", ")))
            + QLatin1Char('\n');
    }
    return text;
}

QJsonObject SessionDiff::summaryToJson() const
{
    QJsonArray sections;
    for (const Section &section : m_sections) {
        QJsonObject json{
            {QStringLiteral("section"), section.name},
            {QStringLiteral("changed"), section.changed},
            {QStringLiteral("moved"), section.moved},
            {QStringLiteral("only_in_a"), section.onlyInA},
            {QStringLiteral("only_in_b"), section.onlyInB},
        };
        if (!section.unit.isEmpty()) {
            json.insert(QStringLiteral("greatest_difference"), section.greatest);
            json.insert(QStringLiteral("unit"), section.unit);
        }
        sections.append(json);
    }
    QJsonObject json = head();
    json.insert(QStringLiteral("sections"), sections);
    return json;
}

} // namespace sessionfiles
