// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/ShelfTexts.h"

#include <algorithm>

namespace SorrelKit::ShelfTexts {

namespace {

void appendUnit(QString *column, QString text)
{
    *column += text.replace(UnitSeparator, QLatin1Char(' '));
    *column += UnitSeparator;
}

} // namespace

QString fromList(const QStringList &texts)
{
    QString column;
    for (const QString &text : texts)
        appendUnit(&column, text);
    return column;
}

QStringList toList(const QString &column)
{
    QStringList texts = column.split(UnitSeparator);
    texts.removeLast();
    return texts;
}

QString fromLabels(const QMap<QString, QString> &labels)
{
    QString column;
    for (auto label = labels.cbegin(); label != labels.cend(); ++label) {
        appendUnit(&column, label.key());
        appendUnit(&column, label.value());
    }
    return column;
}

QMap<QString, QString> toLabels(const QString &column)
{
    QMap<QString, QString> labels;
    const QStringList units = toList(column);
    for (int i = 0; i + 1 < int(units.size()); i += 2)
        labels.insert(units.at(i), units.at(i + 1));
    return labels;
}

QString folded(const QString &text)
{
    const auto isAscii = [](QChar unit) { return unit.unicode() < 0x80; };
    if (std::all_of(text.cbegin(), text.cend(), isAscii))
        return text.toLower();
    QString folded;
    const QString parts = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    for (const QChar part : parts) {
        if (part.category() != QChar::Mark_NonSpacing)
            folded += part;
    }
    return folded;
}

} // namespace SorrelKit::ShelfTexts
