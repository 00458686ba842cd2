// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LABELLOOKUP_H
#define SORRELKIT_LABELLOOKUP_H

#include "format/XmlElement.h"
#include "language/LanguageTag.h"
#include "language/LocaleChooser.h"
#include "limits/Budget.h"
#include "resources/ResourceResolver.h"

#include <QMap>
#include <QString>

#include <optional>
#include <unordered_map>
#include <vector>

namespace SorrelKit {

/**
 * Resolves texts of the manifest in every language of a package. A text may be a reference, and its value in one
 * language may be a reference again. Each is looked up in the user's language, as on a device, so every language gets
 * the text that a device in this language shows.
 *
 * All lookups of one object share a budget, as a table may have any number of values.
 */
class LabelLookup
{
public:
    /// The budget for the labels of all launchers of a package; each launcher has an equal part. The bytes are those of
    /// the texts.
    static constexpr qint64 MaxWork = 1 << 26;
    static constexpr qint64 MaxBytes = 8 << 20;
    /// The work that a value costs, whose language tag is taken apart, and the work of choosing a value for a language,
    /// once and for each value in the same language.
    static constexpr qint64 TagWork = 512;
    static constexpr qint64 ChoiceWork = 1024;
    /// Languages of one text, in the order of the table. Packages have up to a hundred.
    static constexpr int MaxLanguages = 1024;

    /// @p resolver outlives this object. The budget is the part of one launcher among @p launcherCount.
    explicit LabelLookup(const ResourceResolver &resolver, int launcherCount = 1)
        : m_resolver(resolver), m_budget(MaxWork / qMax(1, launcherCount), MaxBytes / qMax(1, launcherCount))
    {
    }

    /// The text of @p attribute by language tag: one for each language in which a resource of the chain has a value,
    /// and with the empty tag, the one for all other languages. Empty when the attribute is missing or refers to
    /// nothing; incomplete when the budget is spent.
    QMap<QString, QString> labels(const XmlAttribute *attribute);
    /// The text of @p attribute in the language @p wanted; empty when there is none.
    QString label(const XmlAttribute *attribute, const LanguageTag &wanted);
    /// Whether something did not fit in the budget.
    bool isSpent() const { return m_budget.isSpent(); }

private:
    struct Value {
        bool isReference() const { return value.isReference(); }

        TypedValue value;
        const ResourceTable *table = nullptr; ///< whose pool has a string
    };
    /// The values of a resource by language; the best one for each.
    struct Texts {
        LocaleChooser chooser;
        std::vector<Value> values; ///< for each tag of the chooser
    };

    const Texts &texts(quint32 id);
    std::optional<QString> text(quint32 id, const LanguageTag &wanted);
    /// The languages of the resource @p id and of all that it refers to. They are those of texts(), or when there is a
    /// reference, @p several, which is empty before.
    const LocaleChooser &languages(quint32 id, LocaleChooser &several);

    const ResourceResolver &m_resolver;
    Budget m_budget;
    std::unordered_map<quint32, Texts> m_texts; ///< by resource; references to them stay valid
};

} // namespace SorrelKit

#endif
