// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCEREFERENCE_H
#define RESOURCEREFERENCE_H

#include <QString>

class ApkResourcesData;
class ResourcePackage;

/**
 * A reference text, `@[package:]type/entry` with the entry as a decimal number, resolved to the package of a table
 * that answers for it: the first whose id is 0x7f, when the text names no package, or whose name is the text's prefix.
 *
 * The prefix keeps its colon, so that a reference that names a package finds none; this is kept on purpose. A package
 * with an empty name answers for references without a prefix whatever its id is.
 */
class ResourceReference
{
public:
    ResourceReference(const QString &text, const ApkResourcesData &table);

    /// Whether @p text has the mark of a reference, "@"; one that has not is a value in itself.
    static bool isMarked(const QString &text);

    /// The package, which is the table's; null when the text is no reference or no package answers.
    const ResourcePackage *package() const { return m_package; }
    /// Name of the type and index of the entry; meaningless without a package.
    QString type() const { return m_type; }
    int entry() const { return m_entry; }

private:
    const ResourcePackage *m_package = nullptr;
    QString m_type;
    int m_entry = -1;
};

#endif
