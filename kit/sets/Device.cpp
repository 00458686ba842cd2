// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Device.h>

#include "sets/DeviceFile.h"

namespace SorrelKit {

static_assert(int(Device::Fault::None) == int(DeviceFault::None)
                  && int(Device::Fault::CannotRead) == int(DeviceFault::CannotRead)
                  && int(Device::Fault::NotJson) == int(DeviceFault::NotJson)
                  && int(Device::Fault::BadValue) == int(DeviceFault::BadValue)
                  && int(Device::Fault::MissingValue) == int(DeviceFault::MissingValue),
              "the data has the numbers of the public enumeration");

namespace {

// The name in a file of the first value that choosing needs and the device lacks; empty when there is none.
QString missingValue(const DeviceData &device)
{
    if (device.abis.isEmpty())
        return QStringLiteral("supportedAbis");
    if (device.locales.isEmpty())
        return QStringLiteral("supportedLocales");
    if (device.screenDensity <= 0)
        return QStringLiteral("screenDensity");
    return device.sdkVersion <= 0 ? QStringLiteral("sdkVersion") : QString();
}

} // namespace

Device::Device() : d(new DeviceData) {}
Device::Device(const Device &other) = default;
Device::Device(Device &&other) noexcept = default;
Device &Device::operator=(const Device &other) = default;
Device &Device::operator=(Device &&other) noexcept = default;
Device::~Device() = default;

Device Device::fromFile(const QString &fileName)
{
    Device device;
    DeviceFile::read(fileName, device.d.data());
    return device;
}

Device Device::fromJson(const QByteArray &json)
{
    Device device;
    DeviceFile::parse(json, device.d.data());
    return device;
}

Device::Fault Device::fault() const
{
    if (d->fault != DeviceFault::None)
        return Fault(d->fault);
    return missingValue(*d).isEmpty() ? Fault::None : Fault::MissingValue;
}

QString Device::faultText() const
{
    if (d->fault != DeviceFault::None)
        return d->faultText;
    const QString missing = missingValue(*d);
    return missing.isEmpty() ? QString() : missing + QLatin1String(" is missing");
}

QStringList Device::abis() const
{
    return d->abis;
}

void Device::setAbis(const QStringList &abis)
{
    d->abis = abis;
}

QStringList Device::locales() const
{
    return d->locales;
}

void Device::setLocales(const QStringList &locales)
{
    d->locales = locales;
}

int Device::screenDensity() const
{
    return d->screenDensity;
}

void Device::setScreenDensity(int density)
{
    d->screenDensity = density;
}

int Device::sdkVersion() const
{
    return d->sdkVersion;
}

void Device::setSdkVersion(int version)
{
    d->sdkVersion = version;
}

QStringList Device::features() const
{
    return d->features;
}

void Device::setFeatures(const QStringList &features)
{
    d->features = features;
}

QStringList Device::glExtensions() const
{
    return d->glExtensions;
}

void Device::setGlExtensions(const QStringList &extensions)
{
    d->glExtensions = extensions;
}

} // namespace SorrelKit
