// SPDX-License-Identifier: LGPL-2.1-or-later
#include "QmlFixture.h"

#include "Files.h"

#include <QDir>
#include <QFile>

namespace fixture {

QmlPlace::QmlPlace()
{
    qputenv("SORREL_SHELF_WORKER", SORREL_DRAW);
    QDir(m_directory.path()).mkpath(QStringLiteral("packages"));
}

void QmlPlace::add(const QString &name, const QString &label, int launchers) const
{
    ShelfPackage package;
    package.name = QStringLiteral("org.example.") + QString(name).remove(QLatin1String(".apk"));
    package.labels = {{QString(), label}};
    package.launchers = launchers;
    writeFile(path(name), package.build());
}

void QmlPlace::addBroken(const QString &name) const
{
    writeFile(path(name), "no package");
}

void QmlPlace::remove(const QString &name) const
{
    QFile::remove(path(name));
}

bool QmlPlace::fill(int iconSize) const
{
    SorrelKit::Shelf shelf;
    shelf.setIcons({SorrelKit::ShelfIcon(iconSize)});
    return shelf.open(index()) && shelf.setFolders({packages()}) && refreshed(shelf) && !shelf.error();
}

} // namespace fixture
