// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_STATUSMARK_H
#define VIEWER_STATUSMARK_H

#include "facts/SignatureState.h"

#include <QColor>
#include <QPalette>
#include <QPixmap>

namespace Viewer {

/// The mark beside a state: a tick in a disc, a cross in an octagon, an exclamation mark in a triangle, or three dots.
/// Each has a shape of its own, so nobody needs to see colours to tell them apart.
class StatusMark
{
public:
    /// A picture of @p size x @p size device-independent pixels.
    static QPixmap pixmap(SignatureState::Kind kind, int size, qreal devicePixelRatio, const QPalette &palette);
    /// The colour of the state's words: a green or a red that contrasts with the background of @p palette, light or
    /// dark; that of usual text when nothing is known.
    static QColor color(SignatureState::Kind kind, const QPalette &palette);
};

} // namespace Viewer

#endif
