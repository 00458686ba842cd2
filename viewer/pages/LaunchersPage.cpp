// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/LaunchersPage.h"

#include "pages/parts/CardModel.h"
#include "pages/parts/CardView.h"
#include "pages/parts/FactList.h"
#include "pages/parts/PngPicture.h"
#include "reading/SafeText.h"

#include <QPixmap>

#include <iterator>

namespace Viewer {

namespace {

struct EntryKind {
    const char *name;
    const char *title;
};

constexpr EntryKind entryKinds[] = {
    {"launcher", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Home screen")},
    {"television", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Television")},
    {"car", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Car")},
    {"car-service", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Services for cars")},
    {"watch-face", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Watch faces")},
    {"home-screen", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Replacements of the home screen")},
    {"tile", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Tiles of the quick settings")},
    {"wallpaper", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Live wallpapers")},
    {"input-method", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Keyboards")},
    {"screen-saver", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Screen savers")},
    {"widget", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Widgets")},
    {"share-target", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Share targets")},
    {"direct-share", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Direct share targets")},
    {"instant", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Instant applications")},
    {"shortcut", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Shortcuts")},
    {"", QT_TRANSLATE_NOOP("Viewer::LaunchersPage", "Other entries")},
};

// The index in entryKinds.
int numberOfKind(const QString &name)
{
    int number = 0;
    while (number + 1 < int(std::size(entryKinds)) && name != QLatin1String(entryKinds[number].name))
        ++number;
    return number;
}

} // namespace

LaunchersPage::LaunchersPage(QWidget *parent)
    : Page(parent), m_model(new CardModel(this)), m_cards(new CardView(m_model, this))
{
    const int side = 3 * fontMetrics().height();
    m_cards->setIconSize(QSize(side, side));
    m_cards->setAccessibleName(title());
    setView(m_cards);
}

QString LaunchersPage::title() const
{
    return tr("Launchers");
}

QStringList LaunchersPage::topics() const
{
    return {QStringLiteral("launchers")};
}

void LaunchersPage::take(const QString &, const QJsonObject &content)
{
    if (takeError(content))
        return;
    constexpr int MaxIconSide = 256;
    constexpr int MaxIcons = 256;
    int icons = 0;
    QList<Card> byKind[std::size(entryKinds)];
    const FactList facts(content, CardModel::MaxCards);
    for (const QJsonObject &item : facts.items()) {
        const QString name = item.value(QLatin1String("className")).toString();
        const QString label = item.value(QLatin1String("label")).toString();
        if (name.isEmpty() && label.isEmpty())
            continue;
        Card card;
        card.title = safeText(label.isEmpty() ? name : label);
        card.name = label.isEmpty() ? QString() : safeText(name);
        card.original = name;
        if (!item.value(QLatin1String("isShown")).toBool(true))
            card.badge = tr("Not shown");
        const QJsonValue png = item.value(QLatin1String("png"));
        if (!png.toString().isEmpty() && ++icons <= MaxIcons)
            card.icon = QIcon(QPixmap::fromImage(pngPicture(png, MaxIconSide)));
        byKind[numberOfKind(item.value(QLatin1String("kind")).toString())].append(card);
    }
    QList<Card> cards;
    for (int kind = 0; kind < int(std::size(entryKinds)); ++kind) {
        if (!byKind[kind].isEmpty())
            cards.append(Card::heading(tr(entryKinds[kind].title)));
        cards += byKind[kind];
    }
    m_model->setCards(cards, facts.leftOut());
    if (cards.isEmpty())
        showMessage(tr("This package has no launchers."));
    else
        showView();
}

void LaunchersPage::clear()
{
    m_model->setCards({});
    showReading();
}

} // namespace Viewer
