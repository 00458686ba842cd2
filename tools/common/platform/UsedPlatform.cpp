// SPDX-License-Identifier: LGPL-2.1-or-later
#include "UsedPlatform.h"

namespace {

const SorrelKit::Platform &usedPlatform()
{
    static const SorrelKit::Platform platform = SorrelKit::Platform::installed();
    return platform;
}

} // namespace

QString UsedPlatform::use(const FileName &file)
{
    const QByteArray path = file.path() == "none" ? QByteArray() : file.path();
    qputenv("SORREL_PLATFORM", path);
    return usedPlatform().error() ? usedPlatform().error().message() : QString();
}

SorrelKit::Package UsedPlatform::package(const FileName &file)
{
    SorrelKit::Package package = SorrelKit::Package::fromNativePath(file.path());
    package.setPlatform(usedPlatform());
    return package;
}
