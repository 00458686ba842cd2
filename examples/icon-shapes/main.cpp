// SPDX-License-Identifier: LGPL-2.1-or-later
// icon-shapes PACKAGE: draws the icon of a package or set of packages in every outline of the kit, as PNG files in the
// current directory.
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/IconMask.h>
#include <SorrelKit/Package.h>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 2) {
        err << "usage: icon-shapes PACKAGE\n";
        return 2;
    }
    const QString fileName = application.arguments().at(1);

    const SorrelKit::Package package(fileName);
    if (!package.isValid()) {
        err << fileName << ": " << package.errorString() << '\n';
        return 1;
    }

    // Only adaptive icons are cut. Others keep their own outline.
    const struct {
        SorrelKit::IconMask mask;
        QString fileName;
    } shapes[] = {
        {SorrelKit::IconMask::None, QStringLiteral("none.png")},
        {SorrelKit::IconMask::Circle, QStringLiteral("circle.png")},
        {SorrelKit::IconMask::RoundedSquare, QStringLiteral("rounded.png")},
        {SorrelKit::IconMask::Squircle, QStringLiteral("squircle.png")},
    };
    for (const auto &shape : shapes) {
        QString error;
        const QImage icon = package.icon(96, shape.mask, &error);
        if (icon.isNull()) {
            err << fileName << ": " << (error.isEmpty() ? QStringLiteral("no icon") : error) << '\n';
            return 1;
        }
        // There is a picture, but it differs from the description in the package.
        if (!error.isEmpty())
            err << fileName << ": " << error << '\n';
        if (!icon.save(shape.fileName)) {
            err << shape.fileName << ": could not be written\n";
            return 1;
        }
        out << shape.fileName << '\n';
    }
    return 0;
}
