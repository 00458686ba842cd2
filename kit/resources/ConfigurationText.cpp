// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/ConfigurationText.h"

#include <QStringList>

#include <initializer_list>

namespace SorrelKit {

namespace {

struct Word {
    int value;
    const char *text;
};

void appendWord(QStringList &words, const char *field, int value, std::initializer_list<Word> known)
{
    if (value == 0)
        return;
    for (const Word &word : known) {
        if (word.value == value) {
            words.append(QLatin1String(word.text));
            return;
        }
    }
    words.append(QLatin1String(field) + QLatin1Char('=') + QString::number(value));
}

void appendNumber(QStringList &words, const char *prefix, int value, const char *unit = "")
{
    if (value != 0)
        words.append(QLatin1String(prefix) + QString::number(value) + QLatin1String(unit));
}

QString localeText(const Configuration &configuration)
{
    const bool isPlain =
        configuration.script.isEmpty() && configuration.variant.isEmpty() && configuration.numberingSystem.isEmpty();
    if (isPlain && configuration.region.isEmpty())
        return configuration.language.toString();
    if (isPlain)
        return configuration.language.toString() + QLatin1String("-r") + configuration.region.latin1();
    QStringList parts{QStringLiteral("b"), configuration.language.toString()};
    for (const ShortText &part : {configuration.script, configuration.region, configuration.variant}) {
        if (!part.isEmpty())
            parts.append(part.toString());
    }
    if (!configuration.numberingSystem.isEmpty())
        parts += {QStringLiteral("u"), QStringLiteral("nu"), configuration.numberingSystem.toString()};
    return parts.join(QLatin1Char('+'));
}

void appendScreen(QStringList &words, const Configuration &configuration)
{
    appendNumber(words, "sw", configuration.smallestScreenWidthDp, "dp");
    appendNumber(words, "w", configuration.screenWidthDp, "dp");
    appendNumber(words, "h", configuration.screenHeightDp, "dp");
    appendWord(words, "screenSize", configuration.screenSize,
               {{1, "small"}, {2, "normal"}, {3, "large"}, {4, "xlarge"}});
    appendWord(words, "screenLong", configuration.screenLong, {{1, "notlong"}, {2, "long"}});
    appendWord(words, "screenRound", configuration.screenRound, {{1, "notround"}, {2, "round"}});
    appendWord(words, "wideColorGamut", configuration.wideColorGamut, {{1, "nowidecg"}, {2, "widecg"}});
    appendWord(words, "hdr", configuration.hdr, {{1, "lowdr"}, {2, "highdr"}});
    appendWord(words, "orientation", configuration.orientation, {{1, "port"}, {2, "land"}, {3, "square"}});
}

void appendDensity(QStringList &words, int density)
{
    const std::initializer_list<Word> known = {{120, "ldpi"},
                                               {160, "mdpi"},
                                               {213, "tvdpi"},
                                               {240, "hdpi"},
                                               {320, "xhdpi"},
                                               {480, "xxhdpi"},
                                               {640, "xxxhdpi"},
                                               {Configuration::AnyDensity, "anydpi"},
                                               {Configuration::NoDensity, "nodpi"}};
    for (const Word &word : known) {
        if (word.value == density) {
            words.append(QLatin1String(word.text));
            return;
        }
    }
    appendNumber(words, "", density, "dpi");
}

void appendInput(QStringList &words, const Configuration &configuration)
{
    appendWord(words, "touchscreen", configuration.touchscreen, {{1, "notouch"}, {2, "stylus"}, {3, "finger"}});
    appendWord(words, "keysHidden", configuration.keysHidden, {{1, "keysexposed"}, {2, "keyshidden"}, {3, "keyssoft"}});
    appendWord(words, "keyboard", configuration.keyboard, {{1, "nokeys"}, {2, "qwerty"}, {3, "12key"}});
    appendWord(words, "navHidden", configuration.navHidden, {{1, "navexposed"}, {2, "navhidden"}});
    appendWord(words, "navigation", configuration.navigation,
               {{1, "nonav"}, {2, "dpad"}, {3, "trackball"}, {4, "wheel"}});
    if (configuration.screenWidth != 0 || configuration.screenHeight != 0)
        words.append(QStringLiteral("%1x%2").arg(configuration.screenWidth).arg(configuration.screenHeight));
}

} // namespace

QString configurationText(const Configuration &configuration)
{
    QStringList words;
    appendNumber(words, "mcc", configuration.mcc);
    appendNumber(words, "mnc", configuration.mnc);
    if (configuration.hasLocale())
        words.append(localeText(configuration));
    appendWord(words, "grammaticalGender", configuration.grammaticalGender,
               {{1, "neuter"}, {2, "feminine"}, {3, "masculine"}});
    appendWord(words, "layoutDirection", configuration.layoutDirection, {{1, "ldltr"}, {2, "ldrtl"}});
    appendScreen(words, configuration);
    appendWord(words, "uiModeType", configuration.uiModeType,
               {{2, "desk"}, {3, "car"}, {4, "television"}, {5, "appliance"}, {6, "watch"}, {7, "vrheadset"}});
    appendWord(words, "uiModeNight", configuration.uiModeNight, {{1, "notnight"}, {2, "night"}});
    appendDensity(words, configuration.density);
    appendInput(words, configuration);
    if (configuration.minorVersion != 0)
        words.append(QStringLiteral("v%1.%2").arg(configuration.sdkVersion).arg(configuration.minorVersion));
    else
        appendNumber(words, "v", configuration.sdkVersion);
    return words.join(QLatin1Char('-'));
}

} // namespace SorrelKit
