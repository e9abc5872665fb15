// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_UTF8DECODER_H
#define CPRSESSION_UTF8DECODER_H

#include <QString>

// Neither Qt has the class of the other.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QStringDecoder>
#else
#include <QTextCodec>

#include <memory>
#endif

/// Text in UTF-8 that comes in blocks, which may end within a character. Bytes that are no UTF-8
/// become the replacement character, and from then on hasFailed() is true.
class Utf8Decoder {
public:
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QString toText(const QByteArray &block)
    {
        return m_decoder(block);
    }
    bool hasFailed() const
    {
        return m_decoder.hasError();
    }

private:
    QStringDecoder m_decoder{QStringDecoder::Utf8};
#else
    QString toText(const QByteArray &block)
    {
        return m_decoder->toUnicode(block);
    }
    bool hasFailed() const
    {
        return m_decoder->hasFailure();
    }

private:
    std::unique_ptr<QTextDecoder> m_decoder{QTextCodec::codecForName("UTF-8")->makeDecoder()};
#endif
};

#endif
