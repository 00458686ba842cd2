// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/IconFile.h>

#include "package/IconFileData.h"

namespace SorrelKit {

IconFile::IconFile() : d(new IconFileData) {}
IconFile::IconFile(const IconFile &other) = default;
IconFile::IconFile(IconFile &&other) noexcept = default;
IconFile &IconFile::operator=(const IconFile &other) = default;
IconFile &IconFile::operator=(IconFile &&other) noexcept = default;
IconFile::~IconFile() = default;

QString IconFile::path() const
{
    return d->path;
}

QString IconFile::kind() const
{
    return d->kind;
}

QSize IconFile::size() const
{
    return d->size;
}

int IconFile::density() const
{
    return d->density;
}

bool IconFile::isOfPlatform() const
{
    return d->isOfPlatform;
}

} // namespace SorrelKit
