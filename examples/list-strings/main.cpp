// SPDX-License-Identifier: LGPL-2.1-or-later
// list-strings PACKAGE: lists the texts of a package, or set of packages, by name, with all of their translations.
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

    // A package with a damaged table is valid, as its manifest can be read, and yet has an error.
    const SorrelKit::Package package(fileName);
    if (package.error() != SorrelKit::Package::NoError) {
        err << fileName << ": " << package.errorString() << '\n';
        return 1;
    }

    const SorrelKit::Resources resources(package);
    for (const quint32 id : resources.ids()) {
        const QString name = resources.name(id);
        if (!name.startsWith(QLatin1String("string/")))
            continue;
        out << name << '\n';
        // References are not followed; they are spelled out, "@string/other".
        for (const SorrelKit::Resources::Value &value : resources.values(id)) {
            out << "  " << (value.configuration.isEmpty() ? QStringLiteral("default") : value.configuration) << ": "
                << value.text << '\n';
        }
    }
    // Nearly every package is far below the limits; of one that is not, some texts may be missing.
    if (!resources.isComplete())
        err << fileName << ": too large to list completely\n";
    return 0;
}
