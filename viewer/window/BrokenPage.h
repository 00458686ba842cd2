// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_BROKENPAGE_H
#define VIEWER_BROKENPAGE_H

#include <QWidget>

class QFormLayout;
class QLabel;
class QPushButton;

namespace Viewer {

struct PackageFacts;

/// Shows what is broken in a package, or why reading ended, and what is known in spite of it. It offers to read again.
class BrokenPage : public QWidget
{
    Q_OBJECT

public:
    explicit BrokenPage(QWidget *parent = nullptr);

    QString title() const;
    /// @p failure is why reading ended; empty when it did not.
    void showFacts(const PackageFacts &facts, const QString &fileName, const QString &failure);

Q_SIGNALS:
    void readAgain();

private:
    QLabel *const m_heading;
    QLabel *const m_reason;
    QLabel *const m_known;
    QFormLayout *const m_facts;
    QPushButton *const m_again;
};

} // namespace Viewer

#endif
