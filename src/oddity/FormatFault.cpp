// SPDX-License-Identifier: LGPL-2.1-or-later
#include "oddity/FormatFault.h"

QString formatFaultText(FormatFault fault)
{
    switch (fault) {
    case FormatFault::None:
        return {};
    case FormatFault::NoDocument:
        return QStringLiteral("not a binary XML document");
    case FormatFault::DamagedDocument:
        return QStringLiteral("damaged XML document");
    case FormatFault::DamagedPool:
        return QStringLiteral("damaged string pool in XML document");
    case FormatFault::DamagedElement:
        return QStringLiteral("damaged XML element");
    case FormatFault::UnnamedElement:
        return QStringLiteral("XML element without a name");
    case FormatFault::NoElement:
        return QStringLiteral("XML document without an element");
    case FormatFault::ElementsTooDeep:
        return QStringLiteral("elements nested too deeply");
    case FormatFault::TooManyNodes:
        return QStringLiteral("too many nodes in XML document");
    case FormatFault::TextsTooLong:
        return QStringLiteral("too long texts in XML document");
    case FormatFault::NoTable:
        return QStringLiteral("not a resource table");
    case FormatFault::TableWithinTable:
        return QStringLiteral("table within resource table");
    case FormatFault::DamagedTableHeader:
        return QStringLiteral("damaged header in resource table");
    case FormatFault::DamagedTableChunk:
        return QStringLiteral("damaged chunk in resource table");
    case FormatFault::DamagedTablePool:
        return QStringLiteral("damaged string pool in resource table");
    case FormatFault::UncountedPackage:
        return QStringLiteral("more packages in resource table than its header counts");
    case FormatFault::DamagedTypeSpec:
        return QStringLiteral("damaged type specification in resource table");
    case FormatFault::UnspecifiedType:
        return QStringLiteral("type without a specification in resource table");
    case FormatFault::DamagedLibrary:
        return QStringLiteral("damaged list of libraries in resource table");
    case FormatFault::DamagedOverlay:
        return QStringLiteral("damaged list of overlays in resource table");
    case FormatFault::DamagedAliases:
        return QStringLiteral("damaged list of aliases in resource table");
    case FormatFault::DamagedType:
        return QStringLiteral("damaged type in resource table");
    case FormatFault::DamagedEntry:
        return QStringLiteral("damaged entry in resource table");
    case FormatFault::PoolNotFound:
        return QStringLiteral("string pool not found in resource table");
    case FormatFault::TooManyPackages:
        return QStringLiteral("too many packages in resource table");
    case FormatFault::TooManyTypes:
        return QStringLiteral("too many types in resource table");
    case FormatFault::TooManyAliases:
        return QStringLiteral("too many aliases in resource table");
    case FormatFault::TableTooLarge:
        return QStringLiteral("resource table takes too much memory");
    }
    return {};
}
