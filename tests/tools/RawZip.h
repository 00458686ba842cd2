// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RAWZIP_H
#define RAWZIP_H

#include <QByteArray>
#include <QVector>

namespace fixture {

/// A member as the archive says it is, which may be wrong. Fields that are below 0 are right.
struct RawMember {
    QByteArray name;
    QByteArray content;
    int flags = 0;
    int method = 0;                      ///< as both headers have it; the content is written as it is
    QByteArray localName = QByteArray(); ///< in the member's own header, unless it is null
    int localMethod = -1;
    qint64 localSize = -1;
    qint64 headerAt = -1;
    int extraSize = 0; ///< bytes of an extra field, by which the content is moved
};

/**
 * A ZIP archive that is written field by field, none of it compressed. @p before are bytes of the file in front of it,
 * which its offsets count.
 */
QByteArray rawZip(const QVector<RawMember> &members, const QByteArray &before = QByteArray());
/// The same with its directory's place in a ZIP64 record.
QByteArray rawZip64(const QVector<RawMember> &members);

/// Of the record at the end of an archive without a comment.
constexpr int ZipEndSize = 22;

} // namespace fixture

#endif
