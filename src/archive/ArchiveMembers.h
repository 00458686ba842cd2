// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVEMEMBERS_H
#define ARCHIVEMEMBERS_H

#include "format/Allowance.h"

#include <QByteArray>
#include <QString>

#include <functional>

class QuaZip;

/**
 * Reads the directory and the members of ZIP archives from strangers. A directory may list the same bytes under any
 * number of names, and deflated data may take long and deliver nothing, so that reading has a budget.
 */
namespace ArchiveMembers {

/// The cost of a byte of compressed data; a byte that a member delivers, or that is stored as it is, costs 1. The
/// slowest deflated data, empty blocks with codes of their own, takes 73 ns a byte, and usual data 5 ns for each byte
/// delivered. The cost is below that ratio, so that a budget has room for pictures, which deflating makes no smaller.
constexpr int PackedByteCost = 4;

/**
 * Calls @p visit for the name of each member of @p archive, which is open, in the order of the directory, until it
 * returns false; up to a member without a name, where QuaZip::setCurrentFile() stops looking. QuaZip keeps where each
 * of them is: after a visit to all of them setCurrentFile() finds the last of several members of one name. Without it,
 * it finds the first of them, or the last that it met while it looked for others.
 */
void visitNames(QuaZip *archive, const std::function<bool(const QString &)> &visit);

/**
 * The content of the current member of @p archive, or what comes before the fault in a damaged one. Empty when it
 * cannot be opened, has more than @p maxBytes, or its compressed data could cost more than @p cost has left. What was
 * read is taken off @p cost: the bytes that were delivered or those that were taken from the archive, whichever cost
 * more. @p expectedBytes are reserved from the start.
 */
QByteArray content(QuaZip *archive, qint64 maxBytes, Allowance *cost, qint64 expectedBytes = 0);

} // namespace ArchiveMembers

#endif
