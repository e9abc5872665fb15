// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef XMLINPUT_H
#define XMLINPUT_H

#include <QIODevice>
#include <QString>

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

#endif
