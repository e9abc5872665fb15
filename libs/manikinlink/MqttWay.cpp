// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/MqttWay.h"

#include "manikinlink/LinkText.h"
#include "manikinlog/RecordText.h"

#include <QPointer>

#include <algorithm>
#include <cstring>
#include <utility>

namespace manikinlink {

namespace {

constexpr int askAgainMs = 2000; // for batches that are missing
constexpr int sweepMs = 10000; // for manikins that are gone
// Of one manikin: whoever may write its topic could open any number.
constexpr int maxStreams = 4; // at a time
constexpr int maxStreamsPerSecond = 8;
const QByteArray gone = QByteArrayLiteral("gone");

QByteArray topicOf(const LinkAddress &address)
{
    return "cprlink/" + address.site().toLatin1() + '/';
}

// The first line of \a payload, without its end, and cuts it off there. Empty where no line ends.
QByteArray cutLine(QByteArray &payload)
{
    const auto size = payload.indexOf('\n');
    const QByteArray line = payload.left(size);
    payload = size < 0 ? QByteArray() : payload.mid(size + 1);
    return line;
}

// Of a batch line; 0 for another line.
quint32 batchOf(const QByteArray &line)
{
    const auto said = LinkText::parseLine(line);
    const auto *record = said ? std::get_if<manikinlog::Record>(&*said) : nullptr;
    const auto *batch = record ? std::get_if<manikinlog::Batch>(&record->entry) : nullptr;
    return batch ? batch->number : 0;
}

// With its end.
QByteArray lineOf(const manikinlog::Record &record)
{
    const auto line = manikinlog::RecordText::text(record);
    return line ? *line + '\n' : QByteArray();
}

// If \a lines is one control line.
std::optional<LinkText::Control::Kind> controlOf(const QByteArray &lines)
{
    if (lines.isEmpty() || lines.indexOf('\n') != lines.size() - 1)
        return std::nullopt;
    const auto said = LinkText::parseLine(lines.chopped(1));
    const auto *control = said ? std::get_if<LinkText::Control>(&*said) : nullptr;
    return control ? std::optional(control->kind) : std::nullopt;
}

// Calls \a handle with each answer that is in \a lines.
template <typename Handler> void forAnswers(const QByteArray &lines, Handler handle)
{
    for (const QByteArray &line : lines.split('\n')) {
        if (const auto answer = LinkText::parseAnswer(line))
            handle(*answer);
    }
}

} // namespace

MqttDevice::MqttDevice()
{
    open(QIODevice::ReadWrite | QIODevice::Unbuffered);
}

bool MqttDevice::canReadLine() const
{
    return m_waiting.contains('\n') || QIODevice::canReadLine();
}

qint64 MqttDevice::bytesAvailable() const
{
    return m_waiting.size() + QIODevice::bytesAvailable();
}

void MqttDevice::append(const QByteArray &lines)
{
    m_waiting += lines;
    if (!lines.isEmpty())
        Q_EMIT readyRead();
}

qint64 MqttDevice::readData(char *data, qint64 maxSize)
{
    const auto size = std::min<qint64>(maxSize, m_waiting.size());
    std::memcpy(data, m_waiting.constData(), std::size_t(size));
    m_waiting.remove(0, int(size));
    return size;
}

MqttSource::MqttSource(const QByteArray &firstLine, std::function<void(const QByteArray &)> answer)
    : m_answer(std::move(answer))
{
    append(firstLine + '\n');
}

void MqttSource::receive(const QByteArray &lines)
{
    QByteArray behind = lines;
    const quint32 batch = batchOf(cutLine(behind));
    if (batch == 0)
        behind = lines;
    const auto control = controlOf(behind);
    // A control line comes with the batch line of what was sent before it. A beat goes on even so:
    // it says that the sender lives.
    const bool isMissed = m_next == 0 || (control ? batch >= m_next : batch > m_next);
    const bool isBeat = control == LinkText::Control::Kind::Beat;
    const bool isWanted = control ? !isMissed || isBeat : batch != 0 && batch == m_next;
    if (isMissed)
        m_hasGap = true;
    if (batch != 0 && !control)
        m_lowest = m_lowest == 0 ? batch : std::min(m_lowest, batch);
    if (isWanted && hasRoom(lines.size())) {
        if (!control) {
            ++m_next;
            m_hasGap = false;
        }
        append(control ? behind : lines);
    } else if (isWanted && !isBeat) {
        m_hasGap = true;
    }
    if (m_hasGap)
        askAgain();
}

// The sender begins again behind what is safe. What it repeats may be lost as well, so that this is
// done again after a while. A sender that begins twice with the same later batch has forgotten
// those before, as somebody has acknowledged them; it goes on from there.
void MqttSource::askAgain()
{
    if (m_next == 0 || !m_sinceAsked.hasExpired(askAgainMs))
        return;
    m_sinceAsked.start();
    if (m_lowest > m_next && m_lowest == m_lowestBefore)
        m_next = m_lowest;
    m_lowestBefore = std::exchange(m_lowest, 0);
    m_answer(LinkText::text({LinkText::Answer::Kind::Welcome, m_safe, {}}) + '\n');
}

qint64 MqttSource::writeData(const char *data, qint64 size)
{
    const QByteArray lines(data, int(size));
    forAnswers(lines, [this](const LinkText::Answer &answer) {
        if (answer.kind == LinkText::Answer::Kind::Ack)
            m_safe = answer.batch;
        if (answer.kind != LinkText::Answer::Kind::Welcome)
            return;
        m_safe = answer.batch;
        m_next = answer.batch + 1;
        m_lowest = m_lowestBefore = 0; // what came before says nothing of what the sender has
        m_hasGap = false;
        m_sinceAsked.start();
    });
    m_answer(lines);
    return size;
}

void MqttSource::end()
{
    Q_EMIT readChannelFinished();
}

// A manikin that was described: a connection of its own, so that a flood of one delays no other.
class MqttListener::Manikin final : public QObject {
public:
    Manikin(MqttListener *listener, const QByteArray &id)
        : QObject(listener), m_add(listener->m_add), m_id(id), m_topic(listener->m_site + id),
          m_connection(listener->m_login)
    {
        m_connection.setTopics({m_topic + "/stream", m_topic + "/about"});
        connect(&m_connection, &MqttConnection::received, this, &Manikin::onMessage);
        // Whether the manikins are still there is not known: they say it by their next lines.
        connect(&m_connection, &MqttConnection::lost, this, [this] {
            for (const auto &source : std::exchange(m_sources, {})) {
                if (source)
                    source->end();
            }
        });
        m_connection.keepOpen();
    }

