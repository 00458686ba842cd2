// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/IconUrl.h"

#include <QStringList>
#include <QUrlQuery>

#include <array>

namespace SorrelQml {

using SorrelKit::ShelfIcon;

namespace {

struct ShapeName {
    ShelfIcon::Shape shape;
    const char *name;
};

constexpr std::array<ShapeName, 4> ShapeNames = {{
    {ShelfIcon::Shape::None, "none"},
    {ShelfIcon::Shape::Circle, "circle"},
    {ShelfIcon::Shape::RoundedSquare, "rounded-square"},
    {ShelfIcon::Shape::Squircle, "squircle"},
}};

bool readShape(const QString &text, ShelfIcon::Shape &shape)
{
    for (const ShapeName &known : ShapeNames) {
        if (text == QLatin1String(known.name)) {
            shape = known.shape;
            return true;
        }
    }
    return false;
}

bool readFlag(const QString &text, bool &flag)
{
    flag = text == QLatin1String("1");
    return flag || text == QLatin1String("0");
}

bool readPart(IconUrl &url, const QString &name, const QString &value)
{
    bool isRead = false;
    if (name == QLatin1String("size")) {
        url.size = value.toInt(&isRead);
        return isRead && url.size >= 1 && url.size <= ShelfIcon::MaxSize;
    }
    if (name == QLatin1String("ratio")) {
        url.ratio = value.toDouble(&isRead);
        return isRead && url.ratio > 0 && url.ratio <= IconUrl::MaxRatio;
    }
    if (name == QLatin1String("v")) {
        url.revision = value.toLongLong(&isRead);
        return isRead;
    }
    if (name == QLatin1String("shape"))
        return readShape(value, url.shape);
    if (name == QLatin1String("night"))
        return readFlag(value, url.isNight);
    return name == QLatin1String("monochrome") && readFlag(value, url.isMonochrome);
}

} // namespace

IconUrl IconUrl::parse(const QString &id)
{
    const QString path = id.section(QLatin1Char('?'), 0, 0);
    const QStringList parts = path.split(QLatin1Char('/'));
    IconUrl url;
    bool hasNumber = false;
    if (parts.size() == 3 && parts.at(0) == QLatin1String("shelf")) {
        url.source = Source::Shelf;
        url.item = parts.at(2).toLongLong(&hasNumber);
        if (!hasNumber)
            return IconUrl();
    } else if (parts.size() == 2 && parts.at(0) == QLatin1String("package")) {
        url.source = Source::Package;
    } else {
        return IconUrl();
    }
    url.number = parts.at(1).toInt(&hasNumber);
    if (!hasNumber)
        return IconUrl();
    const auto query = QUrlQuery(id.mid(path.size() + 1)).queryItems();
    for (const auto &part : query) {
        if (!readPart(url, part.first, part.second))
            return IconUrl();
    }
    return url;
}

QString IconUrl::toString() const
{
    QString text = source == Source::Shelf ? QStringLiteral("image://sorrel/shelf/%1/%2").arg(number).arg(item)
                                           : QStringLiteral("image://sorrel/package/%1").arg(number);
    text += QStringLiteral("?size=%1").arg(size);
    if (!qFuzzyCompare(ratio, 1.0))
        text += QStringLiteral("&ratio=%1").arg(ratio);
    if (shape != ShelfIcon::Shape::None)
        text += QLatin1String("&shape=") + QLatin1String(ShapeNames.at(std::size_t(shape)).name);
    if (isNight)
        text += QLatin1String("&night=1");
    if (isMonochrome)
        text += QLatin1String("&monochrome=1");
    if (revision != 0)
        text += QStringLiteral("&v=%1").arg(revision);
    return text;
}

ShelfIcon IconUrl::kind(const QSize &requested) const
{
    const int asked = qMax(requested.width(), requested.height());
    ShelfIcon icon(qBound(1, asked > 0 ? asked : qRound(size * ratio), ShelfIcon::MaxSize));
    icon.setShape(shape);
    icon.setNight(isNight);
    icon.setMonochrome(isMonochrome);
    return icon;
}

} // namespace SorrelQml
