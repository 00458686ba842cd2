// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCESDATA_H
#define SORRELKIT_RESOURCESDATA_H

#include "format/Allowance.h"
#include "resources/ResourceIndex.h"
#include "resources/ResourceNames.h"
#include "resources/ValueFormatter.h"

#include <SorrelKit/Resources.h>

#include <memory>
#include <vector>

namespace SorrelKit {

/// What copies of Resources share: where values stand, the texts of configurations, and what may still be taken.
class ResourcesData
{
public:
    /// What all calls of values() and defaultValue() take together: a character one, a value StepsPerValue, an item
    /// StepsPerItem.
    static constexpr qint64 MaxSteps = 1 << 27;
    static constexpr int StepsPerValue = 16;
    static constexpr int StepsPerItem = 64;
    /// Items, and characters of all texts, of one answer.
    static constexpr int MaxItems = 1 << 16;
    static constexpr qint64 MaxCharacters = 1 << 22;

    ResourcesData() = default;

    bool isLoaded() const { return m_index != nullptr; }
    void load(const QVector<QSharedPointer<const ResourceTable>> &tables);

    const ResourceIndex &index() const { return *m_index; }
    const ResourceNames &names() const { return *m_names; }
    bool isComplete() const { return m_isComplete && m_index->isComplete(); }

    QVector<Resources::Value> values(quint32 id);
    Resources::Value defaultValue(quint32 id);

private:
    Q_DISABLE_COPY(ResourcesData)

    /// What one answer may still take.
    struct Room {
        Allowance items{MaxItems};
        Allowance characters{MaxCharacters};
        bool isFull = false; ///< whether something did not fit
    };

    /// Qualifiers of a type chunk, for which most values ask more than once. Long ones are not kept: a table may have
    /// thousands that no build tool writes.
    struct Qualifiers {
        QString text;
        bool isKnown = false;
        bool isDefault = false;
    };
    static constexpr int MaxKeptQualifiers = 64;

    bool take(const ResourceIndex::Value &source, Room &room, Resources::Value &value);
    bool takeItems(const ResourceIndex::Value &source, Room &room, Resources::Value &value);
    QString text(const TypedValue &value, const ResourceTable &table, Room &room);
    bool charge(int characters, Room &room);
    bool spend(qint64 steps);
    QString configuration(const ResourceIndex::Value &source);
    bool isDefault(const ResourceIndex::Value &source);

    std::unique_ptr<ResourceIndex> m_index;
    std::unique_ptr<ResourceNames> m_names;
    std::vector<Qualifiers> m_qualifiers; ///< by type chunk
    Allowance m_steps{MaxSteps};
    bool m_isComplete = true;
};

} // namespace SorrelKit

#endif
