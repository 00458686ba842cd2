// SPDX-License-Identifier: LGPL-2.1-or-later
#include "entry/EntryRule.h"

#include "format/AndroidAttributes.h"

#include <algorithm>
#include <iterator>

namespace SorrelKit {

namespace {

using Kind = EntryRule::Kind;
using Element = EntryRule::Element;

constexpr char mainAction[] = "android.intent.action.MAIN";
constexpr char wallpaperAction[] = "android.service.wallpaper.WallpaperService";
constexpr char wallpaperDetails[] = "android.service.wallpaper";
constexpr char wallpaperPermission[] = "android.permission.BIND_WALLPAPER";

constexpr EntryRule entryRules[] = {
    {Kind::Launcher, Element::Activity, mainAction, nullptr, "android.intent.category.LAUNCHER", nullptr, nullptr},
    {Kind::Television, Element::Activity, mainAction, nullptr, "android.intent.category.LEANBACK_LAUNCHER", nullptr,
     nullptr},
    {Kind::Car, Element::Activity, mainAction, nullptr, "android.intent.category.CAR_LAUNCHER", nullptr, nullptr},
    {Kind::CarService, Element::Service, "androidx.car.app.CarAppService", "android.media.browse.MediaBrowserService",
     nullptr, nullptr, nullptr},
    {Kind::HomeScreen, Element::Activity, mainAction, nullptr, "android.intent.category.HOME", nullptr, nullptr},
    {Kind::WatchFace, Element::Service, wallpaperAction, nullptr,
     "com.google.android.wearable.watchface.category.WATCH_FACE", wallpaperDetails, wallpaperPermission},
    {Kind::LiveWallpaper, Element::Service, wallpaperAction, nullptr, nullptr, wallpaperDetails, wallpaperPermission},
    {Kind::QuickSettingsTile, Element::Service, "android.service.quicksettings.action.QS_TILE", nullptr, nullptr,
     nullptr, "android.permission.BIND_QUICK_SETTINGS_TILE"},
    {Kind::InputMethod, Element::Service, "android.view.InputMethod", nullptr, nullptr, "android.view.im",
     "android.permission.BIND_INPUT_METHOD"},
    {Kind::ScreenSaver, Element::Service, "android.service.dreams.DreamService", nullptr, nullptr,
     "android.service.dream", nullptr},
    {Kind::Widget, Element::Receiver, "android.appwidget.action.APPWIDGET_UPDATE", nullptr, nullptr,
     "android.appwidget.provider", nullptr},
    {Kind::ShareTarget, Element::Activity, "android.intent.action.SEND", "android.intent.action.SEND_MULTIPLE",
     "android.intent.category.DEFAULT", nullptr, nullptr},
    {Kind::Instant, Element::Activity, nullptr, nullptr, nullptr, "default-url", nullptr},
};

} // namespace

const EntryRule *EntryRule::find(Kind kind)
{
    const auto *const found = std::find_if(std::begin(entryRules), std::end(entryRules),
                                           [kind](const EntryRule &rule) { return rule.kind == kind; });
    return found != std::end(entryRules) ? found : nullptr;
}

bool EntryRule::isFor(const XmlElement &component) const
{
    switch (element) {
    case Element::Service:
        return component.name == QLatin1String("service");
    case Element::Receiver:
        return component.name == QLatin1String("receiver");
    case Element::Activity:
        break;
    }
    return component.name == QLatin1String("activity-alias") || component.name == QLatin1String("activity");
}

bool EntryRule::matches(const XmlElement &child) const
{
    if (action == nullptr) {
        const XmlAttribute *const name = child.attribute(Attr::Name);
        return child.name == QLatin1String("meta-data") && name != nullptr
               && name->plainText() == QLatin1String(metaData);
    }
    if (child.name != QLatin1String("intent-filter"))
        return false;
    const auto has = [&child](const char *tag, const char *name) {
        return childNamed(child, QLatin1String(tag), QLatin1String(name)) != nullptr;
    };
    return (category == nullptr || has("category", category))
           && (has("action", action) || (otherAction != nullptr && has("action", otherAction)));
}

const XmlElement *EntryRule::childNamed(const XmlElement &component, QLatin1String element, QLatin1String name)
{
    for (const XmlElement &child : component.children) {
        const XmlAttribute *const own = child.name == element ? child.attribute(Attr::Name) : nullptr;
        if (own != nullptr && own->plainText() == name)
            return &child;
    }
    return nullptr;
}

} // namespace SorrelKit
