// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/DrawableInflater.h"

#include "drawable/AdaptiveIcon.h"
#include "drawable/BitmapDrawable.h"
#include "drawable/ClipDrawable.h"
#include "drawable/ColorDrawable.h"
#include "drawable/DrawableContainer.h"
#include "drawable/InsetDrawable.h"
#include "drawable/LayerDrawable.h"
#include "drawable/NinePatchDrawable.h"
#include "drawable/RotateDrawable.h"
#include "drawable/ScaleDrawable.h"
#include "drawable/ShapeDrawable.h"
#include "drawable/animation/AnimatedVector.h"
#include "drawable/color/ColorStateList.h"
#include "drawable/color/GradientColor.h"
#include "drawable/source/DrawableAttributes.h"
#include "drawable/source/MirroredDrawable.h"
#include "drawable/vector/VectorDrawable.h"

#include <utility>

namespace SorrelKit {

namespace {

struct Kind {
    const char *element = nullptr;
    DrawablePointer (*make)(const XmlElement &, DrawableLoader &) = nullptr;
    bool isMirrored = false; ///< whether the element may have android:autoMirrored for itself
};

constexpr Kind kinds[] = {
    {"adaptive-icon", AdaptiveIcon::fromXml},
    {"animated-rotate", RotateDrawable::fromXml},
    {"animated-selector", DrawableContainer::fromStateList},
    {"animated-vector", AnimatedVector::fromXml},
    {"animation-list", DrawableContainer::fromAnimation},
    {"bitmap", BitmapDrawable::fromXml, true},
    {"clip", ClipDrawable::fromXml},
    {"color", ColorDrawable::fromXml},
    {"inset", InsetDrawable::fromXml},
    {"layer-list", LayerDrawable::fromXml},
    {"level-list", DrawableContainer::fromLevelList},
    {"nine-patch", NinePatchDrawable::fromXml, true},
    {"ripple", LayerDrawable::fromXml},
    {"rotate", RotateDrawable::fromXml},
    {"scale", ScaleDrawable::fromXml},
    {"selector", DrawableContainer::fromStateList},
    {"shape", ShapeDrawable::fromXml},
    {"transition", LayerDrawable::fromXml},
    {"vector", VectorDrawable::fromXml, true},
};

} // namespace

DrawableInflater::DrawableInflater(const ResourceResolver &resolver, FileSource &files, Budget &budget,
                                   qreal pixelsPerDp)
    : DrawableLoader(resolver, files, budget, pixelsPerDp)
{
}

DrawablePointer DrawableInflater::makeColor(const QColor &color)
{
    return std::make_unique<ColorDrawable>(color);
}

DrawablePointer DrawableInflater::makePicture(const ResolvedValue &value)
{
    return ninePatch(value.file()) ? NinePatchDrawable::fromFile(value, *this) : BitmapDrawable::fromFile(value, *this);
}

DrawablePointer DrawableInflater::makeElement(const XmlElement &element)
{
    for (const Kind &kind : kinds) {
        if (element.name != QLatin1String(kind.element))
            continue;
        const bool isMirrored =
            kind.isMirrored && isRightToLeft() && DrawableAttributes(element, *this).boolean(Attr::AutoMirrored, false);
        DrawablePointer drawable = kind.make(element, *this);
        return isMirrored ? MirroredDrawable::mirrored(std::move(drawable), true) : std::move(drawable);
    }
    setError(DrawableFault::UnknownDrawable, element.name);
    return nullptr;
}

QBrush DrawableInflater::makeBrush(const XmlElement &root)
{
    if (root.name == QLatin1String("selector")) {
        const auto color = ColorStateList::fromXml(root, *this);
        return color ? QBrush(*color) : QBrush();
    }
    if (root.name == QLatin1String("gradient"))
        return GradientColor::fromXml(root, *this).value_or(QBrush());
    setError(DrawableFault::UnknownColor, root.name);
    return {};
}

} // namespace SorrelKit
