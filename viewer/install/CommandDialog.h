// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_COMMANDDIALOG_H
#define VIEWER_COMMANDDIALOG_H

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace Viewer {

/// Edits the install command. OK is disabled while the command is wrong; an empty command is allowed.
class CommandDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CommandDialog(const QString &command, QWidget *parent = nullptr);

    QString command() const;

private:
    void check();

    QLineEdit *const m_edit;
    QLabel *const m_fault;
    QDialogButtonBox *const m_buttons;
};

} // namespace Viewer

#endif
