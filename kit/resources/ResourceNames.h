// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCENAMES_H
#define SORRELKIT_RESOURCENAMES_H

#include "resources/PlatformNames.h"
#include "resources/ResourceIndex.h"

#include <QString>

namespace SorrelKit {

/// Converts between the ids of resources and their names, `[package:]type/entry`. Resources::name() and
/// Resources::find() document the forms. Resources of the platform have names as well.
class ResourceNames
{
public:
    /// Both outlive this object. Without a @p platform, its resources have no names.
    explicit ResourceNames(const ResourceIndex &index, PlatformSource *platform = nullptr)
        : m_index(index), m_platform(platform)
    {
    }

    /// The name of @p id; empty when neither the tables nor the platform have a value for it.
    QString name(quint32 id) const;
    /// The name with the entry's decimal number in place of its name, "string/12"; empty when the type has no name.
    QString number(quint32 id) const;
    /// The text of a reference to @p id that begins with @p mark, '@' or '?': "@string/app_name", or "@0x7f010003" when
    /// it has no name.
    QString reference(quint32 id, QChar mark) const;
    /// The resource that @p reference names; 0 when it does not exist.
    quint32 find(const QString &reference) const;

private:
    QString typeName(quint32 id) const;
    quint32 existing(quint32 id) const;
    quint32 findEntry(quint8 packageId, const QString &type, const QString &entry) const;
    quint32 findName(quint8 packageId, quint8 typeId, const QString &name) const;

    const ResourceIndex &m_index;
    const PlatformNames m_platform;
};

} // namespace SorrelKit

#endif
