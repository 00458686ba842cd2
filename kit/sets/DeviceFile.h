// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DEVICEFILE_H
#define SORRELKIT_DEVICEFILE_H

#include "sets/DeviceData.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace SorrelKit {

/// Reads the JSON text that describes a device; SorrelKit::Device documents its form. Meets raw input: a value that is
/// wrong is a fault, which names it. Only the first fault is kept.
class DeviceFile
{
public:
    /// Bytes of a file. One with every feature of a phone has some 10 KiB.
    static constexpr qint64 MaxBytes = 1 << 20;
    /// Features and languages. Phones have some hundred.
    static constexpr int MaxTexts = 4096;
    /// Processors. Android has had eight kinds.
    static constexpr int MaxAbis = 64;
    static constexpr int LargestSdkVersion = 10000;
    /// Greater numbers have special meanings in resources.
    static constexpr int LargestDensity = 65533;

    /// Reads the file @p fileName to @p device.
    static void read(const QString &fileName, DeviceData *device);
    /// Reads the text @p json to @p device.
    static void parse(const QByteArray &json, DeviceData *device);

private:
    explicit DeviceFile(const QJsonObject &object, DeviceData *device) : m_object(object), m_device(device) {}

    static void fail(DeviceData *device, DeviceFault fault, const QString &text);
    void readTexts(const QString &name, int most, QStringList *texts);
    void readNumber(const QString &name, int most, int *number);

    const QJsonObject m_object;
    DeviceData *m_device;
};

} // namespace SorrelKit

#endif
