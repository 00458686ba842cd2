// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOADING_H
#define LOADING_H

#include "ApkResources.h"

#include <QByteArray>
#include <QDomDocument>

/// Decoding from memory, through a device that copies the requested bytes, as the device of a member does.
namespace bench {

/// The table in @p bytes; not valid when the bytes are damaged.
ApkResources loadedTable(const QByteArray &bytes);

/// The document in @p bytes, with references named by @p table; a null document when the bytes are damaged.
QDomDocument loadedDocument(const QByteArray &bytes, const ApkResources &table);

/// Reads @p bytes through such a device, 64 KiB at a time, and decodes nothing. Returns the number of bytes read.
qint64 readThrough(const QByteArray &bytes);

} // namespace bench

#endif
