// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Documents.h"

#include <QBuffer>
#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <quazip.h>
#include <quazipfile.h>

#include <algorithm>
#include <array>
#include <zlib.h>

namespace bench {

namespace {

Bytef *zlibBytes(const char *bytes)
{
    // zlib does not change what it reads.
    return reinterpret_cast<Bytef *>(const_cast<char *>(bytes));
}

// Deflates as archives do what the writer gives, most of it single words. The result passes by in
// pieces, as it would on the way into a file.
class DeflatingSink final : public Sink {
public:
    explicit DeflatingSink(QByteArray *packed = nullptr) : m_packed(packed)
    {
        deflateInit2(&m_stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL - 1,
                     Z_DEFAULT_STRATEGY);
    }
    ~DeflatingSink() override { deflateEnd(&m_stream); }

    /// The size of all, deflated.
    qint64 finish()
    {
        take(m_gathered.data(), m_size, Z_FINISH);
        return static_cast<qint64>(m_stream.total_out);
    }

protected:
    qint64 writeData(const char *from, qint64 size) override
    {
        if (m_size + size > static_cast<qint64>(m_gathered.size())) {
            take(m_gathered.data(), m_size, Z_NO_FLUSH);
            m_size = 0;
        }
        if (size > static_cast<qint64>(m_gathered.size())) {
            take(from, size, Z_NO_FLUSH);
        } else {
            std::copy_n(from, size, m_gathered.data() + m_size);
            m_size += size;
        }
        return size;
    }

private:
    void take(const char *bytes, qint64 size, int flush)
    {
        m_stream.next_in = zlibBytes(bytes);
        m_stream.avail_in = static_cast<uInt>(size);
        do {
            m_stream.next_out = reinterpret_cast<Bytef *>(m_piece.data());
            m_stream.avail_out = static_cast<uInt>(m_piece.size());
            ::deflate(&m_stream, flush);
            if (m_packed)
                m_packed->append(m_piece.data(),
                                 static_cast<int>(m_piece.size() - m_stream.avail_out));
        } while (m_stream.avail_out == 0);
    }

    z_stream m_stream{};
    QByteArray *m_packed;
    std::array<char, 65536> m_gathered;
    std::array<char, 65536> m_piece;
    qint64 m_size = 0;
};

} // namespace

qint64 deflate(const QByteArray &bytes, QByteArray *packed)
{
    DeflatingSink sink(packed);
    sink.write(bytes);
    return sink.finish();
}

void inflate(const QByteArray &packed, QByteArray &bytes)
{
    z_stream stream{};
    inflateInit2(&stream, -MAX_WBITS);
    stream.next_in = zlibBytes(packed.constData());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef *>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    if (::inflate(&stream, Z_FINISH) != Z_STREAM_END)
        qFatal("A member does not inflate to the size that it had");
    inflateEnd(&stream);
}

std::vector<Member> membersOf(const QString &file)
{
    QuaZip archive(file);
    std::vector<Member> members;
    if (!archive.open(QuaZip::mdUnzip))
        qFatal("%s cannot be opened", qPrintable(file));
    for (bool more = archive.goToFirstFile(); more; more = archive.goToNextFile()) {
        QuaZipFile device(&archive);
        device.open(QIODevice::ReadOnly);
        Member member;
        member.name = device.getActualFileName().section(QLatin1Char('/'), -1);
        member.bytes = device.readAll();
        deflate(member.bytes, &member.packed);
        members.push_back(member);
    }
    return members;
}

const Member &memberNamed(const std::vector<Member> &members, const char *name)
{
    return *std::find_if(members.begin(), members.end(), [name](const Member &member) {
        return member.name == QLatin1String(name);
    });
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

    QString again;
    QXmlStreamWriter writer(&again);
    writer.setAutoFormatting(true);
    write(writer);
    if (again.toUtf8() != document)
        qFatal("A document cannot be written again as it was");
}

void ReadyDocument::write(QXmlStreamWriter &writer) const
{
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
}

qint64 ReadyDocument::writeDeflated() const
{
    DeflatingSink sink;
    QXmlStreamWriter writer(&sink);
    writer.setAutoFormatting(true);
    write(writer);
    return sink.finish();
}

} // namespace bench
