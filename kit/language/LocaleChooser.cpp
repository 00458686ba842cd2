// SPDX-License-Identifier: LGPL-2.1-or-later
#include "language/LocaleChooser.h"

namespace SorrelKit {

namespace {

// A language's home region is the best one: "fr-FR" serves all French users without a text of their own. Otherwise the
// alphabetically first tag wins.
bool isBetterRelative(const LanguageTag &tag, const LanguageTag &other)
{
    const auto isAtHome = [](const LanguageTag &relative) {
        const QString home = QLocale(relative.language().toString()).name().section(QLatin1Char('_'), 1);
        return home == relative.region().latin1();
    };
    const bool isHome = isAtHome(tag);
    return isHome != isAtHome(other) ? isHome : tag.toString() < other.toString();
}

} // namespace

bool LocaleChooser::add(const LanguageTag &tag)
{
    const LocaleCodes key = codes(tag);
    for (int number = m_ofCodes.first(key); number != None; number = m_ofCodes.next(number)) {
        if (this->tag(number).codes() == tag.codes())
            return false;
    }
    if (m_tags.empty())
        m_tags.reserve(KeyGroups<LocaleCodes>::FirstSize);
    m_tags.push_back(tag);
    m_ofCodes.add(key);
    m_ofLanguage.add(tag.language());
    return true;
}

LocaleCodes LocaleChooser::codes(const LanguageTag &tag)
{
    return {tag.language(), ShortText(), tag.region(), tag.codes().variant};
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
    int number = m_ofCodes.first(codes(wanted));
    while (number != None && !(tag(number) == wanted))
        number = m_ofCodes.next(number);
    return number;
}

int LocaleChooser::relative(const LanguageTag &wanted) const
{
    const bool hasDefault = exact(LanguageTag()) >= 0;
    int best = None;
    for (int number = m_ofLanguage.first(wanted.language()); number != None; number = m_ofLanguage.next(number)) {
        const LanguageTag &candidate = tag(number);
        if (!candidate.hasScriptOf(wanted))
            continue;
        // In most applications, the value for every language is the English of the United States.
        if (hasDefault && wanted.isCloseToUsEnglish() && !candidate.isCloseToUsEnglish())
            continue;
        if (best < 0 || isBetterRelative(candidate, tag(best)))
            best = number;
    }
    return best;
}

} // namespace SorrelKit
