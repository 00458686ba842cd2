// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_WINDOWACTIONS_H
#define VIEWER_WINDOWACTIONS_H

#include <QKeySequence>
#include <QObject>
#include <QString>

class QAction;
class QActionGroup;
class QMainWindow;
class QMenu;

namespace Viewer {

class PagePanel;
struct PackageFacts;

/// The actions of the window and its menu bar. Each action has a mnemonic and, except for languages, a shortcut.
class WindowActions : public QObject
{
    Q_OBJECT

public:
    explicit WindowActions(QMainWindow *window);

    QAction *open = nullptr;
    QAction *reload = nullptr;
    QAction *compare = nullptr;
    QAction *install = nullptr;
    QAction *installCommand = nullptr;
    QAction *signature = nullptr;
    QAction *close = nullptr;
    QAction *quit = nullptr;
    QAction *about = nullptr;

    QMenu *shapes() const { return m_shapes; }
    /// Checks the action of the shape @p shape.
    void setShape(const QString &shape);
    /// Fills the menu of languages with those of the application; @p tag is the chosen one, or empty for the user's.
    void setLanguages(const PackageFacts &facts, const QString &tag);
    /// Fills the menu of pages.
    void setPages(PagePanel *panel);

Q_SIGNALS:
    void shapeChosen(const QString &shape);
    /// @p tag is empty for the user's language.
    void languageChosen(const QString &tag);

private:
    QAction *add(QMenu *menu, const QString &text, const QKeySequence &shortcut, const QString &name);
    void makeShapes();

    QMainWindow *const m_window;
    QMenu *m_pages = nullptr;
    QMenu *m_shapes = nullptr;
    QMenu *m_languages = nullptr;
    QActionGroup *m_shapeGroup = nullptr;
    QActionGroup *m_languageGroup = nullptr;
};

} // namespace Viewer

#endif
