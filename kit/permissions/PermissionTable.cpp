// SPDX-License-Identifier: LGPL-2.1-or-later
#include "permissions/PermissionTable.h"

#include <algorithm>
#include <iterator>

namespace SorrelKit::PermissionTable {

namespace {

struct PermissionRow {
    const char *name;
    quint32 protection;
    const char *group;
};

// In the order of their names.
constexpr PermissionRow permissionRows[] = {
    {"android.permission.ACCEPT_HANDOVER", 0x1, "PHONE"},
    {"android.permission.ACCESS_BACKGROUND_LOCATION", 0x1001, "LOCATION"},
    {"android.permission.ACCESS_CHECKIN_PROPERTIES", 0x12, nullptr},
    {"android.permission.ACCESS_COARSE_LOCATION", 0x1001, "LOCATION"},
    {"android.permission.ACCESS_FINE_LOCATION", 0x1001, "LOCATION"},
    {"android.permission.ACCESS_HIDDEN_PROFILES", 0x0, nullptr},
    {"android.permission.ACCESS_LOCATION_EXTRA_COMMANDS", 0x0, nullptr},
    {"android.permission.ACCESS_MEDIA_LOCATION", 0x1, "READ_MEDIA_VISUAL"},
    {"android.permission.ACCESS_MOCK_LOCATION", 0x2, nullptr},
    {"android.permission.ACCESS_NETWORK_STATE", 0x1000, nullptr},
    {"android.permission.ACCESS_NOTIFICATION_POLICY", 0x0, nullptr},
    {"android.permission.ACCESS_WIFI_STATE", 0x0, nullptr},
    {"android.permission.ACCESS_WIMAX_STATE", 0x0, nullptr},
    {"android.permission.ACCOUNT_MANAGER", 0x2, nullptr},
    {"android.permission.ACTIVITY_RECOGNITION", 0x1001, "ACTIVITY_RECOGNITION"},
    {"android.permission.ANSWER_PHONE_CALLS", 0x2001, "PHONE"},
    {"android.permission.AUTHENTICATE_ACCOUNTS", 0x0, nullptr},
    {"android.permission.BATTERY_STATS", 0x32, nullptr},
    {"android.permission.BIND_ACCESSIBILITY_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_APPWIDGET", 0x12, nullptr},
    {"android.permission.BIND_AUTOFILL_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_CALL_REDIRECTION_SERVICE", 0x12, nullptr},
    {"android.permission.BIND_CARRIER_MESSAGING_CLIENT_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_CARRIER_SERVICES", 0x12, nullptr},
    {"android.permission.BIND_CHOOSER_TARGET_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_CONDITION_PROVIDER_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_DEVICE_ADMIN", 0x2, nullptr},
    {"android.permission.BIND_DREAM_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_INCALL_SERVICE", 0x12, nullptr},
    {"android.permission.BIND_INPUT_METHOD", 0x2, nullptr},
    {"android.permission.BIND_MIDI_DEVICE_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_NFC_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_NOTIFICATION_LISTENER_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_PRINT_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_QUICK_SETTINGS_TILE", 0x2, nullptr},
    {"android.permission.BIND_REMOTEVIEWS", 0x12, nullptr},
    {"android.permission.BIND_SCREENING_SERVICE", 0x12, nullptr},
    {"android.permission.BIND_TELECOM_CONNECTION_SERVICE", 0x12, nullptr},
    {"android.permission.BIND_TEXT_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_TV_INPUT", 0x12, nullptr},
    {"android.permission.BIND_VISUAL_VOICEMAIL_SERVICE", 0x12, nullptr},
    {"android.permission.BIND_VOICE_INTERACTION", 0x2, nullptr},
    {"android.permission.BIND_VPN_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_VR_LISTENER_SERVICE", 0x2, nullptr},
    {"android.permission.BIND_WALLPAPER", 0x12, nullptr},
    {"android.permission.BLUETOOTH", 0x0, nullptr},
    {"android.permission.BLUETOOTH_ADMIN", 0x0, nullptr},
    {"android.permission.BLUETOOTH_ADVERTISE", 0x1, "NEARBY_DEVICES"},
    {"android.permission.BLUETOOTH_CONNECT", 0x1, "NEARBY_DEVICES"},
    {"android.permission.BLUETOOTH_PRIVILEGED", 0x12, nullptr},
    {"android.permission.BLUETOOTH_SCAN", 0x1, "NEARBY_DEVICES"},
    {"android.permission.BODY_SENSORS", 0x1, "SENSORS"},
    {"android.permission.BODY_SENSORS_BACKGROUND", 0x1, "SENSORS"},
    {"android.permission.BROADCAST_PACKAGE_REMOVED", 0x2, nullptr},
    {"android.permission.BROADCAST_SMS", 0x2, nullptr},
    {"android.permission.BROADCAST_STICKY", 0x0, nullptr},
    {"android.permission.BROADCAST_WAP_PUSH", 0x2, nullptr},
    {"android.permission.CALL_COMPANION_APP", 0x0, nullptr},
    {"android.permission.CALL_PHONE", 0x1, "PHONE"},
    {"android.permission.CALL_PRIVILEGED", 0x12, nullptr},
    {"android.permission.CAMERA", 0x1001, "CAMERA"},
    {"android.permission.CAPTURE_AUDIO_OUTPUT", 0x12, nullptr},
    {"android.permission.CHANGE_COMPONENT_ENABLED_STATE", 0x12, nullptr},
    {"android.permission.CHANGE_CONFIGURATION", 0x32, nullptr},
    {"android.permission.CHANGE_NETWORK_STATE", 0x0, nullptr},
    {"android.permission.CHANGE_OVERLAY_PACKAGES", 0x12, nullptr},
    {"android.permission.CHANGE_WIFI_MULTICAST_STATE", 0x0, nullptr},
    {"android.permission.CHANGE_WIFI_STATE", 0x0, nullptr},
    {"android.permission.CHANGE_WIMAX_STATE", 0x0, nullptr},
    {"android.permission.CLEAR_APP_CACHE", 0x12, nullptr},
    {"android.permission.CONTROL_LOCATION_UPDATES", 0x12, nullptr},
    {"android.permission.CREDENTIAL_MANAGER_QUERY_CANDIDATE_CREDENTIALS", 0x0, nullptr},
    {"android.permission.CREDENTIAL_MANAGER_SET_ALLOWED_PROVIDERS", 0x0, nullptr},
    {"android.permission.CREDENTIAL_MANAGER_SET_ORIGIN", 0x0, nullptr},
    {"android.permission.DELETE_CACHE_FILES", 0x12, nullptr},
    {"android.permission.DELETE_PACKAGES", 0x12, nullptr},
    {"android.permission.DELIVER_COMPANION_MESSAGES", 0x0, nullptr},
    {"android.permission.DETECT_SCREEN_CAPTURE", 0x0, nullptr},
    {"android.permission.DETECT_SCREEN_RECORDING", 0x0, nullptr},
    {"android.permission.DEVICE_POWER", 0x2, nullptr},
    {"android.permission.DIAGNOSTIC", 0x2, nullptr},
    {"android.permission.DISABLE_KEYGUARD", 0x0, nullptr},
    {"android.permission.DUMP", 0x32, nullptr},
    {"android.permission.ENFORCE_UPDATE_OWNERSHIP", 0x0, nullptr},
    {"android.permission.EXPAND_STATUS_BAR", 0x0, nullptr},
    {"android.permission.FACTORY_TEST", 0x2, nullptr},
    {"android.permission.FLASHLIGHT", 0x0, nullptr},
    {"android.permission.FORCE_STOP_PACKAGES", 0x12, nullptr},
    {"android.permission.FOREGROUND_SERVICE", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_CAMERA", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_CONNECTED_DEVICE", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_DATA_SYNC", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_HEALTH", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_LOCATION", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_MEDIA_PLAYBACK", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_MEDIA_PROCESSING", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_MEDIA_PROJECTION", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_MICROPHONE", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_PHONE_CALL", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_REMOTE_MESSAGING", 0x1000, nullptr},
    {"android.permission.FOREGROUND_SERVICE_SPECIAL_USE", 0x1040, nullptr},
    {"android.permission.FOREGROUND_SERVICE_SYSTEM_EXEMPTED", 0x1000, nullptr},
    {"android.permission.GET_ACCOUNTS", 0x1, "CONTACTS"},
    {"android.permission.GET_ACCOUNTS_PRIVILEGED", 0x12, nullptr},
    {"android.permission.GET_PACKAGE_SIZE", 0x0, nullptr},
    {"android.permission.GET_TASKS", 0x0, nullptr},
    {"android.permission.GLOBAL_SEARCH", 0x12, nullptr},
    {"android.permission.HIDE_OVERLAY_WINDOWS", 0x0, nullptr},
    {"android.permission.HIGH_SAMPLING_RATE_SENSORS", 0x0, nullptr},
    {"android.permission.INJECT_EVENTS", 0x2, nullptr},
    {"android.permission.INSTALL_LOCATION_PROVIDER", 0x12, nullptr},
    {"android.permission.INSTALL_PACKAGES", 0x12, nullptr},
    {"android.permission.INSTANT_APP_FOREGROUND_SERVICE", 0x1062, nullptr},
    {"android.permission.INTERACT_ACROSS_USERS", 0x32, nullptr},
    {"android.permission.INTERACT_ACROSS_USERS_FULL", 0x102, nullptr},
    {"android.permission.INTERNET", 0x1000, nullptr},
    {"android.permission.KILL_BACKGROUND_PROCESSES", 0x0, nullptr},
    {"android.permission.LOADER_USAGE_STATS", 0x52, nullptr},
    {"android.permission.LOCATION_HARDWARE", 0x12, nullptr},
    {"android.permission.MANAGE_ACCOUNTS", 0x0, nullptr},
    {"android.permission.MANAGE_DOCUMENTS", 0x40002, nullptr},
    {"android.permission.MANAGE_EXTERNAL_STORAGE", 0x442, nullptr},
    {"android.permission.MANAGE_MEDIA", 0x442, nullptr},
    {"android.permission.MANAGE_OWN_CALLS", 0x0, nullptr},
    {"android.permission.MANAGE_USB", 0x12, nullptr},
    {"android.permission.MASTER_CLEAR", 0x12, nullptr},
    {"android.permission.MEDIA_CONTENT_CONTROL", 0x12, nullptr},
    {"android.permission.MODIFY_AUDIO_SETTINGS", 0x0, nullptr},
    {"android.permission.MODIFY_PHONE_STATE", 0x12, nullptr},
    {"android.permission.MOUNT_FORMAT_FILESYSTEMS", 0x12, nullptr},
    {"android.permission.MOUNT_UNMOUNT_FILESYSTEMS", 0x12, nullptr},
    {"android.permission.NEARBY_WIFI_DEVICES", 0x1, "NEARBY_DEVICES"},
    {"android.permission.NFC", 0x0, nullptr},
    {"android.permission.NFC_PREFERRED_PAYMENT_INFO", 0x0, nullptr},
    {"android.permission.NFC_TRANSACTION_EVENT", 0x0, nullptr},
    {"android.permission.PACKAGE_USAGE_STATS", 0x72, nullptr},
    {"android.permission.PERSISTENT_ACTIVITY", 0x0, nullptr},
    {"android.permission.POST_NOTIFICATIONS", 0x1001, "NOTIFICATIONS"},
    {"android.permission.PROCESS_OUTGOING_CALLS", 0x1, "CALL_LOG"},
    {"android.permission.QUERY_ALL_PACKAGES", 0x0, nullptr},
    {"android.permission.READ_BASIC_PHONE_STATE", 0x0, nullptr},
    {"android.permission.READ_CALENDAR", 0x1, "CALENDAR"},
    {"android.permission.READ_CALL_LOG", 0x1, "CALL_LOG"},
    {"android.permission.READ_CELL_BROADCASTS", 0x1, "SMS"},
    {"android.permission.READ_CONTACTS", 0x1, "CONTACTS"},
    {"android.permission.READ_EXTERNAL_STORAGE", 0x1, "STORAGE"},
    {"android.permission.READ_INPUT_STATE", 0x2, nullptr},
    {"android.permission.READ_INSTALL_SESSIONS", 0x0, nullptr},
    {"android.permission.READ_LOGS", 0x32, nullptr},
    {"android.permission.READ_MEDIA_AUDIO", 0x1, "READ_MEDIA_AURAL"},
    {"android.permission.READ_MEDIA_IMAGES", 0x1, "READ_MEDIA_VISUAL"},
    {"android.permission.READ_MEDIA_VIDEO", 0x1, "READ_MEDIA_VISUAL"},
    {"android.permission.READ_MEDIA_VISUAL_USER_SELECTED", 0x1, "READ_MEDIA_VISUAL"},
    {"android.permission.READ_NEARBY_STREAMING_POLICY", 0x0, nullptr},
    {"android.permission.READ_PHONE_NUMBERS", 0x1001, "PHONE"},
    {"android.permission.READ_PHONE_STATE", 0x1, "PHONE"},
    {"android.permission.READ_PRIVILEGED_PHONE_STATE", 0x12, nullptr},
    {"android.permission.READ_PROFILE", 0x0, nullptr},
    {"android.permission.READ_SMS", 0x1, "SMS"},
    {"android.permission.READ_SOCIAL_STREAM", 0x0, nullptr},
    {"android.permission.READ_SYNC_SETTINGS", 0x0, nullptr},
    {"android.permission.READ_SYNC_STATS", 0x0, nullptr},
    {"android.permission.READ_USER_DICTIONARY", 0x0, nullptr},
    {"android.permission.REBOOT", 0x12, nullptr},
    {"android.permission.RECEIVE_BOOT_COMPLETED", 0x0, nullptr},
    {"android.permission.RECEIVE_MMS", 0x1, "SMS"},
    {"android.permission.RECEIVE_SMS", 0x1, "SMS"},
    {"android.permission.RECEIVE_WAP_PUSH", 0x1, "SMS"},
    {"android.permission.RECORD_AUDIO", 0x1001, "MICROPHONE"},
    {"android.permission.REORDER_TASKS", 0x0, nullptr},
    {"android.permission.REQUEST_COMPANION_PROFILE_GLASSES", 0x0, nullptr},
    {"android.permission.REQUEST_COMPANION_PROFILE_WATCH", 0x0, nullptr},
    {"android.permission.REQUEST_COMPANION_RUN_IN_BACKGROUND", 0x0, nullptr},
    {"android.permission.REQUEST_COMPANION_START_FOREGROUND_SERVICES_FROM_BACKGROUND", 0x0, nullptr},
    {"android.permission.REQUEST_COMPANION_USE_DATA_IN_BACKGROUND", 0x0, nullptr},
    {"android.permission.REQUEST_DELETE_PACKAGES", 0x0, nullptr},
    {"android.permission.REQUEST_IGNORE_BATTERY_OPTIMIZATIONS", 0x0, nullptr},
    {"android.permission.REQUEST_INSTALL_PACKAGES", 0x42, nullptr},
    {"android.permission.REQUEST_OBSERVE_COMPANION_DEVICE_PRESENCE", 0x0, nullptr},
    {"android.permission.REQUEST_PASSWORD_COMPLEXITY", 0x0, nullptr},
    {"android.permission.RESTART_PACKAGES", 0x0, nullptr},
    {"android.permission.RUN_USER_INITIATED_JOBS", 0x0, nullptr},
    {"android.permission.SCHEDULE_EXACT_ALARM", 0x52, nullptr},
    {"android.permission.SEND_RESPOND_VIA_MESSAGE", 0x12, nullptr},
    {"android.permission.SEND_SMS", 0x1, "SMS"},
    {"android.permission.SET_ALWAYS_FINISH", 0x32, nullptr},
    {"android.permission.SET_ANIMATION_SCALE", 0x32, nullptr},
    {"android.permission.SET_DEBUG_APP", 0x32, nullptr},
    {"android.permission.SET_PROCESS_LIMIT", 0x32, nullptr},
    {"android.permission.SET_TIME", 0x12, nullptr},
    {"android.permission.SET_TIME_ZONE", 0x12, nullptr},
    {"android.permission.SET_WALLPAPER", 0x0, nullptr},
    {"android.permission.SET_WALLPAPER_HINTS", 0x0, nullptr},
    {"android.permission.SHUTDOWN", 0x12, nullptr},
    {"android.permission.SIGNAL_PERSISTENT_PROCESSES", 0x32, nullptr},
    {"android.permission.SMS_FINANCIAL_TRANSACTIONS", 0x42, nullptr},
    {"android.permission.STATUS_BAR", 0x12, nullptr},
    {"android.permission.SUBSCRIBED_FEEDS_READ", 0x0, nullptr},
    {"android.permission.SUBSCRIBED_FEEDS_WRITE", 0x0, nullptr},
    {"android.permission.SYSTEM_ALERT_WINDOW", 0x4e2, nullptr},
    {"android.permission.TRANSMIT_IR", 0x0, nullptr},
    {"android.permission.TURN_SCREEN_ON", 0x52, nullptr},
    {"android.permission.UPDATE_DEVICE_STATS", 0x12, nullptr},
    {"android.permission.UPDATE_PACKAGES_WITHOUT_USER_ACTION", 0x0, nullptr},
    {"android.permission.USE_BIOMETRIC", 0x0, nullptr},
    {"android.permission.USE_CREDENTIALS", 0x0, nullptr},
    {"android.permission.USE_EXACT_ALARM", 0x0, nullptr},
    {"android.permission.USE_FINGERPRINT", 0x0, nullptr},
    {"android.permission.USE_FULL_SCREEN_INTENT", 0x40, nullptr},
    {"android.permission.USE_SIP", 0x1, "PHONE"},
    {"android.permission.UWB_RANGING", 0x1, "NEARBY_DEVICES"},
    {"android.permission.VIBRATE", 0x1000, nullptr},
    {"android.permission.WAKE_LOCK", 0x1000, nullptr},
    {"android.permission.WRITE_APN_SETTINGS", 0x12, nullptr},
    {"android.permission.WRITE_CALENDAR", 0x1, "CALENDAR"},
    {"android.permission.WRITE_CALL_LOG", 0x1, "CALL_LOG"},
    {"android.permission.WRITE_CONTACTS", 0x1, "CONTACTS"},
    {"android.permission.WRITE_EXTERNAL_STORAGE", 0x1, "STORAGE"},
    {"android.permission.WRITE_GSERVICES", 0x12, nullptr},
    {"android.permission.WRITE_PROFILE", 0x0, nullptr},
    {"android.permission.WRITE_SECURE_SETTINGS", 0x32, nullptr},
    {"android.permission.WRITE_SETTINGS", 0x4c2, nullptr},
    {"android.permission.WRITE_SMS", 0x0, nullptr},
    {"android.permission.WRITE_SOCIAL_STREAM", 0x0, nullptr},
    {"android.permission.WRITE_SYNC_SETTINGS", 0x0, nullptr},
    {"android.permission.WRITE_USER_DICTIONARY", 0x0, nullptr},
    {"com.android.alarm.permission.SET_ALARM", 0x0, nullptr},
    {"com.android.browser.permission.READ_HISTORY_BOOKMARKS", 0x0, nullptr},
    {"com.android.browser.permission.WRITE_HISTORY_BOOKMARKS", 0x0, nullptr},
    {"com.android.launcher.permission.INSTALL_SHORTCUT", 0x0, nullptr},
    {"com.android.launcher.permission.UNINSTALL_SHORTCUT", 0x0, nullptr},
    {"com.android.voicemail.permission.ADD_VOICEMAIL", 0x1, "PHONE"},
    {"com.android.voicemail.permission.READ_VOICEMAIL", 0x12, nullptr},
    {"com.android.voicemail.permission.WRITE_VOICEMAIL", 0x12, nullptr},
};

struct GroupRow {
    const char *constant;
    const char *words;
};

constexpr GroupRow groupRows[] = {
    {"ACTIVITY_RECOGNITION", "physical activity"},
    {"CALENDAR", "calendar"},
    {"CALL_LOG", "call log"},
    {"CAMERA", "camera"},
    {"CONTACTS", "contacts"},
    {"LOCATION", "location"},
    {"MICROPHONE", "microphone"},
    {"NEARBY_DEVICES", "nearby devices"},
    {"NOTIFICATIONS", "notifications"},
    {"PHONE", "phone"},
    {"READ_MEDIA_AURAL", "music and audio"},
    {"READ_MEDIA_VISUAL", "photos and videos"},
    {"SENSORS", "body sensors"},
    {"SMS", "SMS"},
    {"STORAGE", "storage"},
};

const QLatin1String groupPrefix("android.permission-group.");

} // namespace

std::optional<Facts> find(const QString &name)
{
    const auto *const found = std::lower_bound(
        std::begin(permissionRows), std::end(permissionRows), name,
        [](const PermissionRow &row, const QString &wanted) { return QLatin1String(row.name) < wanted; });
    if (found == std::end(permissionRows) || QLatin1String(found->name) != name)
        return std::nullopt;
    return Facts{found->protection, found->group};
}

QString words(const QString &name)
{
    return name.mid(name.lastIndexOf(QLatin1Char('.')) + 1).replace(QLatin1Char('_'), QLatin1Char(' ')).toLower();
}

QString groupWords(const QString &name)
{
    if (!name.startsWith(groupPrefix))
        return {};
    const QString constant = name.mid(groupPrefix.size());
    const auto *const found = std::find_if(std::begin(groupRows), std::end(groupRows), [&](const GroupRow &row) {
        return QLatin1String(row.constant) == constant;
    });
    return found != std::end(groupRows) ? QString::fromLatin1(found->words) : QString();
}

QString groupName(const char *constant)
{
    return groupPrefix + QLatin1String(constant);
}

} // namespace SorrelKit::PermissionTable
