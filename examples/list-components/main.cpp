// SPDX-License-Identifier: LGPL-2.1-or-later
// list-components PACKAGE: shows the name of a package and lists the components that its manifest declares.
#include <ApkFile.h>
#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 2) {
        err << "usage: list-components PACKAGE\n";
        return 2;
    }
    const QString fileName = application.arguments().at(1);

    // The constructor opens nothing. The first query reads the package, and later ones use its data in memory. No query
    // throws. A code shows the last failure, and is 0 without one.
    ApkFile package(fileName);
    const QDomElement root = package.getManifest().documentElement();
    if (package.getError() != 0) {
        err << fileName << ": " << package.getErrorString() << '\n';
        return 1;
    }

    out << package.mainPackage() << " runs from API level " << package.minSdkVersion() << '\n';
    // Android's attributes are in a namespace; the package chooses the prefix.
    const QString android = QStringLiteral("http://schemas.android.com/apk/res/android");
    QDomElement component = root.firstChildElement(QStringLiteral("application")).firstChildElement();
    for (; !component.isNull(); component = component.nextSiblingElement())
        out << "  " << component.tagName() << ' ' << component.attributeNS(android, QStringLiteral("name")) << '\n';
    return 0;
}
