// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ArchiveSalvage.h"

#include "sessionfiles/ArchiveScan.h"
#include "sessionfiles/EventListCheck.h"
#include "sessionfiles/GuidelinesCheck.h"
#include "sessionfiles/MemoryFileHandler.h"
#include "sessionfiles/WavesCheck.h"

#include <CPRData.h>
#include <CPRFileHandlerZip.h>
#include <private/Limits.h>
#include <private/XmlInput.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QSet>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <vector>

namespace sessionfiles {

namespace {

using Open = SalvagedSession::Open;

std::unique_ptr<QIODevice> bufferOf(const QByteArray &content)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(content);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

Open openerOf(const QByteArray &content)
{
    return [content] { return bufferOf(content); };
}

// Members that are opened anew each time they are read.
class OpenedMembers final : public CPRFileHandler {
public:
    explicit OpenedMembers(const QMap<QString, Open> &members) : m_members(members) { }
    virtual ~OpenedMembers() = default;

    QIODevice *openFileForReading(const QString &name) override
    {
        const auto member = m_members.constFind(name);
        return member == m_members.cend() ? nullptr : (*member)().release();
    }
    QIODevice *openFileForWriting(const QString & /*name*/) override { return nullptr; }
    void releaseFile(QIODevice *device) override { delete device; }
    QString filename() const override { return QStringLiteral("memory"); }

private:
    QMap<QString, Open> m_members;
};

// The elements of one kind in a document: how each begins and, when it holds others, how it ends.
struct ElementKind {
    const char *begin;
    const char *end;
};
constexpr ElementKind eventKind{"<evt ", "</evt>"};
constexpr ElementKind waveKind{"<waveForm ", "</waveForm>"};
constexpr ElementKind valueKind{"<", nullptr};

// Finds the elements of a document, without a parser, which would end at the first damage. An
// element ends before the next one of its kind begins.
class ElementReader {
public:
    ElementReader(std::unique_ptr<QIODevice> document, ElementKind kind)
        : m_document(std::move(document)), m_kind(kind), m_beginSize(int(qstrlen(kind.begin)))
    {
    }

    // Goes on to the next element that has an end; false when there is none. Its line ends are
    // plain, as a parser makes them, so that lines can be counted.
    bool next(QByteArray &element)
    {
        while (toNextBegin()) {
            const int end = nextBegin();
            const QByteArray range = m_buffer.mid(m_at, end - m_at);
            m_at = end;
            const int size = sizeOfElement(range);
            const bool isNone = size < 0 && m_kind.end == nullptr && range.contains('>');
            m_begun += isNone ? 0 : 1; // else the root, its end, or the declaration
            m_endsEarly = size < 0 && !isNone;
            m_hasEnd = (size < 0 && m_hasEnd) || range.indexOf("</", qMax(size, 0)) >= 0;
            if (size < 0)
                continue;
            element = range.left(size).replace('\r', '\n');
            return true;
        }
        return false;
    }

    // Elements that have begun, also those that have no end.
    int begun() const { return m_begun; }
    // The last element that has begun has no end.
    bool endsEarly() const { return m_endsEarly; }
    // An end tag stands behind the last element.
    bool hasEnd() const { return m_hasEnd; }
    // Passes over what is left of the document; why it cannot be read to its end, none when it can.
    std::optional<QString> failureToEnd()
    {
        do
            m_at = int(m_buffer.size());
        while (readOn());
        return m_failure;
    }

private:
    int sizeOfElement(const QByteArray &range) const
    {
        if (const int end = m_kind.end ? range.indexOf(m_kind.end) : -1; end >= 0)
            return end + int(qstrlen(m_kind.end));
        const int close = range.indexOf('>');
        return close > 0 && range.at(close - 1) == '/' ? close + 1 : -1;
    }

