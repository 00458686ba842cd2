// SPDX-License-Identifier: LGPL-2.1-or-later
// application-label PACKAGE: looks up the label of the whole application in the resource table, in every language.
#include <ApkFile.h>
#include <ApkResources.h>
#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 2) {
        err << "usage: application-label PACKAGE\n";
        return 2;
    }
    const QString fileName = application.arguments().at(1);

    ApkFile package(fileName);
    const QDomElement root = package.getManifest().documentElement();
    if (package.getError() != 0) {
        err << fileName << ": " << package.getErrorString() << '\n';
        return 1;
    }

    // Android's attributes are in a namespace; the package chooses the prefix.
    const QString android = QStringLiteral("http://schemas.android.com/apk/res/android");
    const QString label =
        root.firstChildElement(QStringLiteral("application")).attributeNS(android, QStringLiteral("label"));
    if (!label.startsWith(QLatin1Char('@'))) {
        // A literal text, which is the same in every language, or nothing.
        out << label << '\n';
        return 0;
    }

    // A reference, such as "@string/12". Its values may be references again, which are followed up to five times.
    const ApkResources resources = package.resources();
    const QMap<QString, QString> texts = resources.lookupByLocale(label, 5);
    out << label << '\n';
    for (auto text = texts.begin(); text != texts.end(); ++text)
        out << "  " << (text.key().isEmpty() ? QStringLiteral("default") : text.key()) << ": " << text.value() << '\n';
    return 0;
}
