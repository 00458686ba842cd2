// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ARCHIVEFILES_H
#define SORRELKIT_ARCHIVEFILES_H

#include "Allowance.h"
#include "PackageFiles.h"

#include <QIODevice>
#include <QStringList>

#include <memory>

class QuaZip;

namespace SorrelKit {

/// The members of a ZIP archive. It is opened by open(), stays open, and is closed with this object.
class ArchiveFiles : public PackageFiles
{
public:
    /// Bytes that a member takes from the start because the archive says that it has them; for more it must deliver.
    static constexpr qint64 MaxTrustedSize = 1 << 20;

    /// The archive in the file @p fileName.
    explicit ArchiveFiles(const QString &fileName);
    /// The archive on @p device, random-access and not open, which stays the caller's and outlives this object.
    explicit ArchiveFiles(QIODevice *device);
    /// The archive in @p bytes.
    explicit ArchiveFiles(const QByteArray &bytes);
    ~ArchiveFiles() override;

    /// False when there is no such file, it is no regular file or no archive, or the device is open or sequential.
    bool open();

    /// As its base says. A member that is too long is not read at all, and one that is damaged ends where the fault is.
    QByteArray file(const QString &path, qint64 maxBytes) override;
    /**
     * The archive in the member @p path, not yet open; null when there is no such member. One that is stored as it is gets
     * read where it stands, and this object outlives it. All of these together are no longer than this archive, as they do
     * not overlap in a sound one; null for one that would be too much. One that is compressed is kept in memory, and what
     * the archive says that it has is taken off @p inflated; null when there is not as much left, or it is damaged from
     * its start.
     */
    std::unique_ptr<ArchiveFiles> archive(const QString &path, Allowance *inflated);
    bool contains(const QString &path);
    /// The paths of all members, in the order of the archive, up to @p maxCount of them.
    QStringList names(int maxCount);

private:
    Q_DISABLE_COPY(ArchiveFiles)

    explicit ArchiveFiles(std::unique_ptr<QIODevice> device);

    QString m_fileName;
    std::unique_ptr<QIODevice> m_ownDevice; ///< outlives the archive
    std::unique_ptr<QuaZip> m_archive;
    qint64 m_standingBytes = 0; ///< of members that were handed out to be read where they stand
};

} // namespace SorrelKit

#endif
