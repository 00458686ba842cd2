// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/ManifestPage.h"

#include "pages/text/SearchBar.h"
#include "pages/text/ShownXml.h"
#include "pages/text/XmlHighlighter.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFontDatabase>
#include <QLocale>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTextDocument>

#include <limits>

namespace Viewer {

ManifestPage::ManifestPage(QWidget *parent)
    : Page(parent), m_editor(new QPlainTextEdit), m_search(new SearchBar(m_editor))
{
    m_editor->setReadOnly(true);
    m_editor->setUndoRedoEnabled(false);
    m_editor->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_editor->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_editor->setAccessibleName(title());
    // The keyboard moves through the text, too.
    m_editor->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // XML is written from left to right, with Arabic values, too.
    m_editor->setLayoutDirection(Qt::LeftToRight);
    QTextOption option = m_editor->document()->defaultTextOption();
    option.setTextDirection(Qt::LeftToRight);
    option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
    m_editor->document()->setDefaultTextOption(option);
    m_highlighter = new XmlHighlighter(m_editor->document(), palette());

    auto *const view = new QWidget;
    auto *const rows = new QVBoxLayout(view);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_search);
    rows->addWidget(m_editor, 1);
    view->setFocusProxy(m_editor);
    setView(view);
    addShortcut(QKeySequence::Find, [this] { m_search->start(); });
    addShortcut(QKeySequence::FindNext, [this] { m_search->showNext(); });
    addShortcut(QKeySequence::FindPrevious, [this] { m_search->showPrevious(); });
}

template <typename Action>
void ManifestPage::addShortcut(QKeySequence::StandardKey keys, const Action &action)
{
    const QList<QKeySequence> all = QKeySequence::keyBindings(keys);
    for (const QKeySequence &one : all) {
        auto *const shortcut = new QShortcut(one, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    }
}

QString ManifestPage::title() const
{
    return tr("Manifest");
}

QStringList ManifestPage::topics() const
{
    return {QStringLiteral("manifest")};
}

void ManifestPage::take(const QString &, const QJsonObject &content)
{
    if (takeError(content))
        return;
    const ShownXml xml(content.value(QLatin1String("text")).toString());
    m_editor->setPlainText(xml.text());
    m_search->refresh();
    const double more = content.value(QLatin1String("more")).toDouble();
    const qint64 leftOut = xml.leftOut() + qint64(qBound(0.0, more, double(std::numeric_limits<int>::max())));
    if (leftOut > 0 && notice().isEmpty())
        setNotice(tr("Characters that are not shown: %1").arg(QLocale().toString(leftOut)));
    if (xml.text().isEmpty())
        showMessage(tr("The manifest is empty."));
    else
        showView();
}

void ManifestPage::clear()
{
    m_editor->clear();
    m_search->refresh();
    showReading();
}

void ManifestPage::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        m_highlighter->setPalette(palette());
    Page::changeEvent(event);
}

} // namespace Viewer
