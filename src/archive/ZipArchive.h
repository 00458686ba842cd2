// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ZIPARCHIVE_H
#define ZIPARCHIVE_H

#include "archive/FileSource.h"

#include <QIODevice>
#include <QSet>
#include <QStringList>

#include <memory>

class QuaZip;

/// The members of a ZIP archive. open() opens it; it stays open as long as this object lives.
class ZipArchive : public FileSource
{
public:
    /// Bytes that are reserved for a member because the directory claims them; above this, memory grows with the bytes
    /// that the member delivers.
    static constexpr qint64 MaxTrustedSize = 1 << 20;
    /// The work that a member of an archive within another one costs when the directory is read, and the bytes that it
    /// holds. A compressed archive may list a thousand times as many members as its bytes have room for.
    static constexpr qint64 MemberWork = 2048;
    static constexpr qint64 MemberBytes = 256;

    /// The archive in the file @p fileName.
    explicit ZipArchive(const QString &fileName);
    /// The archive on @p device, random-access and not open, which stays the caller's and outlives this object.
    explicit ZipArchive(QIODevice *device);
    /// The archive in @p bytes.
    explicit ZipArchive(const QByteArray &bytes);
    /// The archive in the file at @p path, the bytes that the system has for it. They need not be text.
    static std::unique_ptr<ZipArchive> atNativePath(const QByteArray &path);
    ~ZipArchive() override;

    /// Opens the archive and reads its directory. False when the file is missing, is no regular file or no archive, or
    /// the device is open already or sequential. With a @p budget, also false when the members do not fit in it.
    bool open(Budget *budget = nullptr);

    /// See FileSource. A member that is too long is not read at all. Of several members of one name the last counts, as
    /// in libsorrel.
    QByteArray file(const QString &path, qint64 maxBytes, Budget *budget) override;
    /// The same without a budget, for a member that is read once.
    QByteArray file(const QString &path, qint64 maxBytes);
    /**
     * The archive in the member @p path, not yet open; null when there is no such member.
     *
     * A stored member is read in place, so this object must outlive the result. A compressed member is kept in memory:
     * it holds the bytes that the directory claims, and the result is null when @p budget has fewer left, or the
     * member is damaged from its first byte.
     *
     * All members that were returned together have no more bytes than this archive, as members do not overlap in a
     * sound archive; the result is null when one would exceed that.
     */
    std::unique_ptr<ZipArchive> archive(const QString &path, Budget *budget);
    /// Whether the member @p path exists. Does not read the archive.
    bool contains(const QString &path) const { return m_known.contains(path); }
    /// The paths of all members, each once, in the order of the archive; ends at the first empty one.
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
    qint64 m_innerBytes = 0; ///< bytes of this archive in the members that archive() returned
};

#endif
