// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/FindingsPage.h"

#include "pages/parts/CardModel.h"
#include "pages/parts/CardView.h"
#include "pages/parts/FactList.h"
#include "reading/SafeText.h"

#include <QStyle>

#include <iterator>

namespace Viewer {

namespace {

struct FindingSeverity {
    const char *name;
    const char *title;
    const char *badge;
    QStyle::StandardPixmap icon;
};

constexpr FindingSeverity findingSeverities[] = {
    {"error", QT_TRANSLATE_NOOP("Viewer::FindingsPage", "Errors"), QT_TRANSLATE_NOOP("Viewer::FindingsPage", "Error"),
     QStyle::SP_MessageBoxCritical},
    {"warning", QT_TRANSLATE_NOOP("Viewer::FindingsPage", "Warnings"),
     QT_TRANSLATE_NOOP("Viewer::FindingsPage", "Warning"), QStyle::SP_MessageBoxWarning},
    {"note", QT_TRANSLATE_NOOP("Viewer::FindingsPage", "Notes"), QT_TRANSLATE_NOOP("Viewer::FindingsPage", "Note"),
     QStyle::SP_MessageBoxInformation},
};

// The index in findingSeverities.
int numberOfSeverity(const QString &name)
{
    int number = 0;
    while (number + 1 < int(std::size(findingSeverities)) && name != QLatin1String(findingSeverities[number].name))
        ++number;
    return number;
}

} // namespace

FindingsPage::FindingsPage(QWidget *parent)
    : Page(parent), m_model(new CardModel(this)), m_cards(new CardView(m_model, this))
{
    m_cards->setAccessibleName(title());
    setView(m_cards);
}

QString FindingsPage::title() const
{
    return tr("Findings");
}

QStringList FindingsPage::topics() const
{
    return {QStringLiteral("lint")};
}

void FindingsPage::take(const QString &, const QJsonObject &content)
{
    if (takeError(content))
        return;
    QList<Card> bySeverity[std::size(findingSeverities)];
    const FactList facts(content, CardModel::MaxCards);
    for (const QJsonObject &item : facts.items()) {
        const int number = numberOfSeverity(item.value(QLatin1String("severity")).toString());
        const QString subject = item.value(QLatin1String("subject")).toString();
        const QString check = item.value(QLatin1String("check")).toString();
        const QString message = item.value(QLatin1String("message")).toString();
        if (message.isEmpty() && check.isEmpty())
            continue;
        Card card;
        card.badge = tr(findingSeverities[number].badge);
        card.icon = style()->standardIcon(findingSeverities[number].icon, nullptr, this);
        card.isAlarming = number == 0;
        card.title = safeText(subject.isEmpty() ? check : subject);
        card.description = safeText(message);
        card.name = subject.isEmpty() ? QString() : safeText(check);
        card.original = subject.isEmpty() ? check : subject;
        bySeverity[number].append(card);
    }
    QList<Card> cards;
    for (int number = 0; number < int(std::size(findingSeverities)); ++number) {
        if (!bySeverity[number].isEmpty())
            cards.append(Card::heading(tr(findingSeverities[number].title)));
        cards += bySeverity[number];
    }
    m_model->setCards(cards, facts.leftOut());
    if (cards.isEmpty())
        showMessage(tr("No findings"));
    else
        showView();
}

void FindingsPage::clear()
{
    m_model->setCards({});
    showReading();
}

} // namespace Viewer
