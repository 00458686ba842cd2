// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/MemberPlaces.h"

#include "archive/ByteSource.h"
#include "archive/ZipDirectory.h"
#include "limits/Budget.h"
#include "trust/block/SigningBlock.h"

namespace SorrelKit {

namespace {

/// The fixed part of a member's header.
constexpr qint64 ShortestHeader = 30;
/// The same with the longest name and extra field behind it.
constexpr qint64 LongestHeader = ShortestHeader + 2 * qint64(0xffff);

} // namespace

MemberPlaces::Result MemberPlaces::check(ByteSource &source, const ZipDirectory &directory, const SigningBlock &block,
                                         Budget *budget)
{
    const qint64 limit = block.blockAt();
    for (int number = 0; number < directory.count(); ++number) {
        if (!budget->spendWork(Budget::ValueWork))
            return Result::TooCostly;
        const ZipDirectory::Member member = directory.member(number);
        if (member.headerAt < 0 || member.packedSize < 0
            || member.packedSize > limit - member.headerAt - ShortestHeader)
            return Result::Unsigned;
        if (member.packedSize <= limit - member.headerAt - LongestHeader)
            continue;
        if (!budget->spendWork(HeaderWork))
            return Result::TooCostly;
        const ZipDirectory::LocalHeader header = ZipDirectory::localHeader(source, member);
        // Nobody can read a member without a header.
        if (header.isFound && member.packedSize > limit - header.dataAt)
            return Result::Unsigned;
    }
    return Result::Good;
}

} // namespace SorrelKit
