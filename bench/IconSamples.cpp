// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IconSamples.h"

#include "Apk.h"
#include "BinaryXml.h"
#include "DrawableFixture.h"
#include "Failure.h"
#include "format/AndroidAttributes.h"

#include <QBuffer>
#include <QPainter>
#include <QPainterPath>

namespace bench {

namespace {

using fixture::Attributes;
using fixture::element;
using fixture::Elements;
using fixture::Member;

constexpr qint64 IconId = 0x7f010000;
constexpr quint32 BackgroundId = 0x7f020000;
constexpr quint32 ForegroundId = 0x7f020001;

/// The sides of an adaptive icon's layers and of their visible part.
constexpr int LayerSide = 108;
constexpr int VisibleSide = 72;

/// A filled or stroked path of a vector.
struct Shape {
    QPainterPath path;
    QRgb color;
    int strokeWidth = 0; ///< 0 for a filled path
};
using Shapes = QVector<Shape>;

QPainterPath rectangle(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

QPainterPath rounded(const QRectF &rect, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

QPainterPath circle(QPointF center, qreal radius)
{
    QPainterPath path;
    path.addEllipse(center, radius, radius);
    return path;
}

QPainterPath wave(qreal top, qreal height)
{
    QPainterPath path(QPointF(0, top));
    path.cubicTo(24, top - height, 40, top + height, 60, top);
    path.cubicTo(76, top - height, 92, top + height, LayerSide, top);
    path.lineTo(LayerSide, LayerSide);
    path.lineTo(0, LayerSide);
    path.closeSubpath();
    return path;
}

Shapes background()
{
    return {
        {rectangle({0, 0, LayerSide, LayerSide}), 0xff1e3a5f},
        {circle({70, 34}, 26), 0xff2d5b8e},
        {wave(62, 16), 0xff16607a},
        {wave(78, 10), 0xff0f4a60},
    };
}

Shapes foreground()
{
    QPainterPath corner(QPointF(62, 34));
    corner.lineTo(72, 44);
    corner.lineTo(64, 44);
    corner.quadTo(62, 44, 62, 42);
    corner.closeSubpath();
    QPainterPath curve(QPointF(42, 52));
    curve.cubicTo(48, 44, 54, 60, 66, 50);
    return {
        {rounded({36, 34, 36, 42}, 4), 0xfff4f1e8},  {corner, 0xffd9d2bd},
        {rounded({42, 62, 24, 3}, 1.5), 0xff8a8f98}, {rounded({42, 68, 16, 3}, 1.5), 0xff8a8f98},
        {circle({66, 70}, 7), 0xffe4572e},           {curve, 0xff2d5b8e, 3},
    };
}

QString pathData(const QPainterPath &path)
{
    constexpr int CurvePoints = 3;
    QString data;
    const auto add = [&data](QPointF point) { data += QStringLiteral("%1,%2 ").arg(point.x()).arg(point.y()); };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element first = path.elementAt(i);
        data += QLatin1Char(first.isMoveTo() ? 'M' : first.isLineTo() ? 'L' : 'C');
        add(first);
        for (int point = 1; first.isCurveTo() && point < CurvePoints; ++point)
            add(path.elementAt(++i));
    }
    return data;
}

XmlElement pathElement(const Shape &shape)
{
    Attributes attributes{fixture::text(Attr::PathData, pathData(shape.path))};
    if (shape.strokeWidth == 0) {
        attributes.append(fixture::color(Attr::FillColor, shape.color));
    } else {
        attributes.append(fixture::color(Attr::StrokeColor, shape.color));
        attributes.append(fixture::number(Attr::StrokeWidth, float(shape.strokeWidth)));
    }
    return element(QStringLiteral("path"), attributes);
}

QByteArray vector(const Shapes &shapes)
{
    Elements paths;
    for (const Shape &shape : shapes)
        paths.append(pathElement(shape));
    return fixture::binaryXml(
        element(QStringLiteral("vector"),
                {fixture::pixels(Attr::Width, LayerSide), fixture::pixels(Attr::Height, LayerSide),
                 fixture::number(Attr::ViewportWidth, LayerSide), fixture::number(Attr::ViewportHeight, LayerSide)},
                paths));
}

XmlElement layer(const QString &name, quint32 drawable)
{
    XmlAttribute attribute;
    attribute.id = Attr::Drawable;
    attribute.value = {ValueType::Reference, drawable};
    return element(name, {attribute});
}

QByteArray adaptiveIcon()
{
    return fixture::binaryXml(element(
        QStringLiteral("adaptive-icon"), {},
        {layer(QStringLiteral("background"), BackgroundId), layer(QStringLiteral("foreground"), ForegroundId)}));
}

void paint(QPainter &painter, const Shapes &shapes)
{
    for (const Shape &shape : shapes) {
        const QColor color = QColor::fromRgba(shape.color);
        if (shape.strokeWidth == 0)
            painter.fillPath(shape.path, color);
        else
            painter.strokePath(shape.path, QPen(color, shape.strokeWidth, Qt::SolidLine, Qt::FlatCap));
    }
}

QImage painted(const Shapes &shapes, int size, int visibleSide)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal scale = qreal(size) / visibleSide;
    painter.scale(scale, scale);
    const qreal margin = qreal(LayerSide - visibleSide) / 2;
    painter.translate(-margin, -margin);
    paint(painter, shapes);
    return image;
}

/// The file of a picture with soft edges, gradients and flat areas, as icons have them.
QByteArray pictureFile(int side, const char *format, int quality)
{
    QImage image = painted(foreground(), side, LayerSide);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    QLinearGradient gradient(0, 0, side, side);
    gradient.setColorAt(0, QColor(0x4f, 0x9d, 0xde));
    gradient.setColorAt(1, QColor(0x1e, 0x3a, 0x5f));
    painter.setBrush(gradient);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF(0, 0, side, side).adjusted(1, 1, -1, -1), side / 5.0, side / 5.0);
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.convertToFormat(QImage::Format_ARGB32).save(&buffer, format, quality))
        fail(QStringLiteral("could not write a picture as %1").arg(QLatin1String(format)));
    return buffer.data();
}

