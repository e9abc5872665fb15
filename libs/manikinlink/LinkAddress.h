// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_LINKADDRESS_H
#define MANIKINLINK_LINKADDRESS_H

#include <QString>
#include <QtGlobal>

#include <optional>

namespace manikinlink {

/// Where a link is listened at, or where it leads to.
///
///     -                        standard input or output
///     local:NAME               a local socket of this user
///     tcp:PORT                 a port of this machine, 0 for a free one; never another machine's
///     mqtt:HOST:PORT/SITE      a broker; an IPv6 address stands in brackets
class LinkAddress {
public:
    /// How the lines travel.
    enum class Way {
        StandardStream, ///< a pipe: one stream, and no answers
        Local, ///< a local socket
        Tcp, ///< a socket of 127.0.0.1
        Mqtt ///< topics of a broker
    };

    /// Null, with the reason for people in \a error (may be null), for a text that is no address.
    static std::optional<LinkAddress> parse(const QString &text, QString *error = nullptr);

    /// Standard input or output.
    LinkAddress() = default;

    /// How the lines travel.
    Way way() const { return m_way; }

    /// Of tcp and mqtt; 0 with the other ways.
    quint16 port() const { return m_port; }
    /// Of local: an id, see RecordText::isToken(). Empty with other ways.
    QString name() const { return m_name; }
    /// Of mqtt: a host's name or address, without brackets. Empty with other ways.
    QString host() const { return m_host; }
    /// Of mqtt: it keeps the manikins of several rooms apart; an id as well. Empty with other ways.
    QString site() const { return m_site; }

    /// The file of the local socket. Null with other ways, and when there is no folder that is this
    /// user's alone.
    std::optional<QString> socketFile() const;

    /// The same address with another port, such as the one that was found to be free.
    LinkAddress withPort(quint16 port) const;
    /// What parse() reads.
    QString text() const;

private:
    Way m_way = Way::StandardStream;
    quint16 m_port = 0;
    QString m_name;
    QString m_host;
    QString m_site;
};

} // namespace manikinlink

#endif
