// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LocaleLookup.h"

#include "ApkResources.h"
#include "ApkResourcesData.h"
#include "ResourceReference.h"
#include "ResourceTypes.h"

QMap<QString, QString> LocaleLookup::byReference(const QString &ref, int depth)
{
    depth = qBound(0, depth, MaxDepth);
    if (!ResourceReference::isMarked(ref))
        return {{QString(), ref}};
    const auto key = qMakePair(ref, depth);
    const auto known = m_known.constFind(key);
    if (known != m_known.cend())
        return *known;

    const ResourceReference reference(ref, *m_resources.d);
    QMap<QString, QString> values;
    if (reference.package() != nullptr)
        values = inPackage(*reference.package(), reference.type(), reference.entry(), depth);
    m_known.insert(key, values);
    return values;
}

QMap<QString, QString> LocaleLookup::inPackage(const ResourcePackage &package, const QString &type, int entry,
                                               int depth)
{
    depth = qBound(0, depth, MaxDepth);
    QMap<QString, QString> values;
    for (const auto &stored : package.entries(type, entry)) {
        const ResourceEntry &value = stored.value;
        const QString locale = package.m_configs.at(value.configIndex).locale();
        if (values.contains(locale))
            continue;
        if (depth == 0 || value.dataType != ResourceTypes::ReferenceValue) {
            values.insert(locale, m_texts.text(value.dataType, value.data));
            continue;
        }
        const auto referenced = byReference(m_resources.refToString(value.data), depth - 1);
        if (!locale.isEmpty()) {
            values.insert(locale, referenced.value(locale, referenced.value(QString())));
            continue;
        }
        // The locales of the referenced resource are taken from here on, also from this resource's own later values.
        if (values.isEmpty()) {
            values = referenced;
            continue;
        }
        for (auto it = referenced.cbegin(); it != referenced.cend(); ++it) {
            if (!values.contains(it.key()))
                values.insert(it.key(), it.value());
        }
    }
    return values;
}
