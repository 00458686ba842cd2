// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVEMEMBERS_H
#define ARCHIVEMEMBERS_H

#include "limits/Budget.h"

#include <QByteArray>
#include <QString>

#include <functional>

class QuaZip;

/**
 * Reads the directory and the members of ZIP archives from strangers. A directory may list the same bytes under any
 * number of names, and deflated data may take long and deliver nothing, so reading spends from a budget.
 */
namespace ArchiveMembers {

/// The compression method of members that are not compressed.
constexpr int Stored = 0;

/**
 * Calls @p visit with the name of each member of @p archive, which is open, in the order of the directory, until it
 * returns false. Ends at a member without a name, where QuaZip::setCurrentFile() stops searching as well. QuaZip
 * remembers the place of each visited member. After a visit to all members, setCurrentFile() therefore finds the last
 * of several members of one name; without it, it finds the first one, or the last one that it passed in earlier
 * searches.
 */
void visitNames(QuaZip *archive, const std::function<bool(const QString &)> &visit);

/**
 * The content of the current member of @p archive; of a damaged one, the bytes before the fault. Empty when the member
 * cannot be opened, has more than @p maxBytes, or its compressed data could cost more work than @p budget has left.
 *
 * Reading costs Budget::ByteWork for each delivered byte, or Budget::PackedByteWork for each compressed byte taken from
 * the archive, whichever is more. @p expectedBytes are reserved from the start. No bytes are held: the caller knows how
 * long it keeps the content.
 */
QByteArray content(QuaZip *archive, qint64 maxBytes, Budget *budget, qint64 expectedBytes = 0);

} // namespace ArchiveMembers

#endif
