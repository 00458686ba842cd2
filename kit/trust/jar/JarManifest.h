// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_JARMANIFEST_H
#define SORRELKIT_JARMANIFEST_H

#include "format/ByteView.h"

#include <QByteArray>
#include <QString>

#include <cstring>
#include <functional>
#include <vector>

class Budget;

namespace SorrelKit {

/**
 * A manifest of a JAR file, or a signature file, which has the same form (JAR File Specification): sections of
 * attributes, one in a line, each ended by an empty line. The first section is about the whole archive, each other one
 * about the member that its first attribute, Name, has as its value.
 *
 * Files are read as Android reads them. Lines end with CR LF, LF or CR. A line that begins with a blank continues the
 * one before, except at the start of a section. A line without a colon and a blank is an attribute without a value.
 * Names of attributes have no case, and the first attribute of a name counts. Empty lines before a section belong to
 * none.
 *
 * Keeps the file, and the name and range of each section; values are looked up in the file. One thread at a time.
 */
class JarManifest
{
public:
    /// Sections. A package has as many as it has members; archives without the extensions of ZIP64 have at most 65,535.
    static constexpr int MaxSections = 1 << 17;
    /// Bytes that a section needs besides those of the file and its name.
    static constexpr qint64 SectionBytes = 96;
    /// Work of finding sections and names, and of looking up the attributes once, for each byte.
    static constexpr qint64 WorkPerByte = 2;
    /// Work of looking up all attributes of the first section, for each of its bytes.
    static constexpr qint64 MainWorkPerByte = 8;

    enum class Fault {
        None,
        NoName,    ///< a section other than the first begins with another attribute
        Duplicate, ///< two sections have one name
        TooCostly, ///< there are more than MaxSections, or the file does not fit in the budget
    };

    /// Called with the name and the value of an attribute, which are valid during the call; false ends the visit.
    using Visitor = std::function<bool(const ByteView &name, const ByteView &value)>;

    /// No section.
    JarManifest() = default;
    /// The sections of @p file. Spends all that reading it and looking up values costs, and holds the bytes of
    /// heldBytes(), which the caller releases.
    JarManifest(const QByteArray &file, Budget *budget);

    Fault fault() const { return m_fault; }
    /// The name of the section with the fault, or its number when it has no name.
    QString faultDetail() const { return m_faultDetail; }
    /// Bytes that were taken from the budget.
    qint64 heldBytes() const { return m_heldBytes; }

    /// The whole file.
    ByteView bytes() const { return ByteView(m_file); }
    /// The first section; empty when the file is.
    ByteView mainSection() const { return part(m_main); }
    /// The number of the other sections.
    int count() const { return int(m_sections.size()); }
    /// The name of section @p number. Precondition, here and below: @p number is from 0 to count() - 1.
    const QByteArray &name(int number) const { return m_sections[size_t(number)].name; }
    /// The bytes of a section with its empty line, which its digest is made of.
    ByteView section(int number) const { return part(m_sections[size_t(number)].range); }
    /// The number of the section for @p name; -1 when there is none.
    int find(const ByteView &name) const;

    /// Calls @p visitor for the attributes of @p section in their order.
    static void visit(const ByteView &section, const Visitor &visitor);
    /// The value of the first attribute @p name in @p section; null when there is none.
    static QByteArray value(const ByteView &section, const char *name);
    /// Whether two names of attributes are the same.
    static bool isSameName(const ByteView &a, const char *b)
    {
        return size_t(a.size()) == std::strlen(b)
               && qstrnicmp(reinterpret_cast<const char *>(a.data()), b, uint(a.size())) == 0;
    }

private:
    struct Range {
        int at = 0;
        int size = 0;
    };
    struct Section {
        Range range;
        QByteArray name;
    };

    ByteView part(const Range &range) const { return ByteView(m_file).part(range.at, range.size); }
    void read();
    bool hold(qint64 bytes, Budget *budget);
    bool addSection(const Range &range);
    void sortNames();

    QByteArray m_file;
    Range m_main;
    std::vector<Section> m_sections;
    std::vector<int> m_byName; ///< numbers of the sections in the order of their names
    Fault m_fault = Fault::None;
    QString m_faultDetail;
    qint64 m_nameBytes = 0; ///< of all names
    qint64 m_heldBytes = 0;
};

} // namespace SorrelKit

#endif
