// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/CopyAction.h"

#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeySequence>
#include <QWidget>

namespace Viewer {

void addCopyAction(QWidget *widget, const std::function<QString()> &text)
{
    auto *const action = new QAction(QCoreApplication::translate("Viewer::CopyAction", "Copy"), widget);
    action->setShortcuts(QKeySequence::Copy);
    action->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(action, &QAction::triggered, widget, [text] {
        const QString copied = text();
        if (!copied.isEmpty())
            QGuiApplication::clipboard()->setText(copied);
    });
    widget->addAction(action);
    widget->setContextMenuPolicy(Qt::ActionsContextMenu);
}

} // namespace Viewer
