// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCESDATA_H
#define SORRELKIT_RESOURCESDATA_H

#include "limits/Budget.h"
#include "resources/ResourceIndex.h"
#include "resources/ResourceNames.h"
#include "resources/ValueFormatter.h"

#include <SorrelKit/ResourceValue.h>

#include <memory>
#include <vector>

namespace SorrelKit {

/// The data that copies of Resources share: the index of values, the texts of configurations, and the budget.
class ResourcesData
{
public:
    /// The budget of all calls of values() and defaultValue() together, and the bytes that one of them holds.
    static constexpr qint64 MaxWork = 1 << 27;
    static constexpr qint64 MaxBytes = 8 << 20;
    /// The bytes that an item of a map holds, besides two for each character.
    static constexpr qint64 ItemBytes = 96;

    ResourcesData() = default;

    bool isLoaded() const { return m_index != nullptr; }
    /// @p platform outlives this object; null for none.
    void load(const ResourceTables &tables, PlatformSource *platform);

    const ResourceIndex &index() const { return *m_index; }
    const ResourceNames &names() const { return *m_names; }
    bool isComplete() const { return m_isComplete && m_index->isComplete(); }

    QList<ResourceValue> values(quint32 id);
    ResourceValue defaultValue(quint32 id);

private:
    Q_DISABLE_COPY(ResourcesData)

    /// The parts of a value, while it is made.
    struct Parts {
        ResourceValue value() const { return {configuration, type, typeName, text, items}; }

        QString configuration;
        ResourceValue::Type type = ResourceValue::Type::Unknown;
        QString typeName;
        QString text;
        QList<ResourceItem> items;
    };

    /// Qualifiers of a type chunk; most values need them more than once. Long ones are not kept: a hostile table may
    /// have thousands.
    struct Qualifiers {
        QString text;
        bool isKnown = false;
        bool isDefault = false;
    };
    static constexpr int MaxKeptQualifiers = 64;

    bool take(const ResourceIndex::Value &source, Parts &value);
    bool takeItems(const ResourceIndex::Value &source, Parts &value);
    /// Sets @p text; false when it does not fit.
    bool takeText(const TypedValue &value, const ResourceTable &table, QString &text);
    /// Spends on @p characters of a result.
    bool spendCharacters(qint64 characters);
    bool spend(qint64 work, qint64 bytes = 0);
    /// Ends a call: the caller holds the result from then on.
    void release();
    QString configuration(const ResourceIndex::Value &source);
    bool isDefault(const ResourceIndex::Value &source);

    std::unique_ptr<ResourceIndex> m_index;
    std::unique_ptr<ResourceNames> m_names;
    std::vector<Qualifiers> m_qualifiers; ///< by type chunk
    Budget m_budget{MaxWork, MaxBytes};
    bool m_isComplete = true;
};

} // namespace SorrelKit

#endif
