// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ClassList.h"

#include "private/AtomicFile.h"
#include "private/PrintableText.h"
#include "sessionreview/Words.h"

#include <cprquick/LibraryFolder.h>
#include <manikinsim/Scenario.h>

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 maxBytes = 1 << 20; // a list that nobody could train
constexpr int maxNameLength = 300;
constexpr int maxMinutes = 120;
constexpr int protocols = 6;

// What separates the cells: a spreadsheet copies tabs, and writes what its language has.
QChar separatorOf(const QString &text)
{
    for (const char each : {'\t', ';'}) {
        if (text.contains(QLatin1Char(each)))
            return QLatin1Char(each);
    }
    return QLatin1Char(',');
}

// Rows of cells. A cell in quotes may hold separators, line ends and doubled quotes.
QVector<QStringList> rowsOf(const QString &text)
{
    const QChar separator = separatorOf(text);
    const QChar quote = QLatin1Char('"');
    QVector<QStringList> rows(1);
    QString cell;
    bool isQuoted = false;
    const auto endCell = [&] {
        rows.last().append(cell.simplified());
        cell.clear();
    };
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == quote && isQuoted && i + 1 < text.size() && text.at(i + 1) == quote) {
            cell += quote;
            ++i;
        } else if (c == quote && (isQuoted || cell.trimmed().isEmpty())) {
            isQuoted = !isQuoted;
        } else if (!isQuoted && c == separator) {
            endCell();
        } else if (!isQuoted && (c == QLatin1Char('\n') || c == QLatin1Char('\r'))) {
            endCell();
            rows.append(QStringList());
        } else {
            cell += c;
        }
    }
    endCell();
    return rows;
}

// The column that a head names: name, manikin, protocol; -1 for none of them.
int columnOf(const QString &head)
{
    static const QVector<QStringList> heads{
        {QStringLiteral("name"), QStringLiteral("names"), QStringLiteral("learner"),
         QStringLiteral("student"), QStringLiteral("participant"), QStringLiteral("lernende"),
         QStringLiteral("lernender"), QStringLiteral("teilnehmer"), QStringLiteral("teilnehmerin")},
        {QStringLiteral("manikin"), QStringLiteral("puppe"), QStringLiteral("phantom")},
        {QStringLiteral("protocol"), QStringLiteral("protokoll")}};
    for (int i = 0; i < heads.size(); ++i) {
        if (heads.at(i).contains(head.toLower()))
            return i;
    }
    return -1;
}

// By its number, its name on the command line or in words; -1 for none.
int protocolOf(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber)
        return number >= 0 && number < protocols ? number : -1;
    if (const auto named = manikinsim::Scenario::protocolFromName(text.toLower()))
        return *named;
    for (int protocol = 0; protocol < protocols && !text.isEmpty(); ++protocol) {
        if (sessionreview::protocolText(protocol).compare(text, Qt::CaseInsensitive) == 0)
            return protocol;
    }
    return -1;
}

// What spreadsheets write is UTF-8, with a mark at its begin or without, or of an older kind.
QString decoded(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes);
    return text.contains(QChar::ReplacementCharacter) ? QString::fromLatin1(bytes) : text;
}

} // namespace

ClassList::ClassList(const QString &file, QObject *parent) : QObject(parent), m_file(file)
{
    QFile stored(file);
    if (file.isEmpty() || !stored.open(QIODevice::ReadOnly))
        return;
    const QJsonObject object = QJsonDocument::fromJson(stored.read(maxBytes)).object();
    const QJsonArray entries = object.value(QLatin1String("learners")).toArray();
    for (const auto &value : entries) {
        const QJsonObject entry = value.toObject();
        const QString name = storable(entry.value(QLatin1String("name")).toString());
        const int protocol = entry.value(QLatin1String("protocol")).toInt(-1);
        if (!name.isEmpty() && count() < maxEntries)
            append({name, entry.value(QLatin1String("manikin")).toString(),
                    protocol < protocols ? std::max(protocol, -1) : -1,
                    entry.value(QLatin1String("sessions")).toInt()});
    }
    m_next = m_entries.isEmpty()
        ? -1
        : std::clamp(object.value(QLatin1String("next")).toInt(), 0, count() - 1);
    m_minutes = std::clamp(object.value(QLatin1String("minutes")).toInt(), 0, maxMinutes);
    m_day = object.value(QLatin1String("day")).toString();
}

