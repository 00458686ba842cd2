// SPDX-License-Identifier: LGPL-2.1-or-later
// home-screen PACKAGE [LANGUAGE]: lists what a home screen shows of a package, or set of packages, to a user of LANGUAGE
// ("de-AT"; that of the session by default): label, component to start, and where the icon comes from.
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/Launcher.h>
#include <SorrelKit/Package.h>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 2 && argc != 3) {
        err << "usage: home-screen PACKAGE [LANGUAGE]\n";
        return 2;
    }
    const QString fileName = application.arguments().at(1);
    const QLocale locale = argc == 3 ? QLocale(application.arguments().at(2)) : QLocale();

    // A package is valid when its manifest could be read. It may have an error all the same: with a damaged resource
    // table, launchers have no icons, and labels only as far as they stand in the manifest.
    const SorrelKit::Package package(fileName);
    if (package.error() != SorrelKit::Package::NoError)
        err << fileName << ": " << package.errorString() << '\n';
    if (!package.isValid())
        return 1;

    for (const SorrelKit::Launcher &launcher : package.launchers()) {
        // The list has all entries, those included that the package has switched off.
        if (!launcher.isShown())
            continue;
        out << launcher.label(locale) << '\n';

        // The component is the name to start by. For an alias, the class that then runs has another one.
        out << "  starts " << launcher.packageName() << '/' << launcher.name();
        if (launcher.isAlias())
            out << ", which runs " << launcher.className();
        out << '\n';

        for (const SorrelKit::IconFile &file : launcher.iconFiles()) {
            out << "  icon   " << file.path << " (" << file.kind;
            if (!file.size.isEmpty())
                out << ", " << file.size.width() << 'x' << file.size.height();
            out << ")\n";
        }
    }
    return 0;
}
