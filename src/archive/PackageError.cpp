// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/PackageError.h"

QString PackageError::text(int code)
{
    switch (code) {
    case NoError:
        return QStringLiteral("no error");
    case CannotOpen:
        return QStringLiteral("could not open APK file");
    case NoResources:
        return QStringLiteral("could not find resources.arsc");
    case BadResources:
        return QStringLiteral("could not parse resources.arsc");
    case NoManifest:
        return QStringLiteral("could not find AndroidManifest.xml");
    case BadManifest:
        return QStringLiteral("could not parse AndroidManifest.xml");
    case RefusedByAndroid:
        return QStringLiteral("Android refuses the package");
    default:
        return QStringLiteral("unknown error");
    }
}
