// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ArchiveSalvage.h"

#include "sessionfiles/ArchiveScan.h"
#include "sessionfiles/EventListCheck.h"
#include "sessionfiles/GuidelinesCheck.h"
#include "sessionfiles/SessionFile.h"
#include "sessionfiles/WavesCheck.h"

#include <CPRData.h>
#include <CPRFileHandlerZip.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QMap>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace sessionfiles {

namespace {

using Elements = QVector<QByteArray>;

// The elements of one kind in a document: how each begins and, when it holds others, how it ends.
// Of more than the most, which no session can load, the rest is left out.
struct ElementKind {
    const char *begin;
    const char *end;
    int most;
};
constexpr ElementKind eventKind{"<evt ", "</evt>", 1'000'000};
constexpr ElementKind waveKind{"<waveForm ", "</waveForm>", 10};
constexpr ElementKind valueKind{"<", nullptr, 10'000};

// A document taken apart.
struct Document {
    QByteArray head; // all before the first element
    Elements elements;
    QByteArray tail; // all behind the last
    int begun = 0; // elements, also those that have no end
    bool endsEarly = false; // the last that has begun is not among the elements
};

// Does without a parser, which would end at the first damage. An element ends before the next one
// of its kind begins.
Document splitUp(const QByteArray &text, ElementKind kind)
{
    Document document;
    int from = text.indexOf(kind.begin);
    int end = 0; // of the last element
    while (from >= 0) {
        int next = text.indexOf(kind.begin, from + 1);
        const QByteArray range = text.mid(from, (next < 0 ? text.size() : next) - from);
        int size = kind.end ? range.indexOf(kind.end) : -1;
        if (size >= 0)
            size += int(qstrlen(kind.end));
        else if (const int close = range.indexOf('>'); close > 0 && range.at(close - 1) == '/')
            size = close + 1;
        const bool isNone = size < 0 && kind.end == nullptr && range.contains('>');
        document.endsEarly = !isNone && (size < 0 || document.elements.size() == kind.most);
        document.begun += isNone ? 0 : 1; // else the root, its end, or the declaration
        if (document.elements.size() == kind.most)
            break;
        if (size >= 0) {
            if (document.elements.isEmpty())
                document.head = text.left(from);
            document.elements.append(range.left(size));
            end = from + size;
        }
        from = next;
    }
    document.tail = text.mid(end);
    return document;
}

// Whether the parser can be given the element without undue effort: it compares each attribute of a
// tag with every other.
bool isCheapToParse(const QByteArray &element)
{
    constexpr int maxAttributes = 64;
    constexpr int maxLength = 1'000'000; // of a tag with the text behind it
    for (int from = 0; from >= 0;) {
        const int next = element.indexOf('<', from + 1);
        const QByteArray tag = element.mid(from, next < 0 ? -1 : next - from);
        if (tag.size() > maxLength || tag.count('=') > maxAttributes)
            return false;
        from = next;
    }
    return true;
}

// The attributes of an element that is well-formed.
std::optional<QXmlStreamAttributes> attributesOf(const QByteArray &element)
{
    const QString text = QString::fromUtf8(element);
    if (text.toUtf8() != element || !isCheapToParse(element))
        return std::nullopt;
    QXmlStreamReader reader(text);
    if (!reader.readNextStartElement())
        return std::nullopt;
    const QXmlStreamAttributes attributes = reader.attributes();
    while (!reader.atEnd())
        reader.readNext();
    return reader.hasError() ? std::nullopt : std::make_optional(attributes);
}

// Keeps of the elements those that are well-formed and wanted, by their attribute type. Line ends
// become plain, as a parser makes them, so that lines can be counted; inside a value a parser would
// make them blanks anyway.
template <typename Wanted> Elements wellFormed(const Elements &elements, Wanted isWanted)
{
    Elements kept;
    for (QByteArray element : elements) {
        element.replace('\r', '\n');
        const auto attributes = attributesOf(element);
        if (attributes && isWanted(attributes->value(QLatin1String("type"))))
            kept.append(element);
    }
    return kept;
}

constexpr char separator[] = "\n    ";

QByteArray joined(const Document &frame, const Elements &elements)
{
    QByteArray text = frame.head;
    for (int i = 0; i < elements.size(); ++i) {
        if (i > 0)
            text += separator;
        text += elements.at(i);
    }
    return text + frame.tail;
}

// The line on which each element begins, from 1.
QVector<qint64> linesOf(const Document &frame, const Elements &elements)
{
    QVector<qint64> lines;
    lines.reserve(elements.size());
    qint64 line = 1 + frame.head.count('\n');
    for (const QByteArray &element : elements) {
        lines.append(line);
        line += element.count('\n') + 1;
    }
    return lines;
}

// What a check of the document finds. The check takes an XmlMember and a MemberReport.
template <typename Check> FindingList findingsIn(const QByteArray &text, Check check)
{
    FindingList list{QString()};
    MemberReport report(list);
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    CountedDevice device(&buffer, [](qint64 /*bytes*/) { return true; });
    XmlMember xml(device, report);
    check(xml, report);
    return list;
}

// Takes one parameter out of a summary, which is worth having without it: learners and manikin
// should not be lost with a number. Other events would say something wrong without theirs.
bool removeParameter(QByteArray &element, qint64 line)
{
    constexpr int longest = 100'000; // bytes, many times what a summary takes
    if (!element.startsWith("<evt type=\"CprSession") || element.size() > longest)
        return false;
    QList<QByteArray> lines = element.split('\n');
    const QByteArray parameter = lines.at(static_cast<int>(line)).trimmed();
    if (!parameter.startsWith("<param ") || !parameter.endsWith("/>"))
        return false;
    lines[static_cast<int>(line)].clear();
    element = lines.join('\n');
    return true;
}

// Takes out what the check finds fault with. How an element fits can depend on those before it, so
// the rest is checked again; when that does not come to an end, all behind the first fault is given
// up. complete(elements) puts in what the document cannot do without.
template <typename Check, typename Complete>
void makeFit(const Document &frame, Elements &elements, Check check, Complete complete)
{
    constexpr int maxRounds = 4;
    for (int round = 1;; ++round) {
        complete(elements);
        const FindingList list = findingsIn(joined(frame, elements), check);
        if (list.errors() == 0 || elements.isEmpty())
            return;
        const QVector<qint64> lines = linesOf(frame, elements);
        int first = elements.size() - 1;
        for (const Finding &finding : list.findings()) {
            const int index =
                int(std::upper_bound(lines.begin(), lines.end(), finding.line) - lines.begin()) - 1;
            if (finding.severity != Finding::Error || index < 0 || elements.at(index).isEmpty())
                continue;
            first = qMin(first, index);
            if (!removeParameter(elements[index], finding.line - lines.at(index)))
                elements[index].clear();
        }
        if (round >= maxRounds)
            elements.resize(first);
        elements.removeAll(QByteArray());
    }
}

class Salvage {
    Q_DECLARE_TR_FUNCTIONS(sessionfiles)

public:
    explicit Salvage(ArchiveScan::Members &&scanned) : m_scanned(std::move(scanned)) { }

    SalvagedSession run()
    {
        salvageDescriptions();
        salvageWave(Compressions);
        salvageWave(Ventilations);
        describeLengths();
        salvageEvents();
        salvageGuidelines();
        return std::move(m_session);
    }

private:
    using WaveAttributes = std::array<QMap<QString, int>, 2>;

    ArchiveScan::Member &scanned(MemberIndex index) { return m_scanned[index]; }
    QByteArray &content(MemberIndex index) { return m_session.members[nameInFolder(index)]; }
    QByteArray emptyContent(MemberIndex index) const { return m_empty.value(nameInFolder(index)); }

    // What becomes of a member with that content when it is loaded.
    LoadedMember loaded(MemberIndex index, const QByteArray &content) const
    {
        MemoryFileHandler files(m_empty);
        files.members[nameInFolder(index)] = content;
        CPRData session;
        const LoadResult result = load(files, session);
        LoadedMember inspected;
        for (const LoadedMember &member : result.members) {
            if (member.name == nameInFolder(index))
                inspected = member;
        }
        // A description can name a member that there is not.
        if (!result.isComplete && inspected.state == LoadedMember::Complete) {
            inspected.state = LoadedMember::Damaged;
            inspected.reason = tr("it does not go with the other members");
        }
        return inspected;
    }
    // The same, when only that counts.
    bool isLoadable(MemberIndex index, const QByteArray &content) const
    {
        MemoryFileHandler files(m_empty);
        files.members[nameInFolder(index)] = content;
        return CPRData().readData(&files);
    }

    void report(MemberIndex index, const QString &text)
    {
        m_session.report.append(memberName(index) + QStringLiteral(": ") + text);
    }
    void reportComplete(MemberIndex index)
    {
        m_session.holdsAnything = true;
        report(index, tr("whole"));
    }
    void reportPart(MemberIndex index, const QString &kept)
    {
        const ArchiveScan::Member &member = scanned(index);
        m_session.holdsAnything = true;
        m_session.isAll = false;
        report(index,
               kept + QStringLiteral("; ") + member.damage
                   + (member.isCertain ? QString() : tr(", so this is not certain")));
    }
    // The member becomes that of a session that has recorded nothing.
    void reportGone(MemberIndex index)
    {
        const ArchiveScan::Member &member = scanned(index);
        content(index) = emptyContent(index);
        m_session.isAll = false;
        report(index,
               tr("gone; %1; stored as of an empty session")
                   .arg(member.isFound ? member.damage : tr("there is none")));
    }

    // Takes the member as it is, if it can be loaded.
    bool salvageComplete(MemberIndex index)
    {
        ArchiveScan::Member &member = scanned(index);
        if (!member.isComplete)
            return false;
        const LoadedMember result = loaded(index, member.content);
        if (result.state == LoadedMember::Complete) {
            content(index) = member.content;
            reportComplete(index);
            return true;
        }
        member.damage = result.reason;
        return false;
    }

    // Puts the document together. A session has limits of its own: of more elements than it can
    // load, the first are kept that it can.
    QByteArray loadable(MemberIndex index, const Document &frame, Elements &elements) const
    {
        const QByteArray text = joined(frame, elements);
        const LoadedMember result = loaded(index, text);
        if (result.state == LoadedMember::Complete)
            return text;
        // It has stopped in one of the blocks that were read last.
        constexpr qint64 lastBlocks = 8 * 1024;
        int fitting = elementsWithin(result.bytesRead - lastBlocks, frame, elements);
        int tooMany = qMin(elementsWithin(result.bytesRead, frame, elements) + 1, elements.size());
        if (!isLoadable(index, joined(frame, elements.mid(0, fitting))))
            tooMany = std::exchange(fitting, 0);
        while (tooMany - fitting > 1) {
            const int tried = fitting + (tooMany - fitting) / 2;
            if (isLoadable(index, joined(frame, elements.mid(0, tried))))
                fitting = tried;
            else
                tooMany = tried;
        }
        elements.resize(fitting);
        return joined(frame, elements);
    }

    // How many of the elements lie in the first bytes of the document.
    static int elementsWithin(qint64 bytes, const Document &frame, const Elements &elements)
    {
        qint64 end = frame.head.size();
        int count = 0;
        while (count < elements.size() && (end += elements.at(count).size()) <= bytes) {
            end += int(sizeof(separator)) - 1;
            ++count;
        }
        return count;
    }

    // Takes of the document what fits, and tells about it in the plural of \a noun.
    template <typename Wanted, typename Check, typename Complete>
    void salvageElements(MemberIndex index, ElementKind kind, const QString &noun, Wanted isWanted,
                         Check check, Complete complete)
    {
        const Document frame = splitUp(emptyContent(index), kind);
        const Document found = splitUp(scanned(index).content, kind);
        Elements elements = wellFormed(found.elements, isWanted);
        int added = 0;
        makeFit(frame, elements, check, [&](Elements &all) { added += complete(all) ? 1 : 0; });
        const QByteArray text = loadable(index, frame, elements);
        const int kept = elements.size() - qMin(added, 1);
        if (kept == 0) {
            reportGone(index);
            return;
        }
        content(index) = text;
        const bool hasEnd = found.tail.contains("</") && !found.endsEarly;
        const int begun = found.begun - (found.endsEarly ? 1 : 0);
        if (hasEnd && kept == begun)
            reportPart(index, tr("all %1 %2").arg(kept).arg(noun));
        else if (hasEnd)
            reportPart(index, tr("%1 of %2 %3").arg(kept).arg(begun).arg(noun));
        else if (kept == begun)
            reportPart(index, tr("the first %1 %2").arg(kept).arg(noun));
        else
            reportPart(index, tr("%1 of the first %2 %3").arg(kept).arg(begun).arg(noun));
    }

    void salvageDescriptions()
    {
        const auto check = [this](XmlMember &xml, MemberReport & /*report*/) {
            WavesCheck waves(xml);
            waves.run();
            m_descriptions = waves.descriptions;
        };
        if (salvageComplete(Waves)) {
            findingsIn(content(Waves), check);
            return;
        }
        const Document frame = splitUp(emptyContent(Waves), waveKind);
        const Elements found = splitUp(scanned(Waves).content, waveKind).elements;
        Elements elements = frame.elements;
        int kept = 0;
        for (int i = 0; i < elements.size(); ++i) {
            const QLatin1String type(i == 0 ? "comp" : "vent");
            const Elements own =
                wellFormed(found, [type](const auto &each) { return each == type; });
            if (own.isEmpty())
                continue;
            Elements tried = frame.elements;
            tried[i] = own.first();
            if (findingsIn(joined(frame, tried), check).errors() == 0) {
                elements[i] = own.first();
                m_isDescribed[i] = true;
                ++kept;
            }
        }
        content(Waves) = joined(frame, elements);
        findingsIn(content(Waves), check);
        // The manikin samples both waves at one rate.
        if (kept == 1) {
            const int known = m_isDescribed[0] ? 0 : 1;
            WaveAttributes attributes;
            attributes[1 - known].insert(QStringLiteral("sampleRate"),
                                         msecsPerSecond / m_descriptions[known].samplePeriod);
            setAttributes(attributes);
            m_descriptions[1 - known].samplePeriod = m_descriptions[known].samplePeriod;
        }
        if (kept == 0)
            reportGone(Waves);
        else
            reportPart(Waves, tr("%1 of 2 descriptions").arg(kept));
    }

    void salvageWave(MemberIndex index)
    {
        if (salvageComplete(index))
            return;
        ArchiveScan::Member &member = scanned(index);
        QBuffer samples(&member.content);
        samples.open(QIODevice::ReadOnly);
        CPRData session;
        session.compressionData()->readCompresseionWave(&samples);
        const int kept = session.compressionData()->count();
        content(index) = member.content.left(kept * bytesPerSample);
        const WaveDescription &description = m_descriptions[index - Compressions];
        const int described =
            m_isDescribed[index - Compressions] ? description.length.value_or(0) : 0;
        if (kept == 0)
            reportGone(index);
        else if (kept < described)
            reportPart(index, tr("the first %1 of %2 samples").arg(kept).arg(described));
        else
            reportPart(index, tr("%1 samples").arg(kept));
    }

    // Makes the descriptions tell how many samples there are.
    void describeLengths()
    {
        WaveAttributes attributes;
        for (const MemberIndex wave : {Compressions, Ventilations}) {
            const int samples = content(wave).size() / bytesPerSample;
            if (m_descriptions[wave - Compressions].length != samples)
                attributes[wave - Compressions].insert(QStringLiteral("length"), samples);
        }
        setAttributes(attributes);
    }

    // Gives the two descriptions, whose document is sound, these attributes.
    void setAttributes(const WaveAttributes &values)
    {
        if (values[0].isEmpty() && values[1].isEmpty())
            return;
        QXmlStreamReader reader(content(Waves));
        QString text; // into bytes the writer would also write an encoding
        QXmlStreamWriter writer(&text);
        std::size_t wave = 0;
        while (!reader.atEnd()) {
            reader.readNext();
            if (reader.isStartElement() && reader.name() == QLatin1String("waveForm")
                && wave < values.size()) {
                writer.writeStartElement(reader.name().toString());
                for (const QXmlStreamAttribute &each : reader.attributes()) {
                    const auto value = values[wave].constFind(each.name().toString());
                    writer.writeAttribute(each.name().toString(),
                                          value == values[wave].cend() ? each.value().toString()
                                                                       : QString::number(*value));
                }
                ++wave;
            } else if (!reader.hasError()) {
                writer.writeCurrentToken(reader);
            }
        }
        content(Waves) = text.toUtf8();
    }

    void salvageEvents()
    {
        const qint64 coveredMs =
            qint64(content(Compressions).size() / bytesPerSample) * m_descriptions[0].samplePeriod;
        const auto check = [coveredMs](XmlMember &xml, MemberReport &report) {
            EventListCheck(xml, report, coveredMs).run();
        };
        if (salvageComplete(Events))
            return;
        const QString infoType = QStringLiteral("CprSessionInfo");
        QStringList standing{infoType, QStringLiteral("CprSessionStatistics"),
                             QStringLiteral("CprSessionScore")};
        const QStringList once = standing;
        const Elements empty = splitUp(emptyContent(Events), eventKind).elements;
        salvageElements(
            Events, eventKind, tr("events"),
            [&](const auto &type) {
                return !once.contains(type) || standing.removeOne(type.toString());
            },
            check,
            [&](Elements &elements) {
                const auto isInfo = [](const QByteArray &element) {
                    return element.startsWith("<evt type=\"CprSessionInfo\"");
                };
                if (std::any_of(elements.begin(), elements.end(), isInfo))
                    return false;
                elements.prepend(empty.first());
                return true;
            });
    }

    void salvageGuidelines()
    {
        const auto check = [](XmlMember &xml, MemberReport & /*report*/) {
            GuidelinesCheck(xml).run();
        };
        if (salvageComplete(Guidelines))
            return;
        salvageElements(
            Guidelines, valueKind, tr("values"), [](const auto & /*type*/) { return true; }, check,
            [](const Elements & /*elements*/) { return false; });
    }

    const MemoryFileHandler::Members m_empty = emptySession();
    ArchiveScan::Members m_scanned;
    std::array<WaveDescription, 2> m_descriptions; // compressions, ventilations
    std::array<bool, 2> m_isDescribed{}; // by the archive
    SalvagedSession m_session;
};

} // namespace

SalvagedSession salvage(const QString &name,
                        const std::function<void(qint64 done, qint64 total)> &advance)
{
    return Salvage(ArchiveScan::run(name, advance)).run();
}

QString save(const QString &name, const SalvagedSession &session)
{
    CPRFileHandlerZip zip;
    bool isWritten = zip.open(name, CPRFileHandlerZip::Create);
    for (const MemberIndex index : writingOrder) {
        QIODevice *device = isWritten ? zip.openFileForWriting(nameInFolder(index)) : nullptr;
        const QByteArray content = session.members.value(nameInFolder(index));
        isWritten = device && device->write(content) == content.size();
        zip.releaseFile(device);
    }
    if (isWritten && zip.close())
        return QString();
    return zip.errorString();
}

} // namespace sessionfiles
