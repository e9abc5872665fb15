// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_H
#define TESTSUPPORT_H

#include "CPRData.h"

#include <chestboard/RMessage.h>

#include <QByteArray>
#include <QEventLoop>
#include <QMetaObject>
#include <QQmlPropertyMap>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <QVector>

#include <cstddef>
#include <initializer_list>

/// What several tests need to speak like a manikin.
namespace TestSupport {

constexpr QLatin1String operator""_l1(const char *text, std::size_t size)
{
    return QLatin1String(text, static_cast<int>(size));
}

/// Adds columns of texts and rows that hold their name and one text per column, separated by '|'.
inline void addRows(std::initializer_list<const char *> columns,
                    std::initializer_list<const char *> rows)
{
    for (const char *column : columns)
        QTest::addColumn<QString>(column);
    for (const char *row : rows) {
        const QList<QByteArray> cells = QByteArray(row).split('|');
        QTestData &data = QTest::newRow(cells.first().constData());
        for (const QByteArray &cell : cells.mid(1))
            data << QString::fromUtf8(cell);
    }
}

/// The content bytes, index 0 first.
inline QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray content;
    for (int value : values)
        content.append(static_cast<char>(value));
    return content;
}

/// A content of \a size bytes in which every index holds its own number (plus \a offset), so that
/// a swapped or shifted byte shows in the value.
inline QByteArray numberedBytes(int size, int offset = 0)
{
    QByteArray content;
    for (int i = 0; i < size; ++i)
        content.append(static_cast<char>(i + offset));
    return content;
}

/// Hands one message to the session as the link does.
inline bool send(CPRData &session, quint32 identifier, const QByteArray &content,
                 qint32 sequence = 0)
{
    bls_2010::RMessage message(identifier, content, bls_2010::HeaderElement(sequence));
    return session.incomingMsg(&message);
}

/// Brings a new session to the running state.
inline void start(CPRData &session)
{
    session.setCprState(CPRData::CPR_MANIKIN_INIT);
    session.setCprState(CPRData::CPR_INIT);
    session.setCprState(CPRData::CPR_START);
}

/// The int value of a parameter, and a value that no test uses when it is not there.
inline int intOf(const CPREventBase *event, CPREventBase::ParameterType type)
{
    return event->parameterValue(type, QVariant(-987654)).toInt();
}

inline QString textOf(const CPREventBase *event, CPREventBase::ParameterType type)
{
    return event->parameterValue(type, QVariant()).toString();
}

/// What numberOf() gives for a parameter that is not there.
constexpr double missing = -987654;

/// The number under \a name, a property of the event or else a parameter, to hundredths.
inline double numberOf(const CPREventBase *event, const QByteArray &name)
{
    const QString key = QString::fromLatin1(name);
    QVariant value = missing;
    if (event->metaObject()->indexOfProperty(name.constData()) >= 0)
        value = event->property(name.constData());
    else if (event->params() && event->params()->contains(key))
        value = event->params()->value(key);
    return qRound64(value.toDouble() * 100) / 100.0;
}

/// The same for several names, separated by blanks.
inline QVector<double> numbersOf(const CPREventBase *event, const QByteArray &names)
{
    QVector<double> numbers;
    for (const QByteArray &name : names.split(' '))
        numbers.append(numberOf(event, name));
    return numbers;
}

/// Writes down in one list which signals come, so that their order across objects shows.
class Recorder {
public:
    template <typename Sender, typename Signal>
    void watch(const Sender *sender, Signal signal, const QString &name)
    {
        QObject::connect(sender, signal, &m_context, [this, name] { m_heard.append(name); });
    }
    /// What was heard since the last call, separated by blanks.
    QString take()
    {
        const QString text = m_heard.join(QLatin1Char(' '));
        m_heard.clear();
        return text;
    }

private:
    QStringList m_heard;
    QObject m_context; // dies first, and the connections with it
};

/// Lets the timers run out by which the objects announce their changes. They come before the loop's
/// end however long the machine does something else.
inline void settle()
{
    QEventLoop loop;
    QTimer::singleShot(20, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace TestSupport

#endif
