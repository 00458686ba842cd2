// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_MANIFESTPAGE_H
#define VIEWER_MANIFESTPAGE_H

#include "pages/Page.h"

#include <QKeySequence>

class QPlainTextEdit;

namespace Viewer {

class SearchBar;
class XmlHighlighter;

/// The manifest as XML (topic "manifest"), to read and to search in: Ctrl+F, F3 and Shift+F3.
class ManifestPage : public Page
{
    Q_OBJECT

public:
    explicit ManifestPage(QWidget *parent = nullptr);

    QString title() const override;
    QStringList topics() const override;
    void take(const QString &topic, const QJsonObject &content) override;
    void clear() override;

    const SearchBar &searchBar() const { return *m_search; }

protected:
    void changeEvent(QEvent *event) override;

private:
    template <typename Action>
    void addShortcut(QKeySequence::StandardKey keys, const Action &action);

    QPlainTextEdit *const m_editor;
    SearchBar *const m_search;
    XmlHighlighter *m_highlighter = nullptr;
};

} // namespace Viewer

#endif
