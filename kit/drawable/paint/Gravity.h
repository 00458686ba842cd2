// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_GRAVITY_H
#define SORRELKIT_GRAVITY_H

#include <QRectF>
#include <QSizeF>

namespace SorrelKit {

/**
 * The value of `android:gravity`: the place of a drawable in a container that is larger or smaller. Each axis has four
 * bits: specified (1), pulled to the start (2), pulled to the end (4), clipped (8). Pulled both ways means filled;
 * pulled neither way means centred, specified or not. The bits of the vertical axis are 4 above those of the horizontal
 * one. With the bit Relative, left stands for the start of a line and right for its end.
 */
namespace Gravity {

constexpr int Left = 0x03;
constexpr int Top = 0x30;
constexpr int Center = 0x11;
constexpr int FillHorizontal = 0x07;
constexpr int FillVertical = 0x70;
constexpr int Fill = FillHorizontal | FillVertical;
constexpr int HorizontalMask = 0x07;
constexpr int VerticalMask = 0x70;
constexpr int Relative = 0x00800000;

/// @p gravity without Relative, for a layout that runs in this direction.
int absolute(int gravity, bool isRightToLeft);

/// The rectangle for a drawable of @p size in @p container.
QRectF apply(int gravity, const QSizeF &size, const QRectF &container);

} // namespace Gravity

} // namespace SorrelKit

#endif
