// SPDX-License-Identifier: LGPL-2.1-or-later
// draw-resource PACKAGE RESOURCE PICTURE: draws a drawable of a package into a picture file. RESOURCE is its name or id
// ("@drawable/logo", "0x7f020003").
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Resources.h>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    const QStringList arguments = application.arguments();
    if (argc != 4) {
        err << "usage: draw-resource PACKAGE RESOURCE PICTURE\n";
        return 2;
    }

    // The objects below keep copies of the package, which share its data.
    const SorrelKit::Package package(arguments.at(1));
    if (!package.isValid()) {
        err << arguments.at(1) << ": " << package.error().message() << '\n';
        return 1;
    }
    const quint32 id = SorrelKit::Resources(package).find(arguments.at(2));
    if (id == 0) {
        err << arguments.at(1) << ": no resource " << arguments.at(2) << '\n';
        return 1;
    }

    SorrelKit::DrawableRenderer renderer(package);
    SorrelKit::IconRequest request(256);
    request.setMask(SorrelKit::IconMask::Squircle);
    const QImage picture = renderer.drawable(id, request);
    // A picture may have an error, which then names its missing part.
    if (renderer.error())
        err << arguments.at(1) << ": " << renderer.error().text() << '\n';
    if (picture.isNull())
        return 1;
    if (!picture.save(arguments.at(3))) {
        err << arguments.at(3) << ": could not be written\n";
        return 1;
    }
    out << arguments.at(3) << ", " << picture.width() << 'x' << picture.height() << '\n';
    return 0;
}
