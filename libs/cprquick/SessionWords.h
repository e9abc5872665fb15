// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_SESSIONWORDS_H
#define CPRQUICK_SESSIONWORDS_H

#include "cprquick_export.h"

#include <QObject>
#include <QPointer>
#include <QVariant>
#include <QVector>
#include <QtQml/qqml.h>

namespace cprquick {

/// What the values of a session are called in front of people; in QML the singleton Words.
///
/// Parameters go by their key text ("compMeanDepth"), as in an event's params: QML cannot name the
/// keys of CPREventBase.ParameterType, which begin with a small letter.
class CPRQUICK_EXPORT SessionWords : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Words)
    QML_SINGLETON

public:
    /// The engine makes the one that QML calls Words.
    explicit SessionWords(QObject *parent = nullptr);
    ~SessionWords() override;

    /// A kind of event (CPREventBase.EventType).
    Q_INVOKABLE QString eventType(int type) const;
    /// A parameter without its unit; empty for a key that is none, as the next two.
    Q_INVOKABLE QString parameter(const QString &key) const;
    /// The unit in which value() shows a parameter.
    Q_INVOKABLE QString unit(const QString &key) const;
    /// A parameter's value with its unit.
    Q_INVOKABLE QString value(const QString &key, const QVariant &value) const;
    /// A text that a session or a file name holds, to be shown on a line: cut where no line is so
    /// long, line breaks as blanks, and escaped what cannot be seen. Show it as Text.PlainText.
    Q_INVOKABLE QString shown(const QString &text) const;
    /// An advice (CPREventBase.Advice) as a sentence; empty for none.
    Q_INVOKABLE QString advice(int advice) const;
    /// A CPR protocol, 0 to 5.
    Q_INVOKABLE QString protocol(int protocol) const;
    /// What an instructor remarks with the keys 1 to 9, as it is stored.
    Q_INVOKABLE QStringList quickRemarks() const;
    /// A stored remark as it is shown.
    Q_INVOKABLE QString remark(const QString &stored) const;
    /// ms of session time: m:ss, or h:mm:ss from two hours on, with tenths when asked for.
    Q_INVOKABLE QString time(int msecs, bool withTenths = false) const;
    /// Has screen readers say the accessible name of \a item, as something has happened: once,
    /// after all of what happens now, and only while the item is visible and has a name.
    Q_INVOKABLE void announce(QObject *item);

private:
    void say();

    QVector<QPointer<QObject>> m_announced; // not said yet
};

} // namespace cprquick

#endif
