// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef INDEXEDSCAN_H
#define INDEXEDSCAN_H

#include "PackageScan.h"

#include "shelf/index/IndexFile.h"
#include "shelf/index/IndexReader.h"

#include <QList>

/**
 * A PackageScan that brings an index up to date and takes the reports from it, so only packages that are new or changed
 * are read. The reports are in the order of addition. When the index cannot be written, the packages are read as
 * without one.
 */
class IndexedScan : public PackageScan
{
public:
    /// @p index is the argument of the option `--index`. The program @p program has workers with all parts of @p
    /// content.
    IndexedScan(const QString &index, const QByteArray &program, const ScanOptions &options,
                const ReportContent &content)
        : PackageScan(program, options, content), m_index(index)
    {
    }

    void add(const QStringList &arguments) override;
    int run(bool isOrdered, const Take &take) const override;

private:
    /// The report of a file in the index. A package whose worker died has only its error there.
    struct Stored {
        SorrelKit::IndexReader::Report report;
        bool isStored() const;
    };

    bool update(SorrelKit::IndexFile &file) const;
    int readFrom(int first, const SorrelKit::IndexReader &reader,
                 const std::function<bool(const QByteArray &report)> &pass) const;
    Stored storedReport(const FileName &file, const SorrelKit::IndexReader &reader) const;
    QByteArray reportOf(const FileName &file, const SorrelKit::IndexReader &reader, int *status) const;

    const QString m_index;
    QList<QByteArray> m_folders;  ///< absolute paths
    QList<QByteArray> m_packages; ///< absolute paths of all packages
};

#endif
