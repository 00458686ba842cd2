// SPDX-License-Identifier: LGPL-2.1-or-later
// list-strings PACKAGE: lists the texts of a package or set of packages by name, with all translations.
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/Resources.h>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 2) {
        err << "usage: list-strings PACKAGE\n";
        return 2;
    }
    const QString fileName = application.arguments().at(1);

    // A package with a damaged table has an error, but it is valid, because its manifest can be read.
    const SorrelKit::Package package(fileName);
    if (package.error()) {
        err << fileName << ": " << package.error().message() << '\n';
        return 1;
    }

    const SorrelKit::Resources resources(package);
    for (const quint32 id : resources.ids()) {
        const QString name = resources.name(id);
        if (!name.startsWith(QLatin1String("string/")))
            continue;
        out << name << '\n';
        // References are not followed, but printed: "@string/other".
        for (const SorrelKit::ResourceValue &value : resources.values(id)) {
            out << "  " << (value.configuration().isEmpty() ? QStringLiteral("default") : value.configuration()) << ": "
                << value.text() << '\n';
        }
    }
    // Above the limits, some texts may be missing. Nearly every package is far below them.
    if (!resources.isComplete())
        err << fileName << ": too large to list completely\n";
    return 0;
}
