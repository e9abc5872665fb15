// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_ARCHIVEMEMBER_H
#define SESSIONFILES_ARCHIVEMEMBER_H

#include "sessionfiles/ArchiveCheck.h"

#include <private/CountedDevice.h>
#include <private/SessionArchive.h>
#include <private/Units.h>

#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <optional>

namespace sessionfiles {

using namespace SessionArchive;

using Units::msecsPerSecond;

// The text on one line and in quotes, without anything that a terminal would act on.
inline QString quoted(const QString &text)
{
    constexpr int longest = 60;
    QString result = QStringLiteral("\"");
    for (const QChar c : text.left(longest)) {
        if (c.isPrint() || c.isSurrogate())
            result += c;
        else
            result += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
    return result + (text.size() > longest ? QStringLiteral("\"...") : QStringLiteral("\""));
}

// As it stands in the archive.
inline QString memberName(MemberIndex index)
{
    return nameInZip(nameInFolder(index));
}

// The findings about one member. What a session takes to its end cannot be damaged: there all
// findings are warnings.
class MemberReport {
public:
    explicit MemberReport(FindingList &list, const QString &member = {}, bool isLoaded = false)
        : m_list(list), m_member(member), m_isLoaded(isLoaded)
    {
    }

    // A finding about the member as a whole.
    void add(Finding::Severity severity, const QString &expected, const QString &found)
    {
        m_list.add(lowered(severity), [&] { return finding(severity, expected, found); });
    }
    void error(const QString &expected, const QString &found)
    {
        add(Finding::Error, expected, found);
    }
    void errorAtByte(qint64 byte, const QString &expected, const QString &found)
    {
        m_list.add(lowered(Finding::Error), [&] {
            Finding result = finding(Finding::Error, expected, found);
            result.byte = byte;
            return result;
        });
    }
    // element() is called only when the finding is kept.
    template <typename Element>
    void addAtLine(Finding::Severity severity, qint64 line, qint64 column, Element element,
                   const QString &expected, const QString &found)
    {
        m_list.add(lowered(severity), [&] {
            Finding result = finding(severity, expected, found);
            result.line = line;
            result.column = column;
            result.element = element();
            return result;
        });
    }

private:
    Finding::Severity lowered(Finding::Severity severity) const
    {
        return m_isLoaded ? Finding::Warning : severity;
    }
    Finding finding(Finding::Severity severity, const QString &expected, const QString &found) const
    {
        Finding result;
        result.severity = lowered(severity);
        result.member = m_member;
        result.expected = expected;
        result.found = found;
        return result;
    }

    FindingList &m_list;
    QString m_member;
    bool m_isLoaded;
};

// An XML member, read element by element. What keeps the rest from being read is reported here,
// once; after that there are no more elements. The parser knows no limits, so it gets only what a
// session has read before.
class XmlMember {
public:
    XmlMember(CountedDevice &device, MemberReport &report)
        : m_device(device), m_report(report), m_xml(&device)
    {
    }

    // Goes to the next element inside the current one; false at its end. There should be no text.
    bool nextChild() { return advance(true); }

    // Goes to the end of the current element, whatever it holds.
    void skip()
    {
        const int outside = m_depth - 1;
        while (m_depth > outside && !m_isOver)
            advance(false);
    }

    // The same for an element that should hold no others.
    void skipEmpty()
    {
        while (nextChild()) {
            add(Finding::Warning, {}, QStringLiteral("no element here"), quoted(name().toString()));
            skip();
        }
    }

    // Goes to the end of the document.
    void finish()
    {
        while (!m_isOver)
            advance(false);
    }

    // There is nothing more to read: the document has ended, or is not believed any further.
    bool isOver() const { return m_isOver; }
    // The end was not the document's, which has been reported.
    bool isDamaged() const { return m_isDamaged; }
    // So far.
    int elements() const { return m_elements; }

    QStringView name() const { return m_xml.name(); }
    QXmlStreamAttributes attributes() const { return m_xml.attributes(); }
    // The text of an attribute; none when there is no such attribute.
    std::optional<QString> attribute(const char *key) const
    {
        const QXmlStreamAttributes all = m_xml.attributes();
        if (!all.hasAttribute(QLatin1String(key)))
            return std::nullopt;
        return all.value(QLatin1String(key)).toString();
    }

    // A finding at the current place. element() names it.
    template <typename Element>
    void addIn(Finding::Severity severity, Element element, const QString &expected,
               const QString &found)
    {
        m_report.addAtLine(severity, m_xml.lineNumber(), m_xml.columnNumber(), element, expected,
                           found);
    }
    void add(Finding::Severity severity, const QString &element, const QString &expected,
             const QString &found)
    {
        addIn(
            severity, [&] { return element; }, expected, found);
    }

    // Every attribute of the current element has to be among the known.
    template <typename Element, std::size_t N>
    void checkAttributes(Element element, const std::array<const char *, N> &known)
    {
        for (const QXmlStreamAttribute &attribute : m_xml.attributes()) {
            const auto is = [&](const char *key) { return attribute.name() == QLatin1String(key); };
            if (std::none_of(known.begin(), known.end(), is)) {
                addIn(Finding::Warning, element, QStringLiteral("known attributes only"),
                      quoted(attribute.name().toString()));
            }
        }
    }

private:
    bool advance(bool tellsOfText)
    {
        for (;;) {
            switch (next()) {
            case QXmlStreamReader::StartElement:
                ++m_depth;
                ++m_elements;
                return true;
            case QXmlStreamReader::EndElement:
                --m_depth;
                return false;
            case QXmlStreamReader::Characters:
                if (tellsOfText && !m_xml.isWhitespace())
                    add(Finding::Warning, {}, QStringLiteral("no text"),
                        quoted(m_xml.text().toString()));
                break;
            case QXmlStreamReader::NoToken:
            case QXmlStreamReader::EndDocument:
                return false;
            default:
                break;
            }
        }
    }

    QXmlStreamReader::TokenType next()
    {
        if (m_isOver)
            return QXmlStreamReader::NoToken;
        const QXmlStreamReader::TokenType token = m_xml.readNext();
        if (token == QXmlStreamReader::StartDocument)
            checkEncoding();
        if (token == QXmlStreamReader::DTD) {
            reportDamage(QStringLiteral("no document type"),
                         QStringLiteral("a declaration of one; not read further"));
        } else if (token == QXmlStreamReader::Invalid) {
            reportEnd();
        } else if (token != QXmlStreamReader::EndDocument) {
            return token;
        }
        m_isOver = true;
        return QXmlStreamReader::NoToken;
    }

    void checkEncoding()
    {
        const auto encoding = m_xml.documentEncoding();
        if (!encoding.isEmpty() && encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive)) {
            reportDamage(QStringLiteral("the encoding UTF-8"), quoted(encoding.toString()));
        }
    }

    void reportEnd()
    {
        if (m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError
            && !m_device.device()->atEnd()) {
            reportDamage(QStringLiteral("no more than a session holds"),
                         QStringLiteral("more; not read further"));
        } else if (!m_device.hasFailed()) {
            reportDamage(QStringLiteral("well-formed XML"), quoted(m_xml.errorString()));
        }
    }

    void reportDamage(const QString &expected, const QString &found)
    {
        add(Finding::Error, {}, expected, found);
        m_isDamaged = true;
    }

    CountedDevice &m_device;
    MemberReport &m_report;
    QXmlStreamReader m_xml;
    int m_depth = 0;
    int m_elements = 0;
    bool m_isOver = false;
    bool m_isDamaged = false;
};

} // namespace sessionfiles

#endif
