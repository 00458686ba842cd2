// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_BITMAPDRAWABLE_H
#define SORRELKIT_BITMAPDRAWABLE_H

#include "Drawable.h"

#include <QImage>

namespace SorrelKit {

class DrawableLoader;
struct ResolvedValue;

/// A picture, drawn to fill its bounds.
class BitmapDrawable : public Drawable
{
public:
    /// @p size is the picture's on the device, in pixels.
    BitmapDrawable(const QImage &picture, QSizeF size) : m_picture(picture), m_size(size) {}
    /// The picture in the file that @p value names; null, with an error, when there is none.
    static DrawablePointer fromFile(const ResolvedValue &value, DrawableLoader &loader);

    QSizeF intrinsicSize() const override { return m_size; }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    QImage m_picture;
    QSizeF m_size;
};

} // namespace SorrelKit

#endif
