// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTS_MANIKINLINK_BROKER_H
#define TESTS_MANIKINLINK_BROKER_H

#include "support/Program.h"

#include <QDebug>
#include <QFile>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QThread>

/// A broker of its own for a test, on a port of this machine that is free, in a temporary folder.
/// Its authority and its members are made by examples/broker/room.
class Broker {
public:
    /// Whether the programs are there that it needs.
    static bool isInstalled()
    {
        return QFile::exists(program()) && !QStandardPaths::findExecutable("openssl").isEmpty();
    }
    ~Broker() { kill(); }

    /// Runs the script with these arguments; false, and what it said is printed, when it fails.
    bool room(const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PORT", QString::number(port()));
        const auto answer = testsupport::run(QStringLiteral(EXAMPLES_DIR "/broker/room"),
                                             QStringList{path({})} + arguments, {}, environment);
        if (answer.status != 0)
            qWarning() << answer.errors;
        return answer.status == 0;
    }

    /// Starts it, and waits until it listens. After kill() it goes on with what it had stored.
    bool start()
    {
        // A broker that root starts would become another user, who cannot read the folder.
        QFile configuration(path("test.conf"));
        QFile made(path("mosquitto.conf"));
        if (!made.open(QIODevice::ReadOnly) || !configuration.open(QIODevice::WriteOnly))
            return false;
        configuration.write("user root\n" + made.readAll());
        configuration.close();
        m_process.setStandardErrorFile(path("log"));
        m_process.start(program(), {"-c", configuration.fileName()});
        for (int attempt = 0; attempt < 500; ++attempt) {
            QTcpSocket socket;
            socket.connectToHost("127.0.0.1", port());
            if (socket.waitForConnected(100))
                return true;
            QThread::msleep(10);
        }
        return false;
    }

    /// Ends it as a crash does.
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    quint16 port() const { return m_port; }
    QString path(const QString &name) const { return m_folder.path() + '/' + name; }

    /// Arguments of the broker's command line clients: who a member is.
    QStringList loginOf(const QString &member) const
    {
        return certificateOf(member) + QStringList{"-u", member, "-P", passwordOf(member)};
    }
    QStringList certificateOf(const QString &member) const
    {
        const QString own = path("members/" + member + '/' + member);
        return {"--cert", own + ".crt", "--key", own + ".key"};
    }
    QString passwordOf(const QString &member) const
    {
        QFile environment(path("members/" + member + "/environment"));
        if (!environment.open(QIODevice::ReadOnly))
            return {};
        const QString text = environment.readAll();
        return text.section("CPRLINK_PASSWORD=", 1).section('\n', 0, 0);
    }
    /// And where the broker is.
    QStringList address() const
    {
        return {"-h", "127.0.0.1", "-p", QString::number(port()), "--cafile", path("ca.crt")};
    }

private:
    static QString program()
    {
        return QStandardPaths::findExecutable("mosquitto", {"/usr/sbin", "/usr/bin", "/sbin"});
    }

    static quint16 freePort()
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return server.serverPort();
    }

    QTemporaryDir m_folder;
    const quint16 m_port = freePort();
    QProcess m_process;
};

#endif
