// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_ARCHIVEFILE_H
#define SESSIONFILES_ARCHIVEFILE_H

#include <QFile>

#include <optional>

namespace sessionfiles {

/// A file that remembers that it could not be read: what QIODevice gives as bytes is shorter then,
/// just as at the end.
class ArchiveFile final : public QFile {
public:
    using QFile::QFile;

    /// Why it could not be read; none as long as it could.
    const std::optional<QString> &failure() const { return m_failure; }

    /// @{
    /// See QFile.
    bool open(OpenMode mode) override { return QFile::open(mode) || fail(); }
    bool seek(qint64 position) override { return QFile::seek(position) || fail(); }
    /// @}

protected:
    /// See QIODevice.
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 count = QFile::readData(data, maxSize);
        if (count < 0)
            fail();
        return count;
    }

private:
    bool fail()
    {
        m_failure = m_failure.value_or(errorString());
        return false;
    }

    std::optional<QString> m_failure;
};

} // namespace sessionfiles

#endif
