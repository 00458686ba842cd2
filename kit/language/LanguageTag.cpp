// SPDX-License-Identifier: LGPL-2.1-or-later
#include "language/LanguageTag.h"

#include "language/LanguageRegions.h"

#include <QStringList>

#include <algorithm>

namespace SorrelKit {

namespace {

struct Replacement {
    const char *old;
    const char *now;
};

constexpr Replacement replacements[] = {{"iw", "he"}, {"in", "id"}, {"ji", "yi"}, {"tl", "fil"}};

// Regions where English follows that of the United States.
constexpr char usEnglishRegions[] = "US AS BI GU MH MP PH PR UM VI";

bool isAmong(const QString &region, const char *regions)
{
    return QString::fromLatin1(regions).split(QLatin1Char(' ')).contains(region);
}

bool isAll(const QString &part, bool (QChar::*test)() const)
{
    return std::all_of(part.cbegin(), part.cend(),
                       [test](QChar character) { return character.unicode() < 0x80 && (character.*test)(); });
}

} // namespace

LanguageTag::LanguageTag(const QString &text)
{
    QStringList parts = text.split(text.contains(QLatin1Char('_')) ? QLatin1Char('_') : QLatin1Char('-'));
    const QString language = parts.takeFirst().toLower();
    if (language.size() < 2 || language.size() > 3 || !isAll(language, &QChar::isLetter))
        return;
    m_language = language;
    for (const Replacement &replacement : replacements) {
        if (language == QLatin1String(replacement.old))
            m_language = QLatin1String(replacement.now);
    }
    for (const QString &part : parts) {
        const bool isRegion =
            (part.size() == 2 && isAll(part, &QChar::isLetter)) || (part.size() == 3 && isAll(part, &QChar::isDigit));
        if (part.size() == 4 && isAll(part, &QChar::isLetter))
            m_scriptCode = part.left(1).toUpper() + part.mid(1).toLower();
        else if (isRegion)
            m_region = part.toUpper();
        else if (part.size() >= 4 && part.size() <= 8 && isAll(part, &QChar::isLetterOrNumber))
            m_variant = part.toLower();
    }
    findScript();
}

LanguageTag::LanguageTag(const QLocale &locale) : LanguageTag(locale.name())
{
    // The C locale has no name of a language: it is English of the United States.
    if (isEmpty())
        *this = LanguageTag(QStringLiteral("en-US"));
    m_script = locale.script();
    // Qt's BCP 47 name has the script where it is not the usual one. It is kept, so that parents have it too.
    const QStringList parts = locale.bcp47Name().split(QLatin1Char('-'));
    for (const QString &part : parts) {
        if (part.size() == 4 && isAll(part, &QChar::isLetter))
            m_scriptCode = part;
    }
}

void LanguageTag::findScript()
{
    QStringList parts{m_language};
    for (const QString &part : {m_scriptCode, m_region}) {
        if (!part.isEmpty())
            parts.append(part);
    }
    const QLocale known(parts.join(QLatin1Char('_')));
    m_script = known.language() == QLocale::C ? QLocale::AnyScript : known.script();
}

QString LanguageTag::toString() const
{
    QStringList parts{m_language};
    for (const QString &part : {m_scriptCode, m_region, m_variant}) {
        if (!part.isEmpty())
            parts.append(part);
    }
    return parts.join(QLatin1Char('-'));
}

LanguageTag LanguageTag::parent() const
{
    LanguageTag parent = *this;
    if (!m_variant.isEmpty()) {
        parent.m_variant.clear();
        return parent;
    }
    if (m_region.isEmpty())
        return {};
    for (const LanguageRegion &group : languageRegions) {
        if (m_language == QLatin1String(group.language) && isAmong(m_region, group.countries))
            return LanguageTag(m_language + QLatin1Char('-') + QLatin1String(group.region));
    }
    if (m_language == QLatin1String("en") && m_region != QLatin1String("001") && !isCloseToUsEnglish())
        return LanguageTag(QStringLiteral("en-001"));
    if (m_language == QLatin1String("zh") && m_region == QLatin1String("MO")
        && m_script == QLocale::TraditionalChineseScript) {
        parent.m_region = QStringLiteral("HK");
        return parent;
    }
    // The script stays, although the language without its region may be written in another one.
    parent.m_region.clear();
    return parent;
}

bool LanguageTag::isCloseToUsEnglish() const
{
    return m_language == QLatin1String("en") && (m_region.isEmpty() || isAmong(m_region, usEnglishRegions));
}

} // namespace SorrelKit
