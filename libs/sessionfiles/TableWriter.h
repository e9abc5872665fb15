// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_TABLEWRITER_H
#define SESSIONFILES_TABLEWRITER_H

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>

class QIODevice;

namespace sessionfiles {

/// Writes a table row by row, so that a long one never stands in memory. Texts are UTF-8, and
/// numbers do not depend on the locale.
class TableWriter {
public:
    /// The head of a column.
    struct Column {
        QString name; ///< for people and programs alike
        QString unit; ///< empty when there is none
    };
    using Row = QVector<QVariant>; ///< a value per column; an invalid one is an empty cell

    /// How CSV holds texts; numbers are always numbers.
    enum class Texts {
        Harmless, ///< no spreadsheet takes one for a formula: an apostrophe stands before what
                  ///< could be one; characters that cannot be seen, line breaks too, are escaped
        Raw ///< as the session has them, for programs
    };

    /// CSV as RFC 4180 has it. With ';' as \a separator the decimal sign is a comma: that is how
    /// spreadsheets in such a locale read it; with any other it is a dot.
    static std::unique_ptr<TableWriter> csv(QIODevice *device, const QString &separator,
                                            Texts texts = Texts::Harmless);
    /// A JSON array with an object per row; empty cells are left out.
    static std::unique_ptr<TableWriter> json(QIODevice *device);

    virtual ~TableWriter();
    TableWriter(const TableWriter &) = delete;
    TableWriter &operator=(const TableWriter &) = delete;

    /// @{ First the heads, then each row, then the end. Each returns false when the device does not
    /// take everything.
    virtual bool begin(const QVector<Column> &columns) = 0;
    virtual bool write(const Row &row) = 0;
    virtual bool end() = 0;
    /// @}
    /// Instead of begin(): only rows are written, a part of a table that is put together elsewhere.
    virtual void beginPart(const QVector<Column> &columns) = 0;

protected:
    /// \a device is open for writing and is not owned.
    explicit TableWriter(QIODevice *device);
    /// Writes to the device; false when that does not take everything.
    bool put(const QByteArray &bytes);

private:
    QIODevice *m_device;
};

} // namespace sessionfiles

#endif
