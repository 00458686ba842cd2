// SPDX-License-Identifier: LGPL-2.1-or-later
// list-components PACKAGE: says what a package is, and lists the components that its manifest declares.
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

    // Nothing is opened here: the first query reads the package, and later ones are answered from memory. No query throws;
    // what failed last is told by a code, which stays 0 when nothing did.
    ApkFile package(fileName);
    const QDomElement root = package.getManifest().documentElement();
    if (package.getError() != 0) {
        err << fileName << ": " << package.getErrorString() << '\n';
        return 1;
    }

    out << package.mainPackage() << " runs from API level " << package.minSdkVersion() << '\n';
    // Android's attributes are in a namespace; the prefix is up to the package.
    const QString android = QStringLiteral("http://schemas.android.com/apk/res/android");
    QDomElement component = root.firstChildElement(QStringLiteral("application")).firstChildElement();
    for (; !component.isNull(); component = component.nextSiblingElement())
        out << "  " << component.tagName() << ' ' << component.attributeNS(android, QStringLiteral("name")) << '\n';
    return 0;
}
