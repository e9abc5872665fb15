// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_UTF8DECODER_H
#define CPRSESSION_UTF8DECODER_H

#include <QString>

// Qt 6 has another class for this than Qt 5.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QStringDecoder>
#else
#include <QTextCodec>
#include <memory>
#endif

/// Text in UTF-8 that comes in blocks, which may end within a character.
class Utf8Decoder {
public:
    /// The text of the next block. Bytes that are none become the replacement character.
    QString toText(const QByteArray &block);
    /// Some of the bytes so far were no UTF-8.
    bool hasFailed() const;

private:
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QStringDecoder m_decoder{QStringDecoder::Utf8};
#else
    std::unique_ptr<QTextDecoder> m_decoder{QTextCodec::codecForName("UTF-8")->makeDecoder()};
#endif
};

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)

inline QString Utf8Decoder::toText(const QByteArray &block)
{
    return m_decoder(block);
}

inline bool Utf8Decoder::hasFailed() const
{
    return m_decoder.hasError();
}

#else

inline QString Utf8Decoder::toText(const QByteArray &block)
{
    return m_decoder->toUnicode(block);
}

inline bool Utf8Decoder::hasFailed() const
{
    return m_decoder->hasFailure();
}

#endif

#endif
