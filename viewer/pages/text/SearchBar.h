// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SEARCHBAR_H
#define VIEWER_SEARCHBAR_H

#include "pages/text/TextMatches.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace Viewer {

/// A field that looks for a text in an editor, with buttons for the next and the previous match, and their number in
/// words.
class SearchBar : public QWidget
{
    Q_OBJECT

public:
    /// Searches in @p editor, which lives longer.
    explicit SearchBar(QPlainTextEdit *editor, QWidget *parent = nullptr);

    /// The place of the current match and the number of matches, or "Not found"; empty when nothing is looked for.
    QString result() const;

    /// Goes into the field, with the text that is selected in the editor.
    void start();
    void showNext();
    void showPrevious();
    /// Searches again, because the editor has another text.
    void refresh();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void search();
    void showMatch(int match);
    void addButton(const QString &name, const QString &toolTip, Qt::ArrowType arrow, void (SearchBar::*action)());

    QPlainTextEdit *const m_editor;
    QLineEdit *const m_field;
    QLabel *const m_result;
    TextMatches m_matches;
    int m_begin = 0; ///< where the search began: the cursor when the field got the focus
};

} // namespace Viewer

#endif
