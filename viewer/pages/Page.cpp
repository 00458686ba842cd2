// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/Page.h"

#include "pages/parts/ShownText.h"

#include <QLabel>
#include <QStackedLayout>
#include <QStyle>

namespace Viewer {

Page::Page(QWidget *parent) : QWidget(parent), m_stack(new QStackedLayout(this)), m_message(new QLabel(this))
{
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setMargin(style()->pixelMetric(QStyle::PM_LayoutLeftMargin));
    // A screen reader and the keyboard reach the text, and a long word does not widen the window.
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    m_stack->addWidget(m_message);
    showReading();
}

QString Page::message() const
{
    return m_stack->currentWidget() == m_message ? m_message->text() : QString();
}

void Page::setView(QWidget *view)
{
    m_view = view;
    m_stack->addWidget(view);
}

void Page::showView()
{
    m_stack->setCurrentWidget(m_view);
    setFocusProxy(m_view);
}

void Page::showMessage(const QString &text)
{
    m_message->setText(text);
    m_message->setAccessibleName(text);
    m_stack->setCurrentWidget(m_message);
    setFocusProxy(m_message);
}

void Page::showReading()
{
    showMessage(tr("Reading..."));
}

bool Page::takeError(const QJsonObject &content)
{
    const QString error = content.value(QLatin1String("error")).toString();
    if (error.isEmpty())
        return false;
    showMessage(shownText(error));
    return true;
}

} // namespace Viewer
