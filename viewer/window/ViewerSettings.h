// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_VIEWERSETTINGS_H
#define VIEWER_VIEWERSETTINGS_H

#include <QByteArray>
#include <QString>

namespace Viewer {

/// The choices of the user that last, by QSettings under the names of the application.
namespace ViewerSettings {

/// The shape of icons in the words of the reader: "none", "circle", "rounded" or "squircle" (the default).
QString shape();
void setShape(const QString &shape);

/// The install command; empty by default.
QString installCommand();
void setInstallCommand(const QString &command);

/// The place and size of the window, as QWidget::saveGeometry() returns it.
QByteArray geometry();
void setGeometry(const QByteArray &geometry);

} // namespace ViewerSettings

} // namespace Viewer

#endif
