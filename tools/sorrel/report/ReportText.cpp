// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportText.h"

#include <QTranslator>

// Q_INIT_RESOURCE needs a function outside of namespaces and classes.
static void initTranslations()
{
    Q_INIT_RESOURCE(sorrel_translations);
}

void ReportText::useLanguage(const QLocale &locale)
{
    if (locale.language() == QLocale::English || locale.language() == QLocale::C)
        return;
    static QTranslator translator;
    if (!translator.isEmpty())
        return;
    initTranslations();
    // One script of Chinese is for several countries.
    const bool isSimplified = locale.script() == QLocale::SimplifiedHanScript;
    const QLocale wanted = isSimplified ? QLocale(QLocale::Chinese, QLocale::China) : locale;
    if (translator.load(wanted, QStringLiteral("sorrel"), QStringLiteral("_"), QStringLiteral(":/translations")))
        TranslatedText::setTranslator(&translator);
}

QString ReportText::ofFeature(const QString &words)
{
    // A package may name features that Android does not have, in any characters.
    const QByteArray source = words.toUtf8();
    const QString text = TranslatedText::of("Feature", source.constData());
    return text == QString::fromLatin1(source) ? words : text;
}
