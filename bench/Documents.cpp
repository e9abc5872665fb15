// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Documents.h"

#include <CPRFileHandlerZip.h>

#include <QBuffer>
#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace bench {

QByteArray memberOf(const QString &file, const QString &name)
{
    CPRFileHandlerZip archive;
    archive.open(file, CPRFileHandlerZip::Read);
    QIODevice *device = archive.openFileForReading(name);
    if (!device)
        qFatal("%s has no member %s", qPrintable(file), qPrintable(name));
    const QByteArray bytes = device->readAll();
    archive.releaseFile(device);
    return bytes;
}

int walkTokens(const QByteArray &document)
{
    QBuffer device;
    device.setData(document);
    device.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&device);
    int tokens = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        ++tokens;
    }
    return tokens;
}

ReadyDocument::ReadyDocument(const QByteArray &document)
{
    // Equal texts are one text, as they are in a program.
    QHash<QString, QString> known;
    const auto ready = [&known](const auto &text) {
        const QString own = text.toString();
        return *known.insert(own, known.value(own, own));
    };
    QXmlStreamReader reader(document);
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartDocument:
            m_entries.push_back({Call::StartDocument, {}, {}});
            break;
        case QXmlStreamReader::StartElement: {
            m_entries.push_back({Call::StartElement, ready(reader.qualifiedName()), {}});
            const auto namespaces = reader.namespaceDeclarations();
            for (const QXmlStreamNamespaceDeclaration &item : namespaces) {
                m_entries.push_back(
                    {Call::Namespace, ready(item.namespaceUri()), ready(item.prefix())});
            }
            const QXmlStreamAttributes attributes = reader.attributes();
            for (const QXmlStreamAttribute &item : attributes) {
                m_entries.push_back(
                    {Call::Attribute, ready(item.qualifiedName()), ready(item.value())});
            }
            break;
        }
        case QXmlStreamReader::EndElement:
            m_entries.push_back({Call::EndElement, {}, {}});
            break;
        case QXmlStreamReader::EndDocument:
            // Only this call ends the last line.
            if (document.endsWith('\n'))
                m_entries.push_back({Call::EndDocument, {}, {}});
            break;
        default:
            break;
        }
    }

    if (write() != document)
        qFatal("A document cannot be written again as it was");
}

QByteArray ReadyDocument::write() const
{
    QString text;
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(true);
    for (const Entry &entry : m_entries) {
        switch (entry.call) {
        case Call::StartDocument:
            writer.writeStartDocument();
            break;
        case Call::StartElement:
            writer.writeStartElement(entry.name);
            break;
        case Call::Namespace:
            writer.writeNamespace(entry.name, entry.value);
            break;
        case Call::Attribute:
            writer.writeAttribute(entry.name, entry.value);
            break;
        case Call::EndElement:
            writer.writeEndElement();
            break;
        case Call::EndDocument:
            writer.writeEndDocument();
            break;
        }
    }
    return text.toUtf8();
}

} // namespace bench
