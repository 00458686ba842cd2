// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/ResourcesData.h"

#include "resources/ConfigurationText.h"

#include <utility>

namespace SorrelKit {

void ResourcesData::load(const QVector<QSharedPointer<const ResourceTable>> &tables)
{
    m_index = std::make_unique<ResourceIndex>(tables);
    m_names = std::make_unique<ResourceNames>(*m_index);
    m_qualifiers.resize(std::size_t(m_index->chunkCount()));
}

bool ResourcesData::spend(qint64 steps)
{
    m_isComplete = m_steps.spend(steps) && m_isComplete;
    return !m_steps.isSpent();
}

QString ResourcesData::configuration(const ResourceIndex::Value &source)
{
    Qualifiers &known = m_qualifiers.at(std::size_t(source.chunk));
    if (known.isKnown && (known.isDefault || !known.text.isEmpty()))
        return known.text;
    QString text = configurationText(*source.configuration);
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

QVector<Resources::Value> ResourcesData::values(quint32 id)
{
    QVector<Resources::Value> values;
    Room room;
    const ResourceIndex::Range range = m_index->values(id);
    for (int number = range.first; number < range.end; ++number) {
        Resources::Value value;
        if (!take(m_index->value(number), room, value))
            break;
        values.append(std::move(value));
    }
    return values;
}

Resources::Value ResourcesData::defaultValue(quint32 id)
{
    const ResourceIndex::Range range = m_index->values(id);
    int chosen = range.first;
    for (int number = range.first; number < range.end && spend(1); ++number) {
        if (isDefault(m_index->value(number))) {
            chosen = number;
            break;
        }
    }
    Room room;
    Resources::Value value;
    return !range.isEmpty() && take(m_index->value(chosen), room, value) ? value : Resources::Value();
}

bool ResourcesData::take(const ResourceIndex::Value &source, Room &room, Resources::Value &value)
{
    value.configuration = configuration(source);
    if (!spend(StepsPerValue) || !charge(int(value.configuration.size()), room))
        return false;
    if (source.entry.isMap())
        return takeItems(source, room, value);
    value.type = ValueFormatter::typeWord(source.entry.value());
    value.text = text(source.entry.value(), *source.table, room);
    return !room.isFull;
}

bool ResourcesData::takeItems(const ResourceIndex::Value &source, Room &room, Resources::Value &value)
{
    const EntryView &map = source.entry;
    const ValueFormatter texts(*m_names);
    value.type = QStringLiteral("map");
    if (map.parent() != 0)
        value.text = text({ValueType::Reference, map.parent()}, *source.table, room);
    for (qint64 number = 0; number < map.itemCount() && !room.isFull; ++number) {
        const EntryView::Item item = map.item(number);
        const QString name = texts.itemName(map, item.name);
        if (!room.items.spend(1) || !spend(StepsPerItem) || !charge(int(name.size()), room)) {
            room.isFull = true;
            m_isComplete = false;
            break;
        }
        value.items.append({name, ValueFormatter::typeWord(item.value), text(item.value, *source.table, room)});
    }
    return !room.isFull;
}

QString ResourcesData::text(const TypedValue &value, const ResourceTable &table, Room &room)
{
    // One character more tells whether the text is whole.
    QString text = ValueFormatter(*m_names).text(value, table, ResourceTable::MaxStringLength + 1);
    if (text.size() > ResourceTable::MaxStringLength) {
        text.truncate(ResourceTable::MaxStringLength);
        m_isComplete = false;
    }
    room.isFull = !charge(int(text.size()), room) || room.isFull;
    return text;
}

bool ResourcesData::charge(int characters, Room &room)
{
    const bool hasRoom = room.characters.spend(characters);
    m_isComplete = m_isComplete && hasRoom;
    return spend(characters) && hasRoom;
}

} // namespace SorrelKit