ClassList::~ClassList() = default;

void ClassList::append(Entry entry)
{
    entry.id = ++m_lastId;
    m_entries.append(entry);
}

int ClassList::numberOf(int id) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [id](const Entry &entry) { return entry.id == id; });
    return found == m_entries.end() ? -1 : static_cast<int>(found - m_entries.begin());
}

void ClassList::store()
{
    Q_EMIT changed();
    if (m_file.isEmpty())
        return;
    QJsonArray entries;
    for (const Entry &entry : qAsConst(m_entries))
        entries.append(QJsonObject{{QStringLiteral("name"), entry.name},
                                   {QStringLiteral("manikin"), entry.manikin},
                                   {QStringLiteral("protocol"), entry.protocol},
                                   {QStringLiteral("sessions"), entry.sessions}});
    const QJsonObject object{{QStringLiteral("learners"), entries},
                             {QStringLiteral("next"), m_next},
                             {QStringLiteral("minutes"), m_minutes},
                             {QStringLiteral("day"), m_day}};
    const QString folder = QFileInfo(m_file).path();
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    AtomicFile file(m_file);
    const QByteArray json = QJsonDocument(object).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.finish())
        Q_EMIT failed(file.errorString());
    else
        QFile::setPermissions(m_file, QFile::ReadOwner | QFile::WriteOwner);
}

QVariantList ClassList::entries() const
{
    QVariantList entries;
    for (const Entry &entry : m_entries)
        entries.append(QVariantMap{
            {QStringLiteral("name"), entry.name},
            {QStringLiteral("manikin"), entry.manikin},
            {QStringLiteral("protocol"), entry.protocol},
            {QStringLiteral("protocolText"),
             entry.protocol < 0 ? QString() : sessionreview::protocolText(entry.protocol)},
            {QStringLiteral("sessions"), entry.sessions}});
    return entries;
}

QStringList ClassList::names() const
{
    QStringList names;
    for (const Entry &entry : m_entries)
        names.append(entry.name);
    return names;
}

void ClassList::setNext(int number)
{
    if (number < 0 || number >= count() || number == m_next)
        return;
    m_next = number;
    store();
}

QString ClassList::nextText() const
{
    if (m_next < 0)
        return QString();
    const Entry &entry = m_entries.at(m_next);
    QStringList texts{entry.name, entry.manikin};
    if (entry.protocol >= 0)
        texts.append(sessionreview::protocolText(entry.protocol));
    if (m_minutes > 0)
        texts.append(tr("%n minute(s)", "", m_minutes));
    texts.removeAll(QString());
    return PrintableText::shown(texts.join(QStringLiteral(" \u00b7 ")));
}

void ClassList::setMinutes(int minutes)
{
    if (minutes == m_minutes)
        return;
    m_minutes = std::clamp(minutes, 0, maxMinutes);
    store();
}

QVector<ClassList::Entry> ClassList::parse(const QString &text)
{
    QString all = text;
    if (all.startsWith(QChar::ByteOrderMark))
        all.remove(0, 1);
    const QVector<QStringList> rows = rowsOf(all);
    QVector<int> columns{0, 1, 2}; // of each column: what it holds
    QVector<Entry> entries;
    bool isFirst = true;
    for (const QStringList &row : rows) {
        const bool isEmpty =
            std::all_of(row.begin(), row.end(), [](const QString &cell) { return cell.isEmpty(); });
        if (isEmpty)
            continue;
        QVector<int> heads;
        for (const QString &cell : row)
            heads.append(columnOf(cell));
        if (std::exchange(isFirst, false) && heads.contains(0)) {
            columns = heads;
            continue;
        }
        Entry entry;
        for (int i = 0; i < row.size() && i < columns.size(); ++i) {
            if (columns.at(i) == 0)
                entry.name = storable(row.at(i));
            else if (columns.at(i) == 1)
                entry.manikin = row.at(i).left(maxNameLength);
            else if (columns.at(i) == 2)
                entry.protocol = protocolOf(row.at(i));
        }
        if (!entry.name.isEmpty() && entries.size() < maxEntries)
            entries.append(entry);
    }
    return entries;
}

