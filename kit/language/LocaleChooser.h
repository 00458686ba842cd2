// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LOCALECHOOSER_H
#define SORRELKIT_LOCALECHOOSER_H

#include "language/KeyGroups.h"
#include "language/LanguageTag.h"

#include <cstddef>
#include <vector>

namespace SorrelKit {

/**
 * Chooses among the languages of a resource as Android 7 and later do: the wanted language or its closest parent; else
 * a relative, which is the same language in the same script for another region; else the value for every language.
 * Never chooses a text in a script that the user may not read.
 */
class LocaleChooser
{
public:
    /// Adds a language of the resource; the empty tag is for every language. Languages are numbered from 0. False, and
    /// nothing is added, when the same tag was added before.
    bool add(const LanguageTag &tag);

    int count() const { return int(m_tags.size()); }
    /// Precondition: @p number is less than count().
    const LanguageTag &tag(int number) const { return m_tags[std::size_t(number)]; }

    /// The number of the best language for @p wanted; -1 when no language fits.
    int best(const LanguageTag &wanted) const;
    /// The number of added tags with the language of @p wanted, whatever their script, region and variant. best()
    /// compares all of them when neither @p wanted nor a parent was added.
    int relatives(const LanguageTag &wanted) const { return m_ofLanguage.count(wanted.language()); }

private:
    static constexpr int None = -1;

    /// The codes of @p tag without its script.
    static LocaleCodes codes(const LanguageTag &tag);
    int exact(const LanguageTag &wanted) const;
    int relative(const LanguageTag &wanted) const;

    std::vector<LanguageTag> m_tags;
    KeyGroups<ShortText> m_ofLanguage;
    KeyGroups<LocaleCodes> m_ofCodes; ///< by codes()
};

} // namespace SorrelKit

#endif
