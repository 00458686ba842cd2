// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTTEXT_H
#define REPORTTEXT_H

#include "TranslatedText.h"

#include <QLocale>

/// The words of reports for people: `ReportText::tr("size")`. tools/sorrel/translations has them in other languages. They
/// are English before useLanguage(), and in a language without a translation.
class ReportText
{
public:
    static QString tr(const char *words) { return TranslatedText::of("Report", words); }
    /// Loads the words for @p locale, until the program ends. English takes no time. Only the first other language counts.
    static void useLanguage(const QLocale &locale);
    /// @p words, those of SorrelKit::Feature, in the language.
    static QString ofFeature(const QString &words);
};

#endif
