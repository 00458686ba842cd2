// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SCANCOMMAND_H
#define SCANCOMMAND_H

#include "Command.h"
#include "IconOptions.h"
#include "IndexOption.h"
#include "PackageScan.h"
#include "ScanOptions.h"

#include <QCommandLineOption>

#include <limits>
#include <memory>

/// `sorrel scan`: prints a report of each package as a line of JSON.
class ScanCommand : public Command
{
public:
    /// Makes the scan of a command with the option `--index`, whose argument is @p index.
    using MakeIndexed = std::unique_ptr<PackageScan> (*)(const QString &index, const ScanOptions &options,
                                                         const ReportContent &content);

    /// @p makeIndexed is null in a program without indexes.
    explicit ScanCommand(MakeIndexed makeIndexed = nullptr) : m_makeIndexed(makeIndexed) {}

    QString details() const override;
    int maxArguments() const override { return std::numeric_limits<int>::max(); }
    void addArguments(QCommandLineParser &parser) const override;
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const MakeIndexed m_makeIndexed;
    const ScanOptions m_scan;
    const IndexOption m_index{IndexOption::fillText()};
    const QCommandLineOption m_ordered{
        QStringLiteral("ordered"),
        QStringLiteral("Keep the order of the paths, and sort the files of a directory by name.")};
    const QCommandLineOption m_all{QStringLiteral("all"),
                                   QStringLiteral("Include launchers that home screens do not show.")};
    const QCommandLineOption m_icon{QStringLiteral("icon"),
                                    QStringLiteral("Add the icon: a PNG picture of N by N pixels, in Base64."),
                                    QStringLiteral("N")};
    const QCommandLineOption m_lint{QStringLiteral("lint"), QStringLiteral("Add the findings of 'sorrel lint'.")};
    const QCommandLineOption m_verify{QStringLiteral("verify"), QStringLiteral("Add the results of 'sorrel verify'.")};
};

#endif
