// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef XMLINPUT_H
#define XMLINPUT_H

#include "private/DeviceReading.h"
#include "private/Limits.h"

#include <QIODevice>
#include <QString>

#include <algorithm>
#include <cstring>

/// A document on its way from its member to the XML reader, which knows no limits of its own: the
/// time that it takes for an element grows with the square of its attributes, and a text or a
/// comment of any length is held in memory.
///
/// Where the document oversteps a limit or its device fails it ends, as if it were cut off there.
class XmlInput final : public QIODevice {
public:
    /// \a member is open for reading and not owned.
    explicit XmlInput(QIODevice *member);

    /// Why the document ended early; empty when it did not.
    QString damage() const { return m_damage; }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    enum class Place { Text, Opening, Tag, Quoted, Declaration, Comment, CData, Instruction };

    const char *scan(const char *from, const char *end);
    const char *passPlainTags(const char *from, const char *end);
    bool passPlainTag(const char *tag, const char *next);
    void step(char c);
    void openMarkup(char c);
    void stepInTag(char c);
    void closeTag(bool isEndTag, bool isEmptyElement);
    void checkLength();
    void enterText();
    bool endsWith(const char *ending, int shortest) const;
    static const char *find(const char *from, const char *end, char c)
    {
        return static_cast<const char *>(
            std::memchr(from, c, static_cast<std::size_t>(end - from)));
    }

    // A shorter tag has no room for more attributes than there may be.
    static constexpr qint64 maxUncountedBytes = Limits::maxAttributes * qint64(sizeof(" a=''") - 1);

    QIODevice *m_member; // not owned
    QString m_damage;
    qint64 m_total = 0; // bytes so far
    qint64 m_length = 0; // of the text or the markup so far
    int m_attributes = 0; // of the element so far
    int m_depth = 0; // elements that are open
    int m_elements = 0;
    Place m_place = Place::Text;
    char m_lastBytes[3] = {};
    char m_quote = 0;
    bool m_isEndTag = false;
};

inline XmlInput::XmlInput(QIODevice *member) : m_member(member)
{
    QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

inline qint64 XmlInput::readData(char *data, qint64 maxSize)
{
    if (!m_damage.isEmpty())
        return -1;
    bool hasFailed = false;
    const qint64 size = readFully(*m_member, data, maxSize, hasFailed);
    if (hasFailed)
        m_damage = m_member->errorString();
    if (size == 0)
        return hasFailed ? -1 : 0;
    m_total += size;
    if (m_total > Limits::maxMemberBytes)
        m_damage = QStringLiteral("more than %1 bytes").arg(Limits::maxMemberBytes);
    // No text in UTF-8 has one; in other encodings the markup would not be recognised below.
    if (std::memchr(data, 0, static_cast<std::size_t>(size)))
        m_damage = QStringLiteral("it is not encoded in UTF-8");
    return m_damage.isEmpty() ? scan(data, data + size) - data : -1;
}

inline qint64 XmlInput::writeData(const char * /*data*/, qint64 /*size*/)
{
    return -1;
}

// Returns where the document oversteps a limit, else the end.
inline const char *XmlInput::scan(const char *from, const char *end)
{
    const char *at = from;
    while (at < end && m_damage.isEmpty()) {
        if (m_place == Place::Text)
            at = passPlainTags(at, end);
        if (at < end && m_damage.isEmpty())
            step(*at++);
        checkLength();
    }
    return at;
}

// Passes over the text and the tags behind it of which nothing but their beginning and end has to
// be looked at, which are nearly all. Returns where the first other one begins.
inline const char *XmlInput::passPlainTags(const char *from, const char *end)
{
    const char *at = find(from, end, '<');
    m_length += (at ? at : end) - from;
    checkLength();
    const char *next = at;
    while (next && m_damage.isEmpty()) {
        at = next;
        m_length = 0;
        next = find(at + 1, end, '<'); // no attribute holds one
        if (next && !passPlainTag(at, next))
            return at;
    }
    return at ? at : end;
}

// False for what has to be looked at byte by byte.
inline bool XmlInput::passPlainTag(const char *tag, const char *next)
{
    const char *const close = find(tag, next, '>');
    if (next - tag >= maxUncountedBytes || tag[1] == '!' || tag[1] == '?' || !close
        || find(close + 1, next, '>')) {
        return false;
    }
    closeTag(tag[1] == '/', close[-1] == '/');
    return true;
}

inline void XmlInput::step(char c)
{
    ++m_length;
    std::copy(m_lastBytes + 1, std::end(m_lastBytes), m_lastBytes);
    m_lastBytes[2] = c;
    switch (m_place) {
    case Place::Text: // passPlainTags() stops at a "<" only
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
        if (c == m_quote)
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

inline void XmlInput::openMarkup(char c)
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

inline void XmlInput::stepInTag(char c)
{
    if (c == '"' || c == '\'') {
        m_place = Place::Quoted;
        m_quote = c;
        if (++m_attributes > Limits::maxAttributes) {
            m_damage = QStringLiteral("an element with more than %1 attributes")
                           .arg(Limits::maxAttributes);
        }
    } else if (c == '>') {
        closeTag(m_isEndTag, endsWith("/>", 2));
        enterText();
    }
}

inline void XmlInput::closeTag(bool isEndTag, bool isEmptyElement)
{
    if (!isEndTag && ++m_elements > Limits::maxElements)
        m_damage = QStringLiteral("more than %1 elements").arg(Limits::maxElements);
    if (isEndTag)
        --m_depth;
    else if (!isEmptyElement && ++m_depth > Limits::maxDepth)
        m_damage = QStringLiteral("more than %1 elements in each other").arg(Limits::maxDepth);
}

inline void XmlInput::checkLength()
{
    if (m_length > Limits::maxTextBytes)
        m_damage = QStringLiteral("a text or tag of more than %1 bytes").arg(Limits::maxTextBytes);
}

inline void XmlInput::enterText()
{
    m_place = Place::Text;
    m_length = 0;
}

inline bool XmlInput::endsWith(const char *ending, int shortest) const
{
    const std::size_t size = std::strlen(ending);
    return m_length >= shortest && std::equal(ending, ending + size, std::end(m_lastBytes) - size);
}

#endif
