// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/SetPackage.h>

#include "sets/SetPackageData.h"

namespace SorrelKit {

static_assert(int(SetPackage::Kind::Unknown) == int(SetPackageKind::Unknown)
                  && int(SetPackage::Kind::Base) == int(SetPackageKind::Base)
                  && int(SetPackage::Kind::Feature) == int(SetPackageKind::Feature)
                  && int(SetPackage::Kind::Configuration) == int(SetPackageKind::Configuration)
                  && int(SetPackage::Kind::Standalone) == int(SetPackageKind::Standalone)
                  && int(SetPackage::Reason::None) == int(ChoiceReason::None)
                  && int(SetPackage::Reason::Always) == int(ChoiceReason::Always)
                  && int(SetPackage::Reason::Condition) == int(ChoiceReason::Condition)
                  && int(SetPackage::Reason::Dependency) == int(ChoiceReason::Dependency)
                  && int(SetPackage::Reason::Abi) == int(ChoiceReason::Abi)
                  && int(SetPackage::Reason::Language) == int(ChoiceReason::Language)
                  && int(SetPackage::Reason::ScreenDensity) == int(ChoiceReason::ScreenDensity)
                  && int(SetPackage::Reason::Standalone) == int(ChoiceReason::Standalone)
                  && int(SetPackage::Reason::Texture) == int(ChoiceReason::Texture)
                  && int(SetPackage::Reason::Fallback) == int(ChoiceReason::Fallback),
              "the data has the numbers of the public enumerations");

SetPackage::SetPackage() : d(new SetPackageData) {}
SetPackage::SetPackage(const SetPackage &other) = default;
SetPackage::SetPackage(SetPackage &&other) noexcept = default;
SetPackage &SetPackage::operator=(const SetPackage &other) = default;
SetPackage &SetPackage::operator=(SetPackage &&other) noexcept = default;
SetPackage::~SetPackage() = default;

QString SetPackage::path() const
{
    return d->path;
}

QString SetPackage::splitName() const
{
    return d->splitName;
}

SetPackage::Kind SetPackage::kind() const
{
    return Kind(d->kind);
}

QString SetPackage::module() const
{
    return d->module;
}

QStringList SetPackage::abis() const
{
    return d->abis;
}

QStringList SetPackage::languages() const
{
    return d->languages;
}

QList<int> SetPackage::screenDensities() const
{
    return d->screenDensities;
}

int SetPackage::minSdkVersion() const
{
    return d->minSdkVersion;
}

qint64 SetPackage::packedBytes() const
{
    return d->packedBytes;
}

qint64 SetPackage::bytes() const
{
    return d->bytes;
}

SetPackage::Reason SetPackage::reason() const
{
    return Reason(d->reason);
}

QString SetPackage::reasonText() const
{
    return d->reasonText;
}

} // namespace SorrelKit
