// SPDX-License-Identifier: LGPL-2.1-or-later
// read-any-package PACKAGE: lists the launchers with ApkFile, as list-launchers does. It also reads packages that
// ApkFile alone refuses: those of newer build tools, and sets of packages.
#include <ApkFile.h>
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/PackageNormalizer.h>

#include <memory>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 2) {
        err << "usage: read-any-package PACKAGE\n";
        return 2;
    }
    const QString fileName = application.arguments().at(1);

    const SorrelKit::PackageNormalizer normalizer(fileName);
    if (normalizer.isNeeded())
        out << "rewritten in memory\n";

    // A program for ApkFile needs only this change. The result is never null: a package that cannot be read gives an
    // ApkFile with an error.
    const std::unique_ptr<ApkFile> package = normalizer.apkFile();
    const QList<ApkLauncherInfo> launchers = package->getLauncherInfo(false);
    if (package->getError() != 0) {
        // The normalizer also names some faults.
        const SorrelKit::Error error = normalizer.error();
        err << fileName << ": " << (error ? error.message() : package->getErrorString()) << '\n';
        return 1;
    }

    for (const ApkLauncherInfo &launcher : launchers)
        out << launcher.launcherClass() << ": " << launcher.label(QString()) << '\n';
    return 0;
}
