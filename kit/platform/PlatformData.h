// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PLATFORMDATA_H
#define SORRELKIT_PLATFORMDATA_H

#include "archive/FileSource.h"
#include "archive/ZipArchive.h"
#include "format/XmlElement.h"
#include "resources/TableSource.h"

#include <SorrelKit/Error.h>

#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>

#include <mutex>

namespace SorrelKit {

/**
 * The framework package that copies of Platform, and all packages that use it, share. May be used from any thread: the
 * table and the manifest are read once and do not change, and a lock is held while the archive is read.
 */
class PlatformData : public QSharedData, public PlatformSource, private FileSource
{
public:
    /// Opens nothing. An empty name is no platform.
    explicit PlatformData(const QString &fileName);

    bool isNone() const { return m_fileName.isEmpty(); }
    QString fileName() const { return m_fileName; }
    const ResourceTables &tables() override;
    FileSource &files() override { return *this; }
    /// See Platform::error().
    Error error();
    /// The root of the platform's manifest, whose references are those of its table; a null element when it cannot be
    /// read. Independent of the table.
    const XmlElement &manifest();

private:
    QByteArray file(const QString &path, qint64 maxBytes, Budget *budget) override;
    void readTable();
    void readManifest();

    const QString m_fileName;
    std::mutex m_reading; ///< held while the archive is opened or read
    ZipArchive m_archive;
    std::once_flag m_tableIsRead;
    std::once_flag m_manifestIsRead;
    ResourceTables m_tables; ///< written once; then as m_error and m_manifest only read
    Error m_error;
    XmlElement m_manifest;
};

using PlatformDataPointer = QExplicitlySharedDataPointer<PlatformData>;

} // namespace SorrelKit

#endif
