// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGESCAN_H
#define PACKAGESCAN_H

#include "PackagePaths.h"
#include "ReportContent.h"
#include "ScanOptions.h"

#include "workers/WorkerPool.h"

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>
#include <QVector>

#include <functional>

/// Reads many packages with worker processes, shows progress, and prints errors on standard error.
class PackageScan
{
public:
    /// Receives the next reports, each as JSON on one line, without the line end. Returns whether to continue.
    using Take = std::function<bool(const QVector<QByteArray> &reports)>;

    /// The program at the path @p program has the command `worker` with all parts of @p content.
    PackageScan(const QByteArray &program, const ScanOptions &options, const ReportContent &content)
        : m_program(program), m_options(options), m_content(content)
    {
    }

    virtual ~PackageScan() = default;

    /**
     * Adds the packages of @p arguments: files, all packages below directories, and "-" for a list on standard input.
     */
    virtual void add(const QStringList &arguments);
    const QVector<FileName> &files() const { return m_files; }
    /// Replaces files().
    void setFiles(const QVector<FileName> &files) { m_files = files; }

    /**
     * Reads the packages and passes on a report of each as soon as possible, in the order of addition when @p
     * isOrdered. Returns an ExitStatus.
     */
    virtual int run(bool isOrdered, const Take &take) const;

protected:
    /// Prints the paths that could not be read. Returns an ExitStatus.
    int complainOfFaults() const;

    const QByteArray m_program;
    const ScanOptions &m_options;
    const ReportContent m_content;
    QVector<FileName> m_files;

private:
    Q_DISABLE_COPY(PackageScan)

    QByteArray reportOf(const WorkerPool::Outcome &outcome) const;

    QVector<PackagePaths::Fault> m_faults;
};

#endif
