// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ZIPARCHIVE_H
#define ZIPARCHIVE_H

#include "archive/FileSource.h"
#include "format/Allowance.h"

#include <QIODevice>
#include <QSet>
#include <QStringList>

#include <memory>

class QuaZip;

/// The members of a ZIP archive. It is opened by open(), stays open, and is closed with this object.
class ZipArchive : public FileSource
{
public:
    /// Bytes that a member takes from the start because the archive says that it has them; for more it must deliver.
    static constexpr qint64 MaxTrustedSize = 1 << 20;

    /// The archive in the file @p fileName.
    explicit ZipArchive(const QString &fileName);
    /// The archive on @p device, random-access and not open, which stays the caller's and outlives this object.
    explicit ZipArchive(QIODevice *device);
    /// The archive in @p bytes.
    explicit ZipArchive(const QByteArray &bytes);
    ~ZipArchive() override;

    /// False when there is no such file, it is no regular file or no archive, or the device is open or sequential; and when
    /// it has more members than @p members has left, of which they are taken off. Its directory is gone over here.
    bool open(Allowance *members = nullptr);

    /// As its base says. A member that is too long is not read at all, and one that is damaged ends where the fault is. Of
    /// several members of one name the last counts, as in libsorrel.
    QByteArray file(const QString &path, qint64 maxBytes, Allowance *cost) override;
    /// The same for a member that is read once, whatever it costs.
    QByteArray file(const QString &path, qint64 maxBytes);
    /**
     * The archive in the member @p path, not yet open; null when there is no such member. One that is stored as it is gets
     * read where it stands, and this object outlives it. One that is compressed is kept in memory, and what the archive
     * says that it has is taken off @p inflated; null when there is not as much left, or it is damaged from its start.
     * All of these together take no more of this archive than it has, as they do not overlap in a sound one; null for one
     * that would be too much.
     */
    std::unique_ptr<ZipArchive> archive(const QString &path, Allowance *inflated);
    /// Whether there is the member @p path. The archive is not asked.
    bool contains(const QString &path) const { return m_known.contains(path); }
    /// The paths of all members, each once, in the order of the archive; up to the first that is empty.
    const QStringList &names() const { return m_names; }

private:
    Q_DISABLE_COPY(ZipArchive)

    explicit ZipArchive(std::unique_ptr<QIODevice> device);
    /// Makes the member @p path the archive's current one.
    bool select(const QString &path);

    QString m_fileName;
    std::unique_ptr<QIODevice> m_ownDevice; ///< outlives the archive
    std::unique_ptr<QuaZip> m_archive;
    QStringList m_names;
    QSet<QString> m_known;   ///< the same
    qint64 m_innerBytes = 0; ///< of this archive, that members have which were handed out as archives
};

#endif