    // Somebody still reads a stream of it.
    bool isInUse() const
    {
        return std::any_of(m_sources.begin(), m_sources.end(),
                           [](const auto &source) { return isOpen(source); });
    }
    bool isGone = false; // as its description says

private:
    static bool isOpen(const QPointer<MqttSource> &source) { return source && source->isOpen(); }

    void onMessage(const MqttMessage &message)
    {
        QByteArray lines = message.payload;
        const QByteArray first = cutLine(lines);
        const auto ids = LinkText::parseFirstLine(first);
        if (!ids || ids->manikin.toLatin1() != m_id)
            return;
        const QPointer<MqttSource> source = m_sources.value(first);
        const bool isStream = message.topic.endsWith("/stream");
        if (!isStream && lines.startsWith(gone)) {
            if (isOpen(source))
                source->end();
        } else if (isStream && message.isRetained) {
            return; // nobody may leave lines for later receivers
        } else if (!isOpen(source) || (isStream && lines.isEmpty())) {
            // A first line alone begins anew: the sender has come back. A description that the
            // broker has kept is of a sender whose first line came before this was subscribed.
            if (isStream || message.isRetained)
                addSource(first, !isStream);
        } else if (isStream) {
            source->receive(lines);
        }
    }

    void addSource(const QByteArray &first, bool isDescribed)
    {
        for (auto it = m_sources.begin(); it != m_sources.end();)
            it = isOpen(*it) ? std::next(it) : m_sources.erase(it);
        if (!m_second.isValid() || m_second.hasExpired(1000)) {
            m_second.start();
            m_added = 0;
        }
        if (m_sources.size() >= maxStreams || ++m_added > maxStreamsPerSecond)
            return;
        // The device belongs to the receiver, which may keep it for longer than this is here.
        auto source = std::make_unique<MqttSource>(
            first,
            [connection = QPointer<MqttConnection>(&m_connection), topic = m_topic + "/answer",
             first](const QByteArray &lines) {
                if (connection)
                    connection->publish(topic, first + '\n' + lines);
            });
        m_sources.insert(first, source.get());
        m_add(std::move(source), isDescribed);
    }

