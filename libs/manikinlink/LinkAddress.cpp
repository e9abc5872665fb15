// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkAddress.h"

#include "manikinlog/RecordText.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStandardPaths>

namespace manikinlink {

std::optional<LinkAddress> LinkAddress::parse(const QString &text, QString *error)
{
    LinkAddress address;
    const auto refuse = [error](const QString &why) {
        if (error)
            *error = why;
        return std::nullopt;
    };
    const QString way = text.section(QLatin1Char(':'), 0, 0);
    const QString rest = text.mid(way.size() + 1);
    const auto toPort = [&address](const QString &digits) {
        static const QRegularExpression number(QStringLiteral("^[0-9]{1,5}\\z"));
        bool ok = number.match(digits).hasMatch();
        address.m_port = ok ? digits.toUShort(&ok) : 0;
        return ok;
    };
    if (text == QLatin1String("-"))
        return address;
    if (way == QLatin1String("local")) {
        address.m_way = Way::Local;
        address.m_name = rest;
        if (manikinlog::RecordText::isToken(rest))
            return address;
        return refuse(QCoreApplication::translate(
            "manikinlink",
            "local:NAME takes a name of at most 64 letters, digits, dots, underscores and "
            "hyphens"));
    }
    if (way == QLatin1String("tcp")) {
        address.m_way = Way::Tcp;
        if (toPort(rest))
            return address;
        return refuse(QCoreApplication::translate(
            "manikinlink",
            "tcp:PORT takes a port from 0 to 65535, on this machine alone; "
            "mqtt:HOST:PORT/SITE reaches others"));
    }
    if (way == QLatin1String("mqtt")) {
        static const QRegularExpression form(
            QStringLiteral("^(?:\\[([0-9A-Fa-f:.]{2,64})\\]|([A-Za-z0-9.-]{1,253})):([0-9]{1,5})"
                           "/([^/]+)\\z"));
        const QRegularExpressionMatch match = form.match(rest);
        address.m_way = Way::Mqtt;
        address.m_host = match.captured(1) + match.captured(2);
        address.m_site = match.captured(4);
        if (match.hasMatch() && toPort(match.captured(3)) && address.m_port != 0
            && manikinlog::RecordText::isToken(address.m_site))
            return address;
        return refuse(QCoreApplication::translate(
            "manikinlink",
            "mqtt:HOST:PORT/SITE takes a host's name or address, a port and a site of at most "
            "64 letters, digits, dots, underscores and "
            "hyphens"));
    }
    return refuse(QCoreApplication::translate(
        "manikinlink", "an address is tcp:PORT, local:NAME, mqtt:HOST:PORT/SITE or -"));
}

std::optional<QString> LinkAddress::socketFile() const
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (m_way != Way::Local || folder.isEmpty())
        return std::nullopt;
    return folder + QLatin1Char('/') + m_name;
}

LinkAddress LinkAddress::withPort(quint16 port) const
{
    LinkAddress address = *this;
    address.m_port = port;
    return address;
}

QString LinkAddress::text() const
{
    const bool isIPv6 = m_host.contains(QLatin1Char(':'));
    switch (m_way) {
    case Way::Local:
        return QStringLiteral("local:") + m_name;
    case Way::Tcp:
        return QStringLiteral("tcp:%1").arg(m_port);
    case Way::Mqtt:
        return QStringLiteral("mqtt:%1:%2/%3")
            .arg(isIPv6 ? QLatin1Char('[') + m_host + QLatin1Char(']') : m_host,
                 QString::number(m_port), m_site);
    case Way::StandardStream:
        break;
    }
    return QStringLiteral("-");
}

} // namespace manikinlink
