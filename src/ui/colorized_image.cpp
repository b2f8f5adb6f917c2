#include "ui/colorized_image.h"

#include "core/display_metrics.h"

#include <functional>

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace {

constexpr int kLargestScale = 3;
constexpr const char* kBodyLayer = "_c"; ///< takes the colour
constexpr const char* kLineLayer = "";   ///< stands as it is

/// What a caller may name an icon by, taken apart.
struct IconFile {
    QString stem;      ///< ":/Flag"
    QString extension; ///< the one to try first
};

IconFile TakeApart(const std::string& name)
{
    QString path = QString::fromStdString(name);
    if (path.startsWith(QLatin1String("qrc:"))) path.remove(0, 3);
    if (!path.startsWith(QLatin1Char(':')) && !path.startsWith(QLatin1Char('/'))) path.prepend(QLatin1String(":/"));
    for (const char* extension : {".svg", ".png"}) {
        const QLatin1String ending(extension);
        if (path.endsWith(ending)) return {path.chopped(ending.size()), ending};
    }
    return {path, QStringLiteral(".svg")};
}

QImage Canvas(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QImage RenderDrawing(const QString& path, const std::function<QSize(QSize natural)>& wanted)
{
    QSvgRenderer drawing(path);
    if (!drawing.isValid()) return {};
    QImage image = Canvas(wanted(drawing.defaultSize()).expandedTo(QSize(1, 1)));
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

QImage ReadPicture(const QString& path)
{
    QImage image(path);
    image.setDevicePixelRatio(1.0);
    return image;
}

/// The picture of one layer for exactly `scale`, or a drawing rendered at it.
QImage LoadLayer(const IconFile& file, const char* layer, int scale)
{
    const QString plain = file.stem + QLatin1String(layer);
    const QString at_scale = scale > 1 ? plain + QStringLiteral("@%1x").arg(scale) : plain;
    const QString other = file.extension == QLatin1String(".svg") ? QStringLiteral(".png") : QStringLiteral(".svg");
    for (const QString& extension : {file.extension, other}) {
        if (extension == QLatin1String(".png")) {
            if (QFile::exists(at_scale + extension)) return ReadPicture(at_scale + extension);
        } else if (QFile::exists(plain + extension)) {
            return RenderDrawing(plain + extension, [scale](QSize natural) { return natural * scale; });
        }
    }
    return {};
}

QImage LoadLayerBestBelow(const IconFile& file, const char* layer, int scale)
{
    for (int tried = scale; tried >= 1; --tried) {
        QImage image = LoadLayer(file, layer, tried);
        if (!image.isNull()) return image;
    }
    return {};
}

/// One layer as large as `size` allows with its proportions kept.
QImage FitLayer(const IconFile& file, const char* layer, QSize size)
{
    const QString drawing = file.stem + QLatin1String(layer) + QLatin1String(".svg");
    if (QFile::exists(drawing)) {
        return RenderDrawing(drawing, [size](QSize natural) { return natural.scaled(size, Qt::KeepAspectRatio); });
    }
    const QImage picture = LoadLayerBestBelow(file, layer, kLargestScale);
    return picture.isNull() ? picture : picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

/// The tinted body with the lines on top, in the body's size.
QImage Compose(const QImage& body, const QImage& lines, const GraphicsColor& colour, bool* takes_colour)
{
    if (takes_colour != nullptr) *takes_colour = !body.isNull();
    if (body.isNull()) return lines;
    QImage image = ColorizeImage(body, colour);
    if (lines.isNull()) return image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(image.rect(), lines);
    return image;
}

int ScaleOfDisplay()
{
    if (graphicsResolution > 2.1) return 3;
    return graphicsResolution > 1.1 ? 2 : 1;
}

} // namespace

QImage LoadColorizedImage_atsize(const std::string& name, const GraphicsColor& colour, bool* takes_colour, int scale)
{
    const IconFile file = TakeApart(name);
    const QImage body = LoadLayer(file, kBodyLayer, scale);
    const QImage lines =
        body.isNull() ? LoadLayer(file, kLineLayer, scale) : LoadLayerBestBelow(file, kLineLayer, scale);
    return Compose(body, lines, colour, takes_colour);
}

QImage LoadColorizedImage(const std::string& name, const GraphicsColor& colour, bool* takes_colour)
{
    for (int scale = ScaleOfDisplay(); scale >= 1; --scale) {
        QImage image = LoadColorizedImage_atsize(name, colour, takes_colour, scale);
        if (!image.isNull()) return image;
    }
    return {};
}

QImage LoadColorizedImage_fitted(const std::string& name, const GraphicsColor& colour, bool* takes_colour, QSize size)
{
    if (takes_colour != nullptr) *takes_colour = false;
    if (size.isEmpty()) return {};
    const IconFile file = TakeApart(name);
    return Compose(FitLayer(file, kBodyLayer, size), FitLayer(file, kLineLayer, size), colour, takes_colour);
}

QImage ColorizeImage(const QImage& image, const GraphicsColor& colour)
{
    const QRgb tint = colour.argb();
    QImage result = image.convertToFormat(QImage::Format_ARGB32);
    const auto times = [](int part, int factor) { return (part * factor + 127) / 255; };
    for (int y = 0; y < result.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const QRgb pixel = line[x];
            line[x] = qRgba(times(qRed(pixel), qRed(tint)), times(qGreen(pixel), qGreen(tint)),
                            times(qBlue(pixel), qBlue(tint)), times(qAlpha(pixel), qAlpha(tint)));
        }
    }
    return result.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}
