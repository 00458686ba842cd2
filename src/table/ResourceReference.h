// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCEREFERENCE_H
#define RESOURCEREFERENCE_H

#include <QString>

class ApkResourcesData;
class ResourcePackage;

/**
 * A reference text, `@[package:]type/entry` with the entry as a decimal number, and the package of a table that it
 * refers to: the first whose id is 0x7f when the text names no package, or whose name equals the text's prefix.
 *
 * The prefix includes its colon, so that a reference with a package never finds one; this is kept on purpose. A package
 * with an empty name matches references without a prefix, whatever its id is.
 */
class ResourceReference
{
public:
    ResourceReference(const QString &text, const ApkResourcesData &table);

    /// Whether @p text starts with "@". Any other text is a value itself.
    static bool isMarked(const QString &text);

    /// The package in the table; null when the text is no reference or no package matches.
    const ResourcePackage *package() const { return m_package; }
    /// Name of the type and index of the entry. Precondition: package() is not null.
    QString type() const { return m_type; }
    int entry() const { return m_entry; }

private:
    const ResourcePackage *m_package = nullptr;
    QString m_type;
    int m_entry = -1;
};

#endif
