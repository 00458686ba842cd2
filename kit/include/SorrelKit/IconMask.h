// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONMASK_H
#define SORRELKIT_ICONMASK_H

namespace SorrelKit {

/// The outline that adaptive icons are cut to; what it is, is up to the device. Other icons keep the outline they have.
/// @since 0.5.1
enum class IconMask {
    None,          ///< all of the visible square
    Circle,        ///< a circle that touches the sides
    RoundedSquare, ///< a square with rounded corners
    Squircle,      ///< a superellipse, between the two
};

} // namespace SorrelKit

#endif
