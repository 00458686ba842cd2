// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TRANSLATEDTEXT_H
#define TRANSLATEDTEXT_H

#include <QString>

class QTranslator;

/// The programs make no QCoreApplication, which takes longer than reading a small package, so they ask the translator
/// themselves instead of QCoreApplication::translate().
namespace TranslatedText {

/// Sets the translator, which lives as long as the program; null for English, the default.
void setTranslator(const QTranslator *translator);
/// The text in the translator's language; @p source, which is ASCII, when it has none.
QString of(const char *context, const char *source);

} // namespace TranslatedText

#endif
