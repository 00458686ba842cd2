// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/HeadView.h"

#include "facts/PackageFacts.h"
#include "facts/StatusMark.h"
#include "pages/parts/PlainToolTip.h"
#include "reading/SafeText.h"
#include "window/LineLabel.h"

#include <QAction>
#include <QBuffer>
#include <QEvent>
#include <QGridLayout>
#include <QImageReader>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace Viewer {

namespace {

/// The sides of the largest icon that the reader draws.
constexpr int MaxIconPixels = 1024;

QPixmap decodedIcon(const QByteArray &png, qreal devicePixelRatio)
{
    if (png.isEmpty())
        return {};
    QBuffer buffer;
    buffer.setData(png);
    QImageReader reader(&buffer, "png");
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > MaxIconPixels || size.height() > MaxIconPixels)
        return {};
    QPixmap picture = QPixmap::fromImage(reader.read());
    if (picture.isNull())
        return {};
    const int side = qRound(HeadView::IconSize * devicePixelRatio);
    picture = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(devicePixelRatio);
    return picture;
}

} // namespace

HeadView::HeadView(QWidget *parent)
    : QWidget(parent),
      m_icon(new QToolButton),
      m_label(new LineLabel),
      m_name(new LineLabel),
      m_state(new LineLabel),
      m_mark(new QLabel),
      m_size(new LineLabel),
      m_install(new QPushButton),
      m_installFault(new QLabel)
{
    m_icon->setObjectName(QStringLiteral("icon"));
    m_icon->setAutoRaise(true);
    m_icon->setIconSize({IconSize, IconSize});
    m_icon->setPopupMode(QToolButton::InstantPopup);
    m_icon->setFocusPolicy(Qt::TabFocus);
    m_icon->setMinimumSize(IconSize, IconSize);
    m_label->setObjectName(QStringLiteral("label"));
    m_name->setObjectName(QStringLiteral("name"));
    m_state->setObjectName(QStringLiteral("signature"));
    m_size->setObjectName(QStringLiteral("size"));
    m_installFault->setObjectName(QStringLiteral("installFault"));
    QFont large = m_label->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    m_label->setFont(large);
    QFont bold = m_state->font();
    bold.setBold(true);
    m_state->setFont(bold);
    m_installFault->setTextFormat(Qt::PlainText);
    m_installFault->setWordWrap(true);
    m_installFault->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    m_install->setObjectName(QStringLiteral("install"));
    m_install->setVisible(false);

    auto *const grid = new QGridLayout(this);
    grid->addWidget(m_icon, 0, 0, 6, 1);
    grid->addWidget(m_label, 1, 1, 1, 2);
    grid->addWidget(m_name, 2, 1, 1, 2);
    grid->addWidget(m_mark, 3, 1);
    grid->addWidget(m_state, 3, 2);
    grid->addWidget(m_size, 4, 1, 1, 2);
    grid->addWidget(m_install, 1, 3);
    grid->addWidget(m_installFault, 2, 3, 4, 1);
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(0, 1);
    grid->setRowStretch(5, 1);
}

void HeadView::showName(const QString &name)
{
    m_label->setLine(name);
    for (LineLabel *const line : {m_name, m_state, m_size})
        line->setLine({});
    m_mark->clear();
    m_icon->setIcon({});
    m_icon->setToolTip({});
    m_kind = SignatureState::Unknown;
}

void HeadView::showFacts(const PackageFacts &facts, const QString &fileName)
{
    const QString label = facts.label.isEmpty() ? facts.packageName : facts.label;
    m_label->setLine(label.isEmpty() ? fileName : label);
    if (facts.isHeadKnown) {
        QStringList parts{facts.packageName};
        if (!facts.version.isEmpty())
            parts.append(tr("version %1").arg(facts.version));
        parts.removeAll(QString());
        m_name->setLine(parts.join(QStringLiteral(" · ")));
        const QString size = facts.fileSize < 0 ? QString() : locale().formattedDataSize(facts.fileSize);
        const QString kind = facts.isSet ? tr("Set of packages") : tr("Package");
        m_size->setLine(size.isEmpty() ? kind : kind + QStringLiteral(" · ") + size, {fileName});
    }
    m_kind = facts.signature.kind();
    m_state->setLine(facts.signature.text(), facts.signature.details());
    showState();
}

void HeadView::showState()
{
    const auto kind = SignatureState::Kind(m_kind);
    const int size = style()->pixelMetric(QStyle::PM_ButtonIconSize);
    m_mark->setPixmap(StatusMark::pixmap(kind, size, devicePixelRatioF(), palette()));
    QPalette colors;
    colors.setColor(QPalette::WindowText, StatusMark::color(kind, palette()));
    m_state->setPalette(colors);
}

void HeadView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_state->text().isEmpty())
        showState();
}

void HeadView::showIcon(const QByteArray &png, const QString &error)
{
    QPixmap picture = decodedIcon(png, devicePixelRatioF());
    if (picture.isNull())
        picture = style()->standardIcon(QStyle::SP_FileIcon).pixmap(IconSize, IconSize);
    m_icon->setIcon(picture);
    m_icon->setAccessibleName(png.isEmpty() ? tr("The package has no icon") : tr("Icon of the package"));
    m_icon->setAccessibleDescription(tr("Opens a menu with shapes of the icon."));
    m_icon->setToolTip(error.isEmpty() ? tr("Shape of the icon") : plainToolTip({safeText(error)}));
}

void HeadView::setIconMenu(QMenu *menu)
{
    m_icon->setMenu(menu);
}

void HeadView::setInstallAction(QAction *action)
{
    m_action = action;
    m_install->setText(action->text());
    connect(m_install, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, this, [this] { m_install->setEnabled(m_action->isEnabled()); });
    m_install->setEnabled(action->isEnabled());
    m_install->setVisible(true);
}

void HeadView::showInstallFault(const QString &fault)
{
    m_installFault->setText(fault);
    m_install->setAccessibleDescription(fault);
}

} // namespace Viewer
