// SPDX-License-Identifier: LGPL-2.1-or-later
// check-device PACKAGE API-LEVEL PROCESSOR...: shows whether a package or set of packages runs on a device with this
// API level and these processors ("arm64-v8a"), as an installer checks it. The exit status is 3 when it does not.
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/Package.h>

#include <algorithm>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    const QStringList arguments = application.arguments();
    bool isNumber = false;
    const int level = arguments.value(2).toInt(&isNumber);
    if (argc < 4 || !isNumber) {
        err << "usage: check-device PACKAGE API-LEVEL PROCESSOR...\n";
        return 2;
    }
    const QStringList processors = arguments.mid(3);

    // Do not install a package with an error, even when many facts could be read.
    const SorrelKit::Package package(arguments.at(1));
    if (package.error()) {
        err << arguments.at(1) << ": " << package.error().message() << '\n';
        return 1;
    }

    out << package.label() << ' ' << package.versionName() << " (" << package.packageName() << ")\n";
    for (const QString &permission : package.permissionNames())
        out << "  asks for " << permission << '\n';
    for (const SorrelKit::Feature &feature : package.features())
        out << "  " << (feature.isRequired() ? "needs " : "can use ") << feature.name() << '\n';

    bool runs = true;
    if (package.minSdkVersion() > level) {
        out << "  does not run below API level " << package.minSdkVersion() << '\n';
        runs = false;
    }
    // A package without native code runs on every processor.
    const QStringList native = package.nativeAbis();
    const auto isNative = [&](const QString &processor) { return native.contains(processor); };
    if (!native.isEmpty() && std::none_of(processors.begin(), processors.end(), isNative)) {
        out << "  has native code for " << native.join(QStringLiteral(", ")) << " alone\n";
        runs = false;
    }
    out << (runs ? "It runs here.\n" : "It does not run here.\n");
    return runs ? 0 : 3;
}
