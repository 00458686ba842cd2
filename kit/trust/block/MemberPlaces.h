// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MEMBERPLACES_H
#define SORRELKIT_MEMBERPLACES_H

#include <QtGlobal>

class Budget;
class ByteSource;
class ZipDirectory;

namespace SorrelKit {

class SigningBlock;

/**
 * Where the members of a package are. No signature covers the bytes of the signing block, apart from the values of the
 * schemes. A member whose header or data reach into the block could be changed by anybody.
 */
class MemberPlaces
{
public:
    enum class Result {
        Good,     ///< all members are before the block
        Unsigned, ///< a member is not
        TooCostly,
    };

    /// Work of reading the header of a member.
    static constexpr qint64 HeaderWork = 512;

    /// Compares the places of all members in @p directory with that of @p block, which is good. Reads the headers of the
    /// members that are near the block.
    static Result check(ByteSource &source, const ZipDirectory &directory, const SigningBlock &block, Budget *budget);
};

} // namespace SorrelKit

#endif
