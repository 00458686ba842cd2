// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_GRAVITY_H
#define SORRELKIT_GRAVITY_H

#include <QRectF>
#include <QSizeF>

namespace SorrelKit {

/**
 * Where something goes in what is larger or smaller than it: the value of `android:gravity`. Each axis has four bits: it is
 * specified (1), pulled to the start (2), pulled to the end (4), clipped (8); pulled both ways is filled, and neither way
 * centred, specified or not. The bits of the vertical axis are 4 above those of the horizontal one. Start and end are left
 * and right here: there is no text to be read from the right.
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

/// What something of @p size takes of @p container.
QRectF apply(int gravity, const QSizeF &size, const QRectF &container);

} // namespace Gravity

} // namespace SorrelKit

#endif
