// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ZIPARCHIVE_H
#define ZIPARCHIVE_H

#include "archive/ByteSource.h"
#include "archive/FileSource.h"
#include "archive/Inflater.h"
#include "archive/ZipDirectory.h"
#include "oddity/OddityList.h"

#include <QSet>
#include <QStringList>

#include <memory>
#include <optional>

class QIODevice;

/**
 * The members of a ZIP archive, as Android reads them. ZipDirectory documents what an archive is, BytesOfFile how a file
 * is read. One thread at a time.
 *
 * open() reads the end of the file and the directory. A member costs reading its header and its bytes; nothing else of
 * the archive is touched. A member is readable when Android opens it: its own header is where the directory says, has
 * the same name, and the same sizes and checksum unless these follow the data, which ends before the directory. The
 * directory's compression method counts. A member that is not deflated is stored, whatever its method is, and its
 * uncompressed size counts. A deflated member makes just the bytes that the directory has for it. Checksums of contents
 * and marks of encryption are ignored, as on Android.
 */
class ZipArchive : public FileSource
{
public:
    /// The work that a member of an archive within another one costs when the directory is read, and the bytes that it
    /// holds besides its record. A compressed archive may list a thousand times as many members as its bytes have room
    /// for.
    static constexpr qint64 MemberWork = 16;
    static constexpr qint64 MemberBytes = 24;
    /// Bytes of a compressed member whose checksum is checked: the whole member is inflated for it.
    static constexpr qint64 MaxCheckedBytes = 64 << 20;
    /// Members that are known not to inflate to their sizes.
    static constexpr int MaxMisfits = 1 << 16;

    /// The bytes of a member in the archive.
    struct Data {
        qint64 at = 0;
        qint64 packedSize = 0; ///< less than the directory has when the file is cut
        qint64 size = 0;       ///< bytes that the member delivers
        quint16 method = ZipDirectory::Stored;

        /// Whether the bytes are those that the member delivers. Android 9 and later take any method but one for this.
        bool isStored() const { return method != ZipDirectory::Deflated; }
    };

    /// The archive in the file @p fileName.
    explicit ZipArchive(const QString &fileName);
    /// The archive on @p device, random-access and not open, which stays the caller's and outlives this object. It is
    /// open from open() on while this object lives.
    explicit ZipArchive(QIODevice *device);
    /// The archive in @p bytes.
    explicit ZipArchive(const QByteArray &bytes);
    /// The archive in @p source, which may be shared with others.
    explicit ZipArchive(std::shared_ptr<ByteSource> source) : m_source(std::move(source)) {}
    /// The archive in the file at @p path, the bytes that the system has for it. They need not be text.
    static std::unique_ptr<ZipArchive> atNativePath(const QByteArray &path);

    /// Opens the archive and reads its directory. False when the file is missing, is no regular file or no archive, or
    /// the device is open already or sequential. With a @p budget, also false when the members do not fit in it.
    bool open(Budget *budget = nullptr);

    /// See FileSource. A member that is too long is not read at all. Of several members of one name the last counts, as
    /// in libsorrel.
    QByteArray file(const QString &path, qint64 maxBytes, Budget *budget) override;
    /// The same without a budget, for a member that is read once.
    QByteArray file(const QString &path, qint64 maxBytes);
    /// The same bytes; those of a stored member are a view into the file where it can be mapped. They stay valid when
    /// this object is destroyed.
    SharedBytes content(const QString &path, qint64 maxBytes, Budget *budget);
    /// The same without a budget.
    SharedBytes content(const QString &path, qint64 maxBytes);
    /// The same for a member that Android refuses: the bytes that the directory leads to, as far as they inflate. They
    /// are for the files whose oddities show what Android does. Empty when the member has no header.
    SharedBytes contentAnyway(const QString &path, qint64 maxBytes, Budget *budget);
    /**
     * The archive in the member @p path, not yet open; null when there is no such member.
     *
     * A stored member is read in place. A compressed member is kept in memory: it holds the bytes that the directory
     * claims, and the result is null when @p budget has fewer left, or the member is damaged from its first byte.
     *
     * All members that were returned together have no more bytes than this archive, as members do not overlap in a
     * sound archive; the result is null when one would exceed that.
     */
    std::unique_ptr<ZipArchive> archive(const QString &path, Budget *budget);
    /// Whether the member @p path exists. Does not read the archive.
    bool contains(const QString &path) { return find(path) >= 0; }
    /// The paths of the first @p most members, in the order of the archive. Empty ones, and members that are hidden by a
    /// later one of the same name, are left out. A name that is no valid UTF-8, or begins with a byte order mark, does not
    /// lead back to its member.
    QStringList names(int most = std::numeric_limits<int>::max());

    /// Where the bytes of member @p number are, for callers that read them piece by piece; nothing when it cannot be
    /// read, or @p number is below 0.
    std::optional<Data> data(int number);
    /// The same for a member that Android refuses.
    std::optional<Data> dataAnyway(int number);
    /// Whether Android opens the member @p path. It may still not inflate.
    bool isOpened(const QString &path) { return data(find(path)).has_value(); }

    /// The oddities of the archive, and of how a member is stored. Empty before open(), and for a member that does not
    /// exist. Whether a member inflates to its size is known when it was read.
    OddityList oddities();
    OddityList oddities(const QString &path) { return oddities(find(path)); }
    OddityList oddities(int number);

    /// The directory; empty before open().
    ZipDirectory &directory() { return m_directory; }
    /// The bytes of the archive. Precondition: it is open.
    ByteSource &source() { return *m_source; }
    /// The same; null before open() when this object opens them.
    std::shared_ptr<ByteSource> sharedSource() const { return m_source; }
    /// The path of the archive's file, as the system has it; empty for an archive elsewhere.
    QByteArray path() const;
    /// Whether the content of member @p number has the checksum of the directory; nothing when the member cannot be
    /// read, could cost more work than @p budget has left, or has more than MaxCheckedBytes and is compressed.
    std::optional<bool> hasRightChecksum(int number, Budget *budget);

private:
    Q_DISABLE_COPY(ZipArchive)

    ZipArchive() = default;
    std::shared_ptr<ByteSource> openSource() const;
    std::optional<Data> data(int number, bool isAsAndroid);
    int find(const QString &path);
    SharedBytes openedContent(const QString &path, qint64 maxBytes, Budget *budget, bool mayView);
    SharedBytes content(int number, const std::optional<Data> &data, qint64 maxBytes, Budget *budget, bool mayView,
                        bool *isWhole);

    QString m_fileName;            ///< null for an archive of another kind
    QByteArray m_nativePath;       ///< the same
    QIODevice *m_device = nullptr; ///< the same
    bool m_isOpen = false;
    std::shared_ptr<ByteSource> m_source; ///< null before open() when it is opened there
    ZipDirectory m_directory;
    Inflater m_inflater;
    QSet<int> m_misfits;     ///< members that were read, and do not inflate to their sizes; MaxMisfits of them at most
    qint64 m_innerBytes = 0; ///< bytes of this archive in the members that archive() returned
};

#endif
