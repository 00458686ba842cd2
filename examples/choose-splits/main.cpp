// SPDX-License-Identifier: LGPL-2.1-or-later
// choose-splits SET DEVICE.json: lists the packages of a set that an installer installs on the device that a JSON file
// describes, each with the reason. The exit status is 3 when the application does not fit the device.
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/PackageSet.h>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 3) {
        err << "usage: choose-splits SET DEVICE.json\n";
        return 2;
    }
    const QString setName = application.arguments().at(1);
    const QString deviceName = application.arguments().at(2);

    const auto device = SorrelKit::Device::fromFile(deviceName);
    if (device.fault() != SorrelKit::Device::Fault::None) {
        err << deviceName << ": " << device.faultText() << '\n';
        return 1;
    }

    const SorrelKit::PackageSet set(setName);
    const SorrelKit::SplitChoice choice = set.splitsFor(device);
    if (!choice.fits()) {
        err << setName << ": " << choice.message() << '\n';
        return choice.code() == SorrelKit::SplitChoice::Code::CannotRead ? 1 : 3;
    }
    for (const SorrelKit::SetPackage &package : choice.packages())
        out << (package.path().isEmpty() ? setName : package.path()) << ": " << package.reasonText() << '\n';

    // The application with these packages alone has the languages and pictures that the device has.
    const SorrelKit::Package installed = set.packageFor(device);
    out << installed.label() << ": the number of splits is " << installed.splits().size() << '\n';
    return 0;
}
