// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LOCALECHOOSER_H
#define SORRELKIT_LOCALECHOOSER_H

#include "language/LanguageTag.h"

#include <QHash>
#include <QVector>

namespace SorrelKit {

/**
 * Chooses among the languages that a resource is there in, as Android 7 and later do: the one that is asked for, or its
 * closest parent; else a relative, which is the same language in the same script for another region; else what is for
 * every language. A text in a script that the user may not read is never chosen.
 */
class LocaleChooser
{
public:
    /// Adds a language that there is something in; the empty one is for every language. Its number is the count so far.
    void add(const LanguageTag &tag);

    /// The number of the best for @p wanted; -1 when there is none.
    int best(const LanguageTag &wanted) const;
    /// How many languages have been added that are @p wanted but for script, region and variant, which best() compares.
    int relatives(const LanguageTag &wanted) const { return int(m_byLanguage.value(wanted.language()).size()); }

private:
    int exact(const LanguageTag &wanted) const;
    int relative(const LanguageTag &wanted) const;

    QVector<LanguageTag> m_tags;
    QHash<QString, QVector<int>> m_byLanguage; ///< numbers
};

} // namespace SorrelKit

#endif
