// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LANGUAGETAG_H
#define SORRELKIT_LANGUAGETAG_H

#include <QLocale>
#include <QString>

namespace SorrelKit {

/**
 * A BCP 47 language tag with the parts that resources distinguish: language, script, region, variant ("sr-Latn",
 * "es-419", "ca-ES-valencia"). The old codes of Java and Android for Hebrew, Indonesian, Yiddish and Filipino (`iw`,
 * `in`, `ji`, `tl`) become today's.
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

    bool isEmpty() const { return m_language.isEmpty(); }
    QString language() const { return m_language; }
    QString region() const { return m_region; }
    /// The script in the tag, or the usual script of the language and region; AnyScript when Qt knows none.
    QLocale::Script script() const { return m_script; }
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
        return a.m_language == b.m_language && a.m_script == b.m_script && a.m_region == b.m_region
               && a.m_variant == b.m_variant;
    }

private:
    void findScript();

    QString m_language;
    QString m_scriptCode;
    QString m_region;
    QString m_variant;
    QLocale::Script m_script = QLocale::AnyScript;
};

} // namespace SorrelKit

#endif
