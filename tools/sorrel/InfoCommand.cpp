// SPDX-License-Identifier: LGPL-2.1-or-later
#include "InfoCommand.h"

#include "Console.h"
#include "PackageReport.h"

QString InfoCommand::details() const
{
    return QStringLiteral("The label in the user's language is printed first.");
}

void InfoCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOptions({m_json, m_all});
}

int InfoCommand::run(const QCommandLineParser &parser, Console &console) const
{
    int status = Success;
    bool isFirst = true;
    for (const QString &argument : parser.positionalArguments()) {
        const FileName file(argument);
        const PackageReport report(file, parser.isSet(m_all));
        if (report.failed()) {
            Console::complain(file.text(), report.errorText());
            status = CannotRead;
        }
        if (parser.isSet(m_json)) {
            console.writeLine(report.toJson());
        } else if (report.isValid()) {
            console.write((isFirst ? QString() : QStringLiteral("\n")) + report.toText(console.style()));
            isFirst = false;
        }
        console.flush();
    }
    return status;
}
