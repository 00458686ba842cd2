// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestCommand.h"

#include "Console.h"
#include "FileName.h"
#include "ManifestWriter.h"

#include <ApkFile.h>
#include <SorrelKit/PackageNormalizer.h>

#include <QDomDocument>

#include <memory>

QString ManifestCommand::details() const
{
    return QStringLiteral("A reference is printed with the number of the resource in its type, such as \"@string/12\". "
                          "'sorrel resources FILE @string/12' shows its values.");
}

int ManifestCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const FileName file(parser.positionalArguments().constFirst());
    const std::unique_ptr<ApkFile> apk = SorrelKit::PackageNormalizer::fromNativePath(file.path()).apkFile();
    const QDomDocument manifest = apk->getManifest();
    if (apk->getError() != 0) {
        Console::complain(file.text(), apk->getErrorString());
        return CannotRead;
    }
    const QDomElement root = manifest.documentElement();
    if (root.isNull()) {
        Console::complain(file.text(), QStringLiteral("the manifest has no element"));
        return CannotRead;
    }
    console.write(ManifestWriter::toXml(root));
    return console.finish() ? Success : CannotRead;
}
