// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icon/IconErrorTable.h"

#include <algorithm>
#include <iterator>

namespace SorrelKit {

namespace {

using Code = IconError::Code;
using Fault = DrawableFault;

struct Row {
    Fault fault;
    Code code;
    const char *text; ///< "%1" is the detail
};

constexpr Row rows[] = {
    {Fault::InvalidSize, Code::InvalidSize, "a picture has 1 to 1024 pixels a side"},
    {Fault::NoIcon, Code::Missing, "there is no icon"},
    {Fault::NoBanner, Code::Missing, "there is no banner"},
    {Fault::UndecodableIcon, Code::Unreadable, "%1 cannot be read or decoded"},
    {Fault::NoValue, Code::NotDrawable, "no drawable is given"},
    {Fault::NotDrawable, Code::NotDrawable, "resource %1 is no drawable"},
    {Fault::PlatformResource, Code::NeedsPlatform, "needs the platform's resource %1"},
    {Fault::UnreadableFile, Code::Unreadable, "%1 cannot be read"},
    {Fault::DamagedDocument, Code::Unreadable, "%1"},
    {Fault::UndecodablePicture, Code::Unreadable, "%1 is no picture that can be decoded"},
    {Fault::NotNinePatch, Code::Damaged, "%1 is no nine-patch"},
    {Fault::NoTheme, Code::NoThemeValue, "?%1 has no value without a theme"},
    {Fault::NoThemeValue, Code::NoThemeValue, "?%1 has no value in the theme"},
    {Fault::NoThemeStyle, Code::NoThemeValue, "?%1"},
    {Fault::UnknownDrawable, Code::Unsupported, "unsupported drawable <%1>"},
    {Fault::UnknownColor, Code::Unsupported, "unsupported color <%1>"},
    {Fault::UnknownShape, Code::Unsupported, "unsupported shape %1"},
    {Fault::UnknownShapePart, Code::Unsupported, "unsupported part of a shape <%1>"},
    {Fault::UnknownGradient, Code::Unsupported, "unsupported gradient type %1"},
    {Fault::NoLayers, Code::Damaged, "<%1> has no layers"},
    {Fault::NoDrawable, Code::Damaged, "<%1> has no drawable"},
    {Fault::NoPicture, Code::Damaged, "<%1> has no picture"},
    {Fault::NoFirstItem, Code::Damaged, "<%1> has no item to start with"},
    {Fault::GradientWithoutRadius, Code::Damaged, "radial gradient without a radius"},
    {Fault::ColorListWithoutItem, Code::Damaged, "color state list without an item"},
    {Fault::ColorListWithoutColor, Code::Damaged, "color state list without a color for the default state"},
    {Fault::TintWithoutColor, Code::Damaged, "tint without a color"},
    {Fault::VectorWithoutViewport, Code::Damaged, "vector without a viewport"},
    {Fault::VectorWithoutPath, Code::Damaged, "vector without a path"},
    {Fault::AnimationWithoutVector, Code::Damaged, "animated vector without a vector"},
    {Fault::TargetWithoutAnimation, Code::Damaged, "target %1 of an animated vector without an animation"},
    {Fault::UnknownAnimator, Code::Unsupported, "unsupported animator <%1>"},
    {Fault::UnknownInterpolator, Code::Unsupported, "unsupported interpolator <%1>"},
    {Fault::PathsThatDiffer, Code::Damaged, "animation between paths of different commands"},
    {Fault::PathWithoutColor, Code::Damaged, "vector path without the color that it refers to"},
    {Fault::NoCommand, Code::Damaged, "no command in path data at %1"},
    {Fault::NoNumber, Code::Damaged, "no number in path data at %1"},
    {Fault::NoFlag, Code::Damaged, "no flag in path data at %1"},
    {Fault::NumberTooLarge, Code::Damaged, "too large a number in path data at %1"},
    {Fault::CoordinateTooLarge, Code::Damaged, "too large a coordinate in path data at %1"},
    {Fault::DrawablesTooDeep, Code::TooMuch, "drawables nested too deeply"},
    {Fault::GroupsTooDeep, Code::TooMuch, "groups of a vector nested too deeply"},
    {Fault::StrokeTooLong, Code::TooMuch, "too many segments in a path that is stroked"},
    {Fault::TooMuchDrawing, Code::TooMuch, "drawing takes too much"},
};
static_assert(std::size(rows) == size_t(Fault::Count) - 1, "there is a row for each fault");

} // namespace

IconError IconErrorTable::iconError(const DrawableError &error)
{
    const auto isWanted = [&](const Row &row) { return row.fault == error.fault; };
    const auto *const row = std::find_if(std::begin(rows), std::end(rows), isWanted);
    if (row == std::end(rows))
        return {};
    // Not by QString::arg(), which would replace a "%1" within a detail without a place for it.
    return {row->code, QString::fromLatin1(row->text).replace(QLatin1String("%1"), error.detail)};
}

} // namespace SorrelKit
