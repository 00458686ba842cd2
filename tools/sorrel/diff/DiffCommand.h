// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIFFCOMMAND_H
#define DIFFCOMMAND_H

#include "Command.h"
#include "DiffJson.h"

#include <QCommandLineOption>

class FileName;

/// `sorrel diff`: shows what differs between two packages.
class DiffCommand : public Command
{
public:
    /// @p signerJson makes the part of the JSON object about signatures.
    explicit DiffCommand(const DiffJson::SignerJson &signerJson) : m_signerJson(signerJson) {}

    QString details() const override;
    int minArguments() const override { return 2; }
    int maxArguments() const override { return 2; }
    void addArguments(QCommandLineParser &parser) const override;
    void addOptions(QCommandLineParser &parser) const override;
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    /// Writes the page. Prints an error and returns false when that fails.
    static bool writePage(const FileName &file, const DiffReport &report);

    const DiffJson::SignerJson m_signerJson;
    const QCommandLineOption m_json{QStringLiteral("json"), QStringLiteral("Print a JSON object, on one line.")};
    const QCommandLineOption m_all{QStringLiteral("all"), QStringLiteral("Do not cut long lists.")};
    const QCommandLineOption m_html{QStringLiteral("html"), QStringLiteral("Write a web page to FILE.html instead."),
                                    QStringLiteral("FILE.html")};
};

#endif
