// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCETABLE_H
#define RESOURCETABLE_H

#include "format/Configuration.h"
#include "format/StringPoolView.h"
#include "format/TypeChunk.h"
#include "format/TypedValue.h"

#include <QHash>
#include <QString>
#include <QVector>

/// One value of a resource: for which configuration, and what it is.
struct ResourceValue {
    /// Of a map (an array, a style, a plural): the items are not read.
    bool isMap = false;
    TypedValue value;                             ///< when it is no map
    const Configuration *configuration = nullptr; ///< in the table
};

/**
 * A resource table (`resources.arsc`) in memory, in any encoding that build tools write. Loading goes over the chunks
 * alone; entries are found where they stand when they are asked for, so that the table takes little beside its bytes.
 *
 * The const operations only read. Meets raw input: a damaged part has no values.
 */
class ResourceTable
{
public:
    /// Type chunks of a table at most: each takes its configuration, and one lookup in those of its type.
    static constexpr int MaxTypeChunks = 1 << 16;
    /// Characters of a string at most, the rest is left out: as many bytes as the usual encoding, UTF-8, has room for.
    static constexpr int MaxStringLength = 0x7fff;
    /// Packages at most, as the library has it.
    static constexpr int MaxPackages = 256;

    /// A package of the table, or a part of one.
    struct Package {
        quint8 id = 0;
        QString name; ///< "org.example.notes"
        StringPoolView typeNames;
        StringPoolView keys;                     ///< names of entries, which EntryView::key() counts in
        QHash<quint8, QVector<TypeChunk>> types; ///< by type id, each in the order of the table
    };

    /// An empty table, valid.
    ResourceTable() = default;
    /// The table in @p bytes, which it keeps. When it is damaged, what stands before the fault can be asked for.
    /// @p maxTypeChunks is at most MaxTypeChunks; less for one of several tables that are asked together.
    explicit ResourceTable(const QByteArray &bytes, int maxTypeChunks = MaxTypeChunks);

    /// What is wrong with the bytes, in English; empty when nothing is.
    QString fault() const { return m_fault; }
    /// Number of type chunks that can be asked for.
    int typeChunkCount() const { return m_typeChunks; }

    /// The values of the resource @p id (0xPPTTEEEE), in the order of the table. At most one for each type chunk. A
    /// package may stand in the table in several parts.
    QVector<ResourceValue> values(quint32 id) const;
    /// The name of the resource's type ("mipmap"); empty when there is none.
    QString typeName(quint32 id) const;
    /// String @p index of the pool that values refer to, or as many characters of it as @p maxLength.
    QString string(quint32 index, int maxLength = MaxStringLength) const { return m_strings.at(index, maxLength); }
    /// Number of type chunks that values() goes through to find those of the resource @p id.
    int typeChunkCount(quint32 id) const;

    /// The id of the package that is the application's own: the first in the table; 0x7f when there is none.
    quint8 packageId() const { return m_packages.isEmpty() ? 0x7f : m_packages.first().id; }

    /// The packages in the order of the table.
    const QVector<Package> &packages() const { return m_packages; }

private:
    void readTable(const ChunkView &table);
    void readPackage(const ChunkView &chunk);
    /// The id of the package that @p id is of.
    quint8 ownerOf(quint32 id) const;

    QByteArray m_bytes;
    QString m_fault;
    StringPoolView m_strings;
    QVector<Package> m_packages;
    int m_maxTypeChunks = MaxTypeChunks;
    int m_typeChunks = 0;
};

#endif
