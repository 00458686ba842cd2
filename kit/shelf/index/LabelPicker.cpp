// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/LabelPicker.h"

#include "language/LocaleChooser.h"
#include "shelf/index/ShelfTexts.h"

#include <QStringList>
#include <QStringView>
#include <QVarLengthArray>

#include <vector>

namespace SorrelKit {

std::optional<QString> LabelPicker::best(const QString &column)
{
    constexpr int usualCount = 8;
    QVarLengthArray<QStringView, usualCount> texts;
    QString tags;
    const QStringView all(column);
    for (qsizetype from = 0;;) {
        const auto tagEnd = all.indexOf(ShelfTexts::UnitSeparator, from);
        const auto textEnd = tagEnd < 0 ? tagEnd : all.indexOf(ShelfTexts::UnitSeparator, tagEnd + 1);
        if (textEnd < 0)
            break;
        const ShortText language = LanguageTag::languageOf(all.mid(from, tagEnd - from));
        // The chooser takes a label of the wanted language, else the one for every language.
        if (language.isEmpty() || language == m_wanted.language()) {
            texts.append(all.mid(tagEnd + 1, textEnd - tagEnd - 1));
            tags += all.mid(from, tagEnd + 1 - from);
        }
        from = textEnd + 1;
    }
    const int best = texts.isEmpty() ? -1 : choose(tags);
    if (best < 0)
        return std::nullopt;
    return texts.at(best).toString();
}

int LabelPicker::choose(const QString &tags)
{
    const auto known = m_choices.constFind(tags);
    if (known != m_choices.constEnd())
        return *known;
    LocaleChooser chooser;
    std::vector<int> numbers;
    const QStringList all = ShelfTexts::toList(tags);
    for (int i = 0; i < int(all.size()); ++i) {
        if (chooser.add(LanguageTag(all.at(i))))
            numbers.push_back(i);
    }
    const int best = chooser.best(m_wanted);
    const int choice = best < 0 ? -1 : numbers[std::size_t(best)];
    if (m_choices.size() < MaxChoices)
        m_choices.insert(tags, choice);
    return choice;
}

} // namespace SorrelKit