    // Passes over what is before the next begin.
    bool toNextBegin()
    {
        for (;;) {
            const int begin = m_buffer.indexOf(m_kind.begin, m_at);
            const int end = begin < 0 ? m_buffer.size() : begin;
            m_hasEnd = m_hasEnd || m_buffer.mid(m_at, end - m_at).contains("</");
            m_at = begin < 0 ? qMax(m_at, end - m_beginSize + 1) : begin;
            if (begin >= 0)
                return true;
            if (!readOn())
                return false;
        }
    }

    // Where the next element begins in the buffer, or else where this one is too long.
    int nextBegin()
    {
        int from = m_at + 1;
        for (;;) {
            const int begin = m_buffer.indexOf(m_kind.begin, from);
            if (begin >= 0)
                return begin;
            from = qMax(m_at + 1, int(m_buffer.size()) - m_beginSize + 1);
            if (m_buffer.size() - m_at > Limits::maxSalvagedBytes)
                return from;
            from -= m_at; // which becomes 0
            if (!readOn())
                return m_buffer.size();
        }
    }

    bool readOn()
    {
        constexpr qint64 blockSize = 64 * 1024;
        m_buffer.remove(0, m_at);
        m_at = 0;
        const int size = m_buffer.size();
        m_buffer.resize(size + int(blockSize));
        const qint64 count = m_document->read(m_buffer.data() + size, blockSize);
        m_buffer.resize(size + int(qMax<qint64>(count, 0)));
        if (count < 0)
            m_failure = m_document->errorString();
        return count > 0;
    }

    std::unique_ptr<QIODevice> m_document;
    ElementKind m_kind;
    int m_beginSize;
    QByteArray m_buffer;
    int m_at = 0; // in the buffer: the bytes before it are done with
    int m_begun = 0;
    bool m_endsEarly = false;
    bool m_hasEnd = false;
    std::optional<QString> m_failure;
};

constexpr char separator[] = "\n    ";

// How a document is put together: from the beginning and the end of an empty session's one, and the
// accepted elements of a damaged one.
struct Plan {
    Plan(const QByteArray &empty, const Open &source, ElementKind elementKind)
        : open(source), kind(elementKind)
    {
        ElementReader reader(bufferOf(empty), kind);
        for (QByteArray element; reader.next(element);)
            own.append(element);
        head = empty.left(empty.indexOf(own.first()));
        tail = empty.mid(empty.lastIndexOf(own.last()) + own.last().size());
    }

    QByteArray documentOf(const QByteArray &element) const { return head + element + tail; }

