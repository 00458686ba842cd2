// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/ResourceResolver.h"

#include "resources/AndroidColors.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace SorrelKit {

namespace {

// A value of a resource, and the configuration that it is for.
struct Candidate {
    // The value without its text.
    ResolvedValue found(quint32 id) const
    {
        ResolvedValue result;
        result.value = value.value;
        result.table = table;
        result.owner = owner;
        result.resource = id;
        result.density = configuration.density;
        result.locale = configuration.locale();
        return result;
    }

    const ResourceTable *table = nullptr;
    TableValue value;
    Configuration configuration;
    ResourceOwner owner = ResourceOwner::Package;
};

// The best value of the resource @p id that is a map, or is none.
Candidate bestCandidate(quint32 id, bool isMap, const ResourceTables &tables, const Configuration &device)
{
    Candidate best;
    for (const auto &table : tables) {
        table->visitValues(id, [&](const TableValue &value) {
            if (value.isMap != isMap)
                return;
            const Configuration configuration = value.configuration();
            // Localized pictures are skipped: they are no defaults.
            if (configuration.hasLocale() || !configuration.matches(device))
                return;
            if (best.table == nullptr || configuration.isBetterThan(best.configuration, device))
                best = {table.data(), value, configuration};
        });
    }
    return best;
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

bool ResourceResolver::isOfPlatform(quint32 id) const
{
    if (ResourceId::package(id) != ResourceId::PlatformPackage)
        return false;
    if (!m_isPlatform) {
        const auto isPlatform = [](const ResourceTable::Package &package) {
            return package.id == ResourceId::PlatformPackage;
        };
        m_isPlatform = std::any_of(tables().cbegin(), tables().cend(), [&](const auto &table) {
            return std::any_of(table->packages().cbegin(), table->packages().cend(), isPlatform);
        });
    }
    return !*m_isPlatform;
}

quint32 ResourceResolver::finalId(quint32 id) const
{
    for (const auto &table : tablesOf(id).tables) {
        const quint32 finalized = table->finalId(id);
        if (finalized != id)
            return finalized;
    }
    return id;
}

ResourceResolver::Owned ResourceResolver::tablesOf(quint32 id) const
{
    if (isOfPlatform(id) && platform() != nullptr)
        return {platform()->tables(), ResourceOwner::Platform};
    return {tables(), ResourceOwner::Package};
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
    const Owned owned = tablesOf(id);
    Candidate best = bestCandidate(id, false, owned.tables, m_device);
    best.owner = owned.owner;
    return best.table != nullptr ? withTextInBudget(best.found(id)) : ResolvedValue();
}

ResolvedMap ResourceResolver::map(quint32 id) const
{
    if (!budget().spendWork(work(id)))
        return {};
    const Owned owned = tablesOf(id);
    const Candidate best = bestCandidate(id, true, owned.tables, m_device);
    if (best.table == nullptr)
        return {};
    const TypeChunk &type = *best.value.type;
    return {type.entryAt(type.offset(ResourceId::entry(id))), best.table, owned.owner};
}

std::optional<quint32> ResourceResolver::colorWithoutPlatform(quint32 id) const
{
    const bool hasPlatform = isOfPlatform(id) && platform() != nullptr && !platform()->tables().isEmpty();
    return hasPlatform ? std::nullopt : androidColor(id);
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
        } else if (const auto color = colorWithoutPlatform(id)) {
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
    std::vector<Candidate> candidates;
    candidates.reserve(std::size_t(qMin(typeChunkCount(id), MaxCandidates)));
    const Owned owned = tablesOf(id);
    for (const auto &table : owned.tables) {
        table->visitValues(id, [&](const TableValue &value) {
            if (value.isMap || candidates.size() >= MaxCandidates)
                return;
            const Configuration configuration = value.configuration();
            const bool isWanted = locales == Locales::Any || !configuration.hasLocale();
            if (isWanted && configuration.matches(m_device))
                candidates.push_back({table.data(), value, configuration, owned.owner});
        });
    }
    const auto isBetter = [this](const Candidate &a, const Candidate &b) {
        return a.configuration.isBetterThan(b.configuration, m_device);
    };
    // Values that differ only in their languages are in order.
    if (!std::is_sorted(candidates.cbegin(), candidates.cend(), isBetter))
        std::stable_sort(candidates.begin(), candidates.end(), isBetter);
    QVector<ResolvedValue> result;
    result.reserve(int(candidates.size()));
    for (const Candidate &candidate : candidates)
        result.append(candidate.found(id));
    return result;
}

int ResourceResolver::typeChunkCount(quint32 id) const
{
    int count = 0;
    for (const auto &table : tablesOf(id).tables)
        count += table->typeChunkCount(id);
    return count;
}

qint64 ResourceResolver::work(quint32 id) const
{
    return Budget::LookupWork + Budget::ValueWork * typeChunkCount(id);
}

ResolvedValue ResourceResolver::withText(ResolvedValue value, int maxLength)
{
    if (value.value.type == ValueType::String && value.table != nullptr)
        value.text = value.table->string(value.value.data, maxLength);
    return value;
}

ResolvedValue ResourceResolver::withTextInBudget(ResolvedValue value) const
{
    const int longest = int(qMin(budget().workLeft() / Budget::ByteWork, qint64(ResourceTable::MaxStringLength)));
    value = withText(std::move(value), longest);
    budget().chargeWork(Budget::ByteWork * value.text.size());
    return value;
}

quint8 ResourceResolver::packageId() const
{
    return tables().isEmpty() ? ResourceId::ApplicationPackage : tables().first()->packageId();
}

QString ResourceResolver::typeName(quint32 id) const
{
    for (const auto &table : tablesOf(id).tables) {
        QString name = table->typeName(id);
        if (!name.isEmpty())
            return name;
    }
    return {};
}

} // namespace SorrelKit
