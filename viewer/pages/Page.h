// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PAGE_H
#define VIEWER_PAGE_H

#include <QJsonObject>
#include <QStringList>
#include <QWidget>

class QLabel;
class QStackedLayout;

namespace Viewer {

/**
 * A page of the viewer: one subject of a package. It gets facts by take(), and shows "Reading..." until the first ones
 * came, or the reason why they cannot be read.
 *
 * Facts are texts of strangers and may have any content: wrong types count as missing, each list has a ceiling, and
 * every text is shown as plain text on its own line. A page belongs to its parent, and to the thread of the user
 * interface.
 */
class Page : public QWidget
{
    Q_OBJECT

public:
    explicit Page(QWidget *parent = nullptr);

    /// The name of the page in the user's language.
    virtual QString title() const = 0;
    /// The topics that the page takes.
    virtual QStringList topics() const = 0;
    /// Shows the facts @p content of @p topic, which is one of topics(). Later facts of a topic replace earlier ones.
    virtual void take(const QString &topic, const QJsonObject &content) = 0;
    /// Forgets all facts, because another file is read. The page shows "Reading..." again.
    virtual void clear() = 0;

    /// The text that the page shows instead of facts; empty when it shows facts.
    QString message() const;
    /// The text above the facts: why they are not complete; empty when they are.
    QString notice() const;

Q_SIGNALS:
    /// The page needs facts that are only read on demand.
    void wants(const QJsonObject &request);

protected:
    /// Sets the widget that shows the facts. It gets the focus of the page.
    void setView(QWidget *view);
    void showView();
    /// Shows @p text in place of the facts.
    void showMessage(const QString &text);
    void showReading();
    /// Shows the text "error" of @p content: above the facts, if @p content has a list or a text besides, else in
    /// place of them. Returns whether it is in place of them. Call it first for every topic.
    bool takeError(const QJsonObject &content);
    /// Shows @p text above the facts; nothing when it is empty.
    void setNotice(const QString &text);

private:
    QLabel *const m_notice;
    QStackedLayout *const m_stack;
    QLabel *const m_message;
    QWidget *m_view = nullptr;
};

} // namespace Viewer

#endif
