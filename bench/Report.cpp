// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Report.h"

#include <QDate>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QSysInfo>
#include <QThread>

namespace bench {

namespace {

QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}

QString line(const QStringList &cells)
{
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

QString verdict(const Figure &figure)
{
    if (!figure.goal)
        return QStringLiteral("stated");
    return figure.isMissed() ? QStringLiteral("MISS") : QStringLiteral("pass");
}

bool hasYardstick(const Figure &figure)
{
    return figure.reference > 0;
}

QString time(double ns)
{
    return amount(ns, Unit::Nanoseconds);
}

QString processor()
{
    QFile file(QStringLiteral("/proc/cpuinfo"));
    if (file.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = file.readAll().split('\n');
        for (const QByteArray &item : lines) {
            if (item.startsWith("model name"))
                return QString::fromLatin1(item.mid(item.indexOf(':') + 1).trimmed());
        }
    }
    return QSysInfo::currentCpuArchitecture();
}

QString machine()
{
    return QStringLiteral("%1, %2 cores, %3, Qt %4, %5")
        .arg(processor(), QString::number(QThread::idealThreadCount()),
             QSysInfo::prettyProductName(), utf8(qVersion()),
             QDate::currentDate().toString(Qt::ISODate));
}

// "writes 2.3 times as fast"
QString comparison(const char *what, double ours, double theirs)
{
    return theirs < ours
        ? QStringLiteral("%1 %2 times as fast").arg(utf8(what)).arg(ours / theirs, 0, 'f', 1)
        : QStringLiteral("takes %2 times as long when it %1")
              .arg(utf8(what))
              .arg(theirs / ours, 0, 'f', 1);
}

QString peerSentences(const std::vector<PeerFigures> &peers)
{
    QString text;
    const PeerFigures &ours = peers.front();
    for (auto peer = peers.begin() + 1; peer != peers.end(); ++peer) {
        text += QStringLiteral("- %1 %2, %3, and its file has %4 % of the archive's size.\n")
                    .arg(peer->name, comparison("writes", ours.write, peer->write),
                         comparison("reads", ours.read, peer->read),
                         QString::number(qRound(100 * peer->size / ours.size)));
    }
    return text;
}

QJsonObject figureJson(const Figure &figure)
{
    static const char *const units[] = {"ns", "bytes", "instructions"};
    QJsonObject object{{QStringLiteral("label"), figure.label},
                       {QStringLiteral("library"), figure.subject},
                       {QStringLiteral("unit"), utf8(units[static_cast<int>(figure.unit)])},
                       {QStringLiteral("verdict"), verdict(figure).toLower()}};
    if (hasYardstick(figure)) {
        object.insert(QStringLiteral("yardstick"), figure.reference);
        object.insert(QStringLiteral("ratio"), figure.ratio);
    }
    if (figure.goal)
        object.insert(QStringLiteral("goal"), *figure.goal);
    return object;
}

template <typename Items, typename Convert> QJsonArray arrayOf(const Items &items, Convert convert)
{
    QJsonArray array;
    for (const auto &item : items)
        array.append(convert(item));
    return array;
}

QJsonObject resultJson(const Result &result)
{
    return {{QStringLiteral("number"), result.row.number},
            {QStringLiteral("what"), utf8(result.row.what)},
            {QStringLiteral("against"), utf8(result.row.yardstick)},
            {QStringLiteral("figures"), arrayOf(result.figures, figureJson)}};
}

QJsonObject peerJson(const PeerFigures &peer)
{
    return {{QStringLiteral("name"), peer.name},
            {QStringLiteral("writeNs"), peer.write},
            {QStringLiteral("readNs"), peer.read},
            {QStringLiteral("bytes"), peer.size}};
}

QJsonObject scaleJson(const ScalePoint &point)
{
    return {
        {QStringLiteral("hours"), point.hours},         {QStringLiteral("events"), point.events},
        {QStringLiteral("samples"), point.samples},     {QStringLiteral("liveNs"), point.live},
        {QStringLiteral("messagesNs"), point.messages}, {QStringLiteral("wavesNs"), point.waves},
        {QStringLiteral("saveNs"), point.save},         {QStringLiteral("loadNs"), point.load},
        {QStringLiteral("memory"), point.memory},       {QStringLiteral("file"), point.file}};
}

} // namespace

QString tableHead()
{
    return utf8("| # | what (an hour unless it says otherwise) | yardstick in the same run | goal "
                "| figure | library / yardstick | |\n"
                "|---|---|---|---|---|---|---|\n");
}

QString tableRows(const Result &result)
{
    QString text;
    for (const Figure &figure : result.figures) {
        QString what = utf8(result.row.what);
        if (!figure.label.isEmpty())
            what += QStringLiteral(": ") + figure.label;
        const QString subject =
            figure.subject > 0 ? amount(figure.subject, figure.unit) : QString();
        const bool isRatio = hasYardstick(figure);
        text += line(
            {QString::number(result.row.number), what, utf8(result.row.yardstick),
             figure.goal ? QStringLiteral("≤ %1×").arg(*figure.goal) : QString(),
             isRatio ? QString::number(figure.ratio, 'f', figure.ratio < 0.1 ? 3 : 2)
                     + QStringLiteral("×")
                     : subject,
             isRatio ? QStringLiteral("%1 / %2").arg(subject, amount(figure.reference, figure.unit))
                     : QString(),
             verdict(figure)});
    }
    return text;
}

QString peerTable(const std::vector<PeerFigures> &peers)
{
    QString text = utf8("| an hour as | write | read | size |\n|---|---|---|---|\n");
    for (const PeerFigures &peer : peers)
        text +=
            line({peer.name, time(peer.write), time(peer.read), amount(peer.size, Unit::Bytes)});
    return text;
}

QByteArray toJson(const Report &report)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("machine"), machine()},
                                     {QStringLiteral("rows"), arrayOf(report.results, resultJson)},
                                     {QStringLiteral("peers"), arrayOf(report.peers, peerJson)},
                                     {QStringLiteral("scale"), arrayOf(report.scale, scaleJson)}})
        .toJson();
}

QByteArray toPage(const Report &report)
{
    QString text = utf8(
        "# Performance\n\n"
        "Each figure is a ratio of two things that were measured in one run: pairs in turn, CPU\n"
        "time of the thread, median of the pairs. The yardsticks do no more than they have to.\n"
        "Memory is counted at the allocator. The program in `bench/` measures and writes this\n"
        "page.\n\n"
        "Measured on: ");
    text += machine() + QStringLiteral("\n\n") + tableHead();
    for (const Result &result : report.results)
        text += tableRows(result);
    if (!report.plot.isEmpty()) {
        text += QStringLiteral("\n## From half a minute to a day\n\n"
                               "![What a session costs over its length](%1)\n\n"
                               "A session costs something before its first event: the manikin's\n"
                               "introduction, the guidelines and the statistics. Short sessions "
                               "show it.\n")
                    .arg(report.plot);
    }
    if (!report.peers.empty()) {
        text += utf8("\n## What a team would take instead\n\n"
                     "The same session in other forms, each written for speed. The peers write\n"
                     "from and read into plain structures, while the library makes an observable\n"
                     "object of every event, numbers it and announces it.\n\n");
        text += peerTable(report.peers) + QLatin1Char('\n') + peerSentences(report.peers);
    }
    return text.toUtf8();
}

} // namespace bench
