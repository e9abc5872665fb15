// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/SearchText.h"

#include "sessionreview/Words.h"

#include <QRegularExpression>

#include <algorithm>

namespace sessionlibrary {

namespace {

constexpr int protocols = 6;
const QString searchedText =
    QStringLiteral("learners || char(10) || file || char(10) || manikin || char(10) || notes");

QString quoted(QString text)
{
    return QLatin1Char('"') + text.replace(QLatin1Char('"'), QLatin1String("\"\""))
        + QLatin1Char('"');
}

// What the index's tokenizer makes words of; the rest only separates them.
bool hasWords(const QString &text)
{
    const auto characters = text.toUcs4();
    return std::any_of(characters.begin(), characters.end(), [](uint character) {
        return QChar::isLetterOrNumber(character)
            || QChar::category(character) == QChar::Other_PrivateUse;
    });
}

// The protocols that have a word in their name, as people read it, that begins with this.
QStringList protocolsWith(const QString &word)
{
    QStringList numbers;
    const QRegularExpression begin(QStringLiteral("(?<!\\w)") + QRegularExpression::escape(word),
                                   QRegularExpression::CaseInsensitiveOption
                                       | QRegularExpression::UseUnicodePropertiesOption);
    for (int protocol = 0; protocol < protocols; ++protocol) {
        if (sessionreview::protocolText(protocol).contains(begin))
            numbers.append(QString::number(protocol));
    }
    return numbers;
}

} // namespace

void Conditions::add(const QString &condition, const QVariantList &bound)
{
    sql.append(condition);
    values.append(bound);
}

QString Conditions::where() const
{
    return sql.isEmpty() ? QString() : QStringLiteral(" WHERE ") + sql.join(QLatin1String(" AND "));
}

// The + lets SQLite walk through the sessions in their order and stop at the end of a page, instead
// of sorting all that are found.
void addSearch(Conditions &conditions, const QString &text)
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    const QStringList words = text.split(blanks, Qt::SkipEmptyParts);
    for (const QString &word : words) {
        if (!hasWords(word)) {
            conditions.add(QStringLiteral("+id IN (SELECT rowid FROM search WHERE instr(%1, ?))")
                               .arg(searchedText),
                           {word});
            continue;
        }
        QString condition =
            QStringLiteral("+id IN (SELECT rowid FROM search WHERE search MATCH ?)");
        if (const QStringList numbers = protocolsWith(word); !numbers.isEmpty())
            condition = QStringLiteral("(%1 OR (protocol IN (%2) AND state < 2))")
                            .arg(condition, numbers.join(QLatin1Char(',')));
        conditions.add(condition, {quoted(word) + QLatin1Char('*')});
    }
}

void addMention(Conditions &conditions, const QString &name)
{
    if (hasWords(name))
        conditions.add(QStringLiteral("+id IN (SELECT rowid FROM search WHERE search MATCH ?)"),
                       {quoted(name)});
    else
        conditions.add(QStringLiteral("+id IN (SELECT rowid FROM search WHERE instr(%1, ?))")
                           .arg(searchedText),
                       {name});
}

} // namespace sessionlibrary
