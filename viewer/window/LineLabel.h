// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_LINELABEL_H
#define VIEWER_LINELABEL_H

#include <QLabel>

namespace Viewer {

/// Plain text on one line. When it is longer than the label, its middle is left out, and the tooltip has all of it.
/// Screen readers get all of it in any case.
class LineLabel : public QLabel
{
    Q_OBJECT

public:
    explicit LineLabel(QWidget *parent = nullptr);

    /// Sets the text, which is on one line and safe to show, and further lines for the tooltip and for screen readers.
    void setLine(const QString &text, const QStringList &details = {});

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace Viewer

#endif
