// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_BITMAPDRAWABLE_H
#define SORRELKIT_BITMAPDRAWABLE_H

#include "drawable/color/TintedLayer.h"
#include "drawable/paint/Gravity.h"
#include "drawable/paint/PicturePainter.h"
#include "drawable/source/Drawable.h"

#include <QImage>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;
class VisibleArea;
struct ResolvedValue;

/**
 * A picture: a picture file, or the element `bitmap` with `android:src`. It fills its bounds, has its own size at the
 * place of its gravity, or is repeated over the bounds. Tiles begin at the painter's origin, as on Android, not in the
 * corner of the bounds. A smaller picture is made by averages, a larger one by interpolation.
 */
class BitmapDrawable : public Drawable
{
public:
    /// Values of `android:tileMode`.
    enum class TileMode : int {
        Disabled = -1,
        Clamp = 0, ///< the outermost pixels are repeated
        Repeat = 1,
        Mirror = 2,
    };

    /// @p size is the size of the picture on the device, in pixels.
    BitmapDrawable(const QImage &picture, QSizeF size) : m_picture(picture), m_size(size) {}
    /// The picture in the file that @p value names; null, with an error, when it cannot be decoded.
    static DrawablePointer fromFile(const ResolvedValue &value, DrawableLoader &loader);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    /// The size of @p picture on the device at @p scale, in whole pixels.
    static QSizeF sizeOf(const QImage &picture, qreal scale);

    QSizeF intrinsicSize() const override { return m_size; }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    bool isTiled() const { return m_tileX != TileMode::Disabled || m_tileY != TileMode::Disabled; }
    void paint(Canvas &canvas, const QRectF &target) const;
    static PicturePainter::Samples stretched(const VisibleArea &area, QSize picture);
    PicturePainter::Samples tiled(const VisibleArea &area, QSize picture) const;

    QImage m_picture;
    QSizeF m_size;
    int m_gravity = Gravity::Fill;
    TileMode m_tileX = TileMode::Disabled;
    TileMode m_tileY = TileMode::Disabled;
    TintedLayer m_layer;
};

} // namespace SorrelKit

#endif
