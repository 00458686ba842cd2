// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/jar/JarManifest.h"

#include "limits/Budget.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace SorrelKit {

namespace {

/// Reads lines one after another.
class ManifestLines
{
public:
    explicit ManifestLines(const ByteView &bytes) : m_bytes(bytes) {}

    bool atEnd() const { return m_at == m_bytes.size(); }
    qint64 position() const { return m_at; }
    /// The next line without its end.
    ByteView next()
    {
        const qint64 start = m_at;
        const uchar *const end = std::find_if(m_bytes.data() + start, m_bytes.data() + m_bytes.size(),
                                              [](uchar each) { return each == '\n' || each == '\r'; });
        m_at = end - m_bytes.data();
        const ByteView line = m_bytes.part(start, m_at - start);
        if (!atEnd())
            m_at += m_bytes.hasText(m_at, "\r\n") ? 2 : 1;
        return line;
    }
    bool continues() const { return !atEnd() && m_bytes.u8(m_at) == ' '; }
    /// The next line, and the lines that continue it. Valid until the next call.
    ByteView nextWhole()
    {
        const ByteView line = next();
        if (!continues())
            return line;
        m_whole = line.toByteArray();
        while (continues()) {
            const ByteView more = next().from(1);
            m_whole.append(reinterpret_cast<const char *>(more.data()), int(more.size()));
        }
        return ByteView(m_whole);
    }

private:
    ByteView m_bytes;
    qint64 m_at = 0;
    QByteArray m_whole; ///< a line of several
};

/// The name and the value in a line.
std::pair<ByteView, ByteView> attributeOf(const ByteView &line)
{
    for (qint64 at = 0; at < line.size() - 1; ++at) {
        if (line.hasText(at, ": "))
            return {line.part(0, at), line.from(at + 2)};
    }
    return {line, ByteView()};
}

int compareNames(const ByteView &a, const ByteView &b)
{
    const qint64 size = std::min(a.size(), b.size());
    const int order = size == 0 ? 0 : std::memcmp(a.data(), b.data(), size_t(size));
    return order != 0 ? order : int(a.size() > b.size()) - int(a.size() < b.size());
}

} // namespace

JarManifest::JarManifest(const QByteArray &file, Budget *budget) : m_file(file)
{
    if (!budget->spendWork(WorkPerByte * m_file.size()) || !hold(m_file.size(), budget)) {
        m_fault = Fault::TooCostly;
        m_file.clear();
        return;
    }
    read();
    if (budget->chargeWork(Budget::ValueWork * count() + MainWorkPerByte * m_main.size)
        && hold(SectionBytes * count() + m_nameBytes, budget))
        sortNames();
    else
        m_fault = Fault::TooCostly;
}

bool JarManifest::hold(qint64 bytes, Budget *budget)
{
    if (!budget->holdBytes(bytes))
        return false;
    m_heldBytes += bytes;
    return true;
}

void JarManifest::read()
{
    ManifestLines lines{ByteView(m_file)};
    bool isFirst = true;
    while (!lines.atEnd()) {
        const qint64 start = lines.position();
        if (lines.next().isEmpty())
            continue;
        while (!lines.atEnd() && !lines.next().isEmpty()) {
        }
        const Range range{int(start), int(lines.position() - start)};
        if (isFirst)
            m_main = range;
        else if (!addSection(range))
            return;
        isFirst = false;
    }
}

bool JarManifest::addSection(const Range &range)
{
    if (count() == MaxSections) {
        m_fault = Fault::TooCostly;
        return false;
    }
    ManifestLines lines(part(range));
    const auto first = attributeOf(lines.nextWhole());
    if (!isSameName(first.first, "Name")) {
        m_fault = Fault::NoName;
        m_faultDetail = QString::number(count() + 1);
        return false;
    }
    m_nameBytes += first.second.size();
    m_sections.push_back({range, first.second.toByteArray()});
    return true;
}

void JarManifest::sortNames()
{
    m_byName.resize(m_sections.size());
    for (int i = 0; i < count(); ++i)
        m_byName[size_t(i)] = i;
    std::sort(m_byName.begin(), m_byName.end(),
              [this](int a, int b) { return compareNames(ByteView(name(a)), ByteView(name(b))) < 0; });
    const auto twin =
        std::adjacent_find(m_byName.begin(), m_byName.end(), [this](int a, int b) { return name(a) == name(b); });
    if (m_fault == Fault::None && twin != m_byName.end()) {
        m_fault = Fault::Duplicate;
        m_faultDetail = QString::fromUtf8(name(*twin));
    }
}

int JarManifest::find(const ByteView &wanted) const
{
    const auto found =
        std::lower_bound(m_byName.begin(), m_byName.end(), wanted, [this](int each, const ByteView &name) {
            return compareNames(ByteView(this->name(each)), name) < 0;
        });
    return found != m_byName.end() && compareNames(ByteView(name(*found)), wanted) == 0 ? *found : -1;
}

void JarManifest::visit(const ByteView &section, const Visitor &visitor)
{
    ManifestLines lines(section);
    bool goesOn = true;
    while (goesOn && !lines.atEnd()) {
        const ByteView line = lines.nextWhole();
        if (!line.isEmpty()) {
            const auto attribute = attributeOf(line);
            goesOn = visitor(attribute.first, attribute.second);
        }
    }
}

QByteArray JarManifest::value(const ByteView &section, const char *name)
{
    QByteArray result;
    visit(section, [&](const ByteView &each, const ByteView &value) {
        if (isSameName(each, name))
            result = value.isEmpty() ? QByteArray("") : value.toByteArray();
        return result.isNull();
    });
    return result;
}

} // namespace SorrelKit
