// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RAWZIP_H
#define RAWZIP_H

#include <QByteArray>
#include <QVector>

namespace fixture {

/// A member as the archive describes it, true or not. Fields below 0 get their true values.
struct RawMember {
    QByteArray name;
    QByteArray content;
    int flags = 0;
    int method = 0;                      ///< in both headers; the content is not compressed
    QByteArray localName = QByteArray(); ///< in the member's own header, unless it is null
    int localMethod = -1;
    qint64 localSize = -1;
    qint64 headerAt = -1;
    int extraSize = 0; ///< bytes of an extra field, which moves the content
};

/**
 * A ZIP archive that is written field by field, without compression. The file starts with the bytes @p before, and its
 * offsets include them.
 */
QByteArray rawZip(const QVector<RawMember> &members, const QByteArray &before = QByteArray());
/// The same with the offset of its directory in a ZIP64 record.
QByteArray rawZip64(const QVector<RawMember> &members);

/// The size of the record at the end of an archive without a comment.
constexpr int ZipEndSize = 22;

} // namespace fixture

#endif
