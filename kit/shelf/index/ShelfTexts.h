// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELFTEXTS_H
#define SORRELKIT_SHELFTEXTS_H

#include <QChar>
#include <QMap>
#include <QString>
#include <QStringList>

/**
 * Lists and maps of texts in one column of the index. Each text ends with U+001F, the separator of units; a text that
 * has one gets a space for it. Labels are pairs of a language tag and a label.
 */
namespace SorrelKit::ShelfTexts {

constexpr QChar UnitSeparator(0x1f);

QString fromList(const QStringList &texts);
QStringList toList(const QString &column);
QString fromLabels(const QMap<QString, QString> &labels);
QMap<QString, QString> toLabels(const QString &column);
/// @p text for comparing: without case and accents, and compatible characters as one.
QString folded(const QString &text);

} // namespace SorrelKit::ShelfTexts

#endif
