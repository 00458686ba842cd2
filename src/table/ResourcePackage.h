// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCEPACKAGE_H
#define RESOURCEPACKAGE_H

#include <SorrelExport.h>

#include "stream/StringPool.h"
#include "table/ResourceConfig.h"
#include "table/ResourceValues.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstring>
#include <map>

class ApkResources;
class EntryOffsets;
class Extractor;

/**
 * One package of a resource table (chunk type 0x0200): its name, the names of its types, and every simple value of
 * every resource. A package chunk, with offsets from its start:
 *
 * | offset | width        | field                                                                    |
 * |--------|--------------|--------------------------------------------------------------------------|
 * | 0      | 8 bytes      | chunk header, read by the caller                                         |
 * | 8      | u32          | package id: 0x7f for an application's own                                |
 * | 12     | 128 x u16    | package name, up to the first zero unit; the last unit never counts      |
 * | 268    | u32          | offset of the pool of type names; 0 for none                             |
 * | 272    | u32          | last public type, not used                                               |
 * | 276    | u32          | offset of the pool of key names; 0 for none                              |
 * | 280    | u32          | last public key, not used                                                |
 * | header size | chunks  | string pools (0x0001), type specs (0x0202, not used), types (0x0201)     |
 *
 * A type chunk holds the values of one type's resources in one configuration:
 *
 * | offset        | width           | field                                                            |
 * |---------------|-----------------|------------------------------------------------------------------|
 * | 0             | 8 bytes         | chunk header                                                     |
 * | 8             | u8, 3 bytes     | type id: 1 + index of its name; reserved                         |
 * | 12            | u32             | entry count                                                      |
 * | 16            | u32             | entries start: offset of the first entry                         |
 * | 20            |                 | configuration (see ResourceConfig)                               |
 * | header size   | entry count x u32 | offset of each entry from entries start; 0xffffffff for none   |
 * | entries start |                 | entries, one after another, to the chunk's end                   |
 *
 * An entry; its resource id is package id << 24 | type id << 16 | index in the offset array:
 *
 * | offset | width       | field                                                                       |
 * |--------|-------------|-----------------------------------------------------------------------------|
 * | 0      | u16         | size of this header                                                         |
 * | 2      | u16         | flags: 0x0001 for a map entry (style, array, plural)                        |
 * | 4      | u32         | index of its name in the pool of key names, not kept: entries are addressed by number |
 * | size   | 8 bytes     | simple entry: its value (see ResourceTypes)                                 |
 * | 8      | u32, u32    | map entry: parent, count; not stored, and skipped with its count x 12 bytes |
 *
 * Entries are read in the order in which they stand, so that each must be listed in the offset array, and nothing may
 * stand between two of them. A value type: copies are independent. The const operations only read.
 */
class ResourcePackage
{
public:
    /// Characters of a type's name, which is part of every reference text.
    static constexpr int MaxTypeNameLength = 128;
    /// Simple values in all.
    static constexpr int MaxEntries = 1 << 22;
    /// Values of one resource, one for each configuration that has any.
    static constexpr int MaxValues = 1 << 16;

    SORREL_EXPORT ResourcePackage();

    /**
     * Reads a package whose chunk header has just been read, within the boundary that was pushed for it. Faults are
     * left on the reader; the values that were read before one are kept. Besides the reader's own and the pools':
     * "Typechunk id out of range", "Bogus entry count in type chunk", "resource table contains entry not in index", and
     * for the ceilings above "too long type name in resource table", "too many values in package" and "too many values
     * of one resource".
     */
    SORREL_EXPORT void load(Extractor *reader, int headerSize);

    QString name() const { return m_name; }
    /// The package id; -1 before load().
    int id() const { return m_id; }

    /// Text of the resource id @p ref, as ApkResources::refToString() answers it for a resource of this package.
    SORREL_EXPORT QString refToString(int ref) const;

    /// The lookups of ApkResources, for the entry with index @p entry of the type named @p type. @p res renders values.
    SORREL_EXPORT QStringList lookupAll(const QString &type, int entry, const ApkResources &res) const;
    SORREL_EXPORT QMap<QString, QString> lookupAllByConfig(const QString &type, int entry,
                                                           const ApkResources &res) const;
    SORREL_EXPORT QMap<QString, QString> lookupByLocale(const QString &type, int entry, const ApkResources &res,
                                                        int depth) const;

    /// The id of the first type with the name @p type; 0 when there is none.
    int typeId(const QString &type) const { return int(m_typeNames.indexOf(type)) + 1; }
    /// The values of the entry with index @p entry of a type, in the order of the file.
    ResourceValues::Range values(int typeId, int entry) const { return m_values.values(typeId, entry); }
    /// The configuration of @p value, which is one of values().
    const ResourceConfig &config(const ResourceEntry &value) const { return m_configs.at(value.configIndex()); }

    /// The steps of load(): one chunk within the package, one type chunk after its header, one entry of it.
    SORREL_EXPORT void parseChunk();
    SORREL_EXPORT void parseTypeChunk(int headerSize);
    SORREL_EXPORT void parseEntry(int typeId, int entryIndex, int configIndex);

private:
    struct ByBytes {
        bool operator()(const ResourceConfig &left, const ResourceConfig &right) const
        {
            return std::memcmp(&left, &right, sizeof left) < 0;
        }
    };

    void parseStringPool(int headerSize);
    void parseSimpleEntries(int typeId, EntryOffsets &offsets, int base, int configIndex);
    void store(int typeId, const ResourceEntry &value);
    int indexOfConfig(const ResourceConfig &config);
    void sortValues();
    void readTypeNames();

    int m_id = -1;
    QString m_name;
    Extractor *m_reader = nullptr;                          ///< while loading
    std::map<ResourceConfig, int, ByBytes> m_configIndices; ///< while loading: indices in m_configs
    int m_lastConfigIndex = -1;                             ///< while loading: of the type chunk before
    StringPool m_typeStrings;
    QVector<QString> m_typeNames; ///< of the types that have an id
    ResourceValues m_values;
    QVector<ResourceConfig> m_configs;
    qint64 m_typeStringsOffset = 0; ///< position of the pool's chunk, 0 for none
    qint64 m_keyStringsOffset = 0;
};

#endif
