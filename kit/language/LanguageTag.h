// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LANGUAGETAG_H
#define SORRELKIT_LANGUAGETAG_H

#include "format/Configuration.h"

#include <QLocale>
#include <QString>
#include <QStringView>

#include <optional>

namespace SorrelKit {

/**
 * A BCP 47 language tag with the parts that resources distinguish: language, script, region, variant ("sr-Latn",
 * "es-419", "ca-ES-valencia"). The old codes of Java and Android for Hebrew, Indonesian, Yiddish and Filipino (`iw`,
 * `in`, `ji`, `tl`) become today's. A value that owns no memory.
 */
class LanguageTag
{
public:
    /// The empty tag, for texts that are for every language.
    LanguageTag() = default;
    /// The tag in @p text, separated by "-" or "_"; parts that fit no form are left out.
    explicit LanguageTag(const QString &text);
    /// The tag of @p locale, with its region.
    explicit LanguageTag(const QLocale &locale);
    /// The tag of the locale of a configuration.
    explicit LanguageTag(const LocaleCodes &locale);
    /// The language() of the tag in @p text, in less time than making the tag.
    static ShortText languageOf(QStringView text);

    bool isEmpty() const { return m_codes.language.isEmpty(); }
    const LocaleCodes &codes() const { return m_codes; }
    const ShortText &language() const { return m_codes.language; }
    const ShortText &region() const { return m_codes.region; }
    /// The script in the tag, or the usual script of the language and region; AnyScript when Qt knows none. Qt searches
    /// its tables on each call.
    QLocale::Script script() const;
    QString toString() const;

    /**
     * The next best tag for users of this one: without the variant; then with a region of several countries ("es-419"
     * for Mexico, "en-001", "en-150") or the region that this one follows ("pt-PT" for Angola, "zh-Hant-HK" for Macau);
     * then without a region. Empty when there is none.
     */
    LanguageTag parent() const;
    /// Whether this is English of the United States or a region that follows it, or English without a region.
    bool isCloseToUsEnglish() const;

    /// Whether both tags mean the same, also when only one of them names its script.
    friend bool operator==(const LanguageTag &a, const LanguageTag &b)
    {
        return a.language() == b.language() && a.region() == b.region() && a.m_codes.variant == b.m_codes.variant
               && a.hasScriptOf(b);
    }
    /// Whether both tags, which have one language, have the same script(). Qt is asked only when the codes leave it open.
    bool hasScriptOf(const LanguageTag &other) const;

private:
    void setLanguage(const ShortText &language);
    /// Adds @p part, a script, a region or a variant; other parts are left out.
    void addPart(const ShortText &part);
    /// The tag of this language in @p region, whatever this one's script and region.
    LanguageTag withRegion(const char *region) const;

    LocaleCodes m_codes;
    ShortText m_scriptRegion;                   ///< the region that the usual script belongs to; parents keep it
    std::optional<QLocale::Script> m_ownScript; ///< of a locale of Qt, which may be AnyScript
};

} // namespace SorrelKit

#endif
