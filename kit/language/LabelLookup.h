// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LABELLOOKUP_H
#define SORRELKIT_LABELLOOKUP_H

#include "format/Allowance.h"
#include "format/XmlElement.h"
#include "language/LanguageTag.h"
#include "language/LocaleChooser.h"
#include "resources/ResourceResolver.h"

#include <QHash>
#include <QMap>
#include <QString>

#include <optional>

namespace SorrelKit {

/**
 * Resolves texts of the manifest in every language that a package is there in. A text may be a reference, whose value in
 * one language is a reference again: each is looked up in the language that the user has, as on a device, so that every
 * language gets the text that a device in this language shows.
 *
 * What one object may look at is limited, for all of its lookups together, as a table may have any number of values.
 */
class LabelLookup
{
public:
    /// What the lookups of a package's labels may take, once for each launcher, of which each has an equal part: a type
    /// chunk that is looked into and a character of a text count one each, and one more is some 50 ns of anything else.
    static constexpr qint64 MaxSteps = 1 << 22;
    static constexpr int StepsPerValue = 32;
    static constexpr int StepsPerChoice = 64;
    static constexpr int StepsPerRelative = 64;
    /// Languages of one text at most, in the order of the table. Packages have up to a hundred.
    static constexpr int MaxLanguages = 1024;

    /// @p resolver outlives this object. As many others as make up @p launcherCount share what lookups may take.
    explicit LabelLookup(const ResourceResolver &resolver, int launcherCount = 1)
        : m_resolver(resolver), m_steps(MaxSteps / qMax(1, launcherCount))
    {
    }

    /// The text of @p attribute by language tag: those that some resource on the way has a value for, and the empty one
    /// for all others. Empty when the attribute is missing or refers to nothing; incomplete when a limit is reached.
    QMap<QString, QString> labels(const XmlAttribute *attribute);
    /// The text of @p attribute in the language @p wanted; empty when there is none.
    QString label(const XmlAttribute *attribute, const LanguageTag &wanted);
    /// Whether a limit was reached.
    bool isSpent() const { return m_steps.isSpent(); }

private:
    /// The values of a resource by language, the best of each.
    struct Texts {
        QVector<LanguageTag> tags;
        QVector<ResolvedValue> values; ///< for each tag
        LocaleChooser chooser;
    };

    const Texts &texts(quint32 id);
    std::optional<QString> text(quint32 id, const LanguageTag &wanted);
    QVector<LanguageTag> languages(quint32 id);

    const ResourceResolver &m_resolver;
    Allowance m_steps;
    QHash<quint32, Texts> m_texts;
};

} // namespace SorrelKit

#endif
