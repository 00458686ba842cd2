// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_INSTALLQUESTION_H
#define VIEWER_INSTALLQUESTION_H

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QPushButton;

namespace Viewer {

struct PackageFacts;

/// Asks before a package is installed. It names the signer, the dangerous permissions and the command. Cancel is the
/// default button. The button that installs a package that is not verified needs a tick in a box first.
class InstallQuestion : public QDialog
{
    Q_OBJECT

public:
    /// @p command is the program with its arguments.
    InstallQuestion(const PackageFacts &facts, const QStringList &command, QWidget *parent = nullptr);

private:
    QWidget *permissionsOf(const PackageFacts &facts);

    QPushButton *m_install = nullptr;
    QCheckBox *m_confirmation = nullptr; ///< null for a verified package
};

} // namespace Viewer

#endif
