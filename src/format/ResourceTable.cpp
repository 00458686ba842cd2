// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/ResourceTable.h"

#include <utility>

QString ResourceTable::Package::name() const
{
    QString name;
    for (qint64 at = 0; at < nameUnits.size() && nameUnits.u16(at) != 0; at += 2)
        name += QChar(nameUnits.u16(at));
    return name;
}

ResourceTable::ResourceTable(const ByteView &bytes, std::shared_ptr<const void> owner, int maxTypeChunks)
    : m_owner(std::move(owner)), m_maxTypeChunks(maxTypeChunks)
{
    const ChunkView table = ChunkView::at(bytes, 0);
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

void ResourceTable::append(QVector<QVector<TypeChunk>> *chunks, const TypeChunk &type)
{
    if (type.typeId() >= chunks->size())
        chunks->resize(type.typeId() + 1);
    (*chunks)[type.typeId()].append(type);
}

void ResourceTable::readPackage(const ChunkView &chunk)
{
    Package package;
    package.id = chunk.bytes().u8(Package::IdAt);
    package.nameUnits = chunk.bytes().part(Package::NameAt, qint64(2) * Package::NameUnits);
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
            append(&package.chunks, type);
        m_typeChunks += m_fault == FormatFault::None ? 1 : 0;
    }
    if (m_fault == FormatFault::None && chunks.isDamaged())
        m_fault = FormatFault::DamagedTableChunk;
    m_packages.append(std::move(package));
}

quint8 ResourceTable::ownerOf(quint32 id) const
{
    // Within a library that is loaded dynamically, references to its own package have the id 0.
    return ResourceId::package(id) == 0 ? packageId() : ResourceId::package(id);
}

QVector<TableValue> ResourceTable::values(quint32 id) const
{
    QVector<TableValue> values;
    visitValues(id, [&values](const TableValue &value) { values.append(value); });
    return values;
}

int ResourceTable::typeChunkCount(quint32 id) const
{
    int count = 0;
    for (const Package &package : m_packages) {
        const QVector<TypeChunk> *const types =
            package.id == ownerOf(id) ? package.typeChunks(ResourceId::type(id)) : nullptr;
        count += types != nullptr ? int(types->size()) : 0;
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
