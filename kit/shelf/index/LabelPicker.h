// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LABELPICKER_H
#define SORRELKIT_LABELPICKER_H

#include "language/LanguageTag.h"

#include <QHash>
#include <QLocale>
#include <QString>

#include <optional>

namespace SorrelKit {

/**
 * Picks the label for one locale from lists of labels in all languages, as Entry::label() chooses. A home screen needs
 * one label of each of its packages, so labels in other languages are passed over without decoding them, and a choice
 * serves all packages that have the same tags of the language. Use it in one thread.
 */
class LabelPicker
{
public:
    /// The most choices that are kept. Most packages have no more tags of a language than itself and a few regions.
    static constexpr int MaxChoices = 256;

    explicit LabelPicker(const QLocale &locale) : m_wanted(locale) {}

    /// The label in @p column, which ShelfTexts::fromLabels() made; nothing when no label fits.
    std::optional<QString> best(const QString &column);

private:
    /// The number of the best tag among @p tags, each followed by a unit separator; -1 when no tag fits.
    int choose(const QString &tags);

    const LanguageTag m_wanted;
    QHash<QString, int> m_choices; ///< by the tags
};

} // namespace SorrelKit

#endif
