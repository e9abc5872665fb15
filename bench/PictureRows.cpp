// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include <sessionplot/PlotModel.h>
#include <sessionplot/ReviewPicture.h>

#include <QImage>
#include <QPainter>

namespace bench {

namespace {

template <typename Wave> std::vector<int> samplesOf(const Wave &wave)
{
    std::vector<int> samples(static_cast<std::size_t>(wave.count()));
    for (int i = 0; i < wave.count(); ++i)
        samples[static_cast<std::size_t>(i)] = wave.at(i);
    return samples;
}

// From the session to the last pixel, as somebody waits for it who opens a session.
std::vector<Figure> measurePicture(Bench &bench)
{
    const CPRData &session = bench.sessions.session(secondsPerHour);
    QImage image(1920, 1080, QImage::Format_RGB32);
    const auto subject = [&](Clock &clock) {
        clock.start();
        const sessionplot::PlotModel model(session);
        sessionplot::ReviewPicture picture(&model);
        QPainter painter(&image);
        picture.paint(&painter, image.rect());
        painter.end();
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        clock.start();
        keep(samplesOf(*session.compressionData()));
        keep(samplesOf(*session.ventilationData()));
        image.fill(Qt::white);
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference), 3)};
}

} // namespace

std::vector<Row> pictureRows()
{
    return {{15, "review picture of an hour, 1920 x 1080",
             "copying the samples once + filling the image", measurePicture}};
}

} // namespace bench
