// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef POSIXLOCALE_H
#define POSIXLOCALE_H

#include <QMap>
#include <QString>
#include <QStringList>

/**
 * The locales of POSIX, as GNU systems name them (`lang_COUNTRY@MODIFIER`), that a language tag after BCP 47 stands
 * for.
 *
 * - Language and country stay: "pt-BR" is pt_BR, "fil" fil, "he" he.
 * - A script that the language is written in anyway goes: "sr-Cyrl" is sr. Another one becomes the modifier that the
 *   GNU C library has for it, latin, cyrillic or devanagari: "sr-Latn" is sr@latin, "sr-Latn-RS" sr_RS@latin.
 * - Where countries stand for the script, as they do for Chinese, so they do here: "zh-Hans", and "zh" by itself, are
 *   zh_CN and zh_SG, "zh-Hant" is zh_HK, zh_MO and zh_TW; "pa-Arab" is pa_PK, "az-Arab" az_IR. Never the language
 *   alone, which would show the one script to the readers of the other.
 * - A variant becomes the modifier: "ca-ES-valencia" is ca_ES@valencia.
 * - A region of several countries becomes its countries, as the Common Locale Data Repository has them: "es-419" is
 *   es_AR to es_VE, with es_US; "en-150" and "en-001" are those that follow them. "ar-001", of the whole world, is ar.
 *
 * No form have other scripts ("uz-Arab"), a script that is not that of the country ("zh-Hans-HK"), a script with a
 * variant, other regions of several countries, and what is no such tag.
 */
QStringList posixLocales(const QString &tag);

/// Labels by language tag as labels by locale.
struct LocalizedTexts {
    QMap<QString, QString> texts; ///< by locale; the empty key, of the default, is left out
    QStringList lostTags;         ///< those that have no form
};

/// The texts of @p byTag for each locale that they stand for. A locale that a tag stands for alone is that tag's; one
/// of several countries has the text of the tag with the fewest.
LocalizedTexts localizedTexts(const QMap<QString, QString> &byTag);

#endif
