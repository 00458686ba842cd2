// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IconMaker.h"

#include "AdaptiveIcon.h"
#include "BitmapDrawable.h"
#include "Canvas.h"
#include "DrawableLoader.h"
#include "PictureCheck.h"
#include "XmlReader.h"

#include <QSet>

#include <algorithm>

namespace SorrelKit {

namespace {

// A picture file of an icon that nothing is decoded of yet.
struct Picture {
    QByteArray bytes;
    QSize size;
};

int densityOf(int size)
{
    return qBound(1, size * Configuration::MediumDensity / IconMaker::IconDp, 0xffff);
}

int side(QSize size)
{
    return qMax(size.width(), size.height());
}

// An adaptive icon is made for its own units, whatever sizes its layers have.
QSizeF sizeOf(const Drawable &drawable, qreal pixelsPerDp)
{
    constexpr qreal Units = AdaptiveIcon::VisibleUnits;
    const bool isAdaptive = dynamic_cast<const AdaptiveIcon *>(&drawable) != nullptr;
    return isAdaptive ? QSizeF(Units, Units) * pixelsPerDp : drawable.intrinsicSize();
}

// In the middle of the canvas, as large as fits.
void drawFitted(const Drawable &drawable, QSizeF own, Canvas &canvas)
{
    const QSizeF room = canvas.size();
    const QSizeF size(own.width() > 0 ? own.width() : room.width(), own.height() > 0 ? own.height() : room.height());
    const qreal scale = qMin(room.width() / size.width(), room.height() / size.height());
    canvas.painter().translate((room.width() - size.width() * scale) / 2, (room.height() - size.height() * scale) / 2);
    canvas.painter().scale(scale, scale);
    drawable.draw(canvas, QRectF(QPointF(), size));
}

} // namespace

QImage IconMaker::icon(const ResolvedValue &icon, int size, IconMask mask)
{
    m_error.clear();
    if (size < MinSize || size > MaxSize) {
        setError(QStringLiteral("a picture has 1 to 1024 pixels a side"));
        return {};
    }
    const ResourceResolver resolver = m_resolver.forDevice(Configuration::phone(densityOf(size)));
    const ResolvedValue best = icon.resource != 0 ? resolver.resource(icon.resource) : icon;
    if (best.text.isEmpty() && !best.value.isColor()) {
        setError(best.resource == 0
                     ? QStringLiteral("there is no icon")
                     : QStringLiteral("resource 0x%1 is no drawable").arg(best.resource, 8, 16, QLatin1Char('0')));
        return {};
    }
    const bool isPicture =
        best.value.type == ValueType::String && !XmlReader::isDocument(m_files.file(best.text, MaxFileBytes));
    QImage image = isPicture ? QImage() : drawn(best, resolver, size, mask);
    if (image.isNull())
        image = bestPicture(candidates(icon, resolver), size);
    if (image.isNull())
        setError(QStringLiteral("%1 cannot be read or decoded").arg(best.text));
    return image;
}

QImage IconMaker::drawn(const ResolvedValue &value, const ResourceResolver &resolver, int size, IconMask mask)
{
    DrawableLoader loader(resolver, m_files, qreal(size) / IconDp);
    loader.setIconMask(mask);
    const DrawablePointer drawable = loader.fromValue(value);
    if (drawable == nullptr) {
        setError(loader.error());
        return {};
    }
    Canvas canvas(QSize(size, size));
    drawFitted(*drawable, sizeOf(*drawable, loader.pixelsPerDp()), canvas);
    setError(loader.error());
    if (canvas.isSpent())
        setError(QStringLiteral("drawing takes too much"));
    return canvas.image();
}

QVector<ResolvedValue> IconMaker::candidates(const ResolvedValue &icon, const ResourceResolver &resolver) const
{
    if (icon.resource == 0)
        return {icon};
    QVector<ResolvedValue> files;
    QSet<quint32> visited;
    QSet<QString> paths;
    QVector<quint32> open{icon.resource};
    Allowance steps(MaxSteps);
    while (!open.isEmpty() && visited.size() < MaxFiles) {
        const quint32 id = open.takeFirst();
        if (visited.contains(id) || !steps.spend(resolver.steps(id)))
            continue;
        visited.insert(id);
        for (const ResolvedValue &candidate : resolver.candidates(id)) {
            if (candidate.value.isReference() && open.size() < MaxFiles)
                open.append(candidate.value.data);
            if (candidate.value.type != ValueType::String || files.size() >= MaxFiles)
                continue;
            const ResolvedValue file = ResourceResolver::withText(candidate);
            if (!paths.contains(file.text))
                files.append(file);
            paths.insert(file.text);
        }
    }
    return files;
}

QImage IconMaker::bestPicture(const QVector<ResolvedValue> &candidates, int size)
{
    Allowance bytesLeft(MaxBytes);
    QVector<Picture> pictures;
    for (const ResolvedValue &candidate : candidates) {
        Picture picture;
        picture.bytes = file(candidate.text, &bytesLeft);
        picture.size = PictureReader::size(picture.bytes);
        if (!picture.size.isEmpty())
            pictures.append(picture);
    }
    // The smallest of those that are large enough; then the others, the largest first.
    std::stable_sort(pictures.begin(), pictures.end(), [size](const Picture &a, const Picture &b) {
        const bool isEnough = side(a.size) >= size;
        if (isEnough != (side(b.size) >= size))
            return isEnough;
        return isEnough ? side(a.size) < side(b.size) : side(a.size) > side(b.size);
    });
    PictureReader reader;
    for (const Picture &picture : pictures) {
        const QImage image = reader.read(picture.bytes);
        if (image.isNull())
            continue;
        Canvas canvas(QSize(size, size));
        drawFitted(BitmapDrawable(image, image.size()), image.size(), canvas);
        return canvas.image();
    }
    return {};
}

QVector<IconFile> IconMaker::iconFiles(const ResolvedValue &icon) const
{
    QVector<IconFile> files;
    Allowance bytesLeft(MaxBytes);
    for (const ResolvedValue &candidate : candidates(icon, m_resolver)) {
        const QByteArray bytes = file(candidate.text, &bytesLeft);
        IconFile file;
        file.path = candidate.text;
        file.density = candidate.density;
        if (XmlReader::isDocument(bytes)) {
            file.kind = XmlReader(bytes).root().name;
        } else {
            const PictureCheck check(bytes);
            file.kind = QString::fromLatin1(check.format());
            file.size = check.size();
        }
        if (!file.kind.isEmpty())
            files.append(file);
    }
    return files;
}

QByteArray IconMaker::file(const QString &path, Allowance *bytesLeft) const
{
    QByteArray bytes = m_files.file(path, qMin(MaxFileBytes, bytesLeft->left()));
    bytesLeft->spend(bytes.size());
    return bytes;
}

void IconMaker::setError(const QString &text)
{
    if (m_error.isEmpty())
        m_error = text;
}

} // namespace SorrelKit
