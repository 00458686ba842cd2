// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVES_H
#define ARCHIVES_H

#include <QByteArray>
#include <QString>
#include <QVector>

namespace fixture {

struct Member {
    QString name;
    QByteArray content;
};

enum class Compression {
    Deflated,
    Stored,
};

/// A ZIP archive of these members, in their order.
QByteArray zip(const QVector<Member> &members, Compression compression = Compression::Deflated);
/**
 * A ZIP archive of members whose contents are deflated data, damaged or not, of which the archive claims that each
 * delivers @p size bytes.
 */
QByteArray zipOfDeflated(const QVector<Member> &members, qint64 size);
/// @p data deflated, behind @p size bytes that deliver nothing: empty blocks, one after another.
QByteArray deflatedBehindEmptyBlocks(int size, const QByteArray &data = QByteArray());
/// A package of a resource table and a manifest, with further members.
QByteArray package(const QByteArray &table, const QByteArray &manifest, const QVector<Member> &others = {});
/// A picture of one colour, as a file in the format @p format ("PNG", "JPG", "WEBP").
QByteArray picture(int width, int height, quint32 rgb, const char *format = "PNG");

} // namespace fixture

#endif
