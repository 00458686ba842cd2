// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LOCALECHOOSER_H
#define SORRELKIT_LOCALECHOOSER_H

#include "language/LanguageTag.h"

#include <QHash>
#include <QVector>

namespace SorrelKit {

/**
 * Chooses among the languages of a resource as Android 7 and later do: the wanted language or its closest parent; else
 * a relative, which is the same language in the same script for another region; else the value for every language.
 * Never chooses a text in a script that the user may not read.
 */
class LocaleChooser
{
public:
    /// Adds a language of the resource; the empty tag is for every language. Languages are numbered from 0.
    void add(const LanguageTag &tag);

    /// The number of the best language for @p wanted; -1 when no language fits.
    int best(const LanguageTag &wanted) const;
    /// The number of added tags with the language of @p wanted, whatever their script, region and variant. best()
    /// compares all of them.
    int relatives(const LanguageTag &wanted) const { return int(m_byLanguage.value(wanted.language()).size()); }

private:
    int exact(const LanguageTag &wanted) const;
    int relative(const LanguageTag &wanted) const;

    QVector<LanguageTag> m_tags;
    QHash<QString, QVector<int>> m_byLanguage; ///< numbers
};

} // namespace SorrelKit

#endif
