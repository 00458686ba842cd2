// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CATALOGCOMMAND_H
#define CATALOGCOMMAND_H

#include "Command.h"
#include "IconOptions.h"
#include "ScanOptions.h"

#include <QCommandLineOption>

#include <limits>

/// `sorrel catalog`: writes a web page of packages.
class CatalogCommand : public Command
{
public:
    QString details() const override;
    int maxArguments() const override { return std::numeric_limits<int>::max(); }
    void addArguments(QCommandLineParser &parser) const override;
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    /// Width and height of icons in pixels: twice their size on the page, for screens of high density.
    static constexpr int IconSize = 128;

    const ScanOptions m_scan;
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
