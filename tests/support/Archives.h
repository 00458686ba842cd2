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
/// A package of a resource table and a manifest, with further members.
QByteArray package(const QByteArray &table, const QByteArray &manifest, const QVector<Member> &others = {});
/// A picture of one colour, as a file in the format @p format ("PNG", "JPG", "WEBP").
QByteArray picture(int width, int height, quint32 rgb, const char *format = "PNG");

} // namespace fixture

#endif
