// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVEODDITIES_H
#define ARCHIVEODDITIES_H

#include "archive/ZipDirectory.h"
#include "oddity/OddityList.h"

class ByteSource;

/**
 * What is odd in the archive of a package, by Android's rules for archives. Android 10 to 14 have the same ones, except
 * for ZIP64, which Android 12 reads and older versions do not. Android checks the directory when it opens a package, and
 * a member when it opens that member.
 */
namespace ArchiveOddities {

/// Whether Android takes @p name for the name of a member: it has no zero, and each of its bytes is ASCII, or one that
/// begins a sequence of UTF-8 and is followed by as many further ones as its first bits count. Android does not look at
/// the code points.
bool isName(const ByteView &name);

/// Whether Android opens @p member, whose own header @p own is found.
bool isOpened(const ZipDirectory &directory, const ZipDirectory::Member &member, const ZipDirectory::LocalHeader &own);

/// The oddities of the end record and of @p directory of @p source. Makes the index of names. Looks at each member only
/// when a name is not ASCII, or an offset may be behind the directory. The details are names and numbers of bytes.
OddityList ofDirectory(ZipDirectory &directory, ByteSource &source);

/// The oddities of how member @p number is stored. Reads its header. It does not inflate the member.
OddityList ofMember(const ZipDirectory &directory, ByteSource &source, int number);

} // namespace ArchiveOddities

#endif
