// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/ResourceTable.h"

namespace {

QString packageName(const ByteView &package)
{
    using Package = ResourceTable::Package;
    QString name;
    for (int i = 0; i < Package::NameUnits && package.u16(Package::NameAt + 2 * i) != 0; ++i)
        name += QChar(package.u16(Package::NameAt + 2 * i));
    return name;
}

} // namespace

ResourceTable::ResourceTable(const QByteArray &bytes, int maxTypeChunks)
    : m_bytes(bytes), m_maxTypeChunks(maxTypeChunks)
{
    const ChunkView table = ChunkView::at(ByteView(m_bytes), 0);
    if (table.isValid() && table.type() == ChunkType::Table)
        readTable(table);
    else
        m_fault = FormatFault::NoTable;
}

void ResourceTable::readTable(const ChunkView &table)
{
    ChunkList chunks(table.bytes(), table.headerSize());
    while (chunks.hasNext() && m_fault == FormatFault::None) {
        const ChunkView chunk = chunks.next();
        if (chunk.type() == ChunkType::StringPool)
            m_strings = StringPoolView(chunk);
        else if (chunk.type() == ChunkType::Package && m_packages.size() < MaxPackages)
            readPackage(chunk);
        else if (chunk.type() == ChunkType::Package)
            m_fault = FormatFault::TooManyPackages;
    }
    if (m_fault == FormatFault::None && chunks.isDamaged())
        m_fault = FormatFault::DamagedTableChunk;
}

void ResourceTable::readPackage(const ChunkView &chunk)
{
    Package package;
    package.id = chunk.bytes().u8(Package::IdAt);
    package.name = packageName(chunk.bytes());
    package.typeNames = StringPoolView(ChunkView::at(chunk.bytes(), chunk.bytes().u32(Package::TypeStringsAt)));
    package.keys = StringPoolView(ChunkView::at(chunk.bytes(), chunk.bytes().u32(Package::KeyStringsAt)));
    ChunkList chunks(chunk.bytes(), chunk.headerSize());
    while (chunks.hasNext() && m_fault == FormatFault::None) {
        const ChunkView child = chunks.next();
        if (child.type() != ChunkType::Type)
            continue;
        const TypeChunk type(child);
        if (!type.isValid())
            m_fault = FormatFault::DamagedType;
        else if (m_typeChunks >= m_maxTypeChunks)
            m_fault = FormatFault::TooManyTypes;
        else
            package.types[type.typeId()].append(type);
        m_typeChunks += m_fault == FormatFault::None ? 1 : 0;
    }
    if (m_fault == FormatFault::None && chunks.isDamaged())
        m_fault = FormatFault::DamagedTableChunk;
    m_packages.append(package);
}

quint8 ResourceTable::ownerOf(quint32 id) const
{
    // Within a library that is loaded dynamically, references to its own package have the id 0.
    return ResourceId::package(id) == 0 ? packageId() : ResourceId::package(id);
}

QVector<TableValue> ResourceTable::values(quint32 id) const
{
    QVector<TableValue> values;
    for (const Package &package : m_packages) {
        const auto types = package.types.constFind(ResourceId::type(id));
        if (package.id != ownerOf(id) || types == package.types.cend())
            continue;
        for (const TypeChunk &type : *types) {
            const EntryView entry = type.entryAt(type.offset(ResourceId::entry(id)));
            if (!entry.isValid())
                continue;
            TableValue value;
            value.isMap = entry.isMap();
            if (!value.isMap)
                value.value = entry.value();
            value.configuration = &type.configuration();
            values.append(value);
        }
    }
    return values;
}

int ResourceTable::typeChunkCount(quint32 id) const
{
    int count = 0;
    for (const Package &package : m_packages) {
        const auto types = package.types.constFind(ResourceId::type(id));
        if (package.id == ownerOf(id) && types != package.types.cend())
            count += int(types->size());
    }
    return count;
}

QString ResourceTable::typeName(quint32 id) const
{
    for (const Package &package : m_packages) {
        QString name = package.id == ownerOf(id) ? package.typeNames.at(qint64(ResourceId::type(id)) - 1) : QString();
        if (!name.isEmpty())
            return name;
    }
    return {};
}
