// SPDX-License-Identifier: LGPL-2.1-or-later
#include "language/LabelLookup.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace SorrelKit {

const LabelLookup::Texts &LabelLookup::texts(quint32 id)
{
    const auto [place, isNew] = m_texts.try_emplace(id);
    Texts &texts = place->second;
    if (!isNew || !m_budget.spendWork(m_resolver.work(id)))
        return texts;
    // The best values come first, so the first one counts for each language.
    const QVector<ResolvedValue> candidates = m_resolver.candidates(id, ResourceResolver::Locales::Any);
    texts.values.reserve(std::size_t(qMin(int(candidates.size()), MaxLanguages)));
    for (const ResolvedValue &value : candidates) {
        if (!m_budget.spendWork(TagWork))
            break;
        if (texts.chooser.count() < MaxLanguages && texts.chooser.add(LanguageTag(value.locale)))
            texts.values.push_back({value.value, value.table});
    }
    return texts;
}

std::optional<QString> LabelLookup::text(quint32 id, const LanguageTag &wanted)
{
    for (int depth = 0; depth < ResourceResolver::MaxDepth; ++depth) {
        const Texts &candidates = texts(id);
        if (!m_budget.spendWork(ChoiceWork + ChoiceWork * candidates.chooser.relatives(wanted)))
            return std::nullopt;
        const int number = candidates.chooser.best(wanted);
        if (number < 0)
            return std::nullopt;
        const auto &[value, table] = candidates.values.at(std::size_t(number));
        if (!value.isReference()) {
            // One character above the limit shows that the text is too long.
            const int longest = int(qMin(m_budget.workLeft() + 1, qint64(ResourceTable::MaxStringLength)));
            QString text = value.type == ValueType::String ? table->string(value.data, longest) : value.plainText();
            const bool hasRoom = m_budget.spendWork(Budget::ByteWork * text.size())
                                 && m_budget.holdBytes(qint64(sizeof(QChar)) * text.size());
            return hasRoom ? std::make_optional(std::move(text)) : std::nullopt;
        }
        id = value.data;
    }
    return std::nullopt;
}

const LocaleChooser &LabelLookup::languages(quint32 id, LocaleChooser &several)
{
    const auto hasRoom = [this](const Texts &candidates) {
        return m_budget.spendWork(ChoiceWork + TagWork * candidates.chooser.count());
    };
    const Texts &own = texts(id);
    if (!hasRoom(own))
        return several;
    if (std::none_of(own.values.cbegin(), own.values.cend(), [](const Value &value) { return value.isReference(); }))
        return own.chooser;

    QSet<quint32> visited{id};
    QVector<quint32> open;
    const auto take = [&](const Texts &candidates) {
        for (int i = 0; i < candidates.chooser.count() && several.count() < MaxLanguages; ++i)
            several.add(candidates.chooser.tag(i));
        for (const Value &value : candidates.values) {
            if (value.isReference())
                open.append(value.value.data);
        }
    };
    take(own);
    while (!open.isEmpty() && visited.size() < MaxLanguages) {
        const quint32 next = open.takeLast();
        if (visited.contains(next))
            continue;
        visited.insert(next);
        const Texts &candidates = texts(next);
        if (!hasRoom(candidates))
            break;
        take(candidates);
    }
    return several;
}

QMap<QString, QString> LabelLookup::labels(const XmlAttribute *attribute)
{
    QMap<QString, QString> labels;
    if (attribute == nullptr)
        return labels;
    if (!attribute->value.isReference()) {
        labels.insert(QString(), label(attribute, LanguageTag()));
        return labels;
    }
    LocaleChooser several;
    const LocaleChooser &all = languages(attribute->value.data, several);
    for (int i = 0; i < all.count(); ++i) {
        if (const auto found = text(attribute->value.data, all.tag(i)))
            labels.insert(all.tag(i).toString(), *found);
    }
    return labels;
}

QString LabelLookup::label(const XmlAttribute *attribute, const LanguageTag &wanted)
{
    if (attribute == nullptr)
        return {};
    if (attribute->value.isReference())
        return text(attribute->value.data, wanted).value_or(QString());
    return attribute->plainText();
}

} // namespace SorrelKit
