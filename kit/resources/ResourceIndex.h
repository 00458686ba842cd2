// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCEINDEX_H
#define SORRELKIT_RESOURCEINDEX_H

#include "format/ResourceTable.h"

#include <QHash>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QVector>

#include <vector>

namespace SorrelKit {

/**
 * The places of all values of all resources in the tables of a package and its splits. The constructor reads all
 * offsets once; a value takes 12 bytes here, and binary search finds its resource.
 *
 * Entries that do not end within their chunk are no values. The const operations only read.
 */
class ResourceIndex
{
public:
    /// Offsets of all type chunks: as many as a table of 128 MiB has with 4 bytes each. Further chunks are left out.
    static constexpr qint64 MaxSlots = 1 << 25;
    /// Values of all resources; further ones are left out.
    static constexpr int MaxValues = 1 << 21;
    /// Characters of the name of a type or an entry; a longer one counts as missing. Build tools write identifiers.
    static constexpr int MaxNameLength = 256;

    /// One value: its entry, with the table, the package and the type chunk that it belongs to.
    struct Value {
        EntryView entry;
        const ResourceTable *table = nullptr;
        const ResourceTable::Package *package = nullptr;
        const TypeChunk *type = nullptr;
        int chunk = 0; ///< number of the type chunk, less than chunkCount()
    };

    /// Values from first to end - 1, as value() counts them.
    struct Range {
        int first = 0;
        int end = 0;
        bool isEmpty() const { return first == end; }
    };

    explicit ResourceIndex(QVector<QSharedPointer<const ResourceTable>> tables);

    /// False when offsets or values were left out.
    bool isComplete() const { return m_isComplete; }
    /// The ids of all resources that have a value, ascending.
    QList<quint32> ids() const;
    int chunkCount() const { return int(m_chunks.size()); }

    /// The values of the resource @p id, in the order of the tables. An id with package 0 belongs to the application's
    /// own package.
    Range values(quint32 id) const;
    /// The values of all resources of the type @p typeId of the package @p packageId.
    Range valuesOfType(quint8 packageId, quint8 typeId) const;
    /// Precondition: @p number is one of a Range.
    Value value(int number) const;
    quint32 id(int number) const { return m_slots.at(std::size_t(number)).id; }

    /// The name of the entry of value @p number. Empty for names that no reference can use: digits alone, which are
    /// numbers of entries, and the placeholder that optimizers write in place of every name.
    QString entryName(int number) const;
    /// The same for @p entry of @p package, in any table.
    static QString entryName(const ResourceTable::Package &package, const EntryView &entry);
    /// The package's own id: that of the first package of the first table that has one.
    quint8 packageId() const { return m_packageId; }
    /// The names of packages by their ids; of several packages with one id, the first name.
    const QMap<quint8, QString> &packageNames() const { return m_packageNames; }
    /// The name of a type that has values; empty when it has none.
    QString typeName(quint8 packageId, quint8 typeId) const;

private:
    struct Chunk {
        const TypeChunk *type;
        const ResourceTable *table;
        const ResourceTable::Package *package;
    };
    /// 12 bytes, as there are many.
    struct Slot {
        quint32 id;
        quint32 chunk;
        quint32 offset;

        quint64 place() const { return quint64(id) << 32 | chunk; }
    };

    void collectChunks();
    void collectTypes(const ResourceTable &table, const ResourceTable::Package &package);
    void collectSlots(int chunk);
    Range range(quint32 first, quint64 end) const;

    QVector<QSharedPointer<const ResourceTable>> m_tables;
    std::vector<Chunk> m_chunks;
    std::vector<Slot> m_slots; ///< by id, then by chunk
    QMap<quint8, QString> m_packageNames;
    QHash<quint32, QString> m_typeNames; ///< by the id of the type's first resource
    quint8 m_packageId = 0x7f;
    qint64 m_slotsLeft = MaxSlots;
    bool m_isComplete = true;
};

} // namespace SorrelKit

#endif
