// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef XMLREADING_H
#define XMLREADING_H

#include <QXmlStreamReader>

/// As QXmlStreamReader::readNextStartElement(), but false at the end of the document, too, behind
/// which that one reads on into an error.
inline bool readNextChild(QXmlStreamReader &reader)
{
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement)
            return true;
        if (token == QXmlStreamReader::EndElement)
            return false;
    }
    return false;
}

#endif
