// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONSOURCES_H
#define ICONSOURCES_H

#include <QImage>

/**
 * One picture of a sample application. make_icons draws it into the application's resources. The tests recognize it by
 * its size and its two colours.
 *
 * The picture is a plain area in a frame. The frame's width is an eighth of the smaller side.
 */
struct IconSource {
    const char *app;
    const char *file; ///< below res/; the suffix is the format
    int width;
    int height;
    QRgb area;  ///< of the pixel in the centre
    QRgb frame; ///< of the pixel in each corner; translucent only in formats with an alpha channel
};

/// Each picture has its own pair of colours. The pairs are far apart, because JPEG changes colours a little.
constexpr IconSource iconSources[] = {
    {"notes", "drawable-mdpi/notes.png", 48, 48, 0xffc02020, 0xff204080},
    {"notes", "drawable-hdpi/notes.png", 72, 72, 0xffc08020, 0x00000000},
    {"notes", "drawable-xhdpi/notes.webp", 96, 96, 0xffc0e020, 0xff204080},
    {"notes", "drawable-xxhdpi/notes.png", 144, 144, 0xff60e020, 0xff204080},
    {"notes", "drawable-hdpi/today.jpg", 72, 72, 0xff20e0a0, 0xffffffff},
    {"notes", "drawable-xhdpi/today.jpeg", 96, 96, 0xff2080e0, 0xffffffff},
    {"notes", "mipmap-mdpi/editor.webp", 48, 48, 0xffe020e0, 0xff202020},
    {"notes", "mipmap-xhdpi/editor.webp", 96, 96, 0xff8020e0, 0x00000000},
    {"notes", "mipmap-xxhdpi/editor.webp", 144, 144, 0xff2020e0, 0xff202020},
    {"notes", "drawable-mdpi/cart.png", 48, 48, 0xff808080, 0xffe0e000},
    {"notes", "drawable-hdpi/cart.jpg", 72, 72, 0xff404040, 0xffe0e000},
    {"toolbox", "drawable-mdpi/toolbox.png", 48, 48, 0xffe06000, 0xff006000},
    {"toolbox", "drawable-hdpi/toolbox.png", 72, 72, 0xffe0a000, 0xff006000},
    {"toolbox", "drawable-xhdpi/toolbox.webp", 96, 96, 0xffe0e000, 0xff006000},
    {"toolbox", "drawable-xxhdpi/toolbox.png", 144, 144, 0xffa0e000, 0xff006000},
    {"toolbox", "drawable-land-hdpi/toolbox.png", 96, 64, 0xff60e000, 0xff600060},
    {"toolbox", "drawable-hdpi-v21/toolbox.png", 74, 74, 0xff00e060, 0xff600060},
    {"toolbox", "drawable/badge.jpg", 40, 40, 0xff00a0e0, 0xff000000},
    {"toolbox", "drawable-xhdpi/outline.png", 96, 96, 0xff0040e0, 0x80ff0000},
    {"atlas", "mipmap-mdpi/atlas.png", 48, 48, 0xff004000, 0xffc0c0c0},
    {"atlas", "mipmap-hdpi/atlas.png", 72, 72, 0xff008000, 0xffc0c0c0},
    {"atlas", "mipmap-xhdpi/atlas.png", 96, 96, 0xff00c000, 0xffc0c0c0},
    {"atlas", "mipmap-xxhdpi/atlas.png", 144, 144, 0xff40ff40, 0xffc0c0c0},
    {"atlas", "mipmap-xxxhdpi/atlas.webp", 192, 192, 0xff80ff80, 0xffc0c0c0},
    {"atlas", "drawable-tvdpi/compass.png", 64, 64, 0xff400000, 0xff00c0c0},
    {"atlas", "drawable-nodpi/compass.webp", 100, 100, 0xff800000, 0xff00c0c0},
    {"atlas", "drawable-fr-xhdpi/compass.jpg", 96, 96, 0xffc00000, 0xff00c0c0},
    {"atlas", "drawable-night-xhdpi/compass.png", 96, 96, 0xff000000, 0xff00c0c0},
    {"atlas", "drawable-ldrtl-xhdpi-v23/compass.png", 96, 96, 0xffff8080, 0xff00c0c0},
};

#endif
