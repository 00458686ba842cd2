// SPDX-License-Identifier: LGPL-2.1-or-later
// accept-update INSTALLED UPDATE: whether Android would install the package UPDATE in place of INSTALLED.
#include <QCoreApplication>
#include <QTextStream>
#include <SorrelKit/Signatures.h>

using SorrelKit::Package;
using SorrelKit::Signatures;

/// Returns why @p update must not replace @p installed; an empty text when it may.
static QString refusal(const Package &installed, const Package &update)
{
    const Signatures signatures(update);
    if (!signatures.isVerified())
        return "it is not verified: " + signatures.errors().constFirst().message();
    if (update.packageName() != installed.packageName())
        return "it is another application";
    if (update.versionCode() < installed.versionCode())
        return "it is older";
    return Signatures::sameSigner(Signatures(installed), signatures) ? QString() : "someone else signed it";
}

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 3) {
        err << "usage: accept-update INSTALLED UPDATE\n";
        return 2;
    }
    const QString reason = refusal(Package(application.arguments().at(1)), Package(application.arguments().at(2)));
    out << (reason.isEmpty() ? "install it" : "refuse it: " + reason) << '\n';
    return reason.isEmpty() ? 0 : 3;
}
