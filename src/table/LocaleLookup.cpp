// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/LocaleLookup.h"

#include "format/ResourceTypes.h"
#include "table/ApkResourcesData.h"
#include "table/ResourceReference.h"

namespace {

constexpr int CharactersOfAValue = 32; ///< which take about as much memory and time

}

QMap<QString, QString> LocaleLookup::byReference(const QString &ref, int depth)
{
    if (!ResourceReference::isMarked(ref))
        return {{QString(), ref}};
    if (!m_values.spend(ref.size() / CharactersOfAValue))
        return {};
    const ResourceReference reference(ref, m_table);
    if (reference.package() == nullptr)
        return {};
    const ResourcePackage &package = *reference.package();
    return inPackage(package, package.typeId(reference.type()), reference.entry(), depth);
}

QMap<QString, QString> LocaleLookup::inPackage(const ResourcePackage &package, int typeId, int entry, int depth)
{
    depth = qBound(0, depth, MaxDepth);
    const Key key(&package, typeId, entry, depth);
    const auto known = m_known.constFind(key);
    if (known != m_known.cend())
        return *known;
    const Texts values = resolved(package, typeId, entry, depth);
    if (m_values.isSpent())
        return {};
    m_known.insert(key, values);
    return values;
}

LocaleLookup::Texts LocaleLookup::resolved(const ResourcePackage &package, int typeId, int entry, int depth)
{
    Texts values;
    for (const ResourceEntry &value : package.values(typeId, entry)) {
        if (!m_values.spend(1))
            break;
        const QString locale = package.config(value).locale();
        if (values.contains(locale))
            continue;
        if (depth == 0 || value.dataType() != int(ValueType::Reference)) {
            const QString text = m_texts.text(value.dataType(), value.data());
            // A string of the table is shared by all who have it; any other text is made for this value alone.
            if (value.dataType() != int(ValueType::String))
                m_values.spend(text.size() / CharactersOfAValue);
            put(values, locale, text);
            continue;
        }
        const Texts referenced = byReference(m_table.refToString(value.data()), depth - 1);
        // The locales of the referenced resource are taken from here on, also from this resource's own later values.
        if (locale.isEmpty())
            addMissing(values, referenced);
        else
            put(values, locale, referenced.value(locale, referenced.value(QString(), QLatin1String(""))));
    }
    return values;
}

void LocaleLookup::addMissing(Texts &values, const Texts &others)
{
    if (values.isEmpty()) {
        values = others;
        return;
    }
    for (auto other = others.cbegin(); other != others.cend() && m_values.spend(1); ++other) {
        if (!values.contains(other.key()))
            put(values, other.key(), other.value());
    }
}

void LocaleLookup::put(Texts &values, const QString &locale, const QString &text)
{
    // A map that is shared is copied before it takes a value.
    if (values.isDetached() || m_values.spend(values.size()))
        values.insert(locale, text);
}
