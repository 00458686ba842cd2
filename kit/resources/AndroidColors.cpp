// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/AndroidColors.h"

#include <iterator>

namespace SorrelKit {

namespace {

constexpr quint32 FirstColor = 0x01060000;

// Sorted by id, from FirstColor on without a gap.
constexpr quint32 colors[] = {
    0xffaaaaaa, // darker_gray
    0xffffffff, // primary_text_dark
    0xffffffff, // primary_text_dark_nodisable
    0xff000000, // primary_text_light
    0xff000000, // primary_text_light_nodisable
    0xffbebebe, // secondary_text_dark
    0xffbebebe, // secondary_text_dark_nodisable
    0xff323232, // secondary_text_light
    0xffbebebe, // secondary_text_light_nodisable
    0xff808080, // tab_indicator_text
    0xff000000, // widget_edittext_dark
    0xffffffff, // white
    0xff000000, // black
    0x00000000, // transparent
    0xff000000, // background_dark
    0xffffffff, // background_light
    0xff808080, // tertiary_text_dark
    0xff808080, // tertiary_text_light
    0xff33b5e5, // holo_blue_light
    0xff0099cc, // holo_blue_dark
    0xff99cc00, // holo_green_light
    0xff669900, // holo_green_dark
    0xffff4444, // holo_red_light
    0xffcc0000, // holo_red_dark
    0xffffbb33, // holo_orange_light
    0xffff8800, // holo_orange_dark
    0xffaa66cc, // holo_purple
    0xff00ddff, // holo_blue_bright
};

} // namespace

std::optional<quint32> androidColor(quint32 id)
{
    if (id < FirstColor || id - FirstColor >= std::size(colors))
        return std::nullopt;
    return colors[id - FirstColor];
}

} // namespace SorrelKit
