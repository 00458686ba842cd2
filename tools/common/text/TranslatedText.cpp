// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TranslatedText.h"

#include <QTranslator>

namespace {

const QTranslator *currentTranslator = nullptr;

} // namespace

void TranslatedText::setTranslator(const QTranslator *translator)
{
    currentTranslator = translator;
}

QString TranslatedText::of(const char *context, const char *source)
{
    const QString text = currentTranslator != nullptr ? currentTranslator->translate(context, source) : QString();
    return text.isEmpty() ? QString::fromLatin1(source) : text;
}
