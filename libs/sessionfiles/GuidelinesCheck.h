// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_GUIDELINESCHECK_H
#define SESSIONFILES_GUIDELINESCHECK_H

#include "sessionfiles/ArchiveMember.h"
#include "sessionfiles/TextKind.h"

#include <CPRGuidelines.h>

#include <QMap>
#include <QMetaEnum>

namespace sessionfiles {

template <typename Enumeration> bool isKey(int value)
{
    return QMetaEnum::fromType<Enumeration>().valueToKey(value) != nullptr;
}

class GuidelinesCheck {
public:
    explicit GuidelinesCheck(XmlMember &xml) : m_xml(xml)
    {
        const QMetaObject &object = CPRGuidelines::staticMetaObject;
        for (int i = object.propertyOffset(); i < object.propertyCount(); ++i)
            m_values.insert(QString::fromLatin1(object.property(i).name()),
                            {kindOf(object.property(i)), false});
    }

    void run()
    {
        if (!m_xml.nextChild())
            return;
        if (m_xml.name() != QLatin1String("GuideLineSettings")
            && m_xml.name() != QLatin1String("guidelines")) {
            m_xml.add(Finding::Error, {}, QStringLiteral("the root element GuideLineSettings"),
                      quoted(m_xml.name().toString()));
            m_xml.finish();
            return;
        }
        while (m_xml.nextChild()) {
            checkValue();
            m_xml.skipEmpty();
        }
        if (m_xml.isOver())
            return;
        QStringList missing;
        for (auto it = m_values.cbegin(); it != m_values.cend(); ++it) {
            if (!it->isHeld)
                missing.append(it.key());
        }
        if (!missing.isEmpty()) {
            m_xml.add(Finding::Warning, QStringLiteral("GuideLineSettings"),
                      QStringLiteral("every guideline value"),
                      QStringLiteral("no ") + missing.join(QLatin1String(", ")));
        }
        m_xml.finish();
    }

private:
    struct Value {
        Kind kind;
        bool isHeld;
    };
    static constexpr std::array attributes{"value", "unit"};

    void checkValue()
    {
        const QString name = m_xml.name().toString();
        const auto here = [&] { return name; };
        const auto known = m_values.find(name);
        if (known == m_values.end()) {
            m_xml.add(Finding::Warning, {}, QStringLiteral("a known guideline value"),
                      quoted(name));
            return;
        }
        m_xml.checkAttributes(here, attributes);
        if (known->isHeld) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("the value once"),
                        QStringLiteral("another; the last one counts"));
        }
        known->isHeld = true;

        const std::optional<QString> text = m_xml.attribute("value");
        if (!text) {
            m_xml.addIn(Finding::Error, here, QStringLiteral("the attribute value"),
                        QStringLiteral("none"));
        } else if (!fits(*text, known->kind)) {
            m_xml.addIn(Finding::Error, here, kindText(known->kind), quoted(*text));
        } else {
            checkSetting(name, text->toInt());
        }
        static const QMetaEnum units = QMetaEnum::fromType<CPRDataBase::ParameterUnit>();
        const auto unit = QLatin1String(
            units.valueToKey(CPRDataBase::parameterUnit.value(name, CPRDataBase::none)));
        const std::optional<QString> unitText = m_xml.attribute("unit");
        if (!unitText || *unitText != unit) {
            m_xml.addIn(unitText ? Finding::Error : Finding::Warning, here,
                        QStringLiteral("the unit ") + unit,
                        unitText ? quoted(*unitText) : QStringLiteral("none"));
        }
    }

    // The manikin's own value, which a newer manikin may know more of.
    void checkSetting(const QString &name, int value)
    {
        const bool isTooDeep = name == QLatin1String("CompressionTooDeepSetting");
        const bool isUsage = name == QLatin1String("PreVentilationsUsage");
        if ((isTooDeep && !isKey<CPRGuidelines::CompTooDeepSetting>(value))
            || (isUsage && !isKey<CPRGuidelines::PreventilationUsageEnum>(value))) {
            m_xml.add(Finding::Warning, name, QStringLiteral("a value of the enumeration"),
                      QString::number(value));
        }
    }

    XmlMember &m_xml;
    QMap<QString, Value> m_values;
};

} // namespace sessionfiles

#endif
