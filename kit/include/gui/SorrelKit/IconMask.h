// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONMASK_H
#define SORRELKIT_ICONMASK_H

#include <SorrelKit/KitGuiExport.h>

#include <QObject>

namespace SorrelKit {

Q_NAMESPACE_EXPORT(SORRELKITGUI_EXPORT)

/// The outline that adaptive icons are cut to. On a device, its maker chooses the outline. Other icons keep their own.
/// @since 0.5.1
enum class IconMask {
    None,          ///< all of the visible square
    Circle,        ///< a circle that touches the sides
    RoundedSquare, ///< a square with rounded corners
    Squircle,      ///< a superellipse, between the two
};
Q_ENUM_NS(IconMask)

} // namespace SorrelKit

#endif
