// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourcesCommand.h"

#include "Console.h"
#include "FileName.h"
#include "ResourceReport.h"
#include "UsedPlatform.h"

#include <SorrelKit/Package.h>

#include <utility>

using SorrelKit::Package;

QString ResourcesCommand::details() const
{
    return QStringLiteral(
        "Each line has the id of a resource, its name, and its default value: the one for devices that no other "
        "value fits better. With REF, all values of one resource are printed, each with its qualifiers.");
}

void ResourcesCommand::addArguments(QCommandLineParser &parser) const
{
    Command::addArguments(parser);
    parser.addPositionalArgument(QStringLiteral("REF"),
                                 QStringLiteral("A resource: string/app_name, @string/12 or 0x7f010003."),
                                 QStringLiteral("[REF]"));
}

void ResourcesCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOption(m_json);
}

int ResourcesCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const QStringList arguments = parser.positionalArguments();
    const FileName file(arguments.constFirst());
    const Package package = UsedPlatform::package(file);
    const ResourceReport report(file, package);
    int status = Success;
    if (package.error()) {
        Console::complain(file.text(), package.error().message());
        status = CannotRead;
    }
    QList<quint32> ids;
    if (arguments.size() > 1) {
        ids.append(report.resources().find(arguments.at(1)));
        if (ids.constFirst() == 0) {
            Console::complain(file.text(), QStringLiteral("no resource %1").arg(arguments.at(1)));
            return CannotRead;
        }
    } else {
        ids = report.resources().ids();
    }
    const bool isList = arguments.size() == 1;
    const int nameWidth = isList && !parser.isSet(m_json) ? report.nameWidth() : 0;
    const int columns = console.columns();
    for (const quint32 id : std::as_const(ids)) {
        if (parser.isSet(m_json))
            console.writeLine(report.toJson(id));
        else
            console.write(isList ? report.toLine(id, nameWidth, columns, console.style())
                                 : report.toText(id, console.style()));
    }
    if (!report.resources().isComplete()) {
        Console::complain(file.text(),
                          QStringLiteral("there are too many resources, or too long ones; some are left out"));
        status = CannotRead;
    }
    return status;
}
