// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/LocaleLookup.h"

#include "format/ResourceTypes.h"
#include "table/ApkResourcesData.h"
#include "table/ResourceReference.h"

bool LocaleLookup::spend(qint64 work, qint64 bytes)
{
    m_isOver = m_isOver || !m_budget.spendWork(work) || !m_budget.holdBytes(bytes);
    return !m_isOver;
}

QMap<QString, QString> LocaleLookup::byReference(const QString &ref, int depth)
{
    if (!ResourceReference::isMarked(ref))
        return {{QString(), ref}};
    if (!spend(CharacterWork * ref.size()))
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
    if (m_isOver)
        return {};
    m_known.insert(key, values);
    return values;
}

LocaleLookup::Texts LocaleLookup::resolved(const ResourcePackage &package, int typeId, int entry, int depth)
{
    Texts values;
    for (const ResourceEntry &value : package.values(typeId, entry)) {
        if (!spend(ValueWork))
            break;
        const QString locale = package.config(value).locale();
        if (values.contains(locale))
            continue;
        if (depth == 0 || value.dataType() != int(ValueType::Reference)) {
            const QString text = m_texts.text(value.dataType(), value.data());
            // Values share the strings of the table; any other text is made for this value alone.
            if (value.dataType() != int(ValueType::String))
                spend(CharacterWork * text.size(), qint64(sizeof(QChar)) * text.size());
            put(values, locale, text);
            continue;
        }
        const Texts referenced = byReference(m_table.refToString(value.data()), depth - 1);
        // From here on, the locales of the referenced resource hide this resource's own later values.
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
    for (auto other = others.cbegin(); other != others.cend() && spend(ValueWork); ++other) {
        if (!values.contains(other.key()))
            put(values, other.key(), other.value());
    }
}

void LocaleLookup::put(Texts &values, const QString &locale, const QString &text)
{
    // A shared map is copied before it takes a value.
    const bool hasRoom = values.isDetached() || spend(ValueWork * values.size(), ValueBytes * values.size());
    if (hasRoom && spend(0, ValueBytes))
        values.insert(locale, text);
}
