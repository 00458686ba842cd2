// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ZIPPEDPACKAGE_H
#define ZIPPEDPACKAGE_H

#include <QByteArray>
#include <QString>
#include <QVector>

/// Package files, written and read by the ZIP library alone. A failure ends the program.
namespace bench {

extern const QString tableName;    ///< of the member with the resource table
extern const QString manifestName; ///< of the member with the manifest

/// A member besides the table and the manifest.
struct OtherMember {
    QString name;
    QByteArray content;
};

/// Writes a package of these members. The manifest is deflated and the others are stored, as build tools do it.
void writePackage(const QString &fileName, const QByteArray &table, const QByteArray &manifest,
                  const QVector<OtherMember> &others = {});

/// The content of a member.
QByteArray member(const QString &fileName, const QString &name);

/// The number of members.
int memberCount(const QString &fileName);

} // namespace bench

#endif