    const Add m_add;
    const QByteArray m_id;
    const QByteArray m_topic; // without its last level
    QHash<QByteArray, QPointer<MqttSource>> m_sources; // by the stream's first line
    QElapsedTimer m_second;
    int m_added = 0; // in m_second
    MqttConnection m_connection;
};

std::unique_ptr<MqttListener> MqttListener::listen(const LinkAddress &address, const Add &add,
                                                   QString *error)
{
    const auto login = MqttLogin::of(address, error);
    if (!login)
        return nullptr;
    return std::unique_ptr<MqttListener>(new MqttListener(*login, topicOf(address), add));
}

MqttListener::MqttListener(MqttLogin login, const QByteArray &site, Add add)
    : m_login(std::move(login)), m_site(site), m_add(std::move(add)), m_connection(m_login)
{
    m_connection.setTopics({m_site + "+/about"});
    connect(&m_connection, &MqttConnection::received, this, &MqttListener::onAbout);
    connect(&m_connection, &MqttConnection::opened, this, [this] { m_reason.clear(); });
    connect(&m_connection, &MqttConnection::lost, this, [this](const QString &reason) {
        if (std::exchange(m_reason, reason) != reason)
            Q_EMIT lost(reason);
    });
    connect(&m_sweep, &QTimer::timeout, this, &MqttListener::sweep);
    m_sweep.start(sweepMs);
    m_connection.keepOpen();
}

void MqttListener::onAbout(const MqttMessage &message)
{
    const QByteArray id = message.topic.mid(m_site.size()).chopped(int(std::strlen("/about")));
    QByteArray lines = message.payload;
    const auto ids = LinkText::parseFirstLine(cutLine(lines));
    const bool isGone = !ids || lines.startsWith(gone);
    Manikin *&manikin = m_manikins[id];
    if (!manikin && !isGone && ids->manikin.toLatin1() == id && m_manikins.size() <= maxManikins)
        manikin = new Manikin(this, id);
    if (manikin)
        manikin->isGone = isGone;
    else
        m_manikins.remove(id);
}

void MqttListener::sweep()
{
    for (auto it = m_manikins.begin(); it != m_manikins.end();) {
        if ((*it)->isGone && !(*it)->isInUse()) {
            delete *it;
            it = m_manikins.erase(it);
        } else {
            ++it;
        }
    }
}

std::unique_ptr<MqttTarget> MqttTarget::connectTo(const LinkAddress &address,
                                                  const manikinlog::Stream &stream, QString *error)
{
    const auto login = MqttLogin::of(address, error);
    if (!login)
        return nullptr;
    return std::unique_ptr<MqttTarget>(new MqttTarget(
        *login, topicOf(address) + stream.manikin.toLatin1(), LinkText::firstLine(stream) + '\n'));
}

MqttTarget::MqttTarget(MqttLogin login, const QByteArray &topic, const QByteArray &firstLine)
    : m_topic(topic), m_firstLine(firstLine), m_description(firstLine),
      m_connection(std::move(login))
{
    m_connection.setTopics({m_topic + "/answer"});
    m_connection.setWill(m_topic + "/about", m_firstLine + gone + '\n');
    connect(&m_connection, &MqttConnection::opened, this, [this] {
        describe();
        Q_EMIT connected();
    });
    connect(&m_connection, &MqttConnection::lost, this, &MqttTarget::disconnected);
    connect(&m_connection, &MqttConnection::received, this, &MqttTarget::onAnswer);
    connect(&m_connection, &MqttConnection::acknowledged, this, &QIODevice::bytesWritten);
    m_connection.open();
}

void MqttTarget::setName(const QString &name)
{
    m_description = m_firstLine + lineOf({0, manikinlog::ManikinName{name}});
    describe();
}

void MqttTarget::describe()
{
    m_connection.publish(m_topic + "/about", m_description, true);
}

void MqttTarget::close()
{
    if (m_saidBye) {
        m_connection.publish(m_topic + "/about", {}, true);
        m_connection.close();
    } else {
        m_connection.abandon();
    }
    MqttDevice::close();
}

qint64 MqttTarget::bytesToWrite() const
{
    return m_connection.unacknowledged();
}

// Answers to other streams of the manikin come as well.
void MqttTarget::onAnswer(const MqttMessage &message)
{
    const QByteArray lines = message.payload.mid(int(m_firstLine.size()));
    if (message.isRetained || !message.payload.startsWith(m_firstLine) || !hasRoom(lines.size()))
        return;
    forAnswers(lines, [this](const LinkText::Answer &answer) {
        if (answer.kind == LinkText::Answer::Kind::Welcome)
            m_batchLine =
                answer.batch != 0 ? lineOf({0, manikinlog::Batch{answer.batch}}) : QByteArray();
    });
    append(lines);
}

qint64 MqttTarget::writeData(const char *data, qint64 size)
{
    QByteArray lines(data, int(size));
    QByteArray behind = lines;
    const QByteArray first = cutLine(behind);
    if (lines == m_firstLine) {
        lines.clear();
    } else if (batchOf(first) > 0) {
        m_batchLine = first + '\n';
    } else {
        m_saidBye = controlOf(lines) == LinkText::Control::Kind::Bye;
        lines.prepend(m_batchLine);
    }
    if (m_connection.publish(m_topic + "/stream", m_firstLine + lines))
        return size;
    setErrorString(tr("the broker cannot be reached"));
    return -1;
}

} // namespace manikinlink
