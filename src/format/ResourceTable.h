// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCETABLE_H
#define RESOURCETABLE_H

#include "format/Configuration.h"
#include "format/StringPoolView.h"
#include "format/TypeChunk.h"
#include "format/TypedValue.h"
#include "limits/Limits.h"
#include "oddity/FormatFault.h"
#include "oddity/OddityList.h"

#include <QString>
#include <QVector>

#include <bitset>
#include <memory>
#include <utility>
#include <vector>

/// One value of a resource in a table.
struct TableValue {
    bool isMap = false;              ///< an array, a style or a plural, whose items are not read
    TypedValue value;                ///< when it is no map
    const TypeChunk *type = nullptr; ///< the table's own, which has the value; the table outlives it

    Configuration configuration() const { return type->configuration(); }
};

/**
 * A resource table (`resources.arsc`) in memory, in any encoding that build tools write. A table chunk:
 *
 * | offset | width   | field                                                                                    |
 * |--------|---------|------------------------------------------------------------------------------------------|
 * | 0      | 8 bytes | chunk header (see ChunkView)                                                             |
 * | 8      | u32     | package count                                                                            |
 * | 12     | chunks  | one string pool with the texts of values (ChunkType::StringPool), then one package each  |
 *
 * A package chunk, with offsets from its start:
 *
 * | offset | width     | field                                                                                  |
 * |--------|-----------|----------------------------------------------------------------------------------------|
 * | 0      | 8 bytes   | chunk header                                                                           |
 * | 8      | u32       | package id: 0x7f for an application's own                                              |
 * | 12     | 128 x u16 | package name, up to the first zero                                                     |
 * | 268    | u32       | offset of the pool of type names; 0 for none                                           |
 * | 272    | u32       | last public type                                                                       |
 * | 276    | u32       | offset of the pool of key names, the names of entries; 0 for none                      |
 * | 280    | u32       | last public key                                                                        |
 * | header size | chunks | string pools, type specs (flags of each resource), types (see TypeChunk)             |
 *
 * The string pools of a package are chunks of its own, at those offsets. Its other chunks:
 *
 * | type (ChunkType) | header after the chunk header                          | body                                     |
 * |------------------|--------------------------------------------------------|------------------------------------------|
 * | TypeSpec         | u8 type id, 3 bytes, u32 entry count                   | u32 flags of each resource               |
 * | Type             | see TypeChunk                                          |                                          |
 * | Library          | u32 count                                              | u32 package id and 128 x u16 name each   |
 * | Overlayable      | 256 x u16 name, 256 x u16 actor                        | chunks of the type OverlayablePolicy     |
 * | OverlayablePolicy | u32 flags, u32 count                                  | u32 id of each resource                  |
 * | StagedAlias      | u32 count                                              | u32 id while staged, u32 id since, each  |
 *
 * Android 9 to 14 reads a table as follows, and so does this class:
 *
 * - It refuses the table for a damaged chunk; it takes a rest behind a chunk that is cut.
 * - It skips unknown chunks, before the table, in it and in packages.
 * - It takes the first string pool of the table. It refuses a pool that is not sound (StringPoolView::isSound()).
 * - It refuses more packages than the header counts. Packages may share an id and may have an empty name.
 * - A package needs no pools: its types have no names then, and neither have types behind the end of the pool.
 * - A type chunk needs a type spec of the same type before it. Neither has the type id 0 or more than 65,535 entries.
 * - The flags of a type spec are no larger than its package.
 * - Lists of libraries, policies and aliases are within their chunks. An alias is unique, and counts in the platform's
 *   package (id 1) alone, since Android 13.
 * - An entry that is not within its chunk has no value. All others have theirs.
 *
 * Android takes a file without a table chunk for a table without resources; this class has the fault NoTable for it.
 *
 * Loading reads the chunks' headers only; entries and configurations are decoded when they are asked for, so that the
 * table takes little memory besides its bytes. The const operations only read. Meets raw input: a damaged part has no values.
 */
class ResourceTable
{
public:
    static constexpr int HeaderSize = 12;
    /// Type chunks of a table at most. The header of each is checked on load, and each is searched in every lookup in its
    /// type.
    static constexpr int MaxTypeChunks = 1 << 16;
    /// Characters of a string at most; the rest is dropped. UTF-8, the usual encoding, has 15 bits for the length.
    static constexpr int MaxStringLength = 0x7fff;
    static constexpr int MaxPackages = Limits::MaxPackages;
    /// Aliases of a table at most: as many as a type has resources.
    static constexpr int MaxAliases = 1 << 16;

    /// A package of the table, or a part of one.
    struct Package {
        static constexpr int IdAt = 8;
        static constexpr int NameAt = 12;
        static constexpr int NameUnits = 128;
        static constexpr int TypeStringsAt = 268;
        static constexpr int KeyStringsAt = 276;
        static constexpr int HeaderSize = 284;

        quint8 id = 0;
        ByteView nameUnits;
        StringPoolView typeNames;
        StringPoolView keys;                ///< names of entries, by EntryView::key()
        QVector<QVector<TypeChunk>> chunks; ///< by type id, each in the order of the table; up to the largest id

