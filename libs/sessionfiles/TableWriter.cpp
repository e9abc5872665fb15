// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/TableWriter.h"

#include "private/PrintableText.h"

#include <QIODevice>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace sessionfiles {

namespace {

// A float has no more digits that mean something.
constexpr int significantDigits = 7;

bool isFraction(const QVariant &value)
{
    const auto type = value.userType();
    return type == QMetaType::Float || type == QMetaType::Double;
}

// A spreadsheet computes a cell that begins with one of these, the wide forms of Japanese and
// Chinese keyboards among them.
bool isFormula(const QString &text)
{
    static const QString signs = QStringLiteral("=+-@\uff1d\uff0b\uff0d\uff20");
    if (text.isEmpty() || !signs.contains(text.at(0)))
        return false;
    bool isNumber = false;
    text.toDouble(&isNumber);
    return !isNumber;
}

class CsvWriter final : public TableWriter {
public:
    CsvWriter(QIODevice *device, const QString &separator, Texts texts)
        : TableWriter(device), m_separator(separator), m_texts(texts),
          m_decimalSign(separator == QLatin1String(";") ? QLatin1Char(',') : QLatin1Char('.'))
    {
    }

    bool begin(const QVector<Column> &columns) override
    {
        Row titles;
        for (const Column &column : columns) {
            titles.append(column.unit.isEmpty()
                              ? column.name
                              : QStringLiteral("%1 (%2)").arg(column.name, column.unit));
        }
        return write(titles);
    }

    bool write(const Row &row) override
    {
        QString line;
        for (int i = 0; i < row.size(); ++i) {
            if (i > 0)
                line += m_separator;
            line += quoted(text(row.at(i)));
        }
        return put((line + QLatin1String("\r\n")).toUtf8());
    }

    bool end() override { return true; }

    void beginPart(const QVector<Column> & /*columns*/) override { }

private:
    QString text(const QVariant &value) const
    {
        if (value.userType() == QMetaType::Bool)
            return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
        if (value.userType() == QMetaType::QString && m_texts == Texts::Harmless) {
            const QString text = PrintableText::escaped(value.toString());
            return isFormula(text) ? QLatin1Char('\'') + text : text;
        }
        if (!isFraction(value))
            return value.toString();
        return QString::number(value.toDouble(), 'g', significantDigits)
            .replace(QLatin1Char('.'), m_decimalSign);
    }

    QString quoted(QString cell) const
    {
        const bool needsQuotes = cell.contains(m_separator) || cell.contains(QLatin1Char('"'))
            || cell.contains(QLatin1Char('\n')) || cell.contains(QLatin1Char('\r'));
        if (!needsQuotes)
            return cell;
        return QLatin1Char('"') + cell.replace(QLatin1Char('"'), QLatin1String("\"\""))
            + QLatin1Char('"');
    }

    QString m_separator;
    Texts m_texts;
    QChar m_decimalSign;
};

class JsonWriter final : public TableWriter {
public:
    explicit JsonWriter(QIODevice *device) : TableWriter(device) { }

    bool begin(const QVector<Column> &columns) override
    {
        beginPart(columns);
        return put("[");
    }

    bool write(const Row &row) override
    {
        QJsonObject object;
        for (int i = 0; i < row.size(); ++i) {
            const QVariant &value = row.at(i);
            if (value.isValid())
                object.insert(m_columns.at(i).name, toJson(value));
        }
        const QByteArray separator = m_isFirst ? "\n" : ",\n";
        m_isFirst = false;
        const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
        return put(separator + PrintableText::escaped(QString::fromUtf8(text)).toUtf8());
    }

    bool end() override { return put("\n]\n"); }

    void beginPart(const QVector<Column> &columns) override { m_columns = columns; }

private:
    static QJsonValue toJson(const QVariant &value)
    {
        // Through its text, so that a float 51.2 does not become 51.20000076293945.
        if (isFraction(value) && std::isfinite(value.toDouble()))
            return QString::number(value.toDouble(), 'g', significantDigits).toDouble();
        return QJsonValue::fromVariant(value);
    }

    QVector<Column> m_columns;
    bool m_isFirst = true;
};

} // namespace

TableWriter::TableWriter(QIODevice *device) : m_device(device)
{
}

TableWriter::~TableWriter() = default;

bool TableWriter::put(const QByteArray &bytes)
{
    return m_device && m_device->write(bytes) == bytes.size();
}

std::unique_ptr<TableWriter> TableWriter::csv(QIODevice *device, const QString &separator,
                                              Texts texts)
{
    return std::make_unique<CsvWriter>(device, separator, texts);
}

std::unique_ptr<TableWriter> TableWriter::json(QIODevice *device)
{
    return std::make_unique<JsonWriter>(device);
}

} // namespace sessionfiles
