// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/DeviceFile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonParseError>

#include <cmath>

namespace SorrelKit {

void DeviceFile::read(const QString &fileName, DeviceData *device)
{
    QFile file(fileName);
    // A pipe might never end.
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly)) {
        fail(device, DeviceFault::CannotRead, QStringLiteral("could not open the file"));
        return;
    }
    const QByteArray json = file.read(MaxBytes + 1);
    if (json.size() > MaxBytes) {
        fail(device, DeviceFault::CannotRead, QStringLiteral("the file has more than %1 bytes").arg(MaxBytes));
        return;
    }
    parse(json, device);
}

void DeviceFile::parse(const QByteArray &json, DeviceData *device)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        fail(device, DeviceFault::NotJson,
             QStringLiteral("not JSON: %1 at byte %2").arg(error.errorString()).arg(error.offset));
        return;
    }
    if (!document.isObject()) {
        fail(device, DeviceFault::NotJson, QStringLiteral("no JSON object"));
        return;
    }
    DeviceFile file(document.object(), device);
    file.readTexts(QStringLiteral("supportedAbis"), MaxAbis, &device->abis);
    file.readTexts(QStringLiteral("supportedLocales"), MaxTexts, &device->locales);
    file.readNumber(QStringLiteral("screenDensity"), LargestDensity, &device->screenDensity);
    file.readNumber(QStringLiteral("sdkVersion"), LargestSdkVersion, &device->sdkVersion);
    file.readTexts(QStringLiteral("deviceFeatures"), MaxTexts, &device->features);
    file.readTexts(QStringLiteral("glExtensions"), MaxTexts, &device->glExtensions);
}

void DeviceFile::fail(DeviceData *device, DeviceFault fault, const QString &text)
{
    if (device->fault != DeviceFault::None)
        return;
    device->fault = fault;
    device->faultText = text;
}

void DeviceFile::readTexts(const QString &name, int most, QStringList *texts)
{
    const QJsonValue value = m_object.value(name);
    if (value.isUndefined())
        return;
    const QJsonArray array = value.toArray();
    bool isSound = value.isArray() && array.size() <= most;
    for (const QJsonValue text : array) {
        isSound = isSound && text.isString() && !text.toString().isEmpty();
        if (isSound)
            texts->append(text.toString());
    }
    if (!isSound)
        fail(m_device, DeviceFault::BadValue, QStringLiteral("%1 is no list of at most %2 texts").arg(name).arg(most));
}

void DeviceFile::readNumber(const QString &name, int most, int *number)
{
    const QJsonValue value = m_object.value(name);
    if (value.isUndefined())
        return;
    const double real = value.toDouble();
    if (real >= 1 && real <= most && std::floor(real) == real)
        *number = int(real);
    else
        fail(m_device, DeviceFault::BadValue, QStringLiteral("%1 is no number from 1 to %2").arg(name).arg(most));
}

} // namespace SorrelKit
