// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DeviceFacts.h"

#include <initializer_list>

namespace {

// The word for @p number in @p words, whose first one is for 0; the number for others.
QString wordOf(int number, std::initializer_list<const char *> words)
{
    return number >= 0 && number < int(words.size()) ? QString::fromLatin1(words.begin()[number])
                                                     : QString::number(number);
}

QString screenSize(int size)
{
    switch (size) {
    case 200:
        return QStringLiteral("small");
    case 300:
        return QStringLiteral("normal");
    case 400:
        return QStringLiteral("large");
    case 500:
        return QStringLiteral("xlarge");
    default:
        return QString::number(size);
    }
}

QJsonObject configurationJson(const ManifestAttributes &attributes)
{
    const int touchScreen = attributes.number("reqTouchScreen");
    const int keyboard = attributes.number("reqKeyboardType");
    const int navigation = attributes.number("reqNavigation");
    return {
        {QStringLiteral("touchScreen"), wordOf(touchScreen, {"", "notouch", "stylus", "finger"})},
        {QStringLiteral("keyboard"), wordOf(keyboard, {"", "nokeys", "qwerty", "twelvekey"})},
        {QStringLiteral("hardKeyboard"), attributes.isTrue("reqHardKeyboard")},
        {QStringLiteral("navigation"), wordOf(navigation, {"", "nonav", "dpad", "trackball", "wheel"})},
        {QStringLiteral("fiveWayNavigation"), attributes.isTrue("reqFiveWayNav")},
    };
}

QString openGlText(int version)
{
    return QStringLiteral("%1.%2").arg(quint32(version) >> 16U).arg(quint32(version) & 0xffffU);
}

} // namespace

void DeviceFacts::add(const QString &path, const ManifestAttributes &attributes)
{
    if (path == QLatin1String("supports-screens"))
        m_screens = attributes;
    else if (path == QLatin1String("compatible-screens/screen"))
        m_compatibleScreens.append(QJsonObject{{QStringLiteral("size"), screenSize(attributes.number("screenSize"))},
                                               {QStringLiteral("density"), attributes.number("screenDensity")}});
    else if (path == QLatin1String("uses-configuration"))
        m_configurations.append(configurationJson(attributes));
    else if (path == QLatin1String("supports-gl-texture"))
        m_textures.append(attributes.text("name"));
    else if (path == QLatin1String("supports-input/input-type"))
        m_inputs.append(attributes.text("name"));
    else if (path == QLatin1String("feature-group"))
        m_groups.push_back({attributes.text("label"), {}, {}});
    else if (path == QLatin1String("feature-group/uses-feature"))
        addFeature(attributes, &m_groups.back());
}

void DeviceFacts::addFeature(const ManifestAttributes &feature, Group *group)
{
    const QString name = feature.text("name");
    if (name.isEmpty())
        group->openGlEs = openGlText(feature.number("glEsVersion"));
    else
        group->features.append(
            QJsonObject{{QStringLiteral("name"), name}, {QStringLiteral("version"), feature.number("version")}});
}

void DeviceFacts::addTo(QJsonObject *json, int targetSdkVersion) const
{
    json->insert(QStringLiteral("screens"), screens(targetSdkVersion));
    json->insert(QStringLiteral("compatibleScreens"), m_compatibleScreens);
    json->insert(QStringLiteral("usesConfigurations"), m_configurations);
    json->insert(QStringLiteral("glTextures"), m_textures);
    json->insert(QStringLiteral("inputs"), m_inputs);
    QJsonArray groups;
    for (const Group &group : m_groups)
        groups.append(QJsonObject{{QStringLiteral("label"), group.label},
                                  {QStringLiteral("openGlEs"), group.openGlEs},
                                  {QStringLiteral("features"), group.features}});
    json->insert(QStringLiteral("featureGroups"), groups);
}

QJsonObject DeviceFacts::screens(int targetSdkVersion) const
{
    constexpr int FirstSdkWithScreens = 4;
    constexpr int FirstSdkWithXlarge = 9;
    const bool knowsScreens = targetSdkVersion >= FirstSdkWithScreens;
    const bool knowsXlarge = targetSdkVersion >= FirstSdkWithXlarge;
    const int smallest = m_screens.number("requiresSmallestWidthDp");
    const int compatible = m_screens.number("compatibleWidthLimitDp");
    // Widths count instead of the sizes when there are no sizes.
    bool isByWidth = smallest > 0;
    for (const char *name : {"smallScreens", "normalScreens", "largeScreens", "xlargeScreens"})
        isByWidth = isByWidth && m_screens.text(name).isEmpty();
    const auto supports = [&](const char *name, int width, bool fallback) {
        if (!isByWidth)
            return m_screens.isTrue(name, fallback);
        return smallest <= width && width <= (compatible > 0 ? compatible : smallest);
    };
    return {
        {QStringLiteral("small"), supports("smallScreens", 240, knowsScreens)},
        {QStringLiteral("normal"), supports("normalScreens", 320, true)},
        {QStringLiteral("large"), supports("largeScreens", 480, knowsScreens)},
        {QStringLiteral("xlarge"), supports("xlargeScreens", 720, knowsXlarge)},
        {QStringLiteral("anyDensity"), m_screens.isTrue("anyDensity", knowsScreens)},
        {QStringLiteral("smallestWidth"), smallest},
        {QStringLiteral("compatibleWidth"), compatible},
        {QStringLiteral("largestWidth"), m_screens.number("largestWidthLimitDp")},
    };
}
