// SPDX-License-Identifier: LGPL-2.1-or-later
// Asks both libraries about a package.
#include <ApkFile.h>
#include <SorrelKit/Package.h>

#include <QTextStream>

int main(int argc, char *argv[])
{
    if (argc != 2)
        return 2;
    const QString path = QString::fromLocal8Bit(argv[1]);

    QTextStream out(stdout);
    ApkFile apk(path);
    out << apk.mainPackage() << '\n';
    const SorrelKit::Package package(path);
    const QList<SorrelKit::Launcher> launchers = package.launchers();
    for (const SorrelKit::Launcher &launcher : launchers) {
        const QImage icon = launcher.icon(48);
        out << launcher.name() << ' ' << icon.width() << 'x' << icon.height() << '\n';
    }
    return apk.getError() == 0 && package.isValid() ? 0 : 1;
}
