// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/DrawingAccess.h"

#include "format/AndroidAttributes.h"
#include "package/PackageAccess.h"

namespace SorrelKit {

namespace SORRELKIT_PRIVATE_NAMESPACE {

DrawingSource &drawingSource(const Package &package)
{
    return *PackageAccess::data(package);
}

EntryIcon entryIcon(const Entry &entry, EntryPicture picture)
{
    const EntryData &data = PackageAccess::data(entry);
    if (!data.isValid())
        return {};
    const Manifest::EntryElements &found = data.entry;
    const XmlAttribute *const attribute = data.innermost(picture == EntryPicture::Banner ? Attr::Banner : Attr::Icon,
                                                         picture == EntryPicture::RoundIcon ? Attr::RoundIcon : 0);
    return {data.package.data(), data.package->iconValue(attribute), found.activity()};
}

} // namespace SORRELKIT_PRIVATE_NAMESPACE

} // namespace SorrelKit
