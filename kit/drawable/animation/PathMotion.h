// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHMOTION_H
#define SORRELKIT_PATHMOTION_H

#include <QtGlobal>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/// An `objectAnimator` that moves two properties, `android:propertyXName` and `android:propertyYName`, along a path
/// (`android:pathData`), with the same speed everywhere. Only the first figure of the path counts.
namespace PathMotion {

/// Whether @p animator has a path and one of the names.
bool isIn(const XmlElement &animator);
/// Sets the properties of @p part to the point @p fraction of the way along the path. Outside of 0 to 1 it is the point at
/// the end. An unknown property does not change.
void apply(const XmlElement &animator, qreal fraction, XmlElement *part, DrawableLoader &loader);

} // namespace PathMotion

} // namespace SorrelKit

#endif
