// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_DOCUMENTS_H
#define BENCH_DOCUMENTS_H

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// What an archive costs at least: its bytes through zlib, its documents through Qt's XML reader
/// and writer, and nothing else.
namespace bench {

/// The bytes of a member of the archive \a file.
QByteArray memberOf(const QString &file, const QString &name);
// The members of an archive.
const QString eventsDocument = QStringLiteral("CPREvents.xml");
const QStringList documents{eventsDocument, QStringLiteral("CPRWaves.xml"),
                            QStringLiteral("CPRGuidelines.xml")};
const QStringList waves{QStringLiteral("COMP.WV"), QStringLiteral("VENT.WV")};

/// Asks Qt's reader for each token of a document and returns their number.
int walkTokens(const QByteArray &document);

/// A document as a list of calls of Qt's writer, with all texts made.
class ReadyDocument {
public:
    explicit ReadyDocument(const QByteArray &document);
    QByteArray write() const;

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
