// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDATTRIBUTENAMES_H
#define ANDROIDATTRIBUTENAMES_H

#include "format/AndroidAttributes.h"

#include <algorithm>
#include <iterator>

/// An attribute whose name is known by its resource id. Documents may give it another name, or none.
struct AndroidAttribute {
    quint32 id;
    const char *name;
};

/// In the order of their ids. libsorrel's documents name these attributes by their ids, so the list stays as it is.
constexpr AndroidAttribute AndroidAttributes[] = {
    {Attr::Theme, "theme"},
    {Attr::Label, "label"},
    {Attr::Icon, "icon"},
    {Attr::Name, "name"},
    {Attr::Permission, "permission"},
    {Attr::Debuggable, "debuggable"},
    {Attr::LaunchMode, "launchMode"},
    {Attr::ScreenOrientation, "screenOrientation"},
    {Attr::ConfigChanges, "configChanges"},
    {Attr::Resource, "resource"},
    {Attr::Scheme, "scheme"},
    {Attr::Host, "host"},
    {Attr::MinSdkVersion, "minSdkVersion"},
    {Attr::VersionCode, "versionCode"},
    {Attr::VersionName, "versionName"},
    {Attr::ReqTouchScreen, "reqTouchScreen"},
    {Attr::ReqKeyboardType, "reqKeyboardType"},
    {Attr::ReqHardKeyboard, "reqHardKeyboard"},
    {Attr::ReqNavigation, "reqNavigation"},
    {Attr::WindowSoftInputMode, "windowSoftInputMode"},
    {Attr::ReqFiveWayNav, "reqFiveWayNav"},
    {Attr::TargetSdkVersion, "targetSdkVersion"},
    {Attr::MaxSdkVersion, "maxSdkVersion"},
    {Attr::TestOnly, "testOnly"},
    {Attr::GlEsVersion, "glEsVersion"},
    {Attr::Required, "required"},
    {Attr::InstallLocation, "installLocation"},
    {Attr::HardwareAccelerated, "hardwareAccelerated"},
    {Attr::LargeHeap, "largeHeap"},
    {Attr::PublicKey, "publicKey"},
};

/// The index of the attribute @p id in AndroidAttributes, or -1.
inline int indexOfAndroidAttribute(quint32 id)
{
    const auto *found =
        std::lower_bound(std::begin(AndroidAttributes), std::end(AndroidAttributes), id,
                         [](const AndroidAttribute &attribute, quint32 wanted) { return attribute.id < wanted; });
    return found != std::end(AndroidAttributes) && found->id == id ? int(found - std::begin(AndroidAttributes)) : -1;
}

#endif
