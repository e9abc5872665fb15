// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_DOCUMENTS_H
#define BENCH_DOCUMENTS_H

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <vector>

class QXmlStreamWriter;

/// What an archive costs at least: its bytes through zlib, its documents through Qt's XML reader
/// and writer, and nothing else.
namespace bench {

struct Member {
    QString name; ///< without the folder
    QByteArray bytes;
    QByteArray packed; ///< the bytes, deflated as archives hold them

    bool isDocument() const { return name.endsWith(QLatin1String(".xml")); }
};

/// The members of the archive \a file, in its order.
std::vector<Member> membersOf(const QString &file);
const Member &memberNamed(const std::vector<Member> &members, const char *name);

/// Deflates \a bytes as archives do and returns their size then; the result passes by in pieces, as
/// it would on the way into a file, and is appended to \a packed where there is one.
qint64 deflate(const QByteArray &bytes, QByteArray *packed = nullptr);
/// Inflates what deflate() gave. \a bytes already has the right size.
void inflate(const QByteArray &packed, QByteArray &bytes);

/// Asks Qt's reader for each token of a document and returns their number.
int walkTokens(const QByteArray &document);

/// Takes everything and keeps nothing: what is written to it costs the writer alone.
class Sink : public QIODevice {
public:
    Sink() { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

protected:
    qint64 readData(char * /*to*/, qint64 /*size*/) override { return -1; }
    qint64 writeData(const char * /*from*/, qint64 size) override { return size; }
};

/// A document as a list of calls of the writer, with all texts made.
class ReadyDocument {
public:
    explicit ReadyDocument(const QByteArray &document);
    void write(QXmlStreamWriter &writer) const;
    /// Writes the document and deflates it on the way; returns its size then.
    qint64 writeDeflated() const;

private:
    enum class Call { StartDocument, StartElement, Namespace, Attribute, EndElement, EndDocument };
    struct Entry {
        Call call;
        QString name;
        QString value;
    };
    std::vector<Entry> m_entries;
};

} // namespace bench

#endif
