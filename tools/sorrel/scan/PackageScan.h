// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGESCAN_H
#define PACKAGESCAN_H

#include "PackagePaths.h"
#include "ReportContent.h"
#include "ScanOptions.h"

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>
#include <QVector>

#include <functional>

/// Reads many packages by worker processes, shows progress, and tells on standard error what could not be read.
class PackageScan
{
public:
    /// Gets a report, as JSON on one line, without the line's end. Answers whether to go on.
    using Take = std::function<bool(const QByteArray &report)>;

    PackageScan(const ScanOptions &options, const ReportContent &content) : m_options(options), m_content(content) {}

    /**
     * Adds the packages that @p arguments name: files, directories with all packages below them, and "-" for a list on
     * standard input.
     */
    void add(const QStringList &arguments);
    const QVector<FileName> &files() const { return m_files; }

    /**
     * Reads the packages, and hands over a report of each: in the order in which they were added when @p isOrdered, and
     * else as they come. Answers an ExitStatus.
     */
    int run(bool isOrdered, const Take &take) const;

private:
    const ScanOptions &m_options;
    const ReportContent m_content;
    QVector<FileName> m_files;
    QVector<PackagePaths::Fault> m_faults;
};

#endif
