// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef XMLOUTPUT_H
#define XMLOUTPUT_H

#include <QByteArray>
#include <QIODevice>

/// A document on its way from the XML writer into its member, in pieces: the events of a long
/// session as one text would take a hundred megabytes.
///
/// On a device the writer names the encoding in the first line. The format has none there, so it
/// is left out.
class XmlOutput final : public QIODevice {
public:
    /// \a member is open for writing and not owned.
    explicit XmlOutput(QIODevice *member);

    /// Passes on what is left. False when the member did not take everything.
    bool finish();

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    void passOn();

    QIODevice *m_member; // not owned
    QByteArray m_piece;
    bool m_isFirst = true;
    bool m_isWritten = true;
};

#endif
