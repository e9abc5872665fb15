// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ArchiveCheck.h"

#include "ArchiveMember.h"
#include "EventListCheck.h"
#include "GuidelinesCheck.h"
#include "WavesCheck.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QtEndian>

namespace {

using namespace ArchiveCheck;

constexpr int maxEntries = 1000; // of the archive's directory

class SessionCheck {
public:
    SessionCheck(FindingList &list, QuaZip &zip, std::function<void(qint64, qint64)> advance)
        : m_list(list), m_zip(zip), m_advance(std::move(advance))
    {
    }

    void run()
    {
        listMembers();
        read(Waves, [this](MemberReader &reader, MemberReport &report) {
            XmlMember xml(reader, report);
            WavesCheck check(xml);
            check.run();
            m_descriptions = check.descriptions;
        });
        checkWave(Compressions);
        checkWave(Ventilations);
        checkWavesTogether();
        read(Events, [this](MemberReader &reader, MemberReport &report) {
            XmlMember xml(reader, report);
            EventListCheck check(xml, report, coveredMs(Compressions));
            check.run();
            checkTotalTime(report, check.totalTime());
        });
        read(Guidelines, [](MemberReader &reader, MemberReport &report) {
            XmlMember xml(reader, report);
            GuidelinesCheck(xml).run();
        });
    }

private:
    // Finds the place of each member in the archive's directory.
    void listMembers()
    {
        MemberReport archive(m_list, QString());
        std::array<int, members.size()> counts{};
        int entry = 0;
        for (bool more = m_zip.goToFirstFile(); more; more = m_zip.goToNextFile(), ++entry) {
            if (entry == maxEntries) {
                archive.error(QStringLiteral("at most %1 members").arg(maxEntries),
                              QStringLiteral("more; the rest is not looked at"));
                break;
            }
            QuaZipFileInfo64 info;
            if (!m_zip.getCurrentFileInfo(&info))
                break;
            const auto *row = std::find_if(members.begin(), members.end(), [&](const MemberRow &r) {
                return info.name == QLatin1String(r.name);
            });
            if (row != members.end()) {
                if (counts[row->index]++ == 0) {
                    m_entries[row->index] = entry;
                    m_total += static_cast<qint64>(
                        qMin(info.uncompressedSize, static_cast<quint64>(row->limit)));
                }
            } else if (info.name != QLatin1String("CPR/")) {
                archive.add(Finding::Warning, QStringLiteral("a session's members only"),
                            quoted(info.name));
            }
        }
        if (const int error = m_zip.getZipError()) {
            archive.error(QStringLiteral("a directory of %1 members").arg(m_zip.getEntriesCount()),
                          QStringLiteral("zip error %1 at member %2").arg(error).arg(entry + 1));
        }
        for (const MemberRow &row : members) {
            if (const int count = counts[row.index]; count != 1) {
                MemberReport(m_list, memberName(row.index))
                    .error(QStringLiteral("the member once"),
                           count == 0 ? QStringLiteral("none")
                                      : QStringLiteral("%1; the first is checked").arg(count));
            }
        }
    }

    // Calls check(reader, report) for the member, when it is there and can be opened.
    template <typename Check> bool read(MemberIndex index, Check check)
    {
        const int entry = m_entries[index];
        if (entry < 0)
            return false;
        MemberReport report(m_list, memberName(index));
        bool found = m_zip.goToFirstFile();
        for (int i = 0; found && i < entry; ++i)
            found = m_zip.goToNextFile();
        MemberReader reader(m_zip, report, [this](qint64 bytes) {
            m_done += bytes;
            m_advance(m_done, m_total);
        });
        if (!found || !reader.open(members[index].limit))
            return false;
        check(reader, report);
        reader.finish();
        return !reader.isDamaged();
    }

    WaveDescription &description(MemberIndex wave) { return m_descriptions[wave - Compressions]; }
    std::optional<qint64> &samples(MemberIndex wave) { return m_samples[wave - Compressions]; }

    // How much time the samples cover, when that is known.
    std::optional<qint64> coveredMs(MemberIndex wave)
    {
        const int period = description(wave).samplePeriod;
        if (!samples(wave) || period == 0)
            return std::nullopt;
        return *samples(wave) * period;
    }

