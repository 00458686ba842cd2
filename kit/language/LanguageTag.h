// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LANGUAGETAG_H
#define SORRELKIT_LANGUAGETAG_H

#include <QLocale>
#include <QString>

namespace SorrelKit {

/**
 * A language tag after BCP 47, as far as resources are told apart by it: language, script, region, variant ("sr-Latn",
 * "es-419", "ca-ES-valencia"). The codes that Java and Android once wrote for Hebrew, Indonesian, Yiddish and Filipino
 * (`iw`, `in`, `ji`, `tl`) stand for today's.
 */
class LanguageTag
{
public:
    /// The empty tag, of what is for every language.
    LanguageTag() = default;
    /// What @p text says; parts that have no form of a tag's are left out.
    explicit LanguageTag(const QString &text);
    /// What @p locale stands for, its region included.
    explicit LanguageTag(const QLocale &locale);

    bool isEmpty() const { return m_language.isEmpty(); }
    QString language() const { return m_language; }
    QString region() const { return m_region; }
    /// The script that is written, or that the language is written in where nothing is said; AnyScript when Qt knows none.
    QLocale::Script script() const { return m_script; }
    QString toString() const;

    /**
     * The tag that this one's users are next content with: without the variant, with the region that stands for several
     * ("es-419" for Mexico, "en-001" and "en-150", "pt-PT" for Angola, "zh-Hant-HK" for Macau), then without region.
     * Empty when there is none.
     */
    LanguageTag parent() const;
    /// Whether this is English as it is written in the United States and what belongs to them.
    bool isCloseToUsEnglish() const;

    /// Whether both mean the same, whether or not they write out the script.
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
