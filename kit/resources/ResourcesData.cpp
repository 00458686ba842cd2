// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/ResourcesData.h"

#include "resources/ConfigurationText.h"

#include <utility>

namespace SorrelKit {

void ResourcesData::load(const ResourceTables &tables, PlatformSource *platform)
{
    m_index = std::make_unique<ResourceIndex>(tables);
    m_names = std::make_unique<ResourceNames>(*m_index, platform);
    m_qualifiers.resize(std::size_t(m_index->chunkCount()));
}

bool ResourcesData::spend(qint64 work, qint64 bytes)
{
    const bool hasRoom = m_budget.spendWork(work) && m_budget.holdBytes(bytes);
    m_isComplete = m_isComplete && hasRoom;
    return hasRoom;
}

bool ResourcesData::spendCharacters(qint64 characters)
{
    return spend(Budget::ByteWork * characters, qint64(sizeof(QChar)) * characters);
}

void ResourcesData::release()
{
    m_budget.releaseBytes(MaxBytes - m_budget.bytesLeft());
}

QString ResourcesData::configuration(const ResourceIndex::Value &source)
{
    Qualifiers &known = m_qualifiers.at(std::size_t(source.chunk));
    if (known.isKnown && (known.isDefault || !known.text.isEmpty()))
        return known.text;
    QString text = configurationText(source.type->configuration());
    known.isKnown = true;
    known.isDefault = text.isEmpty();
    if (text.size() <= MaxKeptQualifiers)
        known.text = text;
    return text;
}

bool ResourcesData::isDefault(const ResourceIndex::Value &source)
{
    const Qualifiers &known = m_qualifiers.at(std::size_t(source.chunk));
    return known.isKnown ? known.isDefault : configuration(source).isEmpty();
}

QList<ResourceValue> ResourcesData::values(quint32 id)
{
    QList<ResourceValue> values;
    const ResourceIndex::Range range = m_index->values(id);
    for (int number = range.first; number < range.end; ++number) {
        Parts value;
        if (!take(m_index->value(number), value))
            break;
        values.append(value.value());
    }
    release();
    return values;
}

ResourceValue ResourcesData::defaultValue(quint32 id)
{
    const ResourceIndex::Range range = m_index->values(id);
    int chosen = range.first;
    for (int number = range.first; number < range.end && spend(Budget::ByteWork); ++number) {
        if (isDefault(m_index->value(number))) {
            chosen = number;
            break;
        }
    }
    Parts value;
    const bool isWhole = !range.isEmpty() && take(m_index->value(chosen), value);
    release();
    return isWhole ? value.value() : ResourceValue();
}

bool ResourcesData::take(const ResourceIndex::Value &source, Parts &value)
{
    value.configuration = configuration(source);
    if (!spend(Budget::ValueWork) || !spendCharacters(value.configuration.size()))
        return false;
    if (source.entry.isMap())
        return takeItems(source, value);
    value.type = ValueFormatter::type(source.entry.value());
    value.typeName = ValueFormatter::typeName(source.entry.value());
    return takeText(source.entry.value(), *source.table, value.text);
}

bool ResourcesData::takeItems(const ResourceIndex::Value &source, Parts &value)
{
    const EntryView &map = source.entry;
    const ValueFormatter texts(*m_names);
    value.type = ResourceValue::Type::Map;
    value.typeName = QStringLiteral("map");
    if (map.parent() != 0 && !takeText({ValueType::Reference, map.parent()}, *source.table, value.text))
        return false;
    for (qint64 number = 0; number < map.itemCount(); ++number) {
        const EntryView::Item item = map.item(number);
        const QString name = texts.itemName(map, item.name);
        QString text;
        if (!spend(Budget::LookupWork, ItemBytes) || !spendCharacters(name.size())
            || !takeText(item.value, *source.table, text))
            return false;
        value.items.append({name, ValueFormatter::type(item.value), ValueFormatter::typeName(item.value), text});
    }
    return true;
}

bool ResourcesData::takeText(const TypedValue &value, const ResourceTable &table, QString &text)
{
    // One character above the limit shows that the text is cut.
    text = ValueFormatter(*m_names).text(value, table, ResourceTable::MaxStringLength + 1);
    if (text.size() > ResourceTable::MaxStringLength) {
        text.truncate(ResourceTable::MaxStringLength);
        m_isComplete = false;
    }
    return spendCharacters(text.size());
}

} // namespace SorrelKit
