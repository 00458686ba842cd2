// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ProvidedServices.h"

namespace {

// A component counts when it has the action in a filter, and the permission that keeps other applications from binding it.
struct Rule {
    const char *name;
    const char *element;
    const char *action;
    const char *permission; // empty for any
};

constexpr Rule providedRules[] = {
    {"accessibility", "service", "android.accessibilityservice.AccessibilityService",
     "android.permission.BIND_ACCESSIBILITY_SERVICE"},
    {"camera", "activity", "android.media.action.STILL_IMAGE_CAMERA", ""},
    {"camera", "activity", "android.media.action.VIDEO_CAMERA", ""},
    {"camera-when-locked", "activity", "android.media.action.STILL_IMAGE_CAMERA_SECURE", ""},
    {"card-emulation", "service", "android.nfc.cardemulation.action.HOST_APDU_SERVICE",
     "android.permission.BIND_NFC_SERVICE"},
    {"card-emulation", "service", "android.nfc.cardemulation.action.OFF_HOST_APDU_SERVICE",
     "android.permission.BIND_NFC_SERVICE"},
    {"device-admin", "receiver", "android.app.action.DEVICE_ADMIN_ENABLED", "android.permission.BIND_DEVICE_ADMIN"},
    {"documents", "provider", "android.content.action.DOCUMENTS_PROVIDER", "android.permission.MANAGE_DOCUMENTS"},
    {"input-method", "service", "android.view.InputMethod", ""},
    {"notification-listener", "service", "android.service.notification.NotificationListenerService",
     "android.permission.BIND_NOTIFICATION_LISTENER_SERVICE"},
    {"print", "service", "android.printservice.PrintService", "android.permission.BIND_PRINT_SERVICE"},
    {"screen-saver", "service", "android.service.dreams.DreamService", "android.permission.BIND_DREAM_SERVICE"},
    {"search", "activity", "android.intent.action.SEARCH", ""},
    {"wallpaper", "service", "android.service.wallpaper.WallpaperService", ""},
    {"widget", "receiver", "android.appwidget.action.APPWIDGET_UPDATE", ""},
};

} // namespace

void ProvidedServices::add(const QString &path, const ManifestAttributes &attributes)
{
    const QString section = path.section(QLatin1Char('/'), 1, 1);
    const QString element = section == QLatin1String("activity-alias") ? QStringLiteral("activity") : section;
    const QString rest = path.section(QLatin1Char('/'), 2);
    if (!path.startsWith(QLatin1String("application/")))
        return;
    if (rest.isEmpty())
        m_component = attributes;
    if (rest != QLatin1String("intent-filter/action"))
        return;
    const QString action = attributes.text("name");
    const QString permission = m_component.text("permission");
    for (const Rule &rule : providedRules) {
        const bool hasPermission = *rule.permission == '\0' || permission == QLatin1String(rule.permission);
        if (hasPermission && element == QLatin1String(rule.element) && action == QLatin1String(rule.action))
            m_found.insert(QString::fromLatin1(rule.name));
    }
}

QStringList ProvidedServices::names() const
{
    QStringList names(m_found.cbegin(), m_found.cend());
    names.sort();
    return names;
}
