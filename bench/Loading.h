// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOADING_H
#define LOADING_H

#include "ApkResources.h"

#include <QByteArray>
#include <QDomDocument>

/// Decoding from memory, through a device that copies what it is asked for, as that of a member does.
namespace bench {

/// The table in @p bytes, not valid when it is damaged.
ApkResources loadedTable(const QByteArray &bytes);

/// The document in @p bytes, with references as @p table names them; a null one when it is damaged.
QDomDocument loadedDocument(const QByteArray &bytes, const ApkResources &table);

/// Reads @p bytes through such a device, 64 KiB at a time, and takes nothing from them. Returns how many came.
qint64 readThrough(const QByteArray &bytes);

} // namespace bench

#endif
