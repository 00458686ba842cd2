// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONFIGURATION_H
#define CONFIGURATION_H

#include "format/ByteView.h"
#include "format/ShortText.h"

#include <cstring>
#include <type_traits>

/// The codes of a locale, as a table has them; empty for any.
struct LocaleCodes {
    ShortText language;
    ShortText script;
    ShortText region;
    ShortText variant;

    friend bool operator==(const LocaleCodes &a, const LocaleCodes &b)
    {
        return a.language == b.language && a.script == b.script && a.region == b.region && a.variant == b.variant;
    }
    friend auto qHash(const LocaleCodes &codes, decltype(::qHash(0)) seed = 0)
    {
        return qHash(codes.language, qHash(codes.script, qHash(codes.region, qHash(codes.variant, seed))));
    }
};

/// The qualifiers of a configuration that are numbers; 0 means any.
struct ConfigurationNumbers {
    int mcc = 0;
    int mnc = 0;
    int orientation = 0;
    int touchscreen = 0;
    int density = 0;
    int keyboard = 0;
    int navigation = 0;
    int keysHidden = 0;
    int navHidden = 0;
    int grammaticalGender = 0;
    int screenWidth = 0;
    int screenHeight = 0;
    int sdkVersion = 0;
    int minorVersion = 0; ///< of sdkVersion; matches() ignores it
    int screenSize = 0;
    int screenLong = 0;
    int layoutDirection = 0;
    int uiModeType = 0;
    int uiModeNight = 0;
    int smallestScreenWidthDp = 0;
    int screenWidthDp = 0;
    int screenHeightDp = 0;
    int screenRound = 0;
    int wideColorGamut = 0;
    int hdr = 0;

    bool operator==(const ConfigurationNumbers &other) const { return std::memcmp(this, &other, sizeof other) == 0; }
};

// Without padding, whose bytes nothing sets.
static_assert(std::has_unique_object_representations_v<ConfigurationNumbers>, "is compared byte by byte");

/**
 * A device configuration: the qualifiers (language, screen, platform version and so on) of a value in a resource table,
 * or those of the device that values are chosen for. 0, or an empty text, means any. It owns no memory, and decoding one
 * takes about as long as looking up a value.
 *
 * The record in a table starts with its own size; older tools wrote shorter records, which leave the later fields 0:
 *
 * | offset | width            | fields                                                                             |
 * |--------|------------------|------------------------------------------------------------------------------------|
 * | 0      | u32              | size of the record, this field included                                            |
 * | 4      | u16, u16         | mcc, mnc                                                                           |
 * | 8      | 2 + 2 bytes      | language, region: two letters, or three characters of 5 bits each with bit 7 set   |
 * | 12     | u8, u8, u16      | orientation, touchscreen, density                                                  |
 * | 16     | u8, u8           | keyboard, navigation                                                               |
 * | 18     | u8               | input flags (keysHidden 0x03, navHidden 0x0c)                                      |
 * | 19     | u8               | grammatical gender 0x03                                                            |
 * | 20     | u16, u16         | screenWidth, screenHeight                                                          |
 * | 24     | u16, u16         | sdkVersion, minorVersion                                                           |
 * | 28     | u8               | screen layout (screenSize 0x0f, screenLong 0x30, layoutDirection 0xc0)             |
 * | 29     | u8               | ui mode (uiModeType 0x0f, uiModeNight 0x30)                                        |
 * | 30     | u16              | smallestScreenWidthDp                                                              |
 * | 32     | u16, u16         | screenWidthDp, screenHeightDp                                                      |
 * | 36     | 4 bytes          | script                                                                             |
 * | 40     | 8 bytes          | variant                                                                            |
 * | 48     | u8               | screenRound 0x03                                                                   |
 * | 49     | u8               | color mode (wideColorGamut 0x03, hdr 0x0c)                                         |
 * | 50     | 2 bytes          | reserved                                                                           |
 * | 52     | u8               | not 0: the build tool derived the script from the language                         |
 * | 53     | 8 bytes          | numbering system                                                                   |
 *
 * Among the values that match() the device, Android takes one that no other value isBetterThan(). It compares qualifier
 * by qualifier in a fixed order; the first in which two values differ decides.
 */
struct Configuration : ConfigurationNumbers {
    /// Densities with a special meaning.
    enum Density : int {
        DefaultDensity = 0,
        MediumDensity = 160, ///< at which a dp is a pixel
        AnyDensity = 0xfffe, ///< for drawables without pixels; preferred on every screen
        NoDensity = 0xffff,  ///< for pictures that are never scaled
    };

    /// Values of uiModeNight.
    enum NightMode : int {
        Day = 1,
        Night = 2,
    };

    /// Values of layoutDirection.
    enum LayoutDirection : int {
        LeftToRight = 1,
        RightToLeft = 2,
    };

    /// Decodes the record at the start of @p record. Deprecated language codes are kept.
    static Configuration read(const ByteView &record);
    /// A current phone at @p density with the newest platform. No locale is set.
    static Configuration phone(int density);

    bool hasLocale() const { return !language.isEmpty(); }
    LocaleCodes locale() const { return {language, script, region, variant}; }

    /// Whether a device of the configuration @p device may use a value for this one. Locales are not compared.
    bool matches(const Configuration &device) const;
    /// Whether @p device prefers a value for this configuration to one for @p other. False when neither is preferred.
    /// Locales are not compared. Precondition: both match @p device.
    bool isBetterThan(const Configuration &other, const Configuration &device) const;

    ShortText language;        ///< two or three letters, lower case
    ShortText region;          ///< two letters or three digits
    ShortText script;          ///< four letters ("Latn"); empty when the build tool derived it from the language
    ShortText variant;         ///< lower case
    ShortText numberingSystem; ///< digits of the locale ("latn"); matches() ignores it
};

#endif
