// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TableBuilder.h"

#include "Bytes.h"

namespace fixture {

namespace {

constexpr int TableType = 0x0002;
constexpr int PackageType = 0x0200;
constexpr int TypeType = 0x0201;
constexpr qint64 NoEntry = 0xffffffff;

QByteArray code(const char *text)
{
    return QByteArray(text).leftJustified(2, '\0', true);
}

} // namespace

ConfigBuilder::ConfigBuilder(int size) : m_size(size), m_record(qMax(size, 64), '\0')
{
    poke32(m_record, 0, size);
}

ConfigBuilder &ConfigBuilder::mcc(int value)
{
    return u16(4, value);
}

ConfigBuilder &ConfigBuilder::mnc(int value)
{
    return u16(6, value);
}

ConfigBuilder &ConfigBuilder::locale(const char *language, const char *country)
{
    m_record.replace(8, 4, code(language) + code(country));
    return *this;
}

ConfigBuilder &ConfigBuilder::orientation(int value)
{
    return u8(12, value);
}

ConfigBuilder &ConfigBuilder::density(int value)
{
    return u16(14, value);
}

ConfigBuilder &ConfigBuilder::sdkVersion(int value)
{
    return u16(24, value);
}

ConfigBuilder &ConfigBuilder::u8(int at, int value)
{
    poke8(m_record, at, value);
    return *this;
}

ConfigBuilder &ConfigBuilder::u16(int at, int value)
{
    poke16(m_record, at, value);
    return *this;
}

QByteArray ConfigBuilder::build() const
{
    return m_record.left(m_size);
}

QByteArray simpleEntry(int dataType, qint64 data, int flags, int key)
{
    constexpr int HeaderSize = 8;
    constexpr int ValueSize = 8;
    return Bytes().u16(HeaderSize).u16(flags).u32(key).u16(ValueSize).u8(0).u8(dataType).u32(data).data();
}

QByteArray mapEntry(int itemCount, int key)
{
    constexpr int HeaderSize = 16;
    constexpr int MapFlag = 1;
    constexpr int ItemSize = 12;
    return Bytes().u16(HeaderSize).u16(MapFlag).u32(key).u32(0).u32(itemCount).zeros(itemCount * ItemSize).data();
}

QByteArray compactEntry(int dataType, qint64 data, int flags, int key)
{
    constexpr int CompactFlag = 8;
    return Bytes().u16(key).u16(dataType << 8 | flags | CompactFlag).u32(data).data();
}

TypeBuilder &TypeBuilder::value(int index, int dataType, qint64 data)
{
    return entry(index, simpleEntry(dataType, data));
}

TypeBuilder &TypeBuilder::map(int index, int itemCount)
{
    return entry(index, mapEntry(itemCount));
}

TypeBuilder &TypeBuilder::entry(int index, const QByteArray &bytes)
{
    offset(index, m_entries.size());
    return unlisted(bytes);
}

TypeBuilder &TypeBuilder::offset(int index, qint64 offset)
{
    while (m_offsets.size() <= index)
        m_offsets.append(NoEntry);
    m_offsets[index] = offset;
    return *this;
}

TypeBuilder &TypeBuilder::unlisted(const QByteArray &bytes)
{
    m_entries.append(bytes);
    return *this;
}

TypeBuilder &TypeBuilder::gap(int count)
{
    m_gap = count;
    return *this;
}

TypeBuilder &TypeBuilder::encoding(TableEncoding encoding)
{
    m_encoding = encoding;
    return *this;
}

QByteArray TypeBuilder::offsets() const
{
    constexpr int Unit = 4;
    constexpr int NoShortOffset = 0xffff;
    Bytes bytes;
    for (int index = 0; index < m_offsets.size(); ++index) {
        const qint64 offset = m_offsets.at(index);
        if (m_encoding == TableEncoding::Dense)
            bytes.u32(offset);
        else if (m_encoding == TableEncoding::ShortOffsets)
            bytes.u16(offset == NoEntry ? NoShortOffset : offset / Unit);
        else if (offset != NoEntry)
            bytes.u16(index).u16(offset / Unit);
    }
    return bytes.align().data();
}

int TypeBuilder::slotCount() const
{
    return int(m_offsets.size()) - (m_encoding == TableEncoding::Sparse ? int(m_offsets.count(NoEntry)) : 0);
}

QByteArray TypeBuilder::build() const
{
    constexpr int SparseFlag = 1;
    constexpr int ShortOffsetsFlag = 2;
    const bool isSparse = m_encoding == TableEncoding::Sparse;
    const int flags = isSparse ? SparseFlag : m_encoding == TableEncoding::ShortOffsets ? ShortOffsetsFlag : 0;
    const QByteArray offsets = this->offsets();
    Bytes header;
    header.u8(m_id).u8(flags).zeros(2).u32(slotCount()).u32(offsetsAt() + offsets.size() + m_gap).raw(m_config);
    return chunk(TypeType, header.data(), Bytes().raw(offsets).zeros(m_gap).raw(m_entries).data());
}

PackageBuilder::PackageBuilder(int id, const QString &name) : m_id(id), m_name(name) {}

PackageBuilder &PackageBuilder::types(const QStringList &names)
{
    m_types = names;
    return *this;
}

PackageBuilder &PackageBuilder::keys(const QStringList &names)
{
    m_keys = names;
    return *this;
}

PackageBuilder &PackageBuilder::type(const TypeBuilder &type)
{
    return chunk(type.build());
}

PackageBuilder &PackageBuilder::chunk(const QByteArray &chunk)
{
    m_chunks.append(chunk);
    return *this;
}

PackageBuilder &PackageBuilder::extraHeader(int count)
{
    m_extraHeader = count;
    return *this;
}

PackageBuilder &PackageBuilder::withoutPools()
{
    m_pools = false;
    return *this;
}

QByteArray PackageBuilder::build() const
{
    constexpr int NameUnits = 128;
    const QByteArray typePool = PoolBuilder(Encoding::Utf16).strings(m_types).build();
    const QByteArray keyPool = PoolBuilder(Encoding::Utf8).strings(m_keys).build();
    const int typePoolAt = m_pools ? TypePoolAt + m_extraHeader : 0;
    const int keyPoolAt = m_pools ? typePoolAt + int(typePool.size()) : 0;

    Bytes header;
    header.u32(m_id);
    for (int i = 0; i < NameUnits; ++i)
        header.u16(i < m_name.size() ? m_name.at(i).unicode() : 0);
    header.u32(typePoolAt).u32(m_types.size()).u32(keyPoolAt).u32(m_keys.size()).zeros(m_extraHeader);
    return fixture::chunk(PackageType, header.data(), (m_pools ? typePool + keyPool : QByteArray()) + m_chunks);
}

TableBuilder &TableBuilder::strings(const QStringList &strings, Encoding encoding)
{
    return chunk(PoolBuilder(encoding).strings(strings).build());
}

TableBuilder &TableBuilder::package(const PackageBuilder &package)
{
    ++m_packageCount;
    return chunk(package.build());
}

TableBuilder &TableBuilder::chunk(const QByteArray &chunk)
{
    m_chunks.append(chunk);
    return *this;
}

QByteArray TableBuilder::build() const
{
    return fixture::chunk(TableType, Bytes().u32(m_packageCount).data(), m_chunks);
}

} // namespace fixture
