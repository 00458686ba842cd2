// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Permission.h>

#include "permissions/PermissionData.h"

namespace SorrelKit {

namespace {

constexpr quint32 ProtectionBaseMask = 0xf;

} // namespace

Permission::Permission() : d(new PermissionData) {}
Permission::Permission(PermissionData *data) : d(data) {}
Permission::Permission(const Permission &other) = default;
Permission::Permission(Permission &&other) noexcept = default;
Permission &Permission::operator=(const Permission &other) = default;
Permission &Permission::operator=(Permission &&other) noexcept = default;
Permission::~Permission() = default;

QString Permission::name() const
{
    return d->request.name;
}

QString Permission::label(const QLocale &locale) const
{
    return d->words ? d->words->label(name(), locale) : QString();
}

QString Permission::description(const QLocale &locale) const
{
    return d->words ? d->words->description(name(), locale) : QString();
}

Permission::Level Permission::level() const
{
    const auto protection = d->words ? d->words->protection(name()) : std::nullopt;
    if (!protection)
        return Level::Unknown;
    switch (*protection & ProtectionBaseMask) {
    case 0:
        return Level::Normal;
    case 1:
        return Level::Dangerous;
    case 2:
    case 3: // signatureOrSystem, the old name of signature with the flag for privileged packages
        return Level::Signature;
    case 4:
        return Level::Internal;
    default:
        return Level::Unknown;
    }
}

Permission::Flags Permission::flags() const
{
    constexpr quint32 SignatureOrSystem = 3;
    const quint32 protection = d->words ? d->words->protection(name()).value_or(0) : 0;
    Flags flags(QFlag(protection & ~ProtectionBaseMask));
    if ((protection & ProtectionBaseMask) == SignatureOrSystem)
        flags |= Flag::Privileged;
    return flags;
}

QString Permission::group() const
{
    return d->words ? d->words->group(name()) : QString();
}

QString Permission::groupLabel(const QLocale &locale) const
{
    return d->words ? d->words->groupLabel(name(), locale) : QString();
}

int Permission::minSdkVersion() const
{
    return d->request.minSdkVersion;
}

int Permission::maxSdkVersion() const
{
    return d->request.maxSdkVersion;
}

bool Permission::isImplied() const
{
    return !d->request.impliedReason.isEmpty();
}

QString Permission::impliedReason() const
{
    return d->request.impliedReason;
}

bool Permission::isRequired() const
{
    return d->request.isRequired;
}

bool Permission::isDeclared() const
{
    return d->words && d->words->isDeclared(name());
}

} // namespace SorrelKit
