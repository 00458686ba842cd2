// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/Page.h"

#include "reading/SafeText.h"

#include <QJsonArray>
#include <QLabel>
#include <QStackedLayout>
#include <QStyle>
#include <QVBoxLayout>

namespace Viewer {

namespace {

// A screen reader and the keyboard reach the text, and a long word does not widen the window.
QLabel *plainLabel(QWidget *parent)
{
    auto *const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

Page::Page(QWidget *parent)
    : QWidget(parent), m_notice(plainLabel(this)), m_stack(new QStackedLayout), m_message(plainLabel(this))
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_notice);
    layout->addLayout(m_stack, 1);
    m_notice->setMargin(style()->pixelMetric(QStyle::PM_LayoutLeftMargin) / 2);
    m_notice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    m_notice->hide();
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setMargin(style()->pixelMetric(QStyle::PM_LayoutLeftMargin));
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    m_stack->addWidget(m_message);
    showReading();
}

QString Page::message() const
{
    return m_stack->currentWidget() == m_message ? m_message->text() : QString();
}

QString Page::notice() const
{
    return m_notice->text();
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
    setNotice({});
    showMessage(tr("Reading..."));
}

bool Page::takeError(const QJsonObject &content)
{
    const QString error = safeText(content.value(QLatin1String("error")).toString());
    const bool hasFacts = !content.value(QLatin1String("items")).toArray().isEmpty()
                          || !content.value(QLatin1String("text")).toString().isEmpty();
    setNotice(hasFacts ? error : QString());
    if (error.isEmpty() || hasFacts)
        return false;
    showMessage(error);
    return true;
}

void Page::setNotice(const QString &text)
{
    m_notice->setText(text);
    m_notice->setAccessibleName(text);
    m_notice->setVisible(!text.isEmpty());
}

} // namespace Viewer
