// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLECONTAINER_H
#define SORRELKIT_DRAWABLECONTAINER_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/// Elements of several items that show one item at a time. Each function makes the drawable of the first one shown.
namespace DrawableContainer {

/// `selector` and `animated-selector`: the first item for the default state.
DrawablePointer fromStateList(const XmlElement &element, DrawableLoader &loader);
/// `level-list`: the first item whose levels, `android:minLevel` to `android:maxLevel`, include level 0.
DrawablePointer fromLevelList(const XmlElement &element, DrawableLoader &loader);
/// `animation-list`: the frame at the time of the loader's clock; the first one without a clock. Each `item` is shown
/// for `android:duration` milliseconds. After the last one, the first follows, unless `android:oneshot` is true.
DrawablePointer fromAnimation(const XmlElement &element, DrawableLoader &loader);

} // namespace DrawableContainer

} // namespace SorrelKit

#endif
