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
 * It shows the default labels. The script of the page finds the labels of languages in the attribute `data-labels` of a
 * launcher's label, or of the title without a launcher: each line has a language tag, "=" and the label. The script
 * sorts by `data-sdk` and `data-rank` of the card. `data-rank` is 0 without findings, and grows with their severity and
 * number.
 */
class CatalogCard
{
public:
    /// The length of a label on the page. Longer ones are cut; no home screen shows them either.
    static constexpr int MaxLabelLength = 300;

    /// The card of @p package, the argument of CatalogPage::add(). @p number is unique on the page.
    CatalogCard(const QJsonObject &package, int number);

    Markup markup() const;

private:
    QString text(const char *key) const;
    QString title() const;
    Markup icon() const;
    Markup head() const;
    Markup problem() const;
    Markup facts() const;
    Markup signer() const;
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
