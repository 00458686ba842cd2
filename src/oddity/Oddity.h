// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ODDITY_H
#define ODDITY_H

#include <QtGlobal>

/**
 * What is odd in an archive, a document or a table: a fact that build tools do not write, and that some readers mind.
 * The code is named after the fact. SorrelKit::Diagnostic has a code of the same name for each, and DiagnosticTable has
 * the text and what Android does.
 */
enum class Oddity : quint8 {
    // The archive.
    BytesAhead,          ///< the file does not begin with a member, or all offsets are too small
    BytesBehind,         ///< the file goes on behind the end record and its comment
    CutComment,          ///< the file ends before the comment of the end record does
    LongComment,         ///< the end record is further from the end of the file than some readers look
    DirectoryGap,        ///< bytes between the directory and the end record
    DiskNumbers,         ///< the end record has the numbers of an archive on several disks
    EmptyArchive,        ///< the end record counts no member
    HiddenRecords,       ///< the directory has more records than the end record counts
    MissingRecords,      ///< the directory has fewer records than the end record counts
    OffsetBehindMembers, ///< a record has the offset of a header at or behind the directory
    InvalidName,         ///< a name with a zero, or with bytes that are no UTF-8
    DuplicateName,       ///< two members of one name
    Zip64Directory,      ///< the end record is in the form of ZIP64

    // A member that Android opens.
    NoMemberHeader,      ///< there is no header at the offset in the directory
    MemberName,          ///< the header has another name than the directory
    MemberSizes,         ///< the header has other sizes or another checksum, and no mark that they follow
    MemberPastDirectory, ///< the data ends behind the start of the directory
    MemberMethod,        ///< the header has another compression method than the directory
    MemberEncrypted,     ///< the header or the directory has the mark of encryption
    MemberNotDeflated,   ///< a compression method other than 0 (stored) and 8 (deflated)
    MemberStoredSizes,   ///< a member that is not compressed has two sizes in the directory
    MemberMarksDiffer,   ///< the header and the directory differ about sizes that follow the data
    MemberInflatedSize,  ///< a deflated member is damaged, or makes more or fewer bytes than the directory has

    // A document.
    DocumentType,         ///< the first chunk is no document
    DocumentHeaderSize,   ///< the header of the document has another size than 8
    DocumentBytesBehind,  ///< bytes behind the document, or behind its last chunk
    DocumentPoolStyles,   ///< the styles of the string pool are outside of it
    DocumentResourceMap,  ///< a resource map of an odd size, or a second one
    NoEndElement,         ///< an element without an end
    AttributeSize,        ///< attributes of another size than 20
    AttributeNameIndex,   ///< the name of an attribute is not in the string pool
    UnknownNode,          ///< a chunk of an unknown type among the nodes
    UnbalancedNamespaces, ///< a namespace that ends twice, or never

    // A table.
    TableBytesBehind,  ///< bytes behind the table, or behind its last chunk
    TablePoolStyles,   ///< the styles of a string pool are outside of it
    TablePoolCount,    ///< a string pool counts more strings than it has
    UnknownTableChunk, ///< a chunk of an unknown type
    UnnamedPackage,    ///< a package with an empty name
    RepeatedPackage,   ///< a second package chunk of one id
    NoTypePool,        ///< a package without a pool of type names
    UnnamedType,       ///< a type whose name is behind the end of the pool of type names
    ConfigurationSize, ///< a configuration of the size 0, or one that is larger than any known
    EntryPastChunk,    ///< an entry behind the end of its chunk
    LibraryChunk,      ///< names of shared libraries
    OverlayChunk,      ///< resources that others may overlay
    StagedAlias,       ///< ids of resources before and after they were finalized

    Count,
};

#endif