    QByteArray head;
    QVector<QByteArray> own; // elements of the empty session
    QByteArray tail;
    Open open; // the damaged document
    ElementKind kind;
    std::vector<bool> isAccepted; // of each element of the damaged document
    QMap<std::size_t, QByteArray> changed; // what stands instead of an accepted element
};

// Puts the document together while it is read.
class PlannedDocument final : public QIODevice {
public:
    explicit PlannedDocument(const std::shared_ptr<const Plan> &plan)
        : m_plan(plan), m_elements(plan->open(), plan->kind), m_pending(plan->head)
    {
        QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    bool atEnd() const override { return m_isOver && (m_hasFailed || m_pending.isEmpty()); }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        while (!m_isOver && m_pending.size() < maxSize)
            addNext();
        if (m_hasFailed)
            return -1;
        const int count = int(qMin<qint64>(maxSize, m_pending.size()));
        std::copy_n(m_pending.begin(), count, data);
        m_pending.remove(0, count);
        return count;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    void addNext()
    {
        QByteArray element;
        if (m_index == m_plan->isAccepted.size() || !m_elements.next(element)) {
            m_isOver = true;
            m_pending += m_plan->tail;
            // Only its end tells whether the document is the one that was planned for.
            if (const std::optional<QString> failure = m_elements.failureToEnd()) {
                m_hasFailed = true;
                setErrorString(*failure);
            }
            return;
        }
        const std::size_t index = m_index++;
        if (!m_plan->isAccepted[index])
            return;
        if (m_hasElement)
            m_pending += separator;
        m_pending += m_plan->changed.value(index, element);
        m_hasElement = true;
    }

    std::shared_ptr<const Plan> m_plan;
    ElementReader m_elements;
    QByteArray m_pending;
    std::size_t m_index = 0; // of the next element
    bool m_hasElement = false;
    bool m_isOver = false;
    bool m_hasFailed = false;
};

// What a check of the document finds. The check takes an XmlMember and a MemberReport.
template <typename Check>
FindingList findingsIn(const std::unique_ptr<QIODevice> &document, Check check)
{
    FindingList list{QString()};
    MemberReport report(list);
    XmlInput limited(document.get());
    CountedDevice device(&limited, {});
    XmlMember xml(device, report);
    check(xml, report);
    return list;
}

// Removes the parameters of a summary in which the errors are; false when errors are elsewhere. A
// summary is worth having without them: learners and manikin should not be lost with a number.
// Other events would say something wrong without theirs. \a firstLine is the element's.
bool removeParameters(QByteArray &element, const FindingList &list, qint64 firstLine)
{
    if (!element.startsWith("<evt type=\"CprSession") || list.errors() == 0)
        return false;
    QList<QByteArray> lines = element.split('\n');
    for (const Finding &finding : list.findings()) {
        if (finding.severity != Finding::Error)
            continue;
        const qint64 index = finding.line - firstLine;
        if (index < 0 || index >= lines.size())
            return false;
        QByteArray &line = lines[static_cast<int>(index)];
        const QByteArray parameter = line.trimmed();
        if (!parameter.isEmpty() && (!parameter.startsWith("<param ") || !parameter.endsWith("/>")))
            return false;
        line.clear();
    }
    element = lines.join('\n');
    return true;
}

constexpr int maxStandingElements = 100; // of a session that has recorded nothing

class Salvage {
    Q_DECLARE_TR_FUNCTIONS(sessionfiles)

public:
    explicit Salvage(ArchiveScan::Found &&found) : m_scanned(std::move(found.members))
    {
        m_session.failure = found.failure;
    }

    SalvagedSession run()
    {
        salvageDescriptions();
        salvageWave(Compressions);
        salvageWave(Ventilations);
        describeLengths();
        salvageEvents();
        salvageGuidelines();
        if (m_session.failure) {
            m_session.isAll = false;
            m_session.report.append(
                tr("the archive cannot be read everywhere: %1").arg(*m_session.failure));
        }
        return std::move(m_session);
    }

private:
    using WaveAttributes = std::array<QMap<QString, int>, 2>;

    ArchiveScan::Member &scanned(MemberIndex index) { return m_scanned[index]; }
    Open &content(MemberIndex index) { return m_session.members[nameInFolder(index)]; }
    QByteArray emptyContent(MemberIndex index) const { return m_empty.value(nameInFolder(index)); }
    Open scannedContent(MemberIndex index) const
    {
        return [member = m_scanned[index]] { return member.open(); };
    }

    // What becomes of a member with that content when it is loaded.
    LoadedMember loaded(MemberIndex index, const Open &content) const
    {
        QMap<QString, Open> members;
        for (const MemberIndex each : readingOrder)
            members[nameInFolder(each)] = each == index ? content : openerOf(emptyContent(each));
        OpenedMembers files(members);
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
        content(index) = openerOf(emptyContent(index));
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
        const LoadedMember result = loaded(index, scannedContent(index));
        if (result.state == LoadedMember::Complete) {
            content(index) = scannedContent(index);
            reportComplete(index);
            return true;
        }
        member.damage = result.reason;
        return false;
    }