    void checkWave(MemberIndex wave)
    {
        const bool isWhole = read(wave, [this, wave](MemberReader &reader, MemberReport &report) {
            reader.finish();
            const qint64 bytes = reader.position();
            samples(wave) = bytes / bytesPerSample;
            if (bytes % bytesPerSample != 0 && !reader.isDamaged()) {
                report.errorAtByte(bytes - 1,
                                   QStringLiteral("two bytes of sample %1").arg(*samples(wave)),
                                   QStringLiteral("one"));
            }
        });
        if (!isWhole)
            samples(wave).reset(); // what cannot be read has been reported
        if (!samples(wave))
            return;
        MemberReport report(m_list, memberName(wave));
        if (const std::optional<int> length = description(wave).length;
            length && *length != *samples(wave)) {
            report.error(QStringLiteral("%1 samples, as described").arg(*length),
                         QString::number(*samples(wave)));
        }
        if (const std::optional<qint64> covered = coveredMs(wave);
            covered && *covered > maxSessionMs) {
            report.error(QStringLiteral("at most 24 hours"),
                         QStringLiteral("%1 s").arg(*covered / msecsPerSecond));
        }
    }

    void checkWavesTogether()
    {
        const std::optional<qint64> compressions = coveredMs(Compressions);
        const std::optional<qint64> ventilations = coveredMs(Ventilations);
        // A manikin without one of the two sends nothing of it.
        if (!compressions || !ventilations || *compressions == 0 || *ventilations == 0)
            return;
        if (qAbs(*compressions - *ventilations) > maxWaveDifferenceMs) {
            MemberReport(m_list, memberName(Ventilations))
                .add(Finding::Warning,
                     QStringLiteral("about as long as the compressions, %1 ms").arg(*compressions),
                     QStringLiteral("%1 ms").arg(*ventilations));
        }
    }

    void checkTotalTime(MemberReport &report, int totalSecs)
    {
        const std::optional<qint64> covered = coveredMs(Compressions);
        // Without statistics of the manikin no total time is stored.
        if (!covered || totalSecs == 0)
            return;
        const qint64 totalMs = qint64(totalSecs) * msecsPerSecond;
        if (qAbs(totalMs - *covered) > maxTimeDifferenceMs) {
            report.add(Finding::Warning,
                       QStringLiteral("a totalTime about as long as the compression wave, %1 ms")
                           .arg(*covered),
                       QStringLiteral("%1 s").arg(totalSecs));
        }
    }

    FindingList &m_list;
    QuaZip &m_zip;
    std::function<void(qint64, qint64)> m_advance;
    std::array<int, members.size()> m_entries{-1, -1, -1, -1, -1};
    qint64 m_done = 0;
    qint64 m_total = 0;
    std::array<WaveDescription, 2> m_descriptions;
    std::array<std::optional<qint64>, 2> m_samples;
};

// What the zip library lets pass but other readers, and recovery, do not: the record at the end of
// the file, and the header before each member, which names the member as the directory does.
class HeaderCheck {
public:
    HeaderCheck(FindingList &list, const QString &name) : m_list(list), m_file(name) { }

    void run()
    {
        if (!m_file.open(QIODevice::ReadOnly))
            return;
        MemberReport archive(m_list, QString());
        const qint64 end = endRecord();
        if (end < 0) {
            archive.error(QStringLiteral("the end of the directory at the end of the file"),
                          QStringLiteral("none; is the file cut short?"));
            return;
        }
        const QByteArray record = at(end, endRecordSize);
        const qint64 size = number<quint32>(record, 12);
        const qint64 offset = number<quint32>(record, 16);
        if (offset == std::numeric_limits<quint32>::max())
            return; // as in archives above 4 GB, which no session needs
        const qint64 before = end - size - offset;
        if (before != 0) {
            archive.add(Finding::Warning, QStringLiteral("an archive from the first byte on"),
                        QStringLiteral("one that is off by %1 bytes").arg(before));
        }
        const int entries = qMin<int>(number<quint16>(record, 10), maxEntries);
        qint64 entry = end - size;
        for (int i = 0; i < entries; ++i) {
            const QByteArray header = at(entry, directoryHeaderSize);
            if (!header.startsWith("PK\x01\x02"))
                return; // told by the zip library
            const int nameSize = number<quint16>(header, 28);
            checkName(at(entry + directoryHeaderSize, nameSize),
                      before + number<quint32>(header, 42));
            entry += directoryHeaderSize + nameSize + number<quint16>(header, 30)
                + number<quint16>(header, 32);
        }
    }

private:
    static constexpr int endRecordSize = 22;
    static constexpr int directoryHeaderSize = 46;
    static constexpr int memberHeaderSize = 30;

    // The bytes, or none when they do not lie in the file.
    QByteArray at(qint64 position, qint64 size)
    {
        if (position < 0 || !m_file.seek(position))
            return {};
        const QByteArray bytes = m_file.read(size);
        return bytes.size() == size ? bytes : QByteArray();
    }

    template <typename T> static T number(const QByteArray &bytes, int index)
    {
        return index + int(sizeof(T)) <= bytes.size() ? qFromLittleEndian<T>(bytes.data() + index)
                                                      : T(0);
    }

