// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PLATFORMTHEMES_H
#define SORRELKIT_PLATFORMTHEMES_H

#include <QtGlobal>

namespace SorrelKit {

/// The platform's style that is the theme of an application which targets the API level @p targetSdkVersion and names no
/// theme. The numbers are those of Android's public resources.
constexpr quint32 platformTheme(int targetSdkVersion)
{
    constexpr int Honeycomb = 11;
    constexpr int IceCreamSandwich = 14;
    constexpr int Nougat = 24;
    constexpr quint32 Theme = 0x01030005;
    constexpr quint32 ThemeHolo = 0x0103006b;
    constexpr quint32 ThemeDeviceDefault = 0x01030128;
    constexpr quint32 ThemeDeviceDefaultLightDarkActionBar = 0x0103013f;
    if (targetSdkVersion < Honeycomb)
        return Theme;
    if (targetSdkVersion < IceCreamSandwich)
        return ThemeHolo;
    return targetSdkVersion < Nougat ? ThemeDeviceDefault : ThemeDeviceDefaultLightDarkActionBar;
}

} // namespace SorrelKit

#endif
