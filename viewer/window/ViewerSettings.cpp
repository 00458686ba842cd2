// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/ViewerSettings.h"

#include <QSettings>
#include <QStringList>

namespace Viewer {

namespace {

const char *const shapeKey = "icon/shape";
const char *const commandKey = "install/command";
const char *const geometryKey = "window/geometry";

} // namespace

QString ViewerSettings::shape()
{
    const QString shape = QSettings().value(QLatin1String(shapeKey)).toString();
    const QStringList shapes{QStringLiteral("none"), QStringLiteral("circle"), QStringLiteral("rounded")};
    return shapes.contains(shape) ? shape : QStringLiteral("squircle");
}

void ViewerSettings::setShape(const QString &shape)
{
    QSettings().setValue(QLatin1String(shapeKey), shape);
}

QString ViewerSettings::installCommand()
{
    return QSettings().value(QLatin1String(commandKey)).toString();
}

void ViewerSettings::setInstallCommand(const QString &command)
{
    QSettings().setValue(QLatin1String(commandKey), command);
}

QByteArray ViewerSettings::geometry()
{
    return QSettings().value(QLatin1String(geometryKey)).toByteArray();
}

void ViewerSettings::setGeometry(const QByteArray &geometry)
{
    QSettings().setValue(QLatin1String(geometryKey), geometry);
}

} // namespace Viewer
