// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ResourceConfig.h"

#include "stream/Extractor.h"

#include <QStringList>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <type_traits>

namespace {

constexpr int LowerCase = 0x20; ///< the bit that letters of lower case have

struct Qualifier {
    int value;
    const char *name;
};

void appendNamed(QStringList &items, int value, std::initializer_list<Qualifier> qualifiers)
{
    for (const Qualifier &qualifier : qualifiers) {
        if (qualifier.value == value)
            items.append(QLatin1String(qualifier.name));
    }
}

void appendNumber(QStringList &items, const char *pattern, int value)
{
    if (value != 0)
        items.append(QString::fromLatin1(pattern).arg(value));
}

bool isLetter(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

bool isSet(const char (&code)[2])
{
    return code[0] != 0 && code[1] != 0;
}

QString text(const char (&code)[2])
{
    return QString::fromLatin1(code, 2);
}

} // namespace

void ResourceConfig::load(Extractor *reader)
{
    const int size = reader->get32();
    *this = ResourceConfig();
    if (reader->failed())
        return;

    reader->pushBoundary64(qint64(size) - 4);
    if (size > 7) {
        mcc = reader->get16();
        mnc = reader->get16();
    }
    if (size > 11) {
        for (char *byte : {&language[0], &language[1], &country[0], &country[1]})
            *byte = char(reader->get8());
    }
    if (size > 15) {
        orientation = reader->get8();
        touchscreen = reader->get8();
        density = reader->get16();
    }
    if (size > 19) {
        keyboard = reader->get8();
        navigation = reader->get8();
        const int inputFlags = reader->get8();
        keysHidden = inputFlags & 0x03;
        navHidden = (inputFlags & 0x0c) >> 2;
        reader->skip(1);
    }
    if (size > 23) {
        screenWidth = reader->get16();
        screenHeight = reader->get16();
    }
    if (size > 27) {
        sdkVersion = reader->get16();
        reader->skip(2);
    }
    if (size > 31) {
        const int screenLayout = reader->get8();
        screenSize = screenLayout & 0x0f;
        screenLong = (screenLayout & 0x30) >> 4;
        layoutDirection = (screenLayout & 0xc0) >> 6;
        const int uiMode = reader->get8();
        uiModeType = uiMode & 0x0f;
        uiModeNight = (uiMode & 0x30) >> 4;
        smallestScreenWidthDp = reader->get16();
    }
    if (size > 35) {
        screenWidthDp = reader->get16();
        screenHeightDp = reader->get16();
    }
    reader->popBoundary();
}

QString ResourceConfig::locale() const
{
    if (!isSet(language))
        return {};
    // A fast path: every locale of a table is formatted for every label.
    const bool hasCountry = isSet(country);
    if (std::all_of(language, language + 2, isLetter) && (!hasCountry || std::all_of(country, country + 2, isLetter))) {
        const char name[] = {char(language[0] | LowerCase), char(language[1] | LowerCase), '-',
                             char(country[0] & ~LowerCase), char(country[1] & ~LowerCase)};
        return QString::fromLatin1(name, hasCountry ? 5 : 2);
    }
    QString locale = text(language).toLower();
    if (hasCountry)
        locale += QLatin1Char('-') + text(country).toUpper();
    return locale;
}

QString ResourceConfig::toString() const
{
    QStringList items;
    appendNumber(items, "mcc%1", mcc);
    appendNumber(items, "mnc%1", mnc);
    if (isSet(language)) {
        items.append(text(language));
        if (isSet(country))
            items.append(QLatin1Char('r') + text(country));
    }
    appendNamed(items, layoutDirection, {{1, "ldltr"}, {2, "ldrtl"}});
    appendNumber(items, "sw%1dp", smallestScreenWidthDp);
    appendNumber(items, "w%1dp", screenWidthDp);
    appendNumber(items, "h%1dp", screenHeightDp);
    appendNamed(items, screenSize, {{1, "small"}, {2, "normal"}, {3, "large"}, {4, "xlarge"}});
    appendNamed(items, screenLong, {{1, "notlong"}, {2, "long"}});
    appendNamed(items, orientation, {{1, "port"}, {2, "land"}, {3, "square"}});
    appendNamed(items, uiModeType, {{2, "desk"}, {3, "car"}, {4, "television"}, {5, "appliance"}});
    appendNamed(items, uiModeNight, {{1, "notnight"}, {2, "night"}});
    appendNamed(items, density,
                {{120, "ldpi"},
                 {160, "mdpi"},
                 {213, "tvdpi"},
                 {240, "hdpi"},
                 {320, "xhdpi"},
                 {480, "xxhdpi"},
                 {65535, "nodpi"}});
    appendNamed(items, touchscreen, {{1, "notouch"}, {2, "stylus"}, {3, "finger"}});
    appendNamed(items, keysHidden, {{1, "keysexposed"}, {2, "keyshidden"}, {3, "keyssoft"}});
    appendNamed(items, keyboard, {{1, "nokeys"}, {2, "qwerty"}, {3, "12key"}});
    appendNamed(items, navHidden, {{1, "navexposed"}, {2, "navhidden"}});
    appendNamed(items, navigation, {{1, "nonav"}, {2, "dpad"}, {3, "trackball"}, {4, "wheel"}});
    if (screenWidth != 0 || screenHeight != 0)
        items.append(QStringLiteral("%1x%2").arg(screenWidth).arg(screenHeight));
    appendNumber(items, "v%1", sdkVersion);
    return items.join(QLatin1Char('-'));
}

bool ResourceConfig::operator==(const ResourceConfig &other) const
{
    static_assert(std::has_unique_object_representations_v<ResourceConfig>, "the bytes are the fields");
    return std::memcmp(this, &other, sizeof *this) == 0;
}
