// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLEERROR_H
#define SORRELKIT_DRAWABLEERROR_H

#include <QString>

namespace SorrelKit {

/// Reasons why an icon is not drawn, or not wholly as the package describes it. IconErrorTable has their texts.
enum class DrawableFault {
    None,

    // A request. The detail is the path of the icon.
    InvalidSize,
    NoIcon,
    NoBanner,
    UndecodableIcon,

    // Resources and files. The detail is the resource id or the path; DamagedDocument also has the reason.
    NoValue,
    NotDrawable,
    PlatformResource,
    UnreadableFile,
    DamagedDocument,
    UndecodablePicture,
    NotNinePatch,

    // Attributes of the theme. The detail is the id of the attribute; NoThemeStyle also has the reason.
    NoTheme,
    NoThemeValue,
    NoThemeStyle,

    // Elements. The detail is the name of the element, or the number of the shape or gradient.
    UnknownDrawable,
    UnknownColor,
    UnknownShape,
    UnknownShapePart,
    UnknownGradient,
    NoLayers,
    NoDrawable,
    NoPicture,
    NoFirstItem,

    // Colours.
    GradientWithoutRadius,
    ColorListWithoutItem,
    ColorListWithoutColor,
    TintWithoutColor,

    // Vectors. The detail of a fault in path data is its offset.
    VectorWithoutViewport,
    VectorWithoutPath,
    AnimationWithoutVector,
    TargetWithoutAnimation,
    UnknownAnimator,
    UnknownInterpolator,
    PathsThatDiffer,
    PathWithoutColor,
    NoCommand,
    NoNumber,
    NoFlag,
    NumberTooLarge,
    CoordinateTooLarge,

    // Ceilings and the budget.
    DrawablesTooDeep,
    GroupsTooDeep,
    StrokeTooLong,
    TooMuchDrawing,

    Count ///< the number of faults
};

/// A fault, and where or in what it is.
struct DrawableError {
    explicit operator bool() const { return fault != DrawableFault::None; }

    DrawableFault fault = DrawableFault::None;
    QString detail;
};

} // namespace SorrelKit

#endif
