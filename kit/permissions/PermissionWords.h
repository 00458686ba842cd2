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

/// The facts and the words of the permissions that one list of a package has. Keeps the package alive. Goes over the
/// manifest when the first fact is asked for, and looks up texts on each call, within one budget.
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
    /// The element of the package that declares @p name; null for a permission of the platform.
    const XmlElement *declaration(const QString &name);
    QString ownText(const XmlElement *element, quint32 attribute, const QLocale &locale);

    PackageDataPointer m_package;
    std::optional<PermissionDeclarations> m_own;
    std::optional<LabelLookup> m_ownTexts;
};

} // namespace SorrelKit

#endif
