// SPDX-License-Identifier: LGPL-2.1-or-later
#include "permissions/FeatureWords.h"

#include <algorithm>
#include <iterator>

namespace SorrelKit {

namespace {

struct FeatureRow {
    const char *name;
    const char *words;
};

constexpr FeatureRow featureRows[] = {
    {"android.hardware.audio.low_latency", "sound with low latency"},
    {"android.hardware.audio.output", "sound output"},
    {"android.hardware.audio.pro", "professional sound"},
    {"android.hardware.bluetooth", "Bluetooth"},
    {"android.hardware.bluetooth_le", "Bluetooth Low Energy"},
    {"android.hardware.camera", "camera on the back"},
    {"android.hardware.camera.any", "any camera"},
    {"android.hardware.camera.autofocus", "camera with autofocus"},
    {"android.hardware.camera.external", "external camera"},
    {"android.hardware.camera.flash", "camera with a flash"},
    {"android.hardware.camera.front", "camera on the front"},
    {"android.hardware.consumerir", "infrared transmitter"},
    {"android.hardware.ethernet", "wired network"},
    {"android.hardware.faketouch", "pointer or touch screen"},
    {"android.hardware.fingerprint", "fingerprint reader"},
    {"android.hardware.gamepad", "game controller"},
    {"android.hardware.location", "location"},
    {"android.hardware.location.gps", "satellite positioning"},
    {"android.hardware.location.network", "location by networks"},
    {"android.hardware.microphone", "microphone"},
    {"android.hardware.nfc", "NFC"},
    {"android.hardware.nfc.hce", "NFC card emulation"},
    {"android.hardware.opengles.aep", "OpenGL ES with the Android extensions"},
    {"android.hardware.ram.low", "little memory"},
    {"android.hardware.ram.normal", "enough memory"},
    {"android.hardware.screen.landscape", "screen in landscape"},
    {"android.hardware.screen.portrait", "screen in portrait"},
    {"android.hardware.sensor.accelerometer", "accelerometer"},
    {"android.hardware.sensor.ambient_temperature", "thermometer"},
    {"android.hardware.sensor.barometer", "barometer"},
    {"android.hardware.sensor.compass", "compass"},
    {"android.hardware.sensor.gyroscope", "gyroscope"},
    {"android.hardware.sensor.heartrate", "heart rate sensor"},
    {"android.hardware.sensor.light", "light sensor"},
    {"android.hardware.sensor.proximity", "proximity sensor"},
    {"android.hardware.sensor.relative_humidity", "humidity sensor"},
    {"android.hardware.sensor.stepcounter", "step counter"},
    {"android.hardware.sensor.stepdetector", "step detector"},
    {"android.hardware.telephony", "telephone"},
    {"android.hardware.telephony.cdma", "CDMA telephone"},
    {"android.hardware.telephony.gsm", "GSM telephone"},
    {"android.hardware.touchscreen", "touch screen"},
    {"android.hardware.touchscreen.multitouch", "touch screen for two fingers"},
    {"android.hardware.touchscreen.multitouch.distinct", "touch screen that tracks two fingers"},
    {"android.hardware.touchscreen.multitouch.jazzhand", "touch screen for five fingers"},
    {"android.hardware.type.automotive", "car"},
    {"android.hardware.type.pc", "Chromebook"},
    {"android.hardware.type.television", "television"},
    {"android.hardware.type.watch", "watch"},
    {"android.hardware.usb.accessory", "USB accessory mode"},
    {"android.hardware.usb.host", "USB host"},
    {"android.hardware.uwb", "ultra-wideband"},
    {"android.hardware.vr.headtracking", "head tracking"},
    {"android.hardware.vr.high_performance", "virtual reality"},
    {"android.hardware.vulkan.compute", "Vulkan computing"},
    {"android.hardware.vulkan.level", "Vulkan"},
    {"android.hardware.vulkan.version", "Vulkan"},
    {"android.hardware.wifi", "Wi-Fi"},
    {"android.hardware.wifi.aware", "Wi-Fi Aware"},
    {"android.hardware.wifi.direct", "Wi-Fi Direct"},
    {"android.software.app_widgets", "widgets"},
    {"android.software.backup", "backup"},
    {"android.software.device_admin", "device administration"},
    {"android.software.home_screen", "home screens"},
    {"android.software.input_methods", "input methods"},
    {"android.software.leanback", "television interface"},
    {"android.software.live_tv", "live television"},
    {"android.software.live_wallpaper", "live wallpapers"},
    {"android.software.managed_users", "managed users"},
    {"android.software.midi", "MIDI"},
    {"android.software.picture_in_picture", "picture in picture"},
    {"android.software.print", "printing"},
    {"android.software.sip", "SIP calls"},
    {"android.software.sip.voip", "SIP calls over the Internet"},
    {"android.software.vr.mode", "virtual reality mode"},
    {"android.software.webview", "web view"},
};

} // namespace

QString featureWords(const QString &name)
{
    const auto *const found = std::find_if(std::begin(featureRows), std::end(featureRows),
                                           [&](const FeatureRow &row) { return name == QLatin1String(row.name); });
    if (found != std::end(featureRows))
        return QString::fromLatin1(found->words);
    for (const char *prefix : {"android.hardware.", "android.software."}) {
        const QLatin1String start(prefix);
        if (name.startsWith(start))
            return name.mid(start.size())
                .replace(QLatin1Char('.'), QLatin1Char(' '))
                .replace(QLatin1Char('_'), QLatin1Char(' '));
    }
    return name;
}

} // namespace SorrelKit
