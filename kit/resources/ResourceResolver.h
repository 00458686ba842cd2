// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCERESOLVER_H
#define SORRELKIT_RESOURCERESOLVER_H

#include "limits/Budget.h"
#include "resources/OwnedPath.h"
#include "resources/TableSource.h"

#include <QHash>
#include <QVector>

#include <optional>

namespace SorrelKit {

/// The value at the end of a chain of references.
struct ResolvedValue {
    bool isNull() const { return value.isNull(); }
    /// The text of a string, or of another value: a label may be a number.
    QString plainText() const { return value.type == ValueType::String ? text : value.plainText(); }

    /// The file that a string names.
    OwnedPath file() const { return {text, owner}; }

    TypedValue value;                     ///< a reference only when the resource is missing
    QString text;                         ///< for a string: a label, the path of a file
    quint32 resource = 0;                 ///< the last resource of the chain; 0 for a value that was no reference
    int density = 0;                      ///< of the value's configuration
    const ResourceTable *table = nullptr; ///< the table whose pool has a string
    LocaleCodes locale;                   ///< of the value's configuration
    ResourceOwner owner = ResourceOwner::Package; ///< of the table
};

/// A map (a style, an array, a plural) of a resource, and the table that has it.
struct ResolvedMap {
    bool isNull() const { return table == nullptr; }

    EntryView entry;
    const ResourceTable *table = nullptr;
    ResourceOwner owner = ResourceOwner::Package; ///< of the table
};

} // namespace SorrelKit

Q_DECLARE_TYPEINFO(SorrelKit::ResolvedValue, Q_MOVABLE_TYPE);

namespace SorrelKit {

/**
 * Looks up resources in the tables of a package and its splits, as a device of a given configuration does: the best
 * value, and when that is a reference, again the best value of the resource that it names.
 *
 * Ids of the platform (package 0x01) are looked up in the table of the TableSource's platform, unless the tables of the
 * package have a package with this id: that package is a platform itself. Without a platform, colours of the platform
 * that are the same on every device are known (AndroidColors). The first such id opens the platform.
 *
 * References are followed up to MaxDepth in a row, which ends cycles as well. A table may have thousands of values for
 * each of thousands of resources, so resource() and resolved() spend from a budget. Their results are kept and cost
 * nothing the next time. Not thread-safe.
 */
class ResourceResolver
{
public:
    static constexpr int MaxDepth = 20;
    /// Values of a resource that candidates() compares, in the order of the table. The largest applications have a
    /// value for each of a hundred languages, or of a dozen densities.
    static constexpr int MaxCandidates = 4096;
    /// The budget of a resolver that is given none.
    static constexpr qint64 MaxWork = 1 << 26;
    static constexpr qint64 MaxBytes = 16 << 20;
    /// The bytes that a kept result holds, besides two for each character of its text.
    static constexpr qint64 ResultBytes = 256;

    /// Searches @p tables in their order; of equally good values the first counts. @p budget outlives this object and
    /// its copies; without one, this object has its own. A resource that does not fit in the budget has no value.
    ResourceResolver(ResourceTables tables, const Configuration &device, Budget *budget = nullptr);
    /// The same for the tables of @p source, which outlives this object and its copies. The first resource that is
    /// looked up reads them.
    ResourceResolver(TableSource &source, const Configuration &device, Budget *budget = nullptr);

    const Configuration &device() const { return m_device; }
    /// Drops all kept results, because the platform has changed. They still count against the budget.
    void forget() { m_best.clear(); }
    /// The same tables seen by @p device, with a budget as in the constructor. Reads no tables.
    ResourceResolver forDevice(const Configuration &device, Budget *budget = nullptr) const;

    /// The value of the resource @p id.
    ResolvedValue resource(quint32 id) const;
    /// @p value itself, or the value that it refers to. A string has no text in the result: the document that it comes
    /// from has the pool. Null for an attribute of the theme, as there is no theme.
    ResolvedValue resolved(const TypedValue &value) const;
    /// The map of the resource @p id for the device; a null one when it has none. Spends as resource() does, and is not
    /// kept.
    ResolvedMap map(quint32 id) const;
    /// The values that candidates() returns: those for every language, or all.
    enum class Locales {
        None,
        Any,
    };
    /// The values of the resource that match the device, whatever their density, best first. References are not
    /// followed. The values have no texts: any number of values may share one long text.
    QVector<ResolvedValue> candidates(quint32 id, Locales locales = Locales::None) const;
    /// The work that looking up @p id costs. resource() and resolved() spend it; callers of candidates() do so
    /// themselves.
    qint64 work(quint32 id) const;
    /// @p value, one of the candidates(), with its text, cut after @p maxLength characters.
    static ResolvedValue withText(ResolvedValue value, int maxLength = ResourceTable::MaxStringLength);
    /// The same, cut where the budget ends, which pays for it.
    ResolvedValue withTextInBudget(ResolvedValue value) const;
    /// Whether @p id is one of the platform's. Reads the tables for such an id, and opens no platform.
    bool isOfPlatform(quint32 id) const;
    /// The id that the resource with the staged id @p id has since, and @p id itself when it is no alias. The platform's
    /// table has the aliases of its resources: applications that were built with a preview of a platform have staged ids.
    quint32 finalId(quint32 id) const;
    /// The platform of the tables; null without one.
    PlatformSource *platform() const { return m_source != nullptr ? m_source->platform() : nullptr; }
    /// The name of the resource's type ("mipmap", "color"); empty when there is none.
    QString typeName(quint32 id) const;
    /// The id of the application's own package, as its table has it.
    quint8 packageId() const;
    Budget &budget() const { return m_sharedBudget != nullptr ? *m_sharedBudget : m_ownBudget; }

private:
    ResolvedValue best(quint32 id) const;
    ResolvedValue bestOfTables(quint32 id) const;
    /// The tables that may have @p id, and their owner.
    struct Owned {
        const ResourceTables &tables;
        ResourceOwner owner;
    };
    Owned tablesOf(quint32 id) const;
    /// The colour @p id of the platform, when there is no platform to look it up in.
    std::optional<quint32> colorWithoutPlatform(quint32 id) const;
    /// Number of type chunks that a lookup of @p id searches.
    int typeChunkCount(quint32 id) const;

    const ResourceTables &tables() const { return m_source != nullptr ? m_source->tables() : m_tables; }

    TableSource *m_source = nullptr;
    ResourceTables m_tables; ///< without a source
    Configuration m_device;
    Budget *m_sharedBudget;
    mutable Budget m_ownBudget{MaxWork, MaxBytes};
    mutable QHash<quint32, ResolvedValue> m_best; ///< kept results
    mutable std::optional<bool> m_isPlatform;     ///< whether the tables have the platform's package
};

} // namespace SorrelKit

#endif
