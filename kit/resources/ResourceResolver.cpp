// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/ResourceResolver.h"

#include "resources/AndroidColors.h"

#include <algorithm>
#include <utility>

namespace SorrelKit {

namespace {

// The value of one table entry, without its text.
ResolvedValue found(const ResourceTable &table, const TableValue &value, quint32 id)
{
    ResolvedValue result;
    result.value = value.value;
    result.table = &table;
    result.resource = id;
    result.density = value.configuration->density;
    result.languageTag = value.configuration->languageTag();
    return result;
}

} // namespace

ResourceResolver::ResourceResolver(ResourceTables tables, const Configuration &device, Budget *budget)
    : m_tables(std::move(tables)), m_device(device), m_sharedBudget(budget)
{
}

ResourceResolver::ResourceResolver(TableSource &source, const Configuration &device, Budget *budget)
    : m_source(&source), m_device(device), m_sharedBudget(budget)
{
}

ResourceResolver ResourceResolver::forDevice(const Configuration &device, Budget *budget) const
{
    return m_source != nullptr ? ResourceResolver(*m_source, device, budget)
                               : ResourceResolver(m_tables, device, budget);
}

ResolvedValue ResourceResolver::best(quint32 id) const
{
    const auto known = m_best.constFind(id);
    if (known != m_best.cend())
        return *known;
    if (!budget().spendWork(work(id)))
        return {};
    ResolvedValue value = bestOfTables(id);
    if (budget().holdBytes(ResultBytes + qint64(sizeof(QChar)) * value.text.size()))
        m_best.insert(id, value);
    return value;
}

ResolvedValue ResourceResolver::bestOfTables(quint32 id) const
{
    const ResourceTable *owner = nullptr;
    TableValue best;
    for (const auto &table : tables()) {
        for (const TableValue &value : table->values(id)) {
            // Localized pictures are skipped: they are no defaults.
            if (value.isMap || value.configuration->hasLocale() || !value.configuration->matches(m_device))
                continue;
            if (owner == nullptr || value.configuration->isBetterThan(*best.configuration, m_device)) {
                owner = table.data();
                best = value;
            }
        }
    }
    if (owner == nullptr)
        return {};
    const int longest = int(qMin(budget().workLeft() / Budget::ByteWork, qint64(ResourceTable::MaxStringLength)));
    ResolvedValue value = withText(found(*owner, best, id), longest);
    budget().chargeWork(Budget::ByteWork * value.text.size());
    return value;
}

ResolvedValue ResourceResolver::resource(quint32 id) const
{
    return resolved({ValueType::Reference, id});
}

ResolvedValue ResourceResolver::resolved(const TypedValue &value) const
{
    ResolvedValue result;
    result.value = value;
    for (int depth = 0; depth < MaxDepth && result.value.isReference(); ++depth) {
        const quint32 id = result.value.data;
        const ResolvedValue next = best(id);
        if (!next.isNull()) {
            result = next;
        } else if (const auto color = androidColor(id)) {
            result = ResolvedValue();
            result.value = {ValueType::FirstColor, *color};
            result.resource = id;
        } else {
            result.resource = id;
            break;
        }
    }
    return result.value.isThemeAttribute() ? ResolvedValue() : result;
}

QVector<ResolvedValue> ResourceResolver::candidates(quint32 id, Locales locales) const
{
    struct Candidate {
        const ResourceTable *table;
        TableValue value;
    };
    QVector<Candidate> candidates;
    for (const auto &table : tables()) {
        for (const TableValue &value : table->values(id)) {
            const bool isWanted = locales == Locales::Any || !value.configuration->hasLocale();
            if (candidates.size() < MaxCandidates && isWanted && !value.isMap && value.configuration->matches(m_device))
                candidates.append({table.data(), value});
        }
    }
    std::stable_sort(candidates.begin(), candidates.end(), [this](const Candidate &a, const Candidate &b) {
        return a.value.configuration->isBetterThan(*b.value.configuration, m_device);
    });
    QVector<ResolvedValue> result;
    for (const Candidate &candidate : candidates)
        result.append(found(*candidate.table, candidate.value, id));
    return result;
}

qint64 ResourceResolver::work(quint32 id) const
{
    qint64 work = Budget::LookupWork;
    for (const auto &table : tables())
        work += Budget::ValueWork * table->typeChunkCount(id);
    return work;
}

ResolvedValue ResourceResolver::withText(ResolvedValue value, int maxLength)
{
    if (value.value.type == ValueType::String && value.table != nullptr)
        value.text = value.table->string(value.value.data, maxLength);
    return value;
}

QString ResourceResolver::typeName(quint32 id) const
{
    for (const auto &table : tables()) {
        QString name = table->typeName(id);
        if (!name.isEmpty())
            return name;
    }
    return {};
}

} // namespace SorrelKit
