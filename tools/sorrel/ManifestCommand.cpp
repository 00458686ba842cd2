// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestCommand.h"

#include "Console.h"
#include "FileName.h"
#include "PrintableText.h"
#include "UsedPlatform.h"

#include <SorrelKit/Package.h>

using SorrelKit::Package;

namespace {

// XML reads a reference as the same character, and it is harmless on a terminal. The kit has escaped the characters
// below DEL, except the line ends between elements.
QByteArray withReferences(const QByteArray &xml)
{
    constexpr char32_t Delete = 0x7f;
    const QString text = QString::fromUtf8(xml);
    QString safe;
    safe.reserve(text.size());
    forEachCharacter(text, [&](int first, int size, char32_t character) {
        if (character >= Delete && steersText(character))
            safe += QStringLiteral("&#x%1;").arg(uint(character), 0, 16);
        else
            safe.append(text.constData() + first, size);
    });
    return safe.toUtf8();
}

} // namespace

QString ManifestCommand::details() const
{
    return QStringLiteral(
        "Values are those that Android reads. A reference has the name of the resource, such as \"@string/app_name\"; "
        "'sorrel resources FILE @string/app_name' shows its values. A resource of Android itself has its name "
        "(\"@android:string/ok\") when the platform has it. A resource that does not exist has its id: "
        "\"@0x01040000\".");
}

void ManifestCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOption(m_ids);
}

int ManifestCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const FileName file(parser.positionalArguments().constFirst());
    const Package package = UsedPlatform::package(file);
    const QByteArray xml =
        package.manifestXml(parser.isSet(m_ids) ? Package::References::Numbers : Package::References::Names);
    console.write(withReferences(xml));
    if (package.error())
        Console::complain(file.text(), package.error().message());
    else if (xml.isEmpty())
        Console::complain(file.text(), QStringLiteral("the manifest is too long"));
    return xml.isEmpty() || package.error() ? CannotRead : Success;
}
