// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "RecordSource.h"

#include <manikinlog/FileChange.h>
#include <manikinlog/ManikinLogReader.h>
#include <manikinsim/Simulator.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace {

using manikinlog::ManikinLogReader;

class SimulatedSource final : public RecordSource {
public:
    SimulatedSource(const manikinsim::Scenario &scenario, quint64 seed)
        : m_simulator(scenario, seed)
    {
    }
    bool next(manikinlog::Record &record) override { return m_simulator.next(record); }

private:
    manikinsim::Simulator m_simulator;
};

class LogSource final : public RecordSource {
public:
    explicit LogSource(const QString &name) : m_file(name), m_reader(&m_file, name)
    {
        m_reader.setGrowing(true);
    }
    bool open() { return QFileInfo(m_file).isFile() && m_file.open(QIODevice::ReadOnly); }
    bool next(manikinlog::Record &record) override
    {
        const ManikinLogReader::Result result = m_reader.read(record);
        if (result == ManikinLogReader::Result::Record)
            return true;
        if (result == ManikinLogReader::Result::Error) {
            m_end = QCoreApplication::translate("cprviewer",
                                                "%1 is damaged in line %2; the session ends there")
                        .arg(m_file.fileName(), QString::number(m_reader.line()));
            return false;
        }
        const manikinlog::FileChange change = manikinlog::changeOf(m_file);
        if (change == manikinlog::FileChange::Gone)
            m_end = QCoreApplication::translate("cprviewer", "%1 is not there any more")
                        .arg(m_file.fileName());
        else if (change != manikinlog::FileChange::None)
            m_end = QCoreApplication::translate("cprviewer", "%1 was cut or replaced")
                        .arg(m_file.fileName());
        return false;
    }
    bool canGrow() const override { return m_end.isEmpty(); }
    QString errorString() const override { return m_end; }

private:
    QFile m_file;
    ManikinLogReader m_reader;
    QString m_end; // why there will be no more of it
};

} // namespace

RecordSource::~RecordSource() = default;

std::unique_ptr<RecordSource> RecordSource::simulated(const manikinsim::Scenario &scenario,
                                                      quint64 seed)
{
    return std::make_unique<SimulatedSource>(scenario, seed);
}

std::unique_ptr<RecordSource> RecordSource::log(const QString &name, QString *error)
{
    auto source = std::make_unique<LogSource>(name);
    if (source->open())
        return source;
    *error = QCoreApplication::translate("cprviewer", "%1 cannot be read; is it there and a file?")
                 .arg(name);
    return nullptr;
}
