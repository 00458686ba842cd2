// SPDX-License-Identifier: LGPL-2.1-or-later
#include "EncodedTable.h"

#include "Bytes.h"
#include "format/TypeChunk.h"


namespace fixture {

namespace {

constexpr int SizeAt = 4;
constexpr qint64 NoEntry = 0xffffffff;

QByteArray encodedEntry(const EntryView &entry, bool isCompact)
{
    if (!isCompact || entry.isMap() || entry.key() > 0xffff)
        return entry.bytes().toByteArray();
    return compactEntry(int(entry.value().type), entry.value().data, entry.flags(), int(entry.key()));
}

QByteArray encodedType(const ChunkView &chunk, TableEncoding encoding, bool isCompact)
{
    constexpr qint64 LargestOffset = 0xfffe * 4;
    const TypeChunk type(chunk);
    if (type.entries().size() > LargestOffset)
        encoding = TableEncoding::Dense;
    const QByteArray config =
        chunk.bytes().part(TypeChunk::ConfigurationAt, chunk.headerSize() - TypeChunk::ConfigurationAt).toByteArray();
    TypeBuilder builder(type.typeId(), config);
    builder.encoding(encoding);
    for (int index = 0; index < type.slotCount(); ++index) {
        const EntryView entry = type.entryAt(type.offset(index));
        if (entry.isValid())
            builder.entry(index, encodedEntry(entry, isCompact));
        else
            builder.offset(index, NoEntry);
    }
    return builder.build();
}

// The header of @p chunk with the chunks in it.
QByteArray encodedContent(const ChunkView &chunk, TableEncoding encoding, bool isCompact)
{
    QByteArray bytes = chunk.bytes().part(0, chunk.headerSize()).toByteArray();
    for (ChunkList chunks(chunk.bytes(), chunk.headerSize()); chunks.hasNext();) {
        const ChunkView child = chunks.next();
        if (child.type() == ChunkType::Package)
            bytes += encodedContent(child, encoding, isCompact);
        else if (child.type() == ChunkType::Type)
            bytes += encodedType(child, encoding, isCompact);
        else
            bytes += child.bytes().toByteArray();
    }
    poke32(bytes, SizeAt, bytes.size());
    return bytes;
}

} // namespace

QByteArray encodedTable(const QByteArray &table, TableEncoding encoding, bool isCompact)
{
    return encodedContent(ChunkView::at(ByteView(table), 0), encoding, isCompact);
}

} // namespace fixture
