// SPDX-License-Identifier: LGPL-2.1-or-later
#include "InfoCommand.h"

#include "Console.h"
#include "PackageReport.h"

QString InfoCommand::details() const
{
    return QStringLiteral("The report is in the user's language where the package, or the platform, has texts in it.");
}

void InfoCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOptions({m_json, m_all, m_signer});
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
        const bool hasSigner = parser.isSet(m_signer);
        if (parser.isSet(m_json)) {
            QJsonObject json = parser.isSet(m_all) ? report.toDetailedJson() : report.toJson();
            if (hasSigner)
                m_signerPart.add(report, &json);
            console.writeLine(json);
        } else if (report.isValid()) {
            const ReportRows signer = hasSigner ? m_signerPart.rows(report) : ReportRows();
            console.write((isFirst ? QString() : QStringLiteral("\n")) + report.toText(console.style(), signer));
            isFirst = false;
        }
        console.flush();
    }
    return status;
}
