// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLEINFLATER_H
#define SORRELKIT_DRAWABLEINFLATER_H

#include "drawable/source/DrawableLoader.h"

namespace SorrelKit {

/// Makes drawables from resources. It has the table of the names of XML elements and the classes for them.
class DrawableInflater final : public DrawableLoader
{
public:
    /// @p files and @p budget outlive the inflater. Dimensions become pixels at @p pixelsPerDp.
    DrawableInflater(const ResourceResolver &resolver, FileSource &files, Budget &budget, qreal pixelsPerDp);

private:
    DrawablePointer makeColor(const QColor &color) override;
    DrawablePointer makePicture(const ResolvedValue &value) override;
    DrawablePointer makeElement(const XmlElement &element) override;
    QBrush makeBrush(const XmlElement &root) override;
};

} // namespace SorrelKit

#endif
