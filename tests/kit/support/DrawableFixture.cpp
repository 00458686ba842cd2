// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"

#include "Pictures.h"
#include "format/AndroidAttributes.h"
#include "icon/IconErrorTable.h"
#include "icon/IconRenderer.h"

#include <QBuffer>
#include <QtEndian>

#include <cmath>
#include <cstring>

using namespace SorrelKit;

namespace {

constexpr quint32 Mantissa = 0xffffff; // of a dimension; the low 8 bits are its unit

XmlAttribute attribute(quint32 id, ValueType type, quint32 data)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.value = {type, data};
    return attribute;
}

QByteArray pngOf(const QImage &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

QByteArray bigEndian(qint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

} // namespace

namespace fixture {

qreal coverage(const QImage &image)
{
    qint64 alpha = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            alpha += qAlpha(image.pixel(x, y));
    }
    return qreal(alpha) / 255 / image.width() / image.height();
}

QRect areaOf(const QImage &image, QRgb color)
{
    QRect area;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != color)
                continue;
            area |= QRect(x, y, 1, 1);
            ++count;
        }
    }
    return count == area.width() * area.height() ? area : QRect();
}

bool isNear(QRgb a, QRgb b, int tolerance)
{
    return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance
           && std::abs(qBlue(a) - qBlue(b)) <= tolerance && std::abs(qAlpha(a) - qAlpha(b)) <= tolerance;
}

XmlElement element(const QString &name, const Attributes &attributes, const Elements &children)
{
    XmlElement element;
    element.name = name;
    element.attributes = attributes;
    element.children = children;
    return element;
}

XmlAttribute integer(quint32 id, int value)
{
    return attribute(id, ValueType::FirstInteger, quint32(value));
}

XmlAttribute number(quint32 id, float value)
{
    quint32 data = 0;
    std::memcpy(&data, &value, sizeof data);
    return attribute(id, ValueType::Float, data);
}

XmlAttribute boolean(quint32 id, bool value)
{
    return attribute(id, ValueType::Boolean, value ? 0xffffffff : 0);
}

XmlAttribute color(quint32 id, QRgb value)
{
    return attribute(id, ValueType::FirstColor, value);
}

XmlAttribute pixels(quint32 id, int value)
{
    return attribute(id, ValueType::Dimension, (quint32(value) & Mantissa) << 8);
}

XmlAttribute percent(quint32 id, qreal value)
{
    constexpr quint32 PointAheadOfAll = 0x30;
    constexpr quint32 PointAheadOf7 = 0x10;
    const bool isSmall = std::abs(value) < 100;
    const auto mantissa = quint32(std::lround(std::ldexp(value / 100, isSmall ? 23 : 7)));
    return attribute(id, ValueType::Fraction, (mantissa & Mantissa) << 8 | (isSmall ? PointAheadOfAll : PointAheadOf7));
}

XmlAttribute text(quint32 id, const QString &value)
{
    XmlAttribute result = attribute(id, ValueType::String, 0);
    result.text = value;
    return result;
}

XmlElement filled(QRgb value)
{
    return element(QStringLiteral("color"), {color(Attr::Color, value)});
}

XmlAttribute drawable(QRgb value)
{
    return color(Attr::Drawable, value);
}

QString described(const IconError &error)
{
    const char *const codes[] = {"None",    "InvalidSize", "Missing", "NotDrawable",   "Unsupported",
                                 "Damaged", "Unreadable",  "TooMuch", "NeedsPlatform", "NoThemeValue"};
    return error ? QStringLiteral("%1: %2").arg(QLatin1String(codes[int(error.code())]), error.text()) : QString();
}

QString described(const DrawableError &error)
{
    return described(IconErrorTable::iconError(error));
}

QByteArray Files::file(const QString &path, qint64 maxBytes, Budget *budget)
{
    ++m_reads;
    ++m_timesRead[path];
    const QByteArray bytes = m_files.value(path);
    return bytes.size() <= maxBytes && budget->spendWork(bytes.size()) ? bytes : QByteArray();
}

void Files::add(const QString &path, const QImage &picture)
{
    add(path, pngOf(picture));
}

Budget iconBudget()
{
    return {IconRenderer::MaxWork, IconRenderer::MaxBytes};
}

Studio::Studio(const Budget &limits)
    : budget(limits), loader(ResourceResolver({}, Configuration::phone(Configuration::MediumDensity)), files, budget, 1)
{
}

QImage Studio::draw(const XmlElement &root, QSize size, IconMask mask)
{
    loader.setIconMask(mask);
    Canvas canvas(size, budget);
    const DrawablePointer drawable = load(root);
    if (drawable == nullptr)
        return {};
    drawable->draw(canvas, QRectF(QPointF(0, 0), QSizeF(size)));
    return canvas.image();
}

QByteArray ninePatchPng(const QImage &picture, const QVector<qint32> &columns, const QVector<qint32> &rows,
                        const QVector<qint32> &padding)
{
    QByteArray content(12, '\0');
    content[1] = char(columns.size());
    content[2] = char(rows.size());
    for (qint32 value : padding)
        content += bigEndian(value);
    content += bigEndian(0);
    for (qint32 value : columns + rows)
        content += bigEndian(value);
    return withPngChunks(pngOf(picture), pngChunk("npTc", content));
}

} // namespace fixture
