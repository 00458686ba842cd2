// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/WindowActions.h"

#include "facts/PackageFacts.h"
#include "window/PagePanel.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace Viewer {

namespace {

/// The text of an action that shows @p name, which a mark of a mnemonic may be a part of.
QString actionText(QString name)
{
    return name.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

WindowActions::WindowActions(QMainWindow *window) : QObject(window), m_window(window)
{
    QMenu *const file = window->menuBar()->addMenu(tr("&File"));
    open = add(file, tr("&Open…"), QKeySequence::Open, QStringLiteral("open"));
    reload = add(file, tr("&Reload"), QKeySequence(Qt::Key_F5), QStringLiteral("reload"));
    compare = add(file, tr("Co&mpare With…"), QKeySequence(QStringLiteral("Ctrl+D")), QStringLiteral("compare"));
    file->addSeparator();
    install = add(file, tr("&Install…"), QKeySequence(QStringLiteral("Ctrl+I")), QStringLiteral("installAction"));
    installCommand = add(file, tr("Install Comma&nd…"), QKeySequence(QStringLiteral("Ctrl+Shift+I")),
                         QStringLiteral("installCommand"));
    file->addSeparator();
    close = add(file, tr("&Close"), QKeySequence(QStringLiteral("Ctrl+W")), QStringLiteral("close"));
    quit = add(file, tr("&Quit"), QKeySequence(QStringLiteral("Ctrl+Q")), QStringLiteral("quit"));
    quit->setMenuRole(QAction::QuitRole);

    QMenu *const view = window->menuBar()->addMenu(tr("&View"));
    m_pages = view->addMenu(tr("&Pages"));
    m_shapes = view->addMenu(tr("&Shape of the Icon"));
    makeShapes();
    m_languages = view->addMenu(tr("&Language of the Package"));
    m_languages->setObjectName(QStringLiteral("languages"));
    signature = add(view, tr("Si&gnature…"), QKeySequence(QStringLiteral("Ctrl+G")), QStringLiteral("signatureAction"));

    QMenu *const help = window->menuBar()->addMenu(tr("&Help"));
    about = add(help, tr("&About"), QKeySequence(Qt::Key_F1), QStringLiteral("about"));
    about->setMenuRole(QAction::AboutRole);
}

QAction *WindowActions::add(QMenu *menu, const QString &text, const QKeySequence &shortcut, const QString &name)
{
    QAction *const action = menu->addAction(text);
    action->setShortcut(shortcut);
    action->setObjectName(name);
    return action;
}

void WindowActions::makeShapes()
{
    m_shapeGroup = new QActionGroup(this);
    const auto addShape = [this](const QString &shape, const QString &text, const QString &shortcut) {
        QAction *const action = add(m_shapes, text, QKeySequence(shortcut), QStringLiteral("shape-") + shape);
        action->setData(shape);
        action->setCheckable(true);
        m_shapeGroup->addAction(action);
    };
    addShape(QStringLiteral("none"), tr("&None"), QStringLiteral("Ctrl+1"));
    addShape(QStringLiteral("circle"), tr("&Circle"), QStringLiteral("Ctrl+2"));
    addShape(QStringLiteral("rounded"), tr("&Rounded Square"), QStringLiteral("Ctrl+3"));
    addShape(QStringLiteral("squircle"), tr("&Squircle"), QStringLiteral("Ctrl+4"));
    connect(m_shapeGroup, &QActionGroup::triggered, this,
            [this](const QAction *action) { Q_EMIT shapeChosen(action->data().toString()); });
}

void WindowActions::setShape(const QString &shape)
{
    const QList<QAction *> actions = m_shapeGroup->actions();
    for (QAction *const action : actions)
        action->setChecked(action->data().toString() == shape);
}

void WindowActions::setLanguages(const PackageFacts &facts, const QString &tag)
{
    m_languages->clear();
    delete m_languageGroup;
    m_languageGroup = new QActionGroup(this);
    const auto addLanguage = [this, &tag](const QString &data, const QString &text) {
        QAction *const action = m_languages->addAction(text);
        action->setData(data);
        action->setCheckable(true);
        action->setChecked(data == tag);
        m_languageGroup->addAction(action);
    };
    addLanguage(QString(), tr("&My Language"));
    for (const PackageFacts::Language &language : facts.languages)
        addLanguage(language.tag, actionText(language.name));
    connect(m_languageGroup, &QActionGroup::triggered, this,
            [this](const QAction *action) { Q_EMIT languageChosen(action->data().toString()); });
}

void WindowActions::setPages(PagePanel *panel)
{
    constexpr int MaxDigit = 9;
    m_pages->clear();
    for (int i = 0; i < panel->count(); ++i) {
        QString text = actionText(panel->title(i));
        if (i < MaxDigit)
            text = QStringLiteral("&%1 %2").arg(i + 1).arg(text);
        QAction *const action = m_pages->addAction(text, panel, [panel, i] { panel->setCurrent(i); });
        if (i < MaxDigit)
            action->setShortcut(QKeySequence(QStringLiteral("Alt+%1").arg(i + 1)));
    }
}

} // namespace Viewer
