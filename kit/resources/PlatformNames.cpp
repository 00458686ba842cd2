// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/PlatformNames.h"

#include "resources/ResourceIndex.h"

namespace SorrelKit {

QString PlatformNames::name(quint32 id) const
{
    if (m_platform == nullptr || ResourceId::package(id) != ResourceId::PlatformPackage)
        return {};
    const auto known = m_names.constFind(id);
    if (known != m_names.cend())
        return *known;
    QString name = found(id);
    if (!name.isEmpty())
        m_names.insert(id, name);
    return name;
}

QString PlatformNames::found(quint32 staged) const
{
    for (const auto &table : m_platform->tables()) {
        const quint32 id = table->finalId(staged);
        for (const ResourceTable::Package &package : table->packages()) {
            const QVector<TypeChunk> *const chunks =
                package.id == ResourceId::PlatformPackage ? package.typeChunks(ResourceId::type(id)) : nullptr;
            for (int i = 0; chunks != nullptr && i < chunks->size(); ++i) {
                const TypeChunk &chunk = chunks->at(i);
                const EntryView entry = chunk.entryAt(chunk.offset(ResourceId::entry(id)));
                const QString name = entry.isValid() ? ResourceIndex::entryName(package, entry) : QString();
                if (!name.isEmpty())
                    return package.name() + QLatin1Char(':') + table->typeName(id) + QLatin1Char('/') + name;
            }
        }
    }
    return {};
}

} // namespace SorrelKit
