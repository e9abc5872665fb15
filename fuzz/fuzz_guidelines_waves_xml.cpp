// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// The documents of the guideline set and of the wave descriptions: read, written, read again. The
// first byte chooses the document.

#include "CPRData.h"
#include "Fuzzing.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

using namespace fuzzing;

namespace {

QString rewriteGuidelines(const QByteArray &xml)
{
    CPRGuidelines guidelines(static_cast<CPRData *>(nullptr));
    QXmlStreamReader reader(xml);
    guidelines.read(&reader);
    const CPRGuidelines copy(&guidelines);
    require(copy == guidelines, "a copy equals its original");
    return document([&guidelines](QXmlStreamWriter &writer) { guidelines.write(&writer); });
}

QString rewriteWaves(const QByteArray &xml)
{
    CPRWaveformInfo compression(nullptr);
    CPRWaveformInfo ventilation(nullptr);
    QXmlStreamReader reader(xml);
    reader.readNextStartElement();
    for (CPRWaveformInfo *info : {&compression, &ventilation}) {
        info->read(&reader);
        require(info->samplePeriod() >= 0 && info->samplePeriod() <= 1000
                    && (info->samplePeriod() == 0) == (info->sampleRate() == 0),
                "rate and period belong together");
    }
    return document([&](QXmlStreamWriter &writer) {
        writer.writeStartDocument();
        writer.writeStartElement(QStringLiteral("waveFormList"));
        compression.write(&writer);
        ventilation.write(&writer);
        writer.writeEndDocument();
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepare();
    const Cost cost(size);
    Bytes input(data, size);
    const auto rewrite = input.below(2) == 0 ? rewriteGuidelines : rewriteWaves;
    // Numbers above 2^31 - 1 come back as floats, so that the first reading may change them.
    const QString once = rewrite(rewrite(input.rest()).toUtf8());
    require(rewrite(once.toUtf8()) == once, "a document that is read again is the same document");
    return 0;
}
