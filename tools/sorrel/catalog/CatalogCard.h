// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CATALOGCARD_H
#define CATALOGCARD_H

#include "Markup.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

/**
 * The card of one package on a CatalogPage: an item of a list.
 *
 * It shows labels as they are for every language. The script of the page finds the others in the attribute
 * `data-labels` of a launcher's label, or of the title where there is no launcher: a line each of a language tag, "="
 * and the label. What it sorts by is in `data-sdk` and `data-rank` of the card, of which the latter is 0 when there are
 * no findings, and grows with their severity and number.
 */
class CatalogCard
{
public:
    /// Characters of a label that are kept; the rest is left out, which no home screen has room for either.
    static constexpr int MaxLabelLength = 300;

    /// The card of @p package, as CatalogPage::add() takes it. @p number is that of no other card on the page.
    CatalogCard(const QJsonObject &package, int number);

    Markup markup() const;

private:
    QString text(const char *key) const;
    QString title() const;
    Markup icon() const;
    Markup head() const;
    Markup problem() const;
    Markup facts() const;
    Markup file() const;
    Markup launchers() const;
    Markup findings() const;
    bool isUnreadable() const;
    int count(const char *severity) const;
    qint64 rank() const;

    QJsonObject m_package;
    QJsonArray m_launchers;
    QJsonArray m_findings;
    QString m_labelId;
};

#endif