    // Accepts the elements that isSound() does, which may change them, and reports on them in the
    // plural of \a noun. complete(plan) adds what the document cannot do without.
    template <typename IsSound, typename Complete>
    void salvageElements(MemberIndex index, ElementKind kind, const QString &noun, IsSound isSound,
                         Complete complete)
    {
        if (!scanned(index).isFound) {
            reportGone(index);
            return;
        }
        auto plan = std::make_shared<Plan>(emptyContent(index), scannedContent(index), kind);
        ElementReader found(plan->open(), kind);
        const int margin = int(sizeof(separator)) + emptyContent(index).size();
        qint64 size = margin; // at most, of the document
        int kept = 0;
        for (QByteArray element; found.next(element);) {
            QByteArray sound = element;
            const bool isAccepted =
                size + element.size() <= Limits::maxMemberBytes - margin && isSound(*plan, sound);
            if (isAccepted && sound != element)
                plan->changed.insert(plan->isAccepted.size(), sound);
            plan->isAccepted.push_back(isAccepted);
            size += isAccepted ? element.size() + int(sizeof(separator)) : 0;
            kept += isAccepted ? 1 : 0;
        }
        complete(*plan);
        const Open document = [plan] { return std::make_unique<PlannedDocument>(plan); };
        if (const LoadedMember result = loaded(index, document);
            kept == 0 || result.state != LoadedMember::Complete) {
            reportGone(index);
            return;
        }
        content(index) = document;
        const bool hasEnd = found.hasEnd() && !found.endsEarly();
        const int begun = found.begun() - (found.endsEarly() ? 1 : 0);
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
        const bool isComplete = salvageComplete(Waves);
        Plan frame(emptyContent(Waves), scannedContent(Waves), waveKind);
        std::array<bool, 2> isFound{};
        if (scanned(Waves).isFound) {
            ElementReader found(frame.open(), waveKind);
            for (QByteArray element; !(isFound[0] && isFound[1]) && found.next(element);) {
                for (std::size_t wave = 0; wave < isFound.size(); ++wave) {
                    Plan tried = frame;
                    tried.own[int(wave)] = element;
                    if (!isFound[wave]
                        && findingsIn(bufferOf(descriptions(tried)), check).errors() == 0) {
                        isFound[wave] = true;
                        frame = tried;
                    }
                }
            }
        }
        m_waveList = descriptions(frame);
        if (isComplete) {
            findingsIn(scanned(Waves).open(), check);
            return;
        }
        m_isDescribed = isFound;
        content(Waves) = openerOf(m_waveList);
        findingsIn(bufferOf(m_waveList), check);
        const int kept = int(std::count(isFound.begin(), isFound.end(), true));
        // The manikin samples both waves at one rate.
        if (kept == 1) {
            const int known = isFound[0] ? 0 : 1;
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

    static QByteArray descriptions(const Plan &frame)
    {
        return frame.documentOf(frame.own.first() + separator + frame.own.last());
    }

    void salvageWave(MemberIndex index)
    {
        ArchiveScan::Member &member = scanned(index);
        if (salvageComplete(index)) {
            m_samples[index - Compressions] = int(member.size / bytesPerSample);
            return;
        }
        CPRData session;
        if (const auto samples = member.isFound ? member.open() : bufferOf({}))
            session.compressionData()->readCompresseionWave(samples.get());
        const int kept = session.compressionData()->count();
        if (kept > 0 && !member.shorten(kept * bytesPerSample)) {
            reportGone(index);
            return;
        }
        m_samples[index - Compressions] = kept;
        content(index) = scannedContent(index);
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
            const int samples = m_samples[wave - Compressions];
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
        QXmlStreamReader reader(m_waveList);
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
        m_waveList = text.toUtf8();
        content(Waves) = openerOf(m_waveList);
    }

    void salvageEvents()
    {
        if (salvageComplete(Events))
            return;
        const qint64 coveredMs =
            qint64(m_samples[Compressions - Compressions]) * m_descriptions[0].samplePeriod;
        EventsBefore before;
        int elements = 0;
        const auto accept = [&](const QByteArray &document, FindingList &list) {
            EventsBefore after;
            int count = 0;
            list = findingsIn(bufferOf(document), [&](XmlMember &xml, MemberReport &report) {
                EventListCheck check(xml, report, coveredMs, before);
                check.checkEvents();
                xml.finish();
                after = check.before();
                count = xml.elements();
            });
            // The last of the listed ones may be followed by a summary.
            if (list.errors() > 0 || after.infos > 1 || after.statistics > 1 || after.scores > 1
                || after.listed > Limits::maxEvents - 2 || after.parameters > Limits::maxParameters
                || elements + count > Limits::maxElements - maxStandingElements) {
                return false;
            }
            before = after;
            elements += count;
            return true;
        };
        const auto isSound = [&](const Plan &plan, QByteArray &element) {
            if (!element.contains("type=") || !element.contains("msecs="))
                return false;
            FindingList list{QString()};
            return accept(plan.documentOf(element), list)
                || (removeParameters(element, list, 1 + plan.head.count('\n'))
                    && accept(plan.documentOf(element), list));
        };
        salvageElements(Events, eventKind, tr("events"), isSound, [&](Plan &plan) {
            if (before.infos == 0)
                plan.head += plan.own.first() + separator;
        });
    }

    void salvageGuidelines()
    {
        if (salvageComplete(Guidelines))
            return;
        QSet<QByteArray> known;
        int unknown = 0;
        const auto isSound = [&](const Plan &plan, const QByteArray &element) {
            // Of one name a session has one value, and of those that it does not know the first.
            const auto ends = [](char c) { return c == '/' || c == '>' || c <= ' '; };
            const QByteArray name(
                element.begin() + 1,
                int(std::find_if(element.begin() + 1, element.end(), ends) - element.begin() - 1));
            const bool isKnown =
                CPRGuidelines::staticMetaObject.indexOfProperty(name.constData()) >= 0;
            if (isKnown ? known.contains(name) : ++unknown > Limits::maxUnknownValues)
                return false;
            const auto check = [](XmlMember &xml, MemberReport & /*report*/) {
                GuidelinesCheck(xml).run();
            };
            const bool isAccepted =
                findingsIn(bufferOf(plan.documentOf(element)), check).errors() == 0;
            if (isAccepted && isKnown)
                known.insert(name);
            return isAccepted;
        };
        salvageElements(Guidelines, valueKind, tr("values"), isSound, [](Plan &) {});
    }

    const MemoryFileHandler::Members m_empty = emptySession();
    ArchiveScan::Members m_scanned;
    std::array<WaveDescription, 2> m_descriptions; // compressions, ventilations
    std::array<bool, 2> m_isDescribed{}; // by the archive
    std::array<int, 2> m_samples{};
    QByteArray m_waveList;
    SalvagedSession m_session;
};

// False when \a from cannot be read, and when \a to cannot be written.
bool copy(QIODevice &from, QIODevice &to)
{
    QByteArray block(64 * 1024, Qt::Uninitialized);
    qint64 count = 0;
    while ((count = from.read(block.data(), block.size())) > 0) {
        if (to.write(block.constData(), count) != count)
            return false;
    }
    return count == 0;
}

} // namespace

SalvagedSession salvage(const QString &name,
                        const std::function<void(qint64 done, qint64 total)> &advance)
{
    return Salvage(ArchiveScan::run(name, advance)).run();
}

LoadResult load(const SalvagedSession &salvaged, CPRData &session)
{
    OpenedMembers members(salvaged.members);
    return load(members, session);
}

SaveResult save(const QString &name, const SalvagedSession &session)
{
    CPRFileHandlerZip zip;
    bool isWritten = zip.open(name, CPRFileHandlerZip::Create);
    for (const MemberIndex index : writingOrder) {
        QIODevice *device = isWritten ? zip.openFileForWriting(nameInFolder(index)) : nullptr;
        const Open content = session.members.value(nameInFolder(index), openerOf({}));
        const std::unique_ptr<QIODevice> from = content();
        isWritten = device && copy(*from, *device);
        zip.releaseFile(device);
        if (device && !isWritten)
            zip.discard(from->errorString()); // unless the disk was the first to fail
    }
    if (!isWritten || !zip.close())
        return SaveResult::failed(name, zip.errorString());
    return {true, true, {}};
}

} // namespace sessionfiles
