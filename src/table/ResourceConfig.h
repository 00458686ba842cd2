// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCECONFIG_H
#define RESOURCECONFIG_H

#include <SorrelExport.h>

#include <QString>

class Extractor;

/**
 * A configuration record: the qualifiers (language, density and so on) under which the values of a type chunk apply.
 * On the wire it starts with its own size; a shorter record, as older tools wrote it, ends between two groups:
 *
 * | offset | width         | fields                                                          |
 * |--------|---------------|-----------------------------------------------------------------|
 * | 0      | u32           | size of the record, this field included                         |
 * | 4      | u16, u16      | mcc, mnc                                                        |
 * | 8      | 2 + 2 bytes   | language, country                                               |
 * | 12     | u8, u8, u16   | orientation, touchscreen, density                               |
 * | 16     | u8, u8, u8, 1 | keyboard, navigation, input flags (keysHidden 0x03, navHidden 0x0c), padding |
 * | 20     | u16, u16      | screenWidth, screenHeight                                       |
 * | 24     | u16, u16      | sdkVersion, minor version (not kept)                            |
 * | 28     | u8            | screen layout (screenSize 0x0f, screenLong 0x30, layoutDirection 0xc0) |
 * | 29     | u8            | ui mode (uiModeType 0x0f, uiModeNight 0x30)                     |
 * | 30     | u16           | smallestScreenWidthDp                                           |
 * | 32     | u16, u16      | screenWidthDp, screenHeightDp                                   |
 * | 36     |               | newer fields (script, variant, ...), not kept                   |
 *
 * A plain value. 0 in a field means any; fields hold what was read, sign-extended from their width.
 */
class ResourceConfig
{
public:
    /**
     * Reads a record at the reader's position, and consumes all of it. Fields that the record is too short for are 0,
     * and all are when the reader had failed by the time the size was read.
     */
    SORREL_EXPORT void load(Extractor *reader);

    /**
     * The locale: language in lower case, then "-" and the country in upper case when there is one ("de", "pt-BR"). A
     * null string without a language. Languages of three letters, which the format packs into these two bytes, come
     * out garbled.
     */
    SORREL_EXPORT QString locale() const;

    /**
     * The qualifiers as resource directories have them ("en-rUS-land-hdpi"), in the order of Android's directory
     * names except that the densities, sizes and modes that Android added later are left out; an empty string for the
     * default configuration. A density of 0xffff that was read is -1, and prints nothing instead of "nodpi"; this is
     * kept on purpose.
     */
    SORREL_EXPORT QString toString() const;

    /// Whether every field is equal.
    SORREL_EXPORT bool operator==(const ResourceConfig &other) const;

    int mcc = 0;
    int mnc = 0;
    char language[2] = {0, 0};
    char country[2] = {0, 0};
    int orientation = 0;
    int touchscreen = 0;
    int density = 0;
    int keyboard = 0;
    int navigation = 0;
    int keysHidden = 0;
    int navHidden = 0;
    int screenWidth = 0;
    int screenHeight = 0;
    int sdkVersion = 0;
    int screenSize = 0;
    int screenLong = 0;
    int layoutDirection = 0;
    int uiModeType = 0;
    int uiModeNight = 0;
    int smallestScreenWidthDp = 0;
    int screenWidthDp = 0;
    int screenHeightDp = 0;
};

#endif
