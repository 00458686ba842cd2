// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CATALOGCOMMAND_H
#define CATALOGCOMMAND_H

#include "Command.h"
#include "IconOptions.h"
#include "IndexOption.h"
#include "PackageScan.h"
#include "ScanOptions.h"

#include <QCommandLineOption>

#include <limits>
#include <memory>

/// `sorrel catalog`: writes a web page of packages.
class CatalogCommand : public Command
{
public:
    /// Makes the scan of a command with the option `--index`, whose argument is @p index.
    using MakeIndexed = std::unique_ptr<PackageScan> (*)(const QString &index, const ScanOptions &options,
                                                         const ReportContent &content);

    /// @p makeIndexed is null in a program without indexes.
    explicit CatalogCommand(MakeIndexed makeIndexed = nullptr) : m_makeIndexed(makeIndexed) {}

    QString details() const override;
    int maxArguments() const override { return std::numeric_limits<int>::max(); }
    void addArguments(QCommandLineParser &parser) const override;
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    /// Width and height of icons in pixels: twice their size on the page, for screens of high density.
    static constexpr int IconSize = 128;

    const MakeIndexed m_makeIndexed;
    const ScanOptions m_scan;
    const IndexOption m_index{IndexOption::fillText()};
    const QCommandLineOption m_output{{QStringLiteral("o"), QStringLiteral("output")},
                                      QStringLiteral("Write the page to this file."),
                                      QStringLiteral("FILE.html")};
    const QCommandLineOption m_title{QStringLiteral("title"), QStringLiteral("Title of the page."),
                                     QStringLiteral("TITLE"), QStringLiteral("Android packages")};
    const QCommandLineOption m_verify{QStringLiteral("verify"),
                                      QStringLiteral("Verify the signatures, and add the signers.")};
    const IconOptions m_icon{IconSize};
};

#endif
