// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ArchiveCheck.h"

#include "private/PrintableText.h"
#include "sessionfiles/ArchiveFile.h"
#include "sessionfiles/ArchiveMember.h"
#include "sessionfiles/EventListCheck.h"
#include "sessionfiles/GuidelinesCheck.h"
#include "sessionfiles/SessionFile.h"
#include "sessionfiles/WavesCheck.h"
#include "sessionfiles/ZipHeader.h"

#include <CPRData.h>
#include <CPRFileHandlerZip.h>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

namespace sessionfiles {

namespace {

constexpr int maxEntries = 1000; // of the archive's directory

/// How far the waves may be apart, and how far they may be from the session's total time.
constexpr int maxWaveDifferenceMs = 1000;
constexpr int maxTimeDifferenceMs = 2000;
constexpr int maxSessionMs = 24 * 60 * Units::msecsPerMinute;

// What is unexpected in an archive, and where the damage is that kept it from being loaded whole.
class Check {
public:
    // advance(bytes) is told how much has been read.
    Check(FindingList &list, const QString &name, const LoadResult &loaded,
          std::function<void(qint64)> advance)
        : m_list(list), m_name(name), m_loaded(loaded), m_advance(std::move(advance))
    {
    }

    void run()
    {
        checkDirectory();
        m_zip.open(m_name, CPRFileHandlerZip::Read);
        read(Waves, [this](XmlMember &xml, MemberReport & /*report*/) {
            WavesCheck check(xml);
            check.run();
            m_descriptions = check.descriptions;
        });
        checkWave(Compressions);
        checkWave(Ventilations);
        checkWavesTogether();
        read(Events, [this](XmlMember &xml, MemberReport &report) {
            EventListCheck check(xml, report, coveredMs(Compressions));
            check.run();
            checkTotalTime(report, check.totalTime());
        });
        read(Guidelines,
             [](XmlMember &xml, MemberReport & /*report*/) { GuidelinesCheck(xml).run(); });
        if (!m_loaded.isComplete && m_list.errors() == 0)
            MemberReport(m_list).error(loadable(), QStringLiteral("less"));
    }

private:
    static QString loadable() { return QStringLiteral("what can be loaded whole"); }

    // What became of the member when it was loaded; none when a session has not asked for it.
    const LoadedMember *loaded(MemberIndex index) const
    {
        const auto is = [name = nameInFolder(index)](const LoadedMember &member) {
            return member.name == name;
        };
        const auto member = std::find_if(m_loaded.members.begin(), m_loaded.members.end(), is);
        return member == m_loaded.members.end() ? nullptr : &*member;
    }
    bool isLoaded(MemberIndex index) const
    {
        const LoadedMember *member = loaded(index);
        return m_loaded.isComplete || (member && member->state == LoadedMember::Complete);
    }
    MemberReport reportOn(MemberIndex index)
    {
        return MemberReport(m_list, memberName(index), isLoaded(index));
    }

    // Of what could be read once, and now not any more, nothing can be said.
    void reportUnreadable(const QString &reason)
    {
        MemberReport(m_list).error(QStringLiteral("what can be read again"), reason);
    }

    // Each member once, and nothing else.
    void checkDirectory()
    {
        MemberReport archive(m_list, QString(), m_loaded.isComplete);
        ArchiveFile file(m_name);
        const zip::Directory directory =
            file.open(QIODevice::ReadOnly) ? zip::directoryOf(file, maxEntries) : zip::Directory();
        if (file.failure()) {
            reportUnreadable(*file.failure());
            return;
        }
        if (!directory.isFound) {
            archive.error(QStringLiteral("the end of the directory at the end of the file"),
                          QStringLiteral("none; is the file cut short?"));
        }
        if (directory.offset != 0) {
            archive.add(Finding::Warning, QStringLiteral("an archive from the first byte on"),
                        QStringLiteral("one that is off by %1 bytes").arg(directory.offset));
        }
        std::array<int, readingOrder.size()> counts{};
        for (const zip::Header &header : directory.headers) {
            const QString name = QString::fromUtf8(header.name);
            const qint64 place = directory.offset + header.localPosition;
            const auto local = zip::headerAt(file, place, zip::Header::Local);
            if (local && zip::bytesAt(file, place, zip::signatureSize) == zip::localSignature
                && local->name != header.name) {
                archive.error(
                    QStringLiteral("the name %1 in the member's header").arg(quoted(name)),
                    quoted(QString::fromUtf8(local->name)));
            }
            const auto index = std::find_if(readingOrder.begin(), readingOrder.end(),
                                            [&](MemberIndex i) { return memberName(i) == name; });
            if (index != readingOrder.end())
                ++counts[*index];
            else if (name != QLatin1String("CPR/"))
                archive.add(Finding::Warning, QStringLiteral("a session's members only"),
                            quoted(name));
        }
        if (file.failure())
            reportUnreadable(*file.failure());
        if (directory.entries > maxEntries) {
            archive.error(QStringLiteral("at most %1 members").arg(maxEntries),
                          QStringLiteral("more; the rest is not looked at"));
        } else if (directory.headers.size() < directory.entries) {
            archive.error(QStringLiteral("a directory of %1 members").arg(directory.entries),
                          QStringLiteral("%1").arg(directory.headers.size()));
        }
        for (const MemberIndex index : readingOrder) {
            const LoadedMember *member = loaded(index);
            if (counts[index] > 1) {
                reportOn(index).error(
                    QStringLiteral("the member once"),
                    QStringLiteral("%1; the first is checked").arg(counts[index]));
            } else if (counts[index] == 0 && (!member || member->state == LoadedMember::Missing)) {
                reportOn(index).error(QStringLiteral("the member once"), QStringLiteral("none"));
            }
        }
    }

