// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/ComparisonPage.h"

#include "pages/comparison/DiffCards.h"
#include "pages/parts/CardModel.h"
#include "pages/parts/CardView.h"
#include "pages/parts/ElidedLabel.h"
#include "reading/SafeText.h"

#include <QBoxLayout>
#include <QStyle>

namespace Viewer {

ComparisonPage::ComparisonPage(QWidget *parent)
    : Page(parent), m_model(new CardModel(this)), m_cards(new CardView(m_model)), m_other(new ElidedLabel)
{
    m_cards->setAccessibleName(title());
    auto *const view = new QWidget;
    auto *const rows = new QVBoxLayout(view);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_other);
    rows->addWidget(m_cards, 1);
    view->setFocusProxy(m_cards);
    setView(view);
}

QString ComparisonPage::title() const
{
    return tr("Comparison");
}

QStringList ComparisonPage::topics() const
{
    return {QStringLiteral("otherHead"), QStringLiteral("diff")};
}

QString ComparisonPage::otherPackage() const
{
    return m_other->text();
}

void ComparisonPage::take(const QString &topic, const QJsonObject &content)
{
    if (topic == QLatin1String("otherHead")) {
        takeOtherHead(content);
        return;
    }
    if (takeError(content))
        return;
    const QIcon warning = style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this);
    m_model->setCards(DiffCards(content, warning).cards());
    if (!content.value(QLatin1String("complete")).toBool(true))
        setNotice(tr("Some parts were not compared, because a package exceeds a limit."));
    showView();
}

void ComparisonPage::takeOtherHead(const QJsonObject &content)
{
    const QJsonObject error = content.value(QLatin1String("error")).toObject();
    if (!error.isEmpty()) {
        const QString reason = safePart(error.value(QLatin1String("message")).toString());
        showMessage(tr("The other package cannot be read: %1").arg(reason));
        return;
    }
    if (takeError(content))
        return;
    const QString label = content.value(QLatin1String("label")).toString();
    const QString name = label.isEmpty() ? content.value(QLatin1String("packageName")).toString() : label;
    m_other->setText(tr("Changes from this package to %1, version %2")
                         .arg(safePart(name), safePart(content.value(QLatin1String("versionName")).toString())));
}

void ComparisonPage::clear()
{
    m_model->setCards({});
    m_other->setText({});
    showReading();
}

} // namespace Viewer
