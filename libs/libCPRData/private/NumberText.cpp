// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "private/NumberText.h"

#include <QLocale>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace NumberText {

namespace {

// A text of digits, a decimal point and a leading minus, beginning and ending with a digit. What
// else is a number (blanks around it, exponents) is rare and left to Qt.
class PlainNumber {
public:
    explicit PlainNumber(QStringView text)
    {
        if (text.size() > static_cast<int>(m_text.size()))
            return;
        for (const QChar c : text) {
            const ushort code = c.unicode();
            const bool isDigit = code >= u'0' && code <= u'9';
            if (!isDigit && code != u'.' && (code != u'-' || m_size > 0))
                return;
            m_text[m_size++] = static_cast<char>(code);
        }
        const std::size_t first = m_size > 0 && m_text[0] == '-' ? 1 : 0;
        m_isPlain = m_size > first && m_text[first] != '.' && m_text[m_size - 1] != '.';
    }

    bool isPlain() const { return m_isPlain; }
    template <typename Number> bool to(Number &value) const
    {
        const char *const end = m_text.data() + m_size;
        const auto result = std::from_chars(m_text.data(), end, value);
        return result.ec == std::errc() && result.ptr == end;
    }

private:
    std::array<char, 24> m_text;
    std::size_t m_size = 0;
    bool m_isPlain = false;
};

// As QString::toInt().
bool toInt(QStringView text, int &value)
{
    if (const PlainNumber number(text); number.isPlain())
        return number.to(value);
    bool ok = false;
    value = text.trimmed().toString().toInt(&ok); // Qt 6 leaves some blanks
    return ok;
}

// As QString::toFloat().
bool toFloat(QStringView text, float &value)
{
    double precise = 0;
    if (const PlainNumber number(text); number.isPlain() && number.to(precise)) {
        // By way of a double, as Qt does, which rounds twice.
        value = static_cast<float>(precise);
        if (std::isfinite(value) && (precise == 0 || value != 0))
            return true;
    }
    bool ok = false;
    value = text.toString().toFloat(&ok);
    return ok;
}

} // namespace

QVariant toVariant(QStringView text)
{
    int integer = 0;
    if (toInt(text, integer))
        return integer;
    float number = 0;
    if (toFloat(text, number))
        return number;
    return text.toString();
}

QString fromReal(double value)
{
    // In this range the format has no exponent.
    constexpr double smallest = 1e-4;
    constexpr double end = 1e6;
    const double size = std::fabs(value);
    if (!(size >= smallest && size < end))
        return QString::number(value, 'g', QLocale::FloatingPointShortest);
    std::array<char, 32> text;
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return QString::fromLatin1(text.data(), static_cast<int>(result.ptr - text.data()));
}

QString fromVariant(const QVariant &value)
{
    const int type = value.userType();
    return type == QMetaType::Float || type == QMetaType::Double ? fromReal(value.toDouble())
                                                                 : value.toString();
}

} // namespace NumberText
