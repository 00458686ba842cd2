// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCEPACKAGE_H
#define RESOURCEPACKAGE_H

#include <SorrelExport.h>

#include "stream/StringPool.h"
#include "table/PackageValues.h"
#include "table/ResourceConfig.h"

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
 * One package of a resource table: its name, the names of its types, and every simple value of every resource. Its
 * chunk is described at ResourceTable, with TypeChunk and EntryView for the types and entries in it.
 *
 * Only the classic encoding is read: dense offsets, and no compact entries. Entries are read one after another, so each
 * must be in the offset array, and no bytes may be between two of them. Maps are skipped. The last unit of the name
 * never counts. A value type: copies are independent. The const operations only read.
 */
class ResourcePackage
{
public:
    /// Characters of a type's name at most; the name is part of every reference text.
    static constexpr int MaxTypeNameLength = 128;
    /// Simple values of a package at most.
    static constexpr int MaxEntries = 1 << 22;
    /// Values of one resource at most.
    static constexpr int MaxValues = 1 << 16;

    SORREL_EXPORT ResourcePackage();

    /**
     * Reads a package after its chunk header, within the boundary of the chunk. Faults are left on the reader; values
     * that were read before a fault are kept. Besides the faults of the reader and the pools: "Typechunk id out of
     * range", "Bogus entry count in type chunk", "resource table contains entry not in index", and for the ceilings
     * above "too long type name in resource table", "too many values in package" and "too many values of one resource".
     */
    SORREL_EXPORT void load(Extractor *reader, int headerSize);

    QString name() const { return m_name; }
    /// The package id; -1 before load().
    int id() const { return m_id; }

    /// Text of the resource id @p ref, as ApkResources::refToString() returns it for a resource of this package.
    SORREL_EXPORT QString refToString(int ref) const;

    /// The lookups of ApkResources, for the entry with index @p entry of the type @p type. @p res is the whole table.
    SORREL_EXPORT QStringList lookupAll(const QString &type, int entry, const ApkResources &res) const;
    SORREL_EXPORT QMap<QString, QString> lookupAllByConfig(const QString &type, int entry,
                                                           const ApkResources &res) const;
    SORREL_EXPORT QMap<QString, QString> lookupByLocale(const QString &type, int entry, const ApkResources &res,
                                                        int depth) const;

    /// The id of the first type with the name @p type; 0 when there is none.
    int typeId(const QString &type) const { return int(m_typeNames.indexOf(type)) + 1; }
    /// The values of the entry with index @p entry of a type, in the order of the file.
    PackageValues::Range values(int typeId, int entry) const { return m_values.values(typeId, entry); }
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
    int m_lastConfigIndex = -1;                             ///< while loading: of the previous type chunk
    StringPool m_typeStrings;
    QVector<QString> m_typeNames; ///< by type id, minus 1
    PackageValues m_values;
    QVector<ResourceConfig> m_configs;
    qint64 m_typeStringsOffset = 0; ///< position of the pool's chunk in the file, 0 for none
    qint64 m_keyStringsOffset = 0;
};

#endif
