// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TableEncodings.h"

#include "format/ResourceTable.h"

#include <QVector>

#include <algorithm>

TableEncodings::TableEncodings(const QByteArray &table)
{
    const ChunkView outermost = ChunkView::at(ByteView(table), 0);
    if (outermost.type() != ChunkType::Table || outermost.headerSize() < ResourceTable::HeaderSize)
        return;
    for (ChunkList chunks(outermost.bytes(), outermost.headerSize()); chunks.hasNext();) {
        const ChunkView package = chunks.next();
        if (package.type() != ChunkType::Package)
            continue;
        for (ChunkList children(package.bytes(), package.headerSize()); children.hasNext();) {
            const ChunkView child = children.next();
            if (child.type() == ChunkType::Type)
                addType(TypeChunk(child));
        }
    }
}

void TableEncodings::addType(const TypeChunk &type)
{
    m_isSparse = m_isSparse || type.isSparse();
    m_hasShortOffsets = m_hasShortOffsets || (type.hasShortOffsets() && !type.isSparse());
    QVector<qint64> offsets;
    offsets.reserve(type.slotCount());
    for (int number = 0; number < type.slotCount(); ++number) {
        const qint64 offset = type.slot(number).offset;
        if (offset == TypeChunk::NoEntry)
            continue;
        offsets.append(offset);
        const EntryView entry = type.entryAt(offset);
        m_isCompact = m_isCompact || (entry.isValid() && entry.isCompact());
    }
    if (!std::is_sorted(offsets.cbegin(), offsets.cend()))
        std::sort(offsets.begin(), offsets.end());
    for (int i = 1; i < offsets.size() && !m_hasSharedEntries; ++i) {
        const EntryView entry = type.entryAt(offsets.at(i));
        m_hasSharedEntries = offsets.at(i) == offsets.at(i - 1) && entry.isValid() && !entry.isMap();
    }
}
