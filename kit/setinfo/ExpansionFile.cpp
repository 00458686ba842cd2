// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/ExpansionFile.h>

#include "setinfo/ExpansionFileData.h"

namespace SorrelKit {

ExpansionFile::ExpansionFile() : d(new ExpansionFileData) {}
ExpansionFile::ExpansionFile(const ExpansionFile &other) = default;
ExpansionFile::ExpansionFile(ExpansionFile &&other) noexcept = default;
ExpansionFile &ExpansionFile::operator=(const ExpansionFile &other) = default;
ExpansionFile &ExpansionFile::operator=(ExpansionFile &&other) noexcept = default;
ExpansionFile::~ExpansionFile() = default;

QString ExpansionFile::path() const
{
    return d->path;
}

QString ExpansionFile::installPath() const
{
    return d->installPath;
}

qint64 ExpansionFile::packedBytes() const
{
    return d->packedBytes;
}

qint64 ExpansionFile::bytes() const
{
    return d->bytes;
}

} // namespace SorrelKit
