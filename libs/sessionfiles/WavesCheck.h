// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_WAVESCHECK_H
#define SESSIONFILES_WAVESCHECK_H

#include "sessionfiles/ArchiveMember.h"
#include "sessionfiles/TextKind.h"

#include <CPRWaveformInfo.h>

#include <QMetaEnum>

namespace sessionfiles {

// What the description of one wave says, as far as other members can be compared with it.
struct WaveDescription {
    std::optional<int> length; // samples
    int samplePeriod = 0; // ms; 0 when it is not known
};

class WavesCheck {
public:
    explicit WavesCheck(XmlMember &xml) : m_xml(xml) { }

    void run()
    {
        if (!m_xml.nextChild())
            return;
        if (m_xml.name() != QLatin1String(waveList)) {
            m_xml.add(Finding::Error, {}, QStringLiteral("the root element waveFormList"),
                      quoted(m_xml.name().toString()));
            m_xml.finish();
            return;
        }
        std::size_t index = 0;
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String(waveForm) && index < descriptions.size()) {
                checkWaveForm(index++);
                continue;
            }
            // The reader looks for the two descriptions one behind the other.
            m_xml.add(index < descriptions.size() ? Finding::Error : Finding::Warning, {},
                      QStringLiteral("two elements waveForm, the compressions' first"),
                      quoted(m_xml.name().toString()));
            m_xml.skip();
        }
        if (index < descriptions.size() && !m_xml.isOver()) {
            m_xml.add(Finding::Error, QStringLiteral("waveFormList"),
                      QStringLiteral("two elements waveForm"), QString::number(index));
        }
        m_xml.finish();
    }

    std::array<WaveDescription, 2> descriptions; // compressions, ventilations

private:
    static constexpr std::array types{"comp", "vent"};
    static constexpr std::array files{Compressions, Ventilations};

    QString where(const char *element) const
    {
        return QStringLiteral("waveForm %1, %2")
            .arg(QLatin1String(types[m_index]), QLatin1String(element));
    }
    void add(Finding::Severity severity, const char *element, const QString &expected,
             const QString &found)
    {
        m_xml.add(severity, where(element), expected, found);
    }

    // Whether each attribute is there and fits; others are unknown.
    template <std::size_t N>
    void checkAttributes(const char *element, const std::array<const char *, N> &names)
    {
        const QMetaObject &object = CPRWaveformInfo::staticMetaObject;
        for (const char *name : names) {
            const QMetaProperty property = object.property(object.indexOfProperty(name));
            const Kind kind = property.isEnumType() ? Kind::Text : kindOf(property);
            const std::optional<QString> text = m_xml.attribute(name);
            const auto here = QString::fromLatin1(name);
            if (!text)
                add(Finding::Error, element, QStringLiteral("the attribute ") + here,
                    QStringLiteral("none"));
            else if (!fits(*text, kind))
                add(Finding::Error, element, here + QStringLiteral(", ") + kindText(kind),
                    quoted(*text));
        }
        m_xml.checkAttributes([&] { return where(element); }, names);
    }

    // The attribute has to be this text, if it is there.
    void checkText(const char *element, const char *attribute, const QString &expected)
    {
        const std::optional<QString> text = m_xml.attribute(attribute);
        if (text && *text != expected) {
            add(Finding::Error, element,
                QStringLiteral("%1 \"%2\"").arg(QLatin1String(attribute), expected), quoted(*text));
        }
    }

    void checkWaveForm(std::size_t index)
    {
        m_index = index;
        WaveDescription &description = descriptions[index];
        checkAttributes(waveForm, waveFormAttributes);
        checkText(waveForm, "type", QString::fromLatin1(types[index]));
        checkText(waveForm, "bitsPerSample", QString::number(8 * bytesPerSample));
        if (const std::optional<QString> text = m_xml.attribute("sampleRate")) {
            bool ok = false;
            const int rate = text->toInt(&ok);
            if (ok && (rate < 1 || rate > msecsPerSecond))
                add(Finding::Error, waveForm, QStringLiteral("sampleRate, 1 to 1000 per second"),
                    quoted(*text));
            else if (ok)
                description.samplePeriod = msecsPerSecond / rate;
        }
        if (const std::optional<QString> text = m_xml.attribute("length")) {
            bool ok = false;
            const int length = text->toInt(&ok);
            if (ok)
                description.length = length;
        }

        int scales = 0;
        int externalFiles = 0;
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String(waveScale)) {
                ++scales;
                checkAttributes(waveScale, waveScaleAttributes);
                checkUnit();
                m_xml.skipEmpty();
            } else if (m_xml.name() == QLatin1String(waveFile)) {
                ++externalFiles;
                checkAttributes(waveFile, waveFileAttributes);
                checkText(waveFile, "fileName", nameInFolder(files[index]));
                m_xml.skipEmpty();
            } else {
                add(Finding::Warning, waveForm, QStringLiteral("scale and externalFile only"),
                    quoted(m_xml.name().toString()));
                m_xml.skip();
            }
        }
        if (m_xml.isOver())
            return;
        if (scales != 1)
            add(Finding::Error, waveForm, QStringLiteral("one scale"), QString::number(scales));
        if (externalFiles != 1)
            add(Finding::Error, waveForm, QStringLiteral("one externalFile"),
                QString::number(externalFiles));
    }

    void checkUnit()
    {
        const std::optional<QString> unit = m_xml.attribute("scaleUnits");
        const auto units = QMetaEnum::fromType<CPRWaveformInfo::ScaleUnit>();
        if (unit && units.keyToValue(unit->toLatin1().constData()) < 0)
            add(Finding::Error, waveScale, QStringLiteral("scaleUnits, a known unit"),
                quoted(*unit));
    }

    XmlMember &m_xml;
    std::size_t m_index = 0;
};

} // namespace sessionfiles

#endif
