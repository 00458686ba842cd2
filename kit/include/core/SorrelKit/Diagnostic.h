// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DIAGNOSTIC_H
#define SORRELKIT_DIAGNOSTIC_H

#include <SorrelKit/KitCoreExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class DiagnosticData;

/**
 * Something odd in the bytes of a package: in its archive, its manifest or its resource table. Build tools do not write
 * it; tools that hide content or damage do. It may be harmless to Android, or Android may refuse the package for it.
 * Package::diagnostics() returns these; docs/diagnostics.md lists all codes.
 *
 * The values stay valid when the package is gone. Copies share their data and are cheap. Every operation takes constant
 * time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Diagnostic
{
    Q_GADGET
    Q_PROPERTY(Code code READ code CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)
    Q_PROPERTY(QString detail READ detail CONSTANT)
    Q_PROPERTY(int count READ count CONSTANT)
    Q_PROPERTY(QString package READ package CONSTANT)
    Q_PROPERTY(QString path READ path CONSTANT)
    Q_PROPERTY(bool refused READ isRefused CONSTANT)
    Q_PROPERTY(int firstSdkVersion READ firstSdkVersion CONSTANT)
    Q_PROPERTY(int lastSdkVersion READ lastSdkVersion CONSTANT)

public:
    /// Kinds of oddities, named after the fact. New ones may be added. @since 0.5.1
    enum class Code {
        None, ///< nothing is odd

        BytesAhead,          ///< the file does not begin with a member
        BytesBehind,         ///< the file goes on behind the archive
        CutComment,          ///< the file ends before the archive's comment does
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

        NoMemberHeader,      ///< there is no header at the offset in the directory
        MemberName,          ///< the header has another name than the directory
        MemberSizes,         ///< the header has other sizes or another checksum than the directory
        MemberPastDirectory, ///< the data ends behind the start of the directory
        MemberMethod,        ///< the header has another compression method than the directory
        MemberEncrypted,     ///< there is a mark of encryption
        MemberNotDeflated,   ///< a compression method other than 0 (stored) and 8 (deflated)
        MemberStoredSizes,   ///< a member that is not compressed has two sizes in the directory
        MemberMarksDiffer,   ///< the header and the directory differ about sizes that follow the data
        MemberInflatedSize,  ///< a deflated member is damaged, or makes more or fewer bytes than the directory has

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
    };
    Q_ENUM(Code)

    /// Nothing odd: Code::None, empty texts and 0. @since 0.5.1
    Diagnostic();
    /// The kind @p code without a detail and a place, for lists of all kinds. @since 0.5.1
    explicit Diagnostic(Code code);
    /// A copy of @p other. @since 0.5.1
    Diagnostic(const Diagnostic &other);
    /// Takes the value of @p other. @since 0.5.1
    Diagnostic(Diagnostic &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Diagnostic &operator=(const Diagnostic &other);
    /// Takes the value of @p other. @since 0.5.1
    Diagnostic &operator=(Diagnostic &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~Diagnostic();
    /// Exchanges the values of two diagnostics. @since 0.5.1
    void swap(Diagnostic &other) noexcept { d.swap(other.d); }

    /// The kind. @since 0.5.1
    Code code() const;
    /// One sentence in English about the fact and its effect ("Two members have the same name; Android refuses the
    /// package."). It depends on code() alone. @since 0.5.1
    QString text() const;
    /// What it is about, the first time: a name from the package, or a number; may be empty. A name may have any
    /// characters, so a program that shows it has to make it harmless. @since 0.5.1
    QString detail() const;
    /// How often it is in path(), at least once. A reader that ends at an error stops to count. @since 0.5.1
    int count() const;
    /// Path of the package in the set ("splits/base-master.apk"); empty for a single package. @since 0.5.1
    QString package() const;
    /// Path of the file in the package, "AndroidManifest.xml" or "resources.arsc"; empty for the archive itself.
    /// @since 0.5.1
    QString path() const;
    /// Whether Android refuses the package for it: Android 14, or the versions in firstSdkVersion() and
    /// lastSdkVersion(). @since 0.5.1
    bool isRefused() const;
    /// The first API level that refuses the package, or that reads it in another way than the level before; 0 for all.
    /// @since 0.5.1
    int firstSdkVersion() const;
    /// The last such API level; 0 when all later ones are alike. @since 0.5.1
    int lastSdkVersion() const;

private:
    friend class DiagnosticList;

    QSharedDataPointer<DiagnosticData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Diagnostic)
Q_DECLARE_METATYPE(SorrelKit::Diagnostic)

#endif
