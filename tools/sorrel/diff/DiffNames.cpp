// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiffNames.h"

#include <iterator>

using SorrelKit::Component;
using SorrelKit::Signer;
using SorrelKit::SizeChange;
using SorrelKit::TextChange;

QString DiffNames::kind(TextChange::Kind kind)
{
    switch (kind) {
    case TextChange::Kind::Added:
        return QStringLiteral("added");
    case TextChange::Kind::Removed:
        return QStringLiteral("removed");
    case TextChange::Kind::Changed:
        break;
    }
    return QStringLiteral("changed");
}

QString DiffNames::componentKind(Component::Kind kind)
{
    switch (kind) {
    case Component::Kind::Alias:
        return QStringLiteral("activity-alias");
    case Component::Kind::Service:
        return QStringLiteral("service");
    case Component::Kind::Receiver:
        return QStringLiteral("receiver");
    case Component::Kind::Provider:
        return QStringLiteral("provider");
    case Component::Kind::Activity:
        break;
    }
    return QStringLiteral("activity");
}

QString DiffNames::category(SizeChange::Category category)
{
    switch (category) {
    case SizeChange::Category::Code:
        return QStringLiteral("code");
    case SizeChange::Category::Resources:
        return QStringLiteral("resources");
    case SizeChange::Category::Libraries:
        return QStringLiteral("libraries");
    case SizeChange::Category::Assets:
        return QStringLiteral("assets");
    case SizeChange::Category::Signatures:
        return QStringLiteral("signatures");
    case SizeChange::Category::Other:
        break;
    }
    return QStringLiteral("other");
}

QString DiffNames::match(Signer::Match match)
{
    switch (match) {
    case Signer::Match::Different:
        return QStringLiteral("different");
    case Signer::Match::Same:
        return QStringLiteral("same");
    case Signer::Match::Rotated:
        return QStringLiteral("rotated");
    case Signer::Match::Rollback:
        return QStringLiteral("rollback");
    case Signer::Match::Unverified:
        break;
    }
    return QStringLiteral("unverified");
}

QString DiffNames::size(qint64 bytes)
{
    constexpr double UnitSize = 1024;
    const char *const units[] = {"KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    if (bytes < qint64(UnitSize))
        return QStringLiteral("%1 B").arg(bytes);
    double value = double(bytes) / UnitSize;
    std::size_t unit = 0;
    // A value that would be printed as "1024.0" gets the next unit.
    for (; value >= UnitSize - 0.05 && unit + 1 < std::size(units); ++unit)
        value /= UnitSize;
    return QStringLiteral("%1 %2").arg(value, 0, 'f', 1).arg(QLatin1String(units[unit]));
}

QString DiffNames::growth(qint64 bytes)
{
    const char *const sign = bytes > 0 ? "+" : "-";
    return bytes == 0 ? size(0) : QLatin1String(sign) + size(qAbs(bytes));
}
