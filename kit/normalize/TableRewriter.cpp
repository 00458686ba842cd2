// SPDX-License-Identifier: LGPL-2.1-or-later
#include "normalize/TableRewriter.h"

#include "format/ResourceTable.h"
#include "normalize/TypeRewriter.h"

#include <QtEndian>

#include <algorithm>

namespace SorrelKit {

namespace {

using PackageLayout = ResourceTable::Package;

constexpr int PoolOffsetsAt[] = {PackageLayout::TypeStringsAt, PackageLayout::KeyStringsAt};

void append(QByteArray *bytes, const ByteView &view)
{
    bytes->append(reinterpret_cast<const char *>(view.data()), int(view.size()));
}

template <typename T>
void poke(QByteArray *bytes, int at, T value)
{
    qToLittleEndian(value, bytes->data() + at);
}

void appendPackage(QByteArray *bytes, const ChunkView &package)
{
    const int start = int(bytes->size());
    append(bytes, package.bytes().part(0, package.headerSize()));
    qint64 from = package.headerSize();
    for (ChunkList chunks(package.bytes(), from); chunks.hasNext();) {
        const ChunkView chunk = chunks.next();
        for (const int at : PoolOffsetsAt) {
            if (package.bytes().u32(at) == from)
                poke(bytes, start + at, quint32(bytes->size() - start));
        }
        if (chunk.type() == ChunkType::Type)
            TypeRewriter(chunk).appendTo(bytes);
        else
            append(bytes, chunk.bytes());
        from += chunk.size();
    }
    poke(bytes, start + ChunkView::SizeAt, quint32(bytes->size() - start));
}

} // namespace

bool TableRewriter::isClassic(const QByteArray &table)
{
    const TableRewriter rewriter(table);
    return rewriter.m_fault == FormatFault::None && rewriter.m_isClassic;
}

QByteArray TableRewriter::rewritten(const QByteArray &table, FormatFault *fault)
{
    const TableRewriter rewriter(table);
    if (fault != nullptr)
        *fault = rewriter.m_fault;
    if (rewriter.m_fault != FormatFault::None)
        return {};
    return rewriter.m_isClassic ? table : rewriter.write();
}

TableRewriter::TableRewriter(const QByteArray &table) : m_table(ChunkView::at(ByteView(table), 0))
{
    m_rest = ByteView(table).from(m_table.size());
    measure();
    if (m_fault == FormatFault::None && m_size > MaxTableBytes)
        m_fault = FormatFault::TableTooLarge;
}

void TableRewriter::measure()
{
    if (!m_table.isValid() || m_table.type() != ChunkType::Table) {
        m_fault = FormatFault::NoTable;
        return;
    }
    if (m_table.headerSize() < ResourceTable::HeaderSize) {
        m_fault = FormatFault::DamagedTableHeader;
        return;
    }
    m_isClassic = m_table.headerSize() == ResourceTable::HeaderSize;
    m_size = ResourceTable::HeaderSize + m_rest.size();
    ChunkList chunks(m_table.bytes(), m_table.headerSize());
    while (chunks.hasNext() && m_fault == FormatFault::None) {
        const ChunkView chunk = chunks.next();
        if (chunk.type() == ChunkType::Package)
            measurePackage(chunk);
        else if (chunk.type() == ChunkType::Table)
            m_fault = FormatFault::TableWithinTable;
        else
            m_size += chunk.size();
    }
    measureEnd(chunks);
}

// Android ignores a chunk that is cut, and libsorrel refuses it. The result is without.
void TableRewriter::measureEnd(const ChunkList &chunks)
{
    if (m_fault == FormatFault::None && chunks.isDamaged())
        m_fault = FormatFault::DamagedTableChunk;
    m_isClassic = m_isClassic && chunks.rest() == 0;
}

void TableRewriter::measurePackage(const ChunkView &package)
{
    if (package.headerSize() < PackageLayout::HeaderSize || package.headerSize() > TypeRewriter::MaxHeaderSize) {
        m_fault = FormatFault::DamagedTableHeader;
        return;
    }
    m_size += package.headerSize();
    bool isFound[] = {package.bytes().u32(PackageLayout::TypeStringsAt) == 0,
                      package.bytes().u32(PackageLayout::KeyStringsAt) == 0};
    qint64 from = package.headerSize();
    ChunkList chunks(package.bytes(), from);
    while (chunks.hasNext() && m_fault == FormatFault::None) {
        const ChunkView chunk = chunks.next();
        for (int i = 0; i < 2; ++i)
            isFound[i] = isFound[i] || package.bytes().u32(PoolOffsetsAt[i]) == from;
        if (chunk.type() == ChunkType::Type)
            measureType(chunk);
        else
            m_size += chunk.size();
        from += chunk.size();
    }
    measureEnd(chunks);
    if (m_fault == FormatFault::None
        && !std::all_of(std::cbegin(isFound), std::cend(isFound), [](bool is) { return is; }))
        m_fault = FormatFault::PoolNotFound;
}

void TableRewriter::measureType(const ChunkView &type)
{
    const TypeRewriter rewriter(type);
    m_fault = rewriter.fault();
    if (m_fault != FormatFault::None)
        return;
    m_size += rewriter.size();
    m_isClassic = m_isClassic && rewriter.isClassic();
}

// Precondition: there is no fault.
QByteArray TableRewriter::write() const
{
    QByteArray bytes;
    bytes.reserve(int(m_size));
    append(&bytes, m_table.bytes().part(0, ResourceTable::HeaderSize));
    for (ChunkList chunks(m_table.bytes(), m_table.headerSize()); chunks.hasNext();) {
        const ChunkView chunk = chunks.next();
        if (chunk.type() == ChunkType::Package)
            appendPackage(&bytes, chunk);
        else
            append(&bytes, chunk.bytes());
    }
    poke(&bytes, ChunkView::HeaderSizeAt, quint16(ResourceTable::HeaderSize));
    poke(&bytes, ChunkView::SizeAt, quint32(bytes.size()));
    append(&bytes, m_rest);
    return bytes;
}

} // namespace SorrelKit
