// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_ELIDEDLABEL_H
#define VIEWER_ELIDEDLABEL_H

#include <QFrame>

namespace Viewer {

/// One line of plain text, whose middle is left out when the place is too small. A screen reader has the whole text.
class ElidedLabel : public QFrame
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    QString text() const { return m_text; }
    /// Shows @p text, which went through safeText().
    void setText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
};

} // namespace Viewer

#endif
