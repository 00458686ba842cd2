// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef INFOCOMMAND_H
#define INFOCOMMAND_H

#include "Command.h"
#include "EntryReport.h"
#include "ReportRows.h"

#include <QCommandLineOption>
#include <QJsonObject>

#include <limits>

class PackageReport;

/// The part of a report that `--signer` adds, in both forms.
struct SignerPart {
    ReportRows (*rows)(const PackageReport &report);
    void (*add)(const PackageReport &report, QJsonObject *json);
};

/// `sorrel info`: prints the facts that a host needs to show or install packages.
class InfoCommand : public Command
{
public:
    InfoCommand() = default;
    /// `sorrel` starts `info --signer` in a program that has @p signer.
    explicit InfoCommand(const SignerPart &signer) : m_signerPart(signer) {}

    QString details() const override;
    int maxArguments() const override { return std::numeric_limits<int>::max(); }
    void addArguments(QCommandLineParser &parser) const override
    {
        parser.addPositionalArgument(QStringLiteral("FILE"), fileText(), QStringLiteral("FILE..."));
    }
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const SignerPart m_signerPart{[](const PackageReport &) { return ReportRows(); },
                                  [](const PackageReport &, QJsonObject *) {}};
    const QCommandLineOption m_json{QStringLiteral("json"),
                                    QStringLiteral("Print one JSON object per file, each on one line.")};
    const QCommandLineOption m_all{QStringLiteral("all"),
                                   QStringLiteral("Show everything, and launchers that home screens hide.")};
    const QCommandLineOption m_entries{
        QStringLiteral("entries"),
        QStringLiteral("Add the entries of this kind (%1), or of \x27all\x27. --all adds them, too.")
            .arg(EntryReport::kinds().join(QStringLiteral(", "))),
        QStringLiteral("KIND")};
    const QCommandLineOption m_signer{QStringLiteral("signer"),
                                      QStringLiteral("Verify the signatures, and add the signer.")};
    const QCommandLineOption m_device{
        QStringLiteral("device"), QStringLiteral("Add what is installed on the device that this JSON file describes."),
        QStringLiteral("device.json")};
};

#endif
