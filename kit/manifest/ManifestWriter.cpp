// SPDX-License-Identifier: LGPL-2.1-or-later
#include "manifest/ManifestWriter.h"

#include "format/AndroidAttributes.h"
#include "format/XmlNodes.h"
#include "format/XmlStartChunk.h"
#include "resources/ValueFormatter.h"

#include <algorithm>
#include <tuple>

namespace SorrelKit {

namespace {

const QLatin1String androidUri("http://schemas.android.com/apk/res/android");
const QLatin1String xmlUri("http://www.w3.org/XML/1998/namespace");
const QLatin1String xmlnsUri("http://www.w3.org/2000/xmlns/");

constexpr int IndentWidth = 4;

bool isXmlCharacter(QChar character)
{
    return character >= QLatin1Char(' ')
               ? character < QChar(0xfffe)
               : character == QLatin1Char('\t') || character == QLatin1Char('\n') || character == QLatin1Char('\r');
}

QString xmlText(QString text)
{
    for (int i = 0; i < text.size(); ++i) {
        const bool isPair = text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPair)
            ++i;
        else if (text.at(i).isSurrogate() || !isXmlCharacter(text.at(i)))
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

// ASCII letters and digits, and those name characters of XML that are letters or digits of Unicode's first plane.
QString xmlName(QString name)
{
    for (QChar &character : name) {
        if (!character.isLetter() && !character.isDigit() && character != QLatin1Char('-')
            && character != QLatin1Char('.'))
            character = QLatin1Char('_');
    }
    if (name.isEmpty() || (!name.at(0).isLetter() && name.at(0) != QLatin1Char('_')))
        name.prepend(QLatin1Char('_'));
    return name;
}

bool isNamespace(const QString &uri)
{
    return !uri.isEmpty() && uri != xmlnsUri;
}

QString idText(quint32 id)
{
    return QStringLiteral("0x%1").arg(id, 8, 16, QLatin1Char('0'));
}

// Makes names unique in an element. Each name has a count of its own, because a hostile element repeats one name often.
class UniqueNames
{
public:
    QString unique(const QString &name)
    {
        QString candidate = name;
        for (int &repeats = m_repeats[name]; m_taken.contains(candidate); ++repeats)
            candidate = name + QLatin1Char('_') + (repeats == 0 ? QString() : QString::number(repeats + 1));
        m_taken.insert(candidate);
        return candidate;
    }

private:
    QMap<QString, int> m_repeats;
    QSet<QString> m_taken;
};

} // namespace

ManifestWriter::ManifestWriter(const ResourceIndex &index, References references, PlatformSource *platform)
    : m_index(index),
      m_names(index, platform),
      m_references(references),
      m_xml(&m_output),
      m_usedPrefixes({QString(), QStringLiteral("xmlns")})
{
    bind(xmlUri, QStringLiteral("xml"));
    bind(androidUri, QStringLiteral("android"));
    m_xml.setAutoFormatting(true);
    m_xml.setAutoFormattingIndent(IndentWidth);
}

ManifestWriter::ManifestWriter(const ResourceIndex &index, const ResourceResolver &values)
    : ManifestWriter(index, References::Names, values.platform())
{
    m_values = &values;
}

QByteArray ManifestWriter::toXml(const QByteArray &document)
{
    walk(document, Pass::Collect);
    m_xml.writeStartDocument();
    walk(document, Pass::Write);
    m_xml.writeEndDocument();
    return isTooLong() ? QByteArray() : m_output;
}

void ManifestWriter::walk(const QByteArray &document, Pass pass)
{
    XmlNodes nodes{ByteView(document)};
    m_nodes = &nodes;
    m_strings.clear();
    m_collected.clear();
    int depth = 0;
    bool isPastRoot = false;
    while (!isPastRoot && !isTooLong() && nodes.next()) {
        if (nodes.type() == ChunkType::XmlStartNamespace && pass == Pass::Collect) {
            declare(nodes.body());
        } else if (nodes.type() == ChunkType::XmlStartElement) {
            ++depth;
            if (pass == Pass::Collect)
                collect(XmlStartChunk(nodes.body()));
            else
                write(XmlStartChunk(nodes.body()), depth);
        } else if (nodes.type() == ChunkType::XmlEndElement && depth > 0) {
            isPastRoot = --depth == 0;
            if (pass == Pass::Write)
                m_xml.writeEndElement();
        }
    }
    m_nodes = nullptr;
}

void ManifestWriter::declare(const ByteView &body)
{
    m_declared.insert(string(body.u32(4)), string(body.u32(0)));
}

void ManifestWriter::bind(const QString &uri, const QString &wantedPrefix)
{
    if (!isNamespace(uri) || m_prefixes.contains(uri))
        return;
    QString prefix = wantedPrefix.isEmpty() ? QString() : xmlName(wantedPrefix);
    while (m_usedPrefixes.contains(prefix))
        prefix = QStringLiteral("ns%1").arg(++m_lastNumber);
    m_prefixes.insert(uri, prefix);
    m_usedPrefixes.insert(prefix);
    count(uri.size() + prefix.size());
}

void ManifestWriter::collect(const XmlStartChunk &start)
{
    collect(start.uri());
    for (int i = 0; i < start.attributeCount(); ++i) {
        const XmlStartChunk::Attribute attribute = start.attribute(i);
        if (indexOfAndroidAttribute(m_nodes->resourceId(attribute.name)) < 0)
            collect(attribute.uri);
    }
}

void ManifestWriter::collect(quint32 uri)
{
    if (uri == XmlStartChunk::NoString || m_collected.contains(uri))
        return;
    m_collected.insert(uri);
    const QString text = string(uri);
    bind(text, m_declared.value(text));
}

void ManifestWriter::write(const XmlStartChunk &start, int depth)
{
    const QString name = qualifiedName(string(start.uri()), xmlName(string(start.name())));
    count(2 * (qint64(name.size()) + IndentWidth * qint64(depth - 1)));
    m_xml.writeStartElement(name);
    if (depth == 1)
        writeNamespaces();
    UniqueNames names;
    for (const Attribute &attribute : attributes(start)) {
        const QString unique = names.unique(qualifiedName(attribute.uri, xmlName(attribute.name)));
        count(unique.size() + attribute.value.size());
        if (isTooLong())
            break;
        m_xml.writeAttribute(unique, xmlText(attribute.value));
    }
}

void ManifestWriter::writeNamespaces()
{
    for (auto binding = m_prefixes.cbegin(); binding != m_prefixes.cend(); ++binding) {
        if (binding.key() != xmlUri)
            m_xml.writeAttribute(QStringLiteral("xmlns:") + binding.value(), xmlText(binding.key()));
    }
}

QVector<ManifestWriter::Attribute> ManifestWriter::attributes(const XmlStartChunk &start)
{
    QVector<Attribute> attributes;
    for (int i = 0; i < start.attributeCount() && !isTooLong(); ++i) {
        const XmlStartChunk::Attribute record = start.attribute(i);
        const quint32 id = m_nodes->resourceId(record.name);
        const int known = indexOfAndroidAttribute(id);
        Attribute attribute;
        if (known >= 0) {
            attribute.name = QLatin1String(AndroidAttributes[known].name);
            attribute.uri = androidUri;
        } else {
            attribute.name = string(record.name);
            attribute.uri = string(record.uri);
            if (attribute.name.isEmpty() && id != 0)
                attribute.name = idText(id);
        }
        attribute.value = valueText(record.raw, record.value, id != 0);
        attributes.append(attribute);
    }
    std::stable_sort(attributes.begin(), attributes.end(), [](const Attribute &left, const Attribute &right) {
        return std::tie(left.name, left.uri) < std::tie(right.name, right.uri);
    });
    return attributes;
}

QString ManifestWriter::qualifiedName(const QString &uri, const QString &name) const
{
    return isNamespace(uri) ? m_prefixes.value(uri) + QLatin1Char(':') + name : name;
}

// As XmlReader: Android takes the typed value of its own attributes, and the text of others.
QString ManifestWriter::valueText(quint32 raw, const TypedValue &value, bool hasId)
{
    const bool isString = value.type == ValueType::String;
    const bool isWritten = raw <= XmlStartChunk::LastRawString && (!isString || raw != value.data);
    if (isWritten && (!hasId || value.isNull()))
        return string(raw);
    if (isString)
        return string(value.data);
    return value.isReference() || value.isThemeAttribute() ? referenceText(value) : ValueFormatter(m_names).text(value);
}

QString ManifestWriter::referenceText(const TypedValue &value) const
{
    if (const std::optional<QString> text = resolvedText(value))
        return *text;
    const quint32 id = value.data;
    const QString name = m_references == References::Numbers ? m_names.number(id) : m_names.name(id);
    const quint8 packageId = id >> 24 != 0 ? quint8(id >> 24) : m_index.packageId();
    if (name.isEmpty() || m_index.typeName(packageId, quint8(id >> 16)).isEmpty())
        return ValueFormatter(m_names).text(value);
    QString text{QLatin1Char(value.isThemeAttribute() ? '?' : '@')};
    // In every package but its own, the name of a resource of the platform begins with "android:".
    if (packageId == ResourceId::PlatformPackage && packageId == m_index.packageId())
        text += m_index.packageNames().value(packageId) + QLatin1Char(':');
    return text + name;
}

std::optional<QString> ManifestWriter::resolvedText(const TypedValue &value) const
{
    if (m_values == nullptr || !value.isReference())
        return std::nullopt;
    const ResolvedValue resolved = m_values->resolved(value);
    if (resolved.value.type == ValueType::String)
        return resolved.text;
    if (resolved.isNull() || resolved.value.isReference() || resolved.value.isThemeAttribute())
        return std::nullopt;
    return ValueFormatter(m_names).text(resolved.value);
}

QString ManifestWriter::string(quint32 index)
{
    if (index == XmlStartChunk::NoString)
        return {};
    auto known = m_strings.constFind(index);
    if (known == m_strings.cend()) {
        known = m_strings.insert(index, m_nodes->strings().at(index));
        count(known->size());
    }
    return *known;
}

} // namespace SorrelKit
