// SPDX-License-Identifier: LGPL-2.1-or-later
// read-any-package PACKAGE: lists the launchers by ApkFile, as list-launchers does, also of packages that ApkFile refuses
// by itself: those of newer build tools, and sets of packages.
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

    // This is all that a program for ApkFile has to change. The answer is never null; what cannot be read gives an
    // ApkFile that says so.
    const std::unique_ptr<ApkFile> package = normalizer.apkFile();
    const QList<ApkLauncherInfo> launchers = package->getLauncherInfo(false);
    if (package->getError() != 0) {
        // The normalizer names the fault, too, when it is one that it looks for.
        const bool isNamed = normalizer.error() != SorrelKit::PackageNormalizer::NoError;
        err << fileName << ": " << (isNamed ? normalizer.errorString() : package->getErrorString()) << '\n';
        return 1;
    }

    for (const ApkLauncherInfo &launcher : launchers)
        out << launcher.launcherClass() << ": " << launcher.label(QString()) << '\n';
    return 0;
}
