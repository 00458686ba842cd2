// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PERMISSIONWORDS_H
#define SORRELKIT_PERMISSIONWORDS_H

#include "language/LabelLookup.h"
#include "package/PackageData.h"
#include "permissions/PermissionDeclarations.h"

#include <QLocale>
#include <QSharedData>
#include <QString>

#include <optional>

namespace SorrelKit {

/**
 * The facts and the words of the permissions that one list of a package has. Keeps the package and its platform alive.
 * Goes over the manifests when the first fact is asked for, and looks up texts on each call, within one budget.
 *
 * The platform comes first, because Android ignores a package that declares one of its permissions. For the same reason,
 * PermissionTable comes before the package.
 */
class PermissionWords : public QSharedData
{
public:
    explicit PermissionWords(PackageDataPointer package) : m_package(std::move(package)) {}

    /// Whether the package's own manifest declares the permission @p name.
    bool isDeclared(const QString &name) { return own().permission(name) != nullptr; }
    /// The protection level of @p name, base and flags; nothing when it is not known.
    std::optional<quint32> protection(const QString &name);
    /// The name of the group of @p name; empty when it has none.
    QString group(const QString &name);
    QString label(const QString &name, const QLocale &locale);
    QString description(const QString &name, const QLocale &locale);
    QString groupLabel(const QString &name, const QLocale &locale);

private:
    const PermissionDeclarations &own();
    /// Those of the platform; without one, none. A package that is a platform itself declares the platform's.
    const PermissionDeclarations &ofPlatform();
    /// The element that declares @p name, of the platform or the package; null when there is none that counts.
    const XmlElement *declaration(const QString &name);
    /// The text of the attribute @p id of @p element for @p locale; empty when either is missing.
    QString text(const XmlElement *element, quint32 id, const QLocale &locale);

    PackageDataPointer m_package;
    PlatformDataPointer m_platform; ///< that of the package at the first query; may be null
    std::optional<PermissionDeclarations> m_own;
    std::optional<PermissionDeclarations> m_ofPlatform;
    std::optional<LabelLookup> m_texts;
};

} // namespace SorrelKit

#endif
