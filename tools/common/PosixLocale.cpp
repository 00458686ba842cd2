// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PosixLocale.h"

#include "language/LanguageRegions.h"

#include <QLocale>
#include <QVector>

#include <algorithm>
#include <utility>

namespace {

struct Script {
    const char *code;
    QLocale::Script script;
    const char *modifier; ///< of the GNU C library; empty when there is none
};

constexpr Script scripts[] = {
    {"Arab", QLocale::ArabicScript, ""},
    {"Armn", QLocale::ArmenianScript, ""},
    {"Beng", QLocale::BengaliScript, ""},
    {"Cyrl", QLocale::CyrillicScript, "cyrillic"},
    {"Deva", QLocale::DevanagariScript, "devanagari"},
    {"Ethi", QLocale::EthiopicScript, ""},
    {"Geor", QLocale::GeorgianScript, ""},
    {"Grek", QLocale::GreekScript, ""},
    {"Gujr", QLocale::GujaratiScript, ""},
    {"Guru", QLocale::GurmukhiScript, ""},
    {"Hans", QLocale::SimplifiedHanScript, ""},
    {"Hant", QLocale::TraditionalHanScript, ""},
    {"Hebr", QLocale::HebrewScript, ""},
    {"Jpan", QLocale::JapaneseScript, ""},
    {"Khmr", QLocale::KhmerScript, ""},
    {"Knda", QLocale::KannadaScript, ""},
    {"Kore", QLocale::KoreanScript, ""},
    {"Laoo", QLocale::LaoScript, ""},
    {"Latn", QLocale::LatinScript, "latin"},
    {"Mlym", QLocale::MalayalamScript, ""},
    {"Mymr", QLocale::MyanmarScript, ""},
    {"Orya", QLocale::OriyaScript, ""},
    {"Sinh", QLocale::SinhalaScript, ""},
    {"Taml", QLocale::TamilScript, ""},
    {"Telu", QLocale::TeluguScript, ""},
    {"Thaa", QLocale::ThaanaScript, ""},
    {"Thai", QLocale::ThaiScript, ""},
    {"Tibt", QLocale::TibetanScript, ""},
};

// Countries that use one script of a language.
struct ScriptCountries {
    const char *language;
    const char *script;
    const char *countries;
};

constexpr ScriptCountries scriptCountries[] = {
    {"az", "Arab", "IR"},
    {"pa", "Arab", "PK"},
    {"zh", "Hans", "CN SG"},
    {"zh", "Hant", "HK MO TW"},
};

struct Tag {
    QString language;
    QString script;
    QString region;
    QString variant;
    bool isValid = false;
};

bool isAll(const QString &part, bool (*test)(ushort))
{
    return std::all_of(part.cbegin(), part.cend(), [test](QChar character) { return test(character.unicode()); });
}

bool isLetter(ushort character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(ushort character)
{
    return character >= '0' && character <= '9';
}

bool isLetterOrDigit(ushort character)
{
    return isLetter(character) || isDigit(character);
}

Tag parsed(const QString &text)
{
    Tag tag;
    QStringList parts = text.split(QLatin1Char('-'));
    tag.language = parts.takeFirst();
    if (tag.language.size() < 2 || tag.language.size() > 3 || !isAll(tag.language, isLetter))
        return {};
    tag.language = tag.language.toLower();
    if (!parts.isEmpty() && parts.constFirst().size() == 4 && isAll(parts.constFirst(), isLetter)) {
        tag.script = parts.takeFirst().toLower();
        tag.script.replace(0, 1, tag.script.at(0).toUpper());
    }
    const QString region = parts.value(0);
    if ((region.size() == 2 && isAll(region, isLetter)) || (region.size() == 3 && isAll(region, isDigit)))
        tag.region = parts.takeFirst().toUpper();
    const QString variant = parts.value(0);
    if (variant.size() >= 4 && variant.size() <= 8 && isAll(variant, isLetterOrDigit))
        tag.variant = parts.takeFirst().toLower();
    tag.isValid = parts.isEmpty();
    return tag;
}

QStringList split(const char *countries)
{
    return QString::fromLatin1(countries).split(QLatin1Char(' '));
}

QStringList countriesOfScript(const QString &language, const QString &script)
{
    for (const ScriptCountries &row : scriptCountries) {
        if (language == QLatin1String(row.language) && script == QLatin1String(row.script))
            return split(row.countries);
    }
    return {};
}

QStringList countriesOfRegion(const QString &language, const QString &region)
{
    for (const SorrelKit::LanguageRegion &row : SorrelKit::languageRegions) {
        if (language == QLatin1String(row.language) && region == QLatin1String(row.region))
            return split(row.countries);
    }
    return {};
}

// The default script of the language; empty for an unknown language.
QString usualScript(const QString &language)
{
    const QLocale locale(language);
    for (const Script &script : scripts) {
        if (locale.language() != QLocale::C && locale.script() == script.script)
            return QString::fromLatin1(script.code);
    }
    return {};
}

QString modifierOf(const QString &scriptCode)
{
    for (const Script &script : scripts) {
        if (scriptCode == QLatin1String(script.code))
            return QString::fromLatin1(script.modifier);
    }
    return {};
}

// The script of the country @p region; empty when the country implies none.
QString scriptOfCountry(const QString &language, const QString &region)
{
    for (const ScriptCountries &row : scriptCountries) {
        if (language == QLatin1String(row.language) && split(row.countries).contains(region))
            return QString::fromLatin1(row.script);
    }
    return {};
}

// Replaces the script of @p tag by @p regions or by a modifier. Returns false when the script has no locale.
bool resolveScript(Tag &tag, QStringList &regions)
{
    const QString usual = usualScript(tag.language);
    if (tag.region.isEmpty()) {
        regions = countriesOfScript(tag.language, tag.script.isEmpty() ? usual : tag.script);
        if (!regions.isEmpty() || tag.script.isEmpty())
            return true;
    } else if (tag.script.isEmpty()) {
        return true;
    } else {
        const QString ofCountry = scriptOfCountry(tag.language, tag.region);
        if (!ofCountry.isEmpty())
            return ofCountry == tag.script;
    }
    if (tag.script == usual)
        return true;
    const QString modifier = modifierOf(tag.script);
    if (modifier.isEmpty() || !tag.variant.isEmpty())
        return false;
    tag.variant = modifier;
    return true;
}

} // namespace

QStringList posixLocales(const QString &text)
{
    Tag tag = parsed(text);
    QStringList regions;
    if (!tag.isValid || !resolveScript(tag, regions))
        return {};
    if (regions.isEmpty())
        regions.append(tag.region);
    if (!tag.region.isEmpty() && isDigit(tag.region.at(0).unicode())) {
        regions = countriesOfRegion(tag.language, tag.region);
        if (regions.isEmpty() && tag.region == QLatin1String("001"))
            regions.append(QString());
    }
    QStringList locales;
    for (const QString &region : std::as_const(regions)) {
        locales.append(tag.language + (region.isEmpty() ? QString() : QLatin1Char('_') + region)
                       + (tag.variant.isEmpty() ? QString() : QLatin1Char('@') + tag.variant));
    }
    return locales;
}

LocalizedTexts localizedTexts(const QMap<QString, QString> &byTag)
{
    using Entry = std::pair<QStringList, QString>;
    LocalizedTexts result;
    QVector<Entry> entries;
    for (auto text = byTag.cbegin(); text != byTag.cend(); ++text) {
        if (text.key().isEmpty())
            continue;
        const QStringList locales = posixLocales(text.key());
        if (locales.isEmpty())
            result.lostTags.append(text.key());
        else
            entries.append({locales, text.value()});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &a, const Entry &b) { return a.first.size() < b.first.size(); });
    for (const Entry &entry : std::as_const(entries)) {
        for (const QString &locale : entry.first) {
            if (!result.texts.contains(locale))
                result.texts.insert(locale, entry.second);
        }
    }
    return result;
}
