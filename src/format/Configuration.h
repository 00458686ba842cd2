// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONFIGURATION_H
#define CONFIGURATION_H

#include "format/ByteView.h"

#include <QString>

/**
 * The device configuration that a value in a resource table is for, or that values are asked for: language, screen,
 * platform version and so on. 0, or an empty text, means any.
 *
 * The record in a table (`ResTable_config`) begins with its size u32; one that is shorter than the fields below leaves
 * the others at 0, as older build tools write it.
 *
 * Which value Android takes: of those that match() the device, the one that none isBetterThan(). Qualifiers are looked
 * at one after another in a fixed order, and the first that two values differ in decides.
 */
struct Configuration {
    /// Densities with a meaning of their own.
    enum Density : int {
        DefaultDensity = 0,
        MediumDensity = 160, ///< at which a dp is a pixel
        AnyDensity = 0xfffe, ///< for what has no pixels, and so is preferred on every screen
        NoDensity = 0xffff,  ///< for what is never scaled
    };

    /// The record at the start of @p record. Codes of languages and regions are unpacked into letters, not yet replaced.
    static Configuration read(const ByteView &record);
    /// A phone of today at @p density, with the newest platform, in English nowhere: no locale is set.
    static Configuration phone(int density);

    /// Language, script, region and variant as a tag after BCP 47 ("sr-Latn", "es-419"); empty when there is none.
    QString languageTag() const;
    bool hasLocale() const { return !language.isEmpty(); }

    /// Whether a device of the configuration @p device may use a value for this one. Locales are not looked at.
    bool matches(const Configuration &device) const;
    /// Whether @p device prefers a value for this configuration to one for @p other; both match it. Locales are not
    /// looked at. False, too, when both are as good.
    bool isBetterThan(const Configuration &other, const Configuration &device) const;

    int mcc = 0;
    int mnc = 0;
    QString language; ///< two or three letters, lower case
    QString region;   ///< two letters or three digits
    QString script;   ///< four letters, as "Latn"; empty also when the build tool has derived it from the language
    QString variant;  ///< lower case
    QString numberingSystem; ///< the digits that the locale writes numbers with, as "latn"; not looked at by matches()
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
    int minorVersion = 0; ///< of sdkVersion; not looked at by matches()
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
};

#endif
