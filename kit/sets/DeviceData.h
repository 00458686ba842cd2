// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DEVICEDATA_H
#define SORRELKIT_DEVICEDATA_H

#include <QSharedData>
#include <QString>
#include <QStringList>

namespace SorrelKit {

/// The numbers of Device::Fault.
enum class DeviceFault {
    None,
    CannotRead,
    NotJson,
    BadValue,
    MissingValue,
};

class DeviceData : public QSharedData
{
public:
    DeviceFault fault = DeviceFault::None; ///< of the file
    QString faultText;
    QStringList abis;
    QStringList locales;
    int screenDensity = 0;
    int sdkVersion = 0;
    QStringList features;
    QStringList glExtensions;
};

} // namespace SorrelKit

#endif
