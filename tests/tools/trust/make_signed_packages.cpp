// SPDX-License-Identifier: LGPL-2.1-or-later
//
// make_signed_packages DIRECTORY: writes packages with each kind of signature, and changed ones, into a directory.
#include "Files.h"
#include "SignedPackages.h"

#include <QDir>

using namespace fixture;

int main(int argc, char *argv[])
{
    QDir directory(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    if (argc != 2 || !directory.mkpath(QStringLiteral(".")))
        return 1;
    const BlockSigner jane = signerNamed("Jane");
    const BlockSigner other = signerNamed("Other", 2);
    const auto write = [&](const char *name, const QByteArray &bytes) {
        writeFile(directory.filePath(QLatin1String(name)), bytes);
    };
    write("v1.apk", signedByV1({}, {{QStringLiteral("META-INF/a"), "a"}}));
    write("jane.apk", signedByV2({jane}));
    write("v2.apk", signedByV2({jane, other}));
    write("v3.apk", signedByRotated(other, jane, 9));
    write("set.apks", signedSet(jane, jane));
    write("changed.apk", changed(signedByV2({jane})));
    write("unsigned.apk", unsignedPackage());
    return 0;
}