    // Calls check(xml, report) for what a session has read of the document.
    template <typename CheckDocument> void read(MemberIndex index, CheckDocument check)
    {
        const LoadedMember *member = loaded(index);
        if (!member || member->state == LoadedMember::Missing)
            return;
        MemberReport report = reportOn(index);
        bool isReported = false;
        QIODevice *device =
            member->bytesRead > 0 ? m_zip.openFileForReading(nameInFolder(index)) : nullptr;
        if (device) {
            CountedDevice begin(
                device,
                [this](qint64 bytes) {
                    m_done += bytes;
                    m_advance(m_done);
                    return true;
                },
                member->bytesRead);
            XmlMember xml(begin, report);
            check(xml, report);
            isReported = xml.isDamaged();
            if (begin.hasFailed() && isLoaded(index))
                reportUnreadable(begin.errorString());
        } else if (member->bytesRead > 0) {
            reportUnreadable(m_zip.errorString());
        }
        m_zip.releaseFile(device);
        if (member->state == LoadedMember::Damaged && !isReported)
            report.error(loadable(), member->reason);
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
        const LoadedMember *member = loaded(wave);
        if (!member || member->state != LoadedMember::Complete) {
            if (member && member->state == LoadedMember::Damaged)
                reportOn(wave).error(loadable(), member->reason);
            return;
        }
        MemberReport report = reportOn(wave);
        const qint64 bytes = member->bytesRead;
        samples(wave) = bytes / bytesPerSample;
        if (bytes % bytesPerSample != 0) {
            report.errorAtByte(bytes - 1,
                               QStringLiteral("two bytes of sample %1").arg(*samples(wave)),
                               QStringLiteral("one"));
        }
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
            reportOn(Ventilations)
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
    QString m_name;
    const LoadResult &m_loaded;
    std::function<void(qint64)> m_advance;
    qint64 m_done = 0;
    CPRFileHandlerZip m_zip;
    std::array<WaveDescription, 2> m_descriptions;
    std::array<std::optional<qint64>, 2> m_samples;
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
    return PrintableText::escaped(text + QStringLiteral(": expected ") + expected
                                  + QStringLiteral("; found ") + found);
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

std::optional<QString> whyNoArchive(const QString &name)
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
    if (isForeignArchive(name))
        return QStringLiteral("%1 is an archive, but there is no session in it").arg(name);
    if (CPRFileHandlerZip zip; zip.open(name, CPRFileHandlerZip::Read))
        return std::nullopt;
    if (file.peek(2) == "PK")
        return QStringLiteral("%1 is a damaged archive: its directory, at the end, is missing or "
                              "broken; is the file cut short?")
            .arg(name);
    return QStringLiteral("%1 is no session archive").arg(name);
}

FindingList check(const QString &name,
                  const std::function<void(qint64 done, qint64 total)> &advance)
{
    FindingList list(name);
    if (const std::optional<QString> reason = whyNoArchive(name)) {
        MemberReport(list).error(QStringLiteral("a session archive"), *reason);
        return list;
    }
    CPRData session;
    qint64 bytes = 0;
    const LoadResult loaded = load(name, session, [&](qint64 done, qint64 total) {
        bytes = total;
        if (advance)
            advance(done, 2 * bytes); // the documents are read twice
        return true;
    });
    Check(list, name, loaded, [&](qint64 done) {
        if (advance)
            advance(bytes + done, 2 * bytes);
    }).run();
    return list;
}

} // namespace sessionfiles
