// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "XmlInput.h"

#include "CPRFileHandlerZip.h"

#include <algorithm>
#include <cstring>

namespace {

// Far above what a session holds: 47 attributes, 4 elements in each other, 200 bytes.
constexpr int maximalAttributes = 128;
constexpr int maximalDepth = 64;
constexpr qint64 maximalLength = 1024 * 1024; // of a text, a tag or a comment, in bytes

bool endsTagPart(char c)
{
    return c == '"' || c == '>' || c == '\'';
}

} // namespace

XmlInput::XmlInput(QIODevice *member) : m_member(member)
{
    QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 XmlInput::readData(char *data, qint64 maxSize)
{
    if (!m_damage.isEmpty())
        return -1;
    const qint64 size = m_member->read(data, maxSize);
    if (size < 0 && !m_member->atEnd())
        m_damage = m_member->errorString();
    if (size <= 0)
        return size;
    m_total += size;
    if (m_total > CPRFileHandlerZip::maximalMemberSize)
        m_damage = QStringLiteral("more than %1 bytes").arg(CPRFileHandlerZip::maximalMemberSize);
    // No text in UTF-8 has one; in other encodings the markup would not be recognised below.
    if (std::memchr(data, 0, static_cast<std::size_t>(size)))
        m_damage = QStringLiteral("it is not encoded in UTF-8");
    return m_damage.isEmpty() ? scan(data, data + size) - data : -1;
}

qint64 XmlInput::writeData(const char * /*data*/, qint64 /*size*/)
{
    return -1;
}

// Returns where the document oversteps a limit, else the end.
const char *XmlInput::scan(const char *from, const char *end)
{
    const char *at = from;
    while (at < end && m_damage.isEmpty()) {
        // Of most bytes nothing matters but where they end.
        const char *next = at;
        if (m_place == Place::Text || m_place == Place::Quoted)
            next = std::find(at, end, m_place == Place::Text ? '<' : m_quote);
        else if (m_place == Place::Tag)
            next = std::find_if(at, end, endsTagPart);
        if (next > at) {
            m_length += next - at;
            m_lastBytes[2] = next[-1];
        }
        at = next;
        if (at < end)
            step(*at++);
        if (m_length > maximalLength)
            m_damage = QStringLiteral("a text or tag of more than %1 bytes").arg(maximalLength);
    }
    return at;
}

void XmlInput::step(char c)
{
    ++m_length;
    std::copy(m_lastBytes + 1, std::end(m_lastBytes), m_lastBytes);
    m_lastBytes[2] = c;
    switch (m_place) {
    case Place::Text:
        m_place = Place::Opening;
        m_length = 1;
        break;
    case Place::Opening:
        openMarkup(c);
        break;
    case Place::Tag:
        stepInTag(c);
        break;
    case Place::Quoted:
        m_place = Place::Tag;
        break;
    case Place::Declaration:
        if (c == '-')
            m_place = Place::Comment;
        else if (c == '[')
            m_place = Place::CData;
        else
            m_damage = QStringLiteral("a document type, which no session has");
        break;
    // The shortest ones are <!---->, <![CDATA[]]> and <??>.
    case Place::Comment:
        if (endsWith("-->", 7))
            enterText();
        break;
    case Place::CData:
        if (endsWith("]]>", 12))
            enterText();
        break;
    case Place::Instruction:
        if (endsWith("?>", 4))
            enterText();
        break;
    }
}

void XmlInput::openMarkup(char c)
{
    if (c == '?') {
        m_place = Place::Instruction;
    } else if (c == '!') {
        m_place = Place::Declaration;
    } else {
        m_place = Place::Tag;
        m_isEndTag = c == '/';
        m_attributes = 0;
    }
}

void XmlInput::stepInTag(char c)
{
    if (c == '"' || c == '\'') {
        m_place = Place::Quoted;
        m_quote = c;
        if (++m_attributes > maximalAttributes) {
            m_damage =
                QStringLiteral("an element with more than %1 attributes").arg(maximalAttributes);
        }
    } else if (c == '>') {
        if (m_isEndTag)
            --m_depth;
        else if (!endsWith("/>", 2) && ++m_depth > maximalDepth)
            m_damage = QStringLiteral("more than %1 elements in each other").arg(maximalDepth);
        enterText();
    }
}

void XmlInput::enterText()
{
    m_place = Place::Text;
    m_length = 0;
}

bool XmlInput::endsWith(const char *ending, int shortest) const
{
    const std::size_t size = std::strlen(ending);
    return m_length >= shortest && std::equal(ending, ending + size, std::end(m_lastBytes) - size);
}
