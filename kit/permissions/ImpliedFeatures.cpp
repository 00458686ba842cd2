// SPDX-License-Identifier: LGPL-2.1-or-later
#include "permissions/ImpliedFeatures.h"

#include <algorithm>
#include <limits>

namespace SorrelKit {

namespace {

constexpr int AnySdk = std::numeric_limits<int>::max();

/// A permission that a feature comes with, in packages for a range of API levels.
struct FeatureCause {
    const char *permission = nullptr;
    const char *feature = nullptr;
    int firstSdk = 0;
    int lastSdk = AnySdk;
};

constexpr FeatureCause featureCauses[] = {
    {"ACCESS_COARSE_LOCATION", "location"},
    {"ACCESS_COARSE_LOCATION", "location.network", 0, 20},
    {"ACCESS_FINE_LOCATION", "location"},
    {"ACCESS_FINE_LOCATION", "location.gps", 0, 20},
    {"ACCESS_LOCATION_EXTRA_COMMANDS", "location"},
    {"ACCESS_MOCK_LOCATION", "location"},
    {"ACCESS_WIFI_STATE", "wifi"},
    {"BLUETOOTH", "bluetooth", 5},
    {"BLUETOOTH_ADMIN", "bluetooth", 5},
    {"CALL_PHONE", "telephony"},
    {"CALL_PRIVILEGED", "telephony"},
    {"CAMERA", "camera"},
    {"CHANGE_WIFI_MULTICAST_STATE", "wifi"},
    {"CHANGE_WIFI_STATE", "wifi"},
    {"INSTALL_LOCATION_PROVIDER", "location"},
    {"MODIFY_PHONE_STATE", "telephony"},
    {"PROCESS_OUTGOING_CALLS", "telephony"},
    {"READ_SMS", "telephony"},
    {"RECEIVE_MMS", "telephony"},
    {"RECEIVE_SMS", "telephony"},
    {"RECEIVE_WAP_PUSH", "telephony"},
    {"RECORD_AUDIO", "microphone"},
    {"SEND_SMS", "telephony"},
    {"WRITE_APN_SETTINGS", "telephony"},
    {"WRITE_SMS", "telephony"},
};

struct FeaturePart {
    const char *part;
    const char *whole;
};

constexpr FeaturePart featureParts[] = {
    {"camera.autofocus", "camera"},
    {"camera.flash", "camera"},
    {"location.gps", "location"},
    {"location.network", "location"},
    {"touchscreen.multitouch", "touchscreen"},
    {"touchscreen.multitouch.distinct", "touchscreen"},
    {"touchscreen.multitouch.distinct", "touchscreen.multitouch"},
};

QString hardware(const char *name)
{
    return QStringLiteral("android.hardware.") + QLatin1String(name);
}

} // namespace

ImpliedFeatures::ImpliedFeatures(int targetSdkVersion, const QSet<QString> &declared, const QSet<QString> &required)
    : m_targetSdkVersion(targetSdkVersion), m_declared(declared)
{
    for (const FeaturePart &row : featureParts) {
        if (required.contains(hardware(row.part)))
            add(hardware(row.whole), QStringLiteral("uses ") + hardware(row.part));
    }
    if (!declared.contains(hardware("touchscreen")) && !m_reasons.contains(hardware("touchscreen")))
        add(hardware("faketouch"), QStringLiteral("default feature for all apps"));
}

void ImpliedFeatures::add(const QString &feature, const QString &reason)
{
    if (!m_declared.contains(feature) && !m_reasons.value(feature).contains(reason))
        m_reasons[feature].append(reason);
}

void ImpliedFeatures::addPermission(const QString &name)
{
    const QString prefix = QStringLiteral("android.permission.");
    if (!name.startsWith(prefix))
        return;
    const QString constant = name.mid(prefix.size());
    for (const FeatureCause &row : featureCauses) {
        if (constant == QLatin1String(row.permission) && m_targetSdkVersion >= row.firstSdk
            && m_targetSdkVersion <= row.lastSdk)
            add(hardware(row.feature), QStringLiteral("requested ") + name);
    }
}

void ImpliedFeatures::addOrientation(int orientation)
{
    // The values of landscape, sensorLandscape and reverseLandscape; those of portrait are one above.
    constexpr int Landscapes[] = {0, 6, 8};
    const auto isOneOf = [&](int offset) {
        return std::any_of(std::begin(Landscapes), std::end(Landscapes),
                           [=](int landscape) { return orientation == landscape + offset; });
    };
    if (isOneOf(0))
        add(hardware("screen.landscape"), QStringLiteral("an activity has a landscape orientation"));
    if (isOneOf(1))
        add(hardware("screen.portrait"), QStringLiteral("an activity has a portrait orientation"));
}

QMap<QString, QString> ImpliedFeatures::reasons() const
{
    QMap<QString, QString> reasons;
    for (auto reason = m_reasons.cbegin(); reason != m_reasons.cend(); ++reason)
        reasons.insert(reason.key(), reason.value().join(QStringLiteral(", ")));
    return reasons;
}

} // namespace SorrelKit
