// SPDX-License-Identifier: LGPL-2.1-or-later
#include "language/LabelLookup.h"

#include <QSet>

#include <utility>

namespace SorrelKit {

const LabelLookup::Texts &LabelLookup::texts(quint32 id)
{
    const auto known = m_texts.constFind(id);
    if (known != m_texts.cend())
        return *known;
    Texts texts;
    if (!m_budget.spendWork(m_resolver.work(id)))
        return *m_texts.insert(id, texts);
    // The best values come first, so the first one counts for each language.
    for (const ResolvedValue &value : m_resolver.candidates(id, ResourceResolver::Locales::Any)) {
        if (!m_budget.spendWork(TagWork))
            break;
        if (texts.values.size() < MaxLanguages && texts.chooser.add(LanguageTag(value.locale)))
            texts.values.append(value);
    }
    return *m_texts.insert(id, texts);
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
        const ResolvedValue &candidate = candidates.values.at(number);
        const TypedValue &value = candidate.value;
        if (!value.isReference()) {
            // One character above the limit shows that the text is too long.
            const int longest = int(qMin(m_budget.workLeft() + 1, qint64(ResourceTable::MaxStringLength)));
            QString text =
                value.type == ValueType::String ? candidate.table->string(value.data, longest) : value.plainText();
            const bool hasRoom = m_budget.spendWork(Budget::ByteWork * text.size())
                                 && m_budget.holdBytes(qint64(sizeof(QChar)) * text.size());
            return hasRoom ? std::make_optional(std::move(text)) : std::nullopt;
        }
        id = value.data;
    }
    return std::nullopt;
}

QVector<LanguageTag> LabelLookup::languages(quint32 id)
{
    QVector<LanguageTag> languages;
    QSet<LocaleCodes> known;
    QSet<quint32> visited;
    QVector<quint32> open{id};
    while (!open.isEmpty() && visited.size() < MaxLanguages) {
        const quint32 next = open.takeLast();
        if (visited.contains(next))
            continue;
        visited.insert(next);
        const Texts &candidates = texts(next);
        if (!m_budget.spendWork(ChoiceWork + TagWork * candidates.values.size()))
            break;
        for (int i = 0; i < candidates.values.size(); ++i) {
            const LanguageTag &tag = candidates.chooser.tag(i);
            if (!known.contains(tag.codes()) && languages.size() < MaxLanguages) {
                known.insert(tag.codes());
                languages.append(tag);
            }
            if (candidates.values.at(i).value.isReference())
                open.append(candidates.values.at(i).value.data);
        }
    }
    return languages;
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
    for (const LanguageTag &tag : languages(attribute->value.data)) {
        if (const auto found = text(attribute->value.data, tag))
            labels.insert(tag.toString(), *found);
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
