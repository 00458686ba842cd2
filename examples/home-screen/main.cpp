// SPDX-License-Identifier: LGPL-2.1-or-later
// home-screen PACKAGE [LANGUAGE]: lists the launchers of a package or set of packages for a user of LANGUAGE ("de-AT";
// by default the language of the session): the label, the component to start, and the files of the icon.
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/Entry.h>
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

    // A package is valid when its manifest could be read. It may still have an error: with a damaged resource table,
    // launchers have no icons, and only the labels that are in the manifest.
    const SorrelKit::Package package(fileName);
    if (package.error())
        err << fileName << ": " << package.error().message() << '\n';
    if (!package.isValid())
        return 1;

    for (const SorrelKit::Entry &launcher : package.launchers()) {
        // The list has all entries, including disabled ones.
        if (!launcher.isShown())
            continue;
        out << launcher.label(locale) << '\n';

        // A host starts the component. For an alias, the class that runs has another name.
        out << "  starts " << launcher.packageName() << '/' << launcher.name();
        if (launcher.isAlias())
            out << ", which runs " << launcher.className();
        out << '\n';

        for (const SorrelKit::IconFile &file : launcher.iconFiles()) {
            out << "  icon   " << file.path() << " (" << file.kind();
            if (!file.size().isEmpty())
                out << ", " << file.size().width() << 'x' << file.size().height();
            out << ")\n";
        }
    }
    return 0;
}