        /// The name of the package ("org.example.notes").
        QString name() const;
        /// The type chunks of the type @p typeId, in the order of the table; null when there are none.
        const QVector<TypeChunk> *typeChunks(quint8 typeId) const
        {
            return typeId < chunks.size() && !chunks.at(typeId).isEmpty() ? &chunks.at(typeId) : nullptr;
        }
    };

    /// An empty table, valid.
    ResourceTable() = default;
    /// The table in @p bytes, which are valid as long as @p owner lives; the table keeps the owner. A damaged table keeps
    /// the content before the fault. @p maxTypeChunks is at most MaxTypeChunks; pass less for one of several tables that
    /// are looked up together.
    ResourceTable(const ByteView &bytes, std::shared_ptr<const void> owner, int maxTypeChunks = MaxTypeChunks);
    /// The table in @p bytes, of which it keeps a copy.
    explicit ResourceTable(const QByteArray &bytes, int maxTypeChunks = MaxTypeChunks)
        : ResourceTable(ByteView(bytes), std::make_shared<QByteArray>(bytes), maxTypeChunks)
    {
    }

    /// The fault of the bytes; FormatFault::None without one.
    FormatFault fault() const { return m_fault; }
    /// What is odd in the chunks that were visited on load, up to the fault.
    const OddityList &oddities() const { return m_oddities; }
    /// Adds an oddity for each configuration of an odd size, and for each entry that has no value because it is not
    /// within its chunk. Takes time in proportion to the table's bytes, so these are not in oddities().
    void addTypeOddities(OddityList *oddities) const;
    /// Number of type chunks in all.
    int typeChunkCount() const { return m_typeChunks; }

    /// The id that the resource with the staged id @p id has since; @p id itself when it is no alias. All lookups by id
    /// follow aliases.
    quint32 finalId(quint32 id) const { return m_aliases.empty() ? id : resolvedAlias(id); }
    /// The values of the resource @p id, in the order of the table; at most one for each type chunk. A package may be
    /// in the table in several parts.
    QVector<TableValue> values(quint32 id) const;
    /// Calls @p visit with each of values(), without a list of them.
    template <typename Visit>
    void visitValues(quint32 id, Visit visit) const
    {
        id = finalId(id);
        for (const Package &package : m_packages) {
            const QVector<TypeChunk> *const types =
                package.id == ownerOf(id) ? package.typeChunks(ResourceId::type(id)) : nullptr;
            for (int i = 0; types != nullptr && i < types->size(); ++i) {
                const TypeChunk &type = types->at(i);
                const EntryView entry = type.entryAt(type.offset(ResourceId::entry(id)));
                if (entry.isValid())
                    visit(TableValue{entry.isMap(), entry.isMap() ? TypedValue() : entry.value(), &type});
            }
        }
    }
    /// The name of the resource's type ("mipmap"); empty when it has none.
    QString typeName(quint32 id) const;
    /// String @p index of the pool of values' texts, cut at @p maxLength characters.
    QString string(quint32 index, int maxLength = MaxStringLength) const { return m_strings.at(index, maxLength); }
    /// Number of type chunks that values() searches for the resource @p id.
    int typeChunkCount(quint32 id) const;

    /// The id of the application's own package: the first in the table; 0x7f in a table without packages.
    quint8 packageId() const { return m_packages.isEmpty() ? ResourceId::ApplicationPackage : m_packages.first().id; }

    /// The packages in the order of the table.
    const QVector<Package> &packages() const { return m_packages; }

private:
    using TypeIds = std::bitset<256>;
    static constexpr int TypeIdAt = 8; ///< in a type spec

    quint32 resolvedAlias(quint32 id) const;
    void checkEnd(const ChunkList &chunks);
    /// Sets @p pool; false when it is not sound.
    bool readPool(const ChunkView &chunk, StringPoolView *pool);
    void readTable(const ChunkView &table);
    void readPackage(const ChunkView &chunk);
    /// Reads the chunk @p part, which is at @p at in the chunk @p package, into @p result.
    void readPart(const ChunkView &part, qint64 at, const ChunkView &package, TypeIds *specified, Package *result);
    void readType(const TypeChunk &type, const TypeIds &specified, Package *package);
    void readAliases(const ChunkView &chunk);
    void noteOddities(const Package &package);
    static void append(QVector<QVector<TypeChunk>> *chunks, const TypeChunk &type);
    /// The id of the package that the resource @p id belongs to.
    quint8 ownerOf(quint32 id) const;

    std::shared_ptr<const void> m_owner; ///< of the bytes
    FormatFault m_fault = FormatFault::None;
    OddityList m_oddities;
    StringPoolView m_strings;
    bool m_hasStrings = false;
    std::vector<std::pair<quint32, quint32>> m_aliases; ///< staged and final ids, sorted
    QVector<Package> m_packages;
    int m_maxTypeChunks = MaxTypeChunks;
    int m_typeChunks = 0;
};

#endif
