// SPDX-License-Identifier: LGPL-2.1-or-later
#include "diagnostic/DiagnosticTable.h"

#include <algorithm>
#include <iterator>

namespace SorrelKit {

namespace {

using Effect = DiagnosticTable::Effect;

constexpr int Android8_1 = 27;
constexpr int Android9 = 28;
constexpr int Android11 = 30;

constexpr DiagnosticTable::Row rows[] = {
    {Oddity::BytesAhead, Effect::Refused, Android8_1, 0,
     "The archive does not begin with the file; Android refuses the package."},
    {Oddity::BytesBehind, Effect::Refused, 0, 0, "The file goes on behind the archive; Android refuses the package."},
    {Oddity::CutComment, Effect::Refused, 0, 0,
     "The file ends before the archive's comment does; Android refuses the package."},
    {Oddity::LongComment, Effect::Taken, 0, 0,
     "The archive's comment has so many bytes that some readers do not find the end record; Android finds it."},
    {Oddity::DirectoryGap, Effect::Taken, 0, 0,
     "There are bytes between the directory and the end record; Android skips them, unless a signature of scheme v2 or "
     "later is checked."},
    {Oddity::DiskNumbers, Effect::Taken, 0, 0,
     "The end record claims several disks; Android does not look at these numbers."},
    {Oddity::EmptyArchive, Effect::Refused, 0, 0, "The end record counts no member; Android refuses the package."},
    {Oddity::HiddenRecords, Effect::Taken, 0, 0,
     "The directory has more members than the end record counts; Android does not see the others."},
    {Oddity::MissingRecords, Effect::Refused, 0, 0,
     "The directory has fewer members than the end record counts, or a damaged one; Android refuses the package."},
    {Oddity::OffsetBehindMembers, Effect::Refused, 0, 0,
     "A member has an offset at or behind the directory; Android refuses the package."},
    {Oddity::InvalidName, Effect::Refused, 0, 0,
     "A member's name has a zero, or is no UTF-8; Android refuses the package."},
    {Oddity::DuplicateName, Effect::Refused, 0, 0, "Two members have the same name; Android refuses the package."},
    {Oddity::Zip64Directory, Effect::Refused, 0, Android11,
     "The archive has a ZIP64 directory; Android 11 and older refuse the package."},
    {Oddity::NoMemberHeader, Effect::ManifestRefused, 0, 0,
     "The file is not at its offset in the archive; Android does not open it."},
    {Oddity::MemberName, Effect::ManifestRefused, 0, 0,
     "The file has another name in its own header; Android does not open it."},
    {Oddity::MemberSizes, Effect::ManifestRefused, 0, 0,
     "The file has other sizes or another checksum in its own header; Android does not open it."},
    {Oddity::MemberPastDirectory, Effect::ManifestRefused, 0, 0,
     "The file's data does not end before the directory; Android does not open it."},
    {Oddity::MemberMethod, Effect::Taken, 0, 0,
     "The file has another compression method in its own header; Android uses that of the directory."},
    {Oddity::MemberEncrypted, Effect::Taken, 0, 0,
     "The file is marked as encrypted; Android does not look at the mark."},
    {Oddity::MemberNotDeflated, Effect::Taken, Android9, 0,
     "The file has an unknown compression method; Android 9 and later read it as not compressed, older versions cannot "
     "read it."},
    {Oddity::MemberStoredSizes, Effect::Taken, 0, 0,
     "The file is not compressed and has two sizes; Android uses the uncompressed one."},
    {Oddity::MemberMarksDiffer, Effect::Taken, 0, 0,
     "The file's header and the directory differ about sizes that follow the data; Android uses the mark in the "
     "header."},
    {Oddity::MemberInflatedSize, Effect::Refused, 0, 0,
     "The file does not inflate to just its size in the directory; Android does not read it."},
    {Oddity::DocumentType, Effect::Taken, 0, 0,
     "The document has the type of another chunk; Android does not look at it."},
    {Oddity::DocumentHeaderSize, Effect::Taken, 0, 0,
     "The document's header has an unusual size; Android skips the rest of it."},
    {Oddity::DocumentBytesBehind, Effect::Taken, 0, 0,
     "There are bytes behind the document; Android does not look at them."},
    {Oddity::DocumentPoolStyles, Effect::Taken, 0, 0,
     "The document's string pool has styles outside of it; Android does not look at them."},
    {Oddity::DocumentResourceMap, Effect::Taken, 0, 0,
     "The document has several maps of resource ids, or an odd one; Android uses the last one."},
    {Oddity::NoEndElement, Effect::Taken, 0, 0, "An element has no end; Android ends it."},
    {Oddity::AttributeSize, Effect::Taken, 0, 0,
     "Attributes have an unusual size; Android takes it for their distance."},
    {Oddity::AttributeNameIndex, Effect::Taken, 0, 0,
     "The name of an attribute is not in the string pool; Android finds the attribute by its resource id."},
    {Oddity::UnknownNode, Effect::Taken, 0, 0, "The document has chunks of unknown types; Android skips them."},
    {Oddity::UnbalancedNamespaces, Effect::Taken, 0, 0, "A namespace ends twice, or never; Android does not check it."},
    {Oddity::TableBytesBehind, Effect::Taken, 0, 0, "There are bytes behind the table; Android does not look at them."},
    {Oddity::TablePoolStyles, Effect::Taken, 0, 0,
     "A string pool of the table has styles outside of it; Android does not look at them."},
    {Oddity::TablePoolCount, Effect::Taken, 0, 0,
     "A string pool of the table counts more strings than it has; Android has no resources of the package."},
    {Oddity::UnknownTableChunk, Effect::Taken, 0, 0,
     "The table has chunks of unknown types, or string pools that nothing refers to; Android skips them."},
    {Oddity::UnnamedPackage, Effect::Taken, 0, 0,
     "A package of the table has no name; Android finds its resources by their ids."},
    {Oddity::RepeatedPackage, Effect::Taken, 0, 0,
     "The table has several packages of one id; Android searches all of them."},
    {Oddity::NoTypePool, Effect::Taken, 0, 0,
     "A package of the table has no names of types; Android finds its resources by their ids."},
    {Oddity::UnnamedType, Effect::Taken, 0, 0,
     "A type of the table has no name; Android finds its resources by their ids."},
    {Oddity::ConfigurationSize, Effect::Taken, 0, 0,
     "A configuration of the table has an unusual size; Android reads the fields that it knows."},
    {Oddity::EntryPastChunk, Effect::Taken, 0, 0,
     "An entry of the table does not end within its chunk; it has no value for Android."},
    {Oddity::LibraryChunk, Effect::Taken, 0, 0, "The table names the shared libraries that its references lead to."},
    {Oddity::OverlayChunk, Effect::Taken, 0, 0, "The table has resources that others may overlay."},
    {Oddity::StagedAlias, Effect::Taken, 33, 0,
     "The table has aliases of staged resources; Android 13 and later follow those of the platform's package."},
};
static_assert(std::size(rows) == std::size_t(Oddity::Count), "there is a row for each oddity");

} // namespace

const DiagnosticTable::Row *DiagnosticTable::row(Oddity oddity)
{
    const auto *const found =
        std::find_if(std::begin(rows), std::end(rows), [oddity](const Row &each) { return each.oddity == oddity; });
    return found != std::end(rows) ? found : nullptr;
}

} // namespace SorrelKit