struct File {
    QString path;
    int density; ///< of an icon's file
    QByteArray content;
};

QByteArray manifest()
{
    const QString application = QStringLiteral("application");
    const QString activity = QStringLiteral("activity");
    fixture::XmlBuilder builder = fixture::XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"),
                  {fixture::plainText(QStringLiteral("package"), QStringLiteral("org.example.app"))});
    builder.start(application, {fixture::androidReference(QStringLiteral("icon"), IconId)});
    builder.start(activity, {fixture::androidText(QStringLiteral("name"), QStringLiteral(".Main"))});
    builder.launcherFilter().end(activity).end(application).end(QStringLiteral("manifest"));
    return builder.build();
}

/// A package whose icon has the files @p icons, and whose drawables are @p layers. All members are stored, as build
/// tools store pictures.
QByteArray packageOf(const QVector<File> &icons, const QVector<File> &layers = {})
{
    fixture::PackageBuilder package;
    package.types({QStringLiteral("mipmap"), QStringLiteral("drawable")}).keys({QStringLiteral("key")});
    QStringList paths;
    QVector<Member> members;
    const auto add = [&](const File &file) {
        paths.append(file.path);
        members.append({file.path, file.content});
        return paths.size() - 1;
    };
    for (const File &icon : icons) {
        const QByteArray configuration = fixture::ConfigBuilder().density(icon.density).build();
        package.type(fixture::TypeBuilder(1, configuration).value(0, fixture::String, add(icon)));
    }
    fixture::TypeBuilder drawables(2);
    for (int i = 0; i < layers.size(); ++i)
        drawables.value(i, fixture::String, add(layers.at(i)));
    package.type(drawables);
    const QByteArray table = fixture::TableBuilder().strings(paths).package(package).build();
    members.prepend({QStringLiteral("resources.arsc"), table});
    members.prepend({QStringLiteral("AndroidManifest.xml"), manifest()});
    return fixture::zip(members, fixture::Compression::Stored);
}

IconSample vectorSample()
{
    constexpr int AnyDensity = 0xfffe;
    const QByteArray package = packageOf({{QStringLiteral("res/mipmap-anydpi/icon.xml"), AnyDensity, adaptiveIcon()}},
                                         {{QStringLiteral("res/drawable/background.xml"), 0, vector(background())},
                                          {QStringLiteral("res/drawable/foreground.xml"), 0, vector(foreground())}});
    const Shapes shapes = background() + foreground();
    return {"adaptive, two vectors", package, [shapes](int size) { return painted(shapes, size, VisibleSide); }};
}

/// The icon of a picture file for each of @p densities. Qt decodes only the one with the index @p best.
IconSample pictureSample(const std::string &name, const char *format, int quality, int sideDp,
                         const QVector<int> &densities, int best = 0)
{
    constexpr int MediumDensity = 160;
    QVector<File> files;
    for (const int density : densities) {
        files.append({QStringLiteral("res/mipmap-%1/icon.%2").arg(density).arg(QString::fromLatin1(format).toLower()),
                      density, pictureFile(sideDp * density / MediumDensity, format, quality)});
    }
    const QByteArray picture = files.at(best).content;
    return {name, packageOf(files), [picture, format](int size) {
                return QImage::fromData(picture, format)
                    .scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            }};
}

} // namespace

std::vector<IconSample> iconSamples()
{
    constexpr int DefaultQuality = -1;
    constexpr int Lossless = 100;
    constexpr int Lossy = 80;
    constexpr int IconDp = 48;
    constexpr int HighestDensity = 640;
    return {
        vectorSample(),
        pictureSample("PNG, 432 pixels", "PNG", DefaultQuality, LayerSide, {HighestDensity}),
        pictureSample("WebP, 432 pixels, lossy", "WEBP", Lossy, LayerSide, {HighestDensity}),
        pictureSample("WebP, 432 pixels, lossless", "WEBP", Lossless, LayerSide, {HighestDensity}),
        pictureSample("PNG, five densities", "PNG", DefaultQuality, IconDp, {160, 240, 320, 480, HighestDensity}, 2),
    };
}

} // namespace bench
