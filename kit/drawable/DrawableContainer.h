// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DEFAULTITEM_H
#define SORRELKIT_DEFAULTITEM_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/// Elements with an item for each of several occasions, of which one is drawn at a time: which one it is at first.
namespace DefaultItem {

/// `selector` and `animated-selector`: the first item for a drawable that nothing has happened to.
DrawablePointer ofStateList(const XmlElement &element, DrawableLoader &loader);
/// `level-list`: the first item whose levels, from `android:minLevel` up to `android:maxLevel`, hold level 0.
DrawablePointer ofLevelList(const XmlElement &element, DrawableLoader &loader);
/// `animation-list`: the first frame.
DrawablePointer ofAnimation(const XmlElement &element, DrawableLoader &loader);

} // namespace DefaultItem

} // namespace SorrelKit

#endif
