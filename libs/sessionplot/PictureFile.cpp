// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/PictureFile.h"

#include "private/AtomicFile.h"
#include "private/PrintableText.h"
#include "sessionplot/PlotModel.h"
#include "sessionplot/ReviewPicture.h"
#include "sessionplot/TwoSessions.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <functional>
#include <optional>

namespace sessionplot {

namespace {

// Devices without pixels are looked at closely and printed.
constexpr qreal columnsPerUnitOfVectors = 3;
constexpr int unitsPerInch = 96;
constexpr qreal pointsPerInch = 72;
constexpr int maxSide = 32767; // of an image

QString title(const PlotModel &model)
{
    return PrintableText::shown(model.review().figures.learners.join(QLatin1String(", ")));
}

// What is painted on: so many pixels, of a PDF between the margins of a page.
struct Canvas {
    QSize size;
    QPageLayout page;
};

Canvas canvasOf(const QSize &size)
{
    const QSizeF points = QSizeF(size) * pointsPerInch / unitsPerInch;
    const QPageSize page(points, QPageSize::Point, QString(), QPageSize::ExactMatch);
    return {size, QPageLayout(page, QPageLayout::Portrait, QMarginsF())};
}

// What is painted, and how it is called.
struct Drawing {
    QString title;
    std::function<void(QPainter *, const QRectF &, qreal columnsPerUnit)> paint;
};

bool paintOn(QPaintDevice *device, const QSize &size, const Drawing &drawing, qreal columnsPerUnit)
{
    QPainter painter;
    if (!painter.begin(device))
        return false;
    drawing.paint(&painter, QRectF(QPointF(0, 0), QSizeF(size)), columnsPerUnit);
    return painter.end();
}

bool encodePng(QIODevice *device, const Canvas &canvas, const Drawing &drawing)
{
    QImage image(canvas.size, QImage::Format_RGB32);
    return !image.isNull() && paintOn(&image, canvas.size, drawing, 0) && image.save(device, "PNG");
}

bool encodeSvg(QIODevice *device, const Canvas &canvas, const Drawing &drawing)
{
    QSvgGenerator generator;
    generator.setOutputDevice(device);
    generator.setResolution(unitsPerInch);
    generator.setSize(canvas.size);
    generator.setViewBox(QRect(QPoint(0, 0), canvas.size));
    generator.setTitle(drawing.title.toHtmlEscaped()); // Qt writes it as it is
    return paintOn(&generator, canvas.size, drawing, columnsPerUnitOfVectors);
}

bool encodePdf(QIODevice *device, const Canvas &canvas, const Drawing &drawing)
{
    QPdfWriter writer(device);
    writer.setResolution(unitsPerInch);
    writer.setPageLayout(canvas.page);
    writer.setTitle(drawing.title);
    return paintOn(&writer, canvas.size, drawing, columnsPerUnitOfVectors);
}

struct Format {
    const char *suffix;
    bool (*encode)(QIODevice *, const Canvas &, const Drawing &);
};

constexpr Format formats[] = {{"png", encodePng}, {"svg", encodeSvg}, {"pdf", encodePdf}};

const Format *formatOf(const QString &fileName)
{
    const QString suffix = QFileInfo(fileName).suffix();
    for (const Format &format : formats) {
        if (suffix.compare(QLatin1String(format.suffix), Qt::CaseInsensitive) == 0)
            return &format;
    }
    return nullptr;
}

/// Returns what went wrong; nothing when the picture is written.
std::optional<QString> write(const QString &fileName, const Canvas &canvas, const Drawing &drawing)
{
    const QSize &size = canvas.size;
    const Format *format = formatOf(fileName);
    if (!format)
        return QCoreApplication::translate("sessionplot", "%1 has to end with .png, .svg or .pdf")
            .arg(fileName);
    if (size.isEmpty() || size.width() > maxSide || size.height() > maxSide)
        return QCoreApplication::translate("sessionplot", "A picture cannot be %1x%2 pixels large")
            .arg(size.width())
            .arg(size.height());

    const auto cannotBeWritten = [&fileName](const QString &reason) {
        return QCoreApplication::translate("sessionplot", "%1 cannot be written: %2")
            .arg(fileName, reason);
    };
    AtomicFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return cannotBeWritten(file.errorString());

    QBuffer encoded;
    encoded.open(QIODevice::WriteOnly);
    if (!format->encode(&encoded, canvas, drawing))
        return QCoreApplication::translate("sessionplot",
                                           "The picture cannot be drawn; is there "
                                           "memory for %1x%2 pixels?")
            .arg(size.width())
            .arg(size.height());
    if (file.write(encoded.data()) != encoded.size() || !file.finish())
        return cannotBeWritten(file.errorString());
    return std::nullopt;
}

bool draw(const QString &fileName, const Canvas &canvas, qint64 from, qint64 to,
          const PlotModel &model, const Theme &theme, QString *error)
{
    ReviewPicture picture(&model);
    picture.setTheme(theme);
    picture.setRange(from, to);
    const std::optional<QString> problem = write(
        fileName, canvas,
        {title(model), [&picture](QPainter *painter, const QRectF &area, qreal columnsPerUnit) {
             picture.setColumnsPerUnit(columnsPerUnit);
             picture.paint(painter, area);
         }});
    if (error)
        *error = problem.value_or(QString());
    return !problem;
}

} // namespace

QStringList pictureSuffixes()
{
    QStringList suffixes;
    for (const Format &format : formats)
        suffixes.append(QLatin1String(format.suffix));
    return suffixes;
}

bool writePicture(const QString &fileName, const QSize &size, qint64 from, qint64 to,
                  const CPRData &session, QString *error)
{
    return writePicture(fileName, size, from, to, PlotModel(session), Theme::light(), error);
}

bool writePicture(const QString &fileName, const QSize &size, qint64 from, qint64 to,
                  const PlotModel &model, const Theme &theme, QString *error)
{
    return draw(fileName, canvasOf(size), from, to, model, theme, error);
}

bool writePicture(const QString &fileName, const QPageLayout &paper, qint64 from, qint64 to,
                  const PlotModel &model, const Theme &theme, QString *error)
{
    const Canvas canvas{paper.paintRectPixels(unitsPerInch).size(), paper};
    return draw(fileName, canvas, from, to, model, theme, error);
}

bool writePicture(const QString &fileName, const QSize &size, const TwoSessions &sessions,
                  TwoSessions::Form form, QString *error)
{
    const auto paint = [&](QPainter *painter, const QRectF &area, qreal columnsPerUnit) {
        paintTwoSessions(painter, sessions, form, area, columnsPerUnit);
    };
    const QString titles =
        QStringLiteral("%1 – %2").arg(title(*sessions.model), title(*sessions.other));
    const std::optional<QString> problem = write(fileName, canvasOf(size), {titles, paint});
    if (error)
        *error = problem.value_or(QString());
    return !problem;
}

} // namespace sessionplot
