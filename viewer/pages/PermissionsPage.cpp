// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/PermissionsPage.h"

#include "pages/parts/CardModel.h"
#include "pages/parts/CardView.h"
#include "pages/parts/FactList.h"
#include "reading/SafeText.h"

#include <QStyle>

namespace Viewer {

PermissionsPage::PermissionsPage(QWidget *parent)
    : Page(parent), m_model(new CardModel(this)), m_cards(new CardView(m_model, this))
{
    m_cards->setAccessibleName(title());
    setView(m_cards);
}

QString PermissionsPage::title() const
{
    return tr("Permissions");
}

QStringList PermissionsPage::topics() const
{
    return {QStringLiteral("permissions")};
}

void PermissionsPage::take(const QString &, const QJsonObject &content)
{
    if (takeError(content))
        return;
    QList<Card> dangerous;
    QList<Card> others;
    const FactList facts(content, CardModel::MaxCards);
    for (const QJsonObject &item : facts.items()) {
        const QString name = item.value(QLatin1String("name")).toString();
        const QString label = item.value(QLatin1String("label")).toString();
        if (name.isEmpty() && label.isEmpty())
            continue;
        Card card;
        card.title = safeText(label.isEmpty() ? name : label);
        card.description = safeText(item.value(QLatin1String("description")).toString());
        card.name = label.isEmpty() ? QString() : safeText(name);
        card.original = name;
        if (item.value(QLatin1String("isDangerous")).toBool()) {
            card.badge = tr("Dangerous");
            card.icon = style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this);
            card.isAlarming = true;
            dangerous.append(card);
        } else {
            others.append(card);
        }
    }
    QList<Card> cards;
    if (!dangerous.isEmpty())
        cards.append(Card::heading(tr("May ask for")));
    cards += dangerous;
    if (!others.isEmpty())
        cards.append(Card::heading(tr("Gets without asking")));
    cards += others;
    m_model->setCards(cards, facts.leftOut());
    if (cards.isEmpty())
        showMessage(tr("This package asks for no permissions."));
    else
        showView();
}

void PermissionsPage::clear()
{
    m_model->setCards({});
    showReading();
}

} // namespace Viewer
