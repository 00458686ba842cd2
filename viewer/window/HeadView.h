// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_HEADVIEW_H
#define VIEWER_HEADVIEW_H

#include <QWidget>

class QAction;
class QLabel;
class QMenu;
class QPushButton;
class QToolButton;

namespace Viewer {

class LineLabel;
struct PackageFacts;

/// The head of the window: the icon, the label, the name, the version, the state of the signature, the size, and the
/// button that installs. A text that is not known yet is empty, and its line keeps its place.
class HeadView : public QWidget
{
    Q_OBJECT

public:
    /// The sides of the icon in device-independent pixels.
    static constexpr int IconSize = 128;

    explicit HeadView(QWidget *parent = nullptr);

    /// Shows @p name in place of the label, and nothing else.
    void showName(const QString &name);
    void showFacts(const PackageFacts &facts, const QString &fileName);
    /// Shows a picture in PNG, or an icon for unknown packages when it is none. @p error is the reason, or empty.
    void showIcon(const QByteArray &png, const QString &error);
    /// The icon becomes a button for @p menu.
    void setIconMenu(QMenu *menu);
    /// Shows a button for @p action.
    void setInstallAction(QAction *action);
    /// Shows why nothing can be installed; empty when the button works.
    void showInstallFault(const QString &fault);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showState();

    QToolButton *const m_icon;
    LineLabel *const m_label;
    LineLabel *const m_name;
    LineLabel *const m_state;
    QLabel *const m_mark;
    LineLabel *const m_size;
    QPushButton *const m_install;
    QLabel *const m_installFault;
    int m_kind = 0; ///< SignatureState::Kind
    QAction *m_action = nullptr;
};

} // namespace Viewer

#endif
