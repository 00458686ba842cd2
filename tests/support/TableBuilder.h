// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TABLEBUILDER_H
#define TABLEBUILDER_H

#include "PoolBuilder.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

namespace fixture {

/// A configuration record of @p size bytes (its size field included), in which every field can be set.
class ConfigBuilder
{
public:
    explicit ConfigBuilder(int size = 64);

    ConfigBuilder &mcc(int value);
    ConfigBuilder &mnc(int value);
    ConfigBuilder &locale(const char *language, const char *country = "");
    ConfigBuilder &orientation(int value);
    ConfigBuilder &density(int value);
    ConfigBuilder &sdkVersion(int value);
    /// Any field, by its offset in the record.
    ConfigBuilder &u8(int at, int value);
    ConfigBuilder &u16(int at, int value);

    QByteArray build() const;

private:
    int m_size;
    QByteArray m_record;
};

/// An entry with a simple value.
QByteArray simpleEntry(int dataType, qint64 data, int flags = 0, int key = 0);
/// A map entry with @p itemCount items.
QByteArray mapEntry(int itemCount, int key = 0);
/// An entry with a simple value, in the form of 8 bytes, which libsorrel does not read.
QByteArray compactEntry(int dataType, qint64 data, int flags = 0, int key = 0);

/// How a type chunk tells where its entries are. libsorrel reads the first form alone.
enum class TableEncoding {
    Dense,        ///< an offset of 4 bytes for each index
    ShortOffsets, ///< one of 2 bytes, in units of 4
    Sparse,       ///< for each entry its index, and an offset in units of 4
};

/// Builds a type chunk: the values of type @p id in one configuration.
class TypeBuilder
{
public:
    static constexpr int TypeIdAt = 8;
    static constexpr int FlagsAt = 9;
    static constexpr int EntryCountAt = 12;
    static constexpr int EntriesStartAt = 16;
    static constexpr int ConfigAt = 20;

    explicit TypeBuilder(int id, const QByteArray &config = ConfigBuilder().build()) : m_id(id), m_config(config) {}

    /// The entry @p index, with a simple value. Indices that are left out have no value.
    TypeBuilder &value(int index, int dataType, qint64 data);
    TypeBuilder &map(int index, int itemCount);
    /// The entry @p index as its bytes.
    TypeBuilder &entry(int index, const QByteArray &bytes);
    /// The offset of the entry @p index, whatever stands there.
    TypeBuilder &offset(int index, qint64 offset);
    /// Bytes in the entry area that no offset leads to.
    TypeBuilder &unlisted(const QByteArray &bytes);
    /// Bytes between the offsets and the entries.
    TypeBuilder &gap(int count);
    /// Where the entries are is told in this form; offsets are then multiples of 4.
    TypeBuilder &encoding(TableEncoding encoding);

    /// Offset of the first entry's offset in the chunk.
    int offsetsAt() const { return ConfigAt + int(m_config.size()); }
    QByteArray build() const;

private:
    QByteArray offsets() const;
    int slotCount() const;

    int m_id;
    QByteArray m_config;
    QVector<qint64> m_offsets;
    QByteArray m_entries;
    int m_gap = 0;
    TableEncoding m_encoding = TableEncoding::Dense;
};

/// Builds a package chunk. The pools of types and keys come first, then what else was added, in its order.
class PackageBuilder
{
public:
    static constexpr int IdAt = 8;
    static constexpr int NameAt = 12;
    static constexpr int TypePoolOffsetAt = 268;
    static constexpr int KeyPoolOffsetAt = 276;
    /// Of the type pool's chunk, unless extraHeader() moves it.
    static constexpr int TypePoolAt = 284;

    explicit PackageBuilder(int id = 0x7f, const QString &name = QStringLiteral("org.example.app"));

    PackageBuilder &types(const QStringList &names);
    PackageBuilder &keys(const QStringList &names);
    PackageBuilder &type(const TypeBuilder &type);
    /// Any chunk.
    PackageBuilder &chunk(const QByteArray &chunk);
    PackageBuilder &extraHeader(int count);
    /// Leaves the two pools, and their offsets in the header, out.
    PackageBuilder &withoutPools();

    QByteArray build() const;

private:
    int m_id;
    QString m_name;
    QStringList m_types;
    QStringList m_keys;
    QByteArray m_chunks;
    int m_extraHeader = 0;
    bool m_pools = true;
};

/// Builds a resource table, as the member resources.arsc holds it.
class TableBuilder
{
public:
    TableBuilder &strings(const QStringList &strings, Encoding encoding = Encoding::Utf8);
    TableBuilder &package(const PackageBuilder &package);
    /// Any chunk.
    TableBuilder &chunk(const QByteArray &chunk);

    QByteArray build() const;

private:
    int m_packageCount = 0;
    QByteArray m_chunks;
};

} // namespace fixture

#endif
