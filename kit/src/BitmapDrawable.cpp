// SPDX-License-Identifier: LGPL-2.1-or-later
#include "BitmapDrawable.h"

#include "Canvas.h"
#include "DrawableLoader.h"

namespace SorrelKit {

DrawablePointer BitmapDrawable::fromFile(const ResolvedValue &value, DrawableLoader &loader)
{
    const QImage picture = loader.picture(value.text);
    if (picture.isNull())
        return nullptr;
    return std::make_unique<BitmapDrawable>(picture, QSizeF(picture.size()) * loader.scaleOf(value.density));
}

void BitmapDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    if (canvas.spend())
        canvas.painter().drawImage(bounds, m_picture);
}

} // namespace SorrelKit