int ClassList::add(const QString &text)
{
    const QVector<Entry> added = parse(text).mid(0, maxEntries - count());
    if (added.isEmpty())
        return 0;
    if (m_entries.isEmpty())
        m_day = QDate::currentDate().toString(Qt::ISODate);
    for (const Entry &entry : added)
        append(entry);
    m_next = std::max(m_next, 0);
    store();
    return added.size();
}

int ClassList::addFile(const QUrl &url)
{
    QFile file(url.toLocalFile());
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray bytes = file.read(maxBytes);
    return file.error() == QFile::NoError ? add(decoded(bytes)) : -1;
}

void ClassList::correct(int number, const QString &name, const QString &manikin, int protocol)
{
    if (number < 0 || number >= count() || storable(name).isEmpty())
        return;
    Entry &entry = m_entries[number];
    entry.name = storable(name);
    entry.manikin = manikin.simplified().left(maxNameLength);
    entry.protocol = protocol;
    store();
}

void ClassList::remove(int number)
{
    if (number < 0 || number >= count())
        return;
    m_entries.remove(number);
    if (m_next > number || m_next == count())
        --m_next;
    if (m_next < 0 && !m_entries.isEmpty())
        m_next = 0;
    store();
}

void ClassList::move(int number, int step)
{
    const int to = number + step;
    if (number < 0 || number >= count() || to < 0 || to >= count())
        return;
    m_entries.move(number, to);
    if (m_next == number)
        m_next = to;
    else if (m_next >= std::min(number, to) && m_next <= std::max(number, to))
        m_next += number < to ? -1 : 1;
    store();
}

void ClassList::clear()
{
    m_entries.clear();
    m_next = -1;
    m_day.clear();
    store();
}

void ClassList::restart()
{
    for (Entry &entry : m_entries)
        entry.sessions = 0;
    m_next = m_entries.isEmpty() ? -1 : 0;
    m_day = m_entries.isEmpty() ? QString() : QDate::currentDate().toString(Qt::ISODate);
    store();
}

void ClassList::endSession(int id)
{
    const int number = numberOf(id);
    if (number < 0)
        return;
    ++m_entries[number].sessions;
    m_next = (number + 1) % count();
    store();
}

void ClassList::takeSessionBack(int id)
{
    const int number = numberOf(id);
    if (number < 0 || m_entries.at(number).sessions == 0) // the class has begun anew
        return;
    --m_entries[number].sessions;
    store();
}

void ClassList::rename(const QString &name, const QString &newName)
{
    bool isFound = false;
    for (Entry &entry : m_entries) {
        if (entry.name != name)
            continue;
        entry.name = storable(newName);
        isFound = true;
    }
    if (isFound)
        store();
}

QString ClassList::callNext(const QString &manikin, const QStringList &busy)
{
    int called = -1;
    int calledRank = 3; // worse than every one
    for (int step = 0; step < count(); ++step) {
        const int number = (m_next + step) % count();
        const Entry &entry = m_entries.at(number);
        const int rank = entry.manikin == manikin ? 0 : entry.manikin.isEmpty() ? 1 : 2;
        if (rank < calledRank && !busy.contains(entry.name)) {
            called = number;
            calledRank = rank;
        }
    }
    if (called < 0)
        return QString();
    const QString name = m_entries.at(called).name;
    int next = m_next; // who was passed over is not forgotten
    for (int step = 0; step < count() && (next == called || busy.contains(m_entries.at(next).name));
         ++step)
        next = (next + 1) % count();
    setNext(next);
    return name;
}

int ClassList::protocolFor(const QString &name) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&name](const Entry &entry) { return entry.name == name; });
    return found == m_entries.end() ? -1 : found->protocol;
}

void ClassList::countSession(const QString &name)
{
    for (Entry &entry : m_entries) {
        if (entry.name != name)
            continue;
        ++entry.sessions;
        store();
        return;
    }
}

// What is stored in a session comes back as it is in the list.
QString ClassList::storable(const QString &name)
{
    return cprquick::LibraryFolder::storedName(name).simplified().left(maxNameLength);
}
