// SPDX-License-Identifier: LGPL-2.1-or-later
#include "language/LanguageTag.h"

#include "language/LanguageRegions.h"

#include <QStringList>

#include <initializer_list>

namespace SorrelKit {

namespace {

struct Replacement {
    const char *old;
    const char *now;
};

constexpr Replacement replacements[] = {{"iw", "he"}, {"in", "id"}, {"ji", "yi"}, {"tl", "fil"}};

constexpr int ScriptLength = 4;

// Regions where English follows that of the United States.
constexpr char usEnglishRegions[] = "US AS BI GU MH MP PH PR UM VI";

// Languages whose usual script depends on the region, in the data of Qt 5.15 and Qt 6.4.
constexpr char languagesOfRegionalScripts[] = "az aze chi mn mon pa pan sd sh snd sr srp uz uzb yue zh zho";

// Whether @p code is @p text, which ends at a zero or a space.
bool isCode(const ShortText &code, const char *text)
{
    int same = 0;
    while (same < code.size() && text[same] == code.at(same))
        ++same;
    return same == code.size() && (text[same] == ' ' || text[same] == '\0');
}

// Whether @p code is one of @p codes, which are separated by spaces.
bool isAmong(const ShortText &code, const char *codes)
{
    while (!isCode(code, codes)) {
        while (*codes != ' ' && *codes != '\0')
            ++codes;
        if (*codes == '\0')
            return false;
        ++codes;
    }
    return true;
}

// A part of a tag. Empty when it is too long, or has a character that no tag has.
ShortText partOf(QStringView text, int from, int end)
{
    ShortText part;
    if (end - from > ShortText::Capacity)
        return part;
    for (int i = from; i < end; ++i) {
        const char character = text.at(i).toLatin1();
        if (text.at(i).unicode() >= 0x80 || !ShortText::isLetterOrDigit(character))
            return {};
        part.append(character);
    }
    return part;
}

// "Latn", whatever cases @p code has.
ShortText scriptCode(const ShortText &code)
{
    ShortText script = code.toLower();
    ShortText result;
    result.append(code.toUpper().at(0));
    for (int i = 1; i < script.size(); ++i)
        result.append(script.at(i));
    return result;
}

QChar separatorOf(QStringView text)
{
    return text.contains(QLatin1Char('_')) ? QLatin1Char('_') : QLatin1Char('-');
}

// The language of a tag that begins with @p part; empty when that is none.
ShortText languageCode(const ShortText &part)
{
    if (part.size() < 2 || part.size() > 3 || !part.isAll(ShortText::isLetter))
        return {};
    const ShortText language = part.toLower();
    for (const Replacement &replacement : replacements) {
        if (isCode(language, replacement.old))
            return ShortText(replacement.now);
    }
    return language;
}

QString joined(const std::initializer_list<ShortText> &parts, char separator)
{
    char text[64];
    int size = 0;
    for (const ShortText &part : parts) {
        if (part.isEmpty())
            continue;
        if (size > 0)
            text[size++] = separator;
        for (int i = 0; i < part.size(); ++i)
            text[size++] = part.at(i);
    }
    return QString::fromLatin1(text, size);
}

} // namespace

LanguageTag::LanguageTag(const QString &text)
{
    const QChar separator = separatorOf(text);
    for (int from = 0; from <= text.size();) {
        const auto found = int(text.indexOf(separator, from));
        const int end = found < 0 ? int(text.size()) : found;
        if (from == 0)
            setLanguage(partOf(text, from, end));
        else if (!isEmpty())
            addPart(partOf(text, from, end));
        from = end + 1;
    }
    m_scriptRegion = m_codes.region;
}

LanguageTag::LanguageTag(const QLocale &locale) : LanguageTag(locale.name())
{
    // The C locale has no name of a language: it is English of the United States.
    if (isEmpty())
        *this = LanguageTag(QStringLiteral("en-US"));
    m_ownScript = locale.script();
    // Qt's BCP 47 name has the script where it is not the usual one. It is kept, so that parents have it too.
    const QStringList parts = locale.bcp47Name().split(QLatin1Char('-'));
    for (const QString &part : parts) {
        const ShortText code = partOf(part, 0, int(part.size()));
        if (code.size() == ScriptLength && code.isAll(ShortText::isLetter))
            m_codes.script = code;
    }
}

LanguageTag::LanguageTag(const LocaleCodes &locale)
{
    setLanguage(locale.language);
    if (isEmpty())
        return;
    for (const ShortText &part : {locale.script, locale.region, locale.variant})
        addPart(part);
    m_scriptRegion = m_codes.region;
}

ShortText LanguageTag::languageOf(QStringView text)
{
    const auto end = text.indexOf(separatorOf(text));
    return languageCode(partOf(text, 0, int(end < 0 ? text.size() : end)));
}

void LanguageTag::setLanguage(const ShortText &language)
{
    m_codes.language = languageCode(language);
}

void LanguageTag::addPart(const ShortText &part)
{
    const bool isRegion =
        (part.size() == 2 && part.isAll(ShortText::isLetter)) || (part.size() == 3 && part.isAll(ShortText::isDigit));
    if (part.size() == ScriptLength && part.isAll(ShortText::isLetter))
        m_codes.script = scriptCode(part);
    else if (isRegion)
        m_codes.region = part.toUpper();
    else if (part.size() >= 4 && part.isAll(ShortText::isLetterOrDigit))
        m_codes.variant = part.toLower();
}

QLocale::Script LanguageTag::script() const
{
    if (m_ownScript || isEmpty())
        return m_ownScript.value_or(QLocale::AnyScript);
    const QLocale known(joined({language(), m_codes.script, m_scriptRegion}, '_'));
    return known.language() == QLocale::C ? QLocale::AnyScript : known.script();
}

bool LanguageTag::hasScriptOf(const LanguageTag &other) const
{
    if (m_ownScript || other.m_ownScript || m_codes.script != other.m_codes.script)
        return script() == other.script();
    if (m_scriptRegion == other.m_scriptRegion)
        return true;
    const bool isUsual = m_codes.script.isEmpty() && !isAmong(language(), languagesOfRegionalScripts);
    return isUsual || script() == other.script();
}

QString LanguageTag::toString() const
{
    return joined({language(), m_codes.script, region(), m_codes.variant}, '-');
}

LanguageTag LanguageTag::withRegion(const char *region) const
{
    LanguageTag tag;
    tag.m_codes.language = language();
    tag.m_codes.region = ShortText(region);
    tag.m_scriptRegion = tag.m_codes.region;
    return tag;
}

LanguageTag LanguageTag::parent() const
{
    LanguageTag parent = *this;
    if (!m_codes.variant.isEmpty()) {
        parent.m_codes.variant = ShortText();
        return parent;
    }
    if (region().isEmpty())
        return {};
    for (const LanguageRegion &group : languageRegions) {
        if (isCode(language(), group.language) && isAmong(region(), group.countries))
            return withRegion(group.region);
    }
    if (isCode(language(), "en") && !isCode(region(), "001") && !isCloseToUsEnglish())
        return withRegion("001");
    if (isCode(language(), "zh") && isCode(region(), "MO") && script() == QLocale::TraditionalChineseScript) {
        parent.m_codes.region = ShortText("HK");
        return parent;
    }
    // The script stays, although the language without its region may be written in another one.
    parent.m_codes.region = ShortText();
    return parent;
}

bool LanguageTag::isCloseToUsEnglish() const
{
    return isCode(language(), "en") && (region().isEmpty() || isAmong(region(), usEnglishRegions));
}

} // namespace SorrelKit
