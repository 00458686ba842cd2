// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef POSIXLOCALE_H
#define POSIXLOCALE_H

#include <QMap>
#include <QString>
#include <QStringList>

/**
 * Converts a BCP 47 language tag to the POSIX locales of GNU systems (`lang_COUNTRY@MODIFIER`).
 *
 * - Language and country stay: "pt-BR" is pt_BR, "fil" is fil, "he" is he.
 * - The default script of the language is dropped: "sr-Cyrl" is sr. Another script becomes its modifier in the GNU C
 *   library, which is latin, cyrillic or devanagari: "sr-Latn" is sr@latin, "sr-Latn-RS" is sr_RS@latin.
 * - For some languages, such as Chinese, countries replace the script: "zh-Hans" and "zh" are zh_CN and zh_SG,
 *   "zh-Hant" is zh_HK, zh_MO and zh_TW; "pa-Arab" is pa_PK, "az-Arab" is az_IR. The result is never the language
 *   alone, because readers of the other script would see it.
 * - A variant becomes the modifier: "ca-ES-valencia" is ca_ES@valencia.
 * - A region of several countries becomes its countries in the Common Locale Data Repository: "es-419" is es_AR to
 *   es_VE, with es_US; "en-150" and "en-001" are the countries that follow them. "ar-001" is ar.
 *
 * These have no locale: other scripts ("uz-Arab"), a script that is not that of the country ("zh-Hans-HK"), a script
 * with a variant, other regions of several countries, and invalid tags.
 */
QStringList posixLocales(const QString &tag);

/// Labels by language tag as labels by locale.
struct LocalizedTexts {
    QMap<QString, QString> texts; ///< by locale, without the default (the empty key)
    QStringList lostTags;         ///< the tags without a locale
};

/// The texts of @p byTag by locale. When several tags give one locale, the tag with the fewest locales counts.
LocalizedTexts localizedTexts(const QMap<QString, QString> &byTag);

#endif
