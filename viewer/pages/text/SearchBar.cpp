// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/text/SearchBar.h"

#include "pages/parts/PlainToolTip.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QStyle>
#include <QTextCursor>
#include <QToolButton>

namespace Viewer {

SearchBar::SearchBar(QPlainTextEdit *editor, QWidget *parent)
    : QWidget(parent), m_editor(editor), m_field(new QLineEdit), m_result(new QLabel)
{
    m_field->setPlaceholderText(tr("Search"));
    m_field->setAccessibleName(tr("Text to search for"));
    m_field->setMaxLength(TextMatches::MaxWanted);
    m_field->setClearButtonEnabled(true);
    m_field->installEventFilter(this);
    m_result->setTextFormat(Qt::PlainText);
    auto *const layout = new QHBoxLayout(this);
    const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin) / 2;
    layout->setContentsMargins(margin, margin, margin, 0);
    layout->addWidget(m_field, 1);
    addButton(tr("Previous match"), tr("Previous match (Shift+F3)"), Qt::UpArrow, &SearchBar::showPrevious);
    addButton(tr("Next match"), tr("Next match (F3)"), Qt::DownArrow, &SearchBar::showNext);
    layout->addWidget(m_result);
    setFocusProxy(m_field);
    connect(m_field, &QLineEdit::textEdited, this, &SearchBar::search);
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text.isEmpty())
            search();
    });
}

void SearchBar::addButton(const QString &name, const QString &toolTip, Qt::ArrowType arrow, void (SearchBar::*action)())
{
    auto *const button = new QToolButton;
    button->setArrowType(arrow);
    button->setAccessibleName(name);
    button->setToolTip(plainToolTip({toolTip}));
    connect(button, &QToolButton::clicked, this, action);
    layout()->addWidget(button);
}

QString SearchBar::result() const
{
    return m_result->text();
}

void SearchBar::start()
{
    const QString selected = m_editor->textCursor().selectedText();
    m_begin = m_editor->textCursor().selectionStart();
    if (!selected.isEmpty() && selected.size() <= TextMatches::MaxWanted
        && !selected.contains(QChar::ParagraphSeparator))
        m_field->setText(selected);
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
    search();
}

void SearchBar::refresh()
{
    m_begin = 0;
    search();
}

void SearchBar::search()
{
    m_matches = TextMatches(m_editor->toPlainText(), m_field->text());
    if (m_field->text().isEmpty()) {
        m_result->clear();
        return;
    }
    showMatch(m_matches.nextFrom(m_begin));
}

void SearchBar::showNext()
{
    showMatch(m_matches.nextFrom(m_editor->textCursor().selectionEnd()));
}

void SearchBar::showPrevious()
{
    showMatch(m_matches.lastBefore(m_editor->textCursor().selectionStart()));
}

void SearchBar::showMatch(int match)
{
    if (m_field->text().isEmpty())
        return;
    const QLocale locale;
    const QString count = locale.toString(m_matches.count());
    if (match < 0) {
        m_result->setText(tr("Not found"));
    } else {
        QTextCursor cursor = m_editor->textCursor();
        cursor.setPosition(m_matches.place(match));
        cursor.setPosition(m_matches.place(match) + m_matches.length(), QTextCursor::KeepAnchor);
        m_editor->setTextCursor(cursor);
        const QString number = locale.toString(match + 1);
        m_result->setText(m_matches.isCut() ? tr("%1 of more than %2").arg(number, count)
                                            : tr("%1 of %2").arg(number, count));
    }
    m_result->setAccessibleName(m_result->text());
}

bool SearchBar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *const key = static_cast<QKeyEvent *>(event);
    const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (isEnter && (key->modifiers() & Qt::ShiftModifier) != 0)
        showPrevious();
    else if (isEnter)
        showNext();
    else if (key->key() == Qt::Key_Escape)
        m_editor->setFocus(Qt::OtherFocusReason);
    else
        return QWidget::eventFilter(watched, event);
    return true;
}

} // namespace Viewer
