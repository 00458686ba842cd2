// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PAGEPANEL_H
#define VIEWER_PAGEPANEL_H

#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QSplitter>

class QListWidget;
class QStackedWidget;

namespace Viewer {

class BrokenPage;
class Page;

/// The pages of a package, with a list of their titles beside them. A page gets its facts when it is shown for the
/// first time, so pages that nobody looks at cost nothing.
class PagePanel : public QSplitter
{
    Q_OBJECT

public:
    explicit PagePanel(QWidget *parent = nullptr);

    /// Adds the pages of packages and the page for broken ones, which is the first and hidden.
    void makePages();
    /// Adds @p page at the end, and owns it.
    void addPage(Page *page);
    void removePage(Page *page);

    int count() const;
    QString title(int index) const;
    int current() const;
    void setCurrent(int index);
    void setCurrent(Page *page);
    /// Moves the keyboard focus to the list of pages.
    void focusList();

    /// Passes the facts to the pages that take them.
    void take(const QString &topic, const QJsonObject &content);
    /// Forgets all facts, and hides the page for broken packages.
    void clear();

    BrokenPage *brokenPage() const { return m_broken; }
    /// Shows the page for broken packages, and makes it the current one.
    void showBrokenPage();
    bool isBrokenPageShown() const { return m_broken != nullptr && firstRow() == 0; }

Q_SIGNALS:
    /// A page needs facts that are only read on demand.
    void wants(const QJsonObject &request);
    /// A page was added or removed, or the page for broken packages was shown or hidden.
    void pagesChanged();
    void currentChanged(int index);

private:
    void showPage(int index);
    /// The rows of the list without that for broken packages when it is hidden.
    int firstRow() const;

    struct Waiting {
        bool wasShown = false;
        QMap<QString, QJsonObject> facts;
    };

    QListWidget *const m_list;
    QStackedWidget *const m_stack;
    BrokenPage *m_broken = nullptr;
    QHash<Page *, Waiting> m_waiting;
};

} // namespace Viewer

#endif
