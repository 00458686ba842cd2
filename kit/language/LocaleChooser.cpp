// SPDX-License-Identifier: LGPL-2.1-or-later
#include "language/LocaleChooser.h"

namespace SorrelKit {

namespace {

// A language's home region is the best one: "fr-FR" serves all French users without a text of their own. Otherwise the
// alphabetically first tag wins.
bool isBetterRelative(const LanguageTag &tag, const LanguageTag &other)
{
    const auto isAtHome = [](const LanguageTag &relative) {
        return QLocale(relative.language()).name().section(QLatin1Char('_'), 1) == relative.region();
    };
    const bool isHome = isAtHome(tag);
    return isHome != isAtHome(other) ? isHome : tag.toString() < other.toString();
}

} // namespace

void LocaleChooser::add(const LanguageTag &tag)
{
    m_byLanguage[tag.language()].append(int(m_tags.size()));
    m_tags.append(tag);
}

int LocaleChooser::best(const LanguageTag &wanted) const
{
    for (LanguageTag tag = wanted; !tag.isEmpty(); tag = tag.parent()) {
        const int number = exact(tag);
        if (number >= 0)
            return number;
    }
    const int kin = wanted.isEmpty() ? -1 : relative(wanted);
    return kin >= 0 ? kin : exact(LanguageTag());
}

int LocaleChooser::exact(const LanguageTag &wanted) const
{
    const auto same = m_byLanguage.constFind(wanted.language());
    if (same == m_byLanguage.cend())
        return -1;
    for (const int number : *same) {
        if (m_tags.at(number) == wanted)
            return number;
    }
    return -1;
}

int LocaleChooser::relative(const LanguageTag &wanted) const
{
    const auto same = m_byLanguage.constFind(wanted.language());
    if (same == m_byLanguage.cend())
        return -1;
    const bool hasDefault = exact(LanguageTag()) >= 0;
    int best = -1;
    for (const int number : *same) {
        const LanguageTag &tag = m_tags.at(number);
        if (tag.script() != wanted.script())
            continue;
        // In most applications, the value for every language is the English of the United States.
        if (hasDefault && wanted.isCloseToUsEnglish() && !tag.isCloseToUsEnglish())
            continue;
        if (best < 0 || isBetterRelative(tag, m_tags.at(best)))
            best = number;
    }
    return best;
}

} // namespace SorrelKit
