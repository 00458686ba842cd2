// SPDX-License-Identifier: LGPL-2.1-or-later
#include "InfoCommand.h"

#include "Console.h"
#include "InstallReport.h"
#include "PackageReport.h"

#include <SorrelKit/Device.h>

#include <optional>

QString InfoCommand::details() const
{
    return QStringLiteral("The report is in the user's language where the package, or the platform, has texts in it.");
}

void InfoCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOptions({m_json, m_all, m_entries, m_signer, m_device});
}

int InfoCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const bool isAll = parser.isSet(m_all);
    const QString kind = parser.isSet(m_entries) ? parser.value(m_entries) : QStringLiteral("all");
    if (!EntryReport::isKind(kind))
        return Console::wrongUsage(QStringLiteral("'%1' is no kind of entry.").arg(kind),
                                   QStringLiteral("sorrel info"));
    const bool hasEntries = isAll || parser.isSet(m_entries);
    int status = Success;
    bool isFirst = true;
    const bool hasDevice = parser.isSet(m_device);
    const auto device = hasDevice ? SorrelKit::Device::fromFile(parser.value(m_device)) : SorrelKit::Device();
    if (hasDevice && device.fault() != SorrelKit::Device::Fault::None) {
        Console::complain(parser.value(m_device), device.faultText());
        return CannotRead;
    }
    for (const QString &argument : parser.positionalArguments()) {
        const FileName file(argument);
        const PackageReport report(file, isAll);
        if (report.failed()) {
            Console::complain(file.text(), report.errorText());
            status = CannotRead;
        }
        const bool hasSigner = parser.isSet(m_signer);
        std::optional<InstallReport> install;
        if (hasDevice && report.isValid()) {
            install.emplace(report.package(), device);
            if (!install->fits()) {
                Console::complain(file.text(), install->errorText());
                status = DoesNotFit;
            }
        }
        if (parser.isSet(m_json)) {
            QJsonObject json = parser.isSet(m_all) ? report.toDetailedJson() : report.toJson();
            if (hasEntries)
                json.insert(QStringLiteral("entries"), EntryReport(report.package(), kind, isAll).toJson());
            if (hasSigner)
                m_signerPart.add(report, &json);
            if (install)
                json.insert(QStringLiteral("installs"), install->toJson());
            console.writeLine(json);
        } else if (report.isValid()) {
            ReportRows more;
            if (hasEntries)
                more.add(EntryReport(report.package(), kind, isAll).rows());
            if (hasSigner)
                more.add(m_signerPart.rows(report));
            if (install)
                more.add(install->rows());
            console.write((isFirst ? QString() : QStringLiteral("\n")) + report.toText(console.style(), more));
            isFirst = false;
        }
        console.flush();
    }
    return status;
}
