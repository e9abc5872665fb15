// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include <sessionplot/PlotModel.h>
#include <sessionplot/ReviewPicture.h>
#include <sessionplot/SessionReport.h>

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

// The page to take home is laid out, drawn with its fonts and written; the picture is a part of it.
std::vector<Figure> measureReport(Bench &bench)
{
    const QString archive = bench.sessions.archive(secondsPerHour);
    const QString file = bench.sessions.file(QStringLiteral("report.pdf"));
    QImage image(1920, 1080, QImage::Format_RGB32);
    const auto subject = [&](Clock &clock) {
        CPRData session;
        clock.start();
        if (!load(archive, session))
            qFatal("An archive cannot be loaded");
        const sessionplot::PlotModel model(session);
        if (!sessionplot::writeReport(file, sessionplot::SessionReport(model), QPageSize::A4,
                                      nullptr))
            qFatal("A report cannot be written");
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        CPRData session;
        clock.start();
        if (!load(archive, session))
            qFatal("An archive cannot be loaded");
        const sessionplot::PlotModel model(session);
        sessionplot::ReviewPicture picture(&model);
        QPainter painter(&image);
        picture.paint(&painter, image.rect());
        painter.end();
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference), 3)};
}

} // namespace

std::vector<Row> pictureRows()
{
    return {{15, "review picture of an hour, 1920 x 1080",
             "copying the samples once + filling the image", measurePicture},
            {21, "report of a session (PDF)", "loading it + drawing its picture", measureReport}};
}

} // namespace bench