    // Where the record starts that reaches, with its comment, to the end of the file; -1 for none.
    qint64 endRecord()
    {
        constexpr qint64 longest = endRecordSize + std::numeric_limits<quint16>::max();
        const qint64 begin = qMax<qint64>(0, m_file.size() - longest);
        const QByteArray tail = at(begin, m_file.size() - begin);
        for (int i = tail.size() - endRecordSize; i >= 0; --i) {
            if (tail.mid(i, 4) == "PK\x05\x06"
                && i + endRecordSize + number<quint16>(tail, i + 20) == tail.size()) {
                return begin + i;
            }
        }
        return -1;
    }

    void checkName(const QByteArray &name, qint64 position)
    {
        const QByteArray header = at(position, memberHeaderSize);
        const QByteArray found = at(position + memberHeaderSize, number<quint16>(header, 26));
        if (header.startsWith("PK\x03\x04") && found != name) {
            MemberReport(m_list, QString())
                .error(QStringLiteral("the name %1 in the member's header")
                           .arg(quoted(QString::fromUtf8(name))),
                       quoted(QString::fromUtf8(found)));
        }
    }

    FindingList &m_list;
    QFile m_file;
};

QString severityText(Finding::Severity severity)
{
    return severity == Finding::Error ? QStringLiteral("error") : QStringLiteral("warning");
}

QString counted(qint64 count, const QString &what)
{
    if (count == 0)
        return QStringLiteral("no %1s").arg(what);
    return QStringLiteral("%1 %2%3").arg(count).arg(what,
                                                    count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

QString Finding::toText() const
{
    QString text = severityText(severity) + QStringLiteral(": ");
    text += member.isEmpty() ? QStringLiteral("archive") : member;
    if (line > 0)
        text += QStringLiteral(", line %1, column %2").arg(line).arg(column);
    if (byte >= 0)
        text += QStringLiteral(", byte %1").arg(byte);
    if (!element.isEmpty())
        text += QStringLiteral(", ") + element;
    return text + QStringLiteral(": expected ") + expected + QStringLiteral("; found ") + found;
}

QJsonObject Finding::toJson() const
{
    QJsonObject object{
        {QStringLiteral("severity"), severityText(severity)},
        {QStringLiteral("member"), member},
        {QStringLiteral("expected"), expected},
        {QStringLiteral("found"), found},
    };
    if (line > 0) {
        object.insert(QStringLiteral("line"), line);
        object.insert(QStringLiteral("column"), column);
    }
    if (byte >= 0)
        object.insert(QStringLiteral("byte"), byte);
    if (!element.isEmpty())
        object.insert(QStringLiteral("element"), element);
    return object;
}

QString FindingList::toText() const
{
    QString text;
    for (const Finding &finding : m_findings)
        text += finding.toText() + QLatin1Char('\n');
    text += counted(m_errors, QStringLiteral("error")) + QStringLiteral(", ")
        + counted(m_warnings, QStringLiteral("warning"));
    if (leftOut() > 0)
        text += QStringLiteral("; only the first %1 are shown").arg(m_findings.size());
    return text + QLatin1Char('\n');
}

QJsonObject FindingList::toJson() const
{
    QJsonArray findings;
    for (const Finding &finding : m_findings)
        findings.append(finding.toJson());
    return {
        {QStringLiteral("file"), m_file},        {QStringLiteral("findings"), findings},
        {QStringLiteral("errors"), m_errors},    {QStringLiteral("warnings"), m_warnings},
        {QStringLiteral("left_out"), leftOut()},
    };
}

namespace ArchiveCheck {

QString whyNoArchive(const QString &name)
{
    const QFileInfo info(name);
    if (!info.exists())
        return QStringLiteral("%1 does not exist").arg(name);
    if (info.isDir())
        return QStringLiteral("%1 is a directory, not a session archive").arg(name);
    if (!info.isFile())
        return QStringLiteral("%1 is no regular file").arg(name);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 cannot be read: %2").arg(name, file.errorString());
    if (file.size() == 0)
        return QStringLiteral("%1 is empty").arg(name);
    if (QuaZip zip(name); zip.open(QuaZip::mdUnzip))
        return QString();
    if (file.peek(2) == "PK")
        return QStringLiteral("%1 is a damaged archive: its directory, at the end, is missing or "
                              "broken; is the file cut short?")
            .arg(name);
    return QStringLiteral("%1 is no session archive").arg(name);
}

FindingList run(const QString &name, const std::function<void(qint64, qint64)> &advance)
{
    FindingList list(name);
    if (const QString reason = whyNoArchive(name); !reason.isEmpty()) {
        MemberReport(list, QString()).error(QStringLiteral("a session archive"), reason);
        return list;
    }
    QuaZip zip(name);
    HeaderCheck(list, name).run();
    if (zip.open(QuaZip::mdUnzip))
        SessionCheck(list, zip, advance).run();
    return list;
}

} // namespace ArchiveCheck
